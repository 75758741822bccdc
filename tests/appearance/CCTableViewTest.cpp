// The table by itself, with real events and a delegate that keeps what it is asked.

#include "appearance/CCTableView.h"
#include "appearance/Colours.h"
#include "appearance/TableCell.h"
#include "appearance/Tokens.h"

#include <QAbstractTableModel>
#include <QContextMenuEvent>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veltrano {
namespace {

/// Rows of a kind each: 'g' a group, 'v' a volume, 'f' a folder, 'x' of a height of its own.
class Rows final : public QAbstractTableModel, public CCTableDelegate {
public:
    /// Fills its frame while it is on the selected row, so that a picture tells the row's state.
    class Cell final : public TableCell {
    public:
        void drawWithFrame(QPainter& painter, const QRectF& frame) override {
            frames.push_back(frame.toRect());
            if (Colours::sharedColours().isSelectedCellDrawing())
                painter.fillRect(QRectF(frame.x() + 20, frame.y() + 10, 4, 4), Qt::red);
        }
        std::vector<QRect> frames;
    };

    void setKinds(const std::string& to) {
        beginResetModel();
        kinds = to;
        endResetModel();
    }

    int rowCount(const QModelIndex&) const override { return static_cast<int>(kinds.size()); }
    int columnCount(const QModelIndex&) const override { return 3; }
    QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole ? QVariant(names.value(index.row())) : QVariant();
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override {
        return shouldSelectRow(index.row()) ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
    }

    bool isGroupRow(int row) const override { return kindOf(row) == 'g'; }
    int heightOfRow(int row) const override {
        switch (kindOf(row)) {
        case 'g':
            return row == 0 ? 26 : 42;
        case 'f':
            return 39;
        case 'v':
            return 60;
        default:
            return 50;
        }
    }
    bool shouldSelectRow(int row) const override {
        return row >= 0 && row < rowCount({}) && !isGroupRow(row);
    }
    bool shouldTrackCell(int column, int row) override {
        tracked.emplace_back(column, row);
        return doesTrack;
    }
    bool isButtonCell(int column, int) const override { return column == 2; }
    TableCell* dataCellForTableColumn(std::optional<int> column, int row) override {
        if (isGroupRow(row) == column.has_value())
            return nullptr;
        return &cell;
    }

    char kindOf(int row) const {
        return row >= 0 && row < rowCount({}) ? kinds[static_cast<std::size_t>(row)] : ' ';
    }

    std::string kinds;
    QStringList names;
    Cell cell;
    std::vector<std::pair<int, int>> tracked;
    bool doesTrack = true;
};

class CCTableViewTest : public testing::Test {
protected:
    CCTableViewTest() {
        table.setModel(&rows);
        for (const auto& [column, width] : {std::pair{0, 56}, {1, 174}, {2, 32}})
            table.setColumnWidth(column, width);
        table.setTableDelegate(&rows);
        table.setGeometry(0, 0, 269, 500);
        window.resize(270, 500);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        table.setFocus();
    }
    ~CCTableViewTest() override { table.setModel(nullptr); }

    void show(const std::string& kinds) {
        rows.setKinds(kinds);
        table.reloadData();
    }
    QImage picture() { return table.viewport()->grab().toImage(); }
    QColor at(int x, int y) { return picture().pixelColor(x, y); }
    QPoint middleOf(int column, int row) const { return table.cellFrame(column, row).center(); }
    void press(const QPoint& point, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(table.viewport(), button, {}, point);
    }
    void release(const QPoint& point, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseRelease(table.viewport(), button, {}, point);
    }
    void key(int which, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&table, static_cast<Qt::Key>(which), modifiers);
    }

    Rows rows;
    QWidget window;
    CCTableView table{&window};
    QSignalSpy changing{&table, &CCTableView::selectionIsChanging};
    QSignalSpy changed{&table, &CCTableView::selectionDidChange};
    QSignalSpy clicked{&table, &CCTableView::buttonClicked};
    QSignalSpy activated{&table, &CCTableView::rowActivated};
    QSignalSpy removed{&table, &CCTableView::removeRequested};
    QSignalSpy menus{&table, &CCTableView::contextMenuRequested};
};

// Places

TEST_F(CCTableViewTest, rowsTakeTheirHeightsAndTwoPointsOfSpacing) {
    show("gvfg");
    EXPECT_EQ(table.rowRect(0), QRect(0, 0, 270, 28));
    EXPECT_EQ(table.rowRect(1), QRect(0, 28, 270, 62));
    EXPECT_EQ(table.rowRect(2), QRect(0, 90, 270, 41));
    EXPECT_EQ(table.rowRect(3), QRect(0, 131, 270, 44));
    EXPECT_TRUE(table.rowRect(4).isEmpty());
    EXPECT_TRUE(table.rowRect(-1).isEmpty());
}

TEST_F(CCTableViewTest, rowsKeepTheirHeightsWhicheverAreTheMost) {
    show("gvvvvf");
    EXPECT_EQ(table.rowRect(5).height(), 41);
    show("gffffv");
    EXPECT_EQ(table.rowRect(0).height(), 28);
    EXPECT_EQ(table.rowRect(1).height(), 41);
    EXPECT_EQ(table.rowRect(5).height(), 62);
}

TEST_F(CCTableViewTest, cellsBeginOneBelowTheirRow) {
    show("gv");
    EXPECT_EQ(table.cellFrame(0, 1), QRect(0, 29, 56, 60));
    EXPECT_EQ(table.cellFrame(1, 1), QRect(56, 29, 174, 60));
    EXPECT_EQ(table.cellFrame(2, 1), QRect(230, 29, 32, 60));
    EXPECT_EQ(table.cellFrame(std::nullopt, 0), QRect(0, 1, 270, 26));
    EXPECT_TRUE(table.cellFrame(0, 2).isEmpty());
}

TEST_F(CCTableViewTest, groupIsDrawnOverTheFullWidthAndAnEntryByColumns) {
    show("gv");
    rows.cell.frames.clear();
    picture();
    EXPECT_EQ(rows.cell.frames,
              (std::vector<QRect>{{0, 1, 270, 26}, {0, 29, 56, 60}, {56, 29, 174, 60}, {230, 29, 32, 60}}));
}

TEST_F(CCTableViewTest, whatIsPaintedIsHit) {
    show("gvfg");
    for (int row = 0; row < 4; ++row)
        EXPECT_EQ(table.rowAtPoint(table.rowRect(row).center()), row);
    EXPECT_EQ(table.rowAtPoint({10, 400}), -1);
    EXPECT_EQ(table.columnAtPoint(middleOf(2, 1)), 2);
    EXPECT_EQ(table.columnAtPoint({265, 40}), -1);
    EXPECT_EQ(table.rowAtPoint({-1, 40}), -1);
}

// The selection plate

TEST_F(CCTableViewTest, plateEndsHigherInABigRow) {
    show("gvfx");
    EXPECT_EQ(table.plateRect(1), QRectF(4, 29, 258, 57));
    EXPECT_EQ(table.plateRect(2), QRectF(4, 91, 258, 39));
    EXPECT_EQ(table.plateFoot(1), 3);
    EXPECT_EQ(table.plateFoot(2), 0);
    EXPECT_TRUE(table.plateRect(9).isEmpty());
}

TEST_F(CCTableViewTest, rowOfSixtyTwoWearsTheBigPlateAndAnyOtherTheSmallOne) {
    show("vfx");
    table.selectRowIndex(0);
    // The big plate ends four above the row's foot, the small one is as high as its row.
    EXPECT_EQ(at(100, 57).rgb(), tokens::kAccentPlate.edge.rgb());
    EXPECT_NE(at(100, 59).rgb(), tokens::kAccentPlate.edge.rgb());
    table.selectRowIndex(1);
    EXPECT_EQ(at(100, 62 + 39).rgb(), tokens::kAccentPlate.edge.rgb());
    table.selectRowIndex(2);
    const QRect odd = table.rowRect(2);
    EXPECT_GT(at(100, odd.bottom() - 2).blue(), at(100, odd.bottom() - 2).red() + 40);
    EXPECT_GT(at(100, odd.top() + 3).blue(), at(100, odd.top() + 3).red() + 40);
}

TEST_F(CCTableViewTest, plateGoesFromFourToTwoHundredAndSixtyTwo) {
    show("gv");
    table.selectRowIndex(1);
    const QImage shown = picture();
    const auto isPlate = [&](int x) {
        const QColor colour = shown.pixelColor(x, 60);
        return colour.blue() > colour.red() + 40;
    };
    EXPECT_FALSE(isPlate(3));
    EXPECT_TRUE(isPlate(4));
    EXPECT_TRUE(isPlate(261));
    EXPECT_FALSE(isPlate(262));
}

TEST_F(CCTableViewTest, plateIsSlateWhileTheWindowIsNotActive) {
    show("gvf");
    table.selectRowIndex(1);
    const QColor active = at(100, 60);
    EXPECT_GT(active.blue(), active.red() + 80);
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    const QColor slate = at(100, 60);
    EXPECT_NEAR(slate.red(), tokens::kSlatePlate.foot.red(), 12);
    EXPECT_NEAR(slate.blue(), tokens::kSlatePlate.foot.blue(), 14);
}

TEST_F(CCTableViewTest, onlyTheSelectedEntryIsFramed) {
    show("gvf");
    EXPECT_FALSE(table.canDrawFrameForRow(1));
    table.selectRowIndex(1);
    EXPECT_TRUE(table.canDrawFrameForRow(1));
    EXPECT_FALSE(table.canDrawFrameForRow(2));
    EXPECT_FALSE(table.canDrawFrameForRow(-1));
    EXPECT_FALSE(table.canDrawFrameForRow(3));
    show("vgf"); // the selected row has become a group
    EXPECT_EQ(table.selectedRow(), 1);
    EXPECT_FALSE(table.canDrawFrameForRow(1));
}

TEST_F(CCTableViewTest, cellsOfTheSelectedRowKnowThatTheyAre) {
    show("gvf");
    table.selectRowIndex(1);
    EXPECT_EQ(at(21, 40), QColor(Qt::red));
    EXPECT_NE(at(21, 102), QColor(Qt::red));
    EXPECT_FALSE(Colours::sharedColours().isSelectedCellDrawing());
}

TEST_F(CCTableViewTest, pointedEntryWearsTheHoverPlate) {
    show("gvf");
    QTest::mouseMove(table.viewport(), middleOf(1, 2));
    EXPECT_EQ(table.pointedRow(), 2);
    EXPECT_EQ(at(100, 91), tokens::kHoverPlate.edge);
    QTest::mouseMove(table.viewport(), QPoint(100, 10)); // a group
    EXPECT_NE(at(100, 91), tokens::kHoverPlate.edge);
    EXPECT_NE(at(100, 1), tokens::kHoverPlate.edge);
}

TEST_F(CCTableViewTest, frameAroundTheTableIsGrey) {
    QImage shown(table.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    shown.fill(Qt::white);
    {
        QPainter painter(&shown);
        table.drawFrameInTable(painter);
    }
    const QColor grey = QColor::fromRgbF(0.3F, 0.3F, 0.3F);
    EXPECT_EQ(shown.pixelColor(0, 50).rgb(), grey.rgb());
    EXPECT_EQ(shown.pixelColor(shown.width() - 1, 50).rgb(), grey.rgb());
    EXPECT_EQ(shown.pixelColor(50, shown.height() - 1).rgb(), grey.rgb());
    EXPECT_EQ(shown.pixelColor(50, 50), QColor(Qt::white));
}

TEST_F(CCTableViewTest, hasNoGroundOfItsOwn) {
    show("gv");
    QImage shown(270, 200, QImage::Format_ARGB32_Premultiplied);
    shown.fill(Qt::magenta);
    table.render(&shown, {}, {}, QWidget::DrawChildren);
    EXPECT_EQ(shown.pixelColor(150, 150), QColor(Qt::magenta));
}

TEST_F(CCTableViewTest, emptyTableSaysSo) {
    table.setEmptyText(QStringLiteral("Nothing here"));
    show("");
    int inColour = 0;
    const QImage shown = picture();
    for (int x = 0; x < shown.width(); ++x)
        for (int y = 230; y < 270; ++y)
            inColour += shown.pixelColor(x, y) == tokens::kInk2;
    EXPECT_GT(inColour, 5);
    EXPECT_EQ(table.accessibleDescription(), QStringLiteral("Nothing here"));
    show("gv");
    EXPECT_EQ(table.accessibleDescription(), QString());
}

// The selection

TEST_F(CCTableViewTest, selectingByProgramAnnouncesTheChangeOnce) {
    show("gvf");
    table.selectRowIndex(2);
    EXPECT_EQ(table.selectedRow(), 2);
    EXPECT_EQ(changed.count(), 1);
    table.selectRowIndex(2);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(changing.count(), 0);
}

TEST_F(CCTableViewTest, groupsAndRowsOutOfRangeCantBeSelected) {
    show("gv");
    for (const int row : {0, -1, 2})
        table.selectRowIndex(row);
    EXPECT_EQ(table.selectedRow(), -1);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(CCTableViewTest, selectedRowIndexOutlivesAReload) {
    show("gvf");
    table.selectRowIndex(2);
    show("gvvv");
    EXPECT_EQ(table.selectedRow(), 2);
    show("gv");
    EXPECT_EQ(table.selectedRow(), -1);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(CCTableViewTest, pressOnAnotherRowSelectsAtOnceAndAnnouncesAtTheRelease) {
    show("gvf");
    press(middleOf(1, 2));
    EXPECT_EQ(table.selectedRow(), 2);
    EXPECT_EQ(changing.count(), 1);
    EXPECT_EQ(changed.count(), 0);
    release(middleOf(1, 2));
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(CCTableViewTest, heldButtonDragsTheSelectionAlong) {
    show("gvff");
    press(middleOf(1, 1));
    QTest::mouseMove(table.viewport(), middleOf(1, 3));
    EXPECT_EQ(table.selectedRow(), 3);
    EXPECT_EQ(changing.count(), 2);
    QTest::mouseMove(table.viewport(), QPoint(100, 10)); // a group does not take it
    EXPECT_EQ(table.selectedRow(), 3);
    release(QPoint(100, 10));
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(CCTableViewTest, hiddenTableAnnouncesWhatWasHeld) {
    show("gv");
    press(middleOf(1, 1));
    table.hide();
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(CCTableViewTest, pressBesideTheEntriesChangesNothing) {
    show("gvf");
    table.selectRowIndex(1);
    for (const QPoint& point : {QPoint(100, 10), QPoint(100, 400)}) {
        press(point);
        release(point);
    }
    EXPECT_EQ(table.selectedRow(), 1);
    EXPECT_TRUE(rows.tracked.empty());
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(CCTableViewTest, controlPressDoesNotDeselect) {
    show("gvf");
    table.selectRowIndex(1);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::ControlModifier, middleOf(1, 1));
    EXPECT_EQ(table.selectedRow(), 1);
    EXPECT_TRUE(table.selectionModel()->isRowSelected(1));
}

TEST_F(CCTableViewTest, selectionOfAnAssistiveProgramIsTaken) {
    show("gvf");
    table.selectRowIndex(1);
    table.selectRow(2);
    EXPECT_EQ(table.selectedRow(), 2);
    EXPECT_EQ(changed.count(), 2);
    table.clearSelection();
    EXPECT_EQ(table.selectedRow(), 2);
    EXPECT_TRUE(table.selectionModel()->isRowSelected(2));
}

// Buttons

TEST_F(CCTableViewTest, cellIsAskedBeforeItIsFollowed) {
    show("gv");
    table.selectRowIndex(1);
    press(middleOf(1, 1));
    EXPECT_EQ(rows.tracked, (std::vector<std::pair<int, int>>{{1, 1}}));
    release(middleOf(1, 1));
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(CCTableViewTest, wholeCellOfAButtonTakesTheClick) {
    show("gv");
    table.selectRowIndex(1);
    const QPoint corner = table.cellFrame(2, 1).topLeft();
    press(corner);
    EXPECT_TRUE(table.isButtonPressed(2, 1));
    release(corner);
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked.first().at(0), 2);
    EXPECT_EQ(clicked.first().at(1), 1);
    EXPECT_FALSE(table.isButtonPressed(2, 1));
}

TEST_F(CCTableViewTest, releaseBesideTheButtonDoesNothing) {
    show("gv");
    table.selectRowIndex(1);
    press(middleOf(2, 1));
    QTest::mouseMove(table.viewport(), middleOf(1, 1));
    EXPECT_FALSE(table.isButtonPressed(2, 1));
    release(middleOf(1, 1));
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(CCTableViewTest, buttonThatIsNotFollowedIsNotPressed) {
    show("gv");
    rows.doesTrack = false;
    press(middleOf(2, 1));
    release(middleOf(2, 1));
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(CCTableViewTest, reloadLetsGoOfAHeldButton) {
    show("gv");
    table.selectRowIndex(1);
    press(middleOf(2, 1));
    show("gv");
    release(middleOf(2, 1));
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(CCTableViewTest, twoQuickClicksAreTwo) {
    show("gv");
    table.selectRowIndex(1);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, middleOf(2, 1));
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, middleOf(2, 1));
    release(middleOf(2, 1));
    EXPECT_EQ(clicked.count(), 2);
    EXPECT_EQ(rows.tracked.size(), 2U);
}

// Keys

TEST_F(CCTableViewTest, arrowsSkipGroups) {
    show("gvgff");
    key(Qt::Key_Down);
    EXPECT_EQ(table.selectedRow(), 1);
    key(Qt::Key_Down);
    EXPECT_EQ(table.selectedRow(), 3);
    key(Qt::Key_Up);
    EXPECT_EQ(table.selectedRow(), 1);
    key(Qt::Key_Up);
    EXPECT_EQ(table.selectedRow(), 1);
    EXPECT_EQ(changed.count(), 3);
    EXPECT_EQ(changing.count(), 0);
}

TEST_F(CCTableViewTest, upWithoutASelectionBeginsAtTheFoot) {
    show("gvf");
    key(Qt::Key_Up);
    EXPECT_EQ(table.selectedRow(), 2);
}

TEST_F(CCTableViewTest, homeAndEndGoToTheFirstAndTheLastEntry) {
    show("gvgffg");
    key(Qt::Key_End);
    EXPECT_EQ(table.selectedRow(), 4);
    key(Qt::Key_Home);
    EXPECT_EQ(table.selectedRow(), 1);
}

TEST_F(CCTableViewTest, pageKeysGoAboutAPageAway) {
    show("g" + std::string(40, 'v'));
    key(Qt::Key_Home);
    key(Qt::Key_PageDown);
    EXPECT_EQ(table.selectedRow(), 1 + (500 - 62) / 62);
    key(Qt::Key_PageUp);
    EXPECT_EQ(table.selectedRow(), 1);
    key(Qt::Key_PageUp);
    EXPECT_EQ(table.selectedRow(), 1);
    key(Qt::Key_End);
    key(Qt::Key_PageDown);
    EXPECT_EQ(table.selectedRow(), 40);
}

TEST_F(CCTableViewTest, selectedRowScrollsIntoView) {
    show("g" + std::string(40, 'v'));
    key(Qt::Key_End);
    EXPECT_TRUE(table.viewport()->rect().contains(table.rowRect(40).center()));
    EXPECT_GT(table.verticalScrollBar()->value(), 0);
    key(Qt::Key_Home);
    EXPECT_EQ(table.verticalScrollBar()->value(), 0); // with the title of its group
}

TEST_F(CCTableViewTest, reloadKeepsThePlace) {
    show("g" + std::string(40, 'v'));
    table.verticalScrollBar()->setValue(300);
    table.reloadData();
    rows.setKinds("g" + std::string(41, 'v'));
    table.reloadData();
    EXPECT_EQ(table.verticalScrollBar()->value(), 300);
}

TEST_F(CCTableViewTest, returnActivatesTheSelectedEntry) {
    show("gv");
    key(Qt::Key_Return);
    EXPECT_EQ(activated.count(), 0);
    table.selectRowIndex(1);
    key(Qt::Key_Return);
    key(Qt::Key_Enter, Qt::KeypadModifier);
    ASSERT_EQ(activated.count(), 2);
    EXPECT_EQ(activated.first().at(0), 1);
}

TEST_F(CCTableViewTest, deleteAsksToRemoveTheSelectedEntry) {
    show("gf");
    key(Qt::Key_Delete);
    EXPECT_EQ(removed.count(), 0);
    table.selectRowIndex(1);
    key(Qt::Key_Delete);
    EXPECT_EQ(removed.count(), 1);
    key(Qt::Key_Delete, Qt::ControlModifier); // another command's
    EXPECT_EQ(removed.count(), 1);
}

TEST_F(CCTableViewTest, typedLettersFindAnEntryAndNoGroup) {
    rows.names = {QStringLiteral("Disks"), QStringLiteral("Archive"), QStringLiteral("Data"),
                  QStringLiteral("Desk")};
    show("gvvv");
    QTest::keyClicks(&table, QStringLiteral("de"));
    EXPECT_EQ(table.selectedRow(), 3);
    EXPECT_GE(changed.count(), 1);
}

TEST_F(CCTableViewTest, keysOfOthersPassOn) {
    show("gv");
    for (const int which : {int(Qt::Key_Escape), int(Qt::Key_F5), int(Qt::Key_Left)}) {
        QKeyEvent event(QEvent::KeyPress, which, Qt::NoModifier);
        QCoreApplication::sendEvent(&table, &event);
        EXPECT_FALSE(event.isAccepted()) << which;
    }
    QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier, QStringLiteral("\x03"));
    QCoreApplication::sendEvent(&table, &copy);
    EXPECT_FALSE(copy.isAccepted());
}

TEST_F(CCTableViewTest, keysInAnEmptyTableDoNothing) {
    show("");
    for (const int which : {int(Qt::Key_Down), int(Qt::Key_Up), int(Qt::Key_End), int(Qt::Key_PageDown),
                            int(Qt::Key_Return), int(Qt::Key_Delete), int(Qt::Key_A)})
        key(which);
    key(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(table.selectedRow(), -1);
    EXPECT_EQ(changed.count() + activated.count() + removed.count() + menus.count(), 0);
}

// Menus

TEST_F(CCTableViewTest, rightPressSelectsItsEntryBeforeTheMenu) {
    show("gvf");
    table.selectRowIndex(1);
    press(middleOf(1, 2), Qt::RightButton);
    EXPECT_EQ(table.selectedRow(), 2);
    EXPECT_EQ(changed.count(), 2);
    QContextMenuEvent event(QContextMenuEvent::Mouse, middleOf(1, 2), QPoint(7, 8));
    QCoreApplication::sendEvent(table.viewport(), &event);
    ASSERT_EQ(menus.count(), 1);
    EXPECT_EQ(menus.first().at(0), QPoint(7, 8));
}

TEST_F(CCTableViewTest, groupsAndEmptyPlacesHaveNoMenu) {
    show("gv");
    table.selectRowIndex(1);
    for (const QPoint& point : {QPoint(100, 10), QPoint(100, 400)}) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, point);
        QCoreApplication::sendEvent(table.viewport(), &event);
    }
    EXPECT_EQ(menus.count(), 0);
}

TEST_F(CCTableViewTest, menuKeysOpenItAtTheSelectedRow) {
    show("gv");
    key(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(menus.count(), 0);
    table.selectRowIndex(1);
    key(Qt::Key_F10, Qt::ShiftModifier);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(table.viewport(), &event);
    ASSERT_EQ(menus.count(), 2);
    const QPoint place = table.viewport()->mapFromGlobal(menus.first().at(0).toPoint());
    EXPECT_TRUE(table.rowRect(1).contains(place));
}

// The scroller

TEST_F(CCTableViewTest, scrollerIsSevenWideAndHiddenWhileAllFits) {
    show("gv");
    EXPECT_FALSE(table.verticalScrollBar()->isVisible());
    show("g" + std::string(40, 'v'));
    QCoreApplication::processEvents();
    EXPECT_TRUE(table.verticalScrollBar()->isVisible());
    EXPECT_EQ(table.verticalScrollBar()->width(), 7);
    EXPECT_EQ(table.verticalScrollBar()->mapTo(&table, QPoint()).x(), 262);
    EXPECT_EQ(table.rowRect(1).width(), 270); // The rows do not move for it.
}

TEST_F(CCTableViewTest, fiveThousandRowsAreLaidOut) {
    std::string many = "g";
    for (int pair = 0; pair < 2500; ++pair)
        many += "vf";
    show(many);
    EXPECT_EQ(table.rowRect(5000).bottom() + 1, 28 + 2500 * (62 + 41));
    key(Qt::Key_End);
    EXPECT_EQ(table.selectedRow(), 5000);
}

} // namespace
} // namespace veltrano
