#pragma once

#include <QAccessibleWidget>

namespace veltrano {

class ProgressBar;

/// A progress bar as assistive programs see it: a value in a range, or busy without one while the end is not
/// known. Made and kept by the toolkit; main thread.
class ProgressBarAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit ProgressBarAccessible(QWidget* bar);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    /// In per cent, as it is read aloud; empty while the end is not known.
    QString text(QAccessible::Text kind) const override;

    QVariant currentValue() const override;
    /// Does nothing: progress is shown, not set.
    void setCurrentValue(const QVariant&) override {}
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override { return 1.0; }

private:
    const ProgressBar& bar() const;
};

/// Teaches the toolkit to describe progress bars so; later calls change nothing.
void installProgressBarAccessible();

} // namespace veltrano
