#pragma once

namespace veltrano {

/// How the progress of an animation follows time: a cubic curve from (0, 0) to (1, 1) with two control
/// points, time along x, progress along y. The x of both control points lies in 0 to 1.
struct TimingCurve {
    double x1, y1, x2, y2;

    /// The progress at a share of the time, which is held to 0 to 1.
    double getProgress(double time) const;
};

} // namespace veltrano
