// Makes a tree to measure on. See the usage text.

#include "bench/TreePlan.h"

#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace veltrano {

namespace {

[[noreturn]] void fail(const std::string& what) {
    std::fprintf(stderr, "veltrano_test_tree: %s: %s\n", what.c_str(), std::strerror(errno));
    std::exit(1);
}

/// Makes the tree below a folder that exists, from descriptor to descriptor, so that depth has no limit.
class DiskSink final : public TreePlanSink {
public:
    explicit DiskSink(const std::string& path) : m_content(4096, 'v') {
        m_nFolder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (m_nFolder < 0)
            fail(path);
    }
    DiskSink(const DiskSink&) = delete;
    DiskSink& operator=(const DiskSink&) = delete;
    ~DiskSink() override { ::close(m_nFolder); }

    void enterFolder(const std::string& name) override {
        if (::mkdirat(m_nFolder, name.c_str(), 0755) != 0)
            fail(name);
        moveTo(name.c_str());
        ++m_nFolders;
    }

    void leaveFolder() override { moveTo(".."); }

    void file(const std::string& name, std::int64_t size, std::int64_t filled) override {
        const int descriptor =
            ::openat(m_nFolder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        if (descriptor < 0)
            fail(name);
        const auto bytes = static_cast<std::size_t>(filled);
        if ((bytes > 0 && ::write(descriptor, m_content.data(), bytes) != static_cast<ssize_t>(bytes)) ||
            ::ftruncate(descriptor, size) != 0)
            fail(name);
        ::close(descriptor);
        ++m_nFiles;
    }

    void symbolicLink(const std::string& name, const std::string& target) override {
        if (::symlinkat(target.c_str(), m_nFolder, name.c_str()) != 0)
            fail(name);
        ++m_nFiles;
    }

    std::uint64_t folders() const { return m_nFolders; }
    std::uint64_t files() const { return m_nFiles; }

private:
    void moveTo(const char* name) {
        const int next = ::openat(m_nFolder, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (next < 0)
            fail(name);
        ::close(m_nFolder);
        m_nFolder = next;
    }

    std::string m_content;
    int m_nFolder = -1;
    std::uint64_t m_nFolders = 0;
    std::uint64_t m_nFiles = 0;
};

constexpr std::uint64_t kDefaultSeed = 20;

int usage() {
    std::fputs("Usage: veltrano_test_tree PATH realistic|wide|chain COUNT [SEED]\n"
               "Makes the folder PATH, which must not exist, and in it COUNT files in a realistic tree,\n"
               "COUNT files in one folder, or a chain of COUNT folders.\n",
               stderr);
    return 2;
}

bool readNumber(const char* text, std::uint64_t& result) {
    const char* end = text + std::strlen(text);
    const auto [stop, error] = std::from_chars(text, end, result);
    return error == std::errc{} && stop == end && result > 0;
}

int makeTree(int count, char** arguments) {
    std::uint64_t size = 0;
    std::uint64_t seed = kDefaultSeed;
    if (count < 4 || count > 5 || !readNumber(arguments[3], size) ||
        (count == 5 && !readNumber(arguments[4], seed)))
        return usage();
    const std::string path = arguments[1];
    const std::string shape = arguments[2];
    if (shape != "realistic" && shape != "wide" && shape != "chain")
        return usage();
    if (::mkdir(path.c_str(), 0755) != 0)
        fail(path);
    DiskSink sink(path);
    if (shape == "realistic")
        planRealisticTree(sink, size, seed);
    else if (shape == "wide")
        planWideFolder(sink, size);
    else
        planChain(sink, size);
    std::printf("%s: %llu files, %llu folders\n", path.c_str(), static_cast<unsigned long long>(sink.files()),
                static_cast<unsigned long long>(sink.folders()));
    return 0;
}

} // namespace

} // namespace veltrano

int main(int count, char** arguments) {
    return veltrano::makeTree(count, arguments);
}
