#pragma once

#include <QPixmap>
#include <QPointF>
#include <QTransform>
#include <QWidget>

namespace veltrano {

class RadialController;

/// The view of the chart. Keeps the chart as a picture at the screen's resolution and paints it anew only
/// when it is told to, so that whatever moves above it costs nothing here. The one place where y is turned:
/// the chart has y upwards, widgets have it downwards. See-through where there is no sector.
class RadialView final : public QWidget {
    Q_OBJECT

public:
    /// The controller is borrowed and outlives the view.
    explicit RadialView(RadialController& controller, QWidget* parent = nullptr);

    /// The chart has changed: it is painted anew with the next repaint.
    void setNeedsDisplay();

    /// From the chart's coordinates to the widget's, and back, since turning is its own inverse.
    QTransform getChartTransform() const;
    QRectF getChartBounds() const { return {0, 0, qreal(width()), qreal(height())}; }

    /// Where the pointer is, in the chart's coordinates; it may be outside.
    QPointF getMouseLocation() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void renderChart();

    RadialController& mController;
    QPixmap m_chart; // the chart as last painted
    bool m_bNeedsDisplay = true;
};

} // namespace veltrano
