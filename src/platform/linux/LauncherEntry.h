#pragma once

#include "platform/LauncherProgress.h"

#include <QDBusConnection>
#include <QString>

#include <optional>

namespace veltrano {

/// Tells docks of the progress by the "Update" signal of com.canonical.Unity.LauncherEntry on the session
/// bus: whoever shows entries listens, and nobody answers. Without a bus nothing happens. Takes the bar away
/// when it goes. Main thread.
class LauncherEntry final : public LauncherProgress {
public:
    /// The address of the entry is "application://" and the name of the program's desktop file.
    LauncherEntry(QDBusConnection bus, QString address);
    LauncherEntry(const LauncherEntry&) = delete;
    LauncherEntry& operator=(const LauncherEntry&) = delete;
    ~LauncherEntry() override;

    void setProgress(std::optional<double> fraction) override;

private:
    const QDBusConnection m_bus;
    const QString m_address;
    std::optional<double> m_fraction; // as last told
};

} // namespace veltrano
