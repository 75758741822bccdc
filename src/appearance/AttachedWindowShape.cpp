#include "appearance/AttachedWindowShape.h"

#include <algorithm>
#include <cmath>

namespace veltrano {

namespace {

enum class Edge { Top, Right, Bottom, Left };

/// The edge of the window that carries the arrow.
Edge arrowEdge(AttachedSide side) {
    switch (side) {
    case AttachedSide::Left:
    case AttachedSide::LeftTop:
    case AttachedSide::LeftBottom:
        return Edge::Right;
    case AttachedSide::Right:
    case AttachedSide::RightTop:
    case AttachedSide::RightBottom:
        return Edge::Left;
    case AttachedSide::Top:
    case AttachedSide::TopLeft:
    case AttachedSide::TopRight:
        return Edge::Bottom;
    case AttachedSide::Bottom:
    case AttachedSide::BottomLeft:
    case AttachedSide::BottomRight:
    case AttachedSide::Automatic:
        break;
    }
    return Edge::Top;
}

/// Draws the outline edge by edge. `forward` is the direction of travel along the edge, clockwise round the
/// window, and `out` the direction in which the arrow points.
class Outline {
public:
    Outline(const AttachedWindowMeasures& measures, AttachedSide side)
        : m_measures(measures),
          m_side(side),
          m_dBase(static_cast<double>(measures.arrowBaseWidth) * measures.scale),
          m_dHeight(static_cast<double>(measures.arrowHeight) * measures.scale),
          m_dRadius(static_cast<double>(measures.cornerRadius) * measures.scale) {}

    /// What a corner takes from its edges; 0 for a pointed one, such as the one beside an arrow may be.
    double cornerRadius(AttachedSide besideOne, AttachedSide besideOther) const {
        const bool besideArrow = m_side == besideOne || m_side == besideOther;
        return m_dRadius > 0 && (m_measures.drawsRoundCornerBesideArrow || !besideArrow) ? m_dRadius : 0;
    }

    void start(const QPointF& at) { m_path.moveTo(at); }

    /// Goes along an edge to `end`. `centred`, `atEnd` and `atStart` are the sides whose arrow sits in the
    /// middle of the edge, before its end and at its start.
    void edge(const QPointF& middle, const QPointF& end, const QPointF& forward, const QPointF& out,
              AttachedSide centred, AttachedSide atEnd, AttachedSide atStart) {
        if (m_side == centred) {
            m_path.lineTo(middle - forward * (m_dBase / 2));
            arrow(forward, out);
        } else if (m_side == atEnd) {
            m_path.lineTo(end - forward * m_dBase);
            arrow(forward, out);
        } else if (m_side == atStart) {
            arrow(forward, out);
        }
        m_path.lineTo(end);
    }

    /// A quarter circle from the present point round a corner; nothing for a pointed corner.
    void corner(const QPointF& at, const QPointF& into, const QPointF& outOf, double radius) {
        if (radius <= 0)
            return;
        // Close enough to a circle for the eye by far: a ten-thousandth of the radius.
        constexpr double kArc = 0.5522847498307936;
        const QPointF from = at - into * radius;
        const QPointF to = at + outOf * radius;
        m_path.cubicTo(from + into * (radius * kArc), to - outOf * (radius * kArc), to);
    }

    QPainterPath finished() {
        m_path.closeSubpath();
        return m_path;
    }

private:
    void arrow(const QPointF& forward, const QPointF& out) {
        if (!m_measures.hasArrow)
            return;
        const QPointF at = m_path.currentPosition();
        m_path.lineTo(at + forward * (m_dBase / 2) + out * m_dHeight);
        m_path.lineTo(at + forward * m_dBase);
    }

    const AttachedWindowMeasures& m_measures;
    const AttachedSide m_side;
    const double m_dBase;
    const double m_dHeight;
    const double m_dRadius;
    QPainterPath m_path;
};

} // namespace

double attachedArrowInset(const AttachedWindowMeasures& measures) {
    float inset = measures.arrowBaseWidth / 2;
    if (measures.drawsRoundCornerBesideArrow)
        inset += measures.cornerRadius;
    return static_cast<double>(inset) * measures.scale;
}

AttachedWindowGeometry attachedGeometry(const AttachedWindowMeasures& measures, const QSizeF& viewSize,
                                        const QPointF& toPoint, AttachedSide onSide, float atDistance) {
    const double margin = static_cast<double>(measures.viewMargin) * measures.scale;
    const double arrow = static_cast<double>(measures.arrowHeight) * measures.scale;
    QRectF view(QPointF(margin, margin), viewSize);
    double w = viewSize.width() + 2 * margin;
    double h = viewSize.height() + 2 * margin;
    if (onSide != AttachedSide::Automatic) {
        const Edge edge = arrowEdge(onSide);
        (edge == Edge::Left || edge == Edge::Right ? w : h) += arrow;
        if (edge == Edge::Left)
            view.translate(arrow, 0);
        if (edge == Edge::Bottom)
            view.translate(0, arrow);
    }

    const double i = attachedArrowInset(measures);
    const auto d = static_cast<double>(atDistance);
    const double x = toPoint.x();
    const double y = toPoint.y();
    const auto origin = [&]() -> QPointF {
        switch (onSide) {
        case AttachedSide::Left:
            return {x - w - d, y - h / 2};
        case AttachedSide::Bottom:
            return {x - w / 2, y - h - d};
        case AttachedSide::Right:
            return {x + d, y - h / 2};
        case AttachedSide::Top:
            return {x - w / 2, y + d};
        case AttachedSide::LeftTop:
            return {x - w - d, y - i};
        case AttachedSide::LeftBottom:
            return {x - w - d, y - (h - i)};
        case AttachedSide::RightTop:
            return {x + d, y - i};
        case AttachedSide::RightBottom:
            return {x + d, y - (h - i)};
        case AttachedSide::TopLeft:
            return {x - (w - i), y + d};
        case AttachedSide::TopRight:
            return {x - i, y + d};
        case AttachedSide::BottomLeft:
            return {x - (w - i), y - h - d};
        case AttachedSide::BottomRight:
            return {x - i, y - h - d};
        case AttachedSide::Automatic:
            break;
        }
        return toPoint;
    };
    return {.frame = QRectF(origin(), QSizeF(w, h)), .viewFrame = view};
}

AttachedSide bestSideForAutomaticPosition(const AttachedWindowMeasures& measures, const QSizeF& viewSize,
                                          const QPointF& toPoint, float atDistance, const QRectF& screen,
                                          const QRectF& within) {
    const double margin = static_cast<double>(measures.viewMargin) * measures.scale;
    const double w = viewSize.width() + 2 * margin;
    const double h = viewSize.height() + 2 * margin;
    const auto reach = static_cast<double>(static_cast<float>(
        static_cast<double>(atDistance) + static_cast<double>(measures.arrowHeight) * measures.scale));
    const double x = toPoint.x();
    const double y = toPoint.y();
    const double screenLow = screen.top();
    const double screenHigh = screen.bottom();

    AttachedSide side = AttachedSide::Bottom;
    if (y - h - reach >= screenLow)
        side = AttachedSide::Bottom;
    else if (x + w + reach < screen.right())
        side = AttachedSide::Right;
    else if (x - w - reach >= screen.left())
        side = AttachedSide::Left;
    else if (y + h + reach < screenHigh)
        side = AttachedSide::Top;

    const double i = attachedArrowInset(measures);
    const bool isBelow = side == AttachedSide::Bottom;
    const bool isRight = side == AttachedSide::Right;
    if (isBelow || side == AttachedSide::Top) {
        if (x - w / 2 < within.left() && screen.right() > x + w - i)
            side = isBelow ? AttachedSide::BottomRight : AttachedSide::TopRight;
        else if (x + w / 2 >= within.right() && x - w + i >= screen.left())
            side = isBelow ? AttachedSide::BottomLeft : AttachedSide::TopLeft;
    } else {
        if (y - h / 2 < within.top() && screenHigh > y + h - i)
            side = isRight ? AttachedSide::RightTop : AttachedSide::LeftTop;
        else if (y + h / 2 >= within.bottom() && y - h + i >= screenLow)
            side = isRight ? AttachedSide::RightBottom : AttachedSide::LeftBottom;
    }
    return side;
}

QPainterPath attachedOutline(const AttachedWindowMeasures& measures, const QRectF& viewFrame,
                             AttachedSide side) {
    const double margin = static_cast<double>(measures.viewMargin) * measures.scale;
    const QRectF area = viewFrame.adjusted(-margin, -margin, margin, margin);
    // On whole numbers, so that the border is sharp.
    const double left = std::ceil(area.left() * measures.scale + 0.5);
    const double right = std::floor(area.right() * measures.scale - 0.5);
    const double low = std::ceil(area.top() * measures.scale + 0.5);
    const double high = std::floor(area.bottom() * measures.scale - 0.5);
    const double middleX = area.center().x() * measures.scale;
    const double middleY = area.center().y() * measures.scale;

    using enum AttachedSide;
    Outline outline(measures, side);
    const double topLeft = outline.cornerRadius(RightBottom, BottomRight);
    const double topRight = outline.cornerRadius(LeftBottom, BottomLeft);
    const double bottomRight = outline.cornerRadius(LeftTop, TopLeft);
    const double bottomLeft = outline.cornerRadius(RightTop, TopRight);
    const QPointF east(1, 0);
    const QPointF north(0, 1);

    outline.start({left + topLeft, high});
    outline.edge({middleX, high}, {right - topRight, high}, east, north, Bottom, BottomLeft, BottomRight);
    outline.corner({right, high}, east, -north, topRight);
    outline.edge({right, middleY}, {right, low + bottomRight}, -north, east, Left, LeftTop, LeftBottom);
    outline.corner({right, low}, -north, -east, bottomRight);
    outline.edge({middleX, low}, {left + bottomLeft, low}, -east, -north, Top, TopRight, TopLeft);
    outline.corner({left, low}, -east, north, bottomLeft);
    outline.edge({left, middleY}, {left, high - topLeft}, north, -east, Right, RightBottom, RightTop);
    outline.corner({left, high}, north, east, topLeft);
    return outline.finished();
}

float limitedCornerRadius(const AttachedWindowMeasures& measures, const QSizeF& viewSize, float radius) {
    const auto side = static_cast<float>(std::min(viewSize.width(), viewSize.height()));
    const float limit = (side + 2 * measures.viewMargin - measures.arrowBaseWidth) / 2;
    return std::max(std::min(radius, limit), 0.0f);
}

float limitedArrowBaseWidth(const AttachedWindowMeasures& measures, const QSizeF& viewSize, float width) {
    const auto side = static_cast<float>(std::min(viewSize.width(), viewSize.height()));
    float limit = side + 2 * measures.viewMargin - measures.cornerRadius;
    if (measures.drawsRoundCornerBesideArrow)
        limit -= measures.cornerRadius;
    return std::min(width, limit);
}

} // namespace veltrano
