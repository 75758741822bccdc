#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace veltrano {

/// A folder of its own for one test, below $TMPDIR, or else in memory or /tmp, removed at the end with all
/// that is in it, however deep. Paths are relative to it; folders missing on the way are made. What fails
/// throws std::system_error, which fails the test.
class TestDir {
public:
    TestDir();
    TestDir(const TestDir&) = delete;
    TestDir& operator=(const TestDir&) = delete;
    ~TestDir();

    const std::string& path() const { return m_path; }
    std::string path(std::string_view relative) const;

    void createFolder(std::string_view relative);
    /// Real data, so that blocks are allocated.
    void createFile(std::string_view relative, std::size_t bytes = 0);
    /// Nothing but a hole of that length.
    void createSparse(std::string_view relative, std::int64_t length);
    void createSymlink(std::string_view relative, std::string_view target);
    void createHardLink(std::string_view relative, std::string_view existing);
    void createFifo(std::string_view relative);
    void createSocket(std::string_view relative);
    /// False if this user may not make devices.
    [[nodiscard]] bool createDevice(std::string_view relative);
    void setModified(std::string_view relative, std::int64_t seconds, std::int64_t nanoseconds);

    /// Folders of one name inside each other, `depth` of them. `atLevel` hears each folder's descriptor and
    /// its depth, from 1 on. The path may become longer than any call would take.
    void createChain(std::string_view relative, std::string_view name, int depth,
                     const std::function<void(int descriptor, int level)>& atLevel = {});

    /// Removes a file, or a folder with all that is in it.
    void remove(std::string_view relative);

private:
    void createParents(std::string_view relative);

    std::string m_path;
};

/// Makes a file with real data in an open folder.
void createFileAt(int folder, const std::string& name, std::size_t bytes);

/// What is below a folder, counted the plain way, as a check on everything that counts it the quick way.
/// Links are not followed and hard links count each time.
struct TreeSum {
    std::uint64_t files = 0;      ///< Everything that is no folder.
    std::uint64_t folders = 0;    ///< Without the one asked for.
    std::int64_t fileBytes = 0;   ///< Allocated.
    std::int64_t folderBytes = 0; ///< Allocated by the folders themselves, without the one asked for.
    std::uint64_t denied = 0;     ///< Folders that could not be opened.

    bool operator==(const TreeSum&) const = default;
};
[[nodiscard]] TreeSum sumOfTree(const std::string& path);

} // namespace veltrano
