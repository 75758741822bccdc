// The menus: what they hold, when an entry can be chosen, and the keys that stand for them.

#include "app/ControllerFixture.h"

#include "app/FeedbackSheet.h"
#include "app/PreferencesSheet.h"
#include "app/WindowPanels.h"
#include "appearance/Fonts.h"
#include "appearance/Tokens.h"
#include "chart/RadialView.h"

#include <QClipboard>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

#include <set>

namespace veltrano {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Paths = std::vector<std::string>;

class MenusTest : public test::ControllerFixture {
protected:
    MenusTest() { settings.setArray("FFolders", {}); }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window.get(), static_cast<Qt::Key>(key), modifiers);
    }
    QMenu* menuNamed(const char* title) {
        for (QAction* action : window->menuBar()->actions())
            if (action->text().remove('&') == QLatin1String(title))
                return action->menu();
        ADD_FAILURE() << "no menu " << title;
        return nullptr;
    }
    /// The texts of a menu as it is seen, without separators and without what is hidden.
    std::vector<std::string> textsOf(QMenu& menu) {
        emit menu.aboutToShow();
        std::vector<std::string> texts;
        for (const QAction* action : menu.actions())
            if (action->isVisible() && !action->isSeparator())
                texts.push_back(action->text().remove('&').toStdString());
        return texts;
    }
};

TEST_F(MenusTest, barHoldsItsMenusInOrder) {
    start();
    std::vector<std::string> titles;
    for (const QAction* action : window->menuBar()->actions())
        titles.push_back(action->text().remove('&').toStdString());
    EXPECT_THAT(titles, ElementsAre("Veltrano", "File", "Edit", "View", "Scan", "Window", "Help"));
}

TEST_F(MenusTest, menusHoldTheirEntriesInOrder) {
    start();
    EXPECT_THAT(textsOf(*menuNamed("Veltrano")), ElementsAre("Preferences…", "Quit Veltrano"));
    EXPECT_THAT(textsOf(*menuNamed("File")),
                ElementsAre("Select Folder to Scan…", "Show in File Manager", "Get Info"));
    EXPECT_THAT(textsOf(*menuNamed("Edit")), ElementsAre("Copy Path", "Remove from Favorites"));
    EXPECT_THAT(textsOf(*menuNamed("View")),
                ElementsAre("All", "Disks Only", "Folders Only", "Enter Full Screen"));
    EXPECT_THAT(textsOf(*menuNamed("Scan")), ElementsAre("Scan Selected"));
    EXPECT_THAT(textsOf(*menuNamed("Window")), ElementsAre("Minimize", "Zoom", "Bring to Front"));
    EXPECT_THAT(textsOf(*menuNamed("Help")), ElementsAre("Send Feedback…"));
}

TEST_F(MenusTest, noTwoEntriesHaveTheSameKeys) {
    start();
    std::set<QString> keys;
    for (const auto* action : window->findChildren<QAction*>())
        for (const QKeySequence& sequence : action->shortcuts())
            EXPECT_TRUE(keys.insert(sequence.toString()).second) << sequence.toString().toStdString();
    for (const char* expected : {"F5", "F6", "Shift+F6", "F11", "Ctrl+O", "Ctrl+R", "Ctrl+I", "Ctrl+T",
                                 "Ctrl+,", "Ctrl+Q", "Ctrl+Shift+1", "Ctrl+Shift+2", "Ctrl+Shift+3"})
        EXPECT_TRUE(keys.contains(QLatin1String(expected))) << expected;
}

TEST_F(MenusTest, noTwoLettersOfTheBarAreTheSame) {
    start();
    std::set<QChar> letters;
    for (const QAction* action : window->menuBar()->actions()) {
        const auto at = action->text().indexOf('&');
        ASSERT_GE(at, 0);
        EXPECT_TRUE(letters.insert(action->text().at(at + 1).toLower()).second)
            << action->text().toStdString();
    }
}

TEST_F(MenusTest, pathOfTheChartIsCopiedFromAnywhereInTheWindow) {
    mount("/one");
    launch();
    controller->selectVolumeByName("/one");
    window->sidebarTable().setFocus();
    QApplication::clipboard()->clear();
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("/one"));
}

TEST_F(MenusTest, removeIsForFoldersAndNamesTheirList) {
    mount("/one");
    settings.setArray("FFolders", {"/disk/a"});
    settings.setArray("Recents", {"/disk/b"});
    launch();
    const QAction& remove = *menus().actionRemoveFolder;
    controller->selectVolumeByName("/one");
    EXPECT_FALSE(remove.isEnabled());
    EXPECT_EQ(remove.text(), QStringLiteral("Remove from Favorites"));
    controller->selectVolumeByName("/disk/a");
    EXPECT_TRUE(remove.isEnabled());
    EXPECT_EQ(remove.text(), QStringLiteral("Remove from Favorites"));
    controller->selectVolumeByName("/disk/b");
    EXPECT_TRUE(remove.isEnabled());
    EXPECT_EQ(remove.text(), QStringLiteral("Remove from Recents"));
}

TEST_F(MenusTest, addToFavoritesIsSeenForARecentFolderOnly) {
    mount("/one");
    settings.setArray("FFolders", {"/disk/a"});
    settings.setArray("Recents", {"/disk/b"});
    launch();
    const QAction& add = *menus().actionAddToFavorites;
    for (const char* path : {"/one", "/disk/a"}) {
        controller->selectVolumeByName(path);
        EXPECT_FALSE(add.isVisible()) << path;
    }
    controller->selectVolumeByName("/disk/b");
    EXPECT_TRUE(add.isVisible());
    EXPECT_TRUE(add.isEnabled());
    press(Qt::Key_T, Qt::ControlModifier);
    EXPECT_THAT(settings.arrayForKey("FFolders").value_or(Paths()), ElementsAre("/disk/a", "/disk/b"));
    EXPECT_FALSE(add.isVisible());
}

TEST_F(MenusTest, scanEntryTellsWhatItDoes) {
    launch();
    const QAction& toggle = *menus().toggleStartStopScan;
    EXPECT_EQ(toggle.text(), QStringLiteral("Scan Selected"));
    EXPECT_TRUE(toggle.isEnabled());
    scanHeldUp();
    EXPECT_EQ(toggle.text(), QStringLiteral("Stop Scanning"));
    EXPECT_TRUE(toggle.isEnabled());
    press(Qt::Key_F5);
    EXPECT_FALSE(controller->isProcessing());
    EXPECT_EQ(toggle.text(), QStringLiteral("Scan Selected"));
    gate->release();
    ASSERT_TRUE(loop.runUntil([&] { return !sounds.played.empty(); }));
    press(Qt::Key_F5);
    EXPECT_TRUE(controller->isProcessing());
}

TEST_F(MenusTest, scanKeyWithNothingSelectedDoesNothing) {
    launch();
    press(Qt::Key_F5);
    EXPECT_FALSE(controller->isProcessing());
}

TEST_F(MenusTest, finishRunStillCountsAsScanning) {
    launch();
    controller->doScanFolder("/disk");
    walkToItsEnd();
    EXPECT_EQ(menus().toggleStartStopScan->text(), QStringLiteral("Stop Scanning"));
    loop.advance(1);
    EXPECT_EQ(menus().toggleStartStopScan->text(), QStringLiteral("Scan Selected"));
}

TEST_F(MenusTest, whileAScanRunsNeitherAFolderNorLessRowsCanBeChosen) {
    launch();
    const std::vector<QAction*> idleOnly = {menus().actionScanFolder, menus().setTableShowTypeVolumes,
                                            menus().setTableShowTypeFolders};
    for (const QAction* action : idleOnly)
        EXPECT_TRUE(action->isEnabled());
    scanHeldUp();
    for (const QAction* action : idleOnly)
        EXPECT_FALSE(action->isEnabled());
    EXPECT_TRUE(menus().setTableShowTypeAll->isEnabled());
    controller->stopAction();
    for (const QAction* action : idleOnly)
        EXPECT_TRUE(action->isEnabled());
}

TEST_F(MenusTest, oneShowTypeIsMarkedAndKeysChangeIt) {
    mount("/one");
    settings.setArray("Recents", {"/disk"});
    launch();
    const std::vector<QAction*> types = {menus().setTableShowTypeAll, menus().setTableShowTypeVolumes,
                                         menus().setTableShowTypeFolders};
    const auto marked = [&] {
        std::vector<int> result;
        for (int index = 0; index < 3; ++index)
            if (types[static_cast<std::size_t>(index)]->isChecked())
                result.push_back(index);
        return result;
    };
    EXPECT_THAT(marked(), ElementsAre(0));
    press(Qt::Key_2, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_THAT(rows(), ElementsAre("/one"));
    EXPECT_THAT(marked(), ElementsAre(1));
    press(Qt::Key_3, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_THAT(rows(), ElementsAre("/disk"));
    EXPECT_THAT(marked(), ElementsAre(2));
    press(Qt::Key_1, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_THAT(rows(), ElementsAre("/one", "/disk"));
    EXPECT_THAT(marked(), ElementsAre(0));
}

TEST_F(MenusTest, showTypeThatADoScanSwitchesIsMarkedToo) {
    mount("/one");
    launch();
    controller->setTableShowTypeVolumes();
    controller->doScanFolder("/disk");
    EXPECT_TRUE(menus().setTableShowTypeFolders->isChecked());
}

TEST_F(MenusTest, selectedEntryIsShownInTheFileManager) {
    mount("/one");
    mount("/two \xFF", 8000, "USB");
    launch();
    controller->selectVolumeByName("/two \xFF");
    press(Qt::Key_R, Qt::ControlModifier);
    EXPECT_THAT(desktop.shown, ElementsAre(Paths{"/two \xFF"}));
    EXPECT_THAT(desktop.explained, IsEmpty());
    press(Qt::Key_I, Qt::ControlModifier);
    EXPECT_THAT(desktop.explained, ElementsAre(Paths{"/two \xFF"}));
}

TEST_F(MenusTest, withoutASelectionTheFileManagerIsNotAsked) {
    launch();
    controller->revealVolumeInFinder();
    controller->getVolumeInformation();
    EXPECT_THAT(desktop.shown, IsEmpty());
    EXPECT_THAT(desktop.explained, IsEmpty());
    EXPECT_FALSE(menus().revealVolumeInFinder->isEnabled());
    EXPECT_FALSE(menus().getVolumeInformation->isEnabled());
}

TEST_F(MenusTest, rowsMenuHoldsWhatCanBeDoneWithTheRow) {
    settings.setArray("Recents", {"/disk"});
    launch();
    emit sidebar().contextMenuRequested(QPoint(100, 100));
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    EXPECT_THAT(textsOf(*menu), ElementsAre("Scan Selected", "Show in File Manager", "Get Info",
                                            "Add to Favorites", "Remove from Recents"));
    menu->setActiveAction(menus().actionRemoveFolder);
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(MenusTest, menuOfADiskSaysNothingOfLists) {
    mount("/one");
    launch();
    controller->selectVolumeByName("/one");
    emit sidebar().contextMenuRequested(QPoint(100, 100));
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    EXPECT_THAT(textsOf(*menu), ElementsAre("Scan Selected", "Show in File Manager", "Get Info"));
    menu->close();
}

TEST_F(MenusTest, functionKeySixWalksTheRegions) {
    mount("/one");
    settings.setArray("Recents", {"/disk"});
    launch();
    controller->selectVolumeByName("/disk");
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    scanButton->setFocus();
    const auto region = [&]() -> std::string {
        const QWidget* const focus = window->focusWidget();
        if (window->findChild<SidebarPanel*>()->isAncestorOf(focus))
            return "sidebar";
        if (window->chartArea().isAncestorOf(focus))
            return "chart";
        return window->findChild<FooterBand*>()->isAncestorOf(focus) ? "footer" : "elsewhere";
    };
    std::vector<std::string> walked;
    for (int step = 0; step < 4; ++step) {
        press(Qt::Key_F6);
        walked.push_back(region());
    }
    EXPECT_THAT(walked, ElementsAre("sidebar", "chart", "footer", "sidebar"));
    walked.clear();
    for (int step = 0; step < 3; ++step) {
        press(Qt::Key_F6, Qt::ShiftModifier);
        walked.push_back(region());
    }
    EXPECT_THAT(walked, ElementsAre("footer", "chart", "sidebar"));
}

TEST_F(MenusTest, walkPassesOverARegionThatTakesNoFocus) {
    mount("/one");
    launch();
    ASSERT_FALSE(window->removeEntryButton().isEnabled());
    window->chartArea().getRadialView().setFocus();
    press(Qt::Key_F6);
    EXPECT_EQ(window->focusWidget(), &window->sidebarTable());
}

TEST_F(MenusTest, tabGoesFromTheHeaderThroughSidebarChartAndFooter) {
    settings.setArray("Recents", {"/disk"});
    launch();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    scanButton->setFocus();
    std::vector<QWidget*> order;
    for (int step = 0; step < 5; ++step) {
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
        order.push_back(window->focusWidget());
    }
    EXPECT_THAT(order,
                ElementsAre(folderButton, &window->sidebarTable(), &window->chartArea().getRadialView(),
                            &window->removeEntryButton(), scanButton));
}

TEST_F(MenusTest, feedbackOpensALetter) {
    launch();
    menus().actShowFBPanel->trigger();
    ASSERT_EQ(desktop.opened.size(), 1u);
    EXPECT_THAT(desktop.opened[0], testing::StartsWith("mailto:"));
    EXPECT_EQ(settings.boolForKey("FBSent"), true);
}

TEST_F(MenusTest, sheetThatAsksForFeedbackOpensALetterOrSavesTheAnswer) {
    launch();
    controller->askForFeedback();
    QPointer<FeedbackSheet> sheet = window->findChild<FeedbackSheet*>();
    ASSERT_TRUE(sheet);
    emit sheet->actDontAskFB(true);
    EXPECT_EQ(settings.boolForKey("DontAskFB"), std::nullopt);
    QTest::keyClick(sheet, Qt::Key_Escape);
    EXPECT_EQ(settings.boolForKey("DontAskFB"), true);
    EXPECT_THAT(desktop.opened, IsEmpty());
    controller->askForFeedback();
    emit window->findChild<FeedbackSheet*>()->actAgreeSendFB();
    EXPECT_EQ(desktop.opened.size(), 1u);
}

TEST_F(MenusTest, preferencesOpenByTheirKeysAndSaveWhenClosed) {
    launch();
    press(Qt::Key_Comma, Qt::ControlModifier);
    const QPointer<PreferencesSheet> sheet = window->findChild<PreferencesSheet*>();
    ASSERT_TRUE(sheet);
    EXPECT_TRUE(sheet->isVisible());
    emit sheet->actPlaySound(false);
    emit sheet->actForceShowHint(true);
    EXPECT_FALSE(controller->getPlaySound());
    EXPECT_TRUE(controller->getForceShowHint());
    EXPECT_TRUE(controller->getPlayFinishSound());
    EXPECT_EQ(settings.boolForKey("Saved"), std::nullopt);
    QTest::keyClick(sheet, Qt::Key_Escape);
    EXPECT_EQ(settings.boolForKey("Saved"), true);
    EXPECT_EQ(settings.boolForKey("PlaySound"), false);
    EXPECT_EQ(settings.boolForKey("ForceShowHint"), true);
}

TEST_F(MenusTest, preferencesAreClosedAndSavedByTheProgramToo) {
    launch();
    controller->showPreferences();
    const QPointer<PreferencesSheet> sheet = window->findChild<PreferencesSheet*>();
    const int before = settings.synchronizations;
    controller->closePreferences();
    EXPECT_FALSE(sheet && sheet->isVisible());
    EXPECT_EQ(settings.synchronizations, before + 1);
    controller->showPreferences();
    EXPECT_NE(window->findChildren<PreferencesSheet*>().last(), sheet.data());
}

TEST_F(MenusTest, preferencesAreOneSheet) {
    launch();
    controller->showPreferences();
    controller->showPreferences();
    EXPECT_EQ(window->findChildren<PreferencesSheet*>().size(), 1);
}

TEST_F(MenusTest, programsOwnTitleIsBold) {
    start();
    QMenuBar& bar = *window->menuBar();
    QAction* const program = bar.actions().at(0);
    const QRect bold = bar.actionGeometry(program);
    const QImage boldPicture = bar.grab(bold).toImage();
    EXPECT_GT(bold.width(), QFontMetrics(interfaceFont(12, QFont::Bold)).horizontalAdvance("Veltrano"));
    program->setFont(interfaceFont(12));
    EXPECT_LT(bar.actionGeometry(program).width(), bold.width());
    EXPECT_NE(bar.grab(bold).toImage(), boldPicture);
}

TEST_F(MenusTest, titleUnderThePointerGetsAPlate) {
    start();
    QMenuBar& bar = *window->menuBar();
    QAction* const file = bar.actions().at(1);
    const QPoint corner = bar.actionGeometry(file).topLeft() + QPoint(7, 4);
    EXPECT_EQ(bar.grab().toImage().pixelColor(corner), tokens::kMenuBar);
    bar.setActiveAction(file);
    EXPECT_EQ(bar.grab().toImage().pixelColor(corner), tokens::kButtonPressed);
    file->menu()->close();
}

} // namespace
} // namespace veltrano
