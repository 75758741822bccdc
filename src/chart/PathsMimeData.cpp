#include "chart/PathsMimeData.h"

#include <QMimeData>

namespace veltrano {

namespace {

constexpr char kKey[] = "paths";
constexpr char kPlainText[] = "text/plain";
constexpr char kUriList[] = "text/uri-list";

QByteArray bytesOf(const std::string& text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

} // namespace

QByteArray archivePaths(std::span<const std::string> paths) {
    QByteArray archive(kKey, sizeof kKey);
    for (const std::string& path : paths)
        archive.append(bytesOf(path)).append('\0');
    return archive;
}

std::optional<std::vector<std::string>> unarchivePaths(const QByteArray& archive) {
    if (!archive.startsWith(QByteArray(kKey, sizeof kKey)) || !archive.endsWith('\0'))
        return std::nullopt;
    std::vector<std::string> paths;
    for (qsizetype start = sizeof kKey; start < archive.size();) {
        const qsizetype end = archive.indexOf('\0', start);
        paths.push_back(archive.mid(start, end - start).toStdString());
        start = end + 1;
    }
    return paths;
}

QStringList writablePasteboardTypes() {
    return {QLatin1String(kPathsMimeType), QLatin1String(kPlainText)};
}

bool writeFilePaths(std::span<const std::string> paths, QMimeData& toPasteboard) {
    if (paths.empty())
        return false;
    QByteArray text;
    for (const std::string& path : paths) {
        if (&path != &paths.front())
            text.append('\n');
        text.append(bytesOf(path));
    }
    toPasteboard.setData(QLatin1String(kPathsMimeType), archivePaths(paths));
    toPasteboard.setData(QLatin1String(kPlainText), text);
    return true;
}

void writeFileUris(std::span<const std::string> paths, QMimeData& toPasteboard) {
    QByteArray list;
    for (const std::string& path : paths)
        list.append("file://").append(bytesOf(path).toPercentEncoding("/")).append("\r\n");
    toPasteboard.setData(QLatin1String(kUriList), list);
}

std::optional<std::vector<std::string>> readFilePaths(const QMimeData& pasteboard) {
    return unarchivePaths(pasteboard.data(QLatin1String(kPathsMimeType)));
}

} // namespace veltrano
