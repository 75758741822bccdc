#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <thread>

namespace veltrano {

/// Watches the mount table on a thread of its own and tells that mounts have come, gone or changed; which
/// ones is for the listener to find out. Where the table can't be watched, nothing is ever told.
class MountWatch {
public:
    /// `changed` is called on the watching thread, once for all that happens until `quiet` passes without a
    /// change, but at least every ten times that long while changes go on.
    explicit MountWatch(std::function<void()> changed, std::chrono::milliseconds quiet = kQuiet,
                        const std::string& table = "/proc/self/mountinfo");
    MountWatch(const MountWatch&) = delete;
    MountWatch& operator=(const MountWatch&) = delete;
    /// Waits for a running `changed` to return.
    ~MountWatch();

    static constexpr std::chrono::milliseconds kQuiet{100};

private:
    void watch() const;
    void gatherMore() const;

    const std::function<void()> m_changed;
    const std::chrono::milliseconds m_quiet;
    const int m_nTable; ///< Descriptor; -1 if the table can't be opened.
    const int m_nStop;  ///< Descriptor that becomes readable at the end.
    std::thread m_thread;
};

} // namespace veltrano
