#include "chart/RDAnimation.h"

#include "chart/geometry/Easing.h"
#include "support/FakeMainLoop.h"

#include <algorithm>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace veltrano {
namespace {

class RDAnimationTest : public testing::Test {
protected:
    std::shared_ptr<RDAnimation> make(double duration = 1.0, RDAnimation::Curve curve = easeInOut) {
        return std::make_shared<RDAnimation>(
            loop, duration, curve,
            [this](float value) {
                values.push_back(value);
                moments.push_back(loop.now());
                if (onUpdate)
                    onUpdate();
            },
            [this] {
                ++stops;
                if (onStop)
                    onStop();
            });
    }

    FakeMainLoop loop;
    std::vector<float> values;
    std::vector<double> moments;
    int stops = 0;
    std::function<void()> onUpdate;
    std::function<void()> onStop;
};

TEST_F(RDAnimationTest, showsNothingWithinTheCallThatStartsIt) {
    const auto animation = make();
    animation->startAnimation();
    EXPECT_TRUE(animation->isAnimating());
    EXPECT_TRUE(values.empty());
}

TEST_F(RDAnimationTest, hasSixtyFramesASecond) {
    const auto animation = make();
    animation->startAnimation();
    loop.advance(2.0);
    EXPECT_EQ(values.size(), 60u);
    EXPECT_NEAR(moments.back(), 1.0, 1e-6);
}

TEST_F(RDAnimationTest, handsOutTheEasedValueOfTheTime) {
    const auto animation = make();
    animation->startAnimation();
    loop.advance(2.0);
    for (std::size_t frame = 0; frame < values.size(); ++frame)
        EXPECT_NEAR(static_cast<double>(values[frame]), easeInOut(moments[frame]), 1e-6);
    EXPECT_NEAR(static_cast<double>(values[14]), 0.15625, 1e-6);
    EXPECT_NEAR(static_cast<double>(values[29]), 0.5, 1e-6);
}

TEST_F(RDAnimationTest, endsOnceAtExactlyOne) {
    const auto animation = make();
    animation->startAnimation();
    loop.advance(2.0);
    EXPECT_EQ(values.back(), 1.0f);
    EXPECT_EQ(std::ranges::count(values, 1.0f), 1);
    EXPECT_EQ(stops, 1);
    EXPECT_FALSE(animation->isAnimating());
    EXPECT_EQ(loop.pendingTimers(), 0u);
}

TEST_F(RDAnimationTest, lastsAsLongAsItIsTold) {
    const auto animation = make(0.25);
    animation->startAnimation();
    loop.advance(0.24);
    EXPECT_EQ(stops, 0);
    loop.advance(0.02);
    EXPECT_EQ(stops, 1);
    EXPECT_EQ(values.size(), 15u);
}

TEST_F(RDAnimationTest, stoppedEarlyItJumpsToItsEnd) {
    const auto animation = make();
    animation->startAnimation();
    loop.advance(0.3);
    animation->stopAnimation();
    EXPECT_EQ(values.back(), 1.0f);
    EXPECT_EQ(stops, 1);
    const std::size_t frames = values.size();
    loop.advance(2.0);
    EXPECT_EQ(values.size(), frames);
    EXPECT_EQ(stops, 1);
}

TEST_F(RDAnimationTest, lastFrameComesBeforeTheWordThatItIsOver) {
    const auto animation = make();
    onStop = [&] {
        EXPECT_EQ(values.back(), 1.0f);
    };
    animation->startAnimation();
    animation->stopAnimation();
    EXPECT_EQ(stops, 1);
}

TEST_F(RDAnimationTest, stoppingOneThatDoesNotRunDoesNothing) {
    const auto animation = make();
    animation->stopAnimation();
    EXPECT_TRUE(values.empty());
    EXPECT_EQ(stops, 0);
}

TEST_F(RDAnimationTest, progressOfOneEndsIt) {
    const auto animation = make();
    animation->startAnimation();
    animation->setCurrentProgress(0.5);
    EXPECT_TRUE(animation->isAnimating());
    animation->setCurrentProgress(1.0);
    EXPECT_FALSE(animation->isAnimating());
    EXPECT_EQ(values, (std::vector<float>{0.5f, 1.0f}));
    EXPECT_EQ(stops, 1);
}

TEST_F(RDAnimationTest, slowFramesAreLeftOutAndNeverQueued) {
    const auto animation = make();
    // Each frame takes 40 ms: the time of two more passes meanwhile.
    onUpdate = [&] {
        if (values.back() < 1.0f)
            loop.advance(0.04);
    };
    animation->startAnimation();
    loop.advance(2.0);
    EXPECT_EQ(values.back(), 1.0f);
    ASSERT_EQ(values.size(), 21u);
    for (std::size_t frame = 0; frame < 20; ++frame)
        EXPECT_NEAR(moments[frame], (1.0 + 3.0 * static_cast<double>(frame)) / 60, 1e-6);
    EXPECT_NEAR(moments.back(), 58.0 / 60 + 0.04, 1e-6);
}

TEST_F(RDAnimationTest, onlyOneFrameIsEverAhead) {
    const auto animation = make();
    animation->startAnimation();
    for (int step = 0; step < 50; ++step) {
        EXPECT_EQ(loop.pendingTimers(), 1u);
        loop.advance(0.015);
    }
}

TEST_F(RDAnimationTest, mayBeDroppedWithinItsLastWord) {
    auto animation = make();
    const std::weak_ptr<RDAnimation> watched = animation;
    onStop = [&] {
        animation.reset();
    };
    animation->startAnimation();
    loop.advance(2.0);
    EXPECT_EQ(stops, 1);
    EXPECT_TRUE(watched.expired());
}

TEST_F(RDAnimationTest, mayBeDroppedWithinAFrame) {
    auto animation = make();
    const std::weak_ptr<RDAnimation> watched = animation;
    onUpdate = [&] {
        animation.reset();
    };
    animation->startAnimation();
    loop.advance(2.0);
    EXPECT_EQ(values.size(), 1u);
    EXPECT_EQ(stops, 0);
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(loop.pendingTimers(), 0u);
}

TEST_F(RDAnimationTest, cancelledItSaysNothingMore) {
    const auto animation = make();
    animation->startAnimation();
    loop.advance(0.5);
    const std::size_t frames = values.size();
    animation->cancelAnimation();
    loop.advance(2.0);
    EXPECT_EQ(values.size(), frames);
    EXPECT_EQ(stops, 0);
    EXPECT_FALSE(animation->isAnimating());
}

TEST_F(RDAnimationTest, oneThatGoesTakesItsFrameWithIt) {
    make()->startAnimation();
    EXPECT_EQ(loop.pendingTimers(), 0u);
    auto animation = make();
    animation->startAnimation();
    animation.reset();
    EXPECT_EQ(loop.pendingTimers(), 0u);
    EXPECT_EQ(stops, 0);
}

} // namespace
} // namespace veltrano
