#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace veltrano {

/// Counts what is under way, so that someone can wait for all of it. Any thread.
class DispatchGroup {
public:
    DispatchGroup() = default;
    DispatchGroup(const DispatchGroup&) = delete;
    DispatchGroup& operator=(const DispatchGroup&) = delete;

    void enter();
    /// Once for each enter.
    void leave();

    /// Waits until nothing is under way, `seconds` at most; answers whether that came about. At once if
    /// nothing is.
    bool wait(double seconds);

    /// Waits without limit.
    void wait();

private:
    std::mutex m_mutex;
    std::condition_variable m_emptied;
    std::int64_t m_nEntered = 0; // guarded by m_mutex
};

} // namespace veltrano
