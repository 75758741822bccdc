#include "platform/linux/FileManagerDesktop.h"

#include "platform/linux/FileAddress.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QStringList>

#include <set>
#include <utility>

namespace veltrano {

FileManagerDesktop::FileManagerDesktop(QDBusConnection bus, Opener opener)
    : m_bus(std::move(bus)), m_opener(std::move(opener)) {}

void FileManagerDesktop::showItems(const std::vector<std::string>& paths) {
    askFileManager(QStringLiteral("ShowItems"), paths);
}

void FileManagerDesktop::showItemProperties(const std::vector<std::string>& paths) {
    askFileManager(QStringLiteral("ShowItemProperties"), paths);
}

void FileManagerDesktop::openAddress(const std::string& url) {
    m_opener(url);
}

void FileManagerDesktop::askFileManager(const QString& method, const std::vector<std::string>& paths) {
    if (paths.empty())
        return;
    QStringList addresses;
    for (const std::string& path : paths)
        addresses << QString::fromStdString(fileAddress(path));
    auto message = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
                                                  QStringLiteral("/org/freedesktop/FileManager1"),
                                                  QStringLiteral("org.freedesktop.FileManager1"), method);
    message << addresses << QString(); // the second belongs to start-up notification, which nobody shows here
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, paths] {
        watcher->deleteLater();
        // One that is slow to answer may well have shown the items.
        if (watcher->isError() && watcher->error().type() != QDBusError::NoReply)
            openFoldersOf(paths);
    });
}

void FileManagerDesktop::openFoldersOf(const std::vector<std::string>& paths) {
    std::set<std::string> opened;
    for (const std::string& path : paths) {
        std::string folder = folderOfPath(path);
        const std::string address = fileAddress(folder);
        if (opened.insert(std::move(folder)).second)
            m_opener(address);
    }
}

} // namespace veltrano
