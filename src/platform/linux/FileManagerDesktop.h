#pragma once

#include "platform/Desktop.h"

#include <QDBusConnection>
#include <QObject>

#include <functional>
#include <string>
#include <vector>

namespace veltrano {

/// The desktop as a session bus and an opener of addresses make it. The file manager is asked by messages
/// that nobody waits for; where none answers to its name, the folders of the items are opened instead. Lives
/// as long as the program; main thread.
class FileManagerDesktop final : public QObject, public Desktop {
    Q_OBJECT

public:
    /// Opens an encoded address and returns at once.
    using Opener = std::function<void(const std::string& url)>;

    /// A connection that is not there, or breaks, is a desktop without a file manager.
    FileManagerDesktop(QDBusConnection bus, Opener opener);

    void showItems(const std::vector<std::string>& paths) override;
    void showItemProperties(const std::vector<std::string>& paths) override;
    void openAddress(const std::string& url) override;

private:
    void askFileManager(const QString& method, const std::vector<std::string>& paths);
    void openFoldersOf(const std::vector<std::string>& paths);

    QDBusConnection m_bus;
    const Opener m_opener;
};

} // namespace veltrano
