#pragma once

namespace veltrano {

/// How the glow of a scan stands at one moment.
struct PulseFrame {
    double dOpacity; ///< 0 to 0.9.
    double dScale;   ///< Of its full size, 0.8383 to 1.
};

/// The glow beats once a second for ever: it fades in and out while it widens. `seconds` count from its
/// start.
PulseFrame getPulseFrame(double seconds);

} // namespace veltrano
