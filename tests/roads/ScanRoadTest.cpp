// The whole road of a scan through the real window: choosing a folder, the growing chart, the end, a stop.

#include "app/FolderPanel.h"
#include "app/PathControl.h"
#include "appearance/MAAttachedWindow.h"
#include "appearance/PathElementCell.h"
#include "chart/RadialView.h"
#include "platform/linux/LinuxCatalogue.h"
#include "platform/linux/LinuxFolderQuestions.h"
#include "platform/posix/PosixFileActions.h"
#include "roads/Program.h"
#include "scan/SizeText.h"
#include "support/MemoryDisk.h"
#include "support/TestDir.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using test::kLimit;
using test::Program;

/// Takes the folder panel's road with the keyboard. `atOnce` is called when the choice has been dealt with,
/// before anything else can happen.
void chooseFolder(Program& program, const std::string& path, const std::function<void()>& atOnce = {}) {
    QTest::keyClick(&program.window, Qt::Key_O, Qt::ControlModifier);
    const QPointer<FolderPanel> panel = program.window.findChild<FolderPanel*>();
    ASSERT_TRUE(panel);
    bool isChosen = false;
    QObject::connect(&program.window, &MainWindow::folderChosen, panel, [&] {
        isChosen = true;
        if (atOnce)
            atOnce();
    });
    QTest::keyClick(panel->focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(panel->focusWidget(), QString::fromStdString(path));
    QTest::keyClick(panel->focusWidget(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([&] { return isChosen; }, kLimit));
}

class RealFolderRoad : public testing::Test {
protected:
    /// An empty sidebar at first.
    static MapSettings withoutFavorites() {
        MapSettings result;
        result.setArray("FFolders", {});
        return result;
    }

    TestDir folder;
    PosixFileActions files;
    MapSettings settings = withoutFavorites();
    Program program{{.catalogue = std::make_shared<LinuxCatalogue>(),
                     .files = files,
                     .settings = settings,
                     .makeFolderQuestions = [](MainLoop& loop) {
                         return std::make_unique<LinuxFolderQuestions>(loop);
                     }}};
};

//  folder
//  ├── a/one, a/two
//  └── b/c/three
TEST_F(RealFolderRoad, aChosenFolderBecomesAChartWithExactTotals) {
    folder.createFile("a/one", 10'000);
    folder.createFile("a/two", 300'000);
    folder.createFile("b/c/three", 70'000);
    chooseFolder(program, folder.path(), [&] {
        EXPECT_TRUE(program.controller.isProcessing());
        EXPECT_EQ(program.scanButton->text(), QStringLiteral("Stop Scanning"));
    });
    ASSERT_TRUE(program.waitForEnd());

    ASSERT_TRUE(program.root());
    EXPECT_EQ(program.root()->getFullPath(), folder.path());
    EXPECT_EQ(program.root()->gettotalsize(), sumOfTree(folder.path()).fileBytes);
    EXPECT_GT(program.root()->gettotalsize(), 0);
    EXPECT_FALSE(program.controller.isProcessing());
    EXPECT_EQ(program.scanButton->text(), QStringLiteral("Scan Selected"));
    EXPECT_TRUE(program.scanButton->isEnabled());
    EXPECT_THAT(program.sounds.played, ElementsAre("Submarine"));
}

TEST_F(RealFolderRoad, thePathControlTellsTheRootAndLeadsBackUp) {
    folder.createFile("a/one", 10'000);
    chooseFolder(program, folder.path());
    ASSERT_TRUE(program.waitForEnd());
    const PathControl& path = program.window.pathControl();
    EXPECT_TRUE(path.isVisible());
    EXPECT_EQ(path.getPath(), folder.path());

    FolderSystemItem* const top = program.root();
    program.chart().setRoot(top->childAtIndex(0)->asFolderSystemItem());
    EXPECT_EQ(path.getPath(), folder.path("a"));
    const auto& cells = path.pathComponentCells();
    ASSERT_GE(cells.size(), 3u);
    QTest::mouseClick(cells[cells.size() - 3], Qt::LeftButton); // above the scanned folder
    QTest::mouseClick(cells.back(), Qt::LeftButton);            // the root itself
    EXPECT_EQ(path.getPath(), folder.path("a"));
    QTest::mouseClick(cells[cells.size() - 2], Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return program.root() == top; }, kLimit));
    EXPECT_EQ(path.getPath(), folder.path());
}

TEST_F(RealFolderRoad, theHoverPanelTellsNameSizeAndDate) {
    folder.createFile("one", 10'000);
    chooseFolder(program, folder.path());
    ASSERT_TRUE(program.waitForEnd());
    RadialView& view = program.window.chartArea().getRadialView();
    const RingLayout& layout = program.chart().getLayout();
    const QPointF inFile = layout.m_Center + QPointF((layout.getRadius(0) + layout.getRadius(1)) / 2, 0);
    QTest::mouseMove(&view, view.getChartTransform().map(inFile).toPoint());
    const QString today = QLocale().toString(QDate::currentDate(), QLocale::ShortFormat);
    QStringList texts;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            texts.clear();
            for (const auto* pop : program.window.findChildren<MAAttachedWindow*>())
                for (const auto* label : pop->findChildren<QLabel*>())
                    texts.append(label->text());
            return texts.contains(today); // a busy disk tells it after the panel has come
        },
        kLimit));
    EXPECT_TRUE(texts.contains(QStringLiteral("one")));
    EXPECT_TRUE(
        texts.contains(QString::fromStdString(stringFromFileSizeShort1(program.root()->gettotalsize()))));
    program.notifications.postNotification("applicationIsDeactivating");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(program.window.findChildren<MAAttachedWindow*>().isEmpty());
}

TEST_F(RealFolderRoad, aScanOfAFolderEndsWithTheFinishRun) {
    folder.createFile("one", 1000);
    std::vector<double> values;
    chooseFolder(program, folder.path(), [&] {
        EXPECT_TRUE(program.bar().isIndeterminate());
        values.push_back(program.bar().value());
    });
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            if (const double value = program.bar().value(); values.empty() || values.back() != value)
                values.push_back(value);
            return !program.sounds.played.empty();
        },
        kLimit));
    EXPECT_THAT(values, ElementsAre(0, 500, 575, 650, 725, 800, 875, 950, 1000));
}

TEST_F(RealFolderRoad, anEmptyFolderEndsWithAnEmptyChart) {
    chooseFolder(program, folder.path());
    ASSERT_TRUE(program.waitForEnd());
    ASSERT_TRUE(program.root());
    EXPECT_EQ(program.root()->gettotalsize(), 0);
    EXPECT_EQ(program.root()->numberOfChildren(), 0u);
}

TEST_F(RealFolderRoad, aFolderThatHasGoneIsAskedAboutAndNotScanned) {
    folder.createFile("gone/file", 1000);
    const std::string path = folder.path() + "/gone";
    chooseFolder(program, path);
    ASSERT_TRUE(program.waitForEnd());
    folder.remove("gone");
    QTest::mouseClick(program.scanButton, Qt::LeftButton);
    EXPECT_FALSE(program.controller.isProcessing());
    ASSERT_EQ(program.alerts.questions.size(), 1u);
    EXPECT_EQ(program.alerts.questions[0].message, "Can't scan folder.");
    EXPECT_EQ(program.alerts.questions[0].informativeText,
              "Folder \"" + path + "\" does not exist. Remove it from the Favorites?");
    EXPECT_THAT(program.alerts.questions[0].buttons, ElementsAre("Yes", "No"));

    program.alerts.answers[0](1);
    EXPECT_TRUE(program.scanButton->isEnabled());
    EXPECT_TRUE(program.root());

    program.alerts.answers[0](0);
    EXPECT_FALSE(program.scanButton->isEnabled());
    EXPECT_THAT(program.rows(), IsEmpty());
}

TEST_F(RealFolderRoad, theSameFolderCanBeScannedAgain) {
    folder.createFile("one", 1000);
    chooseFolder(program, folder.path());
    ASSERT_TRUE(program.waitForEnd());
    folder.createFile("two", 500'000);
    program.sounds.played.clear();
    program.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&program.window));
    QTest::keyClick(&program.window, Qt::Key_F5);
    EXPECT_TRUE(program.controller.isProcessing());
    ASSERT_TRUE(program.waitForEnd());
    EXPECT_EQ(program.root()->gettotalsize(), sumOfTree(folder.path()).fileBytes);
}

/// A disk that holds its readers up.
class HeldUpRoad : public testing::Test {
protected:
    HeldUpRoad() {
        disk->addFile("/disk/read/file", 1000);
        disk->addFile("/disk/held/file", 5000);
        disk->gateReads("/disk/held", gate);
    }
    ~HeldUpRoad() override { gate->release(); }

    void scan(Program& program) {
        program.controller.doScanFolder("/disk");
        EXPECT_TRUE(gate->waitForArrivals(1));
    }

    static std::unique_ptr<FolderQuestions> makeQuestions(MainLoop&) {
        auto questions = std::make_unique<FakeFolderQuestions>();
        questions->addFolder("/disk");
        return questions;
    }

    std::shared_ptr<MemoryDisk> disk = std::make_shared<MemoryDisk>();
    std::shared_ptr<ReadGate> gate = std::make_shared<ReadGate>();
    SwitchedFiles files;
    MapSettings settings;
    test::Surroundings around{
        .catalogue = disk, .files = files, .settings = settings, .makeFolderQuestions = makeQuestions};
};

TEST_F(HeldUpRoad, aStopKeepsThePartialTree) {
    Program program(around);
    scan(program);
    QTest::mouseClick(program.scanButton, Qt::LeftButton);
    EXPECT_FALSE(program.controller.isProcessing());
    EXPECT_FALSE(program.scanButton->isEnabled());
    ASSERT_TRUE(program.waitForEnd());
    EXPECT_EQ(program.root()->gettotalsize(), 1000);
    EXPECT_EQ(program.scanButton->text(), QStringLiteral("Scan Selected"));
    EXPECT_TRUE(program.scanButton->isEnabled());
    EXPECT_THAT(program.sounds.played, ElementsAre("Submarine"));
}

TEST_F(HeldUpRoad, aStoppedScanTakesNoFinishRun) {
    Program program(around);
    scan(program);
    program.controller.stopAction();
    ASSERT_TRUE(program.waitForEnd());
    EXPECT_EQ(program.bar().value(), 0);
}

TEST_F(HeldUpRoad, aSecondScanIsRefusedInSilence) {
    Program program(around);
    scan(program);
    VolumeFolderProtocol* const shown = program.chart().getRootObject();
    program.controller.startAction();
    EXPECT_EQ(program.chart().getRootObject(), shown);
    EXPECT_THAT(program.alerts.questions, IsEmpty());
    gate->release();
    ASSERT_TRUE(program.waitForEnd());
    EXPECT_EQ(program.root()->gettotalsize(), 6000);
    EXPECT_EQ(program.sounds.played.size(), 1u);
}

TEST_F(HeldUpRoad, noFolderPanelOpensDuringAScan) {
    Program program(around);
    scan(program);
    QTest::keyClick(&program.window, Qt::Key_O, Qt::ControlModifier);
    program.controller.actionScanFolder();
    EXPECT_FALSE(program.window.findChild<FolderPanel*>());
}

TEST_F(HeldUpRoad, theProgramGoesAtOnceWithAWorkerStuckInADeadMount) {
    {
        Program program(around);
        scan(program);
        EXPECT_TRUE(program.window.close());
    }
    // The worker hangs at the gate and holds its catalogue still: nobody has waited for it.
    EXPECT_GT(disk.use_count(), 2);
}

TEST_F(HeldUpRoad, theWindowAnswersWhileAWorkerHangs) {
    Program program(around);
    scan(program);
    program.window.resize(1300, 800);
    bool turned = false;
    program.mainLoop.callLater(0, [&] { turned = true; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return turned; }));
}

} // namespace
} // namespace veltrano
