#include "chart/ChartBackdrop.h"

#include "appearance/Images.h"

#include <QPainter>
#include <QRadialGradient>
#include <QStyle>

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
    m_dFrom = isMotionReduced() ? alpha : m_dAlpha;
    m_dTarget = alpha;
    m_dStart = m_mainLoop.now();
    showFrame();
}

bool ChartBackdrop::isMotionReduced() const {
    return style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) == 0;
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

void ChartBackdrop::drawPlate(QPainter& painter) const {
    QRadialGradient gradient(QRectF(rect()).center(), std::hypot(width(), height()) / 2);
    gradient.setColorAt(0, Qt::white);
    gradient.setColorAt(1, kPlateRim);
    painter.setOpacity(m_dAlpha);
    painter.fillRect(rect(), gradient);
}

} // namespace veltrano
