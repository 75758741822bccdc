#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace veltrano {

/// A thin bar from a least to a greatest value, or a barber pole while the end is not known. Lives in the
/// widget tree; main thread. Assistive programs are told its value and range.
class ProgressBar : public QWidget {
    Q_OBJECT

public:
    explicit ProgressBar(QWidget* parent = nullptr);

    /// Values outside the range are bounded; what is no number is left alone. The range starts as 0 to 1000.
    virtual void setDoubleValue(double value);
    double value() const { return m_dValue; }

    /// The value is bounded anew. A range of no width shows an empty bar.
    void setMinValue(double least);
    void setMaxValue(double greatest);
    double minValue() const { return m_dLeast; }
    double maxValue() const { return m_dGreatest; }
    /// The value's place in the range, from 0 to 1; 0 where the range has no width.
    double fraction() const;

    void setIndeterminate(bool indeterminate);
    bool isIndeterminate() const { return m_bIndeterminate; }

    /// The pole turns from the start to the stop, while it is shown.
    void startAnimation();
    void stopAnimation();

    /// Paints at once what has changed.
    virtual void display() { repaint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void drawBarberPole(QPainter& painter, const QRectF& track) const;
    void updateTimer();
    void takeValue(double value);

    double m_dLeast = 0;
    double m_dGreatest = 1000;
    double m_dValue = 0;
    bool m_bIndeterminate = false;
    bool m_bAnimated = false;
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
