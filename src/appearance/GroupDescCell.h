#pragma once

#include "appearance/ImageTextCell.h"

namespace veltrano {

/// The header row of a sidebar group: the title's image under an etched line, or a text with a light under
/// it, as if pressed into the ground.
class GroupDescCell final : public ImageTextCell {
public:
    // Where things lie, from the frame's origin.
    static QRectF getMainTextDrawRect(const QRectF& frame);
    static QRectF getDescTextDrawRect(const QRectF& frame);
    /// Where an image of this size stands: in the middle, on whole points; below the line it stands lower.
    static QRectF getImageDrawRect(const QRectF& frame, const QSizeF& image, bool bFirstItem);
    /// The etched line above every group but the first.
    static QRectF getLineDrawRect(const QRectF& frame);
    /// The top of a text of this height; one that ends in a blank goes higher.
    static double getTextTop(const QRectF& frame, const QString& text, double height);
    /// The separator below a text of this height that is drawn at a point.
    static QRectF getSeparatorDrawRect(const QRectF& frame, const QPointF& forpoint, double height);

    void drawWithFrame(QPainter& painter, const QRectF& frame) override;

protected:
    void drawTextsWithFrame(QPainter& painter, const QRectF& frame) override;

private:
    static void drawseparator(QPainter& painter, const QRectF& rectangle);
    static void drawText(QPainter& painter, const QRectF& frame, const QString& text);
    static void drawTitle(QPainter& painter, const QRectF& frame, const QPixmap& title, bool bFirstItem);
};

} // namespace veltrano
