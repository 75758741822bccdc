#include "app/FolderListModel.h"

#include "app/FolderPanelControls.h"

#include <algorithm>
#include <utility>

namespace veltrano {

void FolderListModel::setFolders(std::vector<Subfolder> folders) {
    beginResetModel();
    m_folders = std::move(folders);
    chooseRows();
    endResetModel();
}

void FolderListModel::setHiddenShown(bool shown) {
    beginResetModel();
    m_bHiddenShown = shown;
    chooseRows();
    endResetModel();
}

void FolderListModel::chooseRows() {
    m_rows.clear();
    for (std::size_t i = 0; i < m_folders.size(); ++i)
        if (m_bHiddenShown || !m_folders[i].name.starts_with('.'))
            m_rows.push_back(i);
}

const std::string& FolderListModel::nameOfRow(int row) const {
    return m_folders[m_rows[static_cast<std::size_t>(row)]].name;
}

int FolderListModel::rowOfName(const std::string& name) const {
    const auto row = std::find_if(m_rows.begin(), m_rows.end(),
                                  [&](std::size_t index) { return m_folders[index].name == name; });
    return row == m_rows.end() ? -1 : static_cast<int>(row - m_rows.begin());
}

int FolderListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant FolderListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const QString& text = m_folders[m_rows[static_cast<std::size_t>(index.row())]].text;
    switch (role) {
    case Qt::DisplayRole:
        return text;
    case Qt::ToolTipRole:
        // A tool tip would take a name with tags in it for marked-up text.
        return QStringLiteral("<p style='white-space:pre'>%1</p>").arg(text.toHtmlEscaped());
    case kRowImageRole:
        return QStringLiteral("extra/folder");
    default:
        return {};
    }
}

} // namespace veltrano
