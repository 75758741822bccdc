// Which rows the sidebar shows, in which order.

#include "app/SidebarFixture.h"

#include <gmock/gmock.h>

namespace veltrano::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class VolumesTableRows : public SidebarTest {
protected:
    using Volumes = std::vector<std::shared_ptr<VolumeItem>>;
    const VolumeItemGrop& group(int row) { return *sidebar.getGroupByRow(row); }
};

TEST_F(VolumesTableRows, groupsFollowFromProtocolAndMedium) {
    struct Case {
        DeviceFacts facts;
        const char* name;
        const char* image;
    };
    const Case cases[] = {
        {device(std::nullopt), "Network Disks", "pvttitleDisksNet"},
        {device(std::nullopt, MediaClass::DVD), "Network Disks", "pvttitleDisksNet"},
        {device("Virtual Interface"), "Disk Images", "pvttitleDisksImg"},
        {device("USB"), "External Disks", "pvttitleDisksExt"},
        {device("USB", MediaClass::DVD), "External Disks", "pvttitleDisksExt"},
        {device("SATA", MediaClass::CD), "Optical Disks", "pvttitleDisksOpt"},
        {device("SATA", MediaClass::DVD), "Optical Disks", "pvttitleDisksOpt"},
        {device("SATA"), "Hard Disks", "pvttitleDisks"},
        {device("ATAPI", MediaClass::DVD), "Hard Disks", "pvttitleDisks"},
        {device("PCI-Express"), "Hard Disks", "pvttitleDisks"},
        {device(""), "Hard Disks", "pvttitleDisks"},
    };
    for (const Case& expected : cases) {
        sidebar.setVolumesArray({volume("/v", expected.facts)}, true);
        EXPECT_EQ(group(0).groupName, expected.name);
        EXPECT_EQ(group(0).groupImage, expected.image);
    }
}

TEST_F(VolumesTableRows, groupTakesTheFlagsOfTheVolumeThatOpensIt) {
    const auto opening = volume("/a", device("USB"));
    opening->setRemovable(true);
    opening->setUnmountable(true);
    const auto second = volume("/b", device("USB"));
    second->setWriteble(true);
    sidebar.setVolumesArray({opening, second}, true);
    EXPECT_TRUE(group(0).removable && group(0).unmountable);
    EXPECT_FALSE(group(0).writeble);
}

TEST_F(VolumesTableRows, volumeComesBeforeTheLastOfItsGroup) {
    sidebar.setVolumesArray({volume("/A", device("USB")), volume("/B", device("USB"))}, true);
    EXPECT_THAT(rows(), ElementsAre("External Disks: B A"));
    sidebar.setVolumesArray({volume("/C", device("USB"))}, false);
    EXPECT_THAT(rows(), ElementsAre("External Disks: B C A"));
}

TEST_F(VolumesTableRows, groupBelowOthersStillTakesItsVolumes) {
    sidebar.setVolumesArray(
        {volume("/a", device("SATA")), volume("/u", device("USB")), volume("/b", device("SATA"))}, true);
    EXPECT_THAT(rows(), ElementsAre("Hard Disks: b a", "External Disks: u"));
}

TEST_F(VolumesTableRows, protocolsOfOneNameMakeTwoGroups) {
    sidebar.setVolumesArray({volume("/a", device("SATA")), volume("/n", device("PCI-Express"))}, true);
    EXPECT_THAT(rows(), ElementsAre("Hard Disks: a", "Hard Disks: n"));
}

TEST_F(VolumesTableRows, mediaOfOneProtocolMakeTwoGroups) {
    sidebar.setVolumesArray({volume("/a", device("SATA")), volume("/d", device("SATA", MediaClass::CD))},
                            true);
    EXPECT_THAT(rows(), ElementsAre("Hard Disks: a", "Optical Disks: d"));
}

TEST_F(VolumesTableRows, networkVolumesShareAGroupWhateverTheirMedium) {
    sidebar.setVolumesArray(
        {volume("/a", device(std::nullopt)), volume("/b", device(std::nullopt, MediaClass::CD))}, true);
    EXPECT_THAT(rows(), ElementsAre("Network Disks: b a"));
}

TEST_F(VolumesTableRows, firstGroupOfACallIsMarked) {
    sidebar.setVolumesArray({volume("/a", device("SATA")), volume("/u", device("USB"))}, true);
    EXPECT_TRUE(group(0).bFirstItem);
    EXPECT_FALSE(group(2).bFirstItem);
    // Per call: a volume that comes alone marks its group wherever that stands.
    sidebar.setVolumesArray({volume("/n", device(std::nullopt))}, false);
    EXPECT_TRUE(group(4).bFirstItem);
}

TEST_F(VolumesTableRows, replacingDropsWhatWasThere) {
    sidebar.setVolumesArray({volume("/a", device("SATA"))}, true);
    sidebar.setVolumesArray({volume("/u", device("USB"))}, true);
    EXPECT_THAT(rows(), ElementsAre("External Disks: u"));
    sidebar.resetVolumesArray();
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(VolumesTableRows, missingVolumesAreSkipped) {
    sidebar.setVolumesArray({nullptr, volume("/a", device("SATA"))}, true);
    EXPECT_THAT(rows(), ElementsAre("Hard Disks: a"));
}

TEST_F(VolumesTableRows, foldersFollowInTheOrderOfTheirLists) {
    sidebar.setVolumesArray({volume("/v", device("SATA"))}, true);
    sidebar.addFFolders({folder("/b"), folder("/a")}, {folder("/r")});
    EXPECT_THAT(rows(), ElementsAre("Hard Disks: v", "Favorite Folders: b a", "Recent Folders: r"));
    EXPECT_EQ(group(2).groupImage, "pvttitleFavoriteFolders");
    EXPECT_EQ(group(5).groupImage, "pvttitleRecentFolders");
    for (const int row : {2, 5})
        EXPECT_FALSE(group(row).bFirstItem || group(row).removable || group(row).writeble ||
                     group(row).unmountable);
}

TEST_F(VolumesTableRows, emptyListAddsNoGroup) {
    sidebar.addFFolders({}, {folder("/r")});
    EXPECT_THAT(rows(), ElementsAre("Recent Folders: r"));
}

TEST_F(VolumesTableRows, folderGroupIsFirstExactlyInAnEmptyTable) {
    sidebar.addFFolders({folder("/f")}, {folder("/r")});
    EXPECT_TRUE(group(0).bFirstItem);
    EXPECT_FALSE(group(2).bFirstItem);
}

TEST_F(VolumesTableRows, withoutFavouritesAndRecentsTheTableIsEmpty) {
    sidebar.addFFolders({}, {});
    sidebar.reloadData();
    EXPECT_EQ(table.numberOfRows(), 0);
    EXPECT_EQ(table.accessibleDescription(), QStringLiteral("No disks or folders to show"));
}

TEST_F(VolumesTableRows, volumeThatComesIsAddedAndShown) {
    sidebar.setVolumesArray({volume("/a", device("SATA"))}, true);
    sidebar.volumesCountChanged(true, "/u", volume("/u", device("USB")));
    EXPECT_THAT(rows(), ElementsAre("Hard Disks: a", "External Disks: u"));
    EXPECT_EQ(table.numberOfRows(), 4);
    sidebar.volumesCountChanged(true, "/n", nullptr);
    EXPECT_EQ(table.numberOfRows(), 4);
}

TEST_F(VolumesTableRows, onlyVolumeOfAGroupTakesTheGroupAlong) {
    sidebar.setVolumesArray({volume("/a", device("SATA")), volume("/u", device("USB"))}, true);
    sidebar.volumesCountChanged(false, "/u", nullptr);
    EXPECT_THAT(rows(), ElementsAre("Hard Disks: a"));
    sidebar.volumesCountChanged(false, "/a", nullptr);
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_EQ(table.numberOfRows(), 0);
}

TEST_F(VolumesTableRows, groupThatKeepsAVolumeStays) {
    sidebar.setVolumesArray({volume("/a", device("USB")), volume("/b", device("USB"))}, true);
    sidebar.addFFolders({folder("/f")}, {});
    sidebar.volumesCountChanged(false, "/b", nullptr);
    EXPECT_THAT(rows(), ElementsAre("External Disks: a", "Favorite Folders: f"));
}

TEST_F(VolumesTableRows, emptyGroupBetweenOthersGoes) {
    sidebar.setVolumesArray({volume("/a", device("SATA")), volume("/u", device("USB"))}, true);
    sidebar.addFFolders({folder("/f")}, {});
    sidebar.volumesCountChanged(false, "/u", nullptr);
    EXPECT_THAT(rows(), ElementsAre("Hard Disks: a", "Favorite Folders: f"));
}

TEST_F(VolumesTableRows, pathThatIsNoVolumeRemovesNothing) {
    sidebar.setVolumesArray({volume("/a", device("SATA"))}, true);
    sidebar.addFFolders({folder("/f")}, {});
    // Not shown yet, so that a reload would be seen.
    for (const char* const path : {"/f", "/gone", "", "/a/"})
        sidebar.volumesCountChanged(false, path, nullptr);
    EXPECT_THAT(rows(), ElementsAre("Hard Disks: a", "Favorite Folders: f"));
    EXPECT_EQ(table.numberOfRows(), 0);
}

TEST_F(VolumesTableRows, rowOutOfRangeIsNothing) {
    fillUsually();
    for (const int row : {-1, 7, 1000}) {
        EXPECT_FALSE(sidebar.isRowValid(row));
        EXPECT_FALSE(sidebar.isGroupRow(row));
        EXPECT_FALSE(sidebar.shouldSelectRow(row));
        EXPECT_EQ(sidebar.getItemByRow(row), nullptr);
        EXPECT_EQ(sidebar.dataCellForTableColumn(VolumesTableController::pColInfo, row), nullptr);
        EXPECT_FALSE(sidebar.isButtonCell(VolumesTableController::pColBtn, row));
        EXPECT_EQ(sidebar.toolTipForCell(VolumesTableController::pColInfo, row), QString());
    }
}

TEST_F(VolumesTableRows, bytesOfAPathAreComparedAsTheyAre) {
    sidebar.setVolumesArray({volume("/m/\xff\xfe", device("USB")), volume("/m/\xff", device("USB"))}, true);
    sidebar.reloadData();
    EXPECT_EQ(sidebar.selectVolumeByName("/m/\xff\xfe")->getPath(), "/m/\xff\xfe");
    EXPECT_EQ(sidebar.getSelectedVolume(), "/m/\xff\xfe");
}

// Where the results of scans are kept

class ScanResults : public SidebarTest {
protected:
    ScanResults() { fillUsually(); }
    VolumesTableController::Entry entry(const std::string& path) {
        for (int row = 0; row < sidebar.numberOfRows(); ++row)
            if (const auto item = sidebar.getItemByRow(row); item && item->getPath() == path)
                return item;
        return nullptr;
    }
};

TEST_F(ScanResults, treeGoesToTheVolumeOfItsPath) {
    const auto tree = scannedTree("/a", 1000);
    sidebar.setScannedRootInfo(tree, false);
    EXPECT_EQ(entry("/a")->getScannedRoot(), tree);
    EXPECT_FALSE(entry("/a")->isScanCompleted());
    sidebar.setScannedRootInfo(tree, true);
    EXPECT_TRUE(entry("/a")->isScanCompleted());
    EXPECT_THAT(host.takeCalls(), IsEmpty());
}

TEST_F(ScanResults, volumeComesBeforeAFolderOfItsPath) {
    const auto favourite = favourites.addFolderItemToList(folder("/a"));
    sidebar.setScannedRootInfo(scannedTree("/a", 1000), true);
    EXPECT_TRUE(entry("/a")->isScanned());
    EXPECT_FALSE(favourite->isScanned());
}

TEST_F(ScanResults, favouriteComesBeforeARecentFolder) {
    const auto recent = recents.addFolderItemToList(folder("/srv"));
    const auto other = recents.addFolderItemToList(folder("/other"));
    sidebar.setScannedRootInfo(scannedTree("/srv", 1000), true);
    EXPECT_TRUE(favourites.getFolderItemByPath("/srv")->isScanned());
    EXPECT_FALSE(recent->isScanned());
    // A folder keeps its result also while the table does not show it.
    sidebar.setScannedRootInfo(scannedTree("/other", 1000), true);
    EXPECT_TRUE(other->isScanned());
}

TEST_F(ScanResults, treeOfNoEntryIsDropped) {
    const auto tree = scannedTree("/elsewhere", 1000);
    sidebar.setScannedRootInfo(tree, true);
    sidebar.setScannedRootInfo(nullptr, true);
    EXPECT_EQ(tree.use_count(), 1);
    EXPECT_THAT(host.takeCalls(), IsEmpty());
}

TEST_F(ScanResults, newTreeTellsThatTheOldOneGoes) {
    auto old = scannedTree("/a", 1000);
    const std::weak_ptr<FolderSystemItem> watched = old;
    sidebar.setScannedRootInfo(old, true);
    old.reset();
    EXPECT_FALSE(watched.expired());
    sidebar.setScannedRootInfo(scannedTree("/a", 2000), false);
    EXPECT_THAT(host.takeCalls(), ElementsAre("treeIsDropped /a"));
    EXPECT_TRUE(watched.expired());
}

TEST_F(ScanResults, sameTreeAgainDropsNothing) {
    const auto tree = scannedTree("/a", 1000);
    sidebar.setScannedRootInfo(tree, false);
    sidebar.setScannedRootInfo(tree, true);
    EXPECT_THAT(host.takeCalls(), IsEmpty());
}

TEST_F(ScanResults, treesOutliveARebuild) {
    const auto first = std::static_pointer_cast<VolumeItem>(entry("/a"));
    sidebar.setScannedRootInfo(scannedTree("/a", 1000), true);
    sidebar.resetVolumesArray();
    sidebar.setVolumesArray({first}, false);
    sidebar.reloadData();
    EXPECT_TRUE(entry("/a")->isScanned());
}

TEST_F(ScanResults, treeGoesWithItsEntry) {
    auto tree = scannedTree("/usb", 1000);
    const std::weak_ptr<FolderSystemItem> watched = tree;
    sidebar.setScannedRootInfo(tree, true);
    tree.reset();
    sidebar.volumesCountChanged(false, "/usb", nullptr);
    EXPECT_TRUE(watched.expired());
}

} // namespace
} // namespace veltrano::test
