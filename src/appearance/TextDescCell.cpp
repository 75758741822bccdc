#include "appearance/TextDescCell.h"

#include "appearance/CellText.h"
#include "appearance/Colours.h"
#include "appearance/Fonts.h"

namespace veltrano {

namespace {

constexpr int kMainSize = 11; // pixels
constexpr int kMainLine = 15; // points
constexpr int kDescSize = 10; // pixels
constexpr int kDescLine = 14; // points

} // namespace

const TableItemProtocol& TextDescCell::dataDelegate() const {
    return delegate ? *delegate : static_cast<const TableItemProtocol&>(*this);
}

QRectF TextDescCell::buttonRectForBounds(const QRectF& frame) {
    return ImageTextCell::buttonRectForBounds(frame);
}

QRectF TextDescCell::getMainTextDrawRect(const QRectF& frame, bool bSingleLine) {
    return {frame.x() + 10, frame.y() + (bSingleLine ? 12 : 4), 162, 19};
}

QRectF TextDescCell::getDescTextDrawRect(const QRectF& frame) {
    return {frame.x() + 10, frame.y() + 22, 162, 19};
}

void TextDescCell::drawWithFrame(QPainter& painter, const QRectF& frame) {
    const Colours& colours = Colours::sharedColours();
    const QString description = dataDelegate().descTextForCell(*this, objectValue()).value_or(QString());
    const bool bSingleLine = description.isEmpty();
    if (const auto text = dataDelegate().mainTextForCell(*this, objectValue()))
        drawTruncatedLine(painter, getMainTextDrawRect(frame, bSingleLine), *text,
                          VTFontWithSize(kMainSize, QFont::Medium), kMainLine,
                          colours.getPrimaryTableTextColor());
    if (!bSingleLine)
        drawTruncatedLine(painter, getDescTextDrawRect(frame), description, VTFontWithSize(kDescSize),
                          kDescLine, colours.getSecondaryTableTextColor());
}

std::optional<QString> TextDescCell::mainTextForCell(const TableCell&, const CellData& data) const {
    return mainTextKeyPath ? mainTextKeyPath(data) : std::nullopt;
}

std::optional<QString> TextDescCell::descTextForCell(const TableCell&, const CellData& data) const {
    return descTextKeyPath ? descTextKeyPath(data) : std::nullopt;
}

} // namespace veltrano
