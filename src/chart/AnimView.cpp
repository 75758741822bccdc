#include "chart/AnimView.h"

#include "appearance/Images.h"
#include "chart/Pulse.h"
#include "chart/RadialController.h"
#include "chart/RadialView.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace veltrano {

namespace {

/// Between two frames of the pulse. Half the usual rate of a screen: the glow is soft, and the scan that it
/// stands for needs the processor more.
constexpr double kFrameSeconds = 1.0 / 30;

/// Around the outlines, points: where a point is no whole number of pixels, their soft edge may reach into
/// the pixel beyond.
constexpr double kPixelMargin = 1.0;

} // namespace

AnimView::AnimView(RadialController& controller, const RadialView& chartView, MainLoop& mainLoop,
                   QWidget* parent)
    : QWidget(parent), mController(controller), radialView(chartView), m_mainLoop(mainLoop) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

AnimView::~AnimView() {
    m_mainLoop.cancel(m_nFrame);
    m_mainLoop.cancel(m_nRestart);
}

void AnimView::StartAnimation() {
    initAnimationLayer();
    transPulse41();
}

void AnimView::initAnimationLayer() {
    m_circle.bMade = true;
    m_circle.bHidden = false;
}

void AnimView::transPulse41() {
    m_circle.bRunning = true;
    m_circle.dStart = m_mainLoop.now();
    showFrame();
}

void AnimView::StopAnimation() {
    m_mainLoop.cancel(std::exchange(m_nRestart, 0));
    m_mainLoop.cancel(std::exchange(m_nFrame, 0));
    m_circle.bRunning = false;
    showScanningAnimation(false);
}

void AnimView::ResumeAnimation() {
    if (!m_circle.bMade)
        StartAnimation();
}

void AnimView::RecalcAnimationParameters() {
    if (!m_circle.bMade)
        return;
    StopAnimation();
    m_nRestart = m_mainLoop.callLater(0.0, [this] {
        m_nRestart = 0;
        StartAnimation();
    });
}

void AnimView::showScanningAnimation(bool show) {
    if (!m_circle.bMade || m_circle.bHidden == !show)
        return;
    m_circle.bHidden = !show;
    updateCircle();
    if (show && m_circle.bRunning)
        showFrame();
}

void AnimView::showFrame() {
    m_mainLoop.cancel(std::exchange(m_nFrame, 0));
    if (!m_circle.bRunning || m_circle.bHidden)
        return;
    updateCircle();
    m_nFrame = m_mainLoop.callLater(kFrameSeconds, [this] {
        m_nFrame = 0;
        showFrame();
    });
}

QRectF AnimView::getCircleRect() const {
    const double side = std::min(width(), height());
    return {(width() - side) * 0.5, (height() - side) * 0.5, side, side};
}

void AnimView::updateCircle() {
    update(getCircleRect().toAlignedRect());
}

void AnimView::reinitSelectionLayer() {
    m_selection.bMade = true;
    m_selection.bHidden = false;
    updateOutlines();
}

void AnimView::HideSel() {
    if (!m_selection.bMade)
        return;
    m_selection.bHidden = true;
    updateOutlines();
}

void AnimView::cleanSelLayer() {
    m_selection.bMade = false;
    updateOutlines();
}

void AnimView::updateOutlines() {
    update(m_selection.painted);
    m_selection.painted = {};
    if (!isSelectionShown())
        return;
    const QRectF bounds = mController.getOutlinesBounds();
    if (!bounds.isEmpty())
        m_selection.painted = radialView.getChartTransform()
                                  .mapRect(bounds)
                                  .adjusted(-kPixelMargin, -kPixelMargin, kPixelMargin, kPixelMargin)
                                  .toAlignedRect();
    update(m_selection.painted);
}

void AnimView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (isPulseShown() && m_circle.bRunning)
        drawCircle(painter);
    if (isSelectionShown() && !mController.isDrillAnimating()) {
        painter.setTransform(radialView.getChartTransform(), true);
        mController.DrawFocusItem(painter);
        mController.DrawSelectedItem(painter);
    }
}

void AnimView::resizeEvent(QResizeEvent* /*event*/) {
    // Outlines that are hidden for the time of a live resize stay so.
    updateOutlines();
}

void AnimView::drawCircle(QPainter& painter) const {
    const PulseFrame frame = getPulseFrame(m_mainLoop.now() - m_circle.dStart);
    const QPixmap glow = image(QStringLiteral("pulse"), devicePixelRatioF());
    const QRectF circle = getCircleRect();
    const QSizeF size = circle.size() * frame.dScale;
    const QRectF target(circle.center() - QPointF(size.width(), size.height()) / 2, size);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(frame.dOpacity);
    painter.drawPixmap(target, glow, QRectF(glow.rect()));
    painter.restore();
}

} // namespace veltrano
