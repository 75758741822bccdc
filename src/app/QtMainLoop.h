#pragma once

#include "platform/MainLoop.h"

#include <QElapsedTimer>
#include <QObject>

#include <deque>
#include <map>
#include <memory>
#include <mutex>

class QTimer;

namespace veltrano {

/// The main loop of the window's program: tasks between Qt's own events. Made on the main thread and lives as
/// long as the program; a turn runs tasks for kTurnBudget at most, so that painting and input get their
/// share.
class QtMainLoop final : public QObject, public MainLoop {
    Q_OBJECT

public:
    QtMainLoop();
    ~QtMainLoop() override;

    void post(Task task) override;
    Token callLater(double seconds, Task task) override;
    void cancel(Token token) override;
    double now() const override;

    static constexpr qint64 kTurnBudget = 4; // milliseconds

private:
    void runPosted();

    std::mutex m_lock;
    std::deque<Task> m_posted; // guarded by m_lock
    bool m_bWoken = false;     // guarded by m_lock: a turn is on its way

    // Main thread only.
    std::map<Token, std::unique_ptr<QTimer>> m_timers;
    Token m_nNextToken = 1;
    QElapsedTimer m_clock;
};

} // namespace veltrano
