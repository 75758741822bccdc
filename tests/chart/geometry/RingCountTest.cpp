#include "chart/geometry/RingCount.h"

#include "chart/geometry/GeometryFixture.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using test::layoutFor;
using test::TreeBuilder;

using Sizes = std::array<std::int64_t, kLevelCount>;

/// The deepest ring that shows something, as the rule tells it.
int modelDeepest(const RingLayout& layout, const FolderSystemItem& folder, int ring) {
    int answer = ring - 1;
    for (std::size_t index = 0; index < folder.numberOfChildren(); ++index) {
        FileSystemItem* const child = folder.childAtIndex(index);
        if (!CanDrawItem(layout, *child, ring))
            continue;
        if (ring == layout.m_nSubLevels)
            return ring;
        if (!child->isDir() || child->isPack()) {
            answer = std::max(answer, ring);
            continue;
        }
        const int below = modelDeepest(layout, *child->asFolderSystemItem(), ring + 1);
        if (below >= layout.m_nSubLevels)
            return below;
        answer = std::max({answer, ring, below});
    }
    return answer;
}

/// The ring count of a tree without a level table, as the rule tells it: one walk for each count.
int modelCount(RingLayout layout, const FolderSystemItem& root, std::int64_t depth) {
    layout.m_nSubLevels = depth >= 14 ? 13 : static_cast<int>(depth);
    while (layout.m_nSubLevels > 0 && modelDeepest(layout, root, 1) < layout.m_nSubLevels)
        --layout.m_nSubLevels;
    return layout.m_nSubLevels;
}

Sizes equalSizes(std::int64_t size) {
    Sizes sizes;
    sizes.fill(size);
    return sizes;
}

TEST(RingCountBySizes, isTheNumberOfLevelsWhileAllAreLarge) {
    Sizes sizes{};
    for (std::size_t level = 0; level <= 5; ++level)
        sizes[level] = 1000;
    EXPECT_EQ(countRingsByMaxSizes(layoutFor(900, 700, 0, 1000), sizes), 5);
}

TEST(RingCountBySizes, isThirteenForAFullTable) {
    EXPECT_EQ(countRingsByMaxSizes(layoutFor(900, 700, 0, 1000), equalSizes(1000)), 13);
}

TEST(RingCountBySizes, isNoneForAnEmptyTable) {
    EXPECT_EQ(countRingsByMaxSizes(layoutFor(900, 700, 0, 1000), Sizes{}), 0);
    Sizes onlyRoot{};
    onlyRoot[0] = 1000;
    EXPECT_EQ(countRingsByMaxSizes(layoutFor(900, 700, 0, 1000), onlyRoot), 0);
}

TEST(RingCountBySizes, startsAtTheOutermostPositiveLevelDespiteGapsBelow) {
    Sizes sizes{};
    sizes[1] = 1000;
    sizes[3] = 1000;
    EXPECT_EQ(countRingsByMaxSizes(layoutFor(900, 700, 0, 1000), sizes), 3);
}

TEST(RingCountBySizes, fallsToTheFirstCountWhoseOutermostRingShowsItsLargest) {
    // Radius 100: ring 5 of 5 is 628.3 points long, and 4 of 1000 make 2.5 points; ring 4 of 4 has 10, 6.3.
    Sizes sizes{};
    sizes[1] = 1000;
    sizes[2] = 500;
    sizes[3] = 100;
    sizes[4] = 10;
    sizes[5] = 4;
    RingLayout layout = layoutFor(200 / 0.95, 200 / 0.95, 0, 1000);
    EXPECT_EQ(countRingsByMaxSizes(layout, sizes), 4);
    sizes[4] = 4;
    EXPECT_EQ(countRingsByMaxSizes(layout, sizes), 3);
}

TEST(RingCountBySizes, deepestVisibleIsTheFirstFromOutsideThatWouldBeDrawn) {
    Sizes sizes = equalSizes(1);
    sizes[2] = 500;
    EXPECT_EQ(getMaxVisibleSublevelByMaxSizes(layoutFor(210, 210, 5, 1000), sizes), 2);
    EXPECT_EQ(getMaxVisibleSublevelByMaxSizes(layoutFor(210, 210, 5, 1000), equalSizes(1)), 0);
    EXPECT_EQ(getMaxVisibleSublevelByMaxSizes(layoutFor(210, 210, 0, 1000), sizes), 0);
}

TEST(RingCountBySizes, doesNotReadTheCountOfTheLayout) {
    EXPECT_EQ(countRingsByMaxSizes(layoutFor(900, 700, 1, 1000), equalSizes(1000)), 13);
}

TEST(RingCountByWalk, isZeroForAFolderWithoutChildren) {
    TreeBuilder tree("/r");
    EXPECT_EQ(countRingsByWalk(layoutFor(900, 700, 0, 1), *tree.root()), 0);
}

//  /r ── a ── b ── f (100)
//     └─ g (100)
TEST(RingCountByWalk, countsWhatIsVisible) {
    TreeBuilder tree("/r");
    tree.file(tree.folder(tree.folder(tree.root(), "a"), "b"), "f", 100);
    tree.file(tree.root(), "g", 100);
    tree.recount();
    EXPECT_EQ(countRingsByWalk(layoutFor(900, 700, 0, 200), *tree.root()), 3);
}

TEST(RingCountByWalk, capsADeepTreeAtThirteen) {
    TreeBuilder tree("/r");
    tree.file(tree.chain(tree.root(), "d", 40), "f", 100);
    tree.recount();
    EXPECT_EQ(countRingsByWalk(layoutFor(900, 700, 0, 100), *tree.root()), 13);
}

TEST(RingCountByWalk, emptyFolderAddsItsOwnRingAndNoneBelow) {
    TreeBuilder tree("/r");
    tree.folder(tree.root(), "empty")->increaseTotalSize(100);
    EXPECT_EQ(countRingsByWalk(layoutFor(900, 700, 0, 100), *tree.root()), 1);
}

TEST(RingCountByWalk, packageIsALeafHoweverDeep) {
    TreeBuilder tree("/r");
    tree.package(tree.folder(tree.folder(tree.root(), "a"), "b"), "p", 100);
    tree.recount();
    EXPECT_EQ(countRingsByWalk(layoutFor(900, 700, 0, 100), *tree.root()), 3);
}

TEST(RingCountByWalk, subtreeOfAnInvisibleFolderDoesNotCount) {
    TreeBuilder tree("/r");
    tree.file(tree.folder(tree.root(), "small"), "f", 1);
    tree.file(tree.root(), "large", 100'000);
    tree.recount();
    EXPECT_EQ(countRingsByWalk(layoutFor(900, 700, 0, 100'001), *tree.root()), 1);
}

// Radius 100 and a total of 1000: on ring 1 of 2 a folder of 3 has 1.5 points, whatever its file has on
// ring 2.
TEST(RingCountByWalk, itemUnderAFolderThatIsNotDrawnIsNotVisible) {
    TreeBuilder tree("/r");
    FolderSystemItem* const folder = tree.folder(tree.root(), "folder");
    tree.file(folder, "f", 10);
    tree.file(tree.root(), "rest", 984);
    tree.recount();
    const RingLayout layout = layoutFor(200 / 0.95, 200 / 0.95, 0, 1000);
    EXPECT_EQ(countRingsByWalk(layout, *tree.root()), 2);
    folder->decreaseTotalSize(7);
    EXPECT_EQ(countRingsByWalk(layout, *tree.root()), 1);
}

TEST(RingCountByWalk, equalsTheRuleOnRandomTrees) {
    std::mt19937_64 numbers(7);
    int different = 0;
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
        const TreeBuilder tree = TreeBuilder::random(seed, 40 + numbers() % 2000);
        const double side = 20.0 + static_cast<double>(numbers() % 900);
        const RingLayout layout = layoutFor(side, side, 0, tree.root()->gettotalsize());
        const std::int64_t depth = tree.root()->calcChildDepth();
        const int model = modelCount(layout, *tree.root(), depth);
        EXPECT_EQ(countRingsByWalk(layout, *tree.root()), model) << seed;
        different += model < std::min<std::int64_t>(depth, 13);
    }
    EXPECT_GT(different, 10) << "The trees are too shallow to say anything.";
}

} // namespace
} // namespace veltrano
