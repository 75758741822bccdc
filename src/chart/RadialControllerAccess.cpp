// The chart for assistive programs.

#include "chart/ChartHost.h"
#include "chart/RadialController.h"
#include "chart/RadialView.h"
#include "chart/geometry/SectorWalk.h"

namespace veltrano {

namespace {

/// Between two announcements while a scan runs, seconds: a reading voice must come to its end.
constexpr double kAnnouncementPause = 5.0;

} // namespace

SectorText RadialController::describe(TreeObject& object, double share) const {
    if (!m_pRoot)
        return {};
    const auto lock = lockTree();
    return describeSector(object, *m_pRoot, m_sentinels, share, [this](std::string_view bytes) {
        return m_pHost ? m_pHost->getDisplayText(bytes)
                       : QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    });
}

void RadialController::visitSectors(
    const std::function<void(TreeObject&, int ring, double start, double share)>& visit) const {
    if (!m_pRoot)
        return;
    const auto lock = lockTree();
    visit(*m_pRoot->getObject(), 0, 0.0, 1.0);
    if (m_pRoot->isNotScannedVolume()) {
        const double occupied = getOccupiedRatio(*m_pRoot);
        visit(*m_sentinels.m_pOccupSector, 1, 0.0, occupied);
        visit(*m_sentinels.m_pFreeSector, 1, occupied, 1.0 - occupied);
    } else if (m_layout.m_lTotalSize > 0) {
        forEachSector(*m_pRoot, m_layout, [&](const Sector& sector) {
            visit(sector.item, sector.nSubLevel, sector.dSkAngle, sector.dDeltaAngle);
            return SectorVisit::Descend;
        });
    }
}

void RadialController::announceRoot() {
    m_dLastAnnouncement = m_mainLoop.now();
    if (radialView)
        radialView->tellOfChange();
}

void RadialController::announceGrowth() {
    if (m_mainLoop.now() - m_dLastAnnouncement >= kAnnouncementPause)
        announceRoot();
}

} // namespace veltrano
