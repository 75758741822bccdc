#include "chart/RadialController.h"

#include "chart/ChartHost.h"
#include "chart/RadialView.h"
#include "tree/TopLevelItem.h"

namespace veltrano {

namespace {

/// What an outline may reach beyond its sector, on each side, points.
constexpr double kOutlineMargin = 0.25;

constexpr char kClickableSound[] = "Pop";
constexpr char kOtherSound[] = "Tink";

} // namespace

TreeObject* RadialController::getItemByPoint(const QPointF& point, int* withResSubLevel,
                                             double* withResSkAngle) {
    const auto lock = lockTree();
    return veltrano::getItemByPoint(m_layout, m_pRoot, m_sentinels, point, withResSubLevel, withResSkAngle);
}

bool RadialController::OperateMousePoint(const QPointF& point, QRectF* withDrawRect) {
    int ring = 0;
    double start = 0.0;
    TreeObject* const item = getItemByPoint(point, &ring, &start);
    SectorItem& pointed = m_pCurPointedSector;
    if (item == pointed.m_pItem() && start == pointed.m_dSkAngle()) {
        ShowToolTipforItem(item);
        return false;
    }

    QRectF area;
    const bool hadBounds = withDrawRect && pointed.m_pItem();
    if (hadBounds)
        area = getBoundsOfItem(pointed.m_pItem(), pointed.m_nSubLevel(), pointed.m_dSkAngle());
    if (item && withDrawRect)
        area = area.united(getBoundsOfItem(item, ring, start));

    pointed.set(item, ring, start);
    if (withDrawRect)
        *withDrawRect = area.adjusted(-kOutlineMargin, -kOutlineMargin, kOutlineMargin, kOutlineMargin);
    ShowToolTipforItem(item);
    return item || hadBounds;
}

bool RadialController::OperateMouseMoveByPoint(const QPointF& point, QRectF* withDrawRect) {
    const TreeObject* const before = m_pCurPointedSector.m_pItem();
    const bool changed = OperateMousePoint(point, withDrawRect);
    TreeObject* const now = m_pCurPointedSector.m_pItem();
    if (changed && now && now != before)
        playSoundOf(now);
    return changed;
}

void RadialController::playSoundOf(TreeObject* item) const {
    if (m_pHost && m_pHost->getPlaySound())
        m_pHost->playSound(isItemClickable(item) ? kClickableSound : kOtherSound);
}

void RadialController::operateMouseMoveFromRadialView(const QPointF& point) {
    if (isRDAnimating())
        return;
    m_bPointedByKeys = false;
    QRectF area;
    if (OperateMouseMoveByPoint(point, &area))
        updateSelection();
}

void RadialController::pointAtMouse(PointSounds sounds) {
    if (!radialView)
        return;
    TreeObject* const item = m_pCurPointedSector.m_pItem();
    if (m_bPointedByKeys && item) {
        // Its sector may have moved; what is no tree item stays where it is.
        if (FileSystemItem* const node = item->asFileSystemItem())
            fillSectorItem(m_pCurPointedSector, node);
        updateSelection();
        followHintOfKeys();
        return;
    }
    QRectF area;
    const QPointF mouse = radialView->getMouseLocation();
    const bool changed = sounds == PointSounds::Heard ? OperateMouseMoveByPoint(mouse, &area)
                                                      : OperateMousePoint(mouse, &area);
    if (changed)
        updateSelection();
}

void RadialController::mouseExited() {
    hidePanel();
    if (m_pHost)
        m_pHost->setPathControlTextForItem(m_pRoot);
}

bool RadialController::isItemClickable(TreeObject* item) {
    if (!item)
        return false;
    if (const TopLevelItem* const entry = item->asTopLevelItem())
        return dynamic_cast<const VolumeItem*>(entry) != nullptr;
    const FileSystemItem* const node = item->asFileSystemItem();
    return node && node->isDir() && !node->isPack();
}

} // namespace veltrano
