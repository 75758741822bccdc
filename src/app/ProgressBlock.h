#pragma once

#include "appearance/PMProgressIndicator.h"
#include "appearance/ProgressTextField.h"

#include <QWidget>

class QLabel;

namespace veltrano {

/// The header's progress: spinner, a line of text, the bar and a counter at its right end. The line says how
/// long is left, and what is under way while that is not known. Lives in the main window and is shown while a
/// scan runs; main thread.
class ProgressBlock : public QWidget, private ProgressTextField {
    Q_OBJECT

public:
    static constexpr int kHeight = 34; // points

    /// The loop outlives the block.
    explicit ProgressBlock(MainLoop& mainLoop, QWidget* parent = nullptr);
    ~ProgressBlock() override;

    PMProgressIndicator& bar() { return *m_pBar; }
    /// What is under way.
    void setText(const QString& text);
    void setCounter(const QString& text);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void setStringValue(const QString& text) override;
    void display() override;
    void showText();
    void elideText();

    Spinner* m_pSpinner;
    QLabel* m_pText;
    QLabel* m_pCounter;
    PMProgressIndicator* m_pBar;
    // In full; the label shows what fits.
    QString m_text;
    QString m_timeText; // empty while nobody knows
};

} // namespace veltrano
