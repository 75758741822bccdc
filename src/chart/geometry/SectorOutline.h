#pragma once

#include "chart/geometry/RingLayout.h"

#include <QPainterPath>

namespace veltrano {

/// The closed outline of one or more sectors, in the chart's coordinates (y upwards), and how it is stroked.
struct SectorPath {
    QPainterPath path;
    double dLineWidth = 1.0; ///< Points. Lines join round.
};

/// Appends the outline of a sector, of the central disc (ring 0) or of a piece of it, and sets the line
/// width. The ring is 0 to m_nSubLevels; start and delta are fractions of a turn. A delta above 1 goes round
/// once. Always true.
bool FillSectorPath(const RingLayout& layout, SectorPath& path, int withSubLevel, double withStartAngleK,
                    double withDeltaAngleK, double withLineWidth);

/// Appends the outline of a sector between two radii, points, which need not be those of a ring.
void FillRingSectorPath(const RingLayout& layout, SectorPath& path, double innerRadius, double outerRadius,
                        double startAngleK, double deltaAngleK, double lineWidth);

/// The square around the central disc.
QRectF getDiscBounds(const RingLayout& layout);

/// The rectangle around a sector: empty for a ring that is not shown, the square of the disc for ring 0.
QRectF getSectorBounds(const RingLayout& layout, int subLevel, double startAngleK, double deltaAngleK);

} // namespace veltrano
