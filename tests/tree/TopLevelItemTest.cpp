#include "tree/TopLevelItem.h"

#include "support/TreeBuilder.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using test::TreeBuilder;

VolumeItem volumeEntry() {
    return VolumeItem("/mnt/disk", "My Disk", 1000, 400, 7);
}
FolderItem folderEntry() {
    return FolderItem("/home/someone", "Someone", 0, 0, 0);
}

std::shared_ptr<FolderSystemItem> scannedTree() {
    const TreeBuilder tree("/mnt/disk");
    tree.file(tree.root(), "f", 10);
    return TreeStorage::hold(tree.root());
}

TEST(TopLevelItem, entryKnowsWhatItWasMadeWith) {
    const VolumeItem entry = volumeEntry();
    EXPECT_EQ(entry.getPath(), "/mnt/disk");
    EXPECT_EQ(entry.getName(), "My Disk");
    EXPECT_EQ(entry.getsize(), 1000);
    EXPECT_EQ(entry.getfsize(), 400);
    EXPECT_EQ(entry.getnodescount(), 7);
}

TEST(TopLevelItem, newEntryHasNoDatesAndNoValence) {
    const VolumeItem entry = volumeEntry();
    EXPECT_FALSE(entry.getCreatedDate());
    EXPECT_FALSE(entry.getModDate());
    EXPECT_FALSE(entry.getAccDate());
    EXPECT_EQ(entry.getValence(), 0);
}

TEST(TopLevelItem, datesCountFromTheStartOf1904) {
    FolderItem entry = folderEntry();
    entry.initDates({.created = {.lowSeconds = 1},
                     .modified = catalogueDateFromUnixTime(0),
                     .accessed = catalogueDateFromUnixTime(1'700'000'000, 999'999'999),
                     .valence = 3});
    using std::chrono::seconds;
    using std::chrono::sys_seconds;
    EXPECT_EQ(entry.getCreatedDate(), sys_seconds(seconds(1 - 2'082'844'800)));
    EXPECT_EQ(entry.getModDate(), sys_seconds(seconds(0)));
    EXPECT_EQ(entry.getAccDate(), sys_seconds(seconds(1'700'000'000)));
    EXPECT_EQ(entry.getValence(), 3);
}

TEST(TopLevelItem, dateThatIsAllZeroIsNone) {
    FolderItem entry = folderEntry();
    entry.initDates({.created = {.fraction = 1}});
    EXPECT_EQ(entry.getCreatedDate(), std::chrono::sys_seconds(std::chrono::seconds(-2'082'844'800)));
    EXPECT_FALSE(entry.getModDate());
    EXPECT_FALSE(entry.getAccDate());
}

TEST(TopLevelItem, highSecondsOfADateAreNotRead) {
    FolderItem entry = folderEntry();
    entry.initDates({.created = {.highSeconds = 1, .lowSeconds = 2'082'844'800}});
    EXPECT_EQ(entry.getCreatedDate(), std::chrono::sys_seconds(std::chrono::seconds(0)));
}

TEST(TopLevelItem, newEntryIsNotScanned) {
    const VolumeItem entry = volumeEntry();
    EXPECT_FALSE(entry.isScanned());
    EXPECT_FALSE(entry.isScanCompleted());
    EXPECT_EQ(entry.getScannedRoot(), nullptr);
}

TEST(TopLevelItem, entryRemembersThatItsScanRanToTheEnd) {
    VolumeItem entry = volumeEntry();
    entry.setScanCompleted(true);
    EXPECT_TRUE(entry.isScanCompleted());
    entry.setScanCompleted(false);
    EXPECT_FALSE(entry.isScanCompleted());
}

TEST(TopLevelItem, entryKeepsItsTreeAlive) {
    VolumeItem entry = volumeEntry();
    entry.setScannedRoot(scannedTree());
    EXPECT_TRUE(entry.isScanned());
    EXPECT_EQ(entry.getScannedRoot()->calctotalsize(), 10);
    const std::weak_ptr<FolderSystemItem> tree = entry.getScannedRoot();
    entry.setScannedRoot(nullptr);
    EXPECT_TRUE(tree.expired());
    EXPECT_FALSE(entry.isScanned());
}

TEST(TopLevelItem, pathIsLookedUpInTheScannedTree) {
    VolumeItem entry = volumeEntry();
    entry.setScannedRoot(scannedTree());
    EXPECT_EQ(entry.getItemByFilePath("/mnt/disk/f"), entry.getScannedRoot()->childAtIndex(0));
    EXPECT_EQ(entry.getItemByFilePath("/mnt/disk"), entry.getScannedRoot().get());
}

TEST(TopLevelItem, unscannedEntryFindsNothing) {
    EXPECT_EQ(volumeEntry().getItemByFilePath("/mnt/disk"), nullptr);
}

TEST(TopLevelItem, relativePathIsTheName) {
    EXPECT_EQ(volumeEntry().relativePath(), std::string_view("My Disk"));
    EXPECT_EQ(volumeEntry().getFullPath(), "/mnt/disk");
}

TEST(TopLevelItem, displayNameIsTheName) {
    EXPECT_EQ(volumeEntry().getDisplayName(), "My Disk");
    EXPECT_EQ(folderEntry().getDisplayName(), "Someone");
    EXPECT_EQ(VolumeItem("/", "System", 1, 0, 0).getDisplayName(), "System");
}

TEST(TopLevelItem, displayNameOfTheNamelessIsTheLastComponentOfThePath) {
    EXPECT_EQ(VolumeItem("/mnt/disk", "", 1, 0, 0).getDisplayName(), "disk");
    EXPECT_EQ(VolumeItem("/", "", 1, 0, 0).getDisplayName(), "/");
}

TEST(TopLevelItem, occupiedIsCapacityLessFree) {
    const VolumeItem entry = volumeEntry();
    EXPECT_EQ(entry.gettotalsize(), 600);
    EXPECT_EQ(entry.getOccSize(), 600);
    EXPECT_EQ(entry.getChildrenCountedSize(), 600);
    EXPECT_EQ(entry.getWholeItemSize(), 1000);
}

TEST(TopLevelItem, fullRatioIsOccupiedOfCapacity) {
    EXPECT_DOUBLE_EQ(volumeEntry().getFullRatio(), 0.6);
}

TEST(TopLevelItem, folderEntryIsFull) {
    EXPECT_EQ(folderEntry().getFullRatio(), 1.0);
}

TEST(TopLevelItem, fullCircleWithTheFreeSectorIsTheCapacity) {
    VolumeItem entry = volumeEntry();
    EXPECT_FALSE(entry.getUseFreeSector());
    EXPECT_EQ(entry.getTheSize(), 600);
    entry.setUseFreeSector(true);
    EXPECT_TRUE(entry.getUseFreeSector());
    EXPECT_EQ(entry.getTheSize(), 1000);
}

TEST(TopLevelItem, folderEntryHasNoFreeSector) {
    FolderItem entry = folderEntry();
    entry.setUseFreeSector(true);
    EXPECT_FALSE(entry.getUseFreeSector());
    EXPECT_EQ(entry.getTheSize(), 0);
}

TEST(TopLevelItem, volumeEntryIsAVolumeThatIsNotScanned) {
    const VolumeItem entry = volumeEntry();
    EXPECT_TRUE(entry.isVol());
    EXPECT_TRUE(entry.isNotScannedVolume());
    EXPECT_FALSE(entry.isFolder());
}

TEST(TopLevelItem, folderEntryIsAFolderAndNoVolume) {
    const FolderItem entry = folderEntry();
    EXPECT_TRUE(entry.isFolder());
    EXPECT_FALSE(entry.isVol());
    EXPECT_FALSE(entry.isNotScannedVolume());
}

TEST(TopLevelItem, entryIsNeverMe) {
    const VolumeItem entry = volumeEntry();
    EXPECT_FALSE(entry.isMe(&entry));
    EXPECT_FALSE(entry.isMe(nullptr));
}

TEST(TopLevelItem, entryIsItsOwnObjectAndNoTreeItem) {
    VolumeItem entry = volumeEntry();
    EXPECT_EQ(entry.getObject(), static_cast<TreeObject*>(&entry));
    EXPECT_EQ(entry.asTopLevelItem(), &entry);
    EXPECT_EQ(entry.asFileSystemItem(), nullptr);
}

TEST(TopLevelItem, entryHasNothingAboveOrBelowIt) {
    VolumeItem entry = volumeEntry();
    EXPECT_EQ(entry.getParent(), nullptr);
    EXPECT_EQ(entry.getTopParent(), nullptr);
    EXPECT_EQ(entry.childrenArray(), nullptr);
    EXPECT_EQ(entry.numberOfChildren(), 0u);
    EXPECT_EQ(entry.childAtIndex(0), nullptr);
    EXPECT_EQ(entry.getChildDepth(), 0);
    EXPECT_EQ(entry.calcChildDepth(), 0);
}

TEST(TopLevelItem, collectionMarksReachTheTree) {
    VolumeItem entry = volumeEntry();
    const std::vector<std::string> paths{"/mnt/disk/f"};
    entry.updateAddedItemsToCollection(paths);
    entry.setScannedRoot(scannedTree());
    entry.updateAddedItemsToCollection(paths);
    EXPECT_TRUE(entry.getItemByFilePath("/mnt/disk/f")->isCollected());
    entry.updateRemovedItemsInCollection(paths);
    EXPECT_FALSE(entry.getItemByFilePath("/mnt/disk/f")->isCollected());
}

TEST(TopLevelItem, entryHasNoLevelTable) {
    EXPECT_FALSE(volumeEntry().isMaxSizesValid());
    EXPECT_EQ(volumeEntry().getMaxSizesByLevels(), nullptr);
}

TEST(TopLevelItem, entryHasNoAgeAndNoFlags) {
    const VolumeItem entry = volumeEntry();
    EXPECT_EQ(entry.getTimeCode(), 0);
    EXPECT_FALSE(entry.isCollected());
    EXPECT_FALSE(entry.isTopCollected());
    EXPECT_FALSE(entry.isHiddenFlag());
    EXPECT_FALSE(entry.isTopHiddenFlag());
    EXPECT_FALSE(entry.isTrashFlag());
    EXPECT_FALSE(entry.isTopTrashFlag());
}

} // namespace
} // namespace veltrano
