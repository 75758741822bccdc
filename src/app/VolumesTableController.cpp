#include "app/VolumesTableController.h"

#include "app/FolderItemsController.h"
#include "app/SidebarHost.h"

#include <QHeaderView>

#include <utility>

namespace veltrano {

namespace {

constexpr int kColumnWidths[VolumesTableController::kColumns] = {56, 174, 32}; // points

} // namespace

VolumesTableController::VolumesTableController(CCTableView& table, SidebarHost& host,
                                               FolderItemsController& favourites,
                                               FolderItemsController& recents, FolderPlaces places)
    : disksTableList(table),
      pcontr(host),
      mFFoldersController(favourites),
      mRecentsController(recents),
      _sharedBtnStopCell(QStringLiteral("extra/row-stop")),
      _sharedBtnStartCell(QStringLiteral("extra/row-scan")),
      m_icons(std::move(places)),
      m_model(*this) {
    m_infoCell.setDataDelegate(this);
    _sharedTextDescCell.setDataDelegate(this);
    setCanStart(true);

    disksTableList.setModel(&m_model);
    for (int column = 0; column < kColumns; ++column)
        disksTableList.setColumnWidth(column, kColumnWidths[column]);
    disksTableList.setTableDelegate(this);
    disksTableList.setAccessibleName(tr("Disks and folders"));
    disksTableList.setEmptyText(tr("No disks or folders to show"));

    connect(&disksTableList, &CCTableView::selectionIsChanging, this,
            &VolumesTableController::tableViewSelectionIsChanging);
    connect(&disksTableList, &CCTableView::selectionDidChange, this,
            &VolumesTableController::tableViewSelectionDidChange);
    connect(&disksTableList, &CCTableView::buttonClicked, this, [this] {
        if (pcontr.isProcessing())
            stopAction();
        else
            startAction();
    });
    connect(&disksTableList, &CCTableView::rowActivated, this, &VolumesTableController::startAction);
    connect(&disksTableList, &CCTableView::removeRequested, this, &VolumesTableController::removeRow);
    connect(&disksTableList, &CCTableView::contextMenuRequested, this,
            &VolumesTableController::contextMenuRequested);
    reloadData();
}

VolumesTableController::~VolumesTableController() {
    disksTableList.setTableDelegate(nullptr);
    disksTableList.setModel(nullptr);
}

const char* VolumesTableController::identifierOf(Column column) {
    constexpr const char* kIdentifiers[kColumns] = {"VolIcon", "VolInfo", "btn"};
    return kIdentifiers[column];
}

void VolumesTableController::reloadData() {
    m_model.reset();
    disksTableList.reloadData();
}

void VolumesTableController::setCanStart(bool canStart) {
    _sharedBtnStartCell.setEnabled(canStart);
    _sharedBtnStopCell.setEnabled(!canStart);
    disksTableList.viewport()->update();
}

void VolumesTableController::updateProgress(std::int32_t progress) {
    mnprogress = progress;
    reloadData();
}

void VolumesTableController::startAction() {
    pcontr.simpleUpdateVolumesInfo();
    if (getSelectedVolume())
        pcontr.startAction();
}

void VolumesTableController::stopAction() {
    pcontr.stopAction();
}

void VolumesTableController::removeRow(int row) {
    const Entry entry = getItemByRow(row);
    if (entry && entry->isFolder())
        pcontr.actionRemoveFolder();
}

// The selection.

std::optional<std::string> VolumesTableController::getSelectedVolume() const {
    const Entry entry = getObjectForSelectedRow();
    return entry ? std::optional(entry->getPath()) : std::nullopt;
}

VolumesTableController::Entry VolumesTableController::getObjectForSelectedRow() const {
    return getItemByRow(disksTableList.selectedRow());
}

VolumesTableController::Entry
VolumesTableController::selectVolumeByName(const std::optional<std::string>& path) {
    if (!path)
        return nullptr;
    for (int row = 0; row < numberOfRows(); ++row) {
        const Entry entry = getItemByRow(row);
        if (!entry || entry->getPath() != *path)
            continue;
        disksTableList.selectRowIndex(row);
        return entry;
    }
    return nullptr;
}

VolumesTableController::Entry
VolumesTableController::selectVolumeByNameOrAny(const std::optional<std::string>& path) {
    const Entry entry = selectVolumeByName(path);
    return entry ? entry : selectOneifnotSelected();
}

VolumesTableController::Entry VolumesTableController::selectOneifnotSelected() {
    int row = disksTableList.selectedRow();
    if (row < 0 && numberOfRows() >= 2) {
        constexpr int kFirstEntry = 1; // below the title of its group
        disksTableList.selectRowIndex(kFirstEntry);
        return getItemByRow(kFirstEntry);
    }
    // After a rebuild the selected row may have become the title of the next group.
    if (isGroupRow(row))
        --row;
    const Entry entry = getItemByRow(row);
    if (isRowValid(row)) {
        disksTableList.selectRowIndex(row);
        resetRadialRootToCurrVolume(row);
    }
    return entry;
}

void VolumesTableController::tableViewSelectionIsChanging() {
    disksTableList.viewport()->repaint();
    bSelectionChanging = true;
}

void VolumesTableController::tableViewSelectionDidChange() {
    bSelectionChanging = false;
    const int row = disksTableList.selectedRow();
    if (isRowValid(row))
        resetRadialRootToCurrVolume(row);
}

void VolumesTableController::resetRadialRootToCurrVolume(int row) {
    const Entry entry = getItemByRow(row);
    if (!entry)
        return;
    // Held, so that what the host does first can't take it away.
    const std::shared_ptr<FolderSystemItem> tree = entry->getScannedRoot();
    pcontr.didSelectionChange(entry);
    VolumeFolderProtocol* root = entry.get();
    if (tree)
        root = tree.get();
    pcontr.setRootForRadial(root, entry);
}

// The results of scans.

void VolumesTableController::setScannedRootInfo(const std::shared_ptr<FolderSystemItem>& root,
                                                bool bScanCompleted) {
    if (!root)
        return;
    const std::string path = root->getFullPath();
    Entry found;
    for (const Row& row : volumesArray) {
        const Entry* const entry = std::get_if<Entry>(&row);
        if (entry && (*entry)->isVol() && (*entry)->getPath() == path) {
            found = *entry;
            break;
        }
    }
    if (!found)
        found = mFFoldersController.getFolderItemByPath(path);
    if (!found)
        found = mRecentsController.getFolderItemByPath(path);
    if (!found)
        return;
    setScannedRoot(root, *found);
    found->setScanCompleted(bScanCompleted);
    disksTableList.viewport()->update();
}

void VolumesTableController::setScannedRoot(const std::shared_ptr<FolderSystemItem>& root,
                                            TopLevelItem& toTopItem) {
    const std::shared_ptr<FolderSystemItem> old = toTopItem.getScannedRoot();
    if (old == root)
        return;
    if (old)
        pcontr.treeIsDropped(*old);
    toTopItem.setScannedRoot(root);
}

} // namespace veltrano
