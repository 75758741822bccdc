#include "app/MainWindow.h"
#include "app/FolderPanel.h"
#include "app/PathControl.h"
#include "app/ProgressBlock.h"
#include "app/QtMainLoop.h"
#include "app/WindowPanels.h"
#include "appearance/CCTableView.h"
#include "appearance/PathElementCell.h"
#include "appearance/PushButton.h"
#include "chart/ChartArea.h"
#include "platform/linux/LinuxCatalogue.h"
#include "support/TestDir.h"
#include "support/TreeBuilder.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace veltrano {
namespace {

/// Where a part of the window lies, in the window's coordinates.
template <class Part>
QRect placeOf(const MainWindow& window) {
    const auto* const part = window.findChild<Part*>();
    return {part->mapTo(&window, QPoint()), part->size()};
}

/// The plates of the header's two buttons, in the window's coordinates.
QRect plateOf(const MainWindow& window, const PushButton& button) {
    constexpr int margin = PushButton::kFocusMargin;
    return QRect(button.mapTo(&window, QPoint()), button.size()).adjusted(margin, margin, -margin, -margin);
}

class MainWindowTest : public testing::Test {
protected:
    MainWindowTest() {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        for (auto* button : window.findChildren<PushButton*>())
            if (button->text() == QStringLiteral("Scan Selected"))
                scanButton = button;
            else if (button->text() == QStringLiteral("Folder…"))
                folderButton = button;
    }

    QtMainLoop mainLoop;
    TestDir home;
    MainWindow window{mainLoop, std::make_shared<LinuxCatalogue>(), home.path()};
    PushButton* scanButton = nullptr;
    PushButton* folderButton = nullptr;
};

TEST_F(MainWindowTest, opensAtItsDefaultSizeWithItsName) {
    EXPECT_EQ(window.size(), QSize(1180, 760));
    EXPECT_EQ(window.minimumSize(), QSize(960, 600));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Veltrano"));
}

TEST(MainWindowSize, fitsASmallerScreenDownToTheMinimum) {
    EXPECT_EQ(MainWindow::startSize(QSize(2560, 1440)), QSize(1180, 760));
    EXPECT_EQ(MainWindow::startSize(QSize(1280, 690)), QSize(1180, 690));
    EXPECT_EQ(MainWindow::startSize(QSize(800, 480)), QSize(960, 600));
}

TEST_F(MainWindowTest, regionsLieAsDrawnAtTheDefaultSize) {
    EXPECT_EQ(QRect(window.menuBar()->mapTo(&window, QPoint()), window.menuBar()->size()),
              QRect(0, 0, 1180, 28));
    EXPECT_EQ(placeOf<HeaderBand>(window), QRect(0, 28, 1180, 52));
    EXPECT_EQ(placeOf<SidebarPanel>(window), QRect(0, 80, 270, 636));
    EXPECT_EQ(placeOf<ChartArea>(window), QRect(270, 80, 610, 636));
    EXPECT_EQ(placeOf<RightColumn>(window), QRect(880, 80, 300, 636));
    EXPECT_EQ(placeOf<FooterBand>(window), QRect(0, 716, 1180, 45));
    EXPECT_EQ(plateOf(window, *scanButton), QRect(12, 38, 146, 32));
    EXPECT_EQ(plateOf(window, *folderButton), QRect(166, 38, 92, 32));
}

TEST_F(MainWindowTest, allWidthGoesToTheChart) {
    window.resize(1400, 900);
    EXPECT_EQ(placeOf<SidebarPanel>(window).width(), 270);
    EXPECT_EQ(placeOf<RightColumn>(window), QRect(1100, 80, 300, 776));
    EXPECT_EQ(placeOf<ChartArea>(window), QRect(270, 80, 830, 776));
}

TEST_F(MainWindowTest, groundGoesOnWithoutAnEdgeInATallWindow) {
    window.resize(1180, 1800);
    const QImage picture = window.grab().toImage();
    const int column = 1180 - 1; // beside the cards of the right column
    for (int row = 1500; row < 1750; ++row) {
        const QColor above = picture.pixelColor(column, row - 1);
        const QColor here = picture.pixelColor(column, row);
        ASSERT_LE(std::abs(here.green() - above.green()), 2) << row;
    }
}

TEST_F(MainWindowTest, progressLiesInTheHeadersCentreWhereItIsShown) {
    auto* const block = window.findChild<ProgressBlock*>();
    EXPECT_FALSE(block->isVisible());
    window.setProgressShown(true);
    EXPECT_TRUE(block->isVisible());
    EXPECT_EQ(placeOf<ProgressBlock>(window), QRect(284, 38, 582, 34));
    window.setProgressShown(false);
    EXPECT_FALSE(block->isVisible());
}

TEST_F(MainWindowTest, pathLiesInTheHeadersCentreForAFolderOnly) {
    const test::TreeBuilder folder("/home/mara");
    window.setPathControlTextForItem(folder.root(), QString());
    EXPECT_TRUE(window.pathControl().isVisible());
    const QRect place = placeOf<PathControl>(window);
    EXPECT_EQ(place.topLeft(), QPoint(284, 40));
    EXPECT_EQ(place.height(), 28);
    const auto volume = test::TreeBuilder::volume("/", 1000, 400);
    window.setPathControlTextForItem(volume.root(), QString());
    EXPECT_FALSE(window.pathControl().isVisible());
    window.setPathControlTextForItem(nullptr, QString());
    EXPECT_FALSE(window.pathControl().isVisible());
}

TEST_F(MainWindowTest, aLongPathEndsBeforeTheRightColumn) {
    std::string path;
    for (int level = 0; level < 40; ++level)
        path += "/folder";
    const test::TreeBuilder deep(path);
    window.setPathControlTextForItem(deep.root(), QString());
    EXPECT_LE(placeOf<PathControl>(window).right() + 1, 880 - 12);
    EXPECT_GE(placeOf<PathControl>(window).right() + 1, 880 - 12 - 100);
    window.resize(960, 600);
    EXPECT_LE(placeOf<PathControl>(window).right() + 1, 660 - 12);
}

TEST_F(MainWindowTest, pathAndProgressShareTheCentreInHalves) {
    const test::TreeBuilder folder("/home/mara/a folder with a name that is long/and another one below it");
    window.setPathControlTextForItem(folder.root(), QString());
    const int alone = placeOf<PathControl>(window).width();
    window.setProgressShown(true);
    // 582 points less a gap of 16, in two.
    EXPECT_EQ(placeOf<ProgressBlock>(window), QRect(583, 38, 283, 34));
    EXPECT_EQ(placeOf<PathControl>(window).left(), 284);
    EXPECT_LE(placeOf<PathControl>(window).width(), 283);
    window.setProgressShown(false);
    EXPECT_EQ(placeOf<PathControl>(window).width(), alone);
    window.setProgressShown(true);
    window.setPathControlTextForItem(nullptr, QString());
    EXPECT_EQ(placeOf<ProgressBlock>(window), QRect(284, 38, 582, 34));
}

TEST_F(MainWindowTest, tellsWhichComponentWasClicked) {
    const test::TreeBuilder folder("/home");
    window.setPathControlTextForItem(folder.folder(folder.root(), "mara"), QString());
    QSignalSpy clicked(&window, &MainWindow::pathComponentClicked);
    QTest::mouseClick(window.pathControl().pathComponentCells()[1], Qt::LeftButton);
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked.at(0).at(0).toByteArray(), QByteArray("/home"));
}

TEST_F(MainWindowTest, scanButtonBecomesTheStopButton) {
    EXPECT_EQ(scanButton->text(), QStringLiteral("Scan Selected"));
    EXPECT_EQ(scanButton->kind(), PushButton::Kind::Primary);
    window.setScanning(true);
    EXPECT_EQ(scanButton->text(), QStringLiteral("Stop Scanning"));
    EXPECT_EQ(scanButton->kind(), PushButton::Kind::Stop);
    EXPECT_TRUE(scanButton->isEnabled());
}

TEST_F(MainWindowTest, nothingSelectedLeavesNothingToScan) {
    EXPECT_FALSE(scanButton->isEnabled());
    window.setCanScan(true);
    EXPECT_TRUE(scanButton->isEnabled());
}

TEST_F(MainWindowTest, noFolderCanBeChosenWhileAScanRuns) {
    EXPECT_TRUE(folderButton->isEnabled());
    window.setScanning(true);
    EXPECT_FALSE(folderButton->isEnabled());
}

TEST_F(MainWindowTest, buttonsAndKeysAskForTheSame) {
    window.setCanScan(true);
    QSignalSpy toggled(&window, &MainWindow::scanToggled);
    QSignalSpy asked(&window, &MainWindow::folderPanelRequested);
    QTest::mouseClick(scanButton, Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_F5);
    EXPECT_EQ(toggled.count(), 2);
    QTest::mouseClick(folderButton, Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(asked.count(), 2);
}

TEST_F(MainWindowTest, folderPanelGivesThePathInBytes) {
    home.createFolder("\xFF");
    QSignalSpy chosen(&window, &MainWindow::folderChosen);
    window.openFolderPanel();
    auto* const panel = window.findChild<FolderPanel*>();
    ASSERT_TRUE(panel);
    panel->openAt(home.path("\xFF"));
    QTest::keyClick(panel->focusWidget(), Qt::Key_Return);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen.at(0).at(0).toByteArray().toStdString(), home.path("\xFF"));
}

TEST_F(MainWindowTest, folderPanelOpensInTheHomeFolderAndThenAtTheLastChoice) {
    home.createFolder("one");
    QSignalSpy chosen(&window, &MainWindow::folderChosen);
    window.openFolderPanel();
    QPointer<FolderPanel> panel = window.findChild<FolderPanel*>();
    EXPECT_EQ(panel->findChild<QLineEdit*>()->text().toStdString(), home.path());
    QTest::keyClicks(panel->focusWidget(), QStringLiteral("one"));
    QTest::keyClick(panel->focusWidget(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([&] { return panel.isNull(); }));
    ASSERT_EQ(chosen.count(), 1);
    window.openFolderPanel();
    EXPECT_EQ(window.findChild<FolderPanel*>()->findChild<QLineEdit*>()->text().toStdString(),
              home.path("one"));
}

TEST_F(MainWindowTest, aCancelledFolderPanelChoosesNothing) {
    QSignalSpy chosen(&window, &MainWindow::folderChosen);
    window.openFolderPanel();
    QTest::keyClick(window.findChild<FolderPanel*>()->focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(chosen.count(), 0);
}

TEST_F(MainWindowTest, keysGoToTheSidebarAtFirst) {
    EXPECT_EQ(window.focusWidget(), &window.sidebarTable());
}

TEST_F(MainWindowTest, tellsWhenALiveResizeBeginsAndEnds) {
    // The window's own first layout counts as one.
    QSignalSpy ended(&window, &MainWindow::liveResizeEnded);
    ASSERT_TRUE(ended.wait() || ended.count() == 0);
    ended.clear();
    QSignalSpy started(&window, &MainWindow::liveResizeStarted);
    window.resize(1200, 780);
    window.resize(1210, 790);
    window.resize(1220, 800);
    EXPECT_EQ(started.count(), 1);
    EXPECT_EQ(ended.count(), 0);
    EXPECT_TRUE(ended.wait());
    EXPECT_EQ(ended.count(), 1);
}

TEST_F(MainWindowTest, fullScreenSwitchesBothWays) {
    QTest::keyClick(&window, Qt::Key_F11);
    EXPECT_TRUE(window.windowState().testFlag(Qt::WindowFullScreen));
    QTest::keyClick(&window, Qt::Key_F11);
    EXPECT_FALSE(window.windowState().testFlag(Qt::WindowFullScreen));
}

} // namespace
} // namespace veltrano
