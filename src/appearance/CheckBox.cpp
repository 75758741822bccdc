#include "appearance/CheckBox.h"

#include "appearance/Fonts.h"
#include "appearance/Images.h"
#include "appearance/Painting.h"

#include <QFocusEvent>
#include <QFontMetrics>
#include <QPainter>

namespace veltrano {

namespace {

constexpr int kBoxSide = 16;     // points
constexpr double kRadius = 4;    // points
constexpr double kMarkSide = 12; // points
constexpr int kTextGap = 8;      // points
constexpr int kTextSize = 12;    // pixels
constexpr int kHeight = 24;      // points

} // namespace

CheckBox::CheckBox(QWidget* parent) : QCheckBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setFont(interfaceFont(kTextSize));
}

QSize CheckBox::sizeHint() const {
    return {kFocusMargin + kBoxSide + kTextGap + QFontMetrics(font()).horizontalAdvance(text()) +
                kFocusMargin,
            kHeight};
}

QRectF CheckBox::getBoxRect() const {
    const int top = (height() - kBoxSide) / 2; // on whole points, so that the edge is sharp
    return QRectF(kFocusMargin, top, kBoxSide, kBoxSide);
}

bool CheckBox::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void CheckBox::focusInEvent(QFocusEvent* event) {
    m_bFocusByKeyboard = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                         event->reason() == Qt::ShortcutFocusReason;
    QCheckBox::focusInEvent(event);
}

void CheckBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRectF box = getBoxRect();
    tokens::Plate face = tokens::kCheckBox;
    if (!isEnabled())
        face = {tokens::kButtonDisabled, tokens::kButtonDisabled, tokens::kLineSoft};
    else if (isChecked())
        face = isDown()
                   ? tokens::Plate{tokens::kAccentPressed, tokens::kAccentPressed, tokens::kAccentPressed}
               : underMouse() ? tokens::kAccentHover
                              : tokens::kAccentPlate;
    else if (isDown())
        face = {tokens::kButtonPressed, tokens::kButtonPressed, tokens::kCheckBoxHoverEdge};
    else if (underMouse())
        face.edge = tokens::kCheckBoxHoverEdge;
    drawPlate(painter, box, face, kRadius);
    if (isChecked()) {
        const double ratio = devicePixelRatioF();
        if (m_mark.isNull() || m_mark.devicePixelRatio() != ratio)
            m_mark = renderImage(QStringLiteral("extra/check"), QSizeF(kMarkSide, kMarkSide), ratio);
        const double inset = (kBoxSide - kMarkSide) / 2;
        painter.setOpacity(isEnabled() ? 1.0 : 0.4);
        painter.drawPixmap(box.topLeft() + QPointF(inset, inset), m_mark);
        painter.setOpacity(1.0);
    }
    painter.setFont(font());
    painter.setPen(isEnabled() ? tokens::kInk : tokens::kDisabled);
    painter.drawText(QRectF(box.right() + kTextGap, 0, width(), height()), Qt::AlignVCenter | Qt::AlignLeft,
                     text());
    if (hasFocus() && m_bFocusByKeyboard)
        drawFocusRing(painter, box, kRadius);
}

} // namespace veltrano
