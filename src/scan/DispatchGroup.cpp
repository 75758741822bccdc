#include "scan/DispatchGroup.h"

#include <cassert>
#include <chrono>

namespace veltrano {

void DispatchGroup::enter() {
    const std::lock_guard guard(m_mutex);
    ++m_nEntered;
}

void DispatchGroup::leave() {
    const std::lock_guard guard(m_mutex);
    assert(m_nEntered > 0);
    if (--m_nEntered == 0)
        m_emptied.notify_all();
}

bool DispatchGroup::wait(double seconds) {
    std::unique_lock guard(m_mutex);
    return m_emptied.wait_for(guard, std::chrono::duration<double>(seconds),
                              [this] { return m_nEntered == 0; });
}

void DispatchGroup::wait() {
    std::unique_lock guard(m_mutex);
    m_emptied.wait(guard, [this] { return m_nEntered == 0; });
}

} // namespace veltrano
