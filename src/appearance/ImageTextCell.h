#pragma once

#include "appearance/SGProgress.h"
#include "appearance/TableItemProtocol.h"

#include <QRectF>

#include <functional>

namespace veltrano {

/// Reads a text of an element, for a cell that has no source to ask.
using TextKeyPath = std::function<std::optional<QString>(const CellData& data)>;

/// The cell of a volume: name, a second line and a bar that tells how full it is. Without a source it answers
/// for itself, with the texts that its key paths read.
class ImageTextCell : public TableCell, private TableItemProtocol {
public:
    void setDataDelegate(const TableItemProtocol* source) { delegate = source; }
    /// The source, or the cell itself without one.
    const TableItemProtocol& dataDelegate() const;
    void setPrimaryTextKeyPath(TextKeyPath path) { primaryTextKeyPath = std::move(path); }
    void setSecondaryTextKeyPath(TextKeyPath path) { secondaryTextKeyPath = std::move(path); }

    // Where things lie, from the frame's origin.
    static QRectF buttonRectForBounds(const QRectF& frame);
    static QRectF getPrimTextDrawRect(const QRectF& frame);
    static QRectF getSecTextDrawRect(const QRectF& frame);
    static QRectF sgpRectForBounds(const QRectF& frame);
    static QRectF progressRectForBounds(const QRectF& frame);

    /// Icon, texts, bar.
    void drawWithFrame(QPainter& painter, const QRectF& frame) override;

protected:
    virtual void drawIconWithFrame(QPainter& painter, const QRectF& frame);
    virtual void drawTextsWithFrame(QPainter& painter, const QRectF& frame);
    virtual void drawProgressWithFrame(QPainter& painter, const QRectF& frame);

private:
    std::int32_t ocuppPercentageForCell(const TableCell&, const CellData&) const override { return 0; }
    bool isOperatingItem(const TableCell&, const CellData&) const override { return false; }
    std::int32_t progressForCell(const TableCell&, const CellData&) const override { return 0; }
    std::optional<QString> primaryTextForCell(const TableCell& cell, const CellData& data) const override;
    std::optional<QString> secondaryTextForCell(const TableCell& cell, const CellData& data) const override;

    const TableItemProtocol* delegate = nullptr; // borrowed
    TextKeyPath primaryTextKeyPath;
    TextKeyPath secondaryTextKeyPath;
    SGProgress msgProgress;
};

} // namespace veltrano
