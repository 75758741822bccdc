#include "chart/RadialController.h"

#include "appearance/Colours.h"
#include "chart/ChartHost.h"
#include "chart/RadialView.h"
#include "chart/geometry/SectorWalk.h"

#include <QPainter>

#include <array>
#include <limits>

namespace veltrano {

namespace {

constexpr double kSectorLineWidth = 0.2; // points

/// The grey that painting begins with, in all three channels.
constexpr float kFirstGrey = 0.1f;

/// The label of the drilling root shows within this share of the motion, at the end at which it is the root.
constexpr double kLabelShare = 0.1;

/// Within this share of the motion from either end it is slow enough for its edges to be looked at.
constexpr double kSlowShare = 0.02;

/// So many sectors take long to fill with smooth edges.
constexpr std::size_t kCrowd = 200;

QPen sectorPen(const QColor& colour) {
    return {colour, kSectorLineWidth, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin};
}

/// The alpha of the drilling root's label, 0 to 1.
double getLabelAlpha(const DrillMotion& drill) {
    const double left =
        drill.m_nDrillAnimating == kDrillIn ? 1.0 - drill.m_fDrillAnimation : drill.m_fDrillAnimation;
    return left <= kLabelShare ? (kLabelShare - left) / kLabelShare : 0.0;
}

} // namespace

void RadialController::drawDrillAnimation(QPainter& painter, const QRectF& dirtyRect) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor firstColour = QColor::fromRgbF(kFirstGrey, kFirstGrey, kFirstGrey);
    painter.setPen(firstColour);
    painter.setBrush(firstColour);
    m_drill.outer = m_layout;
    if (radialView)
        DrawBackground(painter, radialView->getChartBounds());
    // While a scan runs, sizes change without a word to a chart that shows another root.
    if (m_pHost && m_pHost->getProcessingVol())
        m_drillFrames.forget();
    const bool scanning = isSelectedScanningRoot();
    const auto progress = static_cast<float>(m_drill.m_fDrillAnimation);
    {
        const auto lock = lockTree();
        DrawOuterChart(painter, dirtyRect, m_drill.m_nDrillAnimating == kDrillIn ? 1.0f - progress : progress,
                       scanning);
        m_gathered.clear();
        DrawDrillingChildrenOf(*m_pDrillingRoot);
    }
    DrawGathered(painter, dirtyRect, scanning, getDrillingEdges());
    DrawDrillingRoot(painter);
    DrawForeground(painter);
    DrawCircleFrame(painter);
    painter.restore();
}

/// The chart in which the drilling root is a sector, more or less faded.
void RadialController::DrawOuterChart(QPainter& painter, const QRectF& dirtyRect, float alpha,
                                      bool scanning) {
    if (scanning) {
        // Its lines do not fade, and its sectors grow.
        m_fDrawAlpha = alpha;
        DrawStructure(painter, dirtyRect, scanning);
        m_fDrawAlpha = 1.0f;
        return;
    }
    const QTransform toPixel = painter.deviceTransform();
    const double radius = static_cast<double>(m_layout.m_fullRadius) + kSectorLineWidth;
    const QRectF circle(m_layout.m_Center.x() - radius, m_layout.m_Center.y() - radius, 2 * radius,
                        2 * radius);
    const QRect pixels = toPixel.mapRect(circle).toAlignedRect();
    DrillFrames& frames = m_drillFrames;
    if (frames.outerChart.size() != pixels.size() || frames.outerToPixel != toPixel) {
        frames.outerToPixel = toPixel;
        frames.outerChart = QImage(pixels.size(), QImage::Format_ARGB32_Premultiplied);
        frames.outerChart.fill(Qt::transparent);
        QPainter picture(&frames.outerChart);
        picture.setRenderHint(QPainter::Antialiasing);
        picture.setFont(painter.font());
        picture.setTransform(toPixel * QTransform::fromTranslate(-pixels.x(), -pixels.y()));
        DrawStructure(picture, circle, scanning);
    }
    painter.save();
    painter.setOpacity(static_cast<qreal>(alpha));
    painter.resetTransform();
    painter.setTransform(painter.deviceTransform().inverted());
    painter.drawImage(pixels.topLeft(), frames.outerChart);
    painter.restore();

    // The line of the disc does not fade.
    SectorPath disc;
    FillSectorPath(m_layout, disc, 0, 0.0, 1.0, kSectorLineWidth);
    painter.setPen(sectorPen(Colours::sharedColours().cLineColor()));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(disc.path);
}

void RadialController::gatherDrillingChildren(FolderSystemItem& folder) {
    m_drillFrames.children.clear();
    // What the children of the folder on each ring inherit; the drilling root stands on ring 0.
    std::array<InheritedFlags, kMaxSubLevels + 1> inheritedOnRing{
        InheritedFlags{folder.isTopCollected(), folder.isTopHiddenFlag(), folder.isTopTrashFlag()}};
    const auto visit = [&](const Sector& sector) {
        const auto ring = static_cast<std::size_t>(sector.nSubLevel);
        const ChildFlags flags = getChildFlags(sector.item, inheritedOnRing[ring - 1]);
        inheritedOnRing[ring] = flags.passedOn;
        m_drillFrames.children.push_back({sector.nSubLevel, sector.dSkAngle, sector.dDeltaAngle,
                                          flags.colorFlag, sector.item.getTimeCode()});
        return SectorVisit::Descend;
    };
    if (m_drill.isValid())
        walkSectors(folder.childrenArray(), DrillLayout(m_drill), 1, m_drill.getFirstStart(), visit);
    m_drillFrames.bChildrenKnown = true;
}

void RadialController::DrawDrillingChildrenOf(FolderSystemItem& folder) {
    if (!m_drillFrames.bChildrenKnown)
        gatherDrillingChildren(folder);
    // What lies above a sector that is too small now is left out with it.
    int hiddenAbove = std::numeric_limits<int>::max();
    for (const DrillFrames::Child& child : m_drillFrames.children) {
        if (child.nSubLevel > hiddenAbove)
            continue;
        hiddenAbove = DrawDrillingItem(child) ? std::numeric_limits<int>::max() : child.nSubLevel;
    }
}

bool RadialController::DrawDrillingItem(const DrillFrames::Child& child) {
    SectorPath outline;
    if (!FillDrillingSectorPath(m_drill, outline, child.nSubLevel, child.dSkAngle, child.dDeltaAngle,
                                kSectorLineWidth, nullptr, nullptr))
        return false;
    m_gathered.push_back({std::move(outline), child.colorFlag, child.timeCode});
    return true;
}

/// Smooth edges take two thirds of the time of a fill. While a crowd moves fast its lines hide that they are
/// missing, and the motion gets the time.
RadialController::SectorEdges RadialController::getDrillingEdges() const {
    const double progress = m_drill.m_fDrillAnimation;
    const bool isFast = progress > kSlowShare && progress < 1.0 - kSlowShare;
    return isFast && m_gathered.size() >= kCrowd ? SectorEdges::Rough : SectorEdges::Smooth;
}

void RadialController::DrawDrillingRoot(QPainter& painter) {
    const bool drillsOut = m_drill.m_nDrillAnimating == kDrillOut;
    SectorPath path;
    if (!m_drill.isValid() ||
        !FillDrillingSectorPath(m_drill, path, 0, m_drill.getFirstStart(),
                                drillsOut ? 1.0 : m_drill.getRootShare(), kSectorLineWidth, nullptr, nullptr))
        return;
    // Flat, whatever it is: the shading of a top root comes with the first ordinary paint.
    QColor fill = getDiscFill(*m_pDrillingRoot).colour;
    fill.setAlphaF(m_fDrawAlpha);
    painter.setBrush(fill);
    painter.setPen(sectorPen(Colours::sharedColours().cLineColor()));
    painter.drawPath(path.path);
    if (const double alpha = getLabelAlpha(m_drill); alpha > 0)
        DrawRootLabel(painter, *m_pDrillingRoot, static_cast<float>(alpha), m_drill.getInner().getRadius(0));
}

} // namespace veltrano
