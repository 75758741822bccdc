#include "scan/ConditionLock.h"

#include <cassert>

namespace veltrano {

void ConditionLock::lock() {
    std::unique_lock guard(m_mutex);
    m_changed.wait(guard, [this] { return !m_bHeld; });
    take();
}

void ConditionLock::lockWhenCondition(int condition) {
    std::unique_lock guard(m_mutex);
    m_changed.wait(guard, [&] { return isFreeWith(condition); });
    take();
}

bool ConditionLock::tryLockWhenCondition(int condition) {
    const std::lock_guard guard(m_mutex);
    if (!isFreeWith(condition))
        return false;
    take();
    return true;
}

void ConditionLock::unlockWithCondition(int condition) {
    {
        const std::lock_guard guard(m_mutex);
        assert(m_bHeld && m_holder == std::this_thread::get_id());
        m_bHeld = false;
        m_holder = {};
        m_nCondition = condition;
    }
    m_changed.notify_all();
}

int ConditionLock::condition() const {
    const std::lock_guard guard(m_mutex);
    return m_nCondition;
}

void ConditionLock::take() {
    m_bHeld = true;
    m_holder = std::this_thread::get_id();
}

} // namespace veltrano
