#pragma once

#include "appearance/TableCell.h"

#include <QPixmap>
#include <QString>

#include <cstdint>
#include <optional>

namespace veltrano {

/// What the data source of a table tells the cells about the element they show. Implemented by the table's
/// controller, and by a cell for itself where it has no source; the cell does not own it. Main thread. A text
/// that is missing is not drawn.
class TableItemProtocol {
public:
    /// How full the item is, in hundredths of a percent; -1 where that can't be told, 0 for an item that is
    /// no volume. The spelling is fixed.
    virtual std::int32_t ocuppPercentageForCell(const TableCell& cell, const CellData& data) const = 0;
    /// Whether an operation runs on this item.
    virtual bool isOperatingItem(const TableCell& cell, const CellData& data) const = 0;
    /// How far that operation has come.
    virtual std::int32_t progressForCell(const TableCell& cell, const CellData& data) const = 0;

    // What a source may offer besides.

    /// The element that the cell is to show.
    virtual CellData dataElementForCell(const TableCell& cell) const { return cell.objectValue(); }
    virtual std::optional<QString> primaryTextForCell(const TableCell&, const CellData&) const { return {}; }
    virtual std::optional<QString> secondaryTextForCell(const TableCell&, const CellData&) const {
        return {};
    }
    virtual std::optional<QString> mainTextForCell(const TableCell&, const CellData&) const { return {}; }
    virtual std::optional<QString> descTextForCell(const TableCell&, const CellData&) const { return {}; }
    virtual QPixmap iconForCell(const TableCell&, const CellData&) const { return {}; }
    /// Whether any operation runs.
    virtual bool isOperatingProcess() const { return false; }

protected:
    TableItemProtocol() = default;
    ~TableItemProtocol() = default;
};

} // namespace veltrano
