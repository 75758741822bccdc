#pragma once

#include "appearance/ApplicationIcon.h"
#include "platform/LauncherProgress.h"
#include "platform/MainLoop.h"

#include <QImage>
#include <QPixmap>

#include <cstddef>
#include <vector>

class QPainter;

namespace veltrano {

class PMProgressIndicator;

/// Draws progress indicators as bars on the application's icon, one above the other, and tells the desktop's
/// dock. One per program, made before the first indicator and destroyed after the last; the indicators find
/// it by sharedInstance, since a program has one icon. Main thread. It never draws more often than ten times
/// a second by itself: requests are gathered for a tenth of a second.
class PMProgressIndicatorController {
public:
    /// The bars as pictures, 13 points high: filled, empty, and the striped pole, 32 points longer than the
    /// icon is wide. Any may be missing.
    struct Bars {
        QPixmap blueBar{};
        QPixmap greyBar{};
        QPixmap barberBar{};
    };

    /// The bars of the program's resources, at the icon's density.
    static Bars barsFor(const QImage& icon);

    /// All three outlive the controller. The icon as it is now is what is drawn on and what returns in the
    /// end.
    PMProgressIndicatorController(MainLoop& mainLoop, ApplicationIcon& icon, LauncherProgress& launcher);
    PMProgressIndicatorController(MainLoop& mainLoop, ApplicationIcon& icon, LauncherProgress& launcher,
                                  Bars bars);
    PMProgressIndicatorController(const PMProgressIndicatorController&) = delete;
    PMProgressIndicatorController& operator=(const PMProgressIndicatorController&) = delete;
    /// Takes away what is left on the icon.
    ~PMProgressIndicatorController();

    /// The one that lives, or null: then indicators show on no icon.
    static PMProgressIndicatorController* sharedInstance() { return s_pShared; }

    /// Each is listed once, in order of arrival. The icon follows after a tenth of a second.
    void addProgressIndicator(PMProgressIndicator& indicator);
    void removeProgressIndicator(const PMProgressIndicator& indicator);
    std::size_t numProgressIndicators() const { return progressIndicators.size(); }

    /// Draws the listed indicators on a copy of the icon now, instead of what was asked for to be drawn
    /// later.
    void drawProgressIndicators();

    /// Shows the bare icon at once.
    void restoreIcon();

    /// How far the stripes of all poles have come, points to the left.
    static double getBarberOffset() { return barberOffset; }

private:
    void requestDrawing();
    void drawPole(QPainter& painter, double bottom);
    void drawBar(QPainter& painter, const PMProgressIndicator& indicator, double bottom) const;
    void tellLauncher();

    static inline PMProgressIndicatorController* s_pShared = nullptr;
    static inline double barberOffset = 32.0; // points

    MainLoop& m_mainLoop;
    ApplicationIcon& m_icon;
    LauncherProgress& m_launcher;

    std::vector<PMProgressIndicator*> progressIndicators; // borrowed; each leaves before it dies
    const QImage dockIcon;
    const Bars m_bars;
    double lastSpin;              // moment of the pole's last step
    MainLoop::Token theTimer = 0; // the drawing that was asked for
};

} // namespace veltrano
