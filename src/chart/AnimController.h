#pragma once

#include "platform/MainLoop.h"

namespace veltrano {

/// Paces the rings of a scan: the chart begins with one and gains at most one a second, however deep the tree
/// is already. A falling count takes effect at once. Owned by the chart's controller; main thread.
class AnimController {
public:
    /// `clock` tells the time and outlives this.
    explicit AnimController(const MainLoop& clock) : m_clock(clock) {}

    void initAnimation();
    void stopAnimation();

    /// How many of `wanted` rings may be shown now; may let in one more.
    int checkNewLevels(int wanted);

private:
    const MainLoop& m_clock;
    double mLastTick = 0;     // seconds; when a ring was last let in
    int mLastCheckLevels = 0; // rings let in so far; 0: no limit is in force
};

} // namespace veltrano
