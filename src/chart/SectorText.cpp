#include "chart/SectorText.h"

#include "scan/SizeText.h"
#include "tree/FolderSystemItem.h"
#include "tree/TopLevelItem.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

#include <array>

namespace veltrano {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("SectorText", text);
}

/// What an age class says; class 0 says nothing.
QString ageText(std::uint8_t timeCode) {
    constexpr std::array kAges = {
        "",
        QT_TRANSLATE_NOOP("SectorText", "changed within a day"),
        QT_TRANSLATE_NOOP("SectorText", "changed within a week"),
        QT_TRANSLATE_NOOP("SectorText", "changed within two weeks"),
        QT_TRANSLATE_NOOP("SectorText", "changed within 30 days"),
        QT_TRANSLATE_NOOP("SectorText", "changed within 60 days"),
        QT_TRANSLATE_NOOP("SectorText", "changed within a year"),
        QT_TRANSLATE_NOOP("SectorText", "unchanged for a year"),
    };
    return timeCode > 0 && timeCode < kAges.size() ? tr(kAges[timeCode]) : QString();
}

QString sizeText(std::int64_t bytes) {
    return QString::fromStdString(stringFromFileSizeShort1(bytes));
}

QString shareText(double share) {
    return tr("%1 %").arg(QLocale().toString(share * 100, 'f', 1));
}

QString kindText(const FileSystemItem& item) {
    if (!item.isDir())
        return {};
    return item.isPack() ? tr("package") : tr("folder");
}

/// What the sector's colour says.
QString markText(const FileSystemItem& item) {
    if (item.isTopCollected())
        return tr("collected");
    if (item.isTopTrashFlag())
        return tr("in the Trash");
    return item.isTopHiddenFlag() ? tr("hidden") : QString();
}

QString join(QStringList words) {
    words.removeAll(QString());
    return words.join(QStringLiteral(", "));
}

} // namespace

SectorText describeSector(TreeObject& object, const VolumeFolderProtocol& root,
                          const SectorSentinels& sentinels, double share,
                          const std::function<QString(std::string_view)>& displayText) {
    const std::int64_t used = root.getOccSize();
    if (&object == sentinels.m_pOccupSector)
        return {tr("Occupied"), join({sizeText(used), shareText(share)})};
    if (&object == sentinels.m_pFreeSector)
        return {tr("Free"), join({sizeText(root.getWholeItemSize() - used), shareText(share)})};
    if (const TopLevelItem* const entry = object.asTopLevelItem()) {
        const bool hasSize = entry->getWholeItemSize() > 0;
        return {displayText(entry->getDisplayName()),
                join({hasSize ? sizeText(entry->getWholeItemSize()) : QString(), tr("not scanned yet")})};
    }
    const FileSystemItem* const item = object.asFileSystemItem();
    if (!item)
        return {};
    SectorText text{displayText(item->getDisplayName()),
                    join({sizeText(item->getWholeItemSize()), shareText(share), ageText(item->getTimeCode()),
                          kindText(*item), markText(*item)})};
    if (item->isUnscanned())
        text.name = displayText(item->getDesc());
    else if (item->isHidden())
        text.name = tr("Hidden items at %1").arg(text.name);
    return text;
}

} // namespace veltrano
