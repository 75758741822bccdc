#include "chart/ChartFixture.h"
#include "chart/ChartMenu.h"
#include "tree/TopLevelItem.h"

namespace veltrano {
namespace {

using test::ChartTest;
using test::TreeBuilder;
using testing::ElementsAre;

//  /v ─┬─ a (50) ── x (25), tiny (0), deep (25) ── z (25)
//      └─ f (50)
class ChartKeys : public ChartTest {
protected:
    ChartKeys() {
        a = tree.folder(tree.root(), "a");
        x = tree.file(a, "x", 25);
        tree.file(a, "tiny", 0);
        deep = tree.folder(a, "deep");
        z = tree.file(deep, "z", 25);
        f = tree.file(tree.root(), "f", 50);
        tree.recount();
        show(tree.root());
        view.setFocus();
    }
    ~ChartKeys() override {
        if (QWidget* const menu = QApplication::activePopupWidget())
            menu->close();
    }
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&view, static_cast<Qt::Key>(key), modifiers);
    }
    TreeObject* pointed() const { return chart.getCurPointedSector().m_pItem(); }
    int ring() const { return chart.getCurPointedSector().m_nSubLevel(); }
    double start() const { return chart.getCurPointedSector().m_dSkAngle(); }
    void endAnimation() {
        loop.advance(2);
        settle();
    }

    TreeBuilder tree = TreeBuilder::volume("/v", 200, 100);
    FolderSystemItem* a;
    FileSystemItem* x;
    FolderSystemItem* deep;
    FileSystemItem* z;
    FileSystemItem* f;
};

TEST_F(ChartKeys, firstArrowPointsAtTheDisc) {
    for (const int arrow : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
        chart.setHiliteOnRadial(nullptr);
        key(arrow);
        EXPECT_EQ(pointed(), tree.root());
        EXPECT_EQ(ring(), 0);
    }
}

TEST_F(ChartKeys, upGoesToTheFirstSectorOfTheNextRingAndDownBack) {
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    EXPECT_EQ(pointed(), a);
    EXPECT_EQ(ring(), 1);
    key(Qt::Key_Up);
    EXPECT_EQ(pointed(), x);
    EXPECT_EQ(ring(), 2);
    key(Qt::Key_Up);
    EXPECT_EQ(pointed(), x);
    key(Qt::Key_Down);
    EXPECT_EQ(pointed(), a);
    EXPECT_EQ(ring(), 1);
    EXPECT_EQ(start(), 0.0);
    key(Qt::Key_Down);
    EXPECT_EQ(pointed(), tree.root());
    key(Qt::Key_Down);
    EXPECT_EQ(pointed(), tree.root());
}

TEST_F(ChartKeys, rightGoesClockwiseRoundTheSiblingsThatAreSeen) {
    chart.setHiliteOnRadial(x);
    key(Qt::Key_Right);
    EXPECT_EQ(pointed(), deep);
    EXPECT_EQ(ring(), 2);
    EXPECT_EQ(start(), 0.25);
    key(Qt::Key_Right);
    EXPECT_EQ(pointed(), x);
    key(Qt::Key_Left);
    EXPECT_EQ(pointed(), deep);
}

TEST_F(ChartKeys, deeperRingsStartWhereTheirFolderDoes) {
    chart.setHiliteOnRadial(deep);
    key(Qt::Key_Up);
    EXPECT_EQ(pointed(), z);
    EXPECT_EQ(ring(), 3);
    EXPECT_EQ(start(), 0.25);
    int hitRing = 0;
    EXPECT_EQ(chart.getItemByPoint(chart.getMiddleOfPointedSector(), &hitRing, nullptr), z);
    EXPECT_EQ(hitRing, 3);
}

TEST_F(ChartKeys, onTheDiscLeftAndRightStay) {
    key(Qt::Key_Up);
    key(Qt::Key_Right);
    EXPECT_EQ(pointed(), tree.root());
    key(Qt::Key_Left);
    EXPECT_EQ(pointed(), tree.root());
}

TEST_F(ChartKeys, partsOfAnUnscannedVolumeAreReached) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    key(Qt::Key_Up);
    EXPECT_EQ(pointed(), &volume);
    key(Qt::Key_Up);
    EXPECT_EQ(pointed(), chart.getSentinels().m_pOccupSector);
    key(Qt::Key_Right);
    EXPECT_EQ(pointed(), chart.getSentinels().m_pFreeSector);
    EXPECT_EQ(chart.getItemByPoint(chart.getMiddleOfPointedSector(), nullptr, nullptr),
              chart.getSentinels().m_pFreeSector);
    key(Qt::Key_Left);
    EXPECT_EQ(pointed(), chart.getSentinels().m_pOccupSector);
    key(Qt::Key_Down);
    EXPECT_EQ(pointed(), &volume);
    chart.setRoot(nullptr);
}

TEST_F(ChartKeys, sectorIsOutlinedAndHeard) {
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    key(Qt::Key_Right);
    EXPECT_THAT(host.sounds, ElementsAre("Pop", "Pop", "Tink"));
    EXPECT_FALSE(chart.getOutlinesBounds().isEmpty());
}

TEST_F(ChartKeys, returnClicksThePointedSector) {
    chart.setHiliteOnRadial(deep);
    key(Qt::Key_Return);
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), deep);
    key(Qt::Key_Up);
    key(Qt::Key_Enter, Qt::KeypadModifier);
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), a);
}

TEST_F(ChartKeys, returnOnNothingAFileOrDuringTheScanDoesNothing) {
    key(Qt::Key_Return);
    chart.setHiliteOnRadial(f);
    key(Qt::Key_Return);
    host.processing = "/v";
    chart.setHiliteOnRadial(a);
    key(Qt::Key_Return);
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), tree.root());
}

TEST_F(ChartKeys, backspaceGoesOneLevelUpAndStopsAtTheTop) {
    show(deep);
    key(Qt::Key_Backspace);
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), a);
    key(Qt::Key_Backspace);
    endAnimation();
    key(Qt::Key_Backspace);
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), tree.root());
}

TEST_F(ChartKeys, controlHomeGoesToTheTop) {
    show(deep);
    key(Qt::Key_Home, Qt::ControlModifier);
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), tree.root());
}

TEST_F(ChartKeys, controlHomeWaitsForTheEndOfAnAnimation) {
    show(deep);
    key(Qt::Key_Backspace);
    ASSERT_TRUE(chart.isRDAnimating());
    key(Qt::Key_Home, Qt::ControlModifier);
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), a);
}

TEST_F(ChartKeys, menuKeysOpenTheMenuOnThePointedSector) {
    for (const auto& [which, modifiers] :
         {std::pair(Qt::Key_Menu, Qt::KeyboardModifiers()),
          std::pair(Qt::Key_F10, Qt::KeyboardModifiers(Qt::ShiftModifier))}) {
        chart.setHiliteOnRadial(f);
        key(which, modifiers);
        auto* const menu = qobject_cast<ChartMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        menu->setActiveAction(menu->getEntry(ChartAction::RevealInFinder));
        QTest::keyClick(menu, Qt::Key_Return);
        ASSERT_FALSE(host.shown.empty());
        EXPECT_THAT(host.shown.back(), ElementsAre("/v/f"));
        host.shown.clear();
    }
}

TEST_F(ChartKeys, menuKeyOpensItOnTheDiscWhenNothingIsPointedAt) {
    key(Qt::Key_Menu);
    ASSERT_TRUE(QApplication::activePopupWidget());
    EXPECT_EQ(pointed(), tree.root());
}

TEST_F(ChartKeys, otherKeysAndModifiersAreLeftToTheWindow) {
    chart.setHiliteOnRadial(x);
    for (const auto modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::ShiftModifier}) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Right, modifier);
        QApplication::sendEvent(&view, &event);
        EXPECT_FALSE(event.isAccepted());
    }
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    QApplication::sendEvent(&view, &letter);
    EXPECT_FALSE(letter.isAccepted());
    EXPECT_EQ(pointed(), x);
}

TEST_F(ChartKeys, scanLeavesThePointAndMovesItWithItsSector) {
    chart.setHiliteOnRadial(a);
    key(Qt::Key_Right);
    ASSERT_EQ(pointed(), f);
    tree.file(a, "new", 100);
    tree.recount();
    chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
    EXPECT_EQ(pointed(), f);
    EXPECT_EQ(start(), 0.75);
    pointAt(middleOf(1, 0.0, 0.1));
    QCursor::setPos(0, 0);
    chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
    EXPECT_EQ(pointed(), nullptr);
}

TEST_F(ChartKeys, chartWithoutRootTakesKeysCalmly) {
    show(nullptr);
    for (const int which : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Menu})
        key(which);
    key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(pointed(), nullptr);
}

} // namespace
} // namespace veltrano
