#include "chart/Pulse.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

TEST(Pulse, beginsInvisibleAtItsSmallest) {
    EXPECT_NEAR(getPulseFrame(0).dOpacity, 0.0, 1e-6);
    EXPECT_NEAR(getPulseFrame(0).dScale, 0.8383, 1e-6);
}

TEST(Pulse, isBrightestHalfwayThroughABeat) {
    EXPECT_NEAR(getPulseFrame(0.5).dOpacity, 0.9, 1e-6);
    EXPECT_NEAR(getPulseFrame(0.999999).dOpacity, 0.0, 1e-4);
}

TEST(Pulse, fadesOutTheWayItFadedIn) {
    for (const double seconds : {0.1, 0.2, 0.3, 0.4})
        EXPECT_NEAR(getPulseFrame(0.5 + seconds).dOpacity, getPulseFrame(0.5 - seconds).dOpacity, 1e-9);
}

TEST(Pulse, fadesSlowlyAtItsEnds) {
    EXPECT_LT(getPulseFrame(0.05).dOpacity, 0.9 * 0.1 / 2);
    EXPECT_GT(getPulseFrame(0.45).dOpacity, 0.9 * (1 - 0.1 / 2));
}

TEST(Pulse, reachesItsFullSizeAtTheEndOfTheBeatAndStartsAnew) {
    EXPECT_NEAR(getPulseFrame(0.999999).dScale, 1.0, 1e-4);
    EXPECT_NEAR(getPulseFrame(1.0).dScale, 0.8383, 1e-6);
}

TEST(Pulse, neverShrinksWithinABeat) {
    for (int step = 1; step < 1000; ++step)
        EXPECT_GE(getPulseFrame(step / 1000.0).dScale, getPulseFrame((step - 1) / 1000.0).dScale);
}

TEST(Pulse, widensByItsOwnCurve) {
    // At parameter 1/2 the curve has x = (3 * 0.314955 + 3 * 0.79514498 + 1) / 8 and y = 7/8.
    const double time = (3 * 0.314955 + 3 * 0.79514498 + 1) / 8;
    EXPECT_NEAR(getPulseFrame(time).dScale, 0.8383 + (1 - 0.8383) * 7 / 8, 1e-6);
}

TEST(Pulse, fadesByItsOwnCurve) {
    // x = (3 * 0.38314956 + 3 * 0.62795144 + 1) / 8 at y = 1/2; one way takes half a second.
    const double time = (3 * 0.38314956 + 3 * 0.62795144 + 1) / 8;
    EXPECT_NEAR(getPulseFrame(0.5 * time).dOpacity, 0.45, 1e-6);
}

TEST(Pulse, beatsForEver) {
    for (const double seconds : {0.2, 0.7}) {
        EXPECT_NEAR(getPulseFrame(100000 + seconds).dOpacity, getPulseFrame(seconds).dOpacity, 1e-6);
        EXPECT_NEAR(getPulseFrame(100000 + seconds).dScale, getPulseFrame(seconds).dScale, 1e-6);
    }
}

} // namespace
} // namespace veltrano
