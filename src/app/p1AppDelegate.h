#pragma once

#include <QObject>

class QGuiApplication;

namespace veltrano {

class NotificationCentre;

/// Posted once, when everything is made and before the first event: the main controller takes its settings.
inline constexpr const char* InitTreeControllerParameters = "InitTreeControllerParameters";
/// Posted once, before the program ends.
inline constexpr const char* ApplicationWillTerminate = "applicationWillTerminate";
/// Another program comes to the front, or this one is hidden.
inline constexpr const char* ApplicationIsDeactivating = "applicationIsDeactivating";
/// This program comes to the front.
inline constexpr const char* ApplicationActivated = "applicationActivated";

/// The application's delegate: turns the events of the application into named notifications, and does
/// nothing else. Made by the program's main function; main thread. Its odd name is the system's own.
class p1AppDelegate final : public QObject {
    Q_OBJECT

public:
    /// Both are borrowed and outlive this.
    p1AppDelegate(NotificationCentre& notifications, QGuiApplication& application);

    void applicationDidFinishLaunching();
    void applicationWillTerminate();
    /// The program ends with its last window.
    static bool applicationShouldTerminateAfterLastWindowClosed() { return true; }

private:
    void stateChanged(Qt::ApplicationState state);

    NotificationCentre& m_notifications;
};

} // namespace veltrano
