// The main controller and the sidebar: volumes that come, go and change, show types, and switching between
// trees.

#include "app/ControllerFixture.h"

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CSTreeControllerVolumesTest : public test::ControllerFixture {
protected:
    void mountThree() {
        mount("/one");
        mount("/two", 8000, "USB");
        mount("/three", 8000, "Virtual Interface");
    }
    VolumeFolderProtocol* treeOf(const std::string& path) {
        for (int row = 0; row < sidebar().numberOfRows(); ++row)
            if (const auto entry = sidebar().getItemByRow(row); entry && entry->getPath() == path)
                return entry->getScannedRoot().get();
        return nullptr;
    }
};

TEST_F(CSTreeControllerVolumesTest, volumesAreListedFromTheStartAndTheFirstIsSelected) {
    mountThree();
    start();
    EXPECT_THAT(rows(), ElementsAre("/one", "/two", "/three"));
    EXPECT_EQ(selected(), "/one");
    EXPECT_EQ(shown(), "/one");
    EXPECT_FALSE(isTreeShown());
}

TEST_F(CSTreeControllerVolumesTest, volumeIsCalledTheSameInSidebarProgressAndChart) {
    mount("/disk");
    volumes.volumes.back().name = "Field Drive";
    start();
    EXPECT_EQ(sidebar().nameOfRow(1), QStringLiteral("Field Drive"));
    EXPECT_EQ(chart().getRootObject()->getDisplayName(), "Field Drive");
    controller->startAction();
    EXPECT_EQ(window->progress().findChild<QLabel*>()->text(), QStringLiteral("Scanning “Field Drive”"));
    scanToItsEnd();
    ASSERT_TRUE(isTreeShown());
    EXPECT_EQ(chart().getRootObject()->getDisplayName(), "Field Drive");
    EXPECT_EQ(shown(), "/disk");
}

TEST_F(CSTreeControllerVolumesTest, emptySidebarLeavesTheHintInTheChartsPlace) {
    start();
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_EQ(shown(), std::nullopt);
    const auto* const hint = window->chartArea().findChild<QLabel*>();
    EXPECT_TRUE(hint->isVisible());
    mount("/one");
    EXPECT_FALSE(hint->isVisible());
}

TEST_F(CSTreeControllerVolumesTest, volumeThatComesGetsARowAndLeavesTheSelection) {
    mountThree();
    start();
    controller->selectVolumeByName("/two");
    mount("/four", 8000, "PCI-Express");
    EXPECT_THAT(rows(), ElementsAre("/one", "/two", "/three", "/four"));
    EXPECT_EQ(selected(), "/two");
}

TEST_F(CSTreeControllerVolumesTest, volumeThatComesAmongVolumesOnlyGetsARowToo) {
    mountThree();
    start();
    controller->setTableShowTypeVolumes();
    controller->selectVolumeByName("/two");
    mount("/four", 8000, "PCI-Express");
    EXPECT_THAT(rows(), ElementsAre("/one", "/two", "/three", "/four"));
    EXPECT_EQ(selected(), "/two");
}

TEST_F(CSTreeControllerVolumesTest, volumeThatComesAmongFoldersOnlyIsKeptForLater) {
    mountThree();
    start();
    controller->setTableShowTypeFolders();
    mount("/four", 8000, "PCI-Express");
    EXPECT_THAT(rows(), IsEmpty());
    controller->setTableShowTypeAll();
    EXPECT_THAT(rows(), ElementsAre("/one", "/two", "/three", "/four"));
}

TEST_F(CSTreeControllerVolumesTest, mountThatTellsOfNoSpaceMakesNoRow) {
    mountThree();
    start();
    volumes.volumes.push_back(volumeAt("/empty", 0));
    volumes.volumes.back().size = volumes.volumes.back().freeSize = 0;
    volumes.events.didMount("/empty");
    EXPECT_THAT(rows(), ElementsAre("/one", "/two", "/three"));
    controller->setTableShowTypeVolumes();
    volumes.events.didMount("/empty");
    EXPECT_THAT(rows(), ElementsAre("/one", "/two", "/three"));
}

TEST_F(CSTreeControllerVolumesTest, volumeThatGoesTakesItsRowAndGroupAlong) {
    mountThree();
    start();
    controller->selectVolumeByName("/three");
    unmount("/two");
    EXPECT_THAT(rows(), ElementsAre("/one", "/three"));
    EXPECT_EQ(sidebar().numberOfRows(), 4);
    EXPECT_EQ(selected(), "/three");
    EXPECT_EQ(shown(), "/three");
}

TEST_F(CSTreeControllerVolumesTest, selectedVolumeThatGoesHandsTheChartToAnother) {
    mountThree();
    start();
    controller->selectVolumeByName("/two");
    unmount("/two");
    ASSERT_TRUE(selected());
    EXPECT_NE(selected(), "/two");
    EXPECT_EQ(shown(), selected());
}

TEST_F(CSTreeControllerVolumesTest, lastVolumeThatGoesLeavesTheChartEmpty) {
    mount("/one");
    start();
    unmount("/one");
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_EQ(shown(), std::nullopt);
    EXPECT_FALSE(scanButton->isEnabled());
}

TEST_F(CSTreeControllerVolumesTest, nobodyHoldsTheTreeOfTheLastVolumeThatGoes) {
    mount("/disk");
    start();
    controller->startAction();
    scanToItsEnd();
    const std::weak_ptr<FolderSystemItem> tree = model->getRootItem();
    model->ClearResultsTree();
    ASSERT_TRUE(isTreeShown());
    unmount("/disk");
    EXPECT_EQ(shown(), std::nullopt);
    // The threads of the scan may still be on their way out.
    EXPECT_TRUE(QTest::qWaitFor([&] { return tree.expired(); }));
}

TEST_F(CSTreeControllerVolumesTest, scannedTreeGoesWithItsVolume) {
    mount("/disk");
    mount("/two", 8000, "USB");
    start();
    controller->selectVolumeByName("/disk");
    controller->startAction();
    scanToItsEnd();
    const std::weak_ptr<FolderSystemItem> tree = model->getRootItem();
    unmount("/disk");
    EXPECT_EQ(shown(), "/two");
    model->ClearResultsTree();
    EXPECT_TRUE(QTest::qWaitFor([&] { return tree.expired(); }));
}

TEST_F(CSTreeControllerVolumesTest, volumeThatGoesUnderItsScanStopsTheScan) {
    mount("/two", 8000, "USB");
    mount("/disk");
    start();
    disk->gateReads("/disk/b", gate);
    controller->selectVolumeByName("/disk");
    controller->startAction();
    ASSERT_TRUE(gate->waitForArrivals(1));
    unmount("/disk");
    EXPECT_FALSE(controller->isProcessing());
    EXPECT_THAT(rows(), ElementsAre("/two"));
    EXPECT_EQ(shown(), "/two");
    gate->release();
    ASSERT_TRUE(loop.runUntil([&] { return !sounds.played.empty(); }));
    EXPECT_EQ(shown(), "/two");
    EXPECT_FALSE(isTreeShown());
    EXPECT_TRUE(scanButton->isEnabled());
}

TEST_F(CSTreeControllerVolumesTest, volumeThatGoesElsewhereLeavesTheScanAlone) {
    mount("/two", 8000, "USB");
    mount("/disk");
    start();
    disk->gateReads("/disk/b", gate);
    controller->selectVolumeByName("/disk");
    controller->startAction();
    ASSERT_TRUE(gate->waitForArrivals(1));
    unmount("/two");
    EXPECT_EQ(controller->getProcessingVol(), "/disk");
    EXPECT_EQ(chart().getRootObject(), root());
}

TEST_F(CSTreeControllerVolumesTest, chartInsideAVolumeThatGoesShowsWhatIsSelectedThen) {
    mount("/disk");
    mount("/two", 8000, "USB");
    start();
    controller->selectVolumeByName("/disk");
    controller->startAction();
    scanToItsEnd();
    auto* const inside = dynamic_cast<FolderSystemItem*>(root()->getItemByFilePath("/disk/b"));
    ASSERT_TRUE(inside);
    chart().setRoot(inside);
    unmount("/disk");
    EXPECT_EQ(shown(), "/two");
}

TEST_F(CSTreeControllerVolumesTest, firstLookAtTheVolumesComesAfterTwentySecondsAndThenEveryTen) {
    start();
    loop.advance(19.9);
    EXPECT_EQ(volumes.refreshes.size(), 0u);
    loop.advance(0.2);
    EXPECT_EQ(volumes.refreshes.size(), 1u);
    loop.advance(9.8);
    EXPECT_EQ(volumes.refreshes.size(), 1u);
    loop.advance(0.2);
    EXPECT_EQ(volumes.refreshes.size(), 2u);
    loop.advance(10);
    EXPECT_EQ(volumes.refreshes.size(), 3u);
}

TEST_F(CSTreeControllerVolumesTest, lookThatFindsAChangeUpdatesTheEntryInPlace) {
    mountThree();
    start();
    const auto entry = controller->selectVolumeByName("/two");
    loop.advance(20);
    volumes.volumes[1].freeSize = 4000;
    volumes.answerRefreshes();
    EXPECT_EQ(entry->getfsize(), 4000);
    EXPECT_EQ(sidebar().getObjectForSelectedRow(), entry);
}

TEST_F(CSTreeControllerVolumesTest, whatAVolumeTellsByItselfIsTakenOver) {
    mountThree();
    start();
    const auto entry = controller->selectVolumeByName("/one");
    volumes.volumes[0].freeSize = 3000;
    volumes.events.didChange();
    EXPECT_EQ(entry->getfsize(), 3000);
}

TEST_F(CSTreeControllerVolumesTest, answerOfALookComesTooLateForAControllerThatHasGone) {
    start();
    loop.advance(20);
    controller.reset();
    volumes.answerRefreshes();
    EXPECT_FALSE(volumes.events.didMount);
    EXPECT_EQ(loop.pendingTimers(), 0u);
}

TEST_F(CSTreeControllerVolumesTest, drilledChartStaysWhenAnotherVolumeTellsSomethingNew) {
    mount("/disk");
    mount("/two", 8000, "USB");
    start();
    controller->selectVolumeByName("/disk");
    controller->startAction();
    scanToItsEnd();
    auto* const inside = dynamic_cast<FolderSystemItem*>(root()->getItemByFilePath("/disk/b"));
    chart().setRoot(inside);
    volumes.volumes[1].freeSize = 3000;
    volumes.events.didChange();
    EXPECT_EQ(shown(), "/disk/b");
}

TEST_F(CSTreeControllerVolumesTest, eachRowShowsItsOwnTree) {
    start();
    scanFolderToItsEnd("/disk/a");
    scanFolderToItsEnd("/disk/b");
    EXPECT_EQ(shown(), "/disk/b");
    controller->selectVolumeByName("/disk/a");
    EXPECT_EQ(shown(), "/disk/a");
    EXPECT_TRUE(isTreeShown());
    EXPECT_EQ(chart().getRootObject(), treeOf("/disk/a"));
    controller->selectVolumeByName("/disk/b");
    EXPECT_EQ(chart().getRootObject(), treeOf("/disk/b"));
}

TEST_F(CSTreeControllerVolumesTest, anotherRowMayBeSelectedDuringAScanAndKeepsTheChart) {
    mount("/two");
    start();
    scanHeldUp();
    controller->selectVolumeByName("/two");
    EXPECT_EQ(shown(), "/two");
    EXPECT_EQ(controller->getProcessingVol(), "/disk");
    gate->release();
    scanToItsEnd();
    EXPECT_EQ(shown(), "/two");
    EXPECT_FALSE(isTreeShown());
    EXPECT_EQ(treeOf("/disk"), root());
    controller->selectVolumeByName("/disk");
    EXPECT_EQ(chart().getRootObject(), root());
}

TEST_F(CSTreeControllerVolumesTest, scanReplacesTheOldTreeAtOnce) {
    start();
    scanFolderToItsEnd("/disk");
    VolumeFolderProtocol* const first = treeOf("/disk");
    disk->gateReads("/disk/b", gate);
    controller->startAction();
    ASSERT_TRUE(gate->waitForArrivals(1));
    EXPECT_NE(treeOf("/disk"), first);
    EXPECT_EQ(treeOf("/disk"), root());
    controller->stopAction();
    gate->release();
    ASSERT_TRUE(loop.runUntil([&] { return sounds.played.size() == 2; }));
    EXPECT_EQ(treeOf("/disk"), root());
    EXPECT_FALSE(sidebar().getObjectForSelectedRow()->isScanCompleted());
}

TEST_F(CSTreeControllerVolumesTest, finishedScanMarksItsEntryAsCompleted) {
    start();
    scanFolderToItsEnd("/disk");
    EXPECT_TRUE(sidebar().getObjectForSelectedRow()->isScanCompleted());
}

TEST_F(CSTreeControllerVolumesTest, endOfAnOverrunScanKeepsTheNewOnesTree) {
    start();
    scanHeldUp();
    controller->stopAction();
    disk->addFile("/slow/deep/file", 10);
    const auto second = std::make_shared<ReadGate>();
    disk->gateReads("/slow/deep", second);
    folderQuestions.addFolder("/slow");
    controller->doScanFolder("/slow");
    ASSERT_TRUE(second->waitForArrivals(1));
    gate->release();
    // The old scan ends while the new one reads: it counts as the end of a scan, and the window is at rest.
    ASSERT_TRUE(loop.runUntil([&] { return sounds.played.size() == 1; }));
    EXPECT_FALSE(controller->isProcessing());
    EXPECT_EQ(root()->getFullPath(), "/slow");
    EXPECT_EQ(treeOf("/slow"), root());
    EXPECT_EQ(chart().getRootObject(), root());
    second->release();
    ASSERT_TRUE(
        loop.runUntil([&] { return sounds.played.size() == 2; }, FakeMainLoop::WhenIdle::AdvanceClock));
    EXPECT_EQ(root()->gettotalsize(), 10);
    EXPECT_TRUE(sidebar().getObjectForSelectedRow()->isScanCompleted());
    EXPECT_EQ(controller->getScanned(), 2u);
}

TEST_F(CSTreeControllerVolumesTest, finishRunOfAnOverrunScanDoesNotEndTheNextOne) {
    start();
    controller->doScanFolder("/disk/a");
    walkToItsEnd();
    loop.advance(0.3);
    // What the late end of a scan before this one would leave behind.
    model->setStartPath(std::nullopt);
    disk->gateReads("/disk/b", gate);
    controller->doScanFolder("/disk/b");
    ASSERT_TRUE(gate->waitForArrivals(1));
    loop.advance(2);
    EXPECT_EQ(controller->getProcessingVol(), "/disk/b");
    EXPECT_THAT(sounds.played, IsEmpty());
}

TEST_F(CSTreeControllerVolumesTest, showTypesShowVolumesAndFoldersApart) {
    mount("/one");
    start();
    scanFolderToItsEnd("/disk/a");
    EXPECT_THAT(rows(), ElementsAre("/one", "/disk/a"));
    controller->setTableShowTypeVolumes();
    EXPECT_THAT(rows(), ElementsAre("/one"));
    EXPECT_EQ(selected(), "/one");
    controller->setTableShowTypeFolders();
    EXPECT_THAT(rows(), ElementsAre("/disk/a"));
    EXPECT_EQ(shown(), "/disk/a");
    EXPECT_TRUE(isTreeShown());
    controller->setTableShowTypeAll();
    EXPECT_THAT(rows(), ElementsAre("/one", "/disk/a"));
    EXPECT_EQ(selected(), "/disk/a");
}

TEST_F(CSTreeControllerVolumesTest, emptyTableLeavesTheChartWhatItShows) {
    mount("/one");
    start();
    controller->setTableShowTypeFolders();
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_EQ(shown(), "/one");
    // Held for the chart alone, and let go of with the chart's next root.
    const std::weak_ptr<VolumeItem> entry = model->getVolumesInfo().front();
    model->removeVolFromList("/one");
    EXPECT_FALSE(entry.expired());
    mount("/two");
    controller->setTableShowTypeAll();
    EXPECT_EQ(shown(), "/two");
    EXPECT_TRUE(entry.expired());
}

TEST_F(CSTreeControllerVolumesTest, whileAScanRunsOnlyAllCanBeShown) {
    mount("/one");
    start();
    controller->setTableShowTypeVolumes();
    mount("/disk");
    disk->gateReads("/disk/b", gate);
    controller->selectVolumeByName("/disk");
    controller->startAction();
    ASSERT_TRUE(gate->waitForArrivals(1));
    controller->setTableShowTypeFolders();
    EXPECT_EQ(controller->getTableShowType(), CSTreeController::TableShowType::Volumes);
    controller->setTableShowTypeAll();
    EXPECT_EQ(controller->getTableShowType(), CSTreeController::TableShowType::All);
    controller->setTableShowTypeVolumes();
    EXPECT_EQ(controller->getTableShowType(), CSTreeController::TableShowType::All);
    EXPECT_EQ(selected(), "/disk");
}

TEST_F(CSTreeControllerVolumesTest, rowsButtonRefreshesTheFactsBeforeItScans) {
    mount("/disk", 8000);
    start();
    volumes.volumes[0].freeSize = 4500;
    sidebar().startAction();
    EXPECT_EQ(sidebar().getObjectForSelectedRow()->getfsize(), 4500);
    EXPECT_EQ(controller->getProcessingVol(), "/disk");
    walkToItsEnd();
    // 4000 of 4000 bytes were found: the bar stands at its end, and no finish run follows.
    EXPECT_FALSE(controller->isProcessing());
}

TEST_F(CSTreeControllerVolumesTest, folderInsideAnEntrysTreeCanBecomeTheChartsRoot) {
    start();
    scanFolderToItsEnd("/disk");
    auto* const inside = dynamic_cast<FolderSystemItem*>(root()->getItemByFilePath("/disk/b"));
    ASSERT_TRUE(inside);
    controller->setRootForRadial(inside);
    EXPECT_EQ(shown(), "/disk/b");
    EXPECT_EQ(selected(), "/disk");
}

TEST_F(CSTreeControllerVolumesTest, colonsOfAPathAreShownAsSeparators) {
    EXPECT_EQ(CSTreeController::getLocalizedPath("/a:b/c::d"), "/a/b/c//d");
    EXPECT_EQ(CSTreeController::getKbytesDivider(), 1000);
}

} // namespace
} // namespace veltrano
