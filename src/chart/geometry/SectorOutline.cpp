#include "chart/geometry/SectorOutline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

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

/// The points, on a circle of radius 1, that an arc goes through from one end to the other, and how long the
/// handles of its curves are. Both arcs of a sector stand on the same angles, so one serves for both.
struct UnitArc {
    static constexpr int kMostCurves = 8; // of a whole turn

    UnitArc(double fromDegrees, double toDegrees) {
        const double sweep = toDegrees - fromDegrees;
        curves = std::clamp(static_cast<int>(std::ceil(std::abs(sweep) / kLongestCurve)), 1, kMostCurves);
        const double step = radians(sweep) / curves;
        handle = 4.0 / 3.0 * std::tan(step / 4.0);
        for (int point = 0; point <= curves; ++point) {
            const double angle = radians(fromDegrees) + step * point;
            points[static_cast<std::size_t>(point)] = QPointF(std::cos(angle), std::sin(angle));
        }
        // A whole turn ends exactly where it began, so that closing it adds no seam.
        if (std::abs(sweep) == 360.0)
            points[static_cast<std::size_t>(curves)] = points[0];
    }

    void append(QPainterPath& path, const QPointF& centre, double radius, int from, int to) const {
        const QPointF start = centre + radius * points[static_cast<std::size_t>(from)];
        const QPointF end = centre + radius * points[static_cast<std::size_t>(to)];
        const double reach = (to > from ? handle : -handle) * radius;
        const auto along = [&](int point) {
            const QPointF& unit = points[static_cast<std::size_t>(point)];
            return QPointF(-unit.y() * reach, unit.x() * reach);
        };
        path.cubicTo(start + along(from), end - along(to), end);
    }

    int curves;
    double handle; // of a curve on a circle of radius 1, from its first point on
    std::array<QPointF, kMostCurves + 1> points;
};

void appendRingSector(const RingLayout& layout, QPainterPath& path, double inner, double outer, double start,
                      double delta) {
    // Once round is as far as a sector reaches.
    const double end = start + delta;
    const double from = layout.g_dOriginAngleDeg - 360.0 * start;
    const double to = layout.g_dOriginAngleDeg - 360.0 * end;
    const UnitArc arc(from, std::clamp(to, from - 360.0, from + 360.0));
    path.moveTo(layout.m_Center + inner * arc.points[0]);
    for (int curve = 0; curve < arc.curves; ++curve)
        arc.append(path, layout.m_Center, inner, curve, curve + 1);
    path.lineTo(edgePoint(layout, outer, end));
    for (int curve = arc.curves; curve > 0; --curve)
        arc.append(path, layout.m_Center, outer, curve, curve - 1);
    path.lineTo(edgePoint(layout, inner, start));
}

} // namespace

bool FillSectorPath(const RingLayout& layout, SectorPath& path, int withSubLevel, double withStartAngleK,
                    double withDeltaAngleK, double withLineWidth) {
    if (withSubLevel > 0) {
        FillRingSectorPath(layout, path, layout.getRadius(withSubLevel - 1), layout.getRadius(withSubLevel),
                           withStartAngleK, withDeltaAngleK, withLineWidth);
        return true;
    }
    path.path.reserve(path.path.elementCount() + kUsualElements);
    appendDisc(layout, path.path, withStartAngleK, withDeltaAngleK);
    path.path.closeSubpath();
    path.dLineWidth = withLineWidth;
    return true;
}

void FillRingSectorPath(const RingLayout& layout, SectorPath& path, double innerRadius, double outerRadius,
                        double startAngleK, double deltaAngleK, double lineWidth) {
    path.path.reserve(path.path.elementCount() + kUsualElements);
    appendRingSector(layout, path.path, innerRadius, outerRadius, startAngleK, deltaAngleK);
    path.path.closeSubpath();
    path.dLineWidth = lineWidth;
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
