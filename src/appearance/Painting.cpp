#include "appearance/Painting.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace veltrano {

void drawPlate(QPainter& painter, const QRectF& rectangle, const tokens::Plate& plate, double radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient gradient(rectangle.topLeft(), rectangle.bottomLeft());
    gradient.setColorAt(0, plate.top);
    gradient.setColorAt(1, plate.foot);
    painter.setBrush(gradient);
    painter.setPen(QPen(plate.edge, 1));
    painter.drawRoundedRect(rectangle.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
    painter.restore();
}

void drawSheetGround(QPainter& painter, const QRect& rectangle) {
    QLinearGradient ground(rectangle.topLeft(),
                           QPoint(rectangle.left(), rectangle.top() + rectangle.height()));
    ground.setColorAt(0, tokens::kSheet.top);
    ground.setColorAt(1, tokens::kSheet.foot);
    painter.fillRect(rectangle, ground);
}

void drawFocusRing(QPainter& painter, const QRectF& rectangle, double radius) {
    constexpr double kGap = 2;   // points between the edge and the ring
    constexpr double kWidth = 2; // points
    constexpr double kToMiddle = kGap + kWidth / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(tokens::kFocus, kWidth));
    painter.drawRoundedRect(rectangle.adjusted(-kToMiddle, -kToMiddle, kToMiddle, kToMiddle),
                            radius + kToMiddle, radius + kToMiddle);
    painter.restore();
}

void drawHairline(QPainter& painter, const QPointF& from, double length, Qt::Orientation orientation,
                  const QColor& colour) {
    const QSizeF size = orientation == Qt::Horizontal ? QSizeF(length, 1) : QSizeF(1, length);
    painter.fillRect(QRectF(from, size), colour);
}

} // namespace veltrano
