#pragma once

#include <QPixmap>
#include <QString>

#include <utility>
#include <variant>

class QPainter;
class QRectF;

namespace veltrano {

class TreeObject;
struct VolumeItemGrop;

/// What a cell shows: nothing, an item of a table, the heading of a group, a text or an image. Pointers are
/// borrowed for the time of one row's drawing.
using CellData = std::variant<std::monostate, TreeObject*, const VolumeItemGrop*, QString, QPixmap>;

/// A cell that a table stamps on its rows: it is given a value, drawn, and given the next one. Owned by the
/// table's controller; main thread. Whether it stands on the selected row is told by Colours, which the table
/// sets for the time of one row's drawing.
class TableCell {
public:
    TableCell() = default;
    TableCell(const TableCell&) = delete;
    TableCell& operator=(const TableCell&) = delete;
    virtual ~TableCell() = default;

    void setObjectValue(CellData value) { m_value = std::move(value); }
    const CellData& objectValue() const { return m_value; }

    /// Draws the value into a frame, points; its origin is at the top left.
    virtual void drawWithFrame(QPainter& painter, const QRectF& frame) = 0;

private:
    CellData m_value;
};

/// An item among what a cell may show; null for all else.
inline TreeObject* itemOf(const CellData& data) {
    TreeObject* const* const item = std::get_if<TreeObject*>(&data);
    return item ? *item : nullptr;
}

} // namespace veltrano
