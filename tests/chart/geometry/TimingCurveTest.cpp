#include "chart/geometry/TimingCurve.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

TEST(TimingCurve, startsAtZeroAndEndsAtOne) {
    constexpr TimingCurve curve{0.38314956, 0.0, 0.62795144, 1.0};
    EXPECT_NEAR(curve.getProgress(0.0), 0.0, 1e-9);
    EXPECT_NEAR(curve.getProgress(1.0), 1.0, 1e-9);
}

TEST(TimingCurve, holdsTimesOutsideToTheEnds) {
    constexpr TimingCurve curve{0.25, 0.1, 0.25, 1.0};
    EXPECT_NEAR(curve.getProgress(-3.0), 0.0, 1e-9);
    EXPECT_NEAR(curve.getProgress(3.0), 1.0, 1e-9);
}

TEST(TimingCurve, controlsOnTheDiagonalMakeALine) {
    constexpr TimingCurve line{1.0 / 3, 1.0 / 3, 2.0 / 3, 2.0 / 3};
    for (const double time : {0.1, 0.25, 0.5, 0.9})
        EXPECT_NEAR(line.getProgress(time), time, 1e-9);
}

TEST(TimingCurve, symmetricCurveIsHalfwayAtHalfTheTime) {
    constexpr TimingCurve curve{0.42, 0.0, 0.58, 1.0};
    EXPECT_NEAR(curve.getProgress(0.5), 0.5, 1e-9);
    EXPECT_LT(curve.getProgress(0.25), 0.25);
}

TEST(TimingCurve, passesThroughAPointOfItsPolynomial) {
    // At parameter 1/2 the curve is at ((3 x1 + 3 x2 + 1) / 8, (3 y1 + 3 y2 + 1) / 8).
    constexpr TimingCurve curve{0.3, 1.0, 0.8, 1.0};
    EXPECT_NEAR(curve.getProgress((0.9 + 2.4 + 1) / 8), 7.0 / 8, 1e-9);
}

} // namespace
} // namespace veltrano
