#include "app/EntryIcons.h"

#include "appearance/Images.h"
#include "tree/TopLevelItem.h"

#include <QFile>
#include <QIcon>
#include <QPainter>
#include <QStandardPaths>

#include <utility>

namespace veltrano {

namespace {

/// Our own image, and the names of icons in the desktop's theme that say the same, the best one first.
struct IconKind {
    const char* image;
    QStringList themeNames;
};

/// Where two of the user's folders are one, as where he has no folder of downloads, the first kind holds.
IconKind kindOfFolder(const std::string& path, const FolderPlaces& places) {
    if (path == places.home)
        return {"extra/folder-home", {QStringLiteral("user-home")}};
    if (path == places.downloads)
        return {"extra/folder-downloads",
                {QStringLiteral("folder-download"), QStringLiteral("folder-downloads")}};
    if (path == places.pictures)
        return {"extra/folder-pictures", {QStringLiteral("folder-pictures")}};
    if (path == places.applications)
        return {"extra/folder-applications", {QStringLiteral("folder-applications")}};
    return {"extra/folder", {QStringLiteral("folder")}};
}

IconKind kindOfVolume(const VolumeItem& volume) {
    const std::string protocol = volume.getDADeviceProtocol().value_or(std::string());
    if (volume.isNetworkVol())
        return {"extra/volume-network", {QStringLiteral("folder-remote"), QStringLiteral("network-server")}};
    if (protocol == "Virtual Interface")
        return {"extra/volume-image", {QStringLiteral("drive-harddisk-image")}};
    if (volume.getMediaClass() != 0)
        return {"extra/volume-optical", {QStringLiteral("drive-optical"), QStringLiteral("media-optical")}};
    if (protocol == "USB" || volume.isInternal() == 0)
        return {"extra/volume-external",
                {QStringLiteral("drive-harddisk-usb"), QStringLiteral("drive-removable-media")}};
    return {"extra/volume-internal", {QStringLiteral("drive-harddisk")}};
}

IconKind kindOf(const TopLevelItem& entry, const FolderPlaces& places) {
    const auto* const volume = dynamic_cast<const VolumeItem*>(&entry);
    return volume ? kindOfVolume(*volume) : kindOfFolder(entry.getPath(), places);
}

QPixmap themePixmap(const QStringList& names, int side, qreal devicePixelRatio) {
    for (const QString& name : names)
        if (QIcon::hasThemeIcon(name))
            return QIcon::fromTheme(name).pixmap(QSize(side, side), devicePixelRatio);
    return {};
}

/// A theme's icon that is smaller than asked for, in the middle of a square of that size.
QPixmap centredInSquare(const QPixmap& picture, int side, qreal devicePixelRatio) {
    const QSize pixels = QSize(side, side) * devicePixelRatio;
    if (picture.size() == pixels)
        return picture;
    QPixmap square(pixels);
    square.setDevicePixelRatio(devicePixelRatio);
    square.fill(Qt::transparent);
    const QSizeF size = picture.deviceIndependentSize();
    QPainter painter(&square);
    painter.drawPixmap(QPointF((side - size.width()) / 2, (side - size.height()) / 2), picture);
    return square;
}

std::string standardFolder(QStandardPaths::StandardLocation location) {
    return QFile::encodeName(QStandardPaths::writableLocation(location)).toStdString();
}

} // namespace

FolderPlaces FolderPlaces::ofThisUser() {
    return {.home = standardFolder(QStandardPaths::HomeLocation),
            .downloads = standardFolder(QStandardPaths::DownloadLocation),
            .pictures = standardFolder(QStandardPaths::PicturesLocation),
            .applications = "/usr"};
}

EntryIcons::EntryIcons(FolderPlaces places) : m_places(std::move(places)) {}

QString EntryIcons::imageNameFor(const TopLevelItem& entry) const {
    return QLatin1String(kindOf(entry, m_places).image);
}

QPixmap EntryIcons::iconForFile(const TopLevelItem& entry, int side, qreal devicePixelRatio) const {
    const IconKind kind = kindOf(entry, m_places);
    const QString key = QStringLiteral("%1 %2 %3 %4")
                            .arg(QLatin1String(kind.image), QIcon::themeName(), QString::number(side),
                                 QString::number(devicePixelRatio));
    QPixmap& kept = m_kept[key];
    if (kept.isNull()) {
        const QPixmap themed = themePixmap(kind.themeNames, side, devicePixelRatio);
        kept = themed.isNull() ? renderImage(QLatin1String(kind.image), QSizeF(side, side), devicePixelRatio)
                               : centredInSquare(themed, side, devicePixelRatio);
    }
    return kept;
}

} // namespace veltrano
