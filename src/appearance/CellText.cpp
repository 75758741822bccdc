#include "appearance/CellText.h"

#include "appearance/Fonts.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace veltrano {

void drawTruncatedLine(QPainter& painter, const QRectF& rectangle, const QString& text, const QFont& font,
                       double lineHeight, const QColor& colour) {
    painter.setFont(font);
    prepareCurrentContextForTextDraw(painter);
    painter.setPen(colour);
    const QFontMetricsF metrics(painter.font());
    // On whole pixels of the device, for a line between two of them would be blurred.
    const double ratio = painter.device()->devicePixelRatioF();
    const double exact = rectangle.top() + (lineHeight + metrics.ascent() - metrics.descent()) / 2;
    const double baseLine = std::round(exact * ratio) / ratio;
    const QString line = metrics.elidedText(text, Qt::ElideRight, rectangle.width());
    // Names of right-to-left scripts stand at the left like all others: the marks and bars beside them do.
    painter.drawText(QPointF(rectangle.left(), baseLine), line);
}

} // namespace veltrano
