#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace veltrano {

/// Where an attached window stands as seen from its point. With two words the second tells in which direction
/// the window extends, so that its arrow sits near one of its corners.
enum class AttachedSide : int {
    Left = 0,
    Bottom = 1,
    Right = 2,
    Top = 3,
    LeftTop = 4,
    LeftBottom = 5,
    RightTop = 6,
    RightBottom = 7,
    TopLeft = 8,
    TopRight = 9,
    BottomLeft = 10,
    BottomRight = 11,
    Automatic = 12, ///< One of the others, chosen by bestSideForAutomaticPosition.
};

/// The measures of an attached window, points. `scale` is what they are multiplied by wherever they turn into
/// coordinates; it is 1 as long as those are logical points.
struct AttachedWindowMeasures {
    float viewMargin = 2;      ///< Free space between view and outline.
    float arrowBaseWidth = 20; ///< Along the window's edge.
    float arrowHeight = 16;    ///< From the edge to the tip.
    bool hasArrow = true;      ///< Room for the arrow is kept either way.
    float cornerRadius = 8;
    bool drawsRoundCornerBesideArrow = true; ///< Whether a corner next to the arrow stays round.
    double scale = 1;
};

/// Where an attached window and its view lie.
struct AttachedWindowGeometry {
    QRectF frame;     ///< Of the window, on the screen.
    QRectF viewFrame; ///< Of the view, in the window.
};

// The geometry of an attached window: numbers in, numbers out. In all of it y points up, on the screen and in
// the window; a rectangle's top() is its lowest y.

/// From the window's corner to the middle of an arrow that sits beside it.
[[nodiscard]] double attachedArrowInset(const AttachedWindowMeasures& measures);

/// Window and view for a view of this size that points at a place on the screen. `atDistance` is the gap
/// between the point and the arrow's tip. Automatic is no side here, and leaves no room for an arrow.
[[nodiscard]] AttachedWindowGeometry attachedGeometry(const AttachedWindowMeasures& measures,
                                                      const QSizeF& viewSize, const QPointF& toPoint,
                                                      AttachedSide onSide, float atDistance);

/// The side on which the window fits best: below, right, left, above, in this order, by what is free of the
/// screen; then turned to a corner where it would reach past `within`, the frame of the window it belongs to
/// (or the screen).
[[nodiscard]] AttachedSide bestSideForAutomaticPosition(const AttachedWindowMeasures& measures,
                                                        const QSizeF& viewSize, const QPointF& toPoint,
                                                        float atDistance, const QRectF& screen,
                                                        const QRectF& within);

/// The outline with its arrow, clockwise from the top left corner, in the window's coordinates.
[[nodiscard]] QPainterPath attachedOutline(const AttachedWindowMeasures& measures, const QRectF& viewFrame,
                                           AttachedSide side);

/// The largest corner radius that leaves room for the arrow's base on the shorter side; never negative.
[[nodiscard]] float limitedCornerRadius(const AttachedWindowMeasures& measures, const QSizeF& viewSize,
                                        float radius);

/// The widest arrow base that leaves room for the round corners.
[[nodiscard]] float limitedArrowBaseWidth(const AttachedWindowMeasures& measures, const QSizeF& viewSize,
                                          float width);

} // namespace veltrano
