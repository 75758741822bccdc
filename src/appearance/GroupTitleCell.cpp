#include "appearance/GroupTitleCell.h"

#include "appearance/CellText.h"
#include "appearance/Fonts.h"

#include <QPainter>

namespace veltrano {

namespace {

constexpr int kTextSize = 13; // pixels
constexpr int kTextLine = 18; // points

} // namespace

void GroupTitleCell::drawWithFrame(QPainter& painter, const QRectF& frame) {
    const QFont font = VTFontWithSize(kTextSize);
    const QRectF shadow(frame.x() + 10, frame.y(), frame.width() - 10, frame.height());
    drawTruncatedLine(painter, shadow, mstrText, font, kTextLine, Qt::black);
    drawTruncatedLine(painter, shadow.translated(-1, -1), mstrText, font, kTextLine, Qt::white);
}

} // namespace veltrano
