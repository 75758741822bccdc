#include "chart/RadialController.h"

#include "chart/AnimView.h"
#include "chart/RadialView.h"
#include "chart/geometry/SectorWalk.h"

namespace veltrano {

namespace {

/// What an outline may reach beyond its sector, on each side, points.
constexpr double kOutlineMargin = 0.25;

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
    if (item == pointed.m_pItem() && start == pointed.m_dSkAngle())
        return false;

    QRectF area;
    const bool hadBounds = withDrawRect && pointed.m_pItem();
    if (hadBounds)
        area = getBoundsOfItem(pointed.m_pItem(), pointed.m_nSubLevel(), pointed.m_dSkAngle());
    if (item && withDrawRect)
        area = area.united(getBoundsOfItem(item, ring, start));

    pointed.setM_pItem(item);
    pointed.setM_nSubLevel(ring);
    pointed.setM_dSkAngle(start);
    if (withDrawRect)
        *withDrawRect = area.adjusted(-kOutlineMargin, -kOutlineMargin, kOutlineMargin, kOutlineMargin);
    return item || hadBounds;
}

void RadialController::operateMouseMoveFromRadialView(const QPointF& point) {
    QRectF area;
    if (OperateMousePoint(point, &area) && animView)
        animView->updateSelection();
}

void RadialController::pointAtMouse() {
    if (radialView)
        operateMouseMoveFromRadialView(radialView->getMouseLocation());
}

void RadialController::selectItem(FileSystemItem* item) {
    cleanSelectedItems();
    if (!item || !item->getParent() || (m_pRoot && item == m_pRoot->getObject()))
        return;
    fillSectorItem(m_pSelectedSectors.emplace_back(), item);
    if (animView)
        animView->updateSelection();
}

void RadialController::selectItems(std::span<FileSystemItem* const> items) {
    cleanSelectedItems();
    for (FileSystemItem* item : items) {
        if (item && item->getParent() && (!m_pRoot || item != m_pRoot->getObject()))
            fillSectorItem(m_pSelectedSectors.emplace_back(), item);
    }
    if (animView)
        animView->updateSelection();
}

void RadialController::setHiliteOnRadial(FileSystemItem* item) {
    fillSectorItem(m_pCurPointedSector, item);
    if (animView)
        animView->updateSelection();
}

void RadialController::fillSectorItem(SectorItem& sector, FileSystemItem* byFileItem) const {
    // The sector may be the last to hold the item's tree.
    const std::shared_ptr<FileSystemItem> held = TreeStorage::hold(byFileItem);
    sector.cleanSector();
    if (!byFileItem || !m_pRoot)
        return;
    int ring = 0;
    const FileSystemItem* step = byFileItem;
    while (step && step != m_pRoot->getObject()) {
        step = step->getParent();
        ++ring;
    }
    if (!step)
        return;
    const auto lock = lockTree();
    sector.setM_pItem(byFileItem);
    sector.setM_nSubLevel(ring);
    if (m_layout.m_lTotalSize > 0)
        sector.setM_dSkAngle(m_layout.getFraction(getPrevSizesOfItem(*byFileItem, m_pRoot)));
}

void RadialController::recacSelItemsParameters() {
    for (SectorItem& sector : m_pSelectedSectors) {
        if (TreeObject* const item = sector.m_pItem())
            fillSectorItem(sector, item->asFileSystemItem());
    }
}

} // namespace veltrano
