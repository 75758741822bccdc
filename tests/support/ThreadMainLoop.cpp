#include "support/ThreadMainLoop.h"

#include <algorithm>
#include <chrono>

namespace veltrano {

void ThreadMainLoop::post(Task task) {
    const std::lock_guard lock(m_mutex);
    m_posts.push_back(std::move(task));
    m_posted.notify_one();
}

MainLoop::Token ThreadMainLoop::callLater(double seconds, Task task) {
    const Token token = m_nNextToken++;
    m_timers.emplace(Due{now() + std::max(seconds, 0.0), token}, std::move(task));
    return token;
}

void ThreadMainLoop::cancel(Token token) {
    std::erase_if(m_timers, [token](const auto& timer) { return timer.first.second == token; });
}

double ThreadMainLoop::now() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool ThreadMainLoop::runUntil(const std::function<bool()>& condition, double limit) {
    const double deadline = now() + limit;
    Task task;
    while (!condition()) {
        if (!takeTask(task, deadline))
            return condition();
        runTurn(task);
        task = nullptr;
    }
    return true;
}

/// Waits for the next posted task or due timer. False at the deadline. A due timer goes first, so that a
/// stream of posts can't starve it.
bool ThreadMainLoop::takeTask(Task& task, double deadline) {
    std::unique_lock lock(m_mutex);
    for (double time = now(); time < deadline; time = now()) {
        const auto first = m_timers.begin();
        if (first != m_timers.end() && first->first.first <= time) {
            task = std::move(first->second);
            m_timers.erase(first);
            return true;
        }
        if (!m_posts.empty()) {
            task = std::move(m_posts.front());
            m_posts.pop_front();
            return true;
        }
        const double next = first != m_timers.end() ? std::min(first->first.first, deadline) : deadline;
        m_posted.wait_for(lock, std::chrono::duration<double>(next - time));
    }
    return false;
}

void ThreadMainLoop::runTurn(const Task& task) {
    const double start = now();
    task();
    if (m_observer)
        m_observer(now() - start);
}

} // namespace veltrano
