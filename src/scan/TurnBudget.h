#pragma once

#include "platform/MainLoop.h"

namespace veltrano {

/// How long one turn of the main loop may work on what a scan hands over, so that the window always answers.
/// A value for one turn. Main thread.
class TurnBudget {
public:
    explicit TurnBudget(const MainLoop& mainLoop)
        : m_mainLoop(mainLoop), m_dEnd(mainLoop.now() + kTurnSeconds) {}

    /// Whether the turn's time is up. Looks at the clock at every eighth call, since the pieces of work
    /// between two calls are small.
    [[nodiscard]] bool isSpent() {
        if (++m_nAsked % 8 == 0 && m_mainLoop.now() >= m_dEnd)
            m_bSpent = true;
        return m_bSpent;
    }

    static constexpr double kTurnSeconds = 0.002;

private:
    const MainLoop& m_mainLoop;
    double m_dEnd;
    unsigned m_nAsked = 0;
    bool m_bSpent = false;
};

} // namespace veltrano
