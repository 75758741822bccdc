#include "support/TestDir.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace veltrano {

namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

[[noreturn]] void fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

void require(bool isGood, const std::string& what) {
    if (!isGood)
        fail(what);
}

class Descriptor {
public:
    explicit Descriptor(int descriptor) : m_nDescriptor(descriptor) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { ::close(m_nDescriptor); }

    int get() const { return m_nDescriptor; }
    void reset(int descriptor) { ::close(std::exchange(m_nDescriptor, descriptor)); }

private:
    int m_nDescriptor;
};

struct Names {
    std::vector<std::string> folders;
    std::vector<std::string> others;
};

Names listFolder(int folder) {
    Names names;
    DIR* stream = ::fdopendir(::openat(folder, ".", kFolderFlags));
    require(stream != nullptr, "list");
    while (const dirent* record = ::readdir(stream)) {
        const std::string name = record->d_name;
        struct stat facts {};
        if (name == "." || name == ".." || ::fstatat(folder, name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) != 0)
            continue;
        (S_ISDIR(facts.st_mode) ? names.folders : names.others).push_back(name);
    }
    ::closedir(stream);
    return names;
}

/// Goes down to the first folder without folders, empties it, goes up a step and so on, with one descriptor.
void removeContents(int folder) {
    Descriptor current(::openat(folder, ".", kFolderFlags));
    require(current.get() >= 0, "remove");
    std::vector<std::vector<std::string>> pending;
    std::vector<std::string> way;
    const auto enter = [&] {
        Names names = listFolder(current.get());
        for (const std::string& name : names.others)
            require(::unlinkat(current.get(), name.c_str(), 0) == 0, "remove " + name);
        pending.push_back(std::move(names.folders));
    };
    enter();
    while (!pending.empty()) {
        if (!pending.back().empty()) {
            way.push_back(std::move(pending.back().back()));
            pending.back().pop_back();
            current.reset(::openat(current.get(), way.back().c_str(), kFolderFlags));
            require(current.get() >= 0, "enter " + way.back());
            enter();
            continue;
        }
        pending.pop_back();
        if (way.empty())
            return;
        current.reset(::openat(current.get(), "..", kFolderFlags));
        require(::unlinkat(current.get(), way.back().c_str(), AT_REMOVEDIR) == 0, "remove " + way.back());
        way.pop_back();
    }
}

/// Thousands of folders are made and removed thirty times as fast in memory.
std::string placeForTests() {
    const char* chosen = std::getenv("TMPDIR");
    if (chosen != nullptr && *chosen != '\0')
        return chosen;
    return ::access("/dev/shm", W_OK | X_OK) == 0 ? "/dev/shm" : "/tmp";
}

} // namespace

TestDir::TestDir() {
    m_path = placeForTests() + "/veltrano-test-XXXXXX";
    require(::mkdtemp(m_path.data()) != nullptr, m_path);
}

TestDir::~TestDir() {
    try {
        remove("");
    } catch (const std::system_error& error) {
        std::fprintf(stderr, "%s stays behind: %s\n", m_path.c_str(), error.what());
    }
}

std::string TestDir::path(std::string_view relative) const {
    return relative.empty() ? m_path : m_path + "/" + std::string(relative);
}

void TestDir::createFolder(std::string_view relative) {
    createParents(relative);
    require(::mkdir(path(relative).c_str(), 0755) == 0 || errno == EEXIST, path(relative));
}

void TestDir::createFile(std::string_view relative, std::size_t bytes) {
    createParents(relative);
    createFileAt(AT_FDCWD, path(relative), bytes);
}

void TestDir::createSparse(std::string_view relative, std::int64_t length) {
    createFile(relative);
    require(::truncate(path(relative).c_str(), length) == 0, path(relative));
}

void TestDir::createSymlink(std::string_view relative, std::string_view target) {
    createParents(relative);
    require(::symlink(std::string(target).c_str(), path(relative).c_str()) == 0, path(relative));
}

void TestDir::createHardLink(std::string_view relative, std::string_view existing) {
    createParents(relative);
    require(::link(path(existing).c_str(), path(relative).c_str()) == 0, path(relative));
}

void TestDir::createFifo(std::string_view relative) {
    createParents(relative);
    require(::mkfifo(path(relative).c_str(), 0644) == 0, path(relative));
}

void TestDir::createSocket(std::string_view relative) {
    createParents(relative);
    const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string whole = path(relative);
    require(whole.size() < sizeof address.sun_path, whole);
    whole.copy(address.sun_path, whole.size());
    require(::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0, whole);
}

bool TestDir::createDevice(std::string_view relative) {
    createParents(relative);
    return ::mknod(path(relative).c_str(), S_IFCHR | 0644, 0) == 0;
}

void TestDir::setModified(std::string_view relative, std::int64_t seconds, std::int64_t nanoseconds) {
    const timespec times[2] = {{seconds, nanoseconds}, {seconds, nanoseconds}};
    require(::utimensat(AT_FDCWD, path(relative).c_str(), times, AT_SYMLINK_NOFOLLOW) == 0, path(relative));
}

void TestDir::createChain(std::string_view relative, std::string_view name, int depth,
                          const std::function<void(int descriptor, int level)>& atLevel) {
    createFolder(relative);
    const std::string step(name);
    Descriptor current(::open(path(relative).c_str(), kFolderFlags));
    for (int level = 1; level <= depth; ++level) {
        require(::mkdirat(current.get(), step.c_str(), 0755) == 0, step);
        current.reset(::openat(current.get(), step.c_str(), kFolderFlags));
        require(current.get() >= 0, step);
        if (atLevel)
            atLevel(current.get(), level);
    }
}

void TestDir::remove(std::string_view relative) {
    const std::string whole = path(relative);
    if (::unlink(whole.c_str()) == 0)
        return;
    {
        const Descriptor folder(::open(whole.c_str(), kFolderFlags));
        require(folder.get() >= 0, whole);
        removeContents(folder.get());
    }
    require(::rmdir(whole.c_str()) == 0, whole);
}

void TestDir::createParents(std::string_view relative) {
    for (std::size_t slash = relative.find('/'); slash != std::string_view::npos;
         slash = relative.find('/', slash + 1)) {
        const std::string above = path(relative.substr(0, slash));
        require(::mkdir(above.c_str(), 0755) == 0 || errno == EEXIST, above);
    }
}

void createFileAt(int folder, const std::string& name, std::size_t bytes) {
    const Descriptor file(::openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    require(file.get() >= 0, name);
    const std::string data(bytes, 'v');
    require(::write(file.get(), data.data(), data.size()) == static_cast<ssize_t>(bytes), name);
}

TreeSum sumOfTree(const std::string& path) {
    TreeSum sum;
    Descriptor current(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    require(current.get() >= 0, path);
    std::vector<std::vector<std::string>> pending;
    const auto enter = [&] {
        constexpr std::int64_t kBytesPerBlock = 512;
        Names names = listFolder(current.get());
        const auto sizeOf = [&](const std::string& name) {
            struct stat facts {};
            if (::fstatat(current.get(), name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) != 0)
                fail(name);
            return std::int64_t{facts.st_blocks} * kBytesPerBlock;
        };
        for (const std::string& name : names.others)
            sum.fileBytes += sizeOf(name);
        for (const std::string& name : names.folders)
            sum.folderBytes += sizeOf(name);
        sum.files += names.others.size();
        sum.folders += names.folders.size();
        pending.push_back(std::move(names.folders));
    };
    enter();
    while (!pending.empty()) {
        if (pending.back().empty()) {
            pending.pop_back();
            if (!pending.empty())
                current.reset(::openat(current.get(), "..", kFolderFlags));
            continue;
        }
        const std::string name = std::move(pending.back().back());
        pending.back().pop_back();
        const int below = ::openat(current.get(), name.c_str(), kFolderFlags);
        if (below < 0) {
            ++sum.denied;
            continue;
        }
        current.reset(below);
        enter();
    }
    return sum;
}

} // namespace veltrano
