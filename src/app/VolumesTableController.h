#pragma once

#include "app/EntryIcons.h"
#include "app/VolumesTableModel.h"
#include "appearance/CCTableView.h"
#include "appearance/GroupDescCell.h"
#include "appearance/GroupTitleCell.h"
#include "appearance/ImageTextCell.h"
#include "appearance/RowCells.h"
#include "appearance/TableItemProtocol.h"
#include "appearance/TextDescCell.h"
#include "tree/TopLevelItem.h"
#include "tree/VolumeItemGrop.h"

#include <QObject>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace veltrano {

class FolderItemsController;
class SidebarHost;

/// The sidebar: builds the flat array of its rows out of volumes and folders, answers the table as its data
/// source and delegate, and is the place where the result of each scan is kept per entry. Selecting a row is
/// what changes the chart. Owned by the main controller, destroyed before the table; main thread. Entries are
/// shared with the model's volume list and the folder lists, so that their trees survive a rebuild.
class VolumesTableController final : public QObject, public TableItemProtocol, public CCTableDelegate {
    Q_OBJECT

public:
    /// The columns and their identifiers "VolIcon", "VolInfo", "btn".
    enum Column { pColIcon, pColInfo, pColBtn, kColumns };
    static const char* identifierOf(Column column);

    using Entry = std::shared_ptr<TopLevelItem>;

    /// All that is passed outlives the controller.
    VolumesTableController(CCTableView& table, SidebarHost& host, FolderItemsController& favourites,
                           FolderItemsController& recents, FolderPlaces places = FolderPlaces::ofThisUser());
    ~VolumesTableController() override;

    /// Drops all rows. The table shows it after reloadData.
    void resetVolumesArray();
    /// Adds volumes in their groups; with bAddorReplace the rows are dropped first. A volume is put before
    /// the last one of its group, so that the first of a group stays at its foot.
    void setVolumesArray(const std::vector<std::shared_ptr<VolumeItem>>& volumes, bool bAddorReplace);
    /// Adds the groups of favourite and recent folders; an empty list adds no group.
    void addFFolders(const std::vector<std::shared_ptr<FolderItem>>& favourites,
                     const std::vector<std::shared_ptr<FolderItem>>& withRFolders);
    /// One volume came, addedIem, or went, with its path. The spelling is fixed.
    void volumesCountChanged(bool mounted, const std::string& withVol,
                             const std::shared_ptr<VolumeItem>& addedIem);
    void reloadData();
    /// Whether the button that starts a scan can be pressed; the one that stops it is the reverse.
    void setCanStart(bool canStart);
    /// Sets what progressForCell answers.
    void updateProgress(std::int32_t progress);

    /// The path of the selected entry; nothing for none or a group row.
    std::optional<std::string> getSelectedVolume() const;
    /// The selected entry; null likewise.
    Entry getObjectForSelectedRow() const;
    /// Selects the first entry with exactly this path and returns it; null when there is none.
    Entry selectVolumeByName(const std::optional<std::string>& path);
    Entry selectVolumeByNameOrAny(const std::optional<std::string>& path);
    /// Sees that an entry is selected if there is one; returns it, null for an empty table.
    Entry selectOneifnotSelected();

    /// Stores the root of a scan on its entry; dropped in silence when no entry has its path.
    void setScannedRootInfo(const std::shared_ptr<FolderSystemItem>& root, bool bScanCompleted);
    void setScannedRoot(const std::shared_ptr<FolderSystemItem>& root, TopLevelItem& toTopItem);

    /// Takes the chart back to the top of the tree of this row's entry, or to the entry without one.
    void resetRadialRootToCurrVolume(int row);

    /// What the buttons in the rows do.
    void startAction();
    void stopAction();

    // The rows.
    int numberOfRows() const { return static_cast<int>(volumesArray.size()); }
    bool isRowValid(int row) const;
    bool isGroupRow(int row) const override;
    /// Null for a group row and out of range.
    Entry getItemByRow(int row) const;
    const VolumeItemGrop* getGroupByRow(int row) const;
    /// The table's answers for the model: what a column of a row shows, its tool tip and what it is called
    /// for those who do not see it.
    CellData objectValueForTableColumn(std::optional<Column> column, int row) const;
    QString nameOfRow(int row) const;
    QString toolTipForCell(Column column, int row) const;
    QString accessibleTextForCell(Column column, int row) const;
    bool shouldShowCellExpansion(Column, int) const { return false; }

    // CCTableDelegate
    int heightOfRow(int row) const override;
    bool shouldSelectRow(int row) const override;
    bool shouldTrackCell(int column, int row) override;
    bool isButtonCell(int column, int row) const override;
    TableCell* dataCellForTableColumn(std::optional<int> column, int row) override;

    // TableItemProtocol
    std::int32_t ocuppPercentageForCell(const TableCell& cell, const CellData& data) const override;
    bool isOperatingItem(const TableCell& cell, const CellData& data) const override;
    std::int32_t progressForCell(const TableCell& cell, const CellData& data) const override;
    std::optional<QString> primaryTextForCell(const TableCell& cell, const CellData& data) const override;
    std::optional<QString> secondaryTextForCell(const TableCell& cell, const CellData& data) const override;
    std::optional<QString> mainTextForCell(const TableCell& cell, const CellData& data) const override;
    std::optional<QString> descTextForCell(const TableCell& cell, const CellData& data) const override;
    bool isOperatingProcess() const override;

signals:
    /// A menu of the selected entry is wanted at this place.
    void contextMenuRequested(const QPoint& globalPos);

private:
    using Row = std::variant<VolumeItemGrop, Entry>;

    void tableViewSelectionIsChanging();
    void tableViewSelectionDidChange();
    void removeEmptyGroupsFromArray();
    void addFolderGroup(const std::vector<std::shared_ptr<FolderItem>>& folders, const char* name,
                        const char* image);
    void removeRow(int row);
    bool isUnderScan(const TopLevelItem& entry) const;
    std::optional<QString> displayNameAtPath(std::string_view name) const;
    QPixmap iconOfRow(const TopLevelItem& entry) const;
    TableCell* buttonCellOfRow(int row);
    QString stateOfEntry(const TopLevelItem& entry) const;

    // Borrowed.
    CCTableView& disksTableList;
    SidebarHost& pcontr;
    FolderItemsController& mFFoldersController;
    FolderItemsController& mRecentsController;

    // Owned: the cells that are stamped on the rows, and what lies behind the table.
    GroupTitleCell _sharedGroupTitleCell;
    GroupDescCell _sharedGroupTitleCellNew;
    EmptyCell _sharedGroupEmptyCell;
    RowButtonCell _sharedBtnStopCell;
    RowButtonCell _sharedBtnStartCell; // also the button column's own cell
    TextDescCell _sharedTextDescCell;
    ImageTextCell m_infoCell; // the information column's own cell
    IconCell m_iconCell;      // the icon column's own cell
    EntryIcons m_icons;
    VolumesTableModel m_model;

    // State.
    std::vector<Row> volumesArray;
    std::int32_t mnprogress = 0; // nothing in the program reports any
    bool bSelectionChanging = false;
};

} // namespace veltrano
