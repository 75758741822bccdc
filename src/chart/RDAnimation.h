#pragma once

#include "platform/MainLoop.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace veltrano {

/// One run of an animation of the chart: eases time into a value from 0 to 1, hands that out sixty times a
/// second, and tells when it is over. It ends with a frame at exactly 1.0, also when it is stopped early: it
/// jumps to its end, it never freezes. A frame that comes too late is left out. Held by the chart, which
/// drops it within the second callback, hence the shared ownership with the frame that runs. Main thread.
class RDAnimation : public std::enable_shared_from_this<RDAnimation> {
public:
    /// Progress, 0 to 1 of the duration, to value; exactly 1.0 at 1.0.
    using Curve = double (*)(double progress);
    using UpdateValue = std::function<void(float value)>;
    using StopAnimation = std::function<void()>;

    /// The main loop is borrowed and outlives this. `duration` in seconds, above 0.
    RDAnimation(MainLoop& mainLoop, double duration, Curve curve, UpdateValue updateValue,
                StopAnimation stopAnimation);
    RDAnimation(const RDAnimation&) = delete;
    RDAnimation& operator=(const RDAnimation&) = delete;
    /// Cancels it.
    ~RDAnimation();

    /// The first frame comes with the main loop, not within this call.
    void startAnimation();
    bool isAnimating() const { return m_bAnimating; }

    /// Moves to a share of the duration and hands out its value; ends the animation if that is exactly 1.0.
    void setCurrentProgress(double progress);
    /// Hands out the value 1.0 if that has not been done, and tells that it is over. Nothing unless it runs.
    void stopAnimation();
    /// Ends it without another word.
    void cancelAnimation();

    static constexpr double kFrameSeconds = 1.0 / 60;

private:
    void scheduleFrame();
    void showFrame();

    MainLoop& m_mainLoop;
    const double m_dDuration; // seconds
    const Curve m_curve;
    const UpdateValue m_selUpdateAnimationValue;
    const StopAnimation m_selStopAnimation;

    bool m_bAnimating = false;
    double m_dStart = 0;       // seconds of the main loop
    float m_fValue = 0;        // last handed out
    std::int64_t m_lFrame = 0; // the next frame, counted from the start
    MainLoop::Token m_nFrame = 0;
};

} // namespace veltrano
