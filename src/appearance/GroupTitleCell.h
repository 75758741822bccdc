#pragma once

#include "appearance/TableCell.h"

namespace veltrano {

/// The header row of a group as a plain text in white with a shadow. Its value is not asked.
class GroupTitleCell final : public TableCell {
public:
    void setText(const QString& text) { mstrText = text; }
    const QString& text() const { return mstrText; }

    void drawWithFrame(QPainter& painter, const QRectF& frame) override;

private:
    QString mstrText;
};

} // namespace veltrano
