// What the table shows in the rows: their cells, heights and tool tips, and the texts of the cells.

#include "app/SidebarHost.h"
#include "app/VolumesTableController.h"
#include "appearance/Colours.h"
#include "appearance/SharedImages.h"
#include "scan/SizeText.h"

#include <QPainter>
#include <QTextDocument>

#include <algorithm>
#include <limits>

namespace veltrano {

namespace {

// Points, without the spacing between rows.
constexpr int kFirstGroupHeight = 26;
constexpr int kGroupHeight = 42;
constexpr int kFolderHeight = 39;
constexpr int kVolumeHeight = 60;

constexpr int kVolumeIcon = 44; // points
constexpr int kFolderIcon = 32; // points

QString sizeText(std::int64_t bytes) {
    return QString::fromStdString(stringFromFileSizeShort1(bytes));
}

TopLevelItem* entryOf(const CellData& data) {
    TreeObject* const item = itemOf(data);
    return item ? item->asTopLevelItem() : nullptr;
}

const VolumeItem* volumeOf(const CellData& data) {
    return dynamic_cast<const VolumeItem*>(entryOf(data));
}

/// The whole part of share / whole in ten thousandths.
std::int32_t tenThousandths(std::int64_t share, std::int64_t whole) {
    constexpr std::int64_t kScale = 10000;
    // Where the product would leave the range, the last digits of a size do not count.
    if (whole > std::numeric_limits<std::int64_t>::max() / kScale) {
        share /= kScale;
        whole /= kScale;
    }
    constexpr std::int64_t kLimit = std::numeric_limits<std::int32_t>::max();
    const std::int64_t bounded = std::clamp(share, -whole, whole);
    return static_cast<std::int32_t>(std::clamp(bounded * kScale / whole, -kLimit, kLimit));
}

} // namespace

// The table's questions.

int VolumesTableController::heightOfRow(int row) const {
    if (isGroupRow(row))
        return row == 0 ? kFirstGroupHeight : kGroupHeight;
    const Entry entry = getItemByRow(row);
    return entry && entry->isFolder() ? kFolderHeight : kVolumeHeight;
}

bool VolumesTableController::shouldSelectRow(int row) const {
    return isRowValid(row) && !isGroupRow(row);
}

bool VolumesTableController::shouldTrackCell(int, int row) {
    if (bSelectionChanging)
        return false;
    // Who presses the selected row wants to see the top of its tree again.
    if (row == disksTableList.selectedRow())
        resetRadialRootToCurrVolume(row);
    return true;
}

bool VolumesTableController::isButtonCell(int column, int row) const {
    if (column != pColBtn)
        return false;
    const Entry entry = getItemByRow(row);
    if (!entry)
        return false;
    if (pcontr.isProcessing())
        return isUnderScan(*entry) && _sharedBtnStopCell.isEnabled();
    return row == disksTableList.selectedRow() && _sharedBtnStartCell.isEnabled();
}

bool VolumesTableController::isUnderScan(const TopLevelItem& entry) const {
    return pcontr.getProcessingVol() == entry.getPath();
}

TableCell* VolumesTableController::buttonCellOfRow(int row) {
    RowButtonCell* button = nullptr;
    if (pcontr.isProcessing()) {
        if (isUnderScan(*getItemByRow(row)))
            button = &_sharedBtnStopCell;
    } else if (row == disksTableList.selectedRow()) {
        button = &_sharedBtnStartCell;
    }
    if (!button)
        return &_sharedGroupEmptyCell;
    button->setState(disksTableList.isButtonPointed(pColBtn, row),
                     disksTableList.isButtonPressed(pColBtn, row));
    button->setFoot(disksTableList.plateFoot(row));
    return button;
}

TableCell* VolumesTableController::dataCellForTableColumn(std::optional<int> column, int row) {
    if (!isRowValid(row))
        return nullptr;
    if (const VolumeItemGrop* const group = getGroupByRow(row)) {
        if (column)
            return nullptr;
        if (Colours::sharedColours().oldDraw()) {
            _sharedGroupTitleCell.setText(QString::fromStdString(group->groupName));
            return &_sharedGroupTitleCell;
        }
        _sharedGroupTitleCellNew.setObjectValue(objectValueForTableColumn(std::nullopt, row));
        return &_sharedGroupTitleCellNew;
    }
    if (!column)
        return nullptr;
    const auto place = static_cast<Column>(*column);
    TableCell* cell = nullptr;
    if (place == pColBtn)
        cell = buttonCellOfRow(row);
    else if (place == pColIcon)
        cell = &m_iconCell;
    else if (getItemByRow(row)->isFolder())
        cell = &_sharedTextDescCell;
    else
        cell = &m_infoCell;
    cell->setObjectValue(objectValueForTableColumn(place, row));
    return cell;
}

CellData VolumesTableController::objectValueForTableColumn(std::optional<Column> column, int row) const {
    if (const VolumeItemGrop* const group = getGroupByRow(row))
        return column ? CellData{} : CellData{group};
    const Entry entry = getItemByRow(row);
    if (!entry || !column)
        return {};
    switch (*column) {
    case pColIcon:
        return iconOfRow(*entry);
    case pColInfo:
        return static_cast<TreeObject*>(entry.get());
    default:
        return {};
    }
}

QPixmap VolumesTableController::iconOfRow(const TopLevelItem& entry) const {
    const qreal ratio = disksTableList.devicePixelRatioF();
    const int side = entry.isFolder() ? kFolderIcon : kVolumeIcon;
    QPixmap icon = m_icons.iconForFile(entry, side, ratio);
    if (!entry.isScanned() || isUnderScan(entry))
        return icon;
    const QPixmap mark =
        sharedImage(entry.isScanCompleted() ? "mimgScannedItemMark" : "mimgUnScannedItemMark", ratio);
    const QSizeF size = mark.deviceIndependentSize();
    QPainter painter(&icon);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QPointF(side - size.width(), side - size.height()), mark);
    return icon;
}

QString VolumesTableController::nameOfRow(int row) const {
    if (const VolumeItemGrop* const group = getGroupByRow(row))
        return QString::fromStdString(group->groupName);
    const Entry entry = getItemByRow(row);
    return entry ? pcontr.getDisplayText(entry->getName()) : QString();
}

QString VolumesTableController::toolTipForCell(Column column, int row) const {
    const Entry entry = getItemByRow(row);
    if (!entry || column == pColBtn)
        return {};
    const QString text = pcontr.getDisplayText(entry->isFolder() ? entry->getPath() : entry->getName());
    // A name that looks like markup is still a name.
    return Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text;
}

QString VolumesTableController::accessibleTextForCell(Column column, int row) const {
    const Entry entry = getItemByRow(row);
    if (!entry)
        return column == pColIcon ? nameOfRow(row) : QString();
    const bool isStopButton = pcontr.isProcessing() && isUnderScan(*entry);
    const bool isScanButton = !pcontr.isProcessing() && row == disksTableList.selectedRow();
    switch (column) {
    case pColIcon:
        return stateOfEntry(*entry);
    case pColInfo: {
        const CellData data = static_cast<TreeObject*>(entry.get());
        QStringList parts{nameOfRow(row)};
        parts << secondaryTextForCell(m_infoCell, data).value_or(QString());
        parts << descTextForCell(_sharedTextDescCell, data).value_or(QString());
        parts.removeAll(QString());
        return parts.join(QStringLiteral(", "));
    }
    default:
        return isStopButton ? tr("Stop scanning") : isScanButton ? tr("Scan") : QString();
    }
}

QString VolumesTableController::stateOfEntry(const TopLevelItem& entry) const {
    if (isUnderScan(entry))
        return tr("Being scanned");
    if (!entry.isScanned())
        return tr("Not scanned");
    return entry.isScanCompleted() ? tr("Scanned") : tr("Scan stopped");
}

// The cells' questions.

std::int32_t VolumesTableController::ocuppPercentageForCell(const TableCell&, const CellData& data) const {
    const VolumeItem* const volume = volumeOf(data);
    if (!volume)
        return 0;
    if (volume->getsize() < 1)
        return -1;
    return tenThousandths(volume->getsize() - volume->getfsize(), volume->getsize());
}

bool VolumesTableController::isOperatingItem(const TableCell&, const CellData& data) const {
    const TopLevelItem* const entry = entryOf(data);
    return entry && isUnderScan(*entry);
}

bool VolumesTableController::isOperatingProcess() const {
    return pcontr.isProcessing();
}

std::int32_t VolumesTableController::progressForCell(const TableCell&, const CellData&) const {
    return mnprogress;
}

/// The names of entries are display names: of them only the form in which they can be shown is asked.
std::optional<QString> VolumesTableController::displayNameAtPath(std::string_view name) const {
    if (name.empty())
        return std::nullopt;
    return pcontr.getDisplayText(name);
}

std::optional<QString> VolumesTableController::primaryTextForCell(const TableCell&,
                                                                  const CellData& data) const {
    const TopLevelItem* const entry = entryOf(data);
    if (!entry)
        return std::nullopt;
    return displayNameAtPath(entry->getName()).value_or(QString());
}

std::optional<QString> VolumesTableController::secondaryTextForCell(const TableCell&,
                                                                    const CellData& data) const {
    const VolumeItem* const volume = volumeOf(data);
    if (!volume)
        return std::nullopt;
    if (volume->isNetworkVol() && volume->isScanned() && volume->isScanCompleted())
        return tr("Size: %1").arg(sizeText(volume->getScannedRoot()->gettotalsize()));
    // One that keeps silent, as that of a server that is away, has told no sizes to show.
    if (volume->getsize() < 1)
        return std::nullopt;
    if (volume->isNetworkVol())
        return tr("Capacity: %1").arg(sizeText(volume->getsize()));
    return tr("%1 Free of %2").arg(sizeText(volume->getfsize()), sizeText(volume->getsize()));
}

std::optional<QString> VolumesTableController::mainTextForCell(const TableCell& cell,
                                                               const CellData& data) const {
    return primaryTextForCell(cell, data);
}

std::optional<QString> VolumesTableController::descTextForCell(const TableCell&, const CellData& data) const {
    const TopLevelItem* const entry = entryOf(data);
    if (!entry || !entry->isFolder() || !entry->isScanned() || isUnderScan(*entry))
        return QString();
    return tr("Size: %1").arg(sizeText(entry->getScannedRoot()->gettotalsize()));
}

} // namespace veltrano
