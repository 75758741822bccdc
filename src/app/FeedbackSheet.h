#pragma once

#include <QDialog>

namespace veltrano {

/// A sheet over the main window that asks for a letter to our support. It opens no letter and keeps no
/// setting; whoever shows it does. Deletes itself when it is closed; main thread.
class FeedbackSheet final : public QDialog {
    Q_OBJECT

public:
    FeedbackSheet(bool dontAskFeedback, QWidget* parent);

signals:
    /// The user agreed to a letter; the sheet is closed.
    void actAgreeSendFB();
    /// The user closed the sheet in any other way.
    void actCloseFBPanel();
    /// The check box that the sheet be not shown again was switched.
    void actDontAskFB(bool isOn);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int addLabel(const QString& text, const QFont& font, int top);
    int addDontAsk(bool isOn, int top);
    void addButtons(int top);
};

} // namespace veltrano
