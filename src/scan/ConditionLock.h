#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

namespace veltrano {

/// A lock with a number that says what it waits for. It may be held for long (a worker holds its own for a
/// whole job) and others find that out without waiting. Only the thread that holds it may unlock it. Any
/// thread.
class ConditionLock {
public:
    explicit ConditionLock(int condition) : m_nCondition(condition) {}
    ConditionLock(const ConditionLock&) = delete;
    ConditionLock& operator=(const ConditionLock&) = delete;

    /// Waits until the lock is free, whatever its condition.
    void lock();

    /// Waits until the lock is free and has that condition.
    void lockWhenCondition(int condition);

    /// Takes the lock if it is free and has that condition, without waiting.
    [[nodiscard]] bool tryLockWhenCondition(int condition);

    /// Frees the lock and sets what it waits for next.
    void unlockWithCondition(int condition);

    int condition() const;

private:
    bool isFreeWith(int condition) const { return !m_bHeld && m_nCondition == condition; }
    void take();

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    // Guarded by m_mutex.
    int m_nCondition;
    bool m_bHeld = false;
    std::thread::id m_holder;
};

} // namespace veltrano
