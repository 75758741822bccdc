#pragma once

namespace veltrano {

/// How an animation gains and loses speed: slow at both ends, and the second half mirrors the first. Progress
/// is held to 0 to 1; the ends and the middle come out exactly as 0, 1 and 0.5. Pure function.
constexpr double easeInOut(double progress) {
    if (!(progress > 0.0))
        return 0.0;
    if (progress >= 1.0)
        return 1.0;
    return progress * progress * (3.0 - 2.0 * progress);
}

} // namespace veltrano
