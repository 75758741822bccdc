#pragma once

#include <QCheckBox>
#include <QPixmap>

namespace veltrano {

/// A check box in the look of the program. Lives in the widget tree; main thread. Its rectangle holds a
/// margin of kFocusMargin around the box for the focus ring.
class CheckBox final : public QCheckBox {
    Q_OBJECT

public:
    static constexpr int kFocusMargin = 4; // points

    explicit CheckBox(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override;
    void focusInEvent(QFocusEvent* event) override;

private:
    QRectF getBoxRect() const;

    QPixmap m_mark;
    bool m_bFocusByKeyboard = false;
};

} // namespace veltrano
