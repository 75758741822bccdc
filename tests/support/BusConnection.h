#pragma once

#include "support/PrivateBus.h"

#include <QDBusConnection>
#include <QString>

namespace veltrano {

/// A connection of its own to a bus, closed with this object. Several in one program are several peers.
class BusConnection {
public:
    explicit BusConnection(const PrivateBus& bus)
        : m_bus(QDBusConnection::connectToBus(QString::fromStdString(bus.address()), m_name)) {}
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;
    ~BusConnection() { QDBusConnection::disconnectFromBus(m_name); }

    QDBusConnection& operator*() { return m_bus; }
    QDBusConnection* operator->() { return &m_bus; }

private:
    static QString nextName() {
        static int number = 0;
        return QStringLiteral("veltrano-test-%1").arg(++number);
    }

    const QString m_name = nextName();
    QDBusConnection m_bus;
};

} // namespace veltrano
