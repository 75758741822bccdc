#pragma once

#include <QColor>
#include <QFont>
#include <QString>

class QPainter;
class QRectF;

namespace veltrano {

/// Draws one line of text, so many points high, at the top of a rectangle, cut off with an ellipsis where it
/// is too long. The line stands at its height whatever fonts its letters come from.
void drawTruncatedLine(QPainter& painter, const QRectF& rectangle, const QString& text, const QFont& font,
                       double lineHeight, const QColor& colour);

} // namespace veltrano
