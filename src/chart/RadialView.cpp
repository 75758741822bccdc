#include "chart/RadialView.h"

#include "chart/ChartAccessible.h"
#include "chart/ChartMenu.h"
#include "chart/RadialController.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <cmath>

namespace veltrano {

RadialView::RadialView(RadialController& controller, QWidget* parent)
    : QWidget(parent), mController(controller) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    installChartAccessible();
    setAccessibleName(tr("Chart"));
}

void RadialView::setNeedsDisplay() {
    m_bNeedsDisplay = true;
    ++m_nChanges;
    update();
}

void RadialView::displayIfNeeded() {
    if (m_bNeedsDisplay)
        repaint();
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
        m_chart = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
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
    painter.drawImage(0, 0, m_chart);
}

void RadialView::resizeEvent(QResizeEvent* /*event*/) {
    mController.viewFrameChanged();
}

Qt::DropActions RadialView::getDragActions() const {
    return m_bDragRemovable ? Qt::CopyAction | Qt::MoveAction | Qt::LinkAction
                            : Qt::CopyAction | Qt::LinkAction;
}

void RadialView::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton)) {
        mController.operateMouseMoveFromRadialView(getChartPoint(event->position()));
        return;
    }
    const QPointF way = event->position() - m_pressed;
    m_bDragging = m_bDragging || way.manhattanLength() >= QApplication::startDragDistance();
    // Last: a drag turns the main loop until it is over, and the view may be gone by then.
    if (m_bDragging)
        mController.LMouseDragged(getChartPoint(event->position()), *event);
}

void RadialView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    m_pressed = event->position();
    m_bDragging = false;
    mController.hidePanel();
    mController.LMouseDown(getChartPoint(event->position()), *event);
}

void RadialView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    const QPointF point = getChartPoint(event->position());
    if (!mController.LMouseClick(point, *event))
        return;
    QRectF area;
    if (mController.OperateMouseMoveByPoint(point, &area))
        mController.updateSelection();
}

void RadialView::leaveEvent(QEvent* /*event*/) {
    mController.mouseExited();
}

void RadialView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard)
        openMenuOnPointedSector();
    else if (ChartMenu* const menu = mController.getContextMenuByPoint(getChartPoint(event->pos())))
        openMenu(*menu, event->globalPos());
    else
        event->ignore();
}

void RadialView::openMenuOnPointedSector() {
    // A system that turns the menu key into an event of its own also sends the key.
    if (QApplication::activePopupWidget())
        return;
    if (ChartMenu* const menu = mController.getContextMenuForPointedSector()) {
        const QPointF middle = getChartTransform().map(mController.getMiddleOfPointedSector());
        openMenu(*menu, mapToGlobal(middle.toPoint()));
    }
}

void RadialView::openMenu(ChartMenu& menu, const QPoint& globalPosition) {
    window()->repaint();
    menu.popup(globalPosition);
}

bool RadialView::isHeard() const {
    return m_listener || QAccessible::isActive();
}

void RadialView::tell(QAccessibleEvent& event) const {
    if (m_listener)
        m_listener(event);
    else
        QAccessible::updateAccessibility(&event);
}

void RadialView::tellOfFocus(const TreeObject* item) {
    if (!isHeard() || !hasFocus())
        return;
    const auto* const chart = static_cast<ChartAccessible*>(QAccessible::queryAccessibleInterface(this));
    if (QAccessibleInterface* const sector = chart->getSector(item)) {
        QAccessibleEvent event(sector, QAccessible::Focus);
        tell(event);
    }
}

void RadialView::tellOfSelection() {
    if (!isHeard())
        return;
    const auto* const chart = static_cast<ChartAccessible*>(QAccessible::queryAccessibleInterface(this));
    for (const SectorItem& selected : mController.getSelectedSectors()) {
        if (QAccessibleInterface* const sector = chart->getSector(selected.m_pItem())) {
            QAccessibleEvent event(sector, QAccessible::SelectionAdd);
            tell(event);
        }
    }
    QAccessibleEvent event(this, QAccessible::SelectionWithin);
    tell(event);
}

void RadialView::tellOfChange() {
    if (!isHeard())
        return;
    for (const QAccessible::Event kind : {QAccessible::ObjectReorder, QAccessible::DescriptionChanged}) {
        QAccessibleEvent event(this, kind);
        tell(event);
    }
}

void RadialView::keyPressEvent(QKeyEvent* event) {
    if (!handleKey(*event))
        QWidget::keyPressEvent(event);
}

void RadialView::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    mController.keysLeft();
}

bool RadialView::handleKey(const QKeyEvent& event) {
    if (event.matches(QKeySequence::Copy)) {
        mController.copy();
        return true;
    }
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::ControlModifier && event.key() == Qt::Key_Home) {
        mController.drillToTop();
        return true;
    }
    if (modifiers == Qt::ShiftModifier && event.key() == Qt::Key_F10) {
        openMenuOnPointedSector();
        return true;
    }
    return modifiers == Qt::NoModifier && handlePlainKey(event.key());
}

bool RadialView::handlePlainKey(int key) {
    switch (key) {
    case Qt::Key_Left:
        mController.movePointedSector(SectorMove::Previous);
        return true;
    case Qt::Key_Right:
        mController.movePointedSector(SectorMove::Next);
        return true;
    case Qt::Key_Up:
        mController.movePointedSector(SectorMove::Outwards);
        return true;
    case Qt::Key_Down:
        mController.movePointedSector(SectorMove::Inwards);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        mController.clickPointedSector();
        return true;
    case Qt::Key_Backspace:
        mController.drillOneLevelUp();
        return true;
    case Qt::Key_Menu:
        openMenuOnPointedSector();
        return true;
    default:
        return false;
    }
}

} // namespace veltrano
