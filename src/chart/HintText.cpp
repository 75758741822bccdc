#include "chart/HintText.h"

#include "scan/SizeText.h"
#include "tree/PathComponents.h"
#include "tree/SpecialItems.h"
#include "tree/TopLevelItem.h"

#include <QCoreApplication>

namespace veltrano {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("veltrano::HintText", text);
}

QString sizeText(std::int64_t size) {
    return QString::fromStdString(stringFromFileSizeShort1(size));
}

QString mainText(const FileSystemItem& item, const QString& name) {
    if (item.isTopTrashFlag())
        return item.isTrashFlag() ? tr("Trash") : tr("%1 (item in the Trash)").arg(name);
    if (item.isTopHiddenFlag())
        return (item.isHiddenFlag() ? tr("%1 (hidden item)") : tr("%1 (sub hidden item)")).arg(name);
    return item.isHidden() ? tr("Hidden items at %1").arg(name) : name;
}

} // namespace

std::optional<HintText> composeHint(TreeObject& item, const VolumeFolderProtocol& root,
                                    const SectorSentinels& sentinels,
                                    const std::function<QString(std::string_view)>& displayText) {
    if (&item == sentinels.m_pFreeSector)
        return HintText{displayText(root.getDisplayName()),
                        sizeText(root.getWholeItemSize() - root.getOccSize()), tr("Free:"),
                        root.getFullPath()};
    if (&item == sentinels.m_pOccupSector)
        return HintText{displayText(root.getDisplayName()), sizeText(root.getOccSize()), tr("Occupied:"),
                        root.getFullPath()};
    const QString caption = tr("Size:");
    if (const TopLevelItem* const entry = item.asTopLevelItem()) {
        // A volume that keeps silent has not told its size.
        const bool hasSize = entry->isVol() && entry->getWholeItemSize() > 0;
        const QString size = hasSize ? sizeText(entry->getWholeItemSize()) : tr("Not Calculated");
        return HintText{displayText(entry->getDisplayName()), size, caption, entry->getFullPath()};
    }
    const FileSystemItem* const file = item.asFileSystemItem();
    if (!file)
        return std::nullopt;
    const QString size = sizeText(file->getWholeItemSize());
    if (file->isFileVaultDir()) {
        const std::string_view link = static_cast<const FileVaultDirItem*>(file)->getVolumeLinkPath();
        return HintText{tr("%1, folder with FileVault protection").arg(displayText(lastPathComponent(link))),
                        size, caption, std::string(link)};
    }
    if (file->isUnscanned())
        return HintText{displayText(file->getDesc()), size, caption, std::nullopt};
    return HintText{mainText(*file, displayText(file->getDisplayName())), size, caption, file->getFullPath()};
}

} // namespace veltrano
