#pragma once

#include "platform/Alerts.h"

#include <QPointer>
#include <QWidget>

namespace veltrano {

/// Alerts as sheets over a window: the window waits, the rest of the program does not. Main thread.
class QtAlerts final : public Alerts {
public:
    /// The window over which alerts open; it may go before this object does.
    explicit QtAlerts(QWidget* window) : m_pWindow(window) {}

    void ask(const Question& question, Answer answer) override;

private:
    QPointer<QWidget> m_pWindow;
};

} // namespace veltrano
