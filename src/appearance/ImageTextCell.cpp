#include "appearance/ImageTextCell.h"

#include "appearance/CellText.h"
#include "appearance/Colours.h"
#include "appearance/Fonts.h"

#include <QPainter>

namespace veltrano {

namespace {

constexpr int kPrimarySize = 14;        // pixels
constexpr double kPrimaryLine = 19;     // points
constexpr int kSecondarySize = 9;       // pixels
constexpr double kSecondaryLine = 12.5; // points, close under the name

QRectF placed(const QRectF& frame, double x, double y, double width, double height) {
    return {frame.x() + x, frame.y() + y, width, height};
}

std::optional<QString> read(const TextKeyPath& path, const CellData& data) {
    return path ? path(data) : std::nullopt;
}

} // namespace

const TableItemProtocol& ImageTextCell::dataDelegate() const {
    return delegate ? *delegate : static_cast<const TableItemProtocol&>(*this);
}

QRectF ImageTextCell::buttonRectForBounds(const QRectF& frame) {
    return placed(frame, 60, 0, 68, 16);
}

QRectF ImageTextCell::getPrimTextDrawRect(const QRectF& frame) {
    return placed(frame, 12, 2, 162, 19);
}

QRectF ImageTextCell::getSecTextDrawRect(const QRectF& frame) {
    return placed(frame, 12, 21, 162, 19);
}

QRectF ImageTextCell::sgpRectForBounds(const QRectF& frame) {
    return placed(frame, 10, 36, 150, 12);
}

QRectF ImageTextCell::progressRectForBounds(const QRectF& frame) {
    return placed(frame, 10, 32, 238, 4);
}

void ImageTextCell::drawWithFrame(QPainter& painter, const QRectF& frame) {
    drawIconWithFrame(painter, frame);
    drawTextsWithFrame(painter, frame);
    drawProgressWithFrame(painter, frame);
}

void ImageTextCell::drawIconWithFrame(QPainter& painter, const QRectF& frame) {
    const QPixmap icon = dataDelegate().iconForCell(*this, objectValue());
    if (icon.isNull())
        return;
    painter.save();
    painter.drawPixmap(frame.topLeft(), icon);
    painter.restore();
}

void ImageTextCell::drawTextsWithFrame(QPainter& painter, const QRectF& frame) {
    const Colours& colours = Colours::sharedColours();
    const QFont::Weight weight = colours.isSelectedCellDrawing() ? QFont::Medium : QFont::Normal;
    if (const auto text = dataDelegate().primaryTextForCell(*this, objectValue()))
        drawTruncatedLine(painter, getPrimTextDrawRect(frame), *text, VTFontWithSize(kPrimarySize, weight),
                          kPrimaryLine, colours.getPrimaryTableTextColor());
    if (const auto text = dataDelegate().secondaryTextForCell(*this, objectValue()))
        drawTruncatedLine(painter, getSecTextDrawRect(frame), *text, VTFontWithSize(kSecondarySize),
                          kSecondaryLine, colours.getSecondaryTableTextColor());
}

void ImageTextCell::drawProgressWithFrame(QPainter& painter, const QRectF& frame) {
    msgProgress.setdValue(dataDelegate().ocuppPercentageForCell(*this, objectValue()) / 100.0);
    msgProgress.DrawAtRect(painter, sgpRectForBounds(frame));
}

std::optional<QString> ImageTextCell::primaryTextForCell(const TableCell&, const CellData& data) const {
    return read(primaryTextKeyPath, data);
}

std::optional<QString> ImageTextCell::secondaryTextForCell(const TableCell&, const CellData& data) const {
    return read(secondaryTextKeyPath, data);
}

} // namespace veltrano
