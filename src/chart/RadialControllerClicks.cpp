// Press, click, and the drag that turns the chart.

#include "chart/AnimView.h"
#include "chart/ChartHost.h"
#include "chart/RadialController.h"
#include "chart/RadialView.h"
#include "tree/SpecialItems.h"
#include "tree/TopLevelItem.h"
#include "tree/VolumeSystemItem.h"

#include <QMouseEvent>

#include <cmath>

namespace veltrano {

namespace {

/// From this share on a volume is too full for its free part to be worth showing.
constexpr double kFullShare = 0.99;

/// Whether what was counted reaches the capacity. Whole multiples on purpose: a volume that reports more free
/// space than it has is still not full for it.
bool fillsCapacity(const VolumeSystemItem& volume) {
    const std::int64_t capacity = volume.getVolSize();
    if (capacity <= 0)
        return false;
    const std::int64_t multiples = volume.gettotalsize() / capacity;
    return static_cast<double>(multiples) >= kFullShare;
}

double angleAround(const QPointF& centre, const QPointF& point) {
    return std::atan2(point.y() - centre.y(), point.x() - centre.x());
}

} // namespace

bool RadialController::LMouseDown(const QPointF& point, const QMouseEvent& /*withEvent*/) {
    mPrevMouse = point;
    m_bWasDragging = false;
    m_pressedFile = isRDAnimating() ? std::nullopt : getDragFileByPoint(point);
    return true;
}

bool RadialController::LMouseClick(const QPointF& point, const QMouseEvent& withEvent) {
    const Qt::KeyboardModifiers modifiers = withEvent.modifiers();
    m_pressedFile.reset();
    if (isSelectedScanningRoot())
        return false;
    if (m_bWasDragging) {
        m_bWasDragging = false;
        return false;
    }
    if (isRDAnimating())
        return false;
    int ring = 0;
    double start = 0.0;
    TreeObject* const item = getItemByPoint(point, &ring, &start);
    if (!item || item == m_sentinels.m_pOccupSector || item == m_sentinels.m_pFreeSector)
        return false;
    // With any of the three keys the click asks for something about the item and never drills.
    if (modifiers & Qt::ControlModifier) {
        openFileItemInFinder(item);
        return false;
    }
    if (modifiers & Qt::ShiftModifier)
        return false;
    if (modifiers & Qt::AltModifier) {
        openItemInfoInFinder(item);
        return false;
    }
    return clickItem(item, ring, start);
}

bool RadialController::clickItem(TreeObject* item, int ring, double start) {
    if (item->asTopLevelItem()) {
        if (!m_pHost || m_pHost->getProcessingVol())
            return false;
        hidePanel();
        m_pHost->stopAction();
        m_pHost->startAction();
        return false;
    }
    if (m_pRoot->isMe(item))
        return clickRoot();
    FileSystemItem* const node = item->asFileSystemItem();
    if (!node)
        return false;
    if (FolderSystemItem* const folder = node->asFolderSystemItem(); folder && !folder->isPack()) {
        startDrillInAnimation(folder, ring, start);
        return false;
    }
    if (node->isFileVaultDir() && m_pHost) {
        m_pHost->selectVolumeByName(
            std::string(static_cast<const FileVaultDirItem*>(node)->getVolumeLinkPath()));
        return true;
    }
    return false;
}

bool RadialController::clickRoot() {
    if (FolderSystemItem* const parent = m_pRoot->getParent()) {
        startDrillOutAnimation(parent);
        return true;
    }
    // A folder has no free part that could be shown.
    if (!m_pRoot->isVol() || m_pRoot->getFullRatio() >= kFullShare)
        return false;
    if (const auto* const volume = dynamic_cast<const VolumeSystemItem*>(m_pRoot);
        volume && !fillsCapacity(*volume))
        setDrawFreeSector();
    return false;
}

bool RadialController::LMouseDragged(const QPointF& point, const QMouseEvent& withEvent) {
    if (isRDAnimating())
        return false;
    if (dragFromDiagramByPoint(mPrevMouse, withEvent))
        return true;
    if (point == mPrevMouse)
        return true;
    rotateBy(mPrevMouse, point);
    mPrevMouse = point;
    m_bWasDragging = true;
    setNeedsDisplayRadialViewandSelection();
    if (radialView)
        radialView->repaint();
    return true;
}

void RadialController::rotateBy(const QPointF& from, const QPointF& to) {
    m_layout.g_dOriginAngleRad += angleAround(m_layout.m_Center, to) - angleAround(m_layout.m_Center, from);
    m_layout.g_dOriginAngleDeg = m_layout.g_dOriginAngleRad * 180.0 / std::numbers::pi;
}

} // namespace veltrano
