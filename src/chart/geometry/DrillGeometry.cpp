#include "chart/geometry/DrillGeometry.h"

#include <algorithm>

namespace veltrano {

namespace {

/// The two ends of the motion of one sector.
struct DrillEnds {
    DrillSector inOuter;
    DrillSector inInner;
};

DrillEnds getEnds(const DrillMotion& motion, int ring, double start, double delta) {
    const RingLayout& outer = motion.outer;
    const RingLayout inner = motion.getInner();
    const double share = motion.getRootShare();
    const double rootStart = motion.m_dDrRootSkAngle;
    DrillEnds ends;

    const int ringInOuter = motion.m_nDrRootSubLevel + ring;
    const bool beyondEdge = ringInOuter > outer.m_nSubLevels;
    ends.inOuter.dOuterRadius = outer.getRadius(beyondEdge ? outer.m_nSubLevels : ringInOuter);
    ends.inOuter.dInnerRadius = outer.getRadius(beyondEdge ? outer.m_nSubLevels : ringInOuter - 1);
    ends.inInner.dOuterRadius = inner.getRadius(ring);
    ends.inInner.dInnerRadius = ring == 0 ? 0.0 : inner.getRadius(ring - 1);

    if (motion.m_nDrillAnimating == kDrillOut) {
        ends.inInner.dStartAngleK = start;
        ends.inInner.dDeltaAngleK = delta;
        ends.inOuter.dStartAngleK = rootStart + share * start;
        ends.inOuter.dDeltaAngleK = share * delta;
    } else {
        ends.inOuter.dStartAngleK = start;
        ends.inOuter.dDeltaAngleK = delta;
        ends.inInner.dStartAngleK = (start - rootStart) / share;
        ends.inInner.dDeltaAngleK = delta / share;
    }
    return ends;
}

bool isRingOfDrill(const DrillMotion& motion, int ring) {
    return motion.isValid() && ring >= 0 && ring <= motion.m_nDrSubLevels;
}

} // namespace

RingLayout DrillMotion::getInner() const {
    RingLayout inner = outer;
    inner.m_nSubLevels = m_nDrSubLevels;
    inner.m_lTotalSize = m_lDrTotalSize;
    return inner;
}

std::optional<DrillSector> getDrillSector(const DrillMotion& motion, int ring, double startAngleK,
                                          double deltaAngleK) {
    if (!isRingOfDrill(motion, ring))
        return std::nullopt;
    const DrillEnds ends = getEnds(motion, ring, startAngleK, deltaAngleK);
    const bool drillsIn = motion.m_nDrillAnimating == kDrillIn;
    const DrillSector& from = drillsIn ? ends.inOuter : ends.inInner;
    const DrillSector& to = drillsIn ? ends.inInner : ends.inOuter;
    const auto between = [&](double DrillSector::*value) {
        return from.*value + (to.*value - from.*value) * motion.m_fDrillAnimation;
    };
    const DrillSector now{between(&DrillSector::dOuterRadius), between(&DrillSector::dInnerRadius),
                          between(&DrillSector::dStartAngleK), between(&DrillSector::dDeltaAngleK)};
    if (!isArcVisible(now.dDeltaAngleK, RingLayout::kFullTurn * now.dOuterRadius))
        return std::nullopt;
    return now;
}

DrillLayout::DrillLayout(const DrillMotion& motion)
    : m_nSubLevels(motion.m_nDrSubLevels), lMeasuredTotal(motion.getMeasuredTotal()) {
    // Rounding within the motion may lift a value past both of its ends by a hair.
    constexpr double kMargin = 1.001;
    for (int ring = 0; ring <= m_nSubLevels; ++ring) {
        const DrillEnds ends = getEnds(motion, ring, 0.0, 1.0);
        const double radius = std::max(ends.inOuter.dOuterRadius, ends.inInner.dOuterRadius);
        const double delta = std::max(ends.inOuter.dDeltaAngleK, ends.inInner.dDeltaAngleK);
        aCircumferences[static_cast<std::size_t>(ring)] = RingLayout::kFullTurn * radius * delta * kMargin;
    }
}

bool FillDrillingSectorPath(const DrillMotion& motion, SectorPath& path, int withSubLevel,
                            double withStartAngleK, double withDeltaAngleK, double withLineWidth,
                            double* withResCurAngleK, double* withResCurDeltaK) {
    const std::optional<DrillSector> sector =
        getDrillSector(motion, withSubLevel, withStartAngleK, withDeltaAngleK);
    if (!sector)
        return false;
    if (withResCurAngleK)
        *withResCurAngleK = sector->dStartAngleK;
    if (withResCurDeltaK)
        *withResCurDeltaK = sector->dDeltaAngleK;
    path.path = QPainterPath();
    FillRingSectorPath(motion.outer, path, sector->dInnerRadius, sector->dOuterRadius, sector->dStartAngleK,
                       sector->dDeltaAngleK, withLineWidth);
    return true;
}

} // namespace veltrano
