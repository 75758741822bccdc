#pragma once

#include <QAccessible>
#include <QImage>
#include <QPointF>
#include <QTransform>
#include <QWidget>

#include <functional>
#include <utility>

namespace veltrano {

class ChartMenu;
class RadialController;
class TreeObject;

/// The view of the chart. Keeps the chart as a picture at the screen's resolution and paints it anew only
/// when it is told to, so that whatever moves above it costs nothing here. The one place where y is turned:
/// the chart has y upwards, widgets have it downwards. See-through where there is no sector. Hands pointer
/// and keyboard to the controller: the left button clicks, drags and turns; the arrows go from sector to
/// sector with the hover panel beside it, Return clicks, Backspace and Ctrl+Home go up, the menu key or
/// Shift+F10 opens the menu.
class RadialView final : public QWidget {
    Q_OBJECT

public:
    /// The controller is borrowed and outlives the view.
    explicit RadialView(RadialController& controller, QWidget* parent = nullptr);

    /// The chart has changed: it is painted anew with the next repaint.
    void setNeedsDisplay();
    /// Paints it now, together with the layers around it, if it has changed.
    void displayIfNeeded();

    /// From the chart's coordinates to the widget's, and back, since turning is its own inverse.
    QTransform getChartTransform() const;
    QRectF getChartBounds() const { return {0, 0, qreal(width()), qreal(height())}; }

    /// Where the pointer is, in the chart's coordinates; it may be outside.
    QPointF getMouseLocation() const;

    RadialController& getController() const { return mController; }
    /// How often the chart has changed so far.
    unsigned getChangeCount() const { return m_nChanges; }
    /// Opens the menu of the pointed sector, or of the disc, in the middle of it. Returns at once.
    void openMenuOnPointedSector();

    /// Who is told instead of the toolkit's bridge, which exists on a real desktop only; for tests.
    void setAccessibleListener(std::function<void(QAccessibleEvent&)> listener) {
        m_listener = std::move(listener);
    }

    // What assistive programs are told: that an item has the focus, that the selection is another one, that
    // the chart shows something else.
    void tellOfFocus(const TreeObject* item);
    void tellOfSelection();
    void tellOfChange();

    /// Whether the file that is dragged out may be taken away by where it is dropped.
    void setDragRemovable(bool removable) { m_bDragRemovable = removable; }
    /// What a drag out of the chart offers.
    Qt::DropActions getDragActions() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void renderChart();
    QPointF getChartPoint(const QPointF& inWidget) const { return getChartTransform().map(inWidget); }
    bool handleKey(const QKeyEvent& event);
    bool handlePlainKey(int key);
    bool isHeard() const;
    void tell(QAccessibleEvent& event) const;
    void openMenu(ChartMenu& menu, const QPoint& globalPosition);

    RadialController& mController;
    QImage m_chart; // the chart as last painted
    bool m_bNeedsDisplay = true;
    unsigned m_nChanges = 0;
    std::function<void(QAccessibleEvent&)> m_listener;
    bool m_bDragRemovable = false;
    QPointF m_pressed;        // where the left button went down, in the widget
    bool m_bDragging = false; // the pointer has left that place further than a click trembles
};

} // namespace veltrano
