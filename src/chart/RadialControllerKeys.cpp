// The keyboard on the chart.

#include "chart/RadialController.h"
#include "chart/RadialView.h"
#include "chart/geometry/SectorWalk.h"

#include <cmath>

namespace veltrano {

namespace {

struct Place {
    TreeObject* item = nullptr;
    double start = 0.0; // fraction of a turn
};

/// The sectors of one folder's children, in their order, from a ring and a fraction on.
std::vector<Place> getSectorsOf(const ChildArray* children, const RingLayout& layout, int ring,
                                double start) {
    std::vector<Place> places;
    const auto note = [&](const Sector& sector) {
        places.push_back({&sector.item, sector.dSkAngle});
        return SectorVisit::Skip;
    };
    walkSectors(children, layout, ring, start, note);
    return places;
}

/// The neighbour of one of the places; the first or the last has the other for one.
Place getNeighbour(const std::vector<Place>& places, const TreeObject* item, SectorMove move) {
    for (std::size_t index = 0; index < places.size(); ++index) {
        if (places[index].item == item) {
            const std::size_t step = move == SectorMove::Next ? 1 : places.size() - 1;
            return places[(index + step) % places.size()];
        }
    }
    return {};
}

} // namespace

void RadialController::movePointedSector(SectorMove move) {
    if (!m_pRoot || isRDAnimating())
        return;
    const auto lock = lockTree();
    TreeObject* const disc = m_pRoot->getObject();
    TreeObject* const pointed = m_pCurPointedSector.m_pItem();
    const int ring = m_pCurPointedSector.m_nSubLevel();
    if (!pointed) {
        pointAtSector(disc, 0, 0.0);
        return;
    }
    if (m_pRoot->isNotScannedVolume()) {
        // The disc and the two parts around it.
        TreeObject* const occupied = m_sentinels.m_pOccupSector;
        TreeObject* const unused = m_sentinels.m_pFreeSector;
        if (move == SectorMove::Inwards)
            pointAtSector(disc, 0, 0.0);
        else if (pointed == disc && move == SectorMove::Outwards)
            pointAtSector(occupied, 1, 0.0);
        else if (pointed == occupied && move != SectorMove::Outwards)
            pointAtSector(unused, 1, getOccupiedRatio(*m_pRoot));
        else if (pointed == unused && move != SectorMove::Outwards)
            pointAtSector(occupied, 1, 0.0);
        return;
    }
    FileSystemItem* const item = pointed->asFileSystemItem();
    if (!item || m_layout.m_lTotalSize <= 0)
        return;
    if (move == SectorMove::Outwards) {
        const FolderSystemItem* const folder = item->asFolderSystemItem();
        if (!folder || folder->isPack())
            return;
        const auto above = getSectorsOf(folder->childrenArray(), m_layout, ring + 1,
                                        ring == 0 ? 0.0 : m_pCurPointedSector.m_dSkAngle());
        if (!above.empty())
            pointAtSector(above.front().item, ring + 1, above.front().start);
        return;
    }
    FolderSystemItem* const folder = item->getParent();
    if (ring == 0 || !folder)
        return;
    if (folder == disc && move == SectorMove::Inwards) {
        pointAtSector(disc, 0, 0.0);
        return;
    }
    SectorItem below;
    fillSectorItem(below, folder);
    if (move == SectorMove::Inwards) {
        pointAtSector(folder, below.m_nSubLevel(), below.m_dSkAngle());
        return;
    }
    const auto siblings = getSectorsOf(folder->childrenArray(), m_layout, ring, below.m_dSkAngle());
    if (const Place place = getNeighbour(siblings, item, move); place.item)
        pointAtSector(place.item, ring, place.start);
}

void RadialController::pointAtSector(TreeObject* item, int ring, double start) {
    const bool isOther = item != m_pCurPointedSector.m_pItem();
    m_pCurPointedSector.set(item, ring, start);
    m_bPointedByKeys = true;
    updateSelection();
    showHintOfKeys();
    if (!isOther)
        return;
    playSoundOf(item);
    if (radialView)
        radialView->tellOfFocus(item);
}

void RadialController::clickPointedSector() {
    const SectorItem pointed = m_pCurPointedSector;
    TreeObject* const item = pointed.m_pItem();
    if (!item || isRDAnimating() || isSelectedScanningRoot() || item == m_sentinels.m_pOccupSector ||
        item == m_sentinels.m_pFreeSector)
        return;
    hidePanel();
    clickItem(item, pointed.m_nSubLevel(), pointed.m_dSkAngle());
}

void RadialController::drillOneLevelUp() {
    if (!m_pRoot || isRDAnimating() || isSelectedScanningRoot())
        return;
    if (FolderSystemItem* const parent = m_pRoot->getParent()) {
        hidePanel();
        startDrillOutAnimation(parent);
    }
}

void RadialController::drillToTop() {
    if (isRDAnimating())
        return;
    hidePanel();
    showDiskStructure();
}

QPointF RadialController::getMiddleOfPointedSector() const {
    TreeObject* const item = m_pCurPointedSector.m_pItem();
    const int ring = m_pCurPointedSector.m_nSubLevel();
    if (!item || !m_pRoot || ring == 0 || ring > m_layout.m_nSubLevels)
        return m_layout.m_Center;
    double start = m_pCurPointedSector.m_dSkAngle();
    double delta = 0.0;
    if (item == m_sentinels.m_pOccupSector) {
        delta = getOccupiedRatio(*m_pRoot);
    } else if (item == m_sentinels.m_pFreeSector) {
        start = getOccupiedRatio(*m_pRoot);
        delta = 1.0 - start;
    } else if (const FileSystemItem* const node = item->asFileSystemItem();
               node && m_layout.m_lTotalSize > 0) {
        delta = m_layout.getFraction(node->gettotalsize());
    }
    const double angle = m_layout.g_dOriginAngleRad - (start + delta / 2) * RingLayout::kFullTurn;
    const double radius = (m_layout.getRadius(ring - 1) + m_layout.getRadius(ring)) / 2;
    return m_layout.m_Center + radius * QPointF(std::cos(angle), std::sin(angle));
}

} // namespace veltrano
