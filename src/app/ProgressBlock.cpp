#include "app/ProgressBlock.h"

#include "appearance/Fonts.h"
#include "appearance/Tokens.h"

#include <QFontMetrics>
#include <QLabel>

namespace veltrano {

namespace {

constexpr int kSpinnerSide = 20; // points
constexpr int kTextLeft = 30;    // points
constexpr int kTextHeight = 18;  // points
constexpr int kBarTop = 22;      // points
constexpr int kBarHeight = 8;    // points
constexpr int kCounterGap = 12;  // points

void setInk(QLabel& label, const QColor& colour) {
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, colour);
    label.setPalette(palette);
    label.setTextFormat(Qt::PlainText);
}

} // namespace

ProgressBlock::ProgressBlock(MainLoop& mainLoop, QWidget* parent)
    : QWidget(parent),
      m_pSpinner(new Spinner(this)),
      m_pText(new QLabel(this)),
      m_pCounter(new QLabel(this)),
      m_pBar(new PMProgressIndicator(mainLoop, this)) {
    m_pText->setFont(interfaceFont(12, QFont::Medium));
    setInk(*m_pText, tokens::kInk);
    m_pCounter->setFont(tabularFont(11));
    m_pCounter->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setInk(*m_pCounter, tokens::kInk2);
    m_pBar->setProgressText(this);
}

ProgressBlock::~ProgressBlock() {
    m_pBar->setProgressText(nullptr);
}

void ProgressBlock::setText(const QString& text) {
    if (text == m_text)
        return;
    m_text = text;
    showText();
}

void ProgressBlock::setStringValue(const QString& text) {
    if (text == m_timeText)
        return;
    m_timeText = text;
    showText();
}

void ProgressBlock::display() {
    m_pText->repaint();
}

void ProgressBlock::showText() {
    m_pText->setAccessibleName(m_timeText.isEmpty() ? m_text : m_text + QStringLiteral(", ") + m_timeText);
    elideText();
}

void ProgressBlock::setCounter(const QString& text) {
    if (text == m_pCounter->text())
        return;
    m_pCounter->setText(text);
    elideText();
}

void ProgressBlock::elideText() {
    const int counterWidth = m_pCounter->sizeHint().width();
    m_pCounter->setGeometry(width() - counterWidth, 0, counterWidth, kTextHeight);
    const int room = width() - kTextLeft - counterWidth - kCounterGap;
    m_pText->setGeometry(kTextLeft, 0, room, kTextHeight);
    const QString& text = m_timeText.isEmpty() ? m_text : m_timeText;
    m_pText->setText(QFontMetrics(m_pText->font()).elidedText(text, Qt::ElideMiddle, room));
}

void ProgressBlock::resizeEvent(QResizeEvent*) {
    m_pSpinner->setGeometry(0, (height() - kSpinnerSide) / 2, kSpinnerSide, kSpinnerSide);
    m_pBar->setGeometry(kTextLeft, kBarTop, width() - kTextLeft, kBarHeight);
    elideText();
}

} // namespace veltrano
