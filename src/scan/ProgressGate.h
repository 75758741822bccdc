#pragma once

#include "platform/MainLoop.h"

#include <atomic>
#include <memory>

namespace veltrano {

/// Lets at most ten merges a second pass, of whichever worker asks first. The tick starts with the first
/// request and goes on for the life of the model that owns the gate, across scans. Main thread, but for the
/// sign.
class ProgressGate {
public:
    explicit ProgressGate(MainLoop& mainLoop) : m_mainLoop(mainLoop) {}
    ProgressGate(const ProgressGate&) = delete;
    ProgressGate& operator=(const ProgressGate&) = delete;
    ~ProgressGate() { m_mainLoop.cancel(m_tick); }

    /// Whether a merge may run: a tick has passed since the last one. Starts the tick if this is the first
    /// request of all.
    [[nodiscard]] bool ask();

    /// The merge has run; the next one waits for a tick.
    void close();

    /// Tells whether a request has a chance, so that workers need not wake the main thread for one that would
    /// be dropped. True before the first request, which starts the tick. Any thread; may outlive the gate.
    using Sign = std::shared_ptr<const std::atomic<bool>>;
    Sign getSign() const { return m_pOpen; }

    static constexpr double kTickSeconds = 0.1;

private:
    void scheduleTick();
    void mytimer();

    MainLoop& m_mainLoop;
    MainLoop::Token m_tick = 0;
    bool gProgressTimerStarted = false;
    bool gProgressTimerFired = false;
    const std::shared_ptr<std::atomic<bool>> m_pOpen = std::make_shared<std::atomic<bool>>(true);
};

} // namespace veltrano
