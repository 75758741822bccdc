#include "app/p1AppDelegate.h"

#include "platform/NotificationCentre.h"

#include <QGuiApplication>

namespace veltrano {

p1AppDelegate::p1AppDelegate(NotificationCentre& notifications, QGuiApplication& application)
    : m_notifications(notifications) {
    QGuiApplication::setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
    connect(&application, &QCoreApplication::aboutToQuit, this, &p1AppDelegate::applicationWillTerminate);
    connect(&application, &QGuiApplication::applicationStateChanged, this, &p1AppDelegate::stateChanged);
}

void p1AppDelegate::applicationDidFinishLaunching() {
    m_notifications.postNotification(InitTreeControllerParameters);
}

void p1AppDelegate::applicationWillTerminate() {
    m_notifications.postNotification(ApplicationWillTerminate);
}

void p1AppDelegate::stateChanged(Qt::ApplicationState state) {
    m_notifications.postNotification(state == Qt::ApplicationActive ? ApplicationActivated
                                                                    : ApplicationIsDeactivating);
}

} // namespace veltrano
