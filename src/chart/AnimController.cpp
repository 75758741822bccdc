#include "chart/AnimController.h"

#include "chart/geometry/RingTable.h"

namespace veltrano {

namespace {
constexpr double kSecondsPerRing = 1.0;
}

void AnimController::initAnimation() {
    mLastTick = m_clock.now();
    mLastCheckLevels = 1;
}

void AnimController::stopAnimation() {
    mLastTick = 0;
    mLastCheckLevels = 0;
}

int AnimController::checkNewLevels(int wanted) {
    if (mLastCheckLevels == 0 || mLastCheckLevels >= wanted)
        return wanted;
    if (mLastCheckLevels >= kMaxSubLevels)
        return kMaxSubLevels;
    if (const double now = m_clock.now(); now - mLastTick >= kSecondsPerRing) {
        ++mLastCheckLevels;
        mLastTick = now;
    }
    return mLastCheckLevels;
}

} // namespace veltrano
