#pragma once

#include "appearance/ImageTextCell.h"

namespace veltrano {

/// The cell of a folder: its name, and a description below it where there is one. Without a source it answers
/// for itself, with the texts that its key paths read.
class TextDescCell final : public TableCell, private TableItemProtocol {
public:
    void setDataDelegate(const TableItemProtocol* source) { delegate = source; }
    const TableItemProtocol& dataDelegate() const;
    void setMainTextKeyPath(TextKeyPath path) { mainTextKeyPath = std::move(path); }
    void setDescTextKeyPath(TextKeyPath path) { descTextKeyPath = std::move(path); }

    // Where things lie, from the frame's origin.
    static QRectF buttonRectForBounds(const QRectF& frame);
    /// The name stands lower where it stands alone.
    static QRectF getMainTextDrawRect(const QRectF& frame, bool bSingleLine);
    static QRectF getDescTextDrawRect(const QRectF& frame);

    void drawWithFrame(QPainter& painter, const QRectF& frame) override;

private:
    std::int32_t ocuppPercentageForCell(const TableCell&, const CellData&) const override { return 0; }
    bool isOperatingItem(const TableCell&, const CellData&) const override { return false; }
    std::int32_t progressForCell(const TableCell&, const CellData&) const override { return 0; }
    std::optional<QString> mainTextForCell(const TableCell& cell, const CellData& data) const override;
    std::optional<QString> descTextForCell(const TableCell& cell, const CellData& data) const override;

    const TableItemProtocol* delegate = nullptr; // borrowed
    TextKeyPath mainTextKeyPath;
    TextKeyPath descTextKeyPath;
};

} // namespace veltrano
