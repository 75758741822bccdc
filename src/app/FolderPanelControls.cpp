#include "app/FolderPanelControls.h"

#include "appearance/Fonts.h"
#include "appearance/Images.h"
#include "appearance/Painting.h"

#include <QFocusEvent>
#include <QPainter>
#include <QScrollBar>

namespace veltrano {

namespace {

constexpr double kFieldRadius = 7;   // points
constexpr double kCardRadius = 8;    // points
constexpr double kRowRadius = 5;     // points
constexpr int kCardPadding = 5;      // points from the card's edge to its rows
constexpr int kFieldPadding = 10;    // points before the text
constexpr double kRowImageSide = 18; // points
constexpr int kRowPadding = 8;       // points before the image
constexpr int kRowImageGap = 8;      // points
constexpr int kTextSize = 12;        // pixels

bool isKeyboardReason(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

/// A knob without a track, as all our lists have.
QString scrollerLook() {
    return QStringLiteral("QScrollBar:vertical { background: transparent; border: none; width: 13px; "
                          "margin: 2px 0 2px 6px; }"
                          "QScrollBar::handle:vertical { background: %1; border-radius: 3px; "
                          "min-height: 28px; }"
                          "QScrollBar::handle:vertical:hover { background: %2; }"
                          "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }"
                          "QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }")
        .arg(tokens::kScrollKnob.name(), tokens::kInk3.name());
}

} // namespace

PathField::PathField(QWidget* parent) : QLineEdit(parent) {
    setFrame(false);
    setFont(interfaceFont(kTextSize));
    setTextMargins(kFocusMargin + kFieldPadding, 0, kFocusMargin + kFieldPadding, 0);
    setStyleSheet(QStringLiteral("background: transparent; border: none;")); // The plate is ours.
}

void PathField::focusInEvent(QFocusEvent* event) {
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        m_bFocusByKeyboard = isKeyboardReason(event->reason());
    QLineEdit::focusInEvent(event);
}

void PathField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        emit leftByTab();
}

void PathField::paintEvent(QPaintEvent* event) {
    {
        QPainter painter(this);
        const QRectF plate =
            QRectF(rect()).adjusted(kFocusMargin, kFocusMargin, -kFocusMargin, -kFocusMargin);
        const QColor edge = hasFocus() ? tokens::kFocus : tokens::kLine;
        drawPlate(painter, plate, {tokens::kWhite, tokens::kWhite, edge}, kFieldRadius);
        if (hasFocus() && m_bFocusByKeyboard)
            drawFocusRing(painter, plate, kFieldRadius);
    }
    QLineEdit::paintEvent(event);
}

void FolderRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
    const auto* const view = qobject_cast<const FolderListView*>(option.widget);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const bool isAccented = isSelected && (view == nullptr || view->isSelectionAccented());
    const QRectF plate = QRectF(option.rect).adjusted(0, 1, 0, -1);
    if (isAccented)
        drawPlate(*painter, plate,
                  option.state.testFlag(QStyle::State_Active) ? tokens::kAccentPlate : tokens::kSlatePlate,
                  kRowRadius);
    else if (isSelected || option.state.testFlag(QStyle::State_MouseOver))
        drawPlate(*painter, plate, tokens::kHoverPlate, kRowRadius);
    else if (view != nullptr && view->isFocusedByKeyboard() && view->currentIndex() == index)
        drawPlate(*painter, plate, {Qt::transparent, Qt::transparent, tokens::kFocus}, kRowRadius);

    const QPixmap picture =
        rowImage(index.data(kRowImageRole).toString(), painter->device()->devicePixelRatioF());
    const double left = option.rect.left() + kRowPadding;
    painter->drawPixmap(QPointF(left, option.rect.center().y() + 0.5 - kRowImageSide / 2), picture);
    const double textLeft = left + kRowImageSide + kRowImageGap;
    const int width = static_cast<int>(option.rect.right() - kRowPadding - textLeft);
    painter->setFont(interfaceFont(kTextSize));
    painter->setPen(isAccented ? tokens::kWhite : tokens::kInk);
    // Told by its base line, a text stays at its height whatever fonts its letters come from.
    const QFontMetricsF metrics(painter->font());
    const double baseLine = QRectF(option.rect).center().y() + (metrics.ascent() - metrics.descent()) / 2;
    const QString text = metrics.elidedText(index.data().toString(), Qt::ElideMiddle, width);
    painter->drawText(QPointF(textLeft, qRound(baseLine)), text);
}

QSize FolderRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {kRowHeight, kRowHeight};
}

QPixmap FolderRowDelegate::rowImage(const QString& name, double ratio) const {
    QPixmap& kept = m_images[name];
    if (kept.isNull() || kept.devicePixelRatio() != ratio)
        kept = renderImage(name, QSizeF(kRowImageSide, kRowImageSide), ratio);
    return kept;
}

FolderListView::FolderListView(const tokens::Plate& card, QWidget* parent) : QListView(parent), m_card(card) {
    // A frame of that width keeps rows and scroller inside the card, which is drawn in its place.
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setLineWidth(kFocusMargin + kCardPadding);
    viewport()->setAutoFillBackground(false);
    verticalScrollBar()->setStyleSheet(scrollerLook());
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformItemSizes(true);
    setMouseTracking(true);
    setItemDelegate(new FolderRowDelegate(this));
    connect(this, &QAbstractItemView::doubleClicked, this, &FolderListView::rowOpened);
}

void FolderListView::setNotice(const QString& notice) {
    if (m_notice == notice)
        return;
    m_notice = notice;
    setAccessibleDescription(notice);
    viewport()->update();
}

bool FolderListView::event(QEvent* event) {
    // The widget around the rows is painted here, apart from the rows themselves.
    if (event->type() == QEvent::Paint) {
        drawCard();
        return true;
    }
    return QListView::event(event);
}

void FolderListView::drawCard() {
    QPainter painter(this);
    const QRectF card = QRectF(rect()).adjusted(kFocusMargin, kFocusMargin, -kFocusMargin, -kFocusMargin);
    drawPlate(painter, card, m_card, kCardRadius);
    if (hasFocus() && m_bFocusByKeyboard)
        drawFocusRing(painter, card, kCardRadius);
}

void FolderListView::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    if (m_notice.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setFont(interfaceFont(13));
    painter.setPen(tokens::kInk2);
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, m_notice);
}

void FolderListView::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && currentIndex().isValid())
        emit rowOpened(currentIndex());
    else if (isReturn)
        event->ignore(); // The panel's own default.
    else
        QListView::keyPressEvent(event);
}

QModelIndex FolderListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    // With no row to begin at the base class goes to the first one, whatever the key.
    if (!currentIndex().isValid() && (action == MoveEnd || action == MoveUp))
        return model()->index(model()->rowCount() - 1, 0);
    return QListView::moveCursor(action, modifiers);
}

void FolderListView::mousePressEvent(QMouseEvent* event) {
    QListView::mousePressEvent(event);
    // A press beside the rows chooses the folder that is shown.
    if (!indexAt(event->position().toPoint()).isValid())
        clearSelection();
}

void FolderListView::focusInEvent(QFocusEvent* event) {
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        m_bFocusByKeyboard = isKeyboardReason(event->reason());
    // The base class would make the first row the current one and so have Return open it unasked.
    QAbstractScrollArea::focusInEvent(event);
    update();
    viewport()->update();
}

void FolderListView::focusOutEvent(QFocusEvent* event) {
    QListView::focusOutEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        emit focusLeft();
    update();
    viewport()->update();
}

} // namespace veltrano
