#include "chart/DrillFixture.h"
#include "tree/TopLevelItem.h"

#include "appearance/Motion.h"

namespace veltrano {
namespace {

using test::DrillChartTest;
using test::TreeBuilder;

class Drill : public DrillChartTest {
protected:
    std::weak_ptr<TreeStorage> drillIntoATreeThatNobodyElseHolds() {
        const TreeBuilder passing("/p");
        FolderSystemItem* const folder = passing.folder(passing.root(), "folder");
        passing.file(folder, "f", 100);
        passing.recount();
        show(passing.root());
        chart.startDrillInAnimation(folder, 1, 0.0);
        return passing.storage();
    }
};

TEST_F(Drill, inKeepsTheOldRootUntilASecondHasPassed) {
    chart.startDrillInAnimation(a, 1, 0.25);
    EXPECT_TRUE(chart.isDrillAnimating());
    EXPECT_TRUE(chart.isRDAnimating());
    EXPECT_EQ(chart.getRootObject(), tree.root());
    loop.advance(0.98);
    EXPECT_EQ(chart.getRootObject(), tree.root());
    loop.advance(0.03);
    EXPECT_EQ(chart.getRootObject(), a);
    EXPECT_FALSE(chart.isDrillAnimating());
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_EQ(loop.pendingTimers(), 0u);
}

TEST_F(Drill, outChangesTheRootFirst) {
    show(a);
    chart.startDrillOutAnimation(tree.root());
    EXPECT_TRUE(chart.isDrillAnimating());
    EXPECT_EQ(chart.getRootObject(), tree.root());
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 1000);
    toTheEnd();
    EXPECT_FALSE(chart.isDrillAnimating());
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_EQ(chart.getRootObject(), tree.root());
}

TEST_F(Drill, endOfADrillInLaysTheNewRootOut) {
    chart.startDrillInAnimation(a, 1, 0.25);
    toTheEnd();
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 250);
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 2);
    EXPECT_EQ(host.pathItem, a);
}

TEST_F(Drill, severalLevelsAtOnce) {
    chart.startDrillInAnimation(b, 2, 0.25);
    toTheEnd();
    EXPECT_EQ(chart.getRootObject(), b);
    chart.startDrillOutAnimation(tree.root());
    EXPECT_TRUE(chart.isDrillAnimating());
    toTheEnd();
    EXPECT_EQ(chart.getRootObject(), tree.root());
}

TEST_F(Drill, startForgetsWhatIsPointedAndSelected) {
    chart.setHiliteOnRadial(x);
    chart.selectItem(y);
    chart.startDrillInAnimation(a, 1, 0.25);
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), nullptr);
    EXPECT_TRUE(chart.getSelectedSectors().empty());
}

TEST_F(Drill, holdsOffThePointer) {
    chart.startDrillInAnimation(a, 1, 0.25);
    toTheMiddle();
    pointAt(chart.getLayout().m_Center);
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), nullptr);
}

TEST_F(Drill, endPointsAtWhatIsUnderTheStillPointer) {
    QCursor::setPos(area.mapToGlobal(QPoint(200, 150)));
    chart.startDrillInAnimation(a, 1, 0.25);
    toTheEnd();
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), a);
}

TEST_F(Drill, secondDrillFinishesTheFirstAtOnce) {
    chart.startDrillInAnimation(a, 1, 0.25);
    loop.advance(0.2);
    chart.startDrillOutAnimation(tree.root());
    // The first ended in a, from which the second starts.
    EXPECT_TRUE(chart.isDrillAnimating());
    EXPECT_EQ(chart.getRootObject(), tree.root());
    loop.advance(0.9);
    EXPECT_TRUE(chart.isDrillAnimating());
    toTheEnd();
    EXPECT_EQ(chart.getRootObject(), tree.root());
}

TEST_F(Drill, releaseJumpsToTheEnd) {
    chart.startDrillInAnimation(a, 1, 0.25);
    loop.advance(0.2);
    chart.releaseRDAnimation();
    EXPECT_EQ(chart.getRootObject(), a);
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_EQ(loop.pendingTimers(), 0u);
    chart.startDrillOutAnimation(tree.root());
    chart.releaseRDAnimation();
    EXPECT_EQ(chart.getRootObject(), tree.root());
    EXPECT_FALSE(chart.isDrillAnimating());
}

TEST_F(Drill, releaseWithoutAnAnimationDoesNothing) {
    chart.releaseRDAnimation();
    EXPECT_EQ(chart.getRootObject(), tree.root());
}

TEST_F(Drill, everyFrameIsPaintedAtOnce) {
    host.showsLabel = true;
    chart.startDrillInAnimation(a, 1, 0.25);
    const int paints = host.chartPaints;
    // The label of the old chart is asked for once: its picture is kept.
    loop.advance(0.5);
    EXPECT_EQ(host.chartPaints, paints + 1);
    // In the last tenth the new root's label is painted with each frame.
    loop.advance(0.49);
    EXPECT_GT(host.chartPaints, paints + 5);
}

TEST_F(Drill, hundredDrillsLeaveNothingBehind) {
    const auto drill = [this] {
        chart.startDrillInAnimation(a, 1, 0.25);
        loop.advance(0.1);
        chart.releaseRDAnimation();
        chart.startDrillOutAnimation(tree.root());
        loop.advance(0.1);
        chart.releaseRDAnimation();
        settle();
    };
    drill();
    const long holders = tree.storage().use_count();
    const qsizetype widgets = area.findChildren<QObject*>().size();
    for (int count = 0; count < 50; ++count)
        drill();
    EXPECT_EQ(tree.storage().use_count(), holders);
    EXPECT_EQ(area.findChildren<QObject*>().size(), widgets);
    EXPECT_EQ(loop.pendingTimers(), 0u);
}

// What falls back to a change without animation.

TEST_F(Drill, outToATargetWithoutSizeIsImmediate) {
    TreeBuilder empty("/e");
    FolderSystemItem* const inner = empty.folder(empty.root(), "inner");
    empty.recount();
    show(inner);
    chart.startDrillOutAnimation(empty.root());
    EXPECT_EQ(chart.getRootObject(), empty.root());
    EXPECT_FALSE(chart.isRDAnimating());
    chart.setRoot(nullptr);
}

TEST_F(Drill, outFromARootThatIsNoFolderIsImmediate) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    chart.startDrillOutAnimation(tree.root());
    EXPECT_EQ(chart.getRootObject(), tree.root());
    EXPECT_FALSE(chart.isRDAnimating());
}

TEST_F(Drill, outToAFolderThatIsNotAboveIsImmediate) {
    chart.startDrillOutAnimation(a);
    EXPECT_EQ(chart.getRootObject(), a);
    EXPECT_FALSE(chart.isRDAnimating());
}

TEST_F(Drill, outWithoutARootIsImmediate) {
    chart.setRoot(nullptr);
    chart.startDrillOutAnimation(tree.root());
    EXPECT_EQ(chart.getRootObject(), tree.root());
    EXPECT_FALSE(chart.isRDAnimating());
}

TEST_F(Drill, outOfAnEmptyFolderIsImmediate) {
    FolderSystemItem* const empty = tree.folder(tree.root(), "empty");
    tree.recount();
    show(empty);
    chart.startDrillOutAnimation(tree.root());
    EXPECT_EQ(chart.getRootObject(), tree.root());
    EXPECT_FALSE(chart.isRDAnimating());
}

TEST_F(Drill, inToAFolderWithoutSizeOrRingIsImmediate) {
    FolderSystemItem* const empty = tree.folder(tree.root(), "empty");
    tree.recount();
    chart.startDrillInAnimation(empty, 1, 0.0);
    EXPECT_EQ(chart.getRootObject(), empty);
    EXPECT_FALSE(chart.isRDAnimating());
    show(tree.root());
    chart.startDrillInAnimation(a, 0, 0.0);
    EXPECT_EQ(chart.getRootObject(), a);
    EXPECT_FALSE(chart.isRDAnimating());
}

TEST_F(Drill, withoutMotionInTheStyleTheEndShowsAtOnce) {
    test::StillStyle style;
    view.setStyle(&style);
    chart.startDrillInAnimation(a, 1, 0.25);
    EXPECT_EQ(chart.getRootObject(), a);
    chart.startDrillOutAnimation(tree.root());
    EXPECT_EQ(chart.getRootObject(), tree.root());
    EXPECT_FALSE(chart.isRDAnimating());
    view.setStyle(nullptr);
}

TEST_F(Drill, withoutMotionOnTheDesktopTheEndShowsAtOnce) {
    setMotionReduced(true);
    chart.startDrillInAnimation(a, 1, 0.25);
    EXPECT_EQ(chart.getRootObject(), a);
    chart.startDrillOutAnimation(tree.root());
    EXPECT_EQ(chart.getRootObject(), tree.root());
    EXPECT_FALSE(chart.isRDAnimating());
    setMotionReduced(false);
}

// What comes in the middle of one.

TEST_F(Drill, anotherRootDropsADrillIn) {
    TreeBuilder other("/o");
    other.file(other.root(), "f", 10);
    other.recount();
    chart.startDrillInAnimation(a, 1, 0.25);
    toTheMiddle();
    chart.setRoot(other.root());
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_FALSE(chart.isDrillAnimating());
    toTheEnd();
    EXPECT_EQ(chart.getRootObject(), other.root());
    chart.setRoot(nullptr);
}

TEST_F(Drill, anotherRootDropsADrillOut) {
    TreeBuilder other("/o");
    other.file(other.root(), "f", 10);
    other.recount();
    show(b);
    chart.startDrillOutAnimation(tree.root());
    toTheMiddle();
    chart.setRoot(other.root());
    toTheEnd();
    EXPECT_EQ(chart.getRootObject(), other.root());
    EXPECT_FALSE(chart.isRDAnimating());
    chart.setRoot(nullptr);
}

TEST_F(Drill, volumeThatGoesEmptiesTheChart) {
    for (const double moment : {0.0, 0.5, 0.95}) {
        show(tree.root());
        chart.startDrillInAnimation(a, 1, 0.25);
        loop.advance(moment);
        chart.volumeWasRemoved("/v");
        toTheEnd();
        EXPECT_EQ(chart.getRootObject(), nullptr);
        EXPECT_FALSE(chart.isRDAnimating());
    }
}

TEST_F(Drill, keepsTheTreesThatItMovesBetween) {
    const std::weak_ptr<TreeStorage> storage = drillIntoATreeThatNobodyElseHolds();
    toTheMiddle();
    EXPECT_FALSE(storage.expired());
    toTheEnd();
    EXPECT_EQ(chart.getRootObject()->getFullPath(), "/p/folder");
    chart.setRoot(nullptr);
    EXPECT_TRUE(storage.expired());
}

TEST_F(Drill, droppedDrillLetsItsTreeGo) {
    const std::weak_ptr<TreeStorage> storage = drillIntoATreeThatNobodyElseHolds();
    toTheMiddle();
    chart.setRoot(tree.root());
    settle();
    EXPECT_TRUE(storage.expired());
}

TEST_F(Drill, rescanOfTheSamePathTakesItsPlace) {
    TreeBuilder again = TreeBuilder::volume("/v", 2000, 1000);
    again.file(again.root(), "f", 100);
    again.recount();
    chart.startDrillInAnimation(a, 1, 0.25);
    toTheMiddle();
    host.processing = "/v";
    chart.setRoot(again.root(), true, true);
    toTheEnd();
    EXPECT_EQ(chart.getRootObject(), again.root());
    host.processing.reset();
    chart.setRoot(nullptr);
}

TEST_F(Drill, resizeGivesTheNewSizeToTheFramesThatFollow) {
    for (const bool in : {true, false}) {
        area.resize(400, 300);
        show(in ? tree.root() : a);
        if (in)
            chart.startDrillInAnimation(a, 1, 0.25);
        else
            chart.startDrillOutAnimation(tree.root());
        toTheMiddle();
        area.resize(600, 800);
        settle();
        EXPECT_TRUE(chart.isDrillAnimating());
        EXPECT_EQ(chart.getLayout().m_fullRadius, 285.0f);
        EXPECT_GT(chartImage().pixelColor(300, 400).alpha(), 0);
        area.resize(1, 1);
        settle();
        toTheEnd();
        EXPECT_FALSE(chart.isDrillAnimating());
        EXPECT_EQ(chart.getRootObject(), in ? a : tree.root());
    }
}

TEST_F(Drill, treeMayGrowAndShrinkMeanwhile) {
    chart.startDrillInAnimation(a, 1, 0.25);
    loop.advance(0.3);
    FolderSystemItem* const more = tree.folder(b, "more");
    tree.file(more, "z", 4000);
    tree.recount();
    chart.setNeedsDisplayRadialViewandSelection();
    loop.advance(0.2);
    b->removeChild(y);
    tree.recount();
    chart.setNeedsDisplayRadialViewandSelection();
    toTheEnd();
    EXPECT_EQ(chart.getRootObject(), a);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 4100);
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 3);
}

TEST_F(Drill, scanMayGrowTheChartThatItReturnsTo) {
    show(a);
    host.processing = "/v";
    chart.startDrillOutAnimation(tree.root());
    loop.advance(0.3);
    tree.file(tree.root(), "new", 3000);
    tree.recount();
    chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
    toTheEnd();
    EXPECT_EQ(chart.getRootObject(), tree.root());
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 4000);
    host.processing.reset();
}

TEST(DrillLifetime, chartMayGoInTheMiddleOfADrill) {
    FakeMainLoop loop;
    const TreeBuilder tree("/r");
    FolderSystemItem* const folder = tree.folder(tree.root(), "folder");
    tree.file(folder, "f", 100);
    tree.recount();
    for (const bool in : {true, false}) {
        auto area = std::make_unique<ChartArea>(loop);
        area->resize(400, 300);
        area->show();
        RadialController& chart = area->controller();
        chart.setRoot(in ? tree.root() : folder);
        if (in)
            chart.startDrillInAnimation(folder, 1, 0.0);
        else
            chart.startDrillOutAnimation(tree.root());
        loop.advance(0.5);
        EXPECT_TRUE(chart.isDrillAnimating());
        area.reset();
        EXPECT_EQ(loop.pendingTimers(), 0u);
        loop.advance(1.0);
    }
}

} // namespace
} // namespace veltrano
