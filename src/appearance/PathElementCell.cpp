#include "appearance/PathElementCell.h"

#include "appearance/Fonts.h"
#include "appearance/Images.h"
#include "appearance/Painting.h"

#include <QFocusEvent>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>

#include <cmath>

namespace veltrano {

namespace {

constexpr int kTextSize = 12;     // pixels
constexpr int kCapWidth = 8;      // points, of either end of the plate
constexpr int kArrowWidth = 10;   // points
constexpr int kArrowGap = 6;      // points, from arrow to icon
constexpr int kIconSide = 16;     // points
constexpr int kIconGap = 5;       // points, from icon to title
constexpr int kTitleGap = 6;      // points, from title to the next arrow
constexpr double kRingInset = 5;  // points, of the focus ring's inner edge
constexpr double kRingRadius = 4; // points

} // namespace

PathElementCell::PathElementCell(const QString& title, const QString& iconName, QWidget* parent)
    : QAbstractButton(parent), m_iconName(iconName) {
    setText(title);
    setAccessibleName(title);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setFont(interfaceFont(kTextSize));
}

void PathElementCell::setPlace(bool isFirst, bool isLast) {
    m_bFirst = isFirst;
    m_bLast = isLast;
    // The last cell is where the chart is.
    setFont(interfaceFont(kTextSize, isLast ? QFont::DemiBold : QFont::Normal));
    update();
}

int PathElementCell::getTitleLeft() const {
    const int before = m_bFirst ? kCapWidth : kArrowWidth + kArrowGap;
    return m_iconName.isEmpty() ? before : before + kIconSide + kIconGap;
}

int PathElementCell::getTitleRightMargin() const {
    return m_bLast ? kCapWidth : kTitleGap;
}

int PathElementCell::getFullWidth() const {
    const double title = QFontMetricsF(font()).horizontalAdvance(text());
    return getTitleLeft() + static_cast<int>(std::ceil(title)) + getTitleRightMargin();
}

int PathElementCell::getLeastWidth() const {
    return m_iconName.isEmpty() ? getFullWidth() : getTitleLeft() - kIconGap + getTitleRightMargin();
}

void PathElementCell::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const double ratio = devicePixelRatioF();
    QRectF plate = rect();
    if (m_bFirst) {
        const QPixmap left = image(QStringLiteral("path_left"), ratio);
        painter.drawPixmap(plate.topLeft(), left);
        plate.setLeft(plate.left() + kCapWidth);
    }
    if (m_bLast) {
        const QPixmap right = image(QStringLiteral("path_right"), ratio);
        painter.drawPixmap(QPointF(plate.right() - kCapWidth, plate.top()), right);
        plate.setRight(plate.right() - kCapWidth);
    }
    if (plate.width() > 0) {
        const QPixmap middle = image(QStringLiteral("path_mid"), ratio);
        painter.drawPixmap(plate, middle, QRectF(middle.rect()));
    }
    if (!m_bFirst) {
        const QPixmap arrow = image(QStringLiteral("path_arrow"), ratio);
        const double arrowHeight = arrow.height() / arrow.devicePixelRatio();
        painter.drawPixmap(QPointF(0, std::round((height() - arrowHeight) / 2)), arrow);
    }

    int x = m_bFirst ? kCapWidth : kArrowWidth + kArrowGap;
    if (!m_iconName.isEmpty()) {
        // The program's icons come in several natural sizes, this is drawn in its own.
        const QPixmap icon = renderImage(m_iconName, QSizeF(kIconSide, kIconSide), ratio);
        painter.drawPixmap(QPointF(x, (height() - kIconSide) / 2.0), icon);
    }
    x = getTitleLeft();
    const int room = width() - x - getTitleRightMargin();
    const QFontMetrics metrics(font());
    const bool pointed = isEnabled() && underMouse();
    painter.setFont(font());
    painter.setPen(pointed ? tokens::kAccent : tokens::kInk);
    if (room > 0)
        painter.drawText(QRect(x, 0, room + 1, height()), Qt::AlignLeft | Qt::AlignVCenter,
                         metrics.elidedText(text(), m_bLast ? Qt::ElideMiddle : Qt::ElideRight, room + 1));
    if (hasFocus() && m_bFocusByKeyboard) {
        const double left = m_bFirst ? kRingInset : kArrowWidth + kRingInset;
        drawFocusRing(painter, QRectF(rect()).adjusted(left, kRingInset, -kRingInset, -kRingInset),
                      kRingRadius);
    }
}

void PathElementCell::focusInEvent(QFocusEvent* event) {
    m_bFocusByKeyboard = event->reason() != Qt::MouseFocusReason;
    QAbstractButton::focusInEvent(event);
}

void PathElementCell::focusOutEvent(QFocusEvent* event) {
    m_bFocusByKeyboard = false;
    QAbstractButton::focusOutEvent(event);
}

void PathElementCell::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        click();
        return;
    case Qt::Key_Left:
        focusPreviousChild();
        return;
    case Qt::Key_Right:
        focusNextChild();
        return;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}

} // namespace veltrano
