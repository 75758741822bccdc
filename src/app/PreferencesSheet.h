#pragma once

#include "app/SettingsTable.h"

#include <QDialog>

namespace veltrano {

class PushButton;

/// The sheet of preferences over the main window: sounds and hints, each switched at once. Deletes itself
/// when it is closed; main thread.
class PreferencesSheet final : public QDialog {
    Q_OBJECT

public:
    /// Shows the values; it never changes them itself.
    PreferencesSheet(const SettingValues& values, QWidget* parent);

signals:
    // A box was switched by the user.
    void actPlaySound(bool isOn);
    void actPlayFinishSound(bool isOn);
    void actShowHint(bool isOn);
    void actForceShowHint(bool isOn);
    /// The sheet is closed, in whatever way; once.
    void closePreferences();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    using Switched = void (PreferencesSheet::*)(bool isOn);

    void addHeading(const QString& text, const QFont& font, const QColor& colour, int centre);
    void addBox(const QString& name, const QString& text, bool isOn, int centre, Switched switched);
    void addDone();

    PushButton* m_pDone = nullptr; // a child of this widget
    bool m_bWasActive = false;
};

} // namespace veltrano
