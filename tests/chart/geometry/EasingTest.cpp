#include "chart/geometry/Easing.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

TEST(Easing, reachesItsEndsExactly) {
    EXPECT_EQ(easeInOut(0.0), 0.0);
    EXPECT_EQ(easeInOut(1.0), 1.0);
    EXPECT_EQ(static_cast<float>(easeInOut(1.0)), 1.0f);
}

TEST(Easing, isHalfwayAtHalfTime) {
    EXPECT_EQ(easeInOut(0.5), 0.5);
}

TEST(Easing, isSlowAtBothEnds) {
    EXPECT_EQ(easeInOut(0.25), 0.15625);
    EXPECT_EQ(easeInOut(0.75), 0.84375);
}

TEST(Easing, secondHalfMirrorsTheFirst) {
    for (int step = 0; step <= 100; ++step)
        EXPECT_NEAR(easeInOut(step / 100.0), 1.0 - easeInOut(1.0 - step / 100.0), 1e-15);
}

TEST(Easing, neverGoesBack) {
    for (int step = 1; step <= 1000; ++step)
        EXPECT_GT(easeInOut(step / 1000.0), easeInOut((step - 1) / 1000.0));
}

TEST(Easing, staysWithinItsEnds) {
    EXPECT_EQ(easeInOut(-0.5), 0.0);
    EXPECT_EQ(easeInOut(1.5), 1.0);
}

} // namespace
} // namespace veltrano
