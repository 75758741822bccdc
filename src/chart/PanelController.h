#pragma once

#include "appearance/MAAttachedWindow.h"
#include "platform/NotificationCentre.h"

#include <QObject>
#include <QPointF>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QLabel;

namespace veltrano {

class CloseHintView;

/// The hover panel: a small window with an arrow beside the pointer, which tells what the pointed sector is,
/// how big it is and when it changed. Its window is made each time it is shown and goes each time it is
/// hidden. Owned by the main controller; main thread.
class PanelController final : public QObject {
    Q_OBJECT

public:
    /// The date of the last change of what lies at a path, bytes, as text; empty for none and for one that is
    /// told later (setLateDateText). Asked once for as long as the panel tells of one path.
    using DateText = std::function<QString(const std::string& path)>;

    /// `window2Attach` is the main window, to which the panel is attached; null for none. It is borrowed, as
    /// is the notification centre, which outlives this.
    PanelController(NotificationCentre& notifications, QWidget* window2Attach, DateText dateText);
    ~PanelController() override;

    /// Sets the three values and shows the panel. Without a size text the size row is hidden, without a path
    /// or a date the row of the date; without both the panel is low. A caption replaces that of the size, and
    /// stays.
    void setPathText(const QString& text, const std::optional<QString>& withSize,
                     const std::optional<std::string>& withFullPath,
                     const std::optional<QString>& withSizeCapture);
    /// Shows a date that has come late, if the panel still tells of that path.
    void setLateDateText(const std::string& path, const QString& date);
    /// Moves the panel to another point of the screen, y downwards.
    void setFrameTopLeftPoint(const QPointF& point);
    /// Shows the panel beside its point; nothing if it is shown.
    void showPanel();
    /// Takes the panel away and empties it, also when it is not shown.
    void hidePanel();
    void CloseHintPanel() { hidePanel(); }
    /// The application goes to the background, or comes back; the panel returns with the next pointer move.
    void appDeactivate() { hidePanel(); }
    void appActivated() {}

    /// The width of the main text on one line, or nPanelInitWidth without one; points.
    double calcWidthForPathElement() const;

    MAAttachedWindow* getAttachedWindow() const { return attachedWindow; }
    const QLabel& getPathLabel() const { return *mLabelPath; }
    const QLabel& getSizeLabel() const { return *mLabelSize; }
    const QLabel& getDateLabel() const { return *mLabelDate; }
    const QLabel& getSizeCaption() const { return *captSize; }
    const QLabel& getDateCaption() const { return *captDate; }
    QSize getContentSize() const;
    std::int64_t getPanelInitWidth() const { return nPanelInitWidth; }

private:
    QLabel* makeLabel(const QPoint& at, int width, const QColor& colour, const QFont& font);
    void fitRows();
    QPointF getPointInWindow() const;
    int getRoomOnScreen() const;
    QSize fitContent(int height) const;
    void resizeContent(int height);
    void elidePath();
    void styleWindow();

    NotificationCentre& m_notifications;
    const DateText m_dateText;
    std::vector<NotificationCentre::Token> m_observers;

    std::int64_t nPanelInitWidth = 0;      // points, of the content
    QPointF mPos;                          // on the screen
    QString m_pathText;                    // the whole main text
    std::optional<std::string> m_datePath; // whose date was asked; nothing while hidden
    std::unique_ptr<CloseHintView> viewHintContent;
    // Children of the content.
    QLabel* mLabelPath = nullptr;
    QLabel* mLabelSize = nullptr;
    QLabel* mLabelDate = nullptr;
    QLabel* captSize = nullptr;
    QLabel* captDate = nullptr;
    QPointer<MAAttachedWindow> attachedWindow; // owned; null while hidden
    QPointer<QWidget> window2Attach;
};

} // namespace veltrano
