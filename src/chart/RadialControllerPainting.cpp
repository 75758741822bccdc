#include "chart/RadialController.h"

#include "appearance/Colours.h"
#include "chart/AnimView.h"
#include "chart/ChartHost.h"
#include "chart/RadialView.h"
#include "chart/geometry/SectorWalk.h"
#include "scan/SizeText.h"
#include "tree/TopLevelItem.h"

#include <QPainter>
#include <QRadialGradient>

#include <array>

namespace veltrano {

namespace {

constexpr double kSectorLineWidth = 0.2; // points

/// The grey that painting begins with, in all three channels.
constexpr float kFirstGrey = 0.1f;

/// What the central disc keeps of its alpha while its root is scanned.
constexpr double kScanDiscDimming = 0.5;

constexpr int kLabelPixelSize = 14; // points

QColor labelColour(bool scanning, float alpha) {
    // Light while scanning, so that it stands out on the dark middle of the dial.
    return scanning ? QColor::fromRgbF(0.75f, 0.8f, 0.85f, alpha) : QColor::fromRgbF(0.2f, 0.2f, 0.2f, alpha);
}

} // namespace

void RadialController::DrawRadialSructure(QPainter& painter, const QRectF& dirtyRect) {
    if (!m_pRoot)
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor firstColour = QColor::fromRgbF(kFirstGrey, kFirstGrey, kFirstGrey, m_fDrawAlpha);
    painter.setPen(firstColour);
    painter.setBrush(firstColour);
    const auto lock = lockTree();
    const bool scanning = isSelectedScanningRoot();
    if (radialView)
        DrawBackground(painter, radialView->getChartBounds());
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
    DrawRootLabel(painter, scanning);
    DrawForeground(painter);
    DrawCircleFrame(painter);
    painter.restore();
    if (m_bPointedMoved && animView)
        animView->updateSelection();
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

void RadialController::DrawGathered(QPainter& painter, const QRectF& dirtyRect, bool scanning) {
    const double radius = static_cast<double>(m_layout.m_fullRadius);
    const QRectF circle(m_layout.m_Center.x() - radius, m_layout.m_Center.y() - radius, 2 * radius,
                        2 * radius);
    const bool paintsAll = dirtyRect.contains(circle);
    for (const GatheredSector& sector : m_gathered) {
        if (paintsAll || dirtyRect.intersects(sector.outline.path.controlPointRect()))
            DrawSector(painter, sector.outline, sector.colorFlag, sector.timeCode, m_fDrawAlpha, scanning);
    }
}

void RadialController::DrawSector(QPainter& painter, const SectorPath& path, std::int16_t withColorFlag,
                                  std::uint8_t withTimeCode, float withAlpha, bool scanning) const {
    painter.setPen(
        QPen(getSectorLine(withAlpha, scanning), path.dLineWidth, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.setBrush(getSectorFill(withColorFlag, withTimeCode, withAlpha, scanning));
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

void RadialController::DrawRootLabel(QPainter& painter, bool scanning) const {
    if (!m_pHost)
        return;
    QFont font = painter.font();
    font.setPixelSize(kLabelPixelSize);
    // The square inside the disc.
    const double side = m_layout.getRadius(0) * std::numbers::sqrt2;
    QString text = QFontMetricsF(font).elidedText(m_pHost->getDisplayText(m_pRoot->getDisplayName()),
                                                  Qt::ElideMiddle, side);
    // A tree knows its size, also when it is 0; an entry of a folder that was not scanned has none.
    if (m_pRoot->getWholeItemSize() > 0 || m_pRoot->isScanned())
        text +=
            QLatin1Char('\n') + QString::fromStdString(stringFromFileSizeShort1(m_pRoot->getWholeItemSize()));

    // Letters stand upright although y points up.
    painter.save();
    painter.translate(m_layout.m_Center);
    painter.scale(1, -1);
    painter.setFont(font);
    painter.setPen(labelColour(scanning, m_fDrawAlpha));
    painter.drawText(QRectF(-side / 2, -side / 2, side, side), Qt::AlignCenter | Qt::TextDontClip, text);
    painter.restore();
}

} // namespace veltrano
