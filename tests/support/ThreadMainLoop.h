#pragma once

#include "platform/MainLoop.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <utility>

namespace veltrano {

/// A real main loop without a window: the thread that calls `runUntil` is the main thread, the clock is the
/// steady one.
class ThreadMainLoop final : public MainLoop {
public:
    /// Hears how many seconds each task took, on the main thread.
    using TurnObserver = std::function<void(double seconds)>;

    void post(Task task) override;
    Token callLater(double seconds, Task task) override;
    void cancel(Token token) override;
    double now() const override;

    /// Runs tasks and timers until the condition, which is asked after each, holds (true) or `limit` seconds
    /// are over (false).
    [[nodiscard]] bool runUntil(const std::function<bool()>& condition, double limit = 60);

    void setTurnObserver(TurnObserver observer) { m_observer = std::move(observer); }

private:
    using Due = std::pair<double, Token>; ///< Moment and order.

    bool takeTask(Task& task, double deadline);
    void runTurn(const Task& task);

    std::mutex m_mutex;
    std::condition_variable m_posted;
    // Guarded by m_mutex.
    std::deque<Task> m_posts;

    // The main thread only.
    std::map<Due, Task> m_timers;
    Token m_nNextToken = 1;
    TurnObserver m_observer;
};

} // namespace veltrano
