#include "appearance/MAAttachedWindow.h"

#include "appearance/CloseHintView.h"
#include "platform/NotificationCentre.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScreen>

namespace veltrano {

namespace {

constexpr QColor kFirstBackground(26, 26, 26, 191);                    // white 0.1 at alpha 0.75
const QColor kRim = QColor::fromRgbF(0.908577f, 0.908577f, 0.908577f); // inside the border
constexpr double kRimWidth = 1.5; // points, of which the clip cuts half away

constexpr int kShadowReach = 12; // points around the outline
constexpr int kShadowDrop = 3;   // points downwards
constexpr int kShadowAlpha = 5;  // of each of its layers

/// From y downwards to y upwards and back: the origin is the same, so turning is its own inverse.
QPointF turned(const QPointF& point) {
    return {point.x(), -point.y()};
}
QRectF turned(const QRectF& rectangle) {
    return {rectangle.left(), -rectangle.bottom(), rectangle.width(), rectangle.height()};
}

/// Whether windows of our own can be put anywhere, and moved.
bool canPlaceWindows() {
    return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

/// The soft shadow under a pop-up. A widget of its own, so that the pointer goes through it: the pop-up
/// stands so near to the pointer that its shadow would catch it.
class Shadow final : public QWidget {
public:
    explicit Shadow(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_TransparentForMouseEvents); }

    void setOutline(const QPainterPath& outline) {
        m_outline = outline.translated(kShadowReach, kShadowReach);
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        // The pop-up itself is translucent: nothing of the shadow shines through it.
        QPainterPath around;
        around.addRect(rect());
        painter.setClipPath(around.subtracted(m_outline));
        painter.translate(0, kShadowDrop);
        for (int width = 2; width <= 2 * (kShadowReach - kShadowDrop); width += 2) {
            painter.setPen(
                QPen(QColor(20, 35, 60, kShadowAlpha), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.drawPath(m_outline);
        }
        painter.fillPath(m_outline, QColor(20, 35, 60, 4 * kShadowAlpha));
    }

private:
    QPainterPath m_outline;
};

} // namespace

MAAttachedWindow* MAAttachedWindow::initWithView(NotificationCentre& notifications, QWidget* view,
                                                 const QPointF& attachedToPoint, QWidget* inWindow,
                                                 AttachedSide onSide, float atDistance) {
    if (!view)
        return nullptr;
    return new MAAttachedWindow(notifications, *view, attachedToPoint, inWindow, onSide, atDistance);
}

MAAttachedWindow* MAAttachedWindow::initWithView(NotificationCentre& notifications, QWidget* view,
                                                 const QPointF& attachedToPoint, QWidget* inWindow,
                                                 float atDistance) {
    return initWithView(notifications, view, attachedToPoint, inWindow, AttachedSide::Automatic, atDistance);
}

MAAttachedWindow* MAAttachedWindow::initWithView(NotificationCentre& notifications, QWidget* view,
                                                 const QPointF& attachedToPoint, AttachedSide onSide,
                                                 float atDistance) {
    return initWithView(notifications, view, attachedToPoint, nullptr, onSide, atDistance);
}

MAAttachedWindow* MAAttachedWindow::initWithView(NotificationCentre& notifications, QWidget* view,
                                                 const QPointF& attachedToPoint, float atDistance) {
    return initWithView(notifications, view, attachedToPoint, nullptr, AttachedSide::Automatic, atDistance);
}

MAAttachedWindow* MAAttachedWindow::initWithView(NotificationCentre& notifications, QWidget* view,
                                                 const QPointF& attachedToPoint, QWidget* inWindow) {
    return initWithView(notifications, view, attachedToPoint, inWindow, AttachedSide::Automatic, 0);
}

MAAttachedWindow* MAAttachedWindow::initWithView(NotificationCentre& notifications, QWidget* view,
                                                 const QPointF& attachedToPoint, AttachedSide onSide) {
    return initWithView(notifications, view, attachedToPoint, nullptr, onSide, 0);
}

MAAttachedWindow* MAAttachedWindow::initWithView(NotificationCentre& notifications, QWidget* view,
                                                 const QPointF& attachedToPoint) {
    return initWithView(notifications, view, attachedToPoint, nullptr, AttachedSide::Automatic, 0);
}

MAAttachedWindow::MAAttachedWindow(NotificationCentre& notifications, QWidget& view, const QPointF& point,
                                   QWidget* window, AttachedSide side, float distance)
    : QWidget(window, window ? Qt::Widget : Qt::ToolTip | Qt::FramelessWindowHint),
      m_notifications(notifications),
      _MABackgroundColor(kFirstBackground),
      _view(&view),
      _window(window),
      _point(point),
      _side(side),
      _distance(distance) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground, !canPlaceWindows());
    setMouseTracking(true);
    hide();
    if (_window)
        _window->installEventFilter(this);
    if (_side == AttachedSide::Automatic)
        _side = _bestSideForAutomaticPosition();
    view.setParent(this);
    _redisplay();
    view.show();
}

MAAttachedWindow::~MAAttachedWindow() {
    releaseView();
    delete m_pShadow;
}

void MAAttachedWindow::releaseView() {
    if (!_view || _view->parentWidget() != this)
        return;
    _view->hide();
    _view->setParent(nullptr);
    _view = nullptr;
}

void MAAttachedWindow::setPoint(const QPointF& point, AttachedSide side) {
    _point = point;
    _side = side;
    _redisplay();
}

QPointF MAAttachedWindow::getPointOnScreen() const {
    return _window ? _window->mapToGlobal(_point) : _point;
}

QRectF MAAttachedWindow::getFrame() const {
    return {mapToGlobal(QPointF(0, 0)), QSizeF(size())};
}

AttachedSide MAAttachedWindow::_bestSideForAutomaticPosition() const {
    const QScreen* const screen = _window ? _window->screen() : QGuiApplication::primaryScreen();
    const QRectF free = screen->availableGeometry();
    const QRectF within =
        _window ? QRectF(_window->mapToGlobal(QPointF(0, 0)), QSizeF(_window->size())) : free;
    return bestSideForAutomaticPosition(m_measures, _view->size(), turned(getPointOnScreen()), _distance,
                                        turned(free), turned(within));
}

void MAAttachedWindow::_updateGeometry() {
    if (!_view)
        return;
    const AttachedWindowGeometry geometry =
        attachedGeometry(m_measures, _view->size(), turned(getPointOnScreen()), _side, _distance);
    _viewFrame = geometry.viewFrame;
    const QRect frame = turned(geometry.frame).toRect();
    place(frame);
    const double viewTop = geometry.frame.height() - _viewFrame.bottom();
    _view->move(qRound(_viewFrame.left()), qRound(viewTop));
}

void MAAttachedWindow::place(const QRect& frame) {
    const bool wasVisible = isVisible();
    const QRect inWindow = _window ? QRect(_window->mapFromGlobal(frame.topLeft()), frame.size()) : QRect();
    const bool separate = !_window || !_window->rect().contains(inWindow);
    if (separate != isWindow()) {
        hide();
        setParent(_window, separate ? Qt::ToolTip | Qt::FramelessWindowHint : Qt::WindowFlags());
    }
    const QRect target = separate ? frame : inWindow;
    // Where windows can't be moved, one is put into its place as it is shown.
    if (separate && isVisible() && target.topLeft() != pos() && !canPlaceWindows())
        hide();
    setGeometry(target);
    if (wasVisible && !isVisible())
        show();
    if (!separate)
        raise();
}

void MAAttachedWindow::_updateBackground() {
    shapeToOutline();
    placeShadow();
    update();
}

void MAAttachedWindow::_redisplay() {
    if (_resizing)
        return;
    const QScopedValueRollback guard(_resizing, true);
    _updateGeometry();
    _updateBackground();
}

QPainterPath MAAttachedWindow::getOutline() const {
    const QTransform turn(1, 0, 0, -1, 0, height());
    return turn.map(attachedOutline(m_measures, _viewFrame, _side));
}

void MAAttachedWindow::shapeToOutline() {
    // The pointer goes through what lies beside the outline. A window of its own has no soft edge, since
    // nothing may be there to blend it; a child keeps the half-covered points of its edge.
    QPainterPath shape = getOutline();
    if (!isWindow()) {
        QPainterPathStroker edge;
        edge.setWidth(2);
        shape = shape.united(edge.createStroke(shape));
    }
    setMask(QRegion(shape.toFillPolygon().toPolygon()));
}

void MAAttachedWindow::placeShadow() {
    const bool shown = isVisible() && !isWindow() && _window;
    if (!shown) {
        if (m_pShadow)
            m_pShadow->hide();
        return;
    }
    if (!m_pShadow)
        m_pShadow = new Shadow(_window);
    static_cast<Shadow*>(m_pShadow.data())->setOutline(getOutline());
    m_pShadow->setGeometry(geometry().adjusted(-kShadowReach, -kShadowReach, kShadowReach, kShadowReach));
    m_pShadow->show();
    m_pShadow->stackUnder(this);
}

void MAAttachedWindow::drawBackground(QPainter& painter) const {
    const QPainterPath outline = getOutline();
    painter.setRenderHint(QPainter::Antialiasing);
    if (isWindow() && canPlaceWindows()) {
        // Nothing may be there to blend it with what lies behind.
        QColor solid = _MABackgroundColor.color();
        solid.setAlpha(255);
        painter.fillRect(rect(), solid);
    }
    painter.setClipPath(outline);
    painter.fillPath(outline, _MABackgroundColor);
    if (m_borderWidth > 0) {
        // The clip cuts away the outer half of each line.
        const double border = 2 * static_cast<double>(m_borderWidth);
        painter.strokePath(outline, QPen(kRim, (border + kRimWidth) * m_measures.scale, Qt::SolidLine,
                                         Qt::FlatCap, Qt::RoundJoin));
        painter.strokePath(outline, QPen(m_borderColor, border * m_measures.scale, Qt::SolidLine, Qt::FlatCap,
                                         Qt::RoundJoin));
    }
}

void MAAttachedWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawBackground(painter);
}

void MAAttachedWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    _redisplay();
}

void MAAttachedWindow::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
    m_notifications.postNotification(kPerformCloseHintPanel);
}

void MAAttachedWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    placeShadow();
}

void MAAttachedWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (m_pShadow)
        m_pShadow->hide();
}

bool MAAttachedWindow::eventFilter(QObject* watched, QEvent* event) {
    // Its point is a place in the window: where that goes, it goes along, and a window that shrinks may have
    // to let it out.
    if (watched == _window && (event->type() == QEvent::Move || event->type() == QEvent::Resize))
        _redisplay();
    return QWidget::eventFilter(watched, event);
}

void MAAttachedWindow::setBorderColor(const QColor& value) {
    if (value == m_borderColor)
        return;
    m_borderColor = value;
    _updateBackground();
}

void MAAttachedWindow::setBorderWidth(float value) {
    if (value == m_borderWidth)
        return;
    m_borderWidth = value;
    _updateBackground();
}

void MAAttachedWindow::setViewMargin(float value) {
    if (value == m_measures.viewMargin)
        return;
    m_measures.viewMargin = std::max(value, 0.0f);
    setCornerRadius(m_measures.cornerRadius);
}

void MAAttachedWindow::setCornerRadius(float value) {
    m_measures.cornerRadius = limitedCornerRadius(m_measures, _viewFrame.size(), value);
    setArrowBaseWidth(m_measures.arrowBaseWidth);
}

void MAAttachedWindow::setArrowBaseWidth(float value) {
    m_measures.arrowBaseWidth = limitedArrowBaseWidth(m_measures, _viewFrame.size(), value);
    _redisplay();
}

void MAAttachedWindow::setArrowHeight(float value) {
    if (value == m_measures.arrowHeight)
        return;
    m_measures.arrowHeight = value;
    _redisplay();
}

void MAAttachedWindow::setHasArrow(float value) {
    if (value == hasArrow())
        return;
    m_measures.hasArrow = value != 0;
    _updateBackground();
}

void MAAttachedWindow::setDrawsRoundCornerBesideArrow(float value) {
    if (value == drawsRoundCornerBesideArrow())
        return;
    m_measures.drawsRoundCornerBesideArrow = value != 0;
    _redisplay();
}

void MAAttachedWindow::setBackgroundColor(const QBrush& value) {
    if (value == _MABackgroundColor)
        return;
    _MABackgroundColor = value;
    _updateBackground();
}

void MAAttachedWindow::setBackgroundImage(const QPixmap& value) {
    if (!value.isNull())
        setBackgroundColor(QBrush(value));
}

void MAAttachedWindow::performClose() {
    (_window ? _window.data() : this)->close();
}

} // namespace veltrano
