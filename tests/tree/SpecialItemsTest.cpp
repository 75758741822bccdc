#include "tree/SpecialItems.h"

#include "support/TreeBuilder.h"

#include <gtest/gtest.h>

#include <array>

namespace veltrano {
namespace {

using test::TreeBuilder;

class SpecialItemsTest : public testing::Test {
protected:
    TreeBuilder tree{"/r"};
    FolderSystemItem* const root = tree.root();
    FolderSystemItem* const a = tree.folder(root, "a");
    TreeArena& arena = tree.arena();
};

// --- Unscanned space ---

TEST_F(SpecialItemsTest, unscannedSpaceShowsItsDescription) {
    std::string text = "Unscanned Disk Space";
    auto* const item = FSUnscannedItem::initWithParent(arena, root, text, 50);
    text.clear();
    EXPECT_EQ(item->getDesc(), "Unscanned Disk Space");
}

TEST_F(SpecialItemsTest, unscannedSpaceJoinsItsParentWithoutAName) {
    auto* const item = FSUnscannedItem::initWithParent(arena, root, "text", 50);
    EXPECT_TRUE(root->containsObject(item));
    EXPECT_EQ(item->getParent(), root);
    EXPECT_EQ(item->relativePath(), "");
    EXPECT_EQ(item->getTimeCode(), 0);
    EXPECT_FALSE(item->isHiddenFlag());
}

TEST_F(SpecialItemsTest, unscannedSpaceIsToldByItsTypeTestAlone) {
    const FileSystemItem* const item = FSUnscannedItem::initWithParent(arena, root, "text", 50);
    EXPECT_TRUE(item->isUnscanned());
    EXPECT_FALSE(item->isHidden());
    EXPECT_FALSE(item->isDir());
    EXPECT_FALSE(item->isFileVaultDir());
}

TEST_F(SpecialItemsTest, unscannedSpaceCountsWithItsSize) {
    FSUnscannedItem::initWithParent(arena, root, "text", 50);
    EXPECT_EQ(root->calctotalsize(), 50);
}

TEST_F(SpecialItemsTest, unscannedSpaceIsFoundByNoPath) {
    FSUnscannedItem::initWithParent(arena, a, "text", 50);
    EXPECT_EQ(root->getItemByFilePath("/r/a/"), a);
    EXPECT_EQ(root->getItemByFilePath("/r/a/text"), nullptr);
    EXPECT_EQ(root->getItemByFilePath("/r/a//x"), nullptr);
}

// --- Aggregates of hidden files ---

TEST_F(SpecialItemsTest, newAggregateHasCountedNothing) {
    auto* const item = FileSystemHiddenItem::initWithPathSize(arena, "h", a, 77);
    EXPECT_EQ(item->getHiddenCount(), 0u);
    EXPECT_EQ(item->gettotalsize(), 77);
    EXPECT_EQ(item->calctotalsize(), 0);
    EXPECT_EQ(item->getTimeCode(), 0);
    EXPECT_FALSE(item->isHiddenFlag());
    EXPECT_TRUE(a->containsObject(item));
}

TEST_F(SpecialItemsTest, aggregateOfTheWorkersLeavesTheParentsChildrenAlone) {
    auto* const item = FileSystemHiddenItem::initWithPathSizeNoParent(arena, "h", a, 77);
    EXPECT_EQ(item->getParent(), a);
    EXPECT_FALSE(a->containsObject(item));
}

TEST_F(SpecialItemsTest, sumOfAnAggregateStartsAtItsSizeWhateverTheLastArgument) {
    auto* const item = FileSystemHiddenItem::initWithPathSize(arena, "h", a, 77, 3, 999);
    EXPECT_EQ(item->getHiddenCount(), 3u);
    EXPECT_EQ(item->calctotalsize(), 77);
    EXPECT_TRUE(a->containsObject(item));
}

TEST_F(SpecialItemsTest, addFileSizeRaisesSizeAndCount) {
    auto* const item = FileSystemHiddenItem::initWithPathSize(arena, "h", a, 0);
    item->addFileSize(5);
    item->addHiddenItem(6);
    EXPECT_EQ(item->getHiddenCount(), 2u);
    EXPECT_EQ(item->calctotalsize(), 11);
}

TEST_F(SpecialItemsTest, addFileSizeForAllRaisesTheSizeButNotTheCount) {
    auto* const item = FileSystemHiddenItem::initWithPathSize(arena, "h", a, 0);
    item->addFileSizeForAll(5);
    EXPECT_EQ(item->getHiddenCount(), 0u);
    EXPECT_EQ(item->calctotalsize(), 5);
    EXPECT_EQ(a->gettotalsize(), 0);
}

TEST_F(SpecialItemsTest, recountOfAnAggregateStoresItsSum) {
    auto* const item = FileSystemHiddenItem::initWithPathSize(arena, "h", a, 0);
    item->addFileSize(5);
    EXPECT_EQ(item->gettotalsize(), 0);
    std::array<std::int64_t, kLevelCount> table{};
    EXPECT_EQ(item->calcTotalSizeWithMaxSizes(table, 2), 5);
    EXPECT_EQ(item->gettotalsize(), 5);
    EXPECT_EQ(table[2], 5);
}

TEST_F(SpecialItemsTest, aggregateIsAnAggregateAndNothingElse) {
    const FileSystemItem* const item = FileSystemHiddenItem::initWithPathSize(arena, "h", a, 0);
    EXPECT_TRUE(item->isHidden());
    EXPECT_FALSE(item->isUnscanned());
    EXPECT_FALSE(item->isDir());
}

TEST_F(SpecialItemsTest, searchPassesOverAnAggregateThatHasAName) {
    FileSystemHiddenItem::initWithPathSize(arena, "h", a, 0);
    EXPECT_EQ(root->getItemByFilePath("/r/a/h"), nullptr);
    auto* const file = tree.file(a, "h", 1);
    EXPECT_EQ(root->getItemByFilePath("/r/a/h"), file);
}

TEST_F(SpecialItemsTest, searchPassesOverAnAggregateWithoutAName) {
    auto* const item = FileSystemHiddenItem::initWithPathSize(arena, "h", a, 0);
    item->setHiddenName();
    EXPECT_EQ(item->relativePath().data(), nullptr);
    EXPECT_EQ(item->fullPath(), "/r/a");
    EXPECT_EQ(root->getItemByFilePath("/r/a/h"), nullptr);
}

TEST_F(SpecialItemsTest, nameOfAnAggregateIsReplacedByACopy) {
    auto* const item = FileSystemHiddenItem::initWithPathSize(arena, "h", a, 0);
    std::string name = "other";
    item->setRelPath(name);
    name = "XXXXX";
    EXPECT_EQ(item->relativePath(), "other");
}

// --- Protected home folders ---

TEST_F(SpecialItemsTest, protectedHomeLinksToItsVolume) {
    std::string link = "/mnt/home";
    auto* const item = FileVaultDirItem::initWithPathSize(arena, "home", a, 8, link);
    link.clear();
    EXPECT_EQ(item->getVolumeLinkPath(), "/mnt/home");
    EXPECT_TRUE(a->containsObject(item));
    EXPECT_EQ(item->getTimeCode(), 0);
    EXPECT_FALSE(item->isHiddenFlag());
    EXPECT_EQ(root->getItemByFilePath("/r/a/home"), item);
}

TEST_F(SpecialItemsTest, protectedHomeKeepsASum) {
    auto* const item = FileVaultDirItem::initWithPathSize(arena, "home", a, 8, "/mnt/home");
    item->addFileSize(4);
    EXPECT_EQ(item->gettotalsize(), 12);
    EXPECT_EQ(root->calctotalsize(), 12);
}

TEST_F(SpecialItemsTest, protectedHomeIsToldByItsTypeTestAlone) {
    const FileSystemItem* const item = FileVaultDirItem::initWithPathSize(arena, "home", a, 8, "/mnt/home");
    EXPECT_TRUE(item->isFileVaultDir());
    EXPECT_FALSE(item->isDir());
    EXPECT_FALSE(item->isHidden());
}

// --- Items outside any tree ---

TEST_F(SpecialItemsTest, itemOutsideATreeAnswersTheStoredPath) {
    std::string path = "/some/where/file";
    auto* const item = FileSystemItemSirota::initWithPathSize(arena, "file", path, 3, false);
    path.clear();
    EXPECT_EQ(item->getParent(), nullptr);
    EXPECT_EQ(item->getFullPath(), "/some/where/file");
    EXPECT_EQ(item->fullPath(), "file");
    EXPECT_EQ(item->getDisplayName(), "file");
}

TEST_F(SpecialItemsTest, itemOutsideATreeIsADirectoryWhenMadeAsOne) {
    EXPECT_TRUE(FileSystemItemSirota::initWithPathSize(arena, "d", "/d", 0, true)->isDir());
    EXPECT_FALSE(FileSystemItemSirota::initWithPathSize(arena, "d", "/d", 0, false)->isDir());
}

TEST_F(SpecialItemsTest, itemOutsideATreeIsHiddenByADotAtTheStartOfItsLastComponent) {
    auto hidden = [&](std::string_view name) {
        return FileSystemItemSirota::initWithPathSize(arena, name, "/x", 0, false)->isHiddenFlag();
    };
    EXPECT_TRUE(hidden(".profile"));
    EXPECT_TRUE(hidden("/home/.profile"));
    EXPECT_FALSE(hidden("profile."));
    EXPECT_FALSE(hidden("/.home/profile"));
}

TEST_F(SpecialItemsTest, itemOutsideATreeWithoutASizeCountsAsNothing) {
    auto* const item = FileSystemItemSirota::initWithPathSize(arena, "d", "/d", -1, true);
    EXPECT_EQ(item->gettotalsize(), -1);
    EXPECT_EQ(item->calctotalsize(), 0);
}

} // namespace
} // namespace veltrano
