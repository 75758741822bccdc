#include "appearance/CloseHintView.h"

#include "platform/NotificationCentre.h"

#include <QGuiApplication>
#include <QMouseEvent>

namespace veltrano {

CloseHintView::CloseHintView(NotificationCentre& notifications, QWidget* parent)
    : QWidget(parent), m_notifications(notifications) {
    setMouseTracking(true);
}

void CloseHintView::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
    if (QGuiApplication::applicationState() == Qt::ApplicationActive)
        m_notifications.postNotification(kPerformCloseHintPanel);
}

} // namespace veltrano
