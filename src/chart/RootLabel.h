#pragma once

#include <QColor>
#include <QPointF>
#include <QSizeF>
#include <QString>
#include <QStringList>

class QPainter;

namespace veltrano {

/// How a label is set so that it fits into a square.
struct LabelFit {
    int fontSize = 0;       ///< Pixels.
    bool wraps = false;     ///< The smallest font was reached, so that words go to further lines.
    bool truncates = false; ///< The last line that is shown is cut.
    QStringList lines;      ///< As they are drawn; none for no text.
    QSizeF size;            ///< Of the whole, points.
};

/// Fits text, whose lines are parted by "\n", into a square of this side, points. It stays on its lines as
/// long as they fit at a font of 9 or above, wraps at 8, and only then is cut. Empty text has the empty size.
[[nodiscard]] LabelFit fitLabel(const QString& text, float side);

/// Draws a fitted label upright around a point. The painter has y upwards.
void drawLabel(QPainter& painter, const LabelFit& fit, const QPointF& centre, const QColor& colour);

} // namespace veltrano
