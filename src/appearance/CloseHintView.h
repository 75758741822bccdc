#pragma once

#include <QWidget>

namespace veltrano {

class NotificationCentre;

/// Posted when the pointer has reached a hint: whoever shows one takes it away.
inline constexpr const char* kPerformCloseHintPanel = "performCloseHintPanel";

/// The background of a hint's content: a hint must never stay under the pointer, so each move of the pointer
/// over it asks for its end, while the application is in front. Owned by whoever shows the hint; main thread.
class CloseHintView : public QWidget {
    Q_OBJECT

public:
    /// The centre is borrowed and outlives the view.
    explicit CloseHintView(NotificationCentre& notifications, QWidget* parent = nullptr);

protected:
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    NotificationCentre& m_notifications;
};

} // namespace veltrano
