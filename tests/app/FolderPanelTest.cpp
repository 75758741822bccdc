// The folder panel with real key and mouse events, over real folders and over a disk that holds readers up.

#include "app/FolderPanel.h"

#include "app/FolderPanelControls.h"
#include "appearance/CheckBox.h"
#include "appearance/PushButton.h"
#include "platform/linux/LinuxCatalogue.h"
#include "support/MemoryDisk.h"
#include "support/TestDir.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kLimit = 20'000; // milliseconds that a wait may take before the test fails

class FolderPanelTest : public testing::Test {
protected:
    void SetUp() override { open(std::make_shared<LinuxCatalogue>(), folder.path(), folder.path()); }

    /// Opens the panel over a window, as the main window does.
    void open(std::shared_ptr<FileCatalogue> catalogue, const std::string& home, const std::string& path) {
        window.resize(800, 600);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        delete panel;
        panel = new FolderPanel(std::move(catalogue), home, &window);
        QObject::connect(panel, &FolderPanel::folderChosen, &window,
                         [this](const QByteArray& bytes) { chosen.push_back(bytes.toStdString()); });
        panel->openAt(path);
        panel->open();
        // Shortcuts work in the active window only.
        EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == panel; }, kLimit));
        for (auto* view : panel->findChildren<FolderListView*>())
            (view->accessibleName() == QStringLiteral("Folders") ? list : places) = view;
        field = panel->findChild<PathField*>();
        hidden = panel->findChild<CheckBox*>();
    }

    PushButton* button(const QString& name) {
        for (auto* each : panel->findChildren<PushButton*>())
            if (each->text() == name || each->accessibleName() == name)
                return each;
        ADD_FAILURE() << "no button " << name.toStdString();
        return nullptr;
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(panel->focusWidget(), key, modifiers);
    }
    void type(const QString& text) { QTest::keyClicks(panel->focusWidget(), text); }
    /// Puts the line in the place of the field's.
    void typePath(const std::string& path) {
        field->setFocus();
        press(Qt::Key_A, Qt::ControlModifier);
        type(QString::fromStdString(path));
    }

    static std::vector<std::string> textsOf(const FolderListView& view) {
        std::vector<std::string> texts;
        for (int row = 0; row < view.model()->rowCount(); ++row)
            texts.push_back(view.model()->index(row, 0).data().toString().toStdString());
        return texts;
    }
    bool waitForRows(const std::vector<std::string>& texts) {
        return QTest::qWaitFor([&] { return textsOf(*list) == texts; }, kLimit);
    }
    bool waitForNotice(const QString& notice) {
        return QTest::qWaitFor([&] { return list->notice() == notice; }, kLimit);
    }
    bool waitForMessage(const QString& text) {
        const auto* const label = panel->findChild<QLabel*>();
        return QTest::qWaitFor([&] { return label->isVisible() && label->text() == text; }, kLimit);
    }
    bool waitForClose() {
        return QTest::qWaitFor([&] { return panel.isNull(); }, kLimit);
    }
    /// What the list's selected row shows, empty for none.
    std::string selected() const {
        const QModelIndexList rows = list->selectionModel()->selectedIndexes();
        return rows.isEmpty() ? std::string() : rows.first().data().toString().toStdString();
    }
    void doubleClickRow(int row) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, rowCentre(*list, row));
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, rowCentre(*list, row));
    }
    QPoint rowCentre(const FolderListView& view, int row) const {
        return view.visualRect(view.model()->index(row, 0)).center();
    }

    TestDir folder;
    QWidget window;
    QPointer<FolderPanel> panel;
    PathField* field = nullptr;
    FolderListView* list = nullptr;
    FolderListView* places = nullptr;
    CheckBox* hidden = nullptr;
    std::vector<std::string> chosen;
};

TEST_F(FolderPanelTest, hasItsTitleAndPromptAndIsASheet) {
    EXPECT_EQ(panel->windowTitle(), QStringLiteral("Select folder to scan"));
    EXPECT_EQ(panel->windowModality(), Qt::WindowModal);
    EXPECT_EQ(panel->size(), QSize(640, 440));
    EXPECT_EQ(button(QStringLiteral("Select"))->kind(), PushButton::Kind::Primary);
    EXPECT_EQ(button(QStringLiteral("Cancel"))->kind(), PushButton::Kind::Plain);
}

TEST_F(FolderPanelTest, beginsInTheFieldWithThePathSelected) {
    EXPECT_EQ(panel->focusWidget(), field);
    EXPECT_EQ(field->selectedText().toStdString(), folder.path());
}

TEST_F(FolderPanelTest, selectTakesTheFolderShown) {
    QTest::mouseClick(button(QStringLiteral("Select")), Qt::LeftButton);
    EXPECT_THAT(chosen, ElementsAre(folder.path()));
    EXPECT_TRUE(waitForClose());
}

TEST_F(FolderPanelTest, returnInTheUntouchedFieldTakesTheFolderShown) {
    press(Qt::Key_Return);
    EXPECT_THAT(chosen, ElementsAre(folder.path()));
}

TEST_F(FolderPanelTest, selectTakesTheSelectedRow) {
    folder.createFolder("one");
    folder.createFolder("two");
    panel->openAt(folder.path());
    ASSERT_TRUE(waitForRows({"one", "two"}));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, rowCentre(*list, 1));
    QTest::mouseClick(button(QStringLiteral("Select")), Qt::LeftButton);
    EXPECT_THAT(chosen, ElementsAre(folder.path("two")));
}

TEST_F(FolderPanelTest, aClickBesideTheRowsSelectsNone) {
    folder.createFolder("one");
    panel->openAt(folder.path());
    ASSERT_TRUE(waitForRows({"one"}));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, rowCentre(*list, 0));
    EXPECT_EQ(selected(), "one");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      rowCentre(*list, 0) + QPoint(0, 2 * FolderRowDelegate::kRowHeight));
    EXPECT_EQ(selected(), "");
}

TEST_F(FolderPanelTest, aNameThatIsNoTextIsShownEnteredAndChosenByItsBytes) {
    const std::string name = "bad\xFFname";
    folder.createFolder(name + "/inside\xFE");
    panel->openAt(folder.path());
    ASSERT_TRUE(waitForRows({"bad\uFFFDname"}));
    doubleClickRow(0);
    ASSERT_TRUE(waitForRows({"inside\uFFFD"}));
    EXPECT_EQ(field->text().toStdString(), folder.path() + "/bad\uFFFDname");
    list->setFocus();
    press(Qt::Key_Down);
    QTest::mouseClick(button(QStringLiteral("Select")), Qt::LeftButton);
    EXPECT_THAT(chosen, ElementsAre(folder.path(name + "/inside\xFE")));
}

TEST_F(FolderPanelTest, twoNamesThatLookTheSameAreTwoFolders) {
    folder.createFolder("x\xFE");
    folder.createFolder("x\xFF");
    panel->openAt(folder.path());
    ASSERT_TRUE(waitForRows({"x\uFFFD", "x\uFFFD"}));
    list->setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    QTest::mouseClick(button(QStringLiteral("Select")), Qt::LeftButton);
    EXPECT_THAT(chosen, ElementsAre(folder.path("x\xFF")));
}

TEST_F(FolderPanelTest, lineBreaksAndTurningMarksInNamesAreMadeVisible) {
    folder.createFolder("line\nbreak");
    folder.createFolder("turn\u202Eed");
    panel->openAt(folder.path());
    EXPECT_TRUE(waitForRows({"line\u240Abreak", "turn\uFFFDed"}));
}

TEST_F(FolderPanelTest, markupInANameIsNoMarkupInItsTip) {
    folder.createFolder("<b>bold<b>");
    panel->openAt(folder.path());
    ASSERT_TRUE(waitForRows({"<b>bold<b>"}));
    const QString tip = list->model()->index(0, 0).data(Qt::ToolTipRole).toString();
    EXPECT_TRUE(tip.contains(QStringLiteral("&lt;b&gt;bold&lt;b&gt;"))) << tip.toStdString();
}

TEST_F(FolderPanelTest, aTypedPathIsChosenByReturn) {
    folder.createFolder("deep/down");
    typePath(folder.path("deep/down"));
    press(Qt::Key_Return);
    EXPECT_TRUE(waitForClose());
    EXPECT_THAT(chosen, ElementsAre(folder.path("deep/down")));
}

TEST_F(FolderPanelTest, aTypedPathIsChosenByTheButton) {
    folder.createFolder("deep/down");
    typePath("deep/down");
    QTest::mouseClick(button(QStringLiteral("Select")), Qt::LeftButton);
    EXPECT_TRUE(waitForClose());
    EXPECT_THAT(chosen, ElementsAre(folder.path("deep/down")));
}

TEST_F(FolderPanelTest, aTildeLeadsToTheHomeFolder) {
    folder.createFolder("music");
    panel->openAt("/");
    typePath("~/music");
    press(Qt::Key_Return);
    EXPECT_TRUE(waitForClose());
    EXPECT_THAT(chosen, ElementsAre(folder.path("music")));
}

TEST_F(FolderPanelTest, aTypedPathWithoutAFolderIsToldOfAndThePanelStays) {
    folder.createFile("file");
    for (const char* name : {"file", "nowhere", ""}) {
        typePath(name);
        press(Qt::Key_Backspace);
        type(QString::fromLatin1(name).right(1));
        press(Qt::Key_Return);
        EXPECT_TRUE(waitForMessage(QStringLiteral("There is no folder at this path."))) << name;
    }
    EXPECT_THAT(chosen, IsEmpty());
    EXPECT_TRUE(panel->isVisible());
}

TEST_F(FolderPanelTest, tabFromATypedPathShowsItsFolderAndChoosesNothing) {
    folder.createFolder("deep/down/below");
    for (const auto& [key, modifiers] :
         {std::pair(Qt::Key_Tab, Qt::KeyboardModifiers()),
          std::pair(Qt::Key_Backtab, Qt::KeyboardModifiers(Qt::ShiftModifier))}) {
        panel->openAt(folder.path());
        ASSERT_TRUE(waitForRows({"deep"}));
        typePath("deep/down");
        press(key, modifiers);
        EXPECT_FALSE(field->hasFocus());
        ASSERT_TRUE(waitForRows({"below"}));
        EXPECT_EQ(field->text().toStdString(), folder.path("deep/down"));
        EXPECT_EQ(selected(), "");
    }
    EXPECT_THAT(chosen, IsEmpty());
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_TRUE(waitForRows({"deep"}));
}

TEST_F(FolderPanelTest, tabFromAPathWithoutAFolderTellsAndKeepsListAndPath) {
    folder.createFolder("a");
    folder.createFile("file");
    panel->openAt(folder.path());
    ASSERT_TRUE(waitForRows({"a"}));
    typePath("file");
    press(Qt::Key_Tab);
    EXPECT_TRUE(waitForMessage(QStringLiteral("There is no folder at this path.")));
    EXPECT_EQ(field->text(), QStringLiteral("file"));
    EXPECT_THAT(textsOf(*list), ElementsAre("a"));
}

TEST_F(FolderPanelTest, selectAfterTabChoosesTheTypedPath) {
    folder.createFolder("deep/down");
    typePath("deep/down");
    press(Qt::Key_Tab);
    button("Select")->click(); // before the folder has answered, or after
    ASSERT_TRUE(waitForClose());
    EXPECT_THAT(chosen, ElementsAre(folder.path("deep/down")));
}

TEST_F(FolderPanelTest, theMessageGoesWithTheNextLetter) {
    typePath("nowhere");
    press(Qt::Key_Return);
    ASSERT_TRUE(waitForMessage(QStringLiteral("There is no folder at this path.")));
    press(Qt::Key_Backspace);
    EXPECT_FALSE(panel->findChild<QLabel*>()->isVisible());
}

TEST_F(FolderPanelTest, turningToARowTakesBackWhatWasTyped) {
    folder.createFolder("one");
    panel->openAt(folder.path());
    ASSERT_TRUE(waitForRows({"one"}));
    typePath("nowhere");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, rowCentre(*list, 0));
    EXPECT_EQ(field->text().toStdString(), folder.path());
    QTest::mouseClick(button(QStringLiteral("Select")), Qt::LeftButton);
    EXPECT_THAT(chosen, ElementsAre(folder.path("one")));
}

TEST_F(FolderPanelTest, escapeChoosesNothing) {
    press(Qt::Key_Escape);
    EXPECT_TRUE(waitForClose());
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(FolderPanelTest, cancelChoosesNothing) {
    QTest::mouseClick(button(QStringLiteral("Cancel")), Qt::LeftButton);
    EXPECT_TRUE(waitForClose());
    EXPECT_THAT(chosen, IsEmpty());
}

//  folder
//  └── a/b/c
class FolderPanelRoads : public FolderPanelTest {
protected:
    void SetUp() override {
        folder.createFolder("a/b/c");
        folder.createFolder("z");
        FolderPanelTest::SetUp();
        EXPECT_TRUE(waitForRows({"a", "z"}));
        list->setFocus();
    }
    bool shows(const std::string& path, const std::vector<std::string>& rows) {
        return waitForRows(rows) && field->text().toStdString() == path;
    }
};

TEST_F(FolderPanelRoads, returnEntersTheRow) {
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_TRUE(shows(folder.path("a"), {"b"}));
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(FolderPanelRoads, nothingIsSelectedInAFolderJustEntered) {
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    ASSERT_TRUE(shows(folder.path("a"), {"b"}));
    EXPECT_EQ(selected(), "");
    press(Qt::Key_Return);
    EXPECT_THAT(chosen, ElementsAre(folder.path("a")));
}

TEST_F(FolderPanelRoads, backspaceInTheListGoesToTheParent) {
    panel->openAt(folder.path("a/b"));
    ASSERT_TRUE(waitForRows({"c"}));
    list->setFocus();
    press(Qt::Key_Backspace);
    EXPECT_TRUE(shows(folder.path("a"), {"b"}));
}

TEST_F(FolderPanelRoads, backspaceInTheFieldDeletesALetter) {
    field->setFocus();
    press(Qt::Key_End);
    press(Qt::Key_Backspace);
    EXPECT_EQ(field->text().toStdString(), folder.path().substr(0, folder.path().size() - 1));
}

TEST_F(FolderPanelRoads, goingUpLeavesTheKeyboardAtTheFolderLeft) {
    panel->openAt(folder.path("z"));
    ASSERT_TRUE(waitForNotice(QStringLiteral("No folders here")));
    press(Qt::Key_Up, Qt::AltModifier);
    ASSERT_TRUE(shows(folder.path(), {"a", "z"}));
    EXPECT_EQ(list->currentIndex().row(), 1);
    EXPECT_EQ(selected(), "");
}

TEST_F(FolderPanelRoads, theRootHasNoParent) {
    panel->openAt("/");
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(field->text(), QStringLiteral("/"));
    EXPECT_FALSE(button(QStringLiteral("Enclosing folder"))->isEnabled());
}

TEST_F(FolderPanelRoads, historyGoesBackAndForward) {
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    ASSERT_TRUE(shows(folder.path("a"), {"b"}));
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_TRUE(shows(folder.path(), {"a", "z"}));
    press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_TRUE(shows(folder.path("a"), {"b"}));
    QTest::mouseClick(button(QStringLiteral("Back")), Qt::LeftButton);
    EXPECT_TRUE(shows(folder.path(), {"a", "z"}));
    QTest::mouseClick(button(QStringLiteral("Forward")), Qt::LeftButton);
    EXPECT_TRUE(shows(folder.path("a"), {"b"}));
}

TEST_F(FolderPanelRoads, historyEndsWhereItEnds) {
    EXPECT_FALSE(button(QStringLiteral("Back"))->isEnabled());
    EXPECT_FALSE(button(QStringLiteral("Forward"))->isEnabled());
    press(Qt::Key_Left, Qt::AltModifier);
    press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(field->text().toStdString(), folder.path());
}

TEST_F(FolderPanelRoads, aNewRoadForgetsTheOneAhead) {
    press(Qt::Key_Up, Qt::AltModifier);
    press(Qt::Key_Left, Qt::AltModifier);
    ASSERT_TRUE(shows(folder.path(), {"a", "z"}));
    EXPECT_TRUE(button(QStringLiteral("Forward"))->isEnabled());
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    ASSERT_TRUE(shows(folder.path("a"), {"b"}));
    EXPECT_FALSE(button(QStringLiteral("Forward"))->isEnabled());
}

TEST_F(FolderPanelRoads, lettersFindARow) {
    type(QStringLiteral("z"));
    EXPECT_EQ(selected(), "z");
}

TEST_F(FolderPanelRoads, aLinkIsEnteredUnderItsOwnPath) {
    folder.createSymlink("link", "a");
    panel->openAt(folder.path());
    ASSERT_TRUE(waitForRows({"a", "link", "z"}));
    doubleClickRow(1);
    EXPECT_TRUE(shows(folder.path("link"), {"b"}));
}

TEST_F(FolderPanelRoads, tabWalksTheControls) {
    field->setFocus();
    std::vector<QWidget*> walk;
    for (int i = 0; i < 6; ++i) {
        press(Qt::Key_Tab);
        walk.push_back(panel->focusWidget());
    }
    EXPECT_THAT(walk, ElementsAre(list, places, hidden, button(QStringLiteral("Cancel")),
                                  button(QStringLiteral("Select")), field));
}

TEST_F(FolderPanelRoads, everyControlHasANameAndARole) {
    const std::vector<std::pair<QWidget*, QAccessible::Role>> controls = {
        {field, QAccessible::EditableText},
        {list, QAccessible::List},
        {places, QAccessible::List},
        {hidden, QAccessible::CheckBox},
        {button(QStringLiteral("Cancel")), QAccessible::PushButton},
        {button(QStringLiteral("Select")), QAccessible::PushButton},
        {button(QStringLiteral("Back")), QAccessible::PushButton},
        {button(QStringLiteral("Forward")), QAccessible::PushButton},
        {button(QStringLiteral("Enclosing folder")), QAccessible::PushButton}};
    for (const auto& [control, role] : controls) {
        QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(control);
        ASSERT_TRUE(told);
        EXPECT_FALSE(told->text(QAccessible::Name).isEmpty()) << control->metaObject()->className();
        EXPECT_EQ(told->role(), role) << told->text(QAccessible::Name).toStdString();
    }
}

TEST_F(FolderPanelTest, hiddenFoldersAreLeftOutUnlessAskedFor) {
    folder.createFolder(".hidden");
    folder.createFolder("shown");
    panel->openAt(folder.path());
    ASSERT_TRUE(waitForRows({"shown"}));
    press(Qt::Key_H, Qt::ControlModifier);
    EXPECT_TRUE(hidden->isChecked());
    EXPECT_THAT(textsOf(*list), ElementsAre(".hidden", "shown"));
    QTest::mouseClick(hidden, Qt::LeftButton);
    EXPECT_THAT(textsOf(*list), ElementsAre("shown"));
}

TEST_F(FolderPanelTest, theSelectedRowStaysSelectedWhenHiddenOnesCome) {
    folder.createFolder(".hidden");
    folder.createFolder("shown");
    panel->openAt(folder.path());
    ASSERT_TRUE(waitForRows({"shown"}));
    list->setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_H, Qt::ControlModifier);
    EXPECT_EQ(selected(), "shown");
}

TEST_F(FolderPanelTest, aFolderWithHiddenFoldersOnlySaysThatItIsEmpty) {
    folder.createFolder(".hidden");
    panel->openAt(folder.path());
    EXPECT_TRUE(waitForNotice(QStringLiteral("No folders here")));
    press(Qt::Key_H, Qt::ControlModifier);
    EXPECT_TRUE(list->notice().isEmpty());
}

TEST_F(FolderPanelTest, aFolderThatHasGoneSaysSo) {
    panel->openAt(folder.path("nowhere"));
    EXPECT_TRUE(waitForNotice(QStringLiteral("This folder is gone")));
}

TEST_F(FolderPanelTest, placesAreHomeComputerAndTheFoldersThatAreThere) {
    folder.createFolder("Downloads");
    folder.createFolder("Pictures");
    open(std::make_shared<LinuxCatalogue>(), folder.path(), "/");
    const std::vector<std::string> expected = {"Home", "Computer", "Downloads", "Pictures"};
    EXPECT_TRUE(QTest::qWaitFor([&] { return textsOf(*places) == expected; }, kLimit));
}

TEST_F(FolderPanelTest, aPlaceIsOpenedByAClickAndByReturn) {
    folder.createFolder("one");
    QTest::mouseClick(places->viewport(), Qt::LeftButton, {}, rowCentre(*places, 1));
    EXPECT_EQ(field->text(), QStringLiteral("/"));
    press(Qt::Key_Home);
    press(Qt::Key_Return);
    EXPECT_TRUE(waitForRows({"one"}));
    EXPECT_EQ(field->text().toStdString(), folder.path());
}

TEST_F(FolderPanelTest, thePlaceOfTheFolderShownIsMarked) {
    const auto marked = [&] {
        return places->selectionModel()->selectedIndexes();
    };
    ASSERT_EQ(marked().size(), 1);
    EXPECT_EQ(marked().first().row(), 0);
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_THAT(marked(), IsEmpty());
}

TEST_F(FolderPanelTest, thousandsOfFoldersAreRowsOfOneList) {
    auto disk = std::make_shared<MemoryDisk>();
    for (int i = 0; i < 20'000; ++i)
        disk->addFolder("/disk/folder " + std::to_string(i));
    open(disk, "/", "/disk");
    ASSERT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount() == 20'000; }, kLimit));
    EXPECT_EQ(list->model()->index(19'999, 0).data().toString(), QStringLiteral("folder 19999"));
    list->setFocus();
    press(Qt::Key_End);
    EXPECT_EQ(selected(), "folder 19999");
}

//  /disk
//  ├── dead     its readers are held up
//  ├── denied
//  └── good/inside
class FolderPanelOverADeadMount : public FolderPanelTest {
protected:
    void SetUp() override {
        disk->addFolder("/disk/dead/inside");
        disk->addFolder("/disk/denied");
        disk->addFolder("/disk/good/inside");
        disk->gateReads("/disk/dead", gate);
        disk->deny("/disk/denied");
        open(disk, "/disk", "/disk/dead");
        EXPECT_TRUE(gate->waitForArrivals(1));
    }
    ~FolderPanelOverADeadMount() override { gate->release(); }

    std::shared_ptr<MemoryDisk> disk = std::make_shared<MemoryDisk>();
    std::shared_ptr<ReadGate> gate = std::make_shared<ReadGate>();
};

TEST_F(FolderPanelOverADeadMount, saysThatItReads) {
    EXPECT_TRUE(waitForNotice(QStringLiteral("Reading…")));
    gate->release();
    EXPECT_TRUE(waitForRows({"inside"}));
    EXPECT_TRUE(list->notice().isEmpty());
}

TEST_F(FolderPanelOverADeadMount, canBeLeftForAnotherFolder) {
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_TRUE(waitForRows({"dead", "denied", "good"}));
}

TEST_F(FolderPanelOverADeadMount, whatComesTooLateIsDropped) {
    panel->openAt("/disk/good");
    ASSERT_TRUE(waitForRows({"inside"}));
    panel->openAt("/disk");
    ASSERT_TRUE(waitForRows({"dead", "denied", "good"}));
    const std::weak_ptr<MemoryDisk> watched = disk;
    const auto holders = disk.use_count();
    gate->release();
    // The reading thread holds the disk until it has told, or not told, what it found.
    ASSERT_TRUE(QTest::qWaitFor([&] { return watched.use_count() < holders; }, kLimit));
    QCoreApplication::processEvents();
    EXPECT_THAT(textsOf(*list), ElementsAre("dead", "denied", "good"));
}

TEST_F(FolderPanelOverADeadMount, canBeCancelled) {
    press(Qt::Key_Escape);
    EXPECT_TRUE(waitForClose());
    EXPECT_GT(disk.use_count(), 1); // The reading hangs still.
}

TEST_F(FolderPanelOverADeadMount, canBeChosenAllTheSame) {
    press(Qt::Key_Return);
    EXPECT_THAT(chosen, ElementsAre("/disk/dead"));
}

TEST_F(FolderPanelOverADeadMount, aFolderThatMayNotBeReadSaysSo) {
    panel->openAt("/disk/denied");
    EXPECT_TRUE(waitForNotice(QStringLiteral("This folder may not be read")));
}

TEST_F(FolderPanelOverADeadMount, aFolderReadInPartSaysSo) {
    disk->addFolder("/disk/good/second");
    disk->failAfter("/disk/good", 1);
    panel->openAt("/disk/good");
    EXPECT_TRUE(waitForRows({"inside"}));
    EXPECT_TRUE(waitForMessage(QStringLiteral("Not all of this folder could be read.")));
}

} // namespace
} // namespace veltrano
