#include "chart/HintText.h"

#include "support/TreeBuilder.h"
#include "tree/SpecialItems.h"
#include "tree/TopLevelItem.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

class Sentinel final : public TreeObject {};

class HintTextTest : public testing::Test {
protected:
    HintTextTest() {
        tree.file(tree.root(), "plain", 1500);
        tree.recount();
    }

    std::optional<HintText> hintFor(TreeObject& item, const VolumeFolderProtocol& root) {
        return composeHint(item, root, {&occupied, &free}, [](std::string_view bytes) {
            return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
        });
    }

    void expectHint(TreeObject& item, const QString& main, const QString& size, const QString& caption,
                    const std::optional<std::string>& path) {
        const auto hint = hintFor(item, *tree.root());
        ASSERT_TRUE(hint);
        EXPECT_EQ(hint->main, main);
        EXPECT_EQ(hint->size, size);
        EXPECT_EQ(hint->sizeCaption, caption);
        EXPECT_EQ(hint->datePath, path);
    }

    Sentinel occupied;
    Sentinel free;
    test::TreeBuilder tree{"/r"};
    const QString kSize = QStringLiteral("Size:");
};

TEST_F(HintTextTest, freeSectorTellsWhatIsFree) {
    const VolumeItem volume("/mnt/disk", "Disk", 10'000, 4'000, 0);
    const auto hint = hintFor(free, volume);
    ASSERT_TRUE(hint);
    EXPECT_EQ(hint->main, QStringLiteral("Disk"));
    EXPECT_EQ(hint->size, QStringLiteral("4.00 KB"));
    EXPECT_EQ(hint->sizeCaption, QStringLiteral("Free:"));
    EXPECT_EQ(hint->datePath, "/mnt/disk");
}

TEST_F(HintTextTest, occupiedSectorTellsWhatIsOccupied) {
    const VolumeItem volume("/mnt/disk", "Disk", 10'000, 4'000, 0);
    const auto hint = hintFor(occupied, volume);
    ASSERT_TRUE(hint);
    EXPECT_EQ(hint->main, QStringLiteral("Disk"));
    EXPECT_EQ(hint->size, QStringLiteral("6.00 KB"));
    EXPECT_EQ(hint->sizeCaption, QStringLiteral("Occupied:"));
    EXPECT_EQ(hint->datePath, "/mnt/disk");
}

TEST_F(HintTextTest, volumeEntryTellsItsSize) {
    VolumeItem volume("/mnt/disk", "Disk", 10'000, 4'000, 0);
    expectHint(volume, "Disk", "10.0 KB", kSize, "/mnt/disk");
}

TEST_F(HintTextTest, volumeThatHasToldNoSizeIsNotCalculated) {
    VolumeItem volume("/mnt/away", "Away", 0, 0, 0);
    expectHint(volume, "Away", "Not Calculated", kSize, "/mnt/away");
}

TEST_F(HintTextTest, folderEntryIsNotCalculated) {
    FolderItem folder("/home/mara", "mara", 0, 0, 0);
    expectHint(folder, "mara", "Not Calculated", kSize, "/home/mara");
}

TEST_F(HintTextTest, fileTellsNameSizeAndDate) {
    expectHint(*tree.root()->childAtIndex(0), "plain", "1.50 KB", kSize, "/r/plain");
}

TEST_F(HintTextTest, folderTellsItsTotal) {
    auto* const folder = tree.folder(tree.root(), "d");
    tree.file(folder, "f", 999);
    tree.recount();
    expectHint(*folder, "d", "999 bytes", kSize, "/r/d");
}

TEST_F(HintTextTest, protectedHomeTellsItsLink) {
    auto* const home =
        FileVaultDirItem::initWithPathSize(tree.arena(), "mara", tree.root(), 2000, "/mnt/vault");
    expectHint(*home, "vault, folder with FileVault protection", "2.00 KB", kSize, "/mnt/vault");
}

TEST_F(HintTextTest, unscannedItemTellsItsDescriptionWithoutADate) {
    auto* const item =
        FSUnscannedItem::initWithParent(tree.arena(), tree.root(), "Other inaccessible files", 3000);
    expectHint(*item, "Other inaccessible files", "3.00 KB", kSize, std::nullopt);
}

TEST_F(HintTextTest, trashFolderSaysTrash) {
    auto* const trash = tree.hiddenFolder(tree.root(), ".Trash");
    ASSERT_TRUE(trash->isTrashFlag());
    expectHint(*trash, "Trash", "0 bytes", kSize, "/r/.Trash");
}

TEST_F(HintTextTest, itemInTheTrashSaysSo) {
    auto* const trash = tree.hiddenFolder(tree.root(), ".Trash");
    expectHint(*tree.file(trash, "old", 10), "old (item in the Trash)", "10 bytes", kSize, "/r/.Trash/old");
}

TEST_F(HintTextTest, hiddenItemSaysSo) {
    auto* const hidden = tree.hiddenFolder(tree.root(), ".cache");
    expectHint(*hidden, ".cache (hidden item)", "0 bytes", kSize, "/r/.cache");
    expectHint(*tree.file(hidden, "f", 10), "f (sub hidden item)", "10 bytes", kSize, "/r/.cache/f");
}

TEST_F(HintTextTest, hiddenAggregateSaysWhereAndHasNoSuffix) {
    auto* const items = FileSystemHiddenItem::initWithPathSize(tree.arena(), "d", tree.root(), 700);
    expectHint(*items, "Hidden items at d", "700 bytes", kSize, "/r/d");
}

TEST_F(HintTextTest, percentSignsInNamesStayAsTheyAre) {
    auto* const trash = tree.hiddenFolder(tree.root(), ".Trash");
    expectHint(*tree.file(trash, "%1 and %2", 10), "%1 and %2 (item in the Trash)", "10 bytes", kSize,
               "/r/.Trash/%1 and %2");
}

TEST_F(HintTextTest, anObjectOfAnotherKindTellsNothing) {
    Sentinel stranger;
    EXPECT_FALSE(hintFor(stranger, *tree.root()));
}

} // namespace
} // namespace veltrano
