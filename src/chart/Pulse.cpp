#include "chart/Pulse.h"

#include "chart/geometry/TimingCurve.h"

#include <cmath>

namespace veltrano {

namespace {

constexpr double kFadeSeconds = 0.5; // one way; then the same way back
constexpr double kWidenSeconds = 1.0;
constexpr double kMostOpacity = 0.9;
constexpr double kLeastScale = 0.8383;
constexpr TimingCurve kFadeCurve{0.38314956, 0.0, 0.62795144, 1.0};
constexpr TimingCurve kWidenCurve{0.31495500, 1.0, 0.79514498, 1.0};

} // namespace

PulseFrame getPulseFrame(double seconds) {
    const double fade = std::fmod(seconds, 2 * kFadeSeconds) / kFadeSeconds;
    const double widen = std::fmod(seconds, kWidenSeconds) / kWidenSeconds;
    return {kMostOpacity * kFadeCurve.getProgress(fade <= 1.0 ? fade : 2.0 - fade),
            kLeastScale + (1.0 - kLeastScale) * kWidenCurve.getProgress(widen)};
}

} // namespace veltrano
