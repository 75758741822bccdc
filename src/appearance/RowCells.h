#pragma once

#include "appearance/TableCell.h"

#include <QHash>

namespace veltrano {

/// Draws nothing: the button column of a row without a button.
class EmptyCell final : public TableCell {
public:
    void drawWithFrame(QPainter&, const QRectF&) override {}
};

/// An image at its own size in the middle of the frame.
class IconCell final : public TableCell {
public:
    /// On whole points.
    static QRectF getIconDrawRect(const QRectF& frame, const QSizeF& image);

    void drawWithFrame(QPainter& painter, const QRectF& frame) override;
};

/// A round button in a row. The whole cell takes the click.
class RowButtonCell final : public TableCell {
public:
    static constexpr double kSide = 26; // points, of its image

    /// The name of its image; that with "-pressed" behind it is shown while the button is held.
    explicit RowButtonCell(QString imageName);

    void setEnabled(bool enabled) { m_bEnabled = enabled; }
    bool isEnabled() const { return m_bEnabled; }
    /// What the pointer does to the button on the row that is drawn next.
    void setState(bool pointed, bool pressed);
    /// How far the plate of that row ends above the frame's foot, points.
    void setFoot(double foot) { m_dFoot = foot; }

    /// In the middle of the frame, or of what a row's plate leaves of it.
    static QRectF getButtonDrawRect(const QRectF& frame, double foot = 0);

    void drawWithFrame(QPainter& painter, const QRectF& frame) override;

private:
    const QPixmap& getPicture(const QString& name, qreal devicePixelRatio);

    const QString m_imageName;
    QHash<QString, QPixmap> m_pictures; // by name, at the ratio of the last drawing
    double m_dFoot = 0;
    bool m_bEnabled = true;
    bool m_bPointed = false;
    bool m_bPressed = false;
};

} // namespace veltrano
