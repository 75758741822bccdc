#pragma once

#include "chart/geometry/SectorOutline.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace veltrano {

/// Which way the chart drills; plain numbers, as the chart keeps them.
enum DrillMode : std::uint16_t {
    kDrillNone = 0,
    kDrillIn = 1,
    kDrillOut = 2,
};

/// One moment of a drill between two charts: the outer one, in which the drilling root is a sector, and the
/// inner one, in which it is the disc. A plain value; the chart makes one for each frame.
struct DrillMotion {
    RingLayout outer;                             ///< Layout of the outer chart.
    std::uint16_t m_nDrillAnimating = kDrillNone; ///< A DrillMode.
    double m_fDrillAnimation = 0;                 ///< Eased progress, 0 to 1.
    std::int64_t m_lDrTotalSize = 0;              ///< Bytes of a full turn of the inner chart.
    int m_nDrSubLevels = 0;                       ///< Rings of the inner chart, 0 to kMaxSubLevels.
    int m_nDrRootSubLevel = 0;                    ///< Ring of the drilling root in the outer chart, from 1.
    double m_dDrRootSkAngle = 0;                  ///< Its start there, fraction of a turn.

    /// Whether a drill is on, from a ring, between two charts that have sizes to lay out.
    bool isValid() const {
        return m_nDrillAnimating != kDrillNone && m_nDrRootSubLevel > 0 && m_lDrTotalSize > 0 &&
               outer.m_lTotalSize > 0;
    }

    /// The share of the outer chart's turn that the inner one's whole turn takes.
    double getRootShare() const { return outer.getFraction(m_lDrTotalSize); }

    /// The layout of the inner chart.
    RingLayout getInner() const;

    /// Where the sectors of the drilling root's children are measured: drilling in still in the outer chart,
    /// drilling out already in the inner one. Bytes of a full turn, and where the first child starts.
    std::int64_t getMeasuredTotal() const {
        return m_nDrillAnimating == kDrillOut ? m_lDrTotalSize : outer.m_lTotalSize;
    }
    double getFirstStart() const { return m_nDrillAnimating == kDrillOut ? 0.0 : m_dDrRootSkAngle; }
};

/// What one sector is at one moment: radii in points, angles in fractions of a turn.
struct DrillSector {
    double dOuterRadius;
    double dInnerRadius;
    double dStartAngleK;
    double dDeltaAngleK;
};

/// A sector between its place in one chart and its place in the other. The ring counts from the drilling
/// root, which is ring 0; start and delta are as measured (see DrillMotion). Radii, start and delta each move
/// evenly with the progress. A ring beyond the outer chart's edge lies on the edge, as a line. Nothing for a
/// ring above the inner chart's, for a drill that is not valid, and for an arc too short to be drawn now.
std::optional<DrillSector> getDrillSector(const DrillMotion& motion, int ring, double startAngleK,
                                          double deltaAngleK);

/// For the walk of the sectors that may be drawn at some moment of a drill (see walkSectors): shares are
/// those that are measured, and each ring is as long as it ever gets, told in that measure. What this passes
/// over, getDrillSector has nothing for at any progress; what it does not pass over may still be too short
/// now.
struct DrillLayout {
    /// The drill is valid.
    explicit DrillLayout(const DrillMotion& motion);

    int m_nSubLevels = 0;
    double getCircumference(int ring) const { return aCircumferences[static_cast<std::size_t>(ring)]; }
    double getFraction(std::int64_t size) const {
        return static_cast<double>(size) / static_cast<double>(lMeasuredTotal);
    }

private:
    std::int64_t lMeasuredTotal;                             // bytes
    std::array<double, kMaxSubLevels + 1> aCircumferences{}; // points
};

/// Makes the outline of a sector at this moment; false, and the path is left alone, where there is nothing to
/// draw. It has the form of a ring's sector on ring 0 too. The result places take its start and delta, and
/// may be null.
bool FillDrillingSectorPath(const DrillMotion& motion, SectorPath& path, int withSubLevel,
                            double withStartAngleK, double withDeltaAngleK, double withLineWidth,
                            double* withResCurAngleK, double* withResCurDeltaK);

} // namespace veltrano
