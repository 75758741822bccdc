#include "appearance/GroupDescCell.h"

#include "appearance/Fonts.h"
#include "appearance/SharedImages.h"
#include "appearance/Tokens.h"
#include "tree/VolumeItemGrop.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace veltrano {

namespace {

constexpr int kTextSize = 20;        // pixels
constexpr double kTextLeft = 90;     // points, of the light; the text lies 1 to the left and above
constexpr int kTimes = 3;            // a soft line is painted so often over itself, to come out strong
constexpr double kLineHeight = 2;    // points
constexpr double kLowerTitle = 6;    // points that a title below a line stands lower
constexpr double kRaisedByBlank = 6; // points

qreal ratioOf(const QPainter& painter) {
    return painter.device()->devicePixelRatioF();
}

void drawStretched(QPainter& painter, const QRectF& rectangle, const QPixmap& picture) {
    painter.drawPixmap(rectangle, picture, QRectF(picture.rect()));
}

} // namespace

QRectF GroupDescCell::getMainTextDrawRect(const QRectF& frame) {
    return {frame.x() + 10, frame.y() + 2, 238, 19};
}

QRectF GroupDescCell::getDescTextDrawRect(const QRectF& frame) {
    return {frame.x() + 10, frame.y() + 22, 238, 19};
}

QRectF GroupDescCell::getImageDrawRect(const QRectF& frame, const QSizeF& image, bool bFirstItem) {
    const double x = std::floor(frame.x() + (frame.width() - image.width()) / 2);
    const double y = std::floor(frame.y() + (frame.height() - image.height()) / 2);
    return {QPointF(x, bFirstItem ? y : y + kLowerTitle), image};
}

QRectF GroupDescCell::getLineDrawRect(const QRectF& frame) {
    return {frame.x() + 12, frame.y() + 1, frame.width() - 24, kLineHeight};
}

double GroupDescCell::getTextTop(const QRectF& frame, const QString& text, double height) {
    const double y = frame.y() + (frame.height() - height) / 2;
    return text.endsWith(QLatin1Char(' ')) ? y - kRaisedByBlank : y;
}

QRectF GroupDescCell::getSeparatorDrawRect(const QRectF& frame, const QPointF& forpoint, double height) {
    return {forpoint.x() + 8, forpoint.y() + height - 2, frame.width() - 16, kLineHeight};
}

void GroupDescCell::drawWithFrame(QPainter& painter, const QRectF& frame) {
    drawTextsWithFrame(painter, frame);
}

void GroupDescCell::drawTextsWithFrame(QPainter& painter, const QRectF& frame) {
    const CellData element = dataDelegate().dataElementForCell(*this);
    if (const auto* const text = std::get_if<QString>(&element)) {
        drawText(painter, frame, *text);
    } else if (const auto* const group = std::get_if<const VolumeItemGrop*>(&element); group && *group) {
        drawTitle(painter, frame, sharedImage((*group)->groupImage, ratioOf(painter)), (*group)->bFirstItem);
    } else if (const auto* const picture = std::get_if<QPixmap>(&element)) {
        drawTitle(painter, frame, *picture, false);
    }
}

void GroupDescCell::drawText(QPainter& painter, const QRectF& frame, const QString& text) {
    painter.setFont(VTBoldFontWithSize(kTextSize));
    prepareCurrentContextForTextDraw(painter);
    const QFontMetricsF metrics(painter.font());
    const QPointF point(frame.x() + kTextLeft, getTextTop(frame, text, metrics.height()));
    const QPointF baseLine = point + QPointF(0, metrics.ascent());
    painter.setPen(tokens::kWhite);
    painter.drawText(baseLine, text);
    painter.setPen(tokens::kHeading);
    painter.drawText(baseLine - QPointF(1, 1), text);
    drawseparator(painter, getSeparatorDrawRect(frame, point, metrics.height()));
}

void GroupDescCell::drawseparator(QPainter& painter, const QRectF& rectangle) {
    const QPixmap left = sharedImage("pvtSepLeft", ratioOf(painter));
    const QPixmap centre = sharedImage("pvtSepCent", ratioOf(painter));
    const QPixmap right = sharedImage("pvtSepRight", ratioOf(painter));
    const double leftWidth = left.deviceIndependentSize().width();
    const double rightWidth = right.deviceIndependentSize().width();
    for (int time = 0; time < kTimes; ++time) {
        drawStretched(painter, QRectF(rectangle.x(), rectangle.y(), leftWidth, kLineHeight), left);
        drawStretched(painter, rectangle.adjusted(leftWidth, 0, -rightWidth, 0), centre);
        drawStretched(painter, QRectF(rectangle.right() - rightWidth, rectangle.y(), rightWidth, kLineHeight),
                      right);
    }
}

void GroupDescCell::drawTitle(QPainter& painter, const QRectF& frame, const QPixmap& title, bool bFirstItem) {
    painter.drawPixmap(getImageDrawRect(frame, title.deviceIndependentSize(), bFirstItem).topLeft(), title);
    if (bFirstItem)
        return;
    const QPixmap centre = sharedImage("pvtSepCent", ratioOf(painter));
    for (int time = 0; time < kTimes; ++time)
        drawStretched(painter, getLineDrawRect(frame), centre);
}

} // namespace veltrano
