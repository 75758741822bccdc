#pragma once

#include "platform/FileCatalogue.h"
#include "support/MemoryDisk.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace veltrano::test {

/// The forms of the catalogue over which the scan is the same.
enum class DiskForm { Linux, Posix, Memory };

/// A disk on which a test puts what is to be scanned: a new folder of the real one, removed at the end, or
/// memory. Paths are told relative to that folder, "a/b".
class TestDisk {
public:
    static std::unique_ptr<TestDisk> make(DiskForm form);
    virtual ~TestDisk() = default;

    /// The folder to scan, absolute.
    virtual std::string root() const = 0;
    std::string path(std::string_view relative) const { return root() + "/" + std::string(relative); }
    virtual std::shared_ptr<FileCatalogue> catalogue() const = 0;

    virtual void folder(std::string_view relative) = 0;
    /// Answers the bytes that the disk takes for the file, which a real one rounds up.
    virtual std::int64_t file(std::string_view relative, std::int64_t size) = 0;
    virtual void remove(std::string_view relative) = 0;
    /// The folder can't be read.
    virtual void deny(std::string_view relative) = 0;
    /// Called before each open and read, on the reading thread. To be set while nobody reads.
    virtual void setBeforeStep(std::function<void()> hook) = 0;
};

/// Makes a new empty folder of the real disk and takes it away again, whatever is in it by then.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

/// A real file of so many bytes, really allocated; answers what it takes.
std::int64_t writeFile(const std::string& path, std::int64_t size);

/// What lies below a real folder by the system's own words, folders left out: each name once, links not
/// followed.
std::int64_t sumOnDisk(const std::string& path);

/// For INSTANTIATE_TEST_SUITE_P: every form that this system has, and their names.
testing::internal::ParamGenerator<DiskForm> allDiskForms();
testing::internal::ParamGenerator<DiskForm> realDiskForms();
std::string diskFormName(const testing::TestParamInfo<DiskForm>& info);
std::shared_ptr<FileCatalogue> realCatalogue(DiskForm form);

} // namespace veltrano::test
