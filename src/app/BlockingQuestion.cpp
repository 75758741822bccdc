#include "app/BlockingQuestion.h"

#include <system_error>
#include <thread>
#include <utility>

namespace veltrano {

bool BlockingQuestion::Channel::isAbandoned() const {
    const std::lock_guard lock(m_mutex);
    return m_pReceiver == nullptr;
}

void BlockingQuestion::Channel::answer(std::function<void()> task) {
    // The lock keeps the receiver from going until the task is in its queue, and Qt drops what is queued for
    // an object that goes.
    const std::lock_guard lock(m_mutex);
    if (m_pReceiver == nullptr)
        return;
    QMetaObject::invokeMethod(
        m_pReceiver,
        [self = shared_from_this(), task = std::move(task)] {
            if (!self->isAbandoned())
                task();
        },
        Qt::QueuedConnection);
}

bool BlockingQuestion::ask(Question question) {
    abandon();
    auto channel = std::make_shared<Channel>(m_receiver);
    try {
        std::thread([channel, question = std::move(question)] { question(*channel); }).detach();
    } catch (const std::system_error&) {
        return false;
    }
    m_pChannel = std::move(channel);
    return true;
}

void BlockingQuestion::abandon() {
    if (!m_pChannel)
        return;
    {
        const std::lock_guard lock(m_pChannel->m_mutex);
        m_pChannel->m_pReceiver = nullptr;
    }
    m_pChannel.reset();
}

} // namespace veltrano
