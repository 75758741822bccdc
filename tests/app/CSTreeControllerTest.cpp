// The main controller's rules, with a clock that the test turns and a disk in memory.

#include "app/ControllerFixture.h"
#include "app/ModifiedDateText.h"
#include "appearance/PMProgressIndicatorController.h"
#include "chart/RadialView.h"
#include "support/IconRecorders.h"

#include <QCursor>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CSTreeControllerTest : public test::ControllerFixture {
protected:
    CSTreeControllerTest() { start(); }
};

TEST_F(CSTreeControllerTest, withoutASelectionNothingIsScanned) {
    controller->startAction();
    EXPECT_FALSE(controller->isProcessing());
    EXPECT_FALSE(root());
    EXPECT_THAT(alerts.questions, IsEmpty());
}

TEST_F(CSTreeControllerTest, theHoverPanelShowsADateThatComesLate) {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    scanFolderToItsEnd("/disk");
    const RadialView& view = window->chartArea().getRadialView();
    QCursor::setPos(view.mapToGlobal(view.rect().center()));
    chart().ShowToolTipforItem(root());
    ASSERT_THAT(fileDates.asked, ElementsAre("/disk"));
    const auto isShown = [&](const QString& text) {
        for (const auto* label : window->findChildren<QLabel*>())
            if (label->isVisible() && label->text() == text)
                return true;
        return false;
    };
    const auto date = FileDates::Date(std::chrono::sys_days(std::chrono::year(2023) / 9 / 12));
    const QString text = stringModifiedDate(date, DateStyle::Short);
    EXPECT_FALSE(isShown(text));
    fileDates.observer("/disk/a", date);
    EXPECT_FALSE(isShown(text));
    fileDates.observer("/disk", date);
    EXPECT_TRUE(isShown(text));
    QCursor::setPos(0, 0); // off the charts of other tests
}

TEST_F(CSTreeControllerTest, nobodyIsToldOfDatesWhenTheControllerIsGone) {
    ASSERT_TRUE(fileDates.observer);
    controller.reset();
    EXPECT_FALSE(fileDates.observer);
}

TEST_F(CSTreeControllerTest, stopWithoutAScanDoesNothing) {
    controller->doScanFolder("/disk");
    walkToItsEnd();
    loop.advance(1);
    controller->stopAction();
    EXPECT_TRUE(scanButton->isEnabled());
    EXPECT_THAT(sounds.played, ElementsAre("Submarine"));
}

TEST_F(CSTreeControllerTest, scanIsToldByItsPathUntilTheFinishRunHasEnded) {
    controller->doScanFolder("/disk");
    EXPECT_EQ(controller->getProcessingVol(), "/disk");
    walkToItsEnd();
    loop.advance(0.75);
    EXPECT_TRUE(controller->isProcessing());
    EXPECT_THAT(sounds.played, IsEmpty());
    loop.advance(0.1);
    EXPECT_FALSE(controller->isProcessing());
    EXPECT_EQ(controller->getProcessingVol(), std::nullopt);
    EXPECT_THAT(sounds.played, ElementsAre("Submarine"));
}

TEST_F(CSTreeControllerTest, finishRunRisesEveryTenthOfASecond) {
    controller->doScanFolder("/disk");
    walkToItsEnd();
    loop.advance(0.05);
    EXPECT_EQ(bar().value(), 0);
    for (const int value : {500, 575, 650, 725, 800, 875, 950, 1000}) {
        loop.advance(0.1);
        EXPECT_EQ(bar().value(), value);
    }
}

// The run takes as long as it takes, so nothing can be told from its speed.
TEST_F(CSTreeControllerTest, finishRunGuessesNoTimeThatIsLeft) {
    controller->doScanFolder("/disk");
    walkToItsEnd();
    loop.advance(0.1);
    ASSERT_EQ(bar().value(), 500);
    loop.advance(0.7);
    ASSERT_EQ(bar().value(), 1000);
    EXPECT_EQ(progressText(), QStringLiteral("Scanning “disk”"));
}

TEST_F(CSTreeControllerTest, folderHasABarWithoutAnEndAndAVolumeOneWith) {
    controller->doScanFolder("/disk");
    EXPECT_TRUE(bar().isIndeterminate());
    walkToItsEnd();
    loop.advance(1);
    scanVolume(8000);
    EXPECT_FALSE(bar().isIndeterminate());
    EXPECT_EQ(bar().value(), 0);
}

TEST_F(CSTreeControllerTest, choosingAVolumesRootSelectsItOnly) {
    mount("/other");
    mount("/disk");
    controller->selectVolumeByName("/other");
    controller->doScanFolder("/disk");
    EXPECT_FALSE(controller->isProcessing());
    EXPECT_EQ(selected(), "/disk");
    EXPECT_TRUE(settings.arrayForKey("Recents").value_or(std::vector<std::string>()).empty());
    controller->toggleStartStopScan();
    EXPECT_TRUE(controller->isProcessing());
    EXPECT_TRUE(root()->isVol());
}

TEST_F(CSTreeControllerTest, barOfAVolumeIsTheCountedShareOfItsOccupiedBytes) {
    scanVolume(7000);
    int reports = 0;
    const auto token = notifications.addObserver(
        std::string(DIUpdateProgressNotification), [&](const NotificationCentre::Object& counted) {
            ++reports;
            EXPECT_EQ(bar().value(), std::any_cast<std::int64_t>(counted) * 1000 / 7000);
        });
    walkToItsEnd();
    EXPECT_GT(reports, 0);
    notifications.removeObserver(token);
}

TEST_F(CSTreeControllerTest, volumeThatIsCountedInFullTakesNoFinishRun) {
    scanVolume(4000);
    walkToItsEnd();
    EXPECT_FALSE(controller->isProcessing());
    EXPECT_EQ(bar().value(), 0);
    EXPECT_THAT(sounds.played, ElementsAre("Submarine"));
}

TEST_F(CSTreeControllerTest, counterOfAVolumeTellsTheReports) {
    scanVolume(8000);
    int reports = 0;
    const auto token = notifications.addObserver(std::string(DIUpdateProgressNotification),
                                                 [&](const NotificationCentre::Object&) { ++reports; });
    EXPECT_EQ(counter(), QString());
    walkToItsEnd();
    EXPECT_GT(reports, 0);
    EXPECT_EQ(counter(), QString::number(reports));
    notifications.removeObserver(token);
}

TEST_F(CSTreeControllerTest, counterPartsThousandsByABlank) {
    disk->gateReads("/disk", gate);
    scanVolume(8000);
    for (int report = 0; report < 1284; ++report)
        notifications.postNotification(std::string(DIUpdateProgressNotification),
                                       std::any(std::int64_t{report}));
    EXPECT_EQ(counter(), QStringLiteral("1 284"));
}

TEST_F(CSTreeControllerTest, counterKeepsSilentWhereNoOccupiedBytesAreKnown) {
    controller->doScanFolder("/disk");
    walkToItsEnd();
    loop.advance(1);
    EXPECT_EQ(counter(), QString());
}

TEST_F(CSTreeControllerTest, barOfAFolderHasNoEndInTheFinishRunEitherAndSaysNoTime) {
    controller->doScanFolder("/disk");
    walkToItsEnd();
    loop.advance(0.76);
    EXPECT_EQ(bar().value(), 950);
    EXPECT_TRUE(bar().isIndeterminate());
    EXPECT_EQ(window->progress().findChild<QLabel*>()->text(), QStringLiteral("Scanning “disk”"));
}

TEST_F(CSTreeControllerTest, firstLookAtTheProgressComesTwentyMillisecondsAfterTheStart) {
    disk->gateReads("/disk", gate);
    scanVolume(8000);
    loop.advance(0.019);
    EXPECT_EQ(counter(), QString());
    loop.advance(0.002);
    EXPECT_EQ(counter(), QStringLiteral("0"));
}

TEST_F(CSTreeControllerTest, newScanStartsItsCountersAnew) {
    scanVolume(8000);
    walkToItsEnd();
    loop.advance(1);
    disk->gateReads("/disk", gate);
    controller->startAction();
    EXPECT_EQ(bar().value(), 0);
    EXPECT_EQ(counter(), QString());
    loop.advance(0.03);
    EXPECT_EQ(bar().value(), 0);
    EXPECT_EQ(counter(), QStringLiteral("0"));
}

TEST_F(CSTreeControllerTest, folderScannedAfterAVolumeKeepsTheVolumesNumbers) {
    scanVolume(8000);
    walkToItsEnd();
    loop.advance(1);
    controller->doScanFolder("/disk/b");
    walkToItsEnd();
    EXPECT_EQ(bar().value(), 3000 * 1000 / 8000);
}

TEST_F(CSTreeControllerTest, folderTakesTheFinishRunWhateverItsBytesWereForAVolume) {
    scanVolume(3000);
    walkToItsEnd();
    ASSERT_FALSE(controller->isProcessing());
    controller->doScanFolder("/disk/b");
    walkToItsEnd();
    EXPECT_EQ(bar().value(), 1000);
    EXPECT_TRUE(controller->isProcessing());
    loop.advance(1);
    EXPECT_FALSE(controller->isProcessing());
}

TEST_F(CSTreeControllerTest, whileAScanRunsASecondIsRefused) {
    scanHeldUp();
    FolderSystemItem* const first = root();
    controller->startAction();
    EXPECT_EQ(root(), first);
    EXPECT_THAT(alerts.questions, IsEmpty());
}

TEST_F(CSTreeControllerTest, finishRunRefusesASecondScanToo) {
    controller->doScanFolder("/disk");
    walkToItsEnd();
    FolderSystemItem* const first = root();
    controller->startAction();
    EXPECT_EQ(root(), first);
    loop.advance(1);
    EXPECT_THAT(sounds.played, ElementsAre("Submarine"));
}

TEST_F(CSTreeControllerTest, stopDuringTheFinishRunLetsItEnd) {
    controller->doScanFolder("/disk");
    walkToItsEnd();
    loop.advance(0.3);
    controller->stopAction();
    EXPECT_TRUE(controller->isProcessing());
    loop.advance(1);
    EXPECT_FALSE(controller->isProcessing());
    EXPECT_TRUE(scanButton->isEnabled());
    EXPECT_EQ(scanButton->text(), QStringLiteral("Scan Selected"));
    EXPECT_THAT(sounds.played, ElementsAre("Submarine"));
}

TEST_F(CSTreeControllerTest, progressIsShownFromTheStartUntilTheWalkHasEnded) {
    EXPECT_FALSE(window->progress().isVisible());
    scanHeldUp();
    EXPECT_TRUE(window->progress().isVisible());
    controller->stopAction();
    EXPECT_TRUE(window->progress().isVisible());
    gate->release();
    ASSERT_TRUE(loop.runUntil([&] { return !sounds.played.empty(); }));
    EXPECT_FALSE(window->progress().isVisible());
}

TEST_F(CSTreeControllerTest, stopIsTrueAtOnceAndTheEndComesLater) {
    scanHeldUp();
    controller->toggleStartStopScan();
    EXPECT_FALSE(controller->isProcessing());
    EXPECT_FALSE(scanButton->isEnabled());
    EXPECT_TRUE(window->chartArea().getAnimView().isPulseRunning());
    EXPECT_THAT(sounds.played, IsEmpty());
    gate->release();
    ASSERT_TRUE(loop.runUntil([&] { return !sounds.played.empty(); }));
    EXPECT_FALSE(window->chartArea().getAnimView().isPulseRunning());
    EXPECT_TRUE(scanButton->isEnabled());
}

TEST_F(CSTreeControllerTest, stoppedVolumeShowsWhatWasNotReached) {
    disk->gateReads("/disk/b", gate);
    scanVolume(8000);
    ASSERT_TRUE(gate->waitForArrivals(1));
    controller->stopAction();
    gate->release();
    ASSERT_TRUE(loop.runUntil([&] { return !sounds.played.empty(); }));
    const FolderSystemItem& partial = *root();
    bool unscanned = false;
    for (std::size_t index = 0; index < partial.numberOfChildren(); ++index)
        unscanned = unscanned || partial.childAtIndex(index)->isUnscanned();
    EXPECT_TRUE(unscanned);
    EXPECT_EQ(chart().getRootObject(), root());
}

TEST_F(CSTreeControllerTest, scanThatStartsBeforeTheStoppedOneHasEndedRunsToItsOwnEnd) {
    scanHeldUp();
    const std::shared_ptr<FolderSystemItem> first = model->getRootItem();
    controller->stopAction();
    controller->doScanFolder("/disk/a");
    EXPECT_EQ(controller->getProcessingVol(), "/disk/a");
    EXPECT_NE(root(), first.get());
    gate->release();
    ASSERT_TRUE(
        loop.runUntil([&] { return sounds.played.size() == 2; }, FakeMainLoop::WhenIdle::AdvanceClock));
    EXPECT_EQ(root()->getFullPath(), "/disk/a");
    EXPECT_EQ(root()->gettotalsize(), 1000);
    EXPECT_EQ(chart().getRootObject(), root());
    EXPECT_FALSE(controller->isProcessing());
}

TEST_F(CSTreeControllerTest, treeThatANewScanReplacesIsHeldByNobody) {
    controller->doScanFolder("/disk/a");
    walkToItsEnd();
    loop.advance(1);
    const std::weak_ptr<FolderSystemItem> old = model->getRootItem();
    controller->startAction();
    EXPECT_EQ(chart().getRootObject(), root());
    // The threads of the old scan may still be on their way out.
    EXPECT_TRUE(QTest::qWaitFor([&] { return old.expired(); }));
}

TEST_F(CSTreeControllerTest, chartIsUpdatedInALaterTurn) {
    controller->doScanFolder("/disk");
    std::int64_t inTheTurn = -1;
    const auto token = notifications.addObserver(std::string(DIUpdateProgressNotification),
                                                 [&](const NotificationCentre::Object&) {
                                                     if (inTheTurn < 0 && root()->gettotalsize() == 4000)
                                                         inTheTurn = chart().getLayout().m_lTotalSize;
                                                 });
    walkToItsEnd();
    EXPECT_GE(inTheTurn, 0);
    EXPECT_LT(inTheTurn, 4000);
    loop.advance(0);
    EXPECT_EQ(chart().getLayout().m_lTotalSize, 4000);
    notifications.removeObserver(token);
}

/// A folder that was scanned once and has gone since.
class VanishedFolder : public test::ControllerFixture {
protected:
    VanishedFolder() {
        start();
        scanFolderToItsEnd("/disk");
        folderQuestions.folders.erase("/disk");
        files.exist = false;
    }
};

TEST_F(VanishedFolder, isAskedAboutAndNotScanned) {
    controller->startAction();
    EXPECT_FALSE(controller->isProcessing());
    ASSERT_EQ(alerts.questions.size(), 1u);
    EXPECT_EQ(alerts.questions[0].message, "Can't scan folder.");
    EXPECT_EQ(alerts.questions[0].informativeText,
              "Folder \"/disk\" does not exist. Remove it from the Favorites?");
    EXPECT_THAT(alerts.questions[0].buttons, ElementsAre("Yes", "No"));
}

TEST_F(VanishedFolder, staysAfterNo) {
    controller->startAction();
    alerts.answers[0](1);
    EXPECT_THAT(rows(), ElementsAre("/disk"));
}

TEST_F(VanishedFolder, goesAfterYes) {
    controller->startAction();
    alerts.answers[0](0);
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_EQ(settings.arrayForKey("Recents"), std::vector<std::string>());
}

TEST_F(VanishedFolder, goesAfterYesAlsoWhenAnotherIsSelectedByThen) {
    controller->startAction();
    scanFolderToItsEnd("/disk/a");
    alerts.answers[0](0);
    EXPECT_THAT(rows(), ElementsAre("/disk/a"));
    EXPECT_EQ(selected(), "/disk/a");
    EXPECT_EQ(shown(), "/disk/a");
}

TEST_F(VanishedFolder, answerAfterTheControllerHasGoneChangesNothing) {
    controller->startAction();
    controller.reset();
    alerts.answers[0](0);
    EXPECT_EQ(settings.arrayForKey("Recents"), std::vector<std::string>{"/disk"});
}

TEST_F(VanishedFolder, folderThatKeepsSilentIsTakenToBeThere) {
    folderQuestions.silent.insert("/disk");
    controller->startAction();
    EXPECT_TRUE(controller->isProcessing());
}

TEST_F(CSTreeControllerTest, mountedVolumeIsScannedWithoutAskingItsPath) {
    mount("/disk");
    files.exist = false;
    folderQuestions.folders.erase("/disk");
    controller->startAction();
    EXPECT_TRUE(controller->isProcessing());
}

TEST_F(CSTreeControllerTest, controllerThatGoesDuringTheFinishRunLeavesItUnfinished) {
    controller->doScanFolder("/disk");
    walkToItsEnd();
    loop.advance(0.3);
    const double value = bar().value();
    controller.reset();
    loop.advance(1);
    EXPECT_EQ(bar().value(), value);
    EXPECT_THAT(sounds.played, IsEmpty());
}

TEST_F(CSTreeControllerTest, controllerThatGoesDuringAScanHearsNothingMore) {
    scanHeldUp();
    controller.reset();
    gate->release();
    loop.advance(1);
    EXPECT_THAT(sounds.played, IsEmpty());
}

TEST_F(CSTreeControllerTest, liveResizeRestsThePulseAndTheOutlines) {
    scanHeldUp();
    QSignalSpy ended(window.get(), &MainWindow::liveResizeEnded);
    const AnimView& overlay = window->chartArea().getAnimView();
    ASSERT_TRUE(overlay.isPulseRunning());
    // More than one new size: none of them may bring back what rests.
    for (const int width : {1200, 1210, 1220}) {
        window->resize(width, 780);
        EXPECT_FALSE(overlay.isPulseRunning());
        EXPECT_FALSE(overlay.isSelectionShown());
    }
    ASSERT_TRUE(ended.wait());
    EXPECT_TRUE(overlay.isPulseRunning());
    EXPECT_TRUE(overlay.isSelectionShown());
}

TEST_F(CSTreeControllerTest, fullScreenRestsThePulseAndTheOutlinesUntilItIsThere) {
    scanHeldUp();
    QSignalSpy started(window.get(), &MainWindow::liveResizeStarted);
    QSignalSpy ended(window.get(), &MainWindow::liveResizeEnded);
    const AnimView& overlay = window->chartArea().getAnimView();
    QTest::keyClick(window.get(), Qt::Key_F11);
    EXPECT_EQ(started.count(), 1);
    EXPECT_FALSE(overlay.isPulseRunning());
    EXPECT_FALSE(overlay.isSelectionShown());
    ASSERT_TRUE(ended.wait());
    EXPECT_TRUE(overlay.isPulseRunning());
    EXPECT_TRUE(overlay.isSelectionShown());
}

TEST_F(CSTreeControllerTest, resizeOfAnIdleWindowStartsNoPulse) {
    controller->doScanFolder("/disk");
    walkToItsEnd();
    loop.advance(1);
    QSignalSpy ended(window.get(), &MainWindow::liveResizeEnded);
    window->resize(1200, 780);
    ASSERT_TRUE(ended.wait());
    EXPECT_FALSE(window->chartArea().getAnimView().isPulseRunning());
}

/// With an icon to show the progress on.
class ScanOnTheIcon : public CSTreeControllerTest {
protected:
    RecordedIcon icon;
    RecordedLauncher launcher;
    PMProgressIndicatorController dock{loop, icon, launcher};
};

TEST_F(ScanOnTheIcon, theBarIsOnTheIconFromTheStartToTheEndOfAScan) {
    controller->doScanFolder("/disk");
    EXPECT_EQ(dock.numProgressIndicators(), 1U);
    walkToItsEnd();
    loop.advance(0.5);
    EXPECT_EQ(dock.numProgressIndicators(), 1U);
    loop.advance(0.5);
    EXPECT_EQ(dock.numProgressIndicators(), 0U);
    EXPECT_EQ(icon.shown.back(), icon.icon);
    EXPECT_EQ(launcher.told.back(), std::nullopt);
}

TEST_F(ScanOnTheIcon, aStoppedScanLeavesTheIcon) {
    scanHeldUp();
    EXPECT_EQ(dock.numProgressIndicators(), 1U);
    controller->stopAction();
    gate->release();
    EXPECT_TRUE(loop.runUntil([&] { return dock.numProgressIndicators() == 0; }));
}

TEST_F(ScanOnTheIcon, theDockHearsHowFarTheScanOfAVolumeIs) {
    disk->gateReads("/disk", gate);
    scanVolume(8000);
    notifications.postNotification(std::string(DIUpdateProgressNotification), std::any(std::int64_t{4000}));
    loop.advance(0.2);
    EXPECT_EQ(launcher.told.back(), 0.5);
}

} // namespace
} // namespace veltrano
