#include "app/QtAlerts.h"

#include "appearance/Fonts.h"
#include "appearance/Images.h"
#include "appearance/PushButton.h"
#include "appearance/Tokens.h"

#include <QDialog>
#include <QLabel>
#include <QPainter>

#include <memory>
#include <utility>

namespace veltrano {

namespace {

constexpr int kWidth = 460;          // points
constexpr int kInset = 24;           // points
constexpr int kIconSide = 56;        // points
constexpr int kTextLeft = 104;       // points
constexpr int kTextGap = 8;          // points between message and text
constexpr int kButtonGap = 8;        // points
constexpr QSize kButtonSize(88, 30); // points, at least

/// The dialog of one question. Deletes itself when it is closed.
class AlertWindow final : public QDialog {
public:
    AlertWindow(const Alerts::Question& question, Alerts::Answer answer, QWidget* window) : QDialog(window) {
        setAttribute(Qt::WA_DeleteOnClose);
        setWindowTitle(QStringLiteral("Veltrano"));
        const QString message = QString::fromStdString(question.message);
        int y = addLabel(message, interfaceFont(14, QFont::DemiBold), kInset);
        y = addLabel(QString::fromStdString(question.informativeText), interfaceFont(13), y + kTextGap);
        setAccessibleName(message);
        y = std::max(y, kInset + kIconSide) + kInset - kButtonGap;

        int right = kWidth - kInset;
        for (std::size_t index = 0; index < question.buttons.size(); ++index)
            right =
                addButton(QString::fromStdString(question.buttons[index]), static_cast<int>(index), right, y);
        setFixedSize(kWidth, y + kButtonSize.height() + kInset);

        const int whenClosed = static_cast<int>(question.buttons.size()) - 1;
        connect(this, &QDialog::finished, this, [answer = std::move(answer), whenClosed](int result) {
            answer(result > 0 ? result - 1 : whenClosed);
        });
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), tokens::kMenuBar);
        const QPixmap icon = image(QStringLiteral("app-icon"), devicePixelRatioF());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(QRect(kInset, kInset, kIconSide, kIconSide), icon);
    }

private:
    int addLabel(const QString& text, const QFont& font, int top) {
        auto* const label = new QLabel(text, this);
        label->setTextFormat(Qt::PlainText);
        label->setFont(font);
        label->setWordWrap(true);
        const int width = kWidth - kTextLeft - kInset + 4;
        const int height = label->heightForWidth(width);
        label->setGeometry(kTextLeft, top, width, height);
        return top + height;
    }

    /// Answers the right end for the next button: the default stands outermost.
    int addButton(const QString& text, int index, int right, int top) {
        auto* const button = new PushButton(this);
        button->setText(text);
        if (index == 0) {
            button->setKind(PushButton::Kind::Primary);
            button->setFocus();
        }
        const int width =
            std::max(kButtonSize.width(), button->sizeHint().width() - 2 * PushButton::kFocusMargin);
        button->setPlateGeometry(QRect(right - width, top, width, kButtonSize.height()));
        // 0 is what closing by Escape reports, so the buttons count from 1.
        connect(button, &PushButton::clicked, this, [this, index] { done(index + 1); });
        return right - width - kButtonGap;
    }
};

} // namespace

void QtAlerts::ask(const Question& question, Answer answer) {
    (new AlertWindow(question, std::move(answer), m_pWindow))->open();
}

} // namespace veltrano
