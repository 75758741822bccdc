#pragma once

#include "chart/geometry/RingTable.h"
#include "tree/FileSystemItem.h"

#include <QPointF>
#include <QRectF>

#include <cstdint>
#include <numbers>

namespace veltrano {

/// All that decides where a sector lies and whether it is shown: a plain value that painting, hit test and
/// outlines are asked with. Positions are points with y upwards. An angle is a fraction of a turn, 0 at the
/// start angle, growing clockwise. Radii keep the 32-bit width in which they are compared everywhere.
struct RingLayout {
    QPointF m_Center;
    float m_fullRadius = 0;        ///< Outer radius of the outermost ring, points.
    int m_nSubLevels = 0;          ///< Rings shown, 0 to kMaxSubLevels.
    std::int64_t m_lTotalSize = 0; ///< Bytes that a full turn stands for.

    /// Where fraction 0 lies, counter-clockwise from the positive x axis: one value in two units, radians for
    /// straight edges and the hit test, degrees for arcs. All charts turn together, hence the g.
    double g_dOriginAngleRad = std::numbers::pi / 2;
    double g_dOriginAngleDeg = 90.0;

    /// Centre and radius for a view that has these bounds: a margin of 5 per cent of the radius stays free.
    void setBounds(const QRectF& bounds);

    /// The radius of entry `column` of the ring table for the present ring count, in points.
    double getRadius(int column) const {
        return static_cast<double>(m_fullRadius) * static_cast<double>(getRingBound(column));
    }
    float getRingBound(int column) const {
        return g_aRingBounds[static_cast<std::size_t>(m_nSubLevels)][static_cast<std::size_t>(column)];
    }

    /// Length of a ring's outer edge, points.
    double getCircumference(int ring) const {
        return static_cast<double>(getRingBound(ring)) * static_cast<double>(m_fullRadius) * kFullTurn;
    }

    /// The share of a turn that `size` bytes take. The total must not be 0.
    double getFraction(std::int64_t size) const {
        return static_cast<double>(size) / static_cast<double>(m_lTotalSize);
    }

    static constexpr double kFullTurn = 6.283185307179586; ///< Radians.
};

/// Whether a share of a turn is long enough to be drawn on a ring of this circumference: the size test.
inline bool isArcVisible(double fraction, double circumference) {
    return !(kMinSectorArc > fraction * circumference);
}

/// The size test for an item whose share and ring are at hand. An item without a parent always passes.
inline bool CanDrawItem(const FileSystemItem& item, double fraction, double circumference) {
    return isArcVisible(fraction, circumference) || !item.getParent();
}

/// Whether the item is large enough on a ring, 0 to m_nSubLevels.
bool CanDrawItem(const RingLayout& layout, const FileSystemItem& item, int withSubLevel);

} // namespace veltrano
