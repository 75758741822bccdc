#pragma once

#include <QAbstractButton>
#include <QPixmap>

namespace veltrano {

/// A push button in the look of the program, with an optional glyph before its text. Lives in the widget
/// tree; main thread. Its rectangle holds a margin of kFocusMargin on every side for the focus ring.
class PushButton : public QAbstractButton {
    Q_OBJECT

public:
    enum class Kind {
        Plain,
        Primary, ///< The accent plate with white text.
        Stop,    ///< White with the text of stopping.
    };

    static constexpr int kFocusMargin = 4; // points

    explicit PushButton(QWidget* parent = nullptr);

    void setKind(Kind kind);
    Kind kind() const { return m_kind; }

    /// The name of an image of 16 by 16 points, empty for none.
    void setGlyph(const QString& name);

    /// Places the visible plate, without the margin.
    void setPlateGeometry(const QRect& plate);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// With the gap to the text, if there is one.
    double getGlyphWidth() const;
    QRectF getPlateRect() const;
    void drawFace(QPainter& painter) const;
    QColor getTextColour() const;
    QPixmap getGlyphPicture() const;

    Kind m_kind = Kind::Plain;
    QString m_glyph;
    bool m_bPointed = false;
    bool m_bFocusByKeyboard = false;
};

} // namespace veltrano
