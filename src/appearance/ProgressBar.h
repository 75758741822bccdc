#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace veltrano {

/// A thin bar from 0 to kMaximum, or a barber pole while the end is not known. Lives in the widget tree; main
/// thread.
class ProgressBar : public QWidget {
    Q_OBJECT

public:
    static constexpr int kMaximum = 1000;

    explicit ProgressBar(QWidget* parent = nullptr);

    /// Values outside 0 to kMaximum are bounded.
    void setValue(int value);
    int value() const { return m_nValue; }

    void setIndeterminate(bool indeterminate);
    bool isIndeterminate() const { return m_bIndeterminate; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void drawBarberPole(QPainter& painter, const QRectF& track) const;
    void updateTimer();

    int m_nValue = 0;
    bool m_bIndeterminate = false;
    double m_dStripeOffset = 0; // points
    QBasicTimer m_timer;
};

/// Twelve petals that fade round while something is under way.
class Spinner : public QWidget {
    Q_OBJECT

public:
    explicit Spinner(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    int m_nPhase = 0; // petals turned
    QBasicTimer m_timer;
};

} // namespace veltrano
