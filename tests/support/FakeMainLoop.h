#pragma once

#include "platform/MainLoop.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <map>
#include <mutex>
#include <utility>

namespace veltrano {

/// A main loop whose clock the test turns. Posting is for any thread, everything else for the test's.
class FakeMainLoop final : public MainLoop {
public:
    /// What runUntil does when nothing is posted: wait for other threads, or let the clock jump to the next
    /// timer if there is one.
    enum class WhenIdle { Wait, AdvanceClock };

    void post(Task task) override;
    Token callLater(double seconds, Task task) override;
    void cancel(Token token) override;
    double now() const override;

    /// Runs what is posted and everything that becomes due within the time, each timer at its own moment and
    /// in their order; 0 runs what is due at this moment.
    void advance(double seconds);

    /// Runs tasks as they come, also from other threads, until the test's condition holds (true) or `limit`
    /// real seconds are over (false).
    [[nodiscard]] bool runUntil(const std::function<bool()>& condition, WhenIdle whenIdle = WhenIdle::Wait,
                                double limit = 60);

    std::size_t pendingTimers() const { return m_timers.size(); }
    std::size_t pendingPosts() const;

private:
    using Due = std::pair<double, Token>; ///< Moment and order.

    bool runPosted();
    bool runNextTimer(double until);

    mutable std::mutex m_mutex;
    std::condition_variable m_posted;
    // Guarded by m_mutex.
    std::deque<Task> m_posts;
    double m_dNow = 0;

    // The test's thread only.
    std::map<Due, Task> m_timers;
    Token m_nNextToken = 1;
};

} // namespace veltrano
