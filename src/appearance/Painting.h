#pragma once

#include "appearance/Tokens.h"

#include <QRect>
#include <QRectF>

class QPainter;

namespace veltrano {

/// Fills a rounded plate with its gradient and draws its 1-point edge inside the rectangle.
void drawPlate(QPainter& painter, const QRectF& rectangle, const tokens::Plate& plate, double radius);

/// Fills the whole of a dialog with its ground, which falls from the top to the foot.
void drawSheetGround(QPainter& painter, const QRect& rectangle);

/// The ring that shows keyboard focus: 2 points wide, 2 points off the rectangle's edge, so that the caller
/// must leave 4 points around it.
void drawFocusRing(QPainter& painter, const QRectF& rectangle, double radius);

/// A line 1 point wide from a point to the right or down.
void drawHairline(QPainter& painter, const QPointF& from, double length, Qt::Orientation orientation,
                  const QColor& colour);

} // namespace veltrano
