#include "platform/linux/LauncherEntry.h"

#include <QDBusMessage>
#include <QVariantMap>

#include <algorithm>
#include <utility>

namespace veltrano {

LauncherEntry::LauncherEntry(QDBusConnection bus, QString address)
    : m_bus(std::move(bus)), m_address(std::move(address)) {}

LauncherEntry::~LauncherEntry() {
    setProgress(std::nullopt);
}

void LauncherEntry::setProgress(std::optional<double> fraction) {
    if (fraction)
        fraction = std::clamp(*fraction, 0.0, 1.0);
    if (fraction == m_fraction)
        return;
    m_fraction = fraction;
    auto update = QDBusMessage::createSignal(QStringLiteral("/com/canonical/unity/launcherentry/veltrano"),
                                             QStringLiteral("com.canonical.Unity.LauncherEntry"),
                                             QStringLiteral("Update"));
    update << m_address
           << QVariantMap{{QStringLiteral("progress"), fraction.value_or(0.0)},
                          {QStringLiteral("progress-visible"), fraction.has_value()}};
    m_bus.send(update);
}

} // namespace veltrano
