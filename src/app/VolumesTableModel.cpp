#include "app/VolumesTableModel.h"

#include "app/VolumesTableController.h"

namespace veltrano {

VolumesTableModel::VolumesTableModel(const VolumesTableController& controller) : m_controller(controller) {}

void VolumesTableModel::reset() {
    beginResetModel();
    m_nRows = m_controller.numberOfRows();
    endResetModel();
}

int VolumesTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_nRows;
}

int VolumesTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : VolumesTableController::kColumns;
}

QVariant VolumesTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const auto column = static_cast<VolumesTableController::Column>(index.column());
    switch (role) {
    case Qt::DisplayRole: // Read by the search for typed letters.
        return m_controller.nameOfRow(index.row());
    case Qt::ToolTipRole:
        return m_controller.toolTipForCell(column, index.row());
    case Qt::AccessibleTextRole:
        return m_controller.accessibleTextForCell(column, index.row());
    default:
        return {};
    }
}

Qt::ItemFlags VolumesTableModel::flags(const QModelIndex& index) const {
    if (!m_controller.shouldSelectRow(index.row()))
        return Qt::ItemNeverHasChildren;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

} // namespace veltrano
