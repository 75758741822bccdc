#include "tree/FolderSystemItem.h"

#include "support/TreeBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace veltrano {
namespace {

using test::TreeBuilder;

static_assert(sizeof(FolderSystemItem) == 64, "A full disk has hundreds of thousands of them.");

constexpr std::size_t kDeep = 100'000; // levels; one call for each would not fit on a thread's stack

class FolderSystemItemTest : public testing::Test {
protected:
    // /r
    // |-- a
    // |   |-- f   10 bytes
    // |   `-- g   5 bytes
    // `-- p       a package of 100 bytes
    TreeBuilder tree{"/r"};
    FolderSystemItem* const root = tree.root();
    FolderSystemItem* const a = tree.folder(root, "a");
    FileSystemItem* const f = tree.file(a, "f", 10);
    FileSystemItem* const g = tree.file(a, "g", 5);
    FolderSystemItem* const p = tree.package(root, "p", 100);

    FolderSystemItem* folderNamed(std::string_view name, bool hidden) {
        return FolderSystemItem::initWithPathSize(tree.arena(), name, root, 0, false, 0, hidden);
    }
    ChildArray* arrayOf(std::initializer_list<FileSystemItem*> items) {
        ChildArray* const array = tree.arena().makeChildArray(static_cast<std::uint32_t>(items.size()));
        std::copy(items.begin(), items.end(), array->items());
        array->count = array->capacity;
        return array;
    }
    FileSystemItem* looseFile(std::string_view name, std::int64_t size) {
        return FileSystemItem::initWithPathSizeNoParent(tree.arena(), name, a, size, 0, false);
    }
};

// --- Creation ---

TEST_F(FolderSystemItemTest, folderJoinsItsParent) {
    EXPECT_EQ(a->getParent(), root);
    EXPECT_TRUE(root->containsObject(a));
}

TEST_F(FolderSystemItemTest, formOfTheWorkersLeavesTheParentsChildrenAlone) {
    auto* const folder =
        FolderSystemItem::initWithPathSizeNoParent(tree.arena(), "b", root, 3, false, 9, true);
    EXPECT_EQ(folder->getParent(), root);
    EXPECT_FALSE(root->containsObject(folder));
    EXPECT_EQ(folder->gettotalsize(), 3);
    EXPECT_EQ(folder->getTimeCode(), 9);
    EXPECT_TRUE(folder->isHiddenFlag());
    EXPECT_FALSE(folder->isPack());
}

TEST_F(FolderSystemItemTest, bothFormsMakePackages) {
    TreeArena& arena = tree.arena();
    EXPECT_TRUE(FolderSystemItem::initWithPathSize(arena, "q", root, 0, true, 0, false)->isPack());
    EXPECT_TRUE(FolderSystemItem::initWithPathSizeNoParent(arena, "q", root, 0, true, 0, false)->isPack());
}

TEST_F(FolderSystemItemTest, folderTakesOverAnArrayAndBecomesTheParentOfItsItems) {
    ChildArray* const array = arrayOf({f, g});
    auto* const folder =
        FolderSystemItem::initWithPathSize(tree.arena(), "b", root, 15, false, array, 2, false);
    EXPECT_EQ(folder->childrenArray(), array);
    EXPECT_EQ(f->getParent(), folder);
    EXPECT_EQ(g->getParent(), folder);
    EXPECT_FALSE(root->containsObject(folder));
}

TEST_F(FolderSystemItemTest, packageIgnoresTheArrayItIsGiven) {
    auto* const package =
        FolderSystemItem::initWithPathSize(tree.arena(), "b", root, 15, true, arrayOf({f}), 2, false);
    EXPECT_TRUE(package->isPack());
    EXPECT_EQ(package->numberOfChildren(), 0u);
    EXPECT_EQ(f->getParent(), a);
}

TEST_F(FolderSystemItemTest, folderWithAnArrayIsNoTrashWhateverItsName) {
    auto* const folder =
        FolderSystemItem::initWithPathSize(tree.arena(), ".Trash", root, 0, false, nullptr, 2, true);
    EXPECT_FALSE(folder->isTrashFlag());
}

// --- Trash ---

TEST_F(FolderSystemItemTest, hiddenFolderWithATrashNameIsTrash) {
    EXPECT_TRUE(folderNamed(".Trash", true)->isTrashFlag());
    EXPECT_TRUE(folderNamed(".Trashes", true)->isTrashFlag());
}

TEST_F(FolderSystemItemTest, formOfTheWorkersTestsForTrashToo) {
    EXPECT_TRUE(FolderSystemItem::initWithPathSizeNoParent(tree.arena(), ".Trash", root, 0, false, 0, true)
                    ->isTrashFlag());
}

TEST_F(FolderSystemItemTest, lastComponentOfARootsNameMakesItTrash) {
    EXPECT_TRUE(FolderSystemItem::initWithPathSize(tree.arena(), "/home/.Trash", nullptr, 0, false, 0, true)
                    ->isTrashFlag());
}

TEST_F(FolderSystemItemTest, visibleFolderWithATrashNameIsNotTrash) {
    EXPECT_FALSE(folderNamed(".Trash", false)->isTrashFlag());
    EXPECT_FALSE(folderNamed(".Trashes", false)->isTrashFlag());
}

TEST_F(FolderSystemItemTest, trashNameIsComparedExactly) {
    for (const char* name : {".trash", ".TRASH", "Trash", ".Trash2", ".Trashe", "x.Trash", ""})
        EXPECT_FALSE(folderNamed(name, true)->isTrashFlag()) << name;
}

// --- Children ---

TEST_F(FolderSystemItemTest, newFolderHasNoArray) {
    auto* const folder = tree.folder(root, "b");
    EXPECT_EQ(folder->childrenArray(), nullptr);
    EXPECT_EQ(folder->numberOfChildren(), 0u);
    EXPECT_EQ(folder->childAtIndex(0), nullptr);
    EXPECT_FALSE(folder->containsObject(f));
}

TEST_F(FolderSystemItemTest, firstChildMakesAnArrayForOne) {
    auto* const folder = tree.folder(root, "b");
    folder->addChild(f);
    EXPECT_EQ(folder->childrenArray()->capacity, 1u);
}

TEST_F(FolderSystemItemTest, childrenStandInTheOrderOfArrival) {
    ASSERT_EQ(a->numberOfChildren(), 2u);
    EXPECT_EQ(a->childAtIndex(0), f);
    EXPECT_EQ(a->childAtIndex(1), g);
    EXPECT_EQ(a->childAtIndex(2), nullptr);
}

TEST_F(FolderSystemItemTest, addedChildMovesNoTotal) {
    a->addChild(looseFile("h", 7));
    EXPECT_EQ(a->gettotalsize(), 0);
    EXPECT_EQ(root->gettotalsize(), 0);
}

TEST_F(FolderSystemItemTest, emptyFolderAdoptsABatch) {
    auto* const folder = tree.folder(root, "b");
    ChildArray* const batch = arrayOf({f, g});
    folder->addChildren(batch);
    EXPECT_EQ(folder->childrenArray(), batch);
    EXPECT_EQ(folder->numberOfChildren(), 2u);
}

TEST_F(FolderSystemItemTest, batchIsAppendedToTheChildrenThereAre) {
    auto* const h = looseFile("h", 1);
    auto* const i = looseFile("i", 1);
    a->addChildren(arrayOf({h, i}));
    const ChildArray& children = *a->childrenArray();
    EXPECT_EQ(std::vector<FileSystemItem*>(children.begin(), children.end()),
              (std::vector<FileSystemItem*>{f, g, h, i}));
}

TEST_F(FolderSystemItemTest, childrenCanBeAddedToAnAdoptedBatch) {
    auto* const folder = tree.folder(root, "b");
    folder->addChildren(arrayOf({f}));
    folder->addChild(g);
    folder->addChildren(arrayOf({f, g}));
    EXPECT_EQ(folder->numberOfChildren(), 4u);
    EXPECT_EQ(folder->childAtIndex(1), g);
    EXPECT_EQ(folder->childAtIndex(3), g);
}

TEST_F(FolderSystemItemTest, emptyBatchChangesNothing) {
    auto* const folder = tree.folder(root, "b");
    folder->addChildren(arrayOf({}));
    folder->addChildren(nullptr);
    EXPECT_EQ(folder->childrenArray(), nullptr);
}

TEST_F(FolderSystemItemTest, removedChildLeavesEveryTimeItStands) {
    a->addChild(f);
    a->removeChild(f);
    ASSERT_EQ(a->numberOfChildren(), 1u);
    EXPECT_EQ(a->childAtIndex(0), g);
}

TEST_F(FolderSystemItemTest, removedChildMovesNoTotal) {
    tree.recount();
    a->removeChild(f);
    EXPECT_EQ(a->gettotalsize(), 15);
}

TEST_F(FolderSystemItemTest, removalOfAStrangerChangesNothing) {
    a->removeChild(p);
    EXPECT_EQ(a->numberOfChildren(), 2u);
    auto* const empty = tree.folder(root, "b");
    empty->removeChild(p);
    EXPECT_EQ(empty->numberOfChildren(), 0u);
}

TEST_F(FolderSystemItemTest, removalWithRecalcLowersTheTotalsOfAllAncestors) {
    tree.recount();
    a->removeChildAndRecalc(f);
    EXPECT_EQ(a->gettotalsize(), 5);
    EXPECT_EQ(root->gettotalsize(), 105);
    EXPECT_FALSE(a->containsObject(f));
}

TEST_F(FolderSystemItemTest, newChildStandsInThePlaceOfTheOld) {
    auto* const h = looseFile("h", 1);
    a->replaceChild(f, h);
    EXPECT_EQ(a->childAtIndex(0), h);
    EXPECT_EQ(a->childAtIndex(1), g);
    EXPECT_EQ(a->numberOfChildren(), 2u);
}

TEST_F(FolderSystemItemTest, strangerIsNotReplaced) {
    auto* const h = looseFile("h", 1);
    a->replaceChild(p, h);
    EXPECT_FALSE(a->containsObject(h));
    auto* const empty = tree.folder(root, "b");
    empty->replaceChild(p, h);
    EXPECT_EQ(empty->numberOfChildren(), 0u);
}

TEST_F(FolderSystemItemTest, folderHoldsAMillionChildren) {
    constexpr std::size_t kMany = 1'000'000;
    auto* const folder = tree.folder(root, "many");
    for (std::size_t index = 0; index < kMany; ++index)
        folder->addChild(f);
    ASSERT_EQ(folder->numberOfChildren(), kMany);
    EXPECT_EQ(folder->calctotalsize(), 10 * static_cast<std::int64_t>(kMany));
    EXPECT_EQ(folder->childAtIndex(kMany - 1), f);
    folder->removeChild(f);
    EXPECT_EQ(folder->numberOfChildren(), 0u);
}

// --- Packages ---

TEST_F(FolderSystemItemTest, packageIsADirectoryWithoutNodes) {
    EXPECT_TRUE(p->isPack());
    EXPECT_TRUE(p->isDir());
    EXPECT_EQ(p->numberOfChildren(), 0u);
    EXPECT_EQ(p->childAtIndex(0), nullptr);
    EXPECT_FALSE(p->containsObject(f));
}

TEST_F(FolderSystemItemTest, plainFolderIsADirectoryAndNoPackage) {
    EXPECT_TRUE(a->isDir());
    EXPECT_FALSE(a->isPack());
    EXPECT_FALSE(tree.folder(root, "empty")->isPack());
}

TEST_F(FolderSystemItemTest, folderCanBeMadeAPackage) {
    auto* const folder = tree.folder(root, "b");
    folder->SetitsLeafPackage();
    EXPECT_TRUE(folder->isPack());
    EXPECT_FALSE(a->isPack());
}

TEST_F(FolderSystemItemTest, recountOfAPackageIsItsRunningSum) {
    auto* const package = FolderSystemItem::initWithPathSize(tree.arena(), "q", root, 777, true, 0, false);
    package->addFileSizeForAll(30);
    package->addFileSizeForAll(12);
    EXPECT_EQ(package->gettotalsize(), 777);
    EXPECT_EQ(package->getAddSize(), 42);
    EXPECT_EQ(package->calctotalsize(), 42);
    EXPECT_EQ(package->gettotalsize(), 42);
}

TEST_F(FolderSystemItemTest, addFileSizeForAllOnAPackageLeavesItsAncestorsAlone) {
    tree.recount();
    p->addFileSizeForAll(30);
    EXPECT_EQ(root->gettotalsize(), 115);
}

TEST_F(FolderSystemItemTest, addFileSizeForAllOnAPlainFolderIsAMisuseThatChangesNothing) {
    tree.recount();
    testing::internal::CaptureStderr();
    a->addFileSizeForAll(30);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "ERROR! called function not for package\n");
    EXPECT_EQ(a->getAddSize(), 0);
    EXPECT_EQ(a->gettotalsize(), 15);
    EXPECT_EQ(root->gettotalsize(), 115);
}

// --- Totals ---

TEST_F(FolderSystemItemTest, recountAddsUpFromTheLeaves) {
    EXPECT_EQ(root->calctotalsize(), 115);
    EXPECT_EQ(root->gettotalsize(), 115);
    EXPECT_EQ(a->gettotalsize(), 15);
}

TEST_F(FolderSystemItemTest, extendedRecountOfAFolderIsTheRecount) {
    EXPECT_EQ(root->calctotalsizeex(), 115);
    EXPECT_EQ(a->gettotalsize(), 15);
}

TEST_F(FolderSystemItemTest, recountThrowsAFoldersOwnSizeAway) {
    auto* const folder = FolderSystemItem::initWithPathSize(tree.arena(), "b", root, 4096, false, 0, false);
    EXPECT_EQ(folder->calctotalsize(), 0);
    EXPECT_EQ(root->calctotalsize(), 115);
}

TEST_F(FolderSystemItemTest, recountTwiceGivesTheSame) {
    root->calctotalsize();
    EXPECT_EQ(root->calctotalsize(), 115);
}

TEST_F(FolderSystemItemTest, recountTakesANegativeFileAsNothing) {
    tree.file(a, "n", -1);
    EXPECT_EQ(a->calctotalsize(), 15);
}

TEST_F(FolderSystemItemTest, recountSkipsAPlaceWithoutAChild) {
    a->replaceChild(f, nullptr);
    std::array<std::int64_t, kLevelCount> table{};
    EXPECT_EQ(a->calctotalsize(), 5);
    EXPECT_EQ(a->calcTotalSizeWithMaxSizes(table, 0), 5);
    EXPECT_EQ(a->calcChildDepth(), 1);
}

TEST_F(FolderSystemItemTest, totalsBeyondWhatADoubleHoldsAreExact) {
    constexpr std::int64_t kBig = std::int64_t{1} << 60;
    tree.package(root, "big", kBig);
    tree.file(a, "huge", kBig);
    EXPECT_EQ(root->calctotalsize(), 2 * kBig + 115);
    a->decreaseTotalSize(1);
    EXPECT_EQ(root->gettotalsize(), 2 * kBig + 114);
}

TEST_F(FolderSystemItemTest, recountWithLevelSizesNotesTheLargestOfEachLevel) {
    std::array<std::int64_t, kLevelCount> table{};
    EXPECT_EQ(root->calcTotalSizeWithMaxSizes(table, 0), 115);
    std::array<std::int64_t, kLevelCount> expected{115, 100, 10};
    EXPECT_EQ(table, expected);
    EXPECT_EQ(a->gettotalsize(), 15);
}

TEST_F(FolderSystemItemTest, recountWithLevelSizesStartsAtTheGivenLevel) {
    std::array<std::int64_t, kLevelCount> table{};
    root->calcTotalSizeWithMaxSizes(table, 12);
    std::array<std::int64_t, kLevelCount> expected{};
    expected[12] = 115;
    expected[13] = 100;
    EXPECT_EQ(table, expected);
}

TEST_F(FolderSystemItemTest, recountWithLevelSizesOfAPackageTakesItsRunningSum) {
    p->addFileSizeForAll(11);
    std::array<std::int64_t, kLevelCount> table{};
    EXPECT_EQ(p->calcTotalSizeWithMaxSizes(table, 1), 111);
    EXPECT_EQ(p->gettotalsize(), 111);
    EXPECT_EQ(table[1], 111);
}

TEST_F(FolderSystemItemTest, levelsBelowTheTableAreSummedWithoutAMark) {
    const TreeBuilder deep("/d");
    deep.file(deep.chain(deep.root(), "x", 20), "f", 9);
    std::array<std::int64_t, kLevelCount> table{};
    EXPECT_EQ(deep.root()->calcTotalSizeWithMaxSizes(table, 0), 9);
    EXPECT_TRUE(std::all_of(table.begin(), table.end(), [](std::int64_t size) { return size == 9; }));
}

TEST_F(FolderSystemItemTest, changesOfASizeReachTheRoot) {
    tree.recount();
    a->decreaseTotalSize(5);
    EXPECT_EQ(a->gettotalsize(), 10);
    EXPECT_EQ(root->gettotalsize(), 110);
    a->increaseTotalSize(7);
    EXPECT_EQ(a->gettotalsize(), 17);
    EXPECT_EQ(root->gettotalsize(), 117);
    EXPECT_EQ(p->gettotalsize(), 100);
}

TEST_F(FolderSystemItemTest, addFileSizeChangesThisFolderOnly) {
    tree.recount();
    a->addFileSize(7);
    EXPECT_EQ(a->gettotalsize(), 22);
    EXPECT_EQ(root->gettotalsize(), 115);
}

TEST_F(FolderSystemItemTest, folderAnswersItsTotalForEverySize) {
    tree.recount();
    EXPECT_EQ(a->getWholeItemSize(), 15);
    EXPECT_EQ(a->getChildrenCountedSize(), 15);
    EXPECT_EQ(a->getOccSize(), 15);
    EXPECT_EQ(a->getTheSize(), 15);
    EXPECT_EQ(a->getFullRatio(), 1.0);
}

// --- Depth and levels ---

TEST_F(FolderSystemItemTest, depthCountsTheLevelsBelow) {
    EXPECT_EQ(a->calcChildDepth(), 1);
    EXPECT_EQ(root->calcChildDepth(), 2);
    EXPECT_EQ(root->getChildDepth(), 2);
    tree.chain(a, "x", 3);
    EXPECT_EQ(root->calcChildDepth(), 4);
}

TEST_F(FolderSystemItemTest, emptyFolderHasNoDepth) {
    EXPECT_EQ(tree.folder(root, "b")->calcChildDepth(), 0);
}

TEST_F(FolderSystemItemTest, packageHasNoDepth) {
    EXPECT_EQ(p->calcChildDepth(), 0);
    const TreeBuilder other("/o");
    other.package(other.root(), "p", 1);
    EXPECT_EQ(other.root()->calcChildDepth(), 1);
}

TEST_F(FolderSystemItemTest, levelsToTheParentAreOne) {
    EXPECT_EQ(a->calcLevelsToParent(root), 1);
    EXPECT_EQ(tree.chain(a, "x", 3)->calcLevelsToParent(root), 4);
}

TEST_F(FolderSystemItemTest, levelsToAStrangerAreNegative) {
    EXPECT_EQ(root->calcLevelsToParent(a), -1000);
    EXPECT_EQ(a->calcLevelsToParent(p), -999);
    EXPECT_EQ(tree.folder(a, "b")->calcLevelsToParent(p), -998);
    EXPECT_EQ(a->calcLevelsToParent(a), -999);
    EXPECT_EQ(a->calcLevelsToParent(nullptr), -999);
}

TEST_F(FolderSystemItemTest, topParentIsTheRoot) {
    EXPECT_EQ(tree.chain(a, "x", 3)->getTopParent(), root);
    EXPECT_EQ(root->getTopParent(), root);
}

TEST_F(FolderSystemItemTest, treeDeeperThanTheStackIsCounted) {
    auto* const deepest = tree.chain(root, "x", kDeep);
    tree.file(deepest, "f", 3);
    EXPECT_EQ(root->calctotalsize(), 118);
    EXPECT_EQ(deepest->gettotalsize(), 3);
    std::array<std::int64_t, kLevelCount> table{};
    EXPECT_EQ(root->calcTotalSizeWithMaxSizes(table, 0), 118);
    EXPECT_EQ(table[13], 3);
    const auto depth = static_cast<std::int64_t>(kDeep) + 1;
    EXPECT_EQ(root->calcChildDepth(), depth);
    EXPECT_EQ(deepest->calcLevelsToParent(root), depth - 1);
    EXPECT_EQ(deepest->getTopParent(), root);
}

// --- The face it shares with a sidebar entry ---

TEST_F(FolderSystemItemTest, folderIsItselfAndNoOther) {
    EXPECT_TRUE(a->isMe(a));
    EXPECT_FALSE(a->isMe(root));
    EXPECT_FALSE(a->isMe(f));
    EXPECT_FALSE(a->isMe(nullptr));
    EXPECT_EQ(a->getObject(), static_cast<TreeObject*>(a));
}

TEST_F(FolderSystemItemTest, folderIsScannedAndNoVolume) {
    EXPECT_TRUE(a->isScanned());
    EXPECT_FALSE(a->isVol());
    EXPECT_FALSE(a->isNotScannedVolume());
}

TEST_F(FolderSystemItemTest, folderHasNoFreeSector) {
    a->setUseFreeSector(true);
    EXPECT_FALSE(a->getUseFreeSector());
}

TEST_F(FolderSystemItemTest, folderKeepsNoLevelTable) {
    a->initSizesByLevels();
    a->raiseSizeOnLevel(0, 5);
    EXPECT_FALSE(a->isMaxSizesValid());
    EXPECT_EQ(a->getMaxSizesByLevels(), nullptr);
}

TEST_F(FolderSystemItemTest, folderAnswersAlikeThroughBothBases) {
    a->setCollected(true);
    const VolumeFolderProtocol& face = *a;
    const FileSystemItem& item = *a;
    EXPECT_EQ(face.getFullPath(), item.getFullPath());
    EXPECT_EQ(face.getDisplayName(), item.getDisplayName());
    EXPECT_EQ(face.relativePath(), item.relativePath());
    EXPECT_EQ(face.getParent(), item.getParent());
    EXPECT_EQ(face.getTimeCode(), item.getTimeCode());
    EXPECT_TRUE(face.isCollected());
    EXPECT_TRUE(face.isTopCollected());
    EXPECT_FALSE(face.isHiddenFlag());
    EXPECT_FALSE(face.isTopHiddenFlag());
    EXPECT_FALSE(face.isTopTrashFlag());
    EXPECT_EQ(a->asFolderSystemItem(), a);
}

} // namespace
} // namespace veltrano
