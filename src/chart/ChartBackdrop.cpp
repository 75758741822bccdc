#include "chart/ChartBackdrop.h"

#include "appearance/Images.h"
#include "appearance/Motion.h"

#include <QPainter>
#include <QRadialGradient>

#include <algorithm>
#include <cmath>
#include <utility>

namespace veltrano {

namespace {

constexpr double kFadeSeconds = 0.25;
constexpr double kFrameSeconds = 1.0 / 60;
constexpr QColor kPlateRim(0xEF, 0xF4, 0xF9);

/// A plate that is a little short of opaque hides the dial as well as one that is.
constexpr double kHidesDial = 0.999;

} // namespace

ChartBackdrop::ChartBackdrop(MainLoop& mainLoop, QWidget* parent) : QWidget(parent), m_mainLoop(mainLoop) {}

ChartBackdrop::~ChartBackdrop() {
    m_mainLoop.cancel(m_nFrame);
}

void ChartBackdrop::fadePlateTo(double alpha) {
    if (alpha == m_dTarget)
        return;
    m_dFrom = isMotionReduced(this) ? alpha : m_dAlpha;
    m_dTarget = alpha;
    m_dStart = m_mainLoop.now();
    showFrame();
}

void ChartBackdrop::showFrame() {
    m_mainLoop.cancel(std::exchange(m_nFrame, 0));
    const double progress = std::min((m_mainLoop.now() - m_dStart) / kFadeSeconds, 1.0);
    m_dAlpha = progress < 1.0 ? m_dFrom + (m_dTarget - m_dFrom) * progress : m_dTarget;
    update();
    if (m_dAlpha != m_dTarget)
        m_nFrame = m_mainLoop.callLater(kFrameSeconds, [this] { showFrame(); });
}

void ChartBackdrop::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (m_dAlpha < kHidesDial)
        drawDial(painter);
    if (m_dAlpha > kPlateHidden)
        drawPlate(painter);
}

void ChartBackdrop::drawDial(QPainter& painter) {
    const double side = std::min(width(), height());
    const qreal ratio = devicePixelRatioF();
    if (m_dDialSide != side || m_dial.devicePixelRatio() != ratio) {
        m_dDialSide = side;
        m_dial = renderImage(QStringLiteral("diskbackground"), QSizeF(side, side), ratio);
    }
    painter.drawPixmap(QPointF((width() - side) * 0.5, (height() - side) * 0.5), m_dial);
}

void ChartBackdrop::drawPlate(QPainter& painter) {
    // Kept as a picture: shading it anew costs a third of a frame of the chart that moves above it.
    const qreal ratio = devicePixelRatioF();
    const QSize pixels(static_cast<int>(std::ceil(width() * ratio)),
                       static_cast<int>(std::ceil(height() * ratio)));
    if (m_plate.size() != pixels || m_plate.devicePixelRatio() != ratio) {
        m_plate = QPixmap(pixels);
        m_plate.setDevicePixelRatio(ratio);
        QRadialGradient gradient(QRectF(rect()).center(), std::hypot(width(), height()) / 2);
        gradient.setColorAt(0, Qt::white);
        gradient.setColorAt(1, kPlateRim);
        QPainter(&m_plate).fillRect(QRectF(QPointF(), m_plate.deviceIndependentSize()), gradient);
    }
    // Short of opaque by less than one step of a colour, it may as well be opaque, which is drawn faster.
    painter.setOpacity(m_dAlpha < kHidesDial ? m_dAlpha : 1.0);
    painter.drawPixmap(0, 0, m_plate);
}

} // namespace veltrano
