#include "appearance/PMProgressIndicatorController.h"

#include "appearance/Images.h"
#include "appearance/PMProgressIndicator.h"

#include <QColor>
#include <QPainter>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace veltrano {

namespace {

constexpr double kDelay = 0.1;        // seconds from a request to the drawing
constexpr double kStripHeight = 16;   // points from one indicator to the next
constexpr double kStripWidth = 128;   // points
constexpr double kStripePeriod = 32;  // points
constexpr double kPolePeriods = -1.5; // a second, to the left
constexpr float kPaintedAlpha = 0.78F;

/// One layer of a bar that is painted without pictures; offset and height are points, the offset from the
/// bar's lower edge up.
struct Layer {
    int offset;
    int height;
    QRgb filled;
    QRgb empty;
};

constexpr Layer kLayers[] = {
    {0, 11, qRgb(129, 204, 255), qRgb(241, 241, 241)}, {3, 6, qRgb(105, 183, 255), qRgb(228, 228, 228)},
    {4, 4, qRgb(94, 171, 254), qRgb(210, 210, 210)},   {5, 2, qRgb(76, 148, 229), qRgb(200, 200, 200)},
    {11, 1, qRgb(94, 147, 213), qRgb(200, 210, 210)},  {12, 1, qRgb(59, 120, 185), qRgb(160, 160, 160)},
};

QColor painted(QRgb colour) {
    QColor result(colour);
    result.setAlphaF(kPaintedAlpha);
    return result;
}

/// A picture with its lower edge so far down.
void drawStanding(QPainter& painter, const QPixmap& picture, double left, double bottom) {
    painter.drawPixmap(QPointF(left, bottom - picture.deviceIndependentSize().height()), picture);
}

} // namespace

PMProgressIndicatorController::Bars PMProgressIndicatorController::barsFor(const QImage& icon) {
    const qreal density = icon.devicePixelRatio();
    return {image(QStringLiteral("blueProgress"), density), image(QStringLiteral("greyProgress"), density),
            image(QStringLiteral("barberProgress"), density)};
}

PMProgressIndicatorController::PMProgressIndicatorController(MainLoop& mainLoop, ApplicationIcon& icon,
                                                             LauncherProgress& launcher)
    : PMProgressIndicatorController(mainLoop, icon, launcher, barsFor(icon.getApplicationIconImage())) {}

PMProgressIndicatorController::PMProgressIndicatorController(MainLoop& mainLoop, ApplicationIcon& icon,
                                                             LauncherProgress& launcher, Bars bars)
    : m_mainLoop(mainLoop),
      m_icon(icon),
      m_launcher(launcher),
      dockIcon(icon.getApplicationIconImage()),
      m_bars(std::move(bars)),
      lastSpin(mainLoop.now()) {
    assert(!s_pShared);
    s_pShared = this;
}

PMProgressIndicatorController::~PMProgressIndicatorController() {
    s_pShared = nullptr;
    m_mainLoop.cancel(theTimer);
    if (!progressIndicators.empty())
        restoreIcon();
    m_launcher.setProgress(std::nullopt);
}

void PMProgressIndicatorController::addProgressIndicator(PMProgressIndicator& indicator) {
    if (std::find(progressIndicators.begin(), progressIndicators.end(), &indicator) ==
        progressIndicators.end())
        progressIndicators.push_back(&indicator);
    requestDrawing();
}

void PMProgressIndicatorController::removeProgressIndicator(const PMProgressIndicator& indicator) {
    std::erase(progressIndicators, &indicator);
    requestDrawing();
}

/// All that is asked for until the drawing is one request, since the drawing shows it all.
void PMProgressIndicatorController::requestDrawing() {
    if (theTimer)
        return;
    theTimer = m_mainLoop.callLater(kDelay, [this] {
        theTimer = 0;
        drawProgressIndicators();
    });
}

void PMProgressIndicatorController::drawProgressIndicators() {
    m_mainLoop.cancel(std::exchange(theTimer, 0));
    QImage picture = dockIcon;
    bool isTurning = false;
    if (!progressIndicators.empty()) {
        QPainter painter(&picture);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        // The lowest bar stands on the icon's lower edge and the next ones upon it.
        double bottom = picture.deviceIndependentSize().height();
        painter.setClipRect(QRectF(0, 0, kStripWidth, bottom));
        for (const PMProgressIndicator* indicator : progressIndicators) {
            if (indicator->isIndeterminate())
                drawPole(painter, bottom);
            else
                drawBar(painter, *indicator, bottom);
            isTurning = isTurning || indicator->isIndeterminate();
            bottom -= kStripHeight;
        }
    }
    if (isTurning)
        requestDrawing();
    m_icon.setApplicationIconImage(picture);
    tellLauncher();
}

void PMProgressIndicatorController::drawPole(QPainter& painter, double bottom) {
    const double now = m_mainLoop.now();
    const double age = now - lastSpin;
    barberOffset += (age - std::floor(age)) * kPolePeriods * kStripePeriod;
    if (barberOffset < 0)
        barberOffset += kStripePeriod;
    lastSpin = now;
    if (!m_bars.barberBar.isNull())
        drawStanding(painter, m_bars.barberBar, -barberOffset, bottom);
}

void PMProgressIndicatorController::drawBar(QPainter& painter, const PMProgressIndicator& indicator,
                                            double bottom) const {
    const double range = indicator.maxValue() - indicator.minValue();
    const auto width = range > 0 ? static_cast<float>(indicator.value() * kStripWidth / range) : 0.0F;
    const auto filled = static_cast<double>(width);
    if (!m_bars.blueBar.isNull() && !m_bars.greyBar.isNull()) {
        drawStanding(painter, m_bars.blueBar, filled - kStripWidth, bottom);
        drawStanding(painter, m_bars.greyBar, filled, bottom);
        return;
    }
    // The layers lie on one another, each letting a little of the icon through.
    for (const Layer& layer : kLayers) {
        const double top = bottom - layer.offset - layer.height;
        painter.fillRect(QRectF(0, top, filled, layer.height), painted(layer.filled));
        painter.fillRect(QRectF(filled, top, kStripWidth - filled, layer.height), painted(layer.empty));
    }
}

/// A dock has one bar: that of the first indicator with an end in sight. It knows no barber pole.
void PMProgressIndicatorController::tellLauncher() {
    const auto first =
        std::find_if(progressIndicators.begin(), progressIndicators.end(),
                     [](const PMProgressIndicator* indicator) { return !indicator->isIndeterminate(); });
    m_launcher.setProgress(first == progressIndicators.end() ? std::nullopt
                                                             : std::optional((*first)->fraction()));
}

void PMProgressIndicatorController::restoreIcon() {
    m_icon.setApplicationIconImage(dockIcon);
}

} // namespace veltrano
