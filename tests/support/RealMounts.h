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

/// A mount of a server that is away: whoever asks it anything waits until it is given up. Made of the
/// kernel's own interface for file systems in programs, of which this one never answers. For a process with
/// private mounts.
class DeadMount {
public:
    /// Mounts at a folder, under the name of a network file system.
    explicit DeadMount(std::string mountPoint);
    DeadMount(const DeadMount&) = delete;
    DeadMount& operator=(const DeadMount&) = delete;
    ~DeadMount();

    /// False where this system has no such mounts or does not allow them.
    bool isMounted() const { return m_bMounted; }

    /// Whether somebody asks it anything within so many seconds, and so waits from then on.
    [[nodiscard]] bool waitForQuestion(int seconds = 60);

    /// Ends the connection: whoever waits hears that nobody is there any more. The mount stays.
    void giveUp();

private:
    std::string m_mountPoint;
    int m_nServer = -1; // descriptor
    bool m_bMounted = false;
};

} // namespace veltrano
