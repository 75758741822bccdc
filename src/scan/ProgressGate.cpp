#include "scan/ProgressGate.h"

namespace veltrano {

bool ProgressGate::ask() {
    if (!gProgressTimerStarted) {
        gProgressTimerStarted = true;
        *m_pOpen = false;
        scheduleTick();
    }
    return gProgressTimerFired;
}

void ProgressGate::close() {
    gProgressTimerFired = false;
    *m_pOpen = false;
}

void ProgressGate::scheduleTick() {
    m_tick = m_mainLoop.callLater(kTickSeconds, [this] { mytimer(); });
}

void ProgressGate::mytimer() {
    gProgressTimerFired = true;
    *m_pOpen = true;
    scheduleTick();
}

} // namespace veltrano
