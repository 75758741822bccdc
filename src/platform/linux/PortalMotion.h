#pragma once

#include "platform/DesktopMotion.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <optional>

class QDBusPendingCallWatcher;

namespace veltrano {

/// Asks the settings portal on the session bus (org.freedesktop.portal.Settings): "reduced-motion" of
/// org.freedesktop.appearance where it is there, else "enable-animations" of org.gnome.desktop.interface.
/// Asked anew when one of them changes and when a portal comes. Without bus or portal nothing happens; one
/// that goes away leaves what it said. Main thread.
class PortalMotion final : public QObject, public DesktopMotion {
    Q_OBJECT

public:
    explicit PortalMotion(QDBusConnection bus);

    void observe(Observer observer) override;

private slots:
    void settingChanged(const QDBusMessage& message);
    void ownerChanged(const QString& name, const QString& oldOwner, const QString& newOwner);

private:
    void ask();
    void take(const QDBusMessage& answer);

    QDBusConnection m_bus;
    Observer m_observer;
    QDBusPendingCallWatcher* m_pQuestion = nullptr; ///< The newest one that is open; a child.
    std::optional<bool> m_bReduced;                 ///< As last told.
};

} // namespace veltrano
