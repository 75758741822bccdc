#include "chart/RadialController.h"

#include "chart/RadialView.h"
#include "chart/geometry/RingCount.h"
#include "chart/geometry/SectorOutline.h"

#include <algorithm>
#include <array>

namespace veltrano {

void RadialController::setView(RadialView* view) {
    radialView = view;
    viewFrameChanged();
}

void RadialController::viewFrameChanged() {
    if (!radialView)
        return;
    initRadialParameters(radialView->getChartBounds());
    if (m_drill.m_nDrillAnimating == kDrillIn)
        initDrillSubLevels();
    updateRadialView();
    followHintOfKeys();
}

void RadialController::initRadialParameters(const QRectF& bounds) {
    m_layout.setBounds(bounds);
    initCountOfSublevels(false);
}

void RadialController::initCountOfSublevels(bool /*flag*/) {
    if (!m_pRoot)
        return;
    m_layout.m_nSubLevels = 0;
    if (m_layout.m_fullRadius == 0.0f || m_layout.m_lTotalSize <= 0)
        return;

    auto lock = lockTree();
    const std::int64_t* const table = m_pRoot->isMaxSizesValid() ? m_pRoot->getMaxSizesByLevels() : nullptr;
    if (table) {
        std::array<std::int64_t, kLevelCount> sizes;
        std::copy_n(table, sizes.size(), sizes.begin());
        if (lock)
            lock.unlock();
        m_layout.m_nSubLevels = m_pAnimController.checkNewLevels(countRingsByMaxSizes(m_layout, sizes));
    } else if (m_pRoot->isNotScannedVolume()) {
        m_layout.m_nSubLevels = 1;
    } else {
        m_layout.m_nSubLevels = countRingsByWalk(m_layout, *m_pRoot);
    }
}

bool RadialController::CanDrawItem(TreeObject* item, int withSubLevel) const {
    const FileSystemItem* const node = item->asFileSystemItem();
    return !node || veltrano::CanDrawItem(m_layout, *node, withSubLevel);
}

QRectF RadialController::getBoundsOfItem(TreeObject* item, int withSubLevel, double withStartAngleK) const {
    if (item == m_sentinels.m_pOccupSector)
        return getSectorBounds(m_layout, 1, 0.0, getOccupiedRatio(*m_pRoot));
    if (item == m_sentinels.m_pFreeSector) {
        const double ratio = getOccupiedRatio(*m_pRoot);
        return getSectorBounds(m_layout, 1, ratio, 1.0 - ratio);
    }
    const FileSystemItem* const node = item->asFileSystemItem();
    const bool hasShare = node && withSubLevel > 0 && m_layout.m_lTotalSize > 0;
    const double delta = hasShare ? m_layout.getFraction(node->gettotalsize()) : 1.0;
    return getSectorBounds(m_layout, withSubLevel, withStartAngleK, delta);
}

std::unique_lock<std::recursive_mutex> RadialController::lockTree() const {
    FolderSystemItem* const top = m_pRoot ? m_pRoot->getTopParent() : nullptr;
    return top ? std::unique_lock(TreeStorage::of(top).lock()) : std::unique_lock<std::recursive_mutex>();
}

} // namespace veltrano
