#include "chart/RadialController.h"

#include "appearance/Motion.h"
#include "chart/RadialView.h"

namespace veltrano {

void RadialController::setDrawFreeSector() {
    // One that runs is finished before the flag turns, so that the next one begins where it ended.
    releaseRDAnimation();
    if (!m_pRoot)
        return;
    m_bDrawFreeSector = !m_bDrawFreeSector;
    m_pRoot->setUseFreeSector(m_bDrawFreeSector);
    m_pCurPointedSector.cleanSector();
    recacSelItemsParameters();
    hidePanel();
    if (isMotionReduced(radialView))
        stopFreeSectorAnimation();
    else
        startAnimation(&RadialController::updateFreeSectorAnimationValue,
                       &RadialController::stopFreeSectorAnimation);
}

void RadialController::updateFreeSectorAnimationValue(float value) {
    const double full = m_pRoot->getFullRatio();
    const double eased = static_cast<double>(value);
    m_dFullRatio = full + (1.0 - full) * (m_bDrawFreeSector ? 1.0 - eased : eased);
    // The circle of a volume on which nothing is used shrinks to nothing; it has no sectors then.
    const auto occupied = static_cast<double>(m_pRoot->getOccSize());
    m_layout.m_lTotalSize =
        m_dFullRatio > 0 ? static_cast<std::int64_t>(occupied / m_dFullRatio) : m_pRoot->getTheSize();
    m_drillFrames.forget();
    pointAtMouse(PointSounds::Silent);
    showAnimationFrame();
}

void RadialController::stopFreeSectorAnimation() {
    m_pRoot->setUseFreeSector(m_bDrawFreeSector);
    ReinitRootParams();
    setNeedsDisplayRadialViewandSelection();
    releaseRDAnimation();
}

} // namespace veltrano
