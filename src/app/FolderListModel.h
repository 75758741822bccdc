#pragma once

#include "app/FolderListing.h"

#include <QAbstractListModel>

#include <string>
#include <vector>

namespace veltrano {

/// The rows of the folder panel's list: subfolders in the order of their listing, those whose names begin
/// with a dot left out unless asked for. Owned by the panel; main thread.
class FolderListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void setFolders(std::vector<Subfolder> folders);
    void setHiddenShown(bool shown);

    /// The name of a row, bytes.
    const std::string& nameOfRow(int row) const;
    /// The row of a name, -1 if it is not shown.
    int rowOfName(const std::string& name) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    void chooseRows();

    std::vector<Subfolder> m_folders;
    std::vector<std::size_t> m_rows; // indices of the shown ones
    bool m_bHiddenShown = false;
};

} // namespace veltrano
