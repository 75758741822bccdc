#include "chart/geometry/RingLayout.h"

#include "chart/geometry/GeometryFixture.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using test::layoutFor;
using test::TreeBuilder;

TEST(RingLayout, viewOf400By300HasARadiusOf142AndAHalf) {
    const RingLayout layout = layoutFor(400, 300, 1, 1);
    EXPECT_EQ(layout.m_fullRadius, 142.5f);
    EXPECT_EQ(layout.m_Center, QPointF(200, 150));
}

TEST(RingLayout, tallViewTakesItsRadiusFromItsWidth) {
    EXPECT_EQ(layoutFor(300, 1000, 1, 1).m_fullRadius, 142.5f);
}

TEST(RingLayout, centreCountsFromTheOriginOfTheBounds) {
    RingLayout layout;
    layout.setBounds(QRectF(10, -20, 400, 300));
    EXPECT_EQ(layout.m_Center, QPointF(210, 130));
}

TEST(RingLayout, radiusIsComputedWideAndStoredNarrow) {
    const RingLayout layout = layoutFor(333, 777, 1, 1);
    EXPECT_EQ(layout.m_fullRadius, static_cast<float>(333 * 0.5 * 0.95));
    EXPECT_NE(static_cast<double>(layout.m_fullRadius), 333 * 0.5 * 0.95);
}

TEST(RingLayout, startsEmptyAtTwelveOClock) {
    const RingLayout layout;
    EXPECT_EQ(layout.m_Center, QPointF(0, 0));
    EXPECT_EQ(layout.m_fullRadius, 0.0f);
    EXPECT_EQ(layout.m_nSubLevels, 0);
    EXPECT_EQ(layout.m_lTotalSize, 0);
    EXPECT_EQ(layout.g_dOriginAngleRad, std::numbers::pi / 2);
    EXPECT_EQ(layout.g_dOriginAngleDeg, 90.0);
}

/// On one ring of radius 100 the edge is 628.3 points long, so an arc of 3.0 points is a share between 2^-8
/// and 2^-7 of the turn. Of a total of 2^60 every such share is a whole number of bytes.
class ExactArc : public testing::Test {
protected:
    ExactArc() {
        layout.m_nSubLevels = 1;
        layout.m_lTotalSize = std::int64_t{1} << 60;
        for (layout.m_fullRadius = 100.0f; layout.m_fullRadius < 120.0f; layout.m_fullRadius += 1.0f) {
            const double circumference = static_cast<double>(layout.m_fullRadius) * 6.283185307179586;
            auto size = static_cast<std::int64_t>(3.0 / circumference * std::pow(2.0, 60)) - 4;
            while (arc(size) < 3.0)
                ++size;
            exactSize = size;
            if (arc(size) == 3.0)
                return;
        }
        ADD_FAILURE() << "No radius here has an arc of exactly 3.0 points.";
    }

    double arc(std::int64_t size) const {
        return static_cast<double>(size) / static_cast<double>(layout.m_lTotalSize) *
               (1.0 * static_cast<double>(layout.m_fullRadius) * 6.283185307179586);
    }

    RingLayout layout;
    std::int64_t exactSize = 0;
    TreeBuilder tree{"/r"};
};

TEST_F(ExactArc, exactlyThreePointsAreDrawn) {
    EXPECT_TRUE(CanDrawItem(layout, *tree.file(tree.root(), "exact", exactSize), 1));
}

TEST_F(ExactArc, oneStepBelowThreePointsIsNotDrawn) {
    EXPECT_FALSE(CanDrawItem(layout, *tree.file(tree.root(), "below", exactSize - 1), 1));
}

TEST_F(ExactArc, siblingOfAnItemBelowStillStartsAfterIt) {
    tree.file(tree.root(), "below", exactSize - 1);
    tree.file(tree.root(), "exact", exactSize);
    const auto sectors = test::sectorsOf(*tree.root(), layout);
    ASSERT_EQ(test::namesOf(sectors), std::vector<std::string>{"exact"});
    EXPECT_EQ(sectors[0].dSkAngle, layout.getFraction(exactSize - 1));
}

TEST(CanDrawItem, measuresAlongTheOuterEdgeOfTheRing) {
    // On ring 1 of 2 the outer edge is 0.8 radii out: 502.65 points at radius 100, where 6 of 1000
    // make 3.016.
    TreeBuilder tree("/r");
    const FileSystemItem& file = *tree.file(tree.root(), "f", 6);
    RingLayout layout;
    layout.m_fullRadius = 100;
    layout.m_lTotalSize = 1000;
    layout.m_nSubLevels = 2;
    EXPECT_TRUE(CanDrawItem(layout, file, 1));
    layout.m_fullRadius = 99;
    EXPECT_FALSE(CanDrawItem(layout, file, 1));
    EXPECT_TRUE(CanDrawItem(layout, file, 2));
}

TEST(CanDrawItem, dependsOnTheRingCount) {
    TreeBuilder tree("/r");
    const FileSystemItem& file = *tree.file(tree.root(), "f", 8);
    RingLayout layout = layoutFor(200 / 0.95, 200 / 0.95, 1, 1000);
    EXPECT_TRUE(CanDrawItem(layout, file, 1));
    layout.m_nSubLevels = 13;
    EXPECT_FALSE(CanDrawItem(layout, file, 1));
}

TEST(CanDrawItem, itemWithoutAParentAlwaysPasses) {
    TreeBuilder tree("/r");
    EXPECT_TRUE(CanDrawItem(layoutFor(400, 300, 1, 1000), *tree.root(), 1));
}

} // namespace
} // namespace veltrano
