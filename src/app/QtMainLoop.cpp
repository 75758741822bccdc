#include "app/QtMainLoop.h"

#include <QTimer>

#include <cmath>
#include <utility>

namespace veltrano {

QtMainLoop::QtMainLoop() {
    m_clock.start();
}

QtMainLoop::~QtMainLoop() = default;

void QtMainLoop::post(Task task) {
    bool wake = false;
    {
        const std::lock_guard guard(m_lock);
        m_posted.push_back(std::move(task));
        wake = !std::exchange(m_bWoken, true);
    }
    if (wake)
        QMetaObject::invokeMethod(this, &QtMainLoop::runPosted, Qt::QueuedConnection);
}

void QtMainLoop::runPosted() {
    QElapsedTimer turn;
    turn.start();
    // What is posted while this turn runs belongs to a later one.
    std::size_t remaining = 0;
    {
        const std::lock_guard guard(m_lock);
        remaining = m_posted.size();
    }
    for (; remaining > 0 && turn.elapsed() < kTurnBudget; --remaining) {
        Task task;
        {
            const std::lock_guard guard(m_lock);
            task = std::move(m_posted.front());
            m_posted.pop_front();
        }
        task();
    }
    const std::lock_guard guard(m_lock);
    m_bWoken = !m_posted.empty();
    // A timer and not a posted event: those are all delivered before the loop looks at input or paints.
    if (m_bWoken)
        QTimer::singleShot(0, this, &QtMainLoop::runPosted);
}

MainLoop::Token QtMainLoop::callLater(double seconds, Task task) {
    const Token token = m_nNextToken++;
    auto timer = std::make_unique<QTimer>();
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    connect(timer.get(), &QTimer::timeout, this, [this, token, task = std::move(task)] {
        // The timer goes with its token, and the task with the timer: keep it over the call.
        const Task running = task;
        m_timers.at(token).release()->deleteLater();
        m_timers.erase(token);
        running();
    });
    timer->start(static_cast<int>(std::lround(seconds * 1000)));
    m_timers.emplace(token, std::move(timer));
    return token;
}

void QtMainLoop::cancel(Token token) {
    m_timers.erase(token);
}

double QtMainLoop::now() const {
    return static_cast<double>(m_clock.nsecsElapsed()) / 1e9;
}

} // namespace veltrano
