#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <utility>
#include <vector>

namespace veltrano {

/// Turns the main loop by hand and times each turn, without the time it slept.
class LoopMeter {
public:
    LoopMeter() { m_clock.start(); }

    /// Until the condition holds.
    template <class Condition>
    void run(Condition holds) {
        while (!holds()) {
            const double start = now();
            QCoreApplication::processEvents(QEventLoop::AllEvents);
            const double took = now() - start;
            if (took > kIdleTurn)
                m_turns.push_back(took);
            else
                QThread::usleep(kNap);
        }
    }

    std::vector<double> takeTurns() { return std::exchange(m_turns, {}); }
    double now() const { return static_cast<double>(m_clock.nsecsElapsed()) / 1e9; }

private:
    static constexpr double kIdleTurn = 0.00002; // seconds; a turn this short found nothing to do
    static constexpr unsigned long kNap = 200;   // microseconds

    QElapsedTimer m_clock;
    std::vector<double> m_turns; // seconds
};

} // namespace veltrano
