#include "scan/DiskForms.h"

#include "platform/posix/PosixCatalogue.h"
#ifdef __linux__
#include "platform/linux/LinuxCatalogue.h"
#endif

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace veltrano::test {

namespace {

/// Reads through a real catalogue, but tells the test of each step, and the folders that it denied answer
/// Denied: a test may run as a user whom no permission stops.
class WatchedCatalogue final : public FileCatalogue {
public:
    explicit WatchedCatalogue(std::shared_ptr<FileCatalogue> real) : m_real(std::move(real)) {}

    void deny(std::string name) { m_denied.push_back(std::move(name)); }
    void setBeforeStep(std::function<void()> hook) { m_beforeStep = std::move(hook); }

    CatalogueStatus referenceFromPath(std::string_view path, CatalogueRef& result) override {
        return m_real->referenceFromPath(path, result);
    }

    std::unique_ptr<CatalogueIterator> makeIterator() override {
        return std::make_unique<Iterator>(*this, m_real->makeIterator());
    }

private:
    class Iterator final : public CatalogueIterator {
    public:
        Iterator(const WatchedCatalogue& catalogue, std::unique_ptr<CatalogueIterator> real)
            : m_catalogue(catalogue), m_real(std::move(real)) {}

        CatalogueStatus open(const CatalogueRef& folder) override {
            m_catalogue.tellStep();
            m_bDenied = false;
            for (const std::string& name : m_catalogue.m_denied)
                if (folder.name == name)
                    m_bDenied = true;
            return m_real->open(folder);
        }
        CatalogueStatus readBulk() override {
            m_catalogue.tellStep();
            return m_bDenied ? CatalogueStatus::Denied : m_real->readBulk();
        }
        std::span<const CatalogueEntry> entries() const override { return m_real->entries(); }
        CatalogueRef reference(std::size_t index) override { return m_real->reference(index); }
        void close() override { m_real->close(); }

    private:
        const WatchedCatalogue& m_catalogue;
        std::unique_ptr<CatalogueIterator> m_real;
        bool m_bDenied = false;
    };

    void tellStep() const {
        if (m_beforeStep)
            m_beforeStep();
    }

    std::shared_ptr<FileCatalogue> m_real;
    std::function<void()> m_beforeStep;
    std::vector<std::string> m_denied; // by name, which a test uses once
};

/// A folder in memory where the system has one with room, for the tests make tens of thousands of files.
std::string quickFolder() {
    constexpr std::uintmax_t kRoom = std::uintmax_t{256} * 1024 * 1024; // bytes
    const std::filesystem::path memory = "/dev/shm";
    std::error_code failed;
    const std::filesystem::space_info space = std::filesystem::space(memory, failed);
    const bool usable = !failed && space.available >= kRoom && ::access(memory.c_str(), W_OK) == 0;
    return usable ? memory.string() + "/" : testing::TempDir();
}

class RealDisk final : public TestDisk {
public:
    explicit RealDisk(DiskForm form) : m_catalogue(std::make_shared<WatchedCatalogue>(realCatalogue(form))) {}

    std::string root() const override { return m_folder.path(); }
    std::shared_ptr<FileCatalogue> catalogue() const override { return m_catalogue; }
    void folder(std::string_view relative) override { std::filesystem::create_directories(path(relative)); }
    std::int64_t file(std::string_view relative, std::int64_t size) override {
        std::filesystem::create_directories(std::filesystem::path(path(relative)).parent_path());
        return writeFile(path(relative), size);
    }
    void remove(std::string_view relative) override { std::filesystem::remove_all(path(relative)); }
    void deny(std::string_view relative) override {
        m_catalogue->deny(std::filesystem::path(path(relative)).filename());
    }
    void setBeforeStep(std::function<void()> hook) override { m_catalogue->setBeforeStep(std::move(hook)); }

private:
    TemporaryFolder m_folder;
    std::shared_ptr<WatchedCatalogue> m_catalogue;
};

class MemoryTestDisk final : public TestDisk {
public:
    std::string root() const override { return "/disk"; }
    std::shared_ptr<FileCatalogue> catalogue() const override { return m_disk; }
    void folder(std::string_view relative) override { m_disk->addFolder(path(relative)); }
    std::int64_t file(std::string_view relative, std::int64_t size) override {
        m_disk->addFile(path(relative), size);
        return size;
    }
    void remove(std::string_view relative) override { m_disk->remove(path(relative)); }
    void deny(std::string_view relative) override { m_disk->deny(path(relative)); }
    void setBeforeStep(std::function<void()> hook) override {
        auto step = [hook = std::move(hook)](const std::string&) {
            hook();
        };
        m_disk->setBeforeOpen(step);
        m_disk->setBeforeRead(step);
    }

    MemoryTestDisk() { m_disk->addFolder(root()); }

private:
    std::shared_ptr<MemoryDisk> m_disk = std::make_shared<MemoryDisk>();
};

} // namespace

std::unique_ptr<TestDisk> TestDisk::make(DiskForm form) {
    if (form == DiskForm::Memory)
        return std::make_unique<MemoryTestDisk>();
    return std::make_unique<RealDisk>(form);
}

TemporaryFolder::TemporaryFolder() : m_path(quickFolder() + "veltrano-scan-XXXXXX") {
    if (!::mkdtemp(m_path.data()))
        throw std::runtime_error("no temporary folder");
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::int64_t writeFile(const std::string& path, std::int64_t size) {
    const int file = ::open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
    EXPECT_GE(file, 0) << path;
    EXPECT_EQ(0, size > 0 ? ::posix_fallocate(file, 0, size) : 0);
    struct stat facts {};
    EXPECT_EQ(0, ::fstat(file, &facts));
    ::close(file);
    return facts.st_blocks * 512;
}

std::int64_t sumOnDisk(const std::string& path) {
    std::int64_t sum = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
        struct stat facts {};
        if (::lstat(entry.path().c_str(), &facts) == 0 && !S_ISDIR(facts.st_mode))
            sum += facts.st_blocks * 512;
    }
    return sum;
}

testing::internal::ParamGenerator<DiskForm> allDiskForms() {
#ifdef __linux__
    return testing::Values(DiskForm::Linux, DiskForm::Posix, DiskForm::Memory);
#else
    return testing::Values(DiskForm::Posix, DiskForm::Memory);
#endif
}

testing::internal::ParamGenerator<DiskForm> realDiskForms() {
#ifdef __linux__
    return testing::Values(DiskForm::Linux, DiskForm::Posix);
#else
    return testing::Values(DiskForm::Posix);
#endif
}

std::string diskFormName(const testing::TestParamInfo<DiskForm>& info) {
    switch (info.param) {
    case DiskForm::Linux:
        return "linux";
    case DiskForm::Posix:
        return "posix";
    case DiskForm::Memory:
        return "memory";
    }
    return {};
}

std::shared_ptr<FileCatalogue> realCatalogue([[maybe_unused]] DiskForm form) {
#ifdef __linux__
    if (form == DiskForm::Linux)
        return std::make_shared<LinuxCatalogue>();
#endif
    return std::make_shared<PosixCatalogue>();
}

} // namespace veltrano::test
