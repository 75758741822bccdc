#include "chart/RadialController.h"

#include "appearance/Colours.h"
#include "chart/AnimView.h"
#include "chart/PaintStrips.h"
#include "chart/RadialView.h"
#include "chart/geometry/SectorWalk.h"
#include "tree/TopLevelItem.h"

#include <QPainter>
#include <QRadialGradient>

#include <array>
#include <cstddef>
#include <deque>

namespace veltrano {

namespace {

constexpr double kSectorLineWidth = 0.2; // points

/// The grey that painting begins with, in all three channels.
constexpr float kFirstGrey = 0.1f;

/// What the central disc keeps of its alpha while its root is scanned.
constexpr double kScanDiscDimming = 0.5;

/// From so many sectors on, a second thread is worth its start.
constexpr std::size_t kManySectors = 200;

/// What a line reaches beyond its path, pixels.
constexpr double kStripMargin = 2;

} // namespace

void RadialController::DrawRadialSructure(QPainter& painter, const QRectF& dirtyRect) {
    if (!m_pRoot)
        return;
    if (isDrillAnimating()) {
        drawDrillAnimation(painter, dirtyRect);
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor firstColour = QColor::fromRgbF(kFirstGrey, kFirstGrey, kFirstGrey, m_fDrawAlpha);
    painter.setPen(firstColour);
    painter.setBrush(firstColour);
    const auto lock = lockTree();
    const bool scanning = isSelectedScanningRoot();
    if (radialView)
        DrawBackground(painter, radialView->getChartBounds());
    DrawStructure(painter, dirtyRect, scanning);
    DrawForeground(painter);
    DrawCircleFrame(painter);
    painter.restore();
    if (m_bPointedMoved && animView)
        animView->updateSelection();
}

/// Everything of the chart itself. Under the tree's lock.
void RadialController::DrawStructure(QPainter& painter, const QRectF& dirtyRect, bool scanning) {
    m_bPointedMoved = false;
    m_gathered.clear();
    if (m_pRoot->isNotScannedVolume()) {
        DrawNotScannedSectors();
    } else if (m_layout.m_lTotalSize > 0) {
        DrawChildrenOf(*m_pRoot,
                       {m_pRoot->isTopCollected(), m_pRoot->isTopHiddenFlag(), m_pRoot->isTopTrashFlag()});
    }
    DrawGathered(painter, dirtyRect, scanning);
    DrawRoot(painter, scanning);
    DrawRootLabel(painter);
}

void RadialController::DrawChildrenOf(VolumeFolderProtocol& root, const InheritedFlags& inherited) {
    // What the children of the folder on each ring inherit; the root stands on ring 0.
    std::array<InheritedFlags, kMaxSubLevels + 1> inheritedOnRing{inherited};
    SectorItem& pointed = m_pCurPointedSector;
    forEachSector(root, m_layout, [&](const Sector& sector) {
        const auto ring = static_cast<std::size_t>(sector.nSubLevel);
        const ChildFlags flags = getChildFlags(sector.item, inheritedOnRing[ring - 1]);
        inheritedOnRing[ring] = flags.passedOn;
        const bool drawn = DrawItemWithSubLevel(sector.nSubLevel, sector.dSkAngle, sector.dDeltaAngle,
                                                flags.colorFlag, sector.item.getTimeCode());
        // The highlight moves along as earlier siblings grow during a scan; it never moves back.
        if (pointed.m_pItem() == &sector.item && sector.dSkAngle > pointed.m_dSkAngle()) {
            pointed.setM_dSkAngle(sector.dSkAngle);
            m_bPointedMoved = true;
        }
        return drawn ? SectorVisit::Descend : SectorVisit::Skip;
    });
}

bool RadialController::DrawItemWithSubLevel(int ring, double withStartAngleK, double withDeltaAngleK,
                                            std::int16_t withColorFlag, std::uint8_t withTimeCode) {
    if (ring < 1 || ring > m_layout.m_nSubLevels)
        return false;
    GatheredSector& sector = m_gathered.emplace_back();
    sector.colorFlag = withColorFlag;
    sector.timeCode = withTimeCode;
    return FillSectorPath(m_layout, sector.outline, ring, withStartAngleK, withDeltaAngleK, kSectorLineWidth);
}

void RadialController::DrawNotScannedSectors() {
    const TopLevelItem* const entry = m_pRoot->getObject()->asTopLevelItem();
    if (!entry || entry->getsize() <= 0)
        return;
    const double occupied =
        static_cast<double>(m_pRoot->getOccSize()) / static_cast<double>(entry->getsize());
    DrawItemWithSubLevel(1, 0.0, occupied, kSectorOccupied, 0);
}

void RadialController::DrawGathered(QPainter& painter, const QRectF& dirtyRect, bool scanning,
                                    SectorEdges edges) {
    const double radius = static_cast<double>(m_layout.m_fullRadius);
    const QRectF circle(m_layout.m_Center.x() - radius, m_layout.m_Center.y() - radius, 2 * radius,
                        2 * radius);
    const bool paintsAll = dirtyRect.contains(circle);
    const auto draw = [&](QPainter& onto, const GatheredSector& sector) {
        DrawSector(onto, sector.outline, sector.colorFlag, sector.timeCode, m_fDrawAlpha, scanning, edges);
    };
    if (paintsAll && m_gathered.size() >= kManySectors && DrawGatheredInStrips(painter, draw))
        return;
    for (const GatheredSector& sector : m_gathered) {
        if (paintsAll || dirtyRect.intersects(sector.outline.path.controlPointRect()))
            draw(painter, sector);
    }
}

/// Paints the upper and the lower half of the circle at the same time; false where that is not possible.
bool RadialController::DrawGatheredInStrips(
    QPainter& painter, const std::function<void(QPainter&, const GatheredSector&)>& draw) const {
    const QTransform toPixel = painter.deviceTransform();
    const int row = qRound(toPixel.map(m_layout.m_Center).y());
    std::array<std::vector<const GatheredSector*>, 2> sectorsOf;
    // A path keeps what it was converted to, so that no two threads may draw the same one.
    std::deque<GatheredSector> copies;
    for (const GatheredSector& sector : m_gathered) {
        const QRectF bounds = toPixel.mapRect(sector.outline.path.controlPointRect())
                                  .adjusted(-kStripMargin, -kStripMargin, kStripMargin, kStripMargin);
        const bool isAbove = bounds.top() < row;
        const bool isBelow = bounds.bottom() > row;
        if (isAbove)
            sectorsOf[0].push_back(&sector);
        if (isBelow && !isAbove)
            sectorsOf[1].push_back(&sector);
        if (isBelow && isAbove) {
            GatheredSector& copy = copies.emplace_back();
            copy.outline.path.addPath(sector.outline.path);
            copy.outline.dLineWidth = sector.outline.dLineWidth;
            copy.colorFlag = sector.colorFlag;
            copy.timeCode = sector.timeCode;
            sectorsOf[1].push_back(&copy);
        }
    }
    return paintInStrips(painter, row, [&](QPainter& onto, int strip) {
        for (const GatheredSector* sector : sectorsOf[static_cast<std::size_t>(strip)])
            draw(onto, *sector);
    });
}

void RadialController::DrawSector(QPainter& painter, const SectorPath& path, std::int16_t withColorFlag,
                                  std::uint8_t withTimeCode, float withAlpha, bool scanning,
                                  SectorEdges edges) const {
    const QPen pen(getSectorLine(withAlpha, scanning), path.dLineWidth, Qt::SolidLine, Qt::FlatCap,
                   Qt::RoundJoin);
    const QColor fill = getSectorFill(withColorFlag, withTimeCode, withAlpha, scanning);
    if (edges == SectorEdges::Rough) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.fillPath(path.path, fill);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.strokePath(path.path, pen);
        return;
    }
    painter.setPen(pen);
    painter.setBrush(fill);
    painter.drawPath(path.path);
}

void RadialController::DrawRoot(QPainter& painter, bool scanning) const {
    SectorPath disc;
    FillSectorPath(m_layout, disc, 0, 0.0, 1.0, kSectorLineWidth);
    const float alpha =
        scanning ? static_cast<float>(static_cast<double>(m_fDrawAlpha) * kScanDiscDimming) : m_fDrawAlpha;
    DiscFill fill = getDiscFill(*m_pRoot);
    fill.colour.setAlphaF(alpha);
    QBrush brush(fill.colour);
    if (fill.bGradient) {
        QColor middle = Colours::sharedColours().cEndRootColor();
        middle.setAlphaF(alpha);
        QRadialGradient gradient(m_layout.m_Center, m_layout.getRadius(0));
        gradient.setColorAt(0, middle);
        gradient.setColorAt(1, fill.colour);
        brush = gradient;
    }
    painter.setBrush(brush);
    painter.setPen(QPen(Colours::sharedColours().cLineColor(), disc.dLineWidth, Qt::SolidLine, Qt::FlatCap,
                        Qt::RoundJoin));
    painter.drawPath(disc.path);
    DrawRootShadow(painter, disc.path);
}

} // namespace veltrano
