#include "tree/FileSystemItem.h"

#include "support/TreeBuilder.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace veltrano {
namespace {

using test::TreeBuilder;

static_assert(sizeof(FileSystemItem) == 40, "A full disk has millions of them.");

class FileSystemItemTest : public testing::Test {
protected:
    // /r
    // `-- a
    //     `-- f   10 bytes
    TreeBuilder tree{"/r"};
    FolderSystemItem* const root = tree.root();
    FolderSystemItem* const a = tree.folder(root, "a");
    FileSystemItem* const f = tree.file(a, "f", 10);

    FileSystemItem* fileWithTimeCode(std::uint8_t code, bool hidden = false) {
        return FileSystemItem::initWithPathSize(tree.arena(), "t", a, 1, code, hidden);
    }
};

// --- Creation ---

TEST_F(FileSystemItemTest, itemJoinsItsParent) {
    ASSERT_EQ(a->numberOfChildren(), 1u);
    EXPECT_EQ(a->childAtIndex(0), f);
    EXPECT_EQ(f->getParent(), a);
}

TEST_F(FileSystemItemTest, formOfTheWorkersLeavesTheParentsChildrenAlone) {
    auto* const item = FileSystemItem::initWithPathSizeNoParent(tree.arena(), "g", a, 5, 1, false);
    EXPECT_EQ(item->getParent(), a);
    EXPECT_FALSE(a->containsObject(item));
}

TEST_F(FileSystemItemTest, itemWithoutParentIsARoot) {
    auto* const item = FileSystemItem::initWithPathSize(tree.arena(), "/alone", nullptr, 5, 1, false);
    EXPECT_EQ(item->getParent(), nullptr);
    EXPECT_EQ(item->getFullPath(), "/alone");
}

TEST_F(FileSystemItemTest, nameIsCopied) {
    std::string name = "before";
    auto* const item = tree.file(a, name, 1);
    name = "after!";
    EXPECT_EQ(item->relativePath(), "before");
}

TEST_F(FileSystemItemTest, timeCodeOf16OrMoreKeepsItsLowFourBitsAndSetsNoFlag) {
    for (int code = 16; code < 256; ++code) {
        auto* const item = fileWithTimeCode(static_cast<std::uint8_t>(code));
        EXPECT_EQ(item->getTimeCode(), code % 16);
        EXPECT_FALSE(item->isCollected());
        EXPECT_FALSE(item->isHiddenFlag());
        EXPECT_FALSE(item->isTrashFlag());
        EXPECT_FALSE(item->isCountedFlag());
    }
}

TEST_F(FileSystemItemTest, hiddenFlagComesFromItsOwnArgument) {
    EXPECT_TRUE(fileWithTimeCode(3, true)->isHiddenFlag());
    EXPECT_EQ(fileWithTimeCode(3, true)->getTimeCode(), 3);
    EXPECT_FALSE(fileWithTimeCode(3, false)->isHiddenFlag());
}

// --- Flags ---

struct Flag {
    const char* name;
    void (FileSystemItem::*set)(bool);
    bool (FileSystemItem::*own)() const;
    bool (FileSystemItem::*upwards)() const;
};

class FlagTest : public FileSystemItemTest, public testing::WithParamInterface<Flag> {
protected:
    static void set(FileSystemItem* item, bool value) { (item->*GetParam().set)(value); }
    static bool own(const FileSystemItem* item) { return (item->*GetParam().own)(); }
    static bool upwards(const FileSystemItem* item) { return (item->*GetParam().upwards)(); }
};

TEST_P(FlagTest, isReadAsItWasSetAndLeavesAllElseAlone) {
    FileSystemItem* const item = fileWithTimeCode(5);
    set(item, true);
    EXPECT_TRUE(own(item));
    EXPECT_EQ(item->getTimeCode(), 5);
    EXPECT_EQ(item->isCollected() + item->isHiddenFlag() + item->isTrashFlag() + item->isCountedFlag(), 1);
    set(item, false);
    EXPECT_FALSE(own(item));
    EXPECT_EQ(item->getTimeCode(), 5);
}

TEST_P(FlagTest, ofAFolderHoldsForAllBelowWhichStoreNothing) {
    set(root, true);
    EXPECT_TRUE(upwards(f));
    EXPECT_TRUE(upwards(a));
    EXPECT_FALSE(own(f));
    EXPECT_FALSE(own(a));
}

TEST_P(FlagTest, ofAnItemHoldsForItselfAndNotForWhatIsAbove) {
    set(f, true);
    EXPECT_TRUE(upwards(f));
    EXPECT_FALSE(upwards(a));
}

INSTANTIATE_TEST_SUITE_P(EveryFlag, FlagTest,
                         testing::Values(Flag{"Collected", &FileSystemItem::setCollected,
                                              &FileSystemItem::isCollected, &FileSystemItem::isTopCollected},
                                         Flag{"Hidden", &FileSystemItem::setHiddenFlag,
                                              &FileSystemItem::isHiddenFlag,
                                              &FileSystemItem::isTopHiddenFlag},
                                         Flag{"Trash", &FileSystemItem::setTrashFlag,
                                              &FileSystemItem::isTrashFlag, &FileSystemItem::isTopTrashFlag}),
                         [](const auto& row) { return row.param.name; });

TEST_F(FileSystemItemTest, fileUnderAHiddenFolderIsHiddenFromAboveOnly) {
    auto* const hidden = tree.hiddenFolder(root, ".h");
    auto* const item = tree.file(hidden, "plain", 1);
    EXPECT_TRUE(item->isTopHiddenFlag());
    EXPECT_FALSE(item->isHiddenFlag());
    EXPECT_FALSE(item->isHidden());
}

// --- Paths ---

TEST_F(FileSystemItemTest, rootPathIsItsNameUnchanged) {
    for (const char* path : {"/", "/r", "/mnt/disk/", "relative", ""})
        EXPECT_EQ(TreeBuilder(path).root()->fullPath(), path);
}

TEST_F(FileSystemItemTest, childOfRootHasOneLeadingSeparator) {
    const TreeBuilder slash("/");
    EXPECT_EQ(slash.file(slash.root(), "a", 1)->fullPath(), "/a");
}

TEST_F(FileSystemItemTest, fullPathJoinsTheNamesFromTheRootDown) {
    EXPECT_EQ(f->fullPath(), "/r/a/f");
    EXPECT_EQ(f->getFullPath(), "/r/a/f");
    EXPECT_EQ(a->getFullPath(), "/r/a");
}

TEST_F(FileSystemItemTest, rootWithATrailingSeparatorGetsNoSecondOne) {
    const TreeBuilder trailing("/mnt/disk/");
    EXPECT_EQ(trailing.file(trailing.root(), "a", 1)->fullPath(), "/mnt/disk/a");
}

TEST_F(FileSystemItemTest, emptyNameAddsNothingToThePath) {
    EXPECT_EQ(tree.file(a, "", 1)->fullPath(), "/r/a");
}

TEST_F(FileSystemItemTest, nameKeepsEveryByte) {
    for (const std::string& name :
         {std::string("line\nbreak"), std::string("\xff\xfe\x80"), std::string("a:b"),
          std::string(255, '\xe4'), std::string(" "), std::string("\xc3\xa4\xcc\x88")}) {
        auto* const item = tree.file(a, name, 1);
        EXPECT_EQ(item->relativePath(), name);
        EXPECT_EQ(item->fullPath(), "/r/a/" + name);
        EXPECT_EQ(root->getItemByFilePath("/r/a/" + name), item);
    }
}

TEST_F(FileSystemItemTest, displayNameIsTheLastComponentOfThePath) {
    EXPECT_EQ(f->getDisplayName(), "f");
    EXPECT_EQ(a->getDisplayName(), "a");
    EXPECT_EQ(TreeBuilder("/").root()->getDisplayName(), "/");
    EXPECT_EQ(TreeBuilder("/home/someone").root()->getDisplayName(), "someone");
}

TEST_F(FileSystemItemTest, pathOf100000FoldersIsBuilt) {
    auto* const deepest = tree.chain(root, "x", 100'000);
    const std::string path = deepest->fullPath();
    EXPECT_EQ(path.size(), 2u + 2u * 100'000u);
    EXPECT_TRUE(path.starts_with("/r/x/x/"));
    EXPECT_TRUE(path.ends_with("/x/x"));
}

// --- Ancestors ---

TEST_F(FileSystemItemTest, parentAndEveryAncestorIsMyParent) {
    EXPECT_TRUE(f->isMyParent(a));
    EXPECT_TRUE(f->isMyParent(root));
}

TEST_F(FileSystemItemTest, neitherItselfNorAStrangerIsMyParent) {
    EXPECT_FALSE(f->isMyParent(f));
    EXPECT_FALSE(f->isMyParent(tree.folder(root, "b")));
    EXPECT_FALSE(f->isMyParent(nullptr));
}

TEST_F(FileSystemItemTest, rootHasNoParentAtAll) {
    EXPECT_FALSE(root->isMyParent(a));
    EXPECT_FALSE(root->isMyParent(root));
    EXPECT_FALSE(root->isMyParent(nullptr));
}

TEST_F(FileSystemItemTest, parentCanBeSet) {
    auto* const b = tree.folder(root, "b");
    f->setParent(b);
    EXPECT_EQ(f->getParent(), b);
    EXPECT_EQ(f->fullPath(), "/r/b/f");
}

// --- Sizes ---

TEST_F(FileSystemItemTest, negativeSizeCountsAsNothingAndStays) {
    auto* const item = tree.file(a, "n", -1);
    EXPECT_EQ(item->calctotalsize(), 0);
    EXPECT_EQ(item->gettotalsize(), -1);
}

TEST_F(FileSystemItemTest, sizeIsAnsweredByEveryQuestionForIt) {
    EXPECT_EQ(f->gettotalsize(), 10);
    EXPECT_EQ(f->getWholeItemSize(), 10);
    EXPECT_EQ(f->calctotalsize(), 10);
}

TEST_F(FileSystemItemTest, fileKeepsNoSum) {
    f->addFileSize(7);
    EXPECT_EQ(f->gettotalsize(), 10);
}

TEST_F(FileSystemItemTest, addFileSizeForAllReachesEveryAncestor) {
    f->addFileSizeForAll(7);
    EXPECT_EQ(f->gettotalsize(), 10);
    EXPECT_EQ(a->gettotalsize(), 7);
    EXPECT_EQ(root->gettotalsize(), 7);
}

TEST_F(FileSystemItemTest, recountNotesTheSizeOnItsLevelAlone) {
    std::array<std::int64_t, kLevelCount> table{};
    EXPECT_EQ(f->calcTotalSizeWithMaxSizes(table, 3), 10);
    std::array<std::int64_t, kLevelCount> expected{};
    expected[3] = 10;
    EXPECT_EQ(table, expected);
}

TEST_F(FileSystemItemTest, recountKeepsALargerEntry) {
    std::array<std::int64_t, kLevelCount> table{};
    table[3] = 11;
    EXPECT_EQ(f->calcTotalSizeWithMaxSizes(table, 3), 10);
    EXPECT_EQ(table[3], 11);
}

TEST_F(FileSystemItemTest, lastLevelOfTheTableIs13) {
    std::array<std::int64_t, kLevelCount> table{};
    EXPECT_EQ(f->calcTotalSizeWithMaxSizes(table, 14), 10);
    EXPECT_EQ(table, (std::array<std::int64_t, 14>{}));
    f->calcTotalSizeWithMaxSizes(table, 13);
    EXPECT_EQ(table[13], 10);
}

// --- What a plain file is not ---

TEST_F(FileSystemItemTest, plainFileIsNothingElse) {
    EXPECT_FALSE(f->isHidden());
    EXPECT_FALSE(f->isDir());
    EXPECT_FALSE(f->isPack());
    EXPECT_FALSE(f->isVol());
    EXPECT_FALSE(f->isFileVaultDir());
    EXPECT_FALSE(f->isUnscanned());
    EXPECT_FALSE(f->isCutItem());
    EXPECT_EQ(f->asFolderSystemItem(), nullptr);
    EXPECT_EQ(f->asFileSystemItem(), f);
    EXPECT_EQ(f->asTopLevelItem(), nullptr);
}

TEST_F(FileSystemItemTest, plainFileHasNothingBelowIt) {
    EXPECT_EQ(f->numberOfChildren(), 0u);
    EXPECT_EQ(f->childAtIndex(0), nullptr);
    EXPECT_EQ(f->getChildDepth(), 0);
    EXPECT_EQ(f->calcChildDepth(), 0);
    f->SetitsLeafPackage();
    EXPECT_FALSE(f->isPack());
}

TEST_F(FileSystemItemTest, plainFileHasNoDescription) {
    EXPECT_EQ(f->getDesc().data(), nullptr);
}

TEST_F(FileSystemItemTest, plainFileAlwaysWeighsItsFullSize) {
    f->setdrawkoef(0.5);
    EXPECT_EQ(f->getdrawkoef(), 1.0);
}

} // namespace
} // namespace veltrano
