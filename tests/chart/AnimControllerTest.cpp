#include "chart/AnimController.h"

#include "support/FakeMainLoop.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

class AnimControllerTest : public testing::Test {
protected:
    FakeMainLoop clock;
    AnimController rings{clock};
};

TEST_F(AnimControllerTest, withoutAScanEveryCountIsShown) {
    for (const int wanted : {0, 1, 7, 13})
        EXPECT_EQ(rings.checkNewLevels(wanted), wanted);
}

TEST_F(AnimControllerTest, scanBeginsWithOneRing) {
    rings.initAnimation();
    EXPECT_EQ(rings.checkNewLevels(13), 1);
}

TEST_F(AnimControllerTest, gainsOneRingASecondHoweverOftenAsked) {
    rings.initAnimation();
    for (int expected = 1; expected <= 13; ++expected) {
        for (int tick = 0; tick < 10; ++tick)
            EXPECT_EQ(rings.checkNewLevels(13), expected);
        clock.advance(1.0);
    }
}

TEST_F(AnimControllerTest, waitsTheWholeSecond) {
    rings.initAnimation();
    clock.advance(0.999);
    EXPECT_EQ(rings.checkNewLevels(5), 1);
    clock.advance(0.001953125);
    EXPECT_EQ(rings.checkNewLevels(5), 2);
}

TEST_F(AnimControllerTest, longPauseStillGainsOnlyOne) {
    rings.initAnimation();
    clock.advance(60);
    EXPECT_EQ(rings.checkNewLevels(13), 2);
    EXPECT_EQ(rings.checkNewLevels(13), 2);
}

TEST_F(AnimControllerTest, paceIsCheckedOnlyWhenMoreIsWanted) {
    rings.initAnimation();
    clock.advance(10);
    EXPECT_EQ(rings.checkNewLevels(1), 1);
    EXPECT_EQ(rings.checkNewLevels(3), 2);
}

TEST_F(AnimControllerTest, shrinkingTakesEffectAtOnceAndIsForgotten) {
    rings.initAnimation();
    for (int second = 0; second < 4; ++second) {
        clock.advance(1);
        rings.checkNewLevels(13);
    }
    EXPECT_EQ(rings.checkNewLevels(2), 2);
    EXPECT_EQ(rings.checkNewLevels(13), 5);
}

TEST_F(AnimControllerTest, neverMoreThanThirteen) {
    rings.initAnimation();
    for (int second = 0; second < 20; ++second) {
        clock.advance(1);
        rings.checkNewLevels(99);
    }
    EXPECT_EQ(rings.checkNewLevels(99), 13);
}

TEST_F(AnimControllerTest, endOfTheScanLiftsTheLimit) {
    rings.initAnimation();
    EXPECT_EQ(rings.checkNewLevels(9), 1);
    rings.stopAnimation();
    EXPECT_EQ(rings.checkNewLevels(9), 9);
}

} // namespace
} // namespace veltrano
