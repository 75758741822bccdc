#pragma once

#include <QObject>

#include <functional>
#include <memory>
#include <mutex>

namespace veltrano {

/// A question to something that may take for ever to answer, such as a mount that has died. It is put on a
/// thread of its own, which nobody waits for; one question is open at a time, and abandoning it drops
/// whatever it still answers. Lives in its receiver; main thread.
class BlockingQuestion final {
public:
    /// What the question's thread shares with the one who asked. Any thread.
    class Channel final : public std::enable_shared_from_this<Channel> {
    public:
        explicit Channel(QObject& receiver) : m_pReceiver(&receiver) {}

        /// Nobody wants the answer any more.
        bool isAbandoned() const;
        /// Runs the task on the receiver's thread, unless the question is abandoned by then. As often as
        /// there is something to tell.
        void answer(std::function<void()> task);

    private:
        friend class BlockingQuestion;

        mutable std::mutex m_mutex;
        QObject* m_pReceiver; // guarded by m_mutex; null when abandoned
    };
    using Question = std::function<void(Channel& channel)>;

    /// The receiver outlives this object.
    explicit BlockingQuestion(QObject& receiver) : m_receiver(receiver) {}
    BlockingQuestion(const BlockingQuestion&) = delete;
    BlockingQuestion& operator=(const BlockingQuestion&) = delete;
    ~BlockingQuestion() { abandon(); }

    /// Abandons the open question and puts this one, which must own or share all that it uses. False if no
    /// thread is to be had.
    [[nodiscard]] bool ask(Question question);
    void abandon();

private:
    QObject& m_receiver;
    std::shared_ptr<Channel> m_pChannel; // of the last question; null before the first and when abandoned
};

} // namespace veltrano
