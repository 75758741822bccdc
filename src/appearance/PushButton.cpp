#include "appearance/PushButton.h"

#include "appearance/Fonts.h"
#include "appearance/Images.h"
#include "appearance/Painting.h"

#include <QFocusEvent>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

namespace veltrano {

namespace {

constexpr double kRadius = 7;     // points
constexpr int kTextSize = 12;     // pixels
constexpr double kGlyphSide = 16; // points
constexpr double kGlyphGap = 6;   // points
constexpr int kSidePadding = 14;  // points
constexpr int kPlateHeight = 32;  // points

} // namespace

PushButton::PushButton(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setFont(interfaceFont(kTextSize, QFont::Medium));
}

void PushButton::setKind(Kind kind) {
    if (m_kind == kind)
        return;
    m_kind = kind;
    setFont(interfaceFont(kTextSize, kind == Kind::Plain ? QFont::Medium : QFont::DemiBold));
    update();
}

void PushButton::setGlyph(const QString& name) {
    m_glyph = name;
    update();
}

void PushButton::setPlateGeometry(const QRect& plate) {
    setGeometry(plate.adjusted(-kFocusMargin, -kFocusMargin, kFocusMargin, kFocusMargin));
}

QSize PushButton::sizeHint() const {
    const QFontMetricsF metrics(font());
    const double width = metrics.horizontalAdvance(text()) + getGlyphWidth() + 2 * kSidePadding;
    return {qRound(width) + 2 * kFocusMargin, kPlateHeight + 2 * kFocusMargin};
}

double PushButton::getGlyphWidth() const {
    if (m_glyph.isEmpty())
        return 0;
    return text().isEmpty() ? kGlyphSide : kGlyphSide + kGlyphGap;
}

QRectF PushButton::getPlateRect() const {
    return QRectF(rect()).adjusted(kFocusMargin, kFocusMargin, -kFocusMargin, -kFocusMargin);
}

QColor PushButton::getTextColour() const {
    if (!isEnabled())
        return tokens::kDisabled;
    switch (m_kind) {
    case Kind::Primary:
        return tokens::kWhite;
    case Kind::Stop:
        return tokens::kStopText;
    case Kind::Plain:
        break;
    }
    return tokens::kInk;
}

void PushButton::drawFace(QPainter& painter) const {
    const QRectF plate = getPlateRect();
    if (!isEnabled()) {
        drawPlate(painter, plate, {tokens::kButtonDisabled, tokens::kButtonDisabled, tokens::kLineSoft},
                  kRadius);
    } else if (m_kind == Kind::Primary) {
        if (isDown())
            drawPlate(painter, plate,
                      {tokens::kAccentPressed, tokens::kAccentPressed, tokens::kAccentPressed}, kRadius);
        else
            drawPlate(painter, plate, m_bPointed ? tokens::kAccentHover : tokens::kAccentPlate, kRadius);
    } else {
        tokens::Plate face = m_bPointed ? tokens::kButtonHover : tokens::kButton;
        if (isDown())
            face = {tokens::kButtonPressed.darker(104), tokens::kButtonPressed, tokens::kButtonHover.edge};
        if (m_kind == Kind::Stop)
            face.edge = tokens::kStopEdge;
        drawPlate(painter, plate, face, kRadius);
    }
}

QPixmap PushButton::getGlyphPicture() const {
    QPixmap picture = image(m_glyph, devicePixelRatioF());
    if (!isEnabled() && !picture.isNull()) {
        // In the colour of the text, for a white glyph would be lost on the pale plate.
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(picture.rect(), tokens::kDisabled);
    }
    return picture;
}

void PushButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawFace(painter);

    const QRectF plate = getPlateRect();
    const QFontMetricsF metrics(font());
    const double glyphWidth = getGlyphWidth();
    const double textWidth = metrics.horizontalAdvance(text());
    double x = plate.center().x() - (glyphWidth + textWidth) / 2;
    if (!m_glyph.isEmpty()) {
        const QPointF corner(qRound(x), qRound(plate.center().y() - kGlyphSide / 2));
        painter.drawPixmap(corner, getGlyphPicture());
        x += glyphWidth;
    }
    painter.setFont(font());
    painter.setPen(getTextColour());
    painter.drawText(QRectF(x, plate.top(), textWidth + 1, plate.height()), Qt::AlignVCenter | Qt::AlignLeft,
                     text());
    if (hasFocus() && m_bFocusByKeyboard)
        drawFocusRing(painter, plate, kRadius);
}

void PushButton::enterEvent(QEnterEvent* event) {
    m_bPointed = true;
    update();
    QAbstractButton::enterEvent(event);
}

void PushButton::leaveEvent(QEvent* event) {
    m_bPointed = false;
    update();
    QAbstractButton::leaveEvent(event);
}

void PushButton::focusInEvent(QFocusEvent* event) {
    m_bFocusByKeyboard = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                         event->reason() == Qt::ShortcutFocusReason;
    QAbstractButton::focusInEvent(event);
}

void PushButton::focusOutEvent(QFocusEvent* event) {
    m_bFocusByKeyboard = false;
    QAbstractButton::focusOutEvent(event);
}

void PushButton::keyPressEvent(QKeyEvent* event) {
    // Return presses the focused button, as Space does.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

} // namespace veltrano
