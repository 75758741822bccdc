#include "support/FakeMainLoop.h"

#include <algorithm>
#include <chrono>
#include <limits>

namespace veltrano {

void FakeMainLoop::post(Task task) {
    const std::lock_guard lock(m_mutex);
    m_posts.push_back(std::move(task));
    m_posted.notify_one();
}

MainLoop::Token FakeMainLoop::callLater(double seconds, Task task) {
    const Token token = m_nNextToken++;
    m_timers.emplace(Due{now() + std::max(seconds, 0.0), token}, std::move(task));
    return token;
}

void FakeMainLoop::cancel(Token token) {
    std::erase_if(m_timers, [token](const auto& timer) { return timer.first.second == token; });
}

double FakeMainLoop::now() const {
    const std::lock_guard lock(m_mutex);
    return m_dNow;
}

void FakeMainLoop::advance(double seconds) {
    const double until = now() + seconds;
    while (runPosted() || runNextTimer(until)) {
    }
    const std::lock_guard lock(m_mutex);
    m_dNow = until;
}

bool FakeMainLoop::runUntil(const std::function<bool()>& condition, WhenIdle whenIdle, double limit) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(limit);
    const double until = whenIdle == WhenIdle::AdvanceClock ? std::numeric_limits<double>::infinity() : now();
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        if (runPosted() || runNextTimer(until))
            continue;
        std::unique_lock lock(m_mutex);
        if (!m_posted.wait_until(lock, deadline, [this] { return !m_posts.empty(); }))
            return condition();
    }
    return true;
}

std::size_t FakeMainLoop::pendingPosts() const {
    const std::lock_guard lock(m_mutex);
    return m_posts.size();
}

/// Runs one posted task. False if there is none.
bool FakeMainLoop::runPosted() {
    Task task;
    {
        const std::lock_guard lock(m_mutex);
        if (m_posts.empty())
            return false;
        task = std::move(m_posts.front());
        m_posts.pop_front();
    }
    task();
    return true;
}

/// Runs the next timer that is due by then, at its moment. False if there is none.
bool FakeMainLoop::runNextTimer(double until) {
    const auto first = m_timers.begin();
    if (first == m_timers.end() || first->first.first > until)
        return false;
    const Task task = std::move(first->second);
    {
        const std::lock_guard lock(m_mutex);
        m_dNow = std::max(m_dNow, first->first.first);
    }
    m_timers.erase(first);
    task();
    return true;
}

} // namespace veltrano
