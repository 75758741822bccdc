#include "chart/geometry/SectorWalk.h"

#include "chart/geometry/GeometryFixture.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using test::layoutFor;
using test::namesOf;
using test::sectorsOf;
using test::TreeBuilder;
using Names = std::vector<std::string>;

//  /r ─┬─ a (40) ─┬─ x (30)
//      │          └─ y (10)
//      ├─ p (20, package)
//      └─ f (40)
class SectorWalk : public testing::Test {
protected:
    SectorWalk() {
        a = tree.folder(tree.root(), "a");
        x = tree.file(a, "x", 30);
        y = tree.file(a, "y", 10);
        p = tree.package(tree.root(), "p", 20);
        f = tree.file(tree.root(), "f", 40);
        tree.recount();
    }

    TreeBuilder tree{"/r"};
    FolderSystemItem* a;
    FileSystemItem* x;
    FileSystemItem* y;
    FolderSystemItem* p;
    FileSystemItem* f;
    RingLayout layout = layoutFor(900, 700, 2, 100);
};

TEST_F(SectorWalk, meetsEachFolderBeforeItsChildrenInTheOrderOfTheTree) {
    EXPECT_EQ(namesOf(sectorsOf(*tree.root(), layout)), (Names{"a", "x", "y", "p", "f"}));
}

TEST_F(SectorWalk, tellsRingStartAndShare) {
    const auto sectors = sectorsOf(*tree.root(), layout);
    const int rings[] = {1, 2, 2, 1, 1};
    const double starts[] = {0.0, 0.0, 0.3, 0.4, 0.4 + 0.2};
    const double deltas[] = {0.4, 0.3, 0.1, 0.2, 0.4};
    for (std::size_t index = 0; index < 5; ++index) {
        EXPECT_EQ(sectors[index].nSubLevel, rings[index]);
        EXPECT_EQ(sectors[index].dSkAngle, starts[index]);
        EXPECT_EQ(sectors[index].dDeltaAngle, deltas[index]);
    }
}

TEST_F(SectorWalk, neverLeavesTheRingsThatAreShown) {
    layout.m_nSubLevels = 1;
    EXPECT_EQ(namesOf(sectorsOf(*tree.root(), layout)), (Names{"a", "p", "f"}));
    layout.m_nSubLevels = 0;
    EXPECT_TRUE(sectorsOf(*tree.root(), layout).empty());
}

TEST_F(SectorWalk, skippedFolderIsNotEntered) {
    Names names;
    forEachSector(*tree.root(), layout, [&](const Sector& sector) {
        names.emplace_back(sector.item.relativePath());
        return SectorVisit::Skip;
    });
    EXPECT_EQ(names, (Names{"a", "p", "f"}));
}

TEST_F(SectorWalk, stopEndsTheWholeWalk) {
    Names names;
    forEachSector(*tree.root(), layout, [&](const Sector& sector) {
        names.emplace_back(sector.item.relativePath());
        return &sector.item == x ? SectorVisit::Stop : SectorVisit::Descend;
    });
    EXPECT_EQ(names, (Names{"a", "x"}));
}

TEST_F(SectorWalk, tooSmallItemIsPassedOverWithItsSubtree) {
    TreeBuilder other("/r");
    FolderSystemItem* const small = other.folder(other.root(), "small");
    other.file(small, "inside", 1);
    other.file(other.root(), "large", 9'999);
    other.recount();
    const auto sectors = sectorsOf(*other.root(), layoutFor(900, 700, 3, 10'000));
    ASSERT_EQ(namesOf(sectors), Names{"large"});
    EXPECT_EQ(sectors[0].dSkAngle, 1.0 / 10'000);
}

TEST_F(SectorWalk, drawnRingNeverExceedsThirteenWhateverTheDepth) {
    TreeBuilder deep("/r");
    deep.file(deep.chain(deep.root(), "d", 60), "f", 1);
    deep.recount();
    const auto sectors = sectorsOf(*deep.root(), layoutFor(900, 700, 13, 1));
    ASSERT_EQ(sectors.size(), 13u);
    EXPECT_EQ(sectors.back().nSubLevel, 13);
}

TEST_F(SectorWalk, sumBeforeAnItemAddsEarlierSiblingsOfEveryFolderAbove) {
    EXPECT_EQ(getPrevSizesOfItem(*x, tree.root()), 0);
    EXPECT_EQ(getPrevSizesOfItem(*y, tree.root()), 30);
    EXPECT_EQ(getPrevSizesOfItem(*f, tree.root()), 60);
}

TEST_F(SectorWalk, sumBeforeTheTopParentARootOrAVolumeIsNothing) {
    EXPECT_EQ(getPrevSizesOfItem(*p, p), 0);
    EXPECT_EQ(getPrevSizesOfItem(*tree.root(), nullptr), 0);
    const TreeBuilder volume = TreeBuilder::volume("/v", 1000, 500);
    EXPECT_EQ(getPrevSizesOfItem(*volume.root(), nullptr), 0);
}

TEST_F(SectorWalk, sumEndsAtTheGivenTopParent) {
    TreeBuilder other("/r");
    other.file(other.root(), "before", 500);
    FolderSystemItem* const folder = other.folder(other.root(), "folder");
    other.file(folder, "first", 7);
    const FileSystemItem& second = *other.file(folder, "second", 1);
    EXPECT_EQ(getPrevSizesOfItem(second, folder), 7);
    EXPECT_EQ(getPrevSizesOfItem(second, nullptr), 507);
}

TEST_F(SectorWalk, sumIsExactBeyondWhatADoubleHolds) {
    constexpr std::int64_t big = (std::int64_t{1} << 53) + 1;
    TreeBuilder other("/r");
    other.file(other.root(), "a", big);
    other.file(other.root(), "b", big);
    other.file(other.root(), "c", 1);
    const FileSystemItem& last = *other.file(other.root(), "d", 1);
    EXPECT_EQ(getPrevSizesOfItem(last, other.root()), 2 * big + 1);
}

TEST_F(SectorWalk, startOfEverySectorIsTheSumBeforeItByTheTotal) {
    const TreeBuilder random = TreeBuilder::random(3, 3000);
    const RingLayout wide = layoutFor(900, 700, 9, random.root()->gettotalsize());
    const auto sectors = sectorsOf(*random.root(), wide);
    EXPECT_GT(sectors.size(), 100u);
    for (const Sector& sector : sectors)
        EXPECT_NEAR(sector.dSkAngle, wide.getFraction(getPrevSizesOfItem(sector.item, random.root())), 1e-12);
}

} // namespace
} // namespace veltrano
