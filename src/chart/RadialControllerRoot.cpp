#include "chart/RadialController.h"

#include "chart/AnimView.h"
#include "chart/ChartBackdrop.h"
#include "chart/ChartHost.h"
#include "chart/RDAnimation.h"
#include "chart/RadialView.h"
#include "chart/geometry/SectorWalk.h"
#include "tree/VolumeSystemItem.h"

namespace veltrano {

RadialController::RadialController(MainLoop& mainLoop)
    : m_pOccupSector(std::make_unique<Sentinel>()),
      m_pFreeSector(std::make_unique<Sentinel>()),
      m_sentinels{m_pOccupSector.get(), m_pFreeSector.get()},
      m_mainLoop(mainLoop),
      m_pAnimController(mainLoop) {}

RadialController::~RadialController() = default;

void RadialController::setRoot(VolumeFolderProtocol* root, bool setAnyway, bool withRedraw) {
    if (root == m_pRoot && !setAnyway)
        return;
    dropAnimation();
    changeRoot(root, withRedraw);
}

void RadialController::changeRoot(VolumeFolderProtocol* root, bool withRedraw) {
    FileSystemItem* const node = root ? root->getObject()->asFileSystemItem() : nullptr;
    // The old root's tree stays until everything below has let go of it.
    const std::shared_ptr<TreeStorage> oldTree =
        std::exchange(m_pRootTree, node ? TreeStorage::of(node).shared_from_this() : nullptr);
    m_pRoot = root;
    if (m_pHost)
        m_pHost->setPathControlTextForItem(root);
    ReinitRootParams();
    if (withRedraw)
        setNeedsDisplayRadialViewandSelection();
    if (m_pHost)
        m_pHost->showRightBiggestView();
    announceRoot();
}

void RadialController::ReinitRootParams() {
    const bool scanned = m_pRoot && m_pRoot->isScanned();
    const bool scanning = isSelectedScanningRoot();
    if (m_pHost) {
        m_pHost->hideCollectionView(m_pHost->isCollectionEmpty() && (!scanned || scanning));
        if (!scanned)
            m_pHost->tryHideTable25();
    }
    if (m_pRoot) {
        m_bDrawFreeSector = m_pRoot->getUseFreeSector();
        // A root under scan is sized by all its used space, so that sectors grow into a circle that stands
        // for it, instead of filling the whole turn from the first file on.
        m_layout.m_lTotalSize = scanning ? m_pRoot->getOccSize() : m_pRoot->getTheSize();
        if (animView)
            animView->showScanningAnimation(scanning);
        showPanelsForScanning(scanning);
        if (animView) {
            if (scanning)
                animView->RecalcAnimationParameters();
            animView->updateSelection();
        }
        m_dFullRatio = m_bDrawFreeSector ? m_pRoot->getFullRatio() : 1.0;
        initCountOfSublevels(true);
    }
    if (m_pHost) {
        m_pHost->ReinitSortedList();
        m_pHost->ReinitBiggestFilesArray();
    }
    initColorParameters();
    m_pCurPointedSector.cleanSector();
    cleanSelectedItems();
    pointAtMouse(PointSounds::Heard);
}

void RadialController::volumeWasRemoved(std::string_view path) {
    if (m_pRoot && m_pRoot->getFullPath() == path)
        setRoot(nullptr);
}

bool RadialController::isSelectedScanningRoot() const {
    if (!m_pRoot || !m_pHost)
        return false;
    const std::optional<std::string> path = m_pHost->getProcessingVol();
    return path && *path == m_pRoot->getFullPath();
}

void RadialController::UpdateRadialStructureDuringProcessByRoot(FolderSystemItem* root) {
    const auto lock = lockTree();
    if (!m_pRoot || m_pRoot->getObject() != root)
        return;
    // Never lowered, so that the circle only ever fills up.
    m_layout.m_lTotalSize = std::max(m_layout.m_lTotalSize, root->gettotalsize());
    initCountOfSublevels(true);
    if (m_pHost)
        m_pHost->ReinitSortedList();
    setNeedsDisplayRadialViewandSelection();
    pointAtMouse(PointSounds::Silent);
    announceGrowth();
}

void RadialController::initColorParameters() {
    m_fOriginAnglek = 0;
    m_fKoeffAngle = 1;
    if (!m_pRoot || !m_pRoot->getParent())
        return;
    const FileSystemItem* const item = m_pRoot->getObject()->asFileSystemItem();
    const FolderSystemItem* const top = m_pRoot->getTopParent();
    const std::int64_t turn =
        top->isVol() ? static_cast<const VolumeSystemItem*>(top)->getVolSize() : top->gettotalsize();
    if (!item || turn <= 0)
        return;
    const auto whole = static_cast<double>(turn);
    const auto lock = lockTree();
    m_fKoeffAngle = static_cast<float>(static_cast<double>(m_layout.m_lTotalSize) / whole);
    m_fOriginAnglek = static_cast<float>(static_cast<double>(getPrevSizesOfItem(*item, nullptr)) / whole);
}

void RadialController::StartAnimation() {
    m_bIsAnimating = true;
    m_pAnimController.initAnimation();
    if (animView)
        animView->StartAnimation();
    showPanelsForScanning(true);
}

void RadialController::StopAnimation() {
    if (animView)
        animView->StopAnimation();
    m_pAnimController.stopAnimation();
    m_bIsAnimating = false;
    showPanelsForScanning(false);
}

void RadialController::SuspendAnimation() {
    if (!m_bIsAnimating)
        return;
    if (animView)
        animView->StopAnimation();
    showPanelsForScanning(false);
}

void RadialController::ResumeAnimation() {
    if (!m_bIsAnimating || !animView || animView->isHidden() || !isSelectedScanningRoot())
        return;
    animView->StartAnimation();
    showPanelsForScanning(true);
}

void RadialController::hideSelectionDuringLiveResize() {
    if (animView)
        animView->HideSel();
}

void RadialController::showSelectionAfterLiveResize() {
    if (animView)
        animView->ShowSel();
}

void RadialController::showPanelsForScanning(bool show) {
    if (bgPanel)
        bgPanel->fadePlateTo(show ? ChartBackdrop::kPlateHidden : ChartBackdrop::kPlateShown);
}

void RadialController::setNeedsDisplayRadialViewandSelection() {
    updateRadialView();
    updateSelection();
}

void RadialController::updateSelection() {
    if (animView)
        animView->updateSelection();
}

void RadialController::updateRadialView() {
    m_drillFrames.forget();
    if (radialView)
        radialView->setNeedsDisplay();
}

} // namespace veltrano
