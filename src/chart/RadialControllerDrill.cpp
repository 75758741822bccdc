#include "chart/RadialController.h"

#include "appearance/Motion.h"
#include "chart/AnimView.h"
#include "chart/RDAnimation.h"
#include "chart/RadialView.h"
#include "chart/geometry/Easing.h"
#include "chart/geometry/RingCount.h"
#include "chart/geometry/SectorWalk.h"

namespace veltrano {

namespace {

/// All animations of the chart take this long.
constexpr double kAnimationSeconds = 1.0;

} // namespace

void RadialController::startAnimation(void (RadialController::*updateValue)(float),
                                      void (RadialController::*stop)()) {
    m_RDAnimation = std::make_shared<RDAnimation>(
        m_mainLoop, kAnimationSeconds, easeInOut,
        [this, updateValue](float value) { (this->*updateValue)(value); }, [this, stop] { (this->*stop)(); });
    m_RDAnimation->startAnimation();
}

void RadialController::releaseRDAnimation() {
    // Held here, since its end drops it.
    if (const auto running = m_RDAnimation)
        running->stopAnimation();
    m_RDAnimation.reset();
}

/// Ends the running animation as if it had never been.
void RadialController::dropAnimation() {
    if (const auto running = std::exchange(m_RDAnimation, nullptr))
        running->cancelAnimation();
    setDrillingRoot(nullptr);
    m_drill = DrillMotion();
}

void RadialController::showAnimationFrame() {
    if (radialView)
        radialView->setNeedsDisplay();
    if (animView)
        animView->updateSelection();
    if (radialView)
        radialView->displayIfNeeded();
}

void RadialController::setDrillingRoot(FolderSystemItem* root) {
    m_pDrillingTree = root ? TreeStorage::of(root).shared_from_this() : nullptr;
    m_pDrillingRoot = root;
    m_drillFrames = DrillFrames();
}

void RadialController::initDrillSubLevels() {
    m_drill.outer = m_layout;
    const auto lock = lockTree();
    m_drill.m_nDrSubLevels = countRingsByWalk(m_drill.getInner(), *m_pDrillingRoot);
}

void RadialController::startDrillInAnimation(FolderSystemItem* folder, int withSubLevel, double withSkAngle) {
    releaseRDAnimation();
    const std::int64_t size = folder->getTheSize();
    if (size <= 0 || m_layout.m_lTotalSize <= 0 || withSubLevel < 1 || isMotionReduced(radialView)) {
        setRoot(folder);
        return;
    }
    setDrillingRoot(folder);
    m_drill.m_nDrillAnimating = kDrillIn;
    m_drill.m_fDrillAnimation = 0;
    m_drill.m_lDrTotalSize = size;
    m_drill.m_nDrRootSubLevel = withSubLevel;
    m_drill.m_dDrRootSkAngle = withSkAngle;
    initDrillSubLevels();
    m_pCurPointedSector.cleanSector();
    cleanSelectedItems();
    startAnimation(&RadialController::updateDrillAnimationValue, &RadialController::stopDrillAnimation);
}

void RadialController::startDrillOutAnimation(FolderSystemItem* ancestor) {
    releaseRDAnimation();
    FileSystemItem* const node = m_pRoot ? m_pRoot->getObject()->asFileSystemItem() : nullptr;
    FolderSystemItem* const root = node ? node->asFolderSystemItem() : nullptr;
    const std::int64_t levels = root ? root->calcLevelsToParent(ancestor) : 0;
    const std::int64_t turn = ancestor->getTheSize();
    const std::int64_t size = root ? root->getTheSize() : 0;
    if (ancestor->gettotalsize() <= 0 || turn <= 0 || size <= 0 || levels <= 0 ||
        isMotionReduced(radialView)) {
        setRoot(ancestor);
        return;
    }
    setDrillingRoot(root);
    m_drill.m_nDrillAnimating = kDrillOut;
    m_drill.m_fDrillAnimation = 0;
    m_drill.m_lDrTotalSize = size;
    m_drill.m_nDrSubLevels = m_layout.m_nSubLevels;
    m_drill.m_nDrRootSubLevel = static_cast<int>(levels);
    {
        const auto lock = lockTree();
        m_drill.m_dDrRootSkAngle =
            static_cast<double>(getPrevSizesOfItem(*root, ancestor)) / static_cast<double>(turn);
    }
    // The root changes first here: what fades in is the ordinary chart of the new one.
    changeRoot(ancestor, false);
    startAnimation(&RadialController::updateDrillAnimationValue, &RadialController::stopDrillAnimation);
}

void RadialController::updateDrillAnimationValue(float value) {
    m_drill.m_fDrillAnimation = static_cast<double>(value);
    showAnimationFrame();
}

void RadialController::stopDrillAnimation() {
    const std::uint16_t mode = std::exchange(m_drill.m_nDrillAnimating, kDrillNone);
    if (mode == kDrillOut)
        setNeedsDisplayRadialViewandSelection();
    else
        changeRoot(m_pDrillingRoot, true);
    setDrillingRoot(nullptr);
    releaseRDAnimation();
}

} // namespace veltrano
