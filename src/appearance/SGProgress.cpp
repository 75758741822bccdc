#include "appearance/SGProgress.h"

#include "appearance/Images.h"

#include <QPainter>

#include <algorithm>

namespace veltrano {

namespace {

constexpr double kHeight = 12;  // points, of the images and of the least rectangle
constexpr double kCapWidth = 4; // points

void drawPart(QPainter& painter, const char* name, double x, double y, double width) {
    const QPixmap picture = image(QLatin1String(name), painter.device()->devicePixelRatioF());
    painter.drawPixmap(QRectF(x, y, width, kHeight), picture, QRectF(picture.rect()));
}

} // namespace

void SGProgress::DrawAtRect(QPainter& painter, const QRectF& rectangle) const {
    constexpr double kLeftLightsAt = 2;    // points of fill
    constexpr double kRoundingRoom = 0.01; // points, so that 100 percent lights the right cap
    const double x = rectangle.x();
    const double y = rectangle.y();
    const double width = rectangle.width();
    if (width < kHeight || rectangle.height() < kHeight)
        return;
    const double inner = width - kCapWidth;
    const double fill = std::min(mdVal * inner / 100, inner);

    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawPart(painter, "ipstart", x, y, kCapWidth);
    if (fill >= kLeftLightsAt)
        drawPart(painter, "ipstartfill", x, y, kCapWidth);
    drawPart(painter, "iprend", x + width - kCapWidth, y, kCapWidth);
    if (fill + kRoundingRoom >= inner)
        drawPart(painter, "ipendfill", x + width - kCapWidth, y, kCapWidth);
    drawPart(painter, "iprrownofill", x + kCapWidth, y, width - 2 * kCapWidth);
    if (fill >= kCapWidth)
        drawPart(painter, "iprrowfill", x + kCapWidth, y, fill - kCapWidth);
    painter.restore();
}

} // namespace veltrano
