#pragma once

#include "appearance/ProgressBar.h"

#include <QWidget>

class QLabel;

namespace veltrano {

/// The header's progress: spinner, a line of text, the bar and a counter at its right end. Lives in the main
/// window and is shown while a scan runs; main thread.
class ProgressBlock : public QWidget {
    Q_OBJECT

public:
    static constexpr int kHeight = 34; // points

    explicit ProgressBlock(QWidget* parent = nullptr);

    ProgressBar& bar() { return *m_pBar; }
    void setText(const QString& text);
    void setCounter(const QString& text);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void elideText();

    Spinner* m_pSpinner;
    QLabel* m_pText;
    QLabel* m_pCounter;
    ProgressBar* m_pBar;
    QString m_text; // in full; the label shows what fits
};

} // namespace veltrano
