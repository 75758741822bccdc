#pragma once

#include "appearance/ProgressBar.h"
#include "platform/MainLoop.h"

#include <QString>

#include <optional>

namespace veltrano {

class ProgressTextField;

/// A progress bar that moves in whole steps of its own scale, says in words how long is left, and shows
/// itself on the application's icon. Lives in the widget tree; main thread. Callers may set values as often
/// as they like: what changes no whole step costs nothing.
class PMProgressIndicator final : public ProgressBar {
    Q_OBJECT

public:
    /// The loop outlives the indicator; the estimate reads its clock.
    explicit PMProgressIndicator(MainLoop& mainLoop, QWidget* parent = nullptr);
    PMProgressIndicator(const PMProgressIndicator&) = delete;
    PMProgressIndicator& operator=(const PMProgressIndicator&) = delete;
    ~PMProgressIndicator() override;

    /// Dropped when the whole-number part is that of the last value taken; else shown in the bar, on the icon
    /// and in the text. What is no number is dropped too.
    void setDoubleValue(double value) override;

    /// Writes the estimate into the text field, which must be there. It looks at the speed of the last 3.5 to
    /// 7 seconds, never at the whole run, and starts anew when the value returns to the least.
    void updateProgressText();

    /// Draws the icon, the text field and the bar at once.
    void display() override;

    /// Where the text goes; null for nowhere.
    void setProgressText(ProgressTextField* field) { progressText = field; }

    /// Whether the indicator shows on the application's icon; so at first.
    void setDrawDockProgress(bool draw);
    bool getDrawDockProgress() const { return drawDockProgress; }

    /// Whether the text says the percentage; not so at first.
    void setDisplayPercentage(bool show) { displayPercentage = show; }
    bool getDisplayPercentage() const { return displayPercentage; }

    /// Whether the text says the time that is left; so at first.
    void setDisplayTimeRemaining(bool show) { displayTimeRemaining = show; }
    bool getDisplayTimeRemaining() const { return displayTimeRemaining; }

private:
    void moveReferencePoints(double now);
    QString timeText(double now) const;

    MainLoop& m_mainLoop;
    ProgressTextField* progressText = nullptr;

    // The estimate's reference point and the next one, being prepared: moments and fractions of the maximum.
    std::optional<double> startTime;
    std::optional<double> startTime2;
    double startFraction = 0;
    double startFraction2 = 0;

    bool drawDockProgress = true;
    bool displayPercentage = false;
    bool displayTimeRemaining = true;
    int lastValue = 0; // whole-number part of the last value taken
};

} // namespace veltrano
