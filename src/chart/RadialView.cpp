#include "chart/RadialView.h"

#include "chart/RadialController.h"

#include <QCursor>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <cmath>

namespace veltrano {

RadialView::RadialView(RadialController& controller, QWidget* parent)
    : QWidget(parent), mController(controller) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Chart"));
}

void RadialView::setNeedsDisplay() {
    m_bNeedsDisplay = true;
    update();
}

QTransform RadialView::getChartTransform() const {
    return QTransform(1, 0, 0, -1, 0, height());
}

QPointF RadialView::getMouseLocation() const {
    return getChartTransform().map(mapFromGlobal(QPointF(QCursor::pos())));
}

void RadialView::renderChart() {
    const qreal ratio = devicePixelRatioF();
    const QSize pixels(static_cast<int>(std::ceil(width() * ratio)),
                       static_cast<int>(std::ceil(height() * ratio)));
    if (m_chart.size() != pixels || m_chart.devicePixelRatio() != ratio) {
        m_chart = QPixmap(pixels);
        m_chart.setDevicePixelRatio(ratio);
    }
    m_chart.fill(Qt::transparent);
    QPainter painter(&m_chart);
    painter.setFont(font());
    painter.setTransform(getChartTransform(), true);
    mController.DrawRadialSructure(painter, getChartBounds());
}

void RadialView::paintEvent(QPaintEvent* event) {
    if (m_bNeedsDisplay || m_chart.devicePixelRatio() != devicePixelRatioF()) {
        m_bNeedsDisplay = false;
        renderChart();
    }
    QPainter painter(this);
    painter.setClipRegion(event->region());
    painter.drawPixmap(0, 0, m_chart);
}

void RadialView::resizeEvent(QResizeEvent* /*event*/) {
    mController.viewFrameChanged();
}

void RadialView::mouseMoveEvent(QMouseEvent* event) {
    mController.operateMouseMoveFromRadialView(getChartTransform().map(event->position()));
}

} // namespace veltrano
