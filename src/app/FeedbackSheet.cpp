#include "app/FeedbackSheet.h"

#include "appearance/CheckBox.h"
#include "appearance/Fonts.h"
#include "appearance/Images.h"
#include "appearance/Painting.h"
#include "appearance/PushButton.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

namespace veltrano {

namespace {

// The places of an alert, so that the sheet looks like one of them.
constexpr int kWidth = 460;       // points
constexpr int kInset = 24;        // points
constexpr int kIconSide = 56;     // points
constexpr int kTextLeft = 104;    // points
constexpr int kTextWidth = 336;   // points
constexpr int kTextGap = 6;       // points between message and text
constexpr int kBoxGap = 12;       // points above the check box and below it
constexpr int kMessageSize = 14;  // pixels
constexpr int kTextSize = 13;     // pixels
constexpr int kButtonWidth = 88;  // points
constexpr int kButtonHeight = 30; // points
constexpr int kButtonGap = 8;     // points

} // namespace

FeedbackSheet::FeedbackSheet(bool dontAskFeedback, QWidget* parent) : QDialog(parent) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    setWindowTitle(tr("Feedback"));
    int y = addLabel(tr("Would you tell us what you think?"), interfaceFont(kMessageSize, QFont::DemiBold),
                     kInset);
    y = addLabel(
        tr("A letter to our support opens in your mail program. What you write, and whether you send it, is "
           "up to you."),
        interfaceFont(kTextSize), y + kTextGap);
    y = addDontAsk(dontAskFeedback, y + kBoxGap);
    addButtons(y + kBoxGap);
    setFixedSize(kWidth, y + kBoxGap + kButtonHeight + kInset);
    connect(this, &QDialog::accepted, this, &FeedbackSheet::actAgreeSendFB);
    connect(this, &QDialog::rejected, this, &FeedbackSheet::actCloseFBPanel);
}

/// Answers the foot of the label.
int FeedbackSheet::addLabel(const QString& text, const QFont& font, int top) {
    auto* const label = new QLabel(text, this);
    label->setFont(font);
    label->setWordWrap(true);
    const int height = label->heightForWidth(kTextWidth);
    label->setGeometry(kTextLeft, top, kTextWidth, height);
    return top + height;
}

int FeedbackSheet::addDontAsk(bool isOn, int top) {
    auto* const box = new CheckBox(this);
    box->setFont(interfaceFont(kTextSize));
    box->setText(tr("Do not ask again"));
    box->setChecked(isOn);
    const QSize size = box->sizeHint();
    box->setGeometry(QRect(QPoint(kTextLeft - CheckBox::kFocusMargin, top), size));
    connect(box, &QCheckBox::toggled, this, &FeedbackSheet::actDontAskFB);
    return top + size.height();
}

void FeedbackSheet::addButtons(int top) {
    auto* const close = new PushButton(this);
    close->setText(tr("Not Now"));
    close->setPlateGeometry(
        QRect(kWidth - kInset - 2 * kButtonWidth - kButtonGap, top, kButtonWidth, kButtonHeight));
    connect(close, &PushButton::clicked, this, &QDialog::reject);

    auto* const agree = new PushButton(this);
    agree->setKind(PushButton::Kind::Primary);
    agree->setText(tr("Write"));
    agree->setPlateGeometry(QRect(kWidth - kInset - kButtonWidth, top, kButtonWidth, kButtonHeight));
    connect(agree, &PushButton::clicked, this, &QDialog::accept);
    agree->setFocus();
}

void FeedbackSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        accept();
    else
        QDialog::keyPressEvent(event);
}

void FeedbackSheet::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawSheetGround(painter, rect());
    const QPixmap icon = image(QStringLiteral("app-icon"), devicePixelRatioF());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QRect(kInset, kInset, kIconSide, kIconSide), icon);
}

} // namespace veltrano
