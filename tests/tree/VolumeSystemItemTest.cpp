#include "tree/VolumeSystemItem.h"

#include "support/TreeBuilder.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace veltrano {
namespace {

using test::TreeBuilder;
using Table = std::array<std::int64_t, kLevelCount>;

class VolumeSystemItemTest : public testing::Test {
protected:
    // /v          1000 bytes, 400 of them free
    // |-- a
    // |   `-- f   70 bytes
    // `-- g       30 bytes
    TreeBuilder tree = TreeBuilder::volume("/v", 1000, 400);
    VolumeSystemItem* const volume = tree.volumeRoot();
    FolderSystemItem* const a = tree.folder(volume, "a");
    FileSystemItem* const f = tree.file(a, "f", 70);
    FileSystemItem* const g = tree.file(volume, "g", 30);

    Table table() const {
        Table copy;
        std::copy_n(volume->getMaxSizesByLevels(), kLevelCount, copy.begin());
        return copy;
    }
};

TEST_F(VolumeSystemItemTest, newVolumeIsAnEmptyVisibleRoot) {
    const TreeBuilder other = TreeBuilder::volume("/mnt/disk", 50, 20);
    const VolumeSystemItem* const root = other.volumeRoot();
    EXPECT_EQ(root->getFullPath(), "/mnt/disk");
    EXPECT_EQ(root->getParent(), nullptr);
    EXPECT_EQ(root->gettotalsize(), 0);
    EXPECT_FALSE(root->isPack());
    EXPECT_EQ(root->getTimeCode(), 0);
    EXPECT_FALSE(root->isHiddenFlag());
    EXPECT_EQ(root->getVolSize(), 50);
    EXPECT_EQ(root->getVolFreeSize(), 20);
    EXPECT_FALSE(root->getUseFreeSector());
    EXPECT_FALSE(root->isMaxSizesValid());
}

TEST_F(VolumeSystemItemTest, volumeIsCalledByItsName) {
    const auto storage = TreeStorage::create();
    TreeArena& arena = storage->mainArena();
    std::string name = "My Disk";
    const VolumeSystemItem* const named = VolumeSystemItem::initWithPath(arena, "/mnt/disk", 1, 0, name);
    name = "changed";
    EXPECT_EQ(named->getDisplayName(), "My Disk");
    EXPECT_EQ(named->getFullPath(), "/mnt/disk");
    EXPECT_EQ(VolumeSystemItem::initWithPath(arena, "/mnt/disk", 1, 0)->getDisplayName(), "disk");
}

TEST_F(VolumeSystemItemTest, volumeIsAScannedVolumeAndADirectory) {
    EXPECT_TRUE(volume->isVol());
    EXPECT_TRUE(volume->isDir());
    EXPECT_TRUE(volume->isScanned());
    EXPECT_FALSE(volume->isNotScannedVolume());
}

TEST_F(VolumeSystemItemTest, sizesOfTheFileSystemCanBeSet) {
    volume->setVolSize(2000);
    volume->setVolFreeSize(1);
    EXPECT_EQ(volume->getVolSize(), 2000);
    EXPECT_EQ(volume->getVolFreeSize(), 1);
    EXPECT_EQ(volume->getWholeItemSize(), 2000);
}

TEST_F(VolumeSystemItemTest, occupiedIsCapacityLessFree) {
    tree.recount();
    EXPECT_EQ(volume->getOccSize(), 600);
}

TEST_F(VolumeSystemItemTest, foundIsNeverMoreThanOccupied) {
    tree.file(volume, "h", 700);
    tree.recount();
    EXPECT_EQ(volume->getOccSize(), 800);
}

TEST_F(VolumeSystemItemTest, moreFreeThanCapacityLeavesWhatWasFound) {
    volume->setVolFreeSize(5000);
    tree.recount();
    EXPECT_EQ(volume->getOccSize(), 100);
}

TEST_F(VolumeSystemItemTest, fullRatioIsOccupiedOfCapacity) {
    EXPECT_DOUBLE_EQ(volume->getFullRatio(), 0.6);
}

TEST_F(VolumeSystemItemTest, volumeWithoutCapacityIsFull) {
    volume->setVolSize(0);
    EXPECT_EQ(volume->getFullRatio(), 1.0);
}

TEST_F(VolumeSystemItemTest, fullCircleIsWhatWasFound) {
    tree.recount();
    EXPECT_EQ(volume->getTheSize(), 100);
}

TEST_F(VolumeSystemItemTest, fullCircleIsCapacityLessFreeWhileNothingIsFound) {
    EXPECT_EQ(volume->gettotalsize(), 0);
    EXPECT_EQ(volume->getTheSize(), 600);
}

TEST_F(VolumeSystemItemTest, fullCircleWithTheFreeSectorIsTheCapacity) {
    tree.file(volume, "h", 9000);
    tree.recount();
    volume->setUseFreeSector(true);
    EXPECT_TRUE(volume->getUseFreeSector());
    EXPECT_EQ(volume->getTheSize(), 1000);
    volume->setUseFreeSector(false);
    EXPECT_EQ(volume->getTheSize(), 9100);
}

TEST_F(VolumeSystemItemTest, countedSizeIsWhatWasFound) {
    tree.recount();
    EXPECT_EQ(volume->getChildrenCountedSize(), 100);
}

// --- The level table ---

TEST_F(VolumeSystemItemTest, recountOfAScanFillsTheTable) {
    EXPECT_EQ(volume->calctotalsizeex(), 100);
    EXPECT_TRUE(volume->isMaxSizesValid());
    EXPECT_EQ(table(), (Table{100, 70, 70}));
    EXPECT_EQ(a->gettotalsize(), 70);
}

TEST_F(VolumeSystemItemTest, recountOfAScanForgetsWhatIsGone) {
    volume->calctotalsizeex();
    a->removeChild(f);
    EXPECT_EQ(volume->calctotalsizeex(), 30);
    EXPECT_EQ(table(), (Table{30, 30}));
}

TEST_F(VolumeSystemItemTest, plainRecountLeavesTheTableEmpty) {
    volume->calctotalsizeex();
    EXPECT_EQ(volume->calctotalsize(), 100);
    EXPECT_FALSE(volume->isMaxSizesValid());
    EXPECT_EQ(table(), Table{});
}

TEST_F(VolumeSystemItemTest, tableIsNotValidUntilSomethingIsCounted) {
    const TreeBuilder empty = TreeBuilder::volume("/e", 10, 5);
    empty.recount();
    EXPECT_FALSE(empty.root()->isMaxSizesValid());
}

TEST_F(VolumeSystemItemTest, tableCanBeEmptied) {
    volume->calctotalsizeex();
    volume->initSizesByLevels();
    EXPECT_FALSE(volume->isMaxSizesValid());
    EXPECT_EQ(table(), Table{});
}

TEST_F(VolumeSystemItemTest, removalLowersTheTotalAndEmptiesTheTable) {
    volume->calctotalsizeex();
    volume->removeChildAndRecalc(g);
    EXPECT_EQ(volume->gettotalsize(), 70);
    EXPECT_FALSE(volume->containsObject(g));
    EXPECT_EQ(table(), Table{});
}

TEST_F(VolumeSystemItemTest, raisedSizeStaysUnlessItIsLarger) {
    volume->raiseSizeOnLevel(2, 50);
    volume->raiseSizeOnLevel(2, 40);
    EXPECT_EQ(table(), (Table{0, 0, 50}));
    volume->raiseSizeOnLevel(2, 60);
    EXPECT_EQ(table(), (Table{0, 0, 60}));
}

TEST_F(VolumeSystemItemTest, levelsBelowTheTableAreNotRaised) {
    volume->raiseSizeOnLevel(kLevelCount, 50);
    volume->raiseSizeOnLevel(100'000, 50);
    EXPECT_EQ(table(), Table{});
    volume->raiseSizeOnLevel(kLevelCount - 1, 50);
    EXPECT_EQ(table()[13], 50);
}

TEST_F(VolumeSystemItemTest, tableStopsAtEntry13OfADeeperTree) {
    auto* const deepest = tree.chain(volume, "x", 40);
    tree.file(deepest, "big", 500);
    EXPECT_EQ(volume->calctotalsizeex(), 600);
    EXPECT_EQ(volume->getChildDepth(), 41);
    EXPECT_EQ(table(), (Table{600, 500, 500, 500, 500, 500, 500, 500, 500, 500, 500, 500, 500, 500}));
}

} // namespace
} // namespace veltrano
