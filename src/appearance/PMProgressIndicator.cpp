#include "appearance/PMProgressIndicator.h"

#include "appearance/PMProgressIndicatorController.h"
#include "appearance/ProgressTextField.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace veltrano {

namespace {

constexpr double kEdge = 0.00001;    // so near to an end of the range is at it
constexpr double kPointAge = 3.5;    // seconds after which a reference point makes room for the next
constexpr double kFirstGuess = 0.5;  // seconds before which nothing is said
constexpr double kManyMinutes = 615; // seconds above which minutes are counted in digits

/// The texts for times above so many seconds, the first that fits.
constexpr std::pair<double, const char*> kTimes[] = {
    {555, QT_TRANSLATE_NOOP("veltrano::PMProgressIndicator", "About ten minutes remaining")},
    {495, QT_TRANSLATE_NOOP("veltrano::PMProgressIndicator", "About nine minutes remaining")},
    {435, QT_TRANSLATE_NOOP("veltrano::PMProgressIndicator", "About eight minutes remaining")},
    {375, QT_TRANSLATE_NOOP("veltrano::PMProgressIndicator", "About seven minutes remaining")},
    {315, QT_TRANSLATE_NOOP("veltrano::PMProgressIndicator", "About six minutes remaining")},
    {255, QT_TRANSLATE_NOOP("veltrano::PMProgressIndicator", "About five minutes remaining")},
    {195, QT_TRANSLATE_NOOP("veltrano::PMProgressIndicator", "About four minutes remaining")},
    {135, QT_TRANSLATE_NOOP("veltrano::PMProgressIndicator", "About three minutes remaining")},
    {75, QT_TRANSLATE_NOOP("veltrano::PMProgressIndicator", "About two minutes remaining")},
    {50, QT_TRANSLATE_NOOP("veltrano::PMProgressIndicator", "About one minute remaining")},
    {10, QT_TRANSLATE_NOOP("veltrano::PMProgressIndicator", "Less than a minute remaining")},
    {5, QT_TRANSLATE_NOOP("veltrano::PMProgressIndicator", "About ten seconds remaining")},
};

int wholePart(double value) {
    constexpr double kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr double kMost = std::numeric_limits<std::int32_t>::max();
    return static_cast<int>(std::clamp(value, kLeast, kMost));
}

/// 0 where there is no whole to have a part of.
double shareOf(double part, double whole) {
    return whole == 0 ? 0 : part / whole;
}

} // namespace

PMProgressIndicator::PMProgressIndicator(MainLoop& mainLoop, QWidget* parent)
    : ProgressBar(parent), m_mainLoop(mainLoop) {}

PMProgressIndicator::~PMProgressIndicator() {
    setDrawDockProgress(false);
}

void PMProgressIndicator::setDoubleValue(double value) {
    if (std::isnan(value) || wholePart(value) == lastValue)
        return;
    ProgressBar::setDoubleValue(value);
    lastValue = wholePart(value);
    auto* const controller = PMProgressIndicatorController::sharedInstance();
    if (drawDockProgress && controller) {
        controller->addProgressIndicator(*this);
        // The ends of a range of 0 to 1 take the indicator off the icon; of a larger one only the lower end
        // does, since the fraction never comes near its maximum.
        const double fraction = shareOf(value - minValue(), maxValue() - minValue());
        if (fraction > maxValue() - kEdge || fraction < minValue() + kEdge)
            controller->removeProgressIndicator(*this);
    }
    if (progressText)
        updateProgressText();
}

void PMProgressIndicator::updateProgressText() {
    if (isIndeterminate()) {
        progressText->setStringValue(QString());
        return;
    }
    const double now = m_mainLoop.now();
    moveReferencePoints(now);
    const QString time = timeText(now);
    if (displayPercentage) {
        const QString percentage = QString::number(std::nearbyint(fraction() * 100), 'f', 0);
        progressText->setStringValue(time.isEmpty() ? tr("%1 % completed").arg(percentage)
                                                    : tr("%1 % completed - %2").arg(percentage, time));
    } else if (!time.isEmpty()) {
        progressText->setStringValue(time);
    }
}

void PMProgressIndicator::moveReferencePoints(double now) {
    const bool isAtTheLeast = value() < minValue() + kEdge;
    if (isAtTheLeast) {
        startTime.reset();
        startTime2.reset();
    }
    if (!startTime) {
        // The time that passes before anything is done says nothing about the speed.
        if (!isAtTheLeast)
            startTime = now;
        startFraction = shareOf(value(), maxValue());
        progressText->setStringValue(QString());
        return;
    }
    if (now - *startTime > kPointAge && !startTime2) {
        startTime2 = now;
        startFraction2 = shareOf(value(), maxValue());
    }
    if (startTime2 && now - *startTime2 > kPointAge) {
        startTime = std::exchange(startTime2, std::nullopt);
        startFraction = startFraction2;
    }
}

/// Empty while there is nothing to say.
QString PMProgressIndicator::timeText(double now) const {
    const double elapsed = startTime ? now - *startTime : 0;
    if (elapsed <= kFirstGuess || !displayTimeRemaining)
        return {};
    const double speed = (fraction() - startFraction) / elapsed;
    const double left = (1 - fraction()) / speed; // seconds
    // Without progress since the reference point nobody can tell.
    if (!std::isfinite(left))
        return {};
    if (left > kManyMinutes)
        return tr("About %1 minutes remaining").arg(wholePart(left / 60 + 0.75));
    for (const auto& [above, text] : kTimes)
        if (left > above)
            return tr(text);
    return tr("About five seconds remaining");
}

void PMProgressIndicator::display() {
    auto* const controller = PMProgressIndicatorController::sharedInstance();
    if (drawDockProgress && controller)
        controller->drawProgressIndicators();
    if (progressText)
        progressText->display();
    ProgressBar::display();
}

void PMProgressIndicator::setDrawDockProgress(bool draw) {
    drawDockProgress = draw;
    auto* const controller = PMProgressIndicatorController::sharedInstance();
    if (!controller)
        return;
    if (draw)
        controller->addProgressIndicator(*this);
    else
        controller->removeProgressIndicator(*this);
}

} // namespace veltrano
