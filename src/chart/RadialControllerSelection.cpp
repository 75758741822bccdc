#include "chart/RadialController.h"
#include "chart/RadialView.h"
#include "chart/geometry/SectorWalk.h"

namespace veltrano {

void RadialController::selectItem(FileSystemItem* item) {
    cleanSelectedItems();
    if (!item || !item->getParent() || (m_pRoot && item == m_pRoot->getObject()))
        return;
    fillSectorItem(m_pSelectedSectors.emplace_back(), item);
    updateSelection();
    if (radialView)
        radialView->tellOfSelection();
}

void RadialController::selectItems(std::span<FileSystemItem* const> items) {
    cleanSelectedItems();
    for (FileSystemItem* item : items) {
        if (item && item->getParent() && (!m_pRoot || item != m_pRoot->getObject()))
            fillSectorItem(m_pSelectedSectors.emplace_back(), item);
    }
    updateSelection();
    if (radialView)
        radialView->tellOfSelection();
}

void RadialController::setHiliteOnRadial(FileSystemItem* item) {
    fillSectorItem(m_pCurPointedSector, item);
    updateSelection();
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
