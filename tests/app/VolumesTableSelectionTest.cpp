// What is selected in the sidebar, and what that asks of the window; the buttons in the rows.

#include "app/SidebarFixture.h"

#include <QContextMenuEvent>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace veltrano::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kInfo = VolumesTableController::pColInfo;
constexpr int kButton = VolumesTableController::pColBtn;

class VolumesTableSelection : public SidebarTest {
protected:
    VolumesTableSelection() {
        fillUsually();
        host.takeCalls();
    }
    std::vector<std::string> shows(const std::string& path) {
        return {"didSelectionChange " + path, "setRootForRadial " + path};
    }
};

// By program

TEST_F(VolumesTableSelection, nothingIsSelectedAtFirst) {
    EXPECT_EQ(sidebar.getSelectedVolume(), std::nullopt);
    EXPECT_EQ(sidebar.getObjectForSelectedRow(), nullptr);
    EXPECT_THAT(host.takeCalls(), IsEmpty());
}

TEST_F(VolumesTableSelection, selectingAnEntryShowsIt) {
    const auto entry = sidebar.selectVolumeByName("/usb");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(sidebar.getSelectedVolume(), "/usb");
    EXPECT_EQ(sidebar.getObjectForSelectedRow(), entry);
    EXPECT_EQ(host.takeCalls(), shows("/usb"));
    EXPECT_EQ(host.shownRoot, entry.get());
}

TEST_F(VolumesTableSelection, scannedEntryIsShownByItsTree) {
    const auto tree = scannedTree("/usb", 1000);
    sidebar.setScannedRootInfo(tree, true);
    sidebar.selectVolumeByName("/usb");
    EXPECT_EQ(host.shownRoot, tree.get());
}

TEST_F(VolumesTableSelection, selectingTheSelectedEntryChangesNothing) {
    sidebar.selectVolumeByName("/usb");
    host.takeCalls();
    EXPECT_EQ(sidebar.selectVolumeByName("/usb")->getPath(), "/usb");
    EXPECT_THAT(host.takeCalls(), IsEmpty());
}

TEST_F(VolumesTableSelection, unknownPathOrNoneSelectsNothing) {
    sidebar.selectVolumeByName("/usb");
    host.takeCalls();
    EXPECT_EQ(sidebar.selectVolumeByName("/nowhere"), nullptr);
    EXPECT_EQ(sidebar.selectVolumeByName("/us"), nullptr);
    EXPECT_EQ(sidebar.selectVolumeByName(std::nullopt), nullptr);
    EXPECT_EQ(sidebar.getSelectedVolume(), "/usb");
    EXPECT_THAT(host.takeCalls(), IsEmpty());
}

TEST_F(VolumesTableSelection, firstEntryOfAPathIsTaken) {
    favourites.addFolderItemToList(folder("/a"));
    sidebar.addFFolders(favourites.getFoldersArray(), {});
    sidebar.reloadData();
    EXPECT_TRUE(sidebar.selectVolumeByName("/a")->isVol());
    EXPECT_EQ(table.selectedRow(), 1);
}

TEST_F(VolumesTableSelection, withoutASelectionTheFirstEntryIsTaken) {
    EXPECT_EQ(sidebar.selectOneifnotSelected()->getPath(), "/a");
    EXPECT_EQ(table.selectedRow(), 1);
    EXPECT_EQ(host.takeCalls(), shows("/a")); // once: the change does it
}

TEST_F(VolumesTableSelection, emptyTableSelectsNothingAndShowsNothing) {
    sidebar.resetVolumesArray();
    sidebar.reloadData();
    EXPECT_EQ(sidebar.selectOneifnotSelected(), nullptr);
    EXPECT_EQ(sidebar.selectVolumeByNameOrAny("/a"), nullptr);
    EXPECT_THAT(host.takeCalls(), IsEmpty());
}

TEST_F(VolumesTableSelection, selectedEntryIsShownAgain) {
    sidebar.selectVolumeByName("/usb");
    host.takeCalls();
    EXPECT_EQ(sidebar.selectOneifnotSelected()->getPath(), "/usb");
    EXPECT_EQ(host.takeCalls(), shows("/usb"));
}

TEST_F(VolumesTableSelection, nameOrAnyTakesTheName) {
    EXPECT_EQ(sidebar.selectVolumeByNameOrAny("/srv")->getPath(), "/srv");
    EXPECT_EQ(sidebar.selectVolumeByNameOrAny(std::nullopt)->getPath(), "/srv");
    EXPECT_EQ(sidebar.selectVolumeByNameOrAny("/gone")->getPath(), "/srv");
}

TEST_F(VolumesTableSelection, rowThatBecomesAGroupGivesWayToTheRowAbove) {
    // Hard Disks: a, External Disks: usb; the row of "/b" is that of the next group once it has gone.
    sidebar.setVolumesArray(
        {volume("/a", device("SATA")), volume("/b", device("SATA")), volume("/usb", device("USB"))}, true);
    sidebar.reloadData();
    sidebar.selectVolumeByName("/a");
    ASSERT_EQ(table.selectedRow(), 2);
    host.takeCalls();
    sidebar.volumesCountChanged(false, "/a", nullptr);
    ASSERT_TRUE(sidebar.isGroupRow(table.selectedRow()));
    EXPECT_EQ(sidebar.getSelectedVolume(), std::nullopt);
    EXPECT_EQ(sidebar.selectVolumeByNameOrAny("/a")->getPath(), "/b");
    const auto calls = host.takeCalls();
    EXPECT_EQ(calls.back(), "setRootForRadial /b");
}

TEST_F(VolumesTableSelection, rowThatBecomesAnotherEntryIsTaken) {
    sidebar.selectVolumeByName("/home/me");
    host.takeCalls();
    favourites.removeFolderFromList("/home/me");
    sidebar.resetVolumesArray();
    sidebar.setVolumesArray({volume("/a", device("SATA")), volume("/usb", device("USB"))}, false);
    sidebar.addFFolders(favourites.getFoldersArray(), {});
    sidebar.reloadData();
    EXPECT_EQ(sidebar.selectVolumeByNameOrAny("/home/me")->getPath(), "/srv");
    EXPECT_EQ(host.takeCalls(), shows("/srv"));
}

TEST_F(VolumesTableSelection, lastRowThatGoesLeavesTheFirstEntry) {
    sidebar.selectVolumeByName("/srv");
    host.takeCalls();
    sidebar.resetVolumesArray();
    sidebar.setVolumesArray({volume("/a", device("SATA"))}, false);
    sidebar.reloadData();
    EXPECT_EQ(sidebar.selectVolumeByNameOrAny("/srv")->getPath(), "/a");
    EXPECT_EQ(host.takeCalls(), shows("/a"));
}

TEST_F(VolumesTableSelection, rebuildOfTheSameRowsShowsNothingAnew) {
    sidebar.selectVolumeByName("/usb");
    host.takeCalls();
    sidebar.reloadData();
    sidebar.selectVolumeByNameOrAny("/usb");
    EXPECT_THAT(host.takeCalls(), IsEmpty());
}

TEST_F(VolumesTableSelection, groupRowShowsNothing) {
    sidebar.resetRadialRootToCurrVolume(0);
    sidebar.resetRadialRootToCurrVolume(-1);
    EXPECT_THAT(host.takeCalls(), IsEmpty());
}

// By pointer

TEST_F(VolumesTableSelection, clickOnAnotherRowShowsItAtTheRelease) {
    press(middleOf(kInfo, 3));
    EXPECT_EQ(sidebar.getSelectedVolume(), "/usb");
    EXPECT_THAT(host.takeCalls(), IsEmpty());
    release(middleOf(kInfo, 3));
    EXPECT_EQ(host.takeCalls(), shows("/usb"));
}

TEST_F(VolumesTableSelection, clickOnTheSelectedRowGoesBackToTheTop) {
    sidebar.selectVolumeByName("/usb");
    host.takeCalls();
    press(middleOf(kInfo, 3));
    EXPECT_EQ(host.takeCalls(), shows("/usb"));
    release(middleOf(kInfo, 3));
    EXPECT_THAT(host.takeCalls(), IsEmpty());
}

TEST_F(VolumesTableSelection, clickOnAGroupDoesNothing) {
    sidebar.selectVolumeByName("/usb");
    host.takeCalls();
    const QPoint title = table.cellFrame(std::nullopt, 4).center();
    press(title);
    release(title);
    EXPECT_EQ(sidebar.getSelectedVolume(), "/usb");
    EXPECT_THAT(host.takeCalls(), IsEmpty());
}

TEST_F(VolumesTableSelection, cellIsNotFollowedWhileTheSelectionChanges) {
    sidebar.selectVolumeByName("/a");
    host.takeCalls();
    press(middleOf(kInfo, 3));
    EXPECT_FALSE(sidebar.shouldTrackCell(kInfo, 3));
    release(middleOf(kInfo, 3));
    host.takeCalls();
    EXPECT_TRUE(sidebar.shouldTrackCell(kInfo, 1));
    EXPECT_THAT(host.takeCalls(), IsEmpty()); // another row than the selected one
    EXPECT_TRUE(sidebar.shouldTrackCell(kInfo, 3));
    EXPECT_EQ(host.takeCalls(), shows("/usb"));
}

// The buttons in the rows

TEST_F(VolumesTableSelection, scanButtonRefreshesTheVolumesAndStarts) {
    sidebar.selectVolumeByName("/a");
    host.takeCalls();
    click(kButton, 1);
    EXPECT_THAT(host.takeCalls(), ElementsAre("didSelectionChange /a", "setRootForRadial /a",
                                              "simpleUpdateVolumesInfo", "startAction"));
}

TEST_F(VolumesTableSelection, clickThatSelectsARowDoesNotPressItsButton) {
    click(kButton, 1);
    EXPECT_EQ(host.takeCalls(), shows("/a"));
}

TEST_F(VolumesTableSelection, nothingStartsWhenTheRefreshTakesTheSelectionAway) {
    sidebar.selectVolumeByName("/a");
    host.takeCalls();
    host.onUpdate = [this] {
        sidebar.resetVolumesArray();
        sidebar.reloadData();
    };
    sidebar.startAction();
    EXPECT_THAT(host.takeCalls(), ElementsAre("simpleUpdateVolumesInfo"));
}

TEST_F(VolumesTableSelection, stopButtonStops) {
    host.underScan = "/a";
    sidebar.setCanStart(false);
    sidebar.selectVolumeByName("/a");
    host.takeCalls();
    click(kButton, 1);
    EXPECT_EQ(host.takeCalls().back(), "stopAction");
}

TEST_F(VolumesTableSelection, onlyTheRowUnderScanHasAButtonWhileAScanRuns) {
    host.underScan = "/a";
    sidebar.setCanStart(false);
    sidebar.selectVolumeByName("/usb");
    EXPECT_TRUE(sidebar.isButtonCell(kButton, 1));
    EXPECT_FALSE(sidebar.isButtonCell(kButton, 3));
    host.takeCalls();
    click(kButton, 3);
    EXPECT_EQ(host.takeCalls(), shows("/usb"));
}

TEST_F(VolumesTableSelection, onlyTheSelectedRowHasAButtonWithoutAScan) {
    sidebar.selectVolumeByName("/usb");
    EXPECT_TRUE(sidebar.isButtonCell(kButton, 3));
    EXPECT_FALSE(sidebar.isButtonCell(kButton, 1));
    EXPECT_FALSE(sidebar.isButtonCell(kInfo, 3));
}

TEST_F(VolumesTableSelection, disabledButtonsCantBePressed) {
    sidebar.selectVolumeByName("/a");
    sidebar.setCanStart(false); // a stopped scan that still drains
    EXPECT_FALSE(sidebar.isButtonCell(kButton, 1));
    host.takeCalls();
    click(kButton, 1);
    EXPECT_EQ(host.takeCalls(), shows("/a"));
    sidebar.setCanStart(true);
    EXPECT_TRUE(sidebar.isButtonCell(kButton, 1));
    host.underScan = "/a";
    EXPECT_FALSE(sidebar.isButtonCell(kButton, 1));
}

// By keys

TEST_F(VolumesTableSelection, arrowsShowEachEntry) {
    key(Qt::Key_Down);
    EXPECT_EQ(host.takeCalls(), shows("/a"));
    key(Qt::Key_Down);
    EXPECT_EQ(host.takeCalls(), shows("/usb"));
    key(Qt::Key_End);
    EXPECT_EQ(host.takeCalls(), shows("/srv"));
    key(Qt::Key_Home);
    EXPECT_EQ(host.takeCalls(), shows("/a"));
}

TEST_F(VolumesTableSelection, returnScansTheSelectedEntry) {
    key(Qt::Key_Return);
    EXPECT_THAT(host.takeCalls(), IsEmpty());
    sidebar.selectVolumeByName("/srv");
    host.takeCalls();
    key(Qt::Key_Return);
    EXPECT_THAT(host.takeCalls(), ElementsAre("simpleUpdateVolumesInfo", "startAction"));
}

TEST_F(VolumesTableSelection, deleteRemovesAFolderButNoVolume) {
    sidebar.selectVolumeByName("/a");
    host.takeCalls();
    key(Qt::Key_Delete);
    EXPECT_THAT(host.takeCalls(), IsEmpty());
    sidebar.selectVolumeByName("/srv");
    host.takeCalls();
    key(Qt::Key_Delete);
    EXPECT_THAT(host.takeCalls(), ElementsAre("actionRemoveFolder"));
}

TEST_F(VolumesTableSelection, typedNameSelectsItsEntry) {
    QTest::keyClicks(&table, QStringLiteral("us"));
    EXPECT_EQ(sidebar.getSelectedVolume(), "/usb");
    EXPECT_EQ(host.takeCalls().back(), "setRootForRadial /usb");
}

TEST_F(VolumesTableSelection, rightClickSelectsAndAsksForAMenu) {
    QSignalSpy menus(&sidebar, &VolumesTableController::contextMenuRequested);
    QTest::mousePress(table.viewport(), Qt::RightButton, {}, middleOf(kInfo, 5));
    QContextMenuEvent event(QContextMenuEvent::Mouse, middleOf(kInfo, 5), QPoint(3, 4));
    QCoreApplication::sendEvent(table.viewport(), &event);
    EXPECT_EQ(sidebar.getSelectedVolume(), "/home/me");
    ASSERT_EQ(menus.count(), 1);
    EXPECT_EQ(menus.first().at(0), QPoint(3, 4));
}

} // namespace
} // namespace veltrano::test
