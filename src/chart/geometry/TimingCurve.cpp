#include "chart/geometry/TimingCurve.h"

#include <algorithm>

namespace veltrano {

namespace {

/// The cubic with ends 0 and 1 and the controls `a` and `b`, at parameter `t`.
double cubic(double a, double b, double t) {
    const double left = 1.0 - t;
    return 3.0 * left * left * t * a + 3.0 * left * t * t * b + t * t * t;
}

/// Each step halves the interval: 2^-40 is far below what can be seen.
constexpr int kBisections = 40;

} // namespace

double TimingCurve::getProgress(double time) const {
    const double wanted = std::clamp(time, 0.0, 1.0);
    double low = 0.0;
    double high = 1.0;
    for (int step = 0; step < kBisections; ++step) {
        const double middle = 0.5 * (low + high);
        (cubic(x1, x2, middle) < wanted ? low : high) = middle;
    }
    return cubic(y1, y2, 0.5 * (low + high));
}

} // namespace veltrano
