#pragma once

#include <cstdint>
#include <string>

namespace veltrano {

/// Gives the calling process mounts that only it sees. False if this user may not make any. For a child
/// process, before it has other threads.
[[nodiscard]] bool hasPrivateMounts();

/// A file with an ext4 file system in it that acts as a disk, mounted for the life of this object or until
/// it is unmounted. For a process with private mounts.
class LoopDisk {
public:
    /// Makes the file, of so many bytes, and mounts it at a folder.
    LoopDisk(const std::string& file, std::int64_t bytes, std::string mountPoint);
    LoopDisk(const LoopDisk&) = delete;
    LoopDisk& operator=(const LoopDisk&) = delete;
    ~LoopDisk();

    /// False where this system has no loop devices, no ext4, or no tool to make it.
    bool isMounted() const { return m_bMounted; }

    /// Whether it could be unmounted.
    bool unmount();

private:
    std::string m_mountPoint;
    bool m_bMounted = false;
};

} // namespace veltrano
