// The main controller and its settings: the start, the end, and what is kept between them.

#include "app/ControllerFixture.h"

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Paths = std::vector<std::string>;

class CSTreeControllerSettingsTest : public test::ControllerFixture {};

TEST_F(CSTreeControllerSettingsTest, firstStartHasItsDefaultsAndSelectsTheFirstEntry) {
    mount("/one");
    mount("/two", 8000, "USB");
    folderQuestions.addFolder("/usr");
    folderQuestions.addFolder("/home/ann");
    launch();
    EXPECT_TRUE(controller->getPlaySound());
    EXPECT_TRUE(controller->getPlayFinishSound());
    EXPECT_TRUE(controller->getShowHint());
    EXPECT_FALSE(controller->getForceShowHint());
    EXPECT_EQ(controller->getScanned(), 0u);
    EXPECT_THAT(rows(), ElementsAre("/one", "/two", "/usr", "/home/ann"));
    EXPECT_EQ(selected(), "/one");
}

TEST_F(CSTreeControllerSettingsTest, foldersComeWithTheLaunchEventOnly) {
    folderQuestions.addFolder("/usr");
    start();
    EXPECT_THAT(rows(), IsEmpty());
    notifications.postNotification("InitTreeControllerParameters");
    EXPECT_THAT(rows(), ElementsAre("/usr"));
}

TEST_F(CSTreeControllerSettingsTest, entryOfLastTimeIsSelectedAgain) {
    mount("/one");
    mount("/two", 8000, "USB");
    settings.setBool("Saved", true);
    settings.setString("SelectedVolume", "/two");
    launch();
    EXPECT_EQ(selected(), "/two");
    EXPECT_EQ(shown(), "/two");
}

TEST_F(CSTreeControllerSettingsTest, goneEntryOfLastTimeLeavesTheFirst) {
    mount("/one");
    settings.setBool("Saved", true);
    settings.setString("SelectedVolume", "/gone");
    launch();
    EXPECT_EQ(selected(), "/one");
}

TEST_F(CSTreeControllerSettingsTest, settingsThatOnlyTellTheyWereSavedAreAllOff) {
    settings.setBool("Saved", true);
    launch();
    EXPECT_FALSE(controller->getPlaySound());
    EXPECT_FALSE(controller->getPlayFinishSound());
    EXPECT_FALSE(controller->getShowHint());
}

TEST_F(CSTreeControllerSettingsTest, endOfTheProgramSavesTheSelection) {
    mount("/one");
    mount("/two", 8000, "USB");
    launch();
    controller->selectVolumeByName("/two");
    EXPECT_EQ(settings.boolForKey("Saved"), std::nullopt);
    notifications.postNotification("applicationWillTerminate");
    EXPECT_EQ(settings.stringForKey("SelectedVolume"), "/two");
    EXPECT_EQ(settings.boolForKey("Saved"), true);
    EXPECT_GT(settings.synchronizations, 0);
}

TEST_F(CSTreeControllerSettingsTest, savingWithNothingSelectedLeavesTheOldSelection) {
    settings.setString("SelectedVolume", "/before");
    settings.setArray("FFolders", {});
    launch();
    controller->SavePrefParameters();
    EXPECT_EQ(settings.stringForKey("SelectedVolume"), "/before");
}

TEST_F(CSTreeControllerSettingsTest, nextStartComesBackToTheSameEntry) {
    mount("/one");
    settings.setArray("FFolders", {});
    launch();
    scanFolderToItsEnd("/disk/a");
    scanFolderToItsEnd("/disk/b");
    controller->selectVolumeByName("/disk/a");
    notifications.postNotification("applicationWillTerminate");
    launch();
    EXPECT_EQ(selected(), "/disk/a");
    EXPECT_FALSE(isTreeShown());
    EXPECT_EQ(controller->getScanned(), 2u);
    EXPECT_THAT(rows(), ElementsAre("/one", "/disk/b", "/disk/a"));
}

TEST_F(CSTreeControllerSettingsTest, everyEndOfAScanIsCountedAndSaved) {
    launch();
    scanFolderToItsEnd("/disk/a");
    EXPECT_EQ(settings.integerForKey("Scanned"), 1);
    scanHeldUp();
    controller->stopAction();
    gate->release();
    ASSERT_TRUE(loop.runUntil([&] { return sounds.played.size() == 2; }));
    EXPECT_EQ(settings.integerForKey("Scanned"), 2);
    EXPECT_EQ(settings.stringForKey("SelectedVolume"), "/disk");
}

TEST_F(CSTreeControllerSettingsTest, scanEndsInSilenceWhenItsSoundIsOff) {
    settings.setBool("Saved", true);
    launch();
    controller->doScanFolder("/disk/a");
    ASSERT_TRUE(
        loop.runUntil([&] { return !controller->isProcessing(); }, FakeMainLoop::WhenIdle::AdvanceClock));
    EXPECT_THAT(sounds.played, IsEmpty());
}

TEST_F(CSTreeControllerSettingsTest, settingsThatCannotBeWrittenDisturbNothing) {
    settings.canSynchronize = false;
    launch();
    scanFolderToItsEnd("/disk/a");
    EXPECT_EQ(controller->getScanned(), 1u);
    EXPECT_THAT(alerts.questions, IsEmpty());
}

} // namespace
} // namespace veltrano
