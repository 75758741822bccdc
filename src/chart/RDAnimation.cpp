#include "chart/RDAnimation.h"

#include <algorithm>
#include <utility>

namespace veltrano {

namespace {

/// A moment this near to the end is the end: clocks add up small steps and may fall short of it by a hair.
constexpr double kEndSlack = 1e-6; // seconds

} // namespace

RDAnimation::RDAnimation(MainLoop& mainLoop, double duration, Curve curve, UpdateValue updateValue,
                         StopAnimation stopAnimation)
    : m_mainLoop(mainLoop),
      m_dDuration(duration),
      m_curve(curve),
      m_selUpdateAnimationValue(std::move(updateValue)),
      m_selStopAnimation(std::move(stopAnimation)) {}

RDAnimation::~RDAnimation() {
    cancelAnimation();
}

void RDAnimation::cancelAnimation() {
    m_bAnimating = false;
    m_mainLoop.cancel(std::exchange(m_nFrame, 0));
}

void RDAnimation::startAnimation() {
    m_bAnimating = true;
    m_fValue = 0;
    m_lFrame = 0;
    m_dStart = m_mainLoop.now();
    scheduleFrame();
}

void RDAnimation::scheduleFrame() {
    // Frames stand on an even grid from the start on; those whose time has passed meanwhile are left out. A
    // timer may come a little early, hence the second condition.
    const double elapsed = m_mainLoop.now() - m_dStart;
    m_lFrame = std::max(static_cast<std::int64_t>(elapsed / kFrameSeconds) + 1, m_lFrame + 1);
    const double due = std::min(static_cast<double>(m_lFrame) * kFrameSeconds, m_dDuration);
    const double delay = std::max(due - elapsed, 0.0);
    m_nFrame = m_mainLoop.callLater(delay, [this] {
        m_nFrame = 0;
        showFrame();
    });
}

void RDAnimation::showFrame() {
    const auto self = shared_from_this();
    const double elapsed = m_mainLoop.now() - m_dStart;
    setCurrentProgress(elapsed >= m_dDuration - kEndSlack ? 1.0 : elapsed / m_dDuration);
    if (m_bAnimating)
        scheduleFrame();
}

void RDAnimation::setCurrentProgress(double progress) {
    const auto self = shared_from_this();
    m_fValue = static_cast<float>(m_curve(progress));
    m_selUpdateAnimationValue(m_fValue);
    if (m_fValue == 1.0f)
        stopAnimation();
}

void RDAnimation::stopAnimation() {
    if (!m_bAnimating)
        return;
    const auto self = shared_from_this();
    cancelAnimation();
    if (m_fValue != 1.0f)
        setCurrentProgress(1.0);
    m_selStopAnimation();
}

} // namespace veltrano
