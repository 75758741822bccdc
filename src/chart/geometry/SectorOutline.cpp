#include "chart/geometry/SectorOutline.h"

#include <algorithm>
#include <cmath>

namespace veltrano {

namespace {

/// Sectors are painted, and measured, with this line.
constexpr double kSectorLineWidth = 0.2; // points

/// An arc is built of cubic curves of at most this sweep, which keeps within 5 millionths of the radius of
/// the true circle: far below a pixel on any screen.
constexpr double kLongestCurve = 45.0; // degrees

/// Curves, edges and closing of a sector that needs one curve an arc.
constexpr int kUsualElements = 12;

double radians(double degrees) {
    return degrees * (std::numbers::pi / 180.0);
}

QPointF pointAt(const QPointF& centre, double radius, double angle) {
    return {centre.x() + std::cos(angle) * radius, centre.y() + std::sin(angle) * radius};
}

/// Straight edges take their angle as a 32-bit float, arcs take theirs as a double.
QPointF edgePoint(const RingLayout& layout, double radius, double angleK) {
    const auto angle = static_cast<float>(layout.g_dOriginAngleRad - RingLayout::kFullTurn * angleK);
    return pointAt(layout.m_Center, radius, static_cast<double>(angle));
}

/// An arc from one angle to another in degrees, counter-clockwise if that grows. The path stands at its
/// start.
void arcOn(QPainterPath& path, const QPointF& centre, double radius, double fromDegrees, double toDegrees) {
    const double sweep = std::clamp(toDegrees - fromDegrees, -360.0, 360.0);
    const int curves = static_cast<int>(std::ceil(std::abs(sweep) / kLongestCurve));
    const double step = radians(sweep) / std::max(curves, 1);
    // The handles that make a cubic touch the circle at both ends and in its middle: 4/3 tan(step / 4) radii.
    const double handle = 4.0 / 3.0 * std::tan(step / 4.0) * radius;
    double angle = radians(fromDegrees);
    double cosine = std::cos(angle);
    double sine = std::sin(angle);
    for (int curve = 1; curve <= curves; ++curve) {
        const QPointF start(centre.x() + cosine * radius, centre.y() + sine * radius);
        const QPointF leave(start.x() - sine * handle, start.y() + cosine * handle);
        // A whole turn ends exactly where it began, so that closing it adds no seam.
        const bool closesTurn = curve == curves && std::abs(sweep) == 360.0;
        angle = radians(fromDegrees) + (closesTurn ? 0.0 : step * curve);
        cosine = std::cos(angle);
        sine = std::sin(angle);
        const QPointF end(centre.x() + cosine * radius, centre.y() + sine * radius);
        const QPointF arrive(end.x() + sine * handle, end.y() - cosine * handle);
        path.cubicTo(leave, arrive, end);
    }
}

void appendDisc(const RingLayout& layout, QPainterPath& path, double start, double delta) {
    const double radius = layout.getRadius(0);
    const double from = layout.g_dOriginAngleDeg - 360.0 * start;
    const double to = layout.g_dOriginAngleDeg - 360.0 * (start + delta);
    path.moveTo(pointAt(layout.m_Center, radius, radians(from)));
    if (delta == 1.0) {
        arcOn(path, layout.m_Center, radius, from, from - 360.0);
        return;
    }
    arcOn(path, layout.m_Center, radius, from, to);
    path.lineTo(layout.m_Center);
    path.lineTo(pointAt(layout.m_Center, radius, layout.g_dOriginAngleRad - RingLayout::kFullTurn * start));
}

void appendRingSector(const RingLayout& layout, QPainterPath& path, int ring, double start, double delta) {
    const double inner = layout.getRadius(ring - 1);
    const double outer = layout.getRadius(ring);
    const double end = start + delta;
    const double from = layout.g_dOriginAngleDeg - 360.0 * start;
    const double to = layout.g_dOriginAngleDeg - 360.0 * end;
    path.moveTo(pointAt(layout.m_Center, inner, radians(from)));
    arcOn(path, layout.m_Center, inner, from, to);
    path.lineTo(edgePoint(layout, outer, end));
    arcOn(path, layout.m_Center, outer, to, from);
    path.lineTo(edgePoint(layout, inner, start));
}

} // namespace

bool FillSectorPath(const RingLayout& layout, SectorPath& path, int withSubLevel, double withStartAngleK,
                    double withDeltaAngleK, double withLineWidth) {
    path.path.reserve(path.path.elementCount() + kUsualElements);
    if (withSubLevel > 0)
        appendRingSector(layout, path.path, withSubLevel, withStartAngleK, withDeltaAngleK);
    else
        appendDisc(layout, path.path, withStartAngleK, withDeltaAngleK);
    path.path.closeSubpath();
    path.dLineWidth = withLineWidth;
    return true;
}

QRectF getDiscBounds(const RingLayout& layout) {
    const double radius = layout.getRadius(0);
    return {layout.m_Center.x() - radius, layout.m_Center.y() - radius, 2 * radius, 2 * radius};
}

QRectF getSectorBounds(const RingLayout& layout, int subLevel, double startAngleK, double deltaAngleK) {
    if (subLevel > layout.m_nSubLevels)
        return {};
    if (subLevel == 0)
        return getDiscBounds(layout);
    SectorPath outline;
    FillSectorPath(layout, outline, subLevel, startAngleK, deltaAngleK, kSectorLineWidth);
    return outline.path.boundingRect();
}

} // namespace veltrano
