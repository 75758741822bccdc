#pragma once

#include <QAbstractTableModel>

namespace veltrano {

class VolumesTableController;

/// The sidebar's rows as the table, its tool tips and assistive programs read them. Everything is asked of
/// the controller, which owns the model; main thread. Between two resets the number of rows stands.
class VolumesTableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit VolumesTableModel(const VolumesTableController& controller);

    /// The controller's rows changed.
    void reset();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// A group row is neither selected nor entered.
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    const VolumesTableController& m_controller;
    int m_nRows = 0;
};

} // namespace veltrano
