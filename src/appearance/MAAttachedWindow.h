#pragma once

#include "appearance/AttachedWindowShape.h"

#include <QBrush>
#include <QColor>
#include <QPainterPath>
#include <QPointer>
#include <QWidget>

namespace veltrano {

class NotificationCentre;

/// A borderless, translucent pop-up that holds one view and points with an arrow at a spot. Where it fits
/// into the window that it is attached to, it is a child that lies over it, since no window system places
/// those, shapes them or needs a compositor for their translucency; where it must leave that window it
/// becomes a window of its own, cut to its outline. Never takes the focus by itself.
///
/// It belongs to who made it; the window that it is attached to takes it along when it goes. The view is
/// borrowed and given back, hidden and without a parent, before the pop-up goes. Main thread.
class MAAttachedWindow final : public QWidget {
    Q_OBJECT

public:
    /// The designated form. The point is in the coordinates of `inWindow`, or of the screen without one, y
    /// downwards as in all widgets. The pop-up has the view's size and is not shown yet. A null view gives no
    /// pop-up. The centre is borrowed and outlives it.
    static MAAttachedWindow* initWithView(NotificationCentre& notifications, QWidget* view,
                                          const QPointF& attachedToPoint, QWidget* inWindow,
                                          AttachedSide onSide, float atDistance);

    // The same with no window, the automatic side and no distance for what is not named.

    static MAAttachedWindow* initWithView(NotificationCentre& notifications, QWidget* view,
                                          const QPointF& attachedToPoint, QWidget* inWindow,
                                          float atDistance);
    static MAAttachedWindow* initWithView(NotificationCentre& notifications, QWidget* view,
                                          const QPointF& attachedToPoint, AttachedSide onSide,
                                          float atDistance);
    static MAAttachedWindow* initWithView(NotificationCentre& notifications, QWidget* view,
                                          const QPointF& attachedToPoint, float atDistance);
    static MAAttachedWindow* initWithView(NotificationCentre& notifications, QWidget* view,
                                          const QPointF& attachedToPoint, QWidget* inWindow);
    static MAAttachedWindow* initWithView(NotificationCentre& notifications, QWidget* view,
                                          const QPointF& attachedToPoint, AttachedSide onSide);
    static MAAttachedWindow* initWithView(NotificationCentre& notifications, QWidget* view,
                                          const QPointF& attachedToPoint);
    ~MAAttachedWindow() override;

    /// Moves the pop-up to another point and side; the side is taken as it is.
    void setPoint(const QPointF& point, AttachedSide side);
    /// The view has changed its size.
    void needUpdateSize() { _redisplay(); }
    /// Gives the view back. The pop-up is empty afterwards, and about to go.
    void releaseView();

    AttachedSide getSide() const { return _side; }
    /// Where the pop-up lies on the screen, y downwards.
    QRectF getFrame() const;
    /// Whether it has left the window that it is attached to and is one of its own.
    bool isSeparate() const { return isWindow(); }

    QColor borderColor() const { return m_borderColor; }
    void setBorderColor(const QColor& value);
    float borderWidth() const { return m_borderWidth; }
    void setBorderWidth(float value);
    float viewMargin() const { return m_measures.viewMargin; }
    /// At least 0. Then the radius is limited anew.
    void setViewMargin(float value);
    float arrowBaseWidth() const { return m_measures.arrowBaseWidth; }
    /// Limited to what the shorter side has room for beside the corners.
    void setArrowBaseWidth(float value);
    float arrowHeight() const { return m_measures.arrowHeight; }
    void setArrowHeight(float value);
    float cornerRadius() const { return m_measures.cornerRadius; }
    /// Limited so that the arrow's base has room on the shorter side. Then the base is limited anew.
    void setCornerRadius(float value);

    // Two flags that travel as numbers, 1 or 0, as the other measures do.

    float hasArrow() const { return m_measures.hasArrow ? 1.0f : 0.0f; }
    void setHasArrow(float value);
    float drawsRoundCornerBesideArrow() const { return m_measures.drawsRoundCornerBesideArrow ? 1.0f : 0.0f; }
    void setDrawsRoundCornerBesideArrow(float value);

    /// What fills the outline.
    QBrush windowBackgroundColor() const { return _MABackgroundColor; }
    void setBackgroundColor(const QBrush& value);
    /// Fills with copies of an image; a null image changes nothing.
    void setBackgroundImage(const QPixmap& value);

    static constexpr bool canBecomeMainWindow() { return false; }
    static constexpr bool canBecomeKeyWindow() { return true; }
    static constexpr bool isExcludedFromWindowsMenu() { return true; }
    /// Closes the window that this one is attached to; this one if there is none.
    void performClose();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    MAAttachedWindow(NotificationCentre& notifications, QWidget& view, const QPointF& point, QWidget* window,
                     AttachedSide side, float distance);

    QPointF getPointOnScreen() const;
    AttachedSide _bestSideForAutomaticPosition() const;
    void _updateGeometry();
    void _updateBackground();
    void _redisplay();
    void place(const QRect& frame);
    void placeShadow();
    QPainterPath getOutline() const; // in this widget's coordinates
    void shapeToOutline();
    void drawBackground(QPainter& painter) const;

    NotificationCentre& m_notifications;

    QColor m_borderColor = Qt::white;
    float m_borderWidth = 2; // points
    AttachedWindowMeasures m_measures;
    QBrush _MABackgroundColor;

    QPointer<QWidget> _view;
    QPointer<QWidget> _window; // may be null
    QPointF _point;            // in the coordinates of _window, or of the screen
    AttachedSide _side;
    float _distance;   // points
    QRectF _viewFrame; // y upwards
    bool _resizing = false;
    QPointer<QWidget> m_pShadow; // lies under the pop-up while it is a child
};

} // namespace veltrano
