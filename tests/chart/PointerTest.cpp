#include "chart/ChartFixture.h"
#include "tree/TopLevelItem.h"

#include <QMouseEvent>

namespace veltrano {
namespace {

using test::ChartTest;
using test::TreeBuilder;

//  /v ─┬─ a (50) ── x (25), y (25)
//      └─ f (50)
class Pointer : public ChartTest {
protected:
    Pointer() {
        a = tree.folder(tree.root(), "a");
        x = tree.file(a, "x", 25);
        y = tree.file(a, "y", 25);
        f = tree.file(tree.root(), "f", 50);
        tree.recount();
        show(tree.root());
    }
    const SectorItem& pointed() const { return chart.getCurPointedSector(); }

    TreeBuilder tree = TreeBuilder::volume("/v", 100, 0);
    FolderSystemItem* a;
    FileSystemItem* x;
    FileSystemItem* y;
    FileSystemItem* f;
};

TEST_F(Pointer, pointsAtWhatLiesUnderIt) {
    EXPECT_TRUE(chart.OperateMousePoint(middleOf(2, 0.25, 0.25), nullptr));
    EXPECT_EQ(pointed().m_pItem(), y);
    EXPECT_EQ(pointed().m_nSubLevel(), 2);
    EXPECT_EQ(pointed().m_dSkAngle(), 0.25);
}

TEST_F(Pointer, mouseEventIsTurnedOnce) {
    // Upper right in the widget is the first quarter of the turn.
    QMouseEvent move(QEvent::MouseMove, QPointF(200 + 91, 150 - 91), view.mapToGlobal(QPointF(291, 59)),
                     Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&view, &move);
    EXPECT_EQ(pointed().m_pItem(), x);
}

TEST_F(Pointer, overlayLetsTheMouseThrough) {
    EXPECT_TRUE(overlay.testAttribute(Qt::WA_TransparentForMouseEvents));
    EXPECT_EQ(area.childAt(200, 150), &view);
}

TEST_F(Pointer, samePlaceIsNoNewsAndLeavesTheRectangle) {
    pointAt(middleOf(2, 0.25, 0.25));
    QRectF rectangle(1, 2, 3, 4);
    EXPECT_FALSE(chart.OperateMousePoint(middleOf(2, 0.25, 0.2), &rectangle));
    EXPECT_EQ(rectangle, QRectF(1, 2, 3, 4));
}

TEST_F(Pointer, rectangleEnclosesTheOldAndTheNewSectorAndTheirLines) {
    pointAt(middleOf(2, 0.0, 0.25));
    QRectF rectangle;
    EXPECT_TRUE(chart.OperateMousePoint(middleOf(1, 0.5, 0.5), &rectangle));
    const QRectF both = chart.getBoundsOfItem(x, 2, 0.0).united(chart.getBoundsOfItem(f, 1, 0.5));
    EXPECT_EQ(rectangle, both.adjusted(-0.25, -0.25, 0.25, 0.25));
}

TEST_F(Pointer, firstSectorsRectangleIsItsOwn) {
    QRectF rectangle;
    EXPECT_TRUE(chart.OperateMousePoint(middleOf(2, 0.0, 0.25), &rectangle));
    EXPECT_EQ(rectangle, chart.getBoundsOfItem(x, 2, 0.0).adjusted(-0.25, -0.25, 0.25, 0.25));
}

TEST_F(Pointer, leavingIsNewsOnlyForWhoAsksForTheRectangle) {
    pointAt(middleOf(2, 0.0, 0.25));
    QRectF rectangle;
    EXPECT_TRUE(chart.OperateMousePoint(QPointF(0, 0), &rectangle));
    EXPECT_EQ(pointed().m_pItem(), nullptr);
    EXPECT_EQ(rectangle, chart.getBoundsOfItem(x, 2, 0.0).adjusted(-0.25, -0.25, 0.25, 0.25));
    pointAt(middleOf(2, 0.0, 0.25));
    EXPECT_FALSE(chart.OperateMousePoint(QPointF(0, 0), nullptr));
    EXPECT_EQ(pointed().m_pItem(), nullptr);
}

TEST_F(Pointer, hoverRepaintsNothingOfTheChart) {
    const int paints = host.chartPaints;
    for (const double k : {0.1, 0.3, 0.6, 0.9}) {
        for (int ring = 1; ring <= 2; ++ring) {
            pointAt(middleOf(ring, k, 0.001));
            settle();
        }
    }
    EXPECT_EQ(host.chartPaints, paints);
}

TEST_F(Pointer, scanTickMovesTheHoverUnderAStillPointer) {
    const QPointF middle = middleOf(1, 0.5, 0.1);
    QCursor::setPos(view.mapToGlobal(view.getChartTransform().map(middle).toPoint()));
    chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
    ASSERT_EQ(pointed().m_pItem(), f);
    tree.file(a, "z", 100);
    tree.recount();
    chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
    EXPECT_EQ(pointed().m_pItem(), a);
}

TEST_F(Pointer, everyMoveOverTheFreePartIsNews) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    QRectF rectangle;
    EXPECT_TRUE(chart.OperateMousePoint(middleOf(1, 0.6, 0.0), &rectangle));
    EXPECT_EQ(pointed().m_pItem(), chart.getSentinels().m_pFreeSector);
    EXPECT_TRUE(chart.OperateMousePoint(middleOf(1, 0.7, 0.0), &rectangle));
    EXPECT_EQ(
        rectangle,
        chart.getBoundsOfItem(chart.getSentinels().m_pFreeSector, 1, 0.0).adjusted(-0.25, -0.25, 0.25, 0.25));
    EXPECT_TRUE(chart.OperateMousePoint(middleOf(1, 0.2, 0.0), &rectangle));
    EXPECT_FALSE(chart.OperateMousePoint(middleOf(1, 0.3, 0.0), &rectangle));
    chart.setRoot(nullptr);
}

TEST_F(Pointer, boundsOfTheSentinelsAreTheirPartsOfTheRing) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    const QRectF occupied = chart.getBoundsOfItem(chart.getSentinels().m_pOccupSector, 1, 0.3);
    const QRectF unused = chart.getBoundsOfItem(chart.getSentinels().m_pFreeSector, 1, 0.3);
    EXPECT_NEAR(occupied.left(), 200, 1e-3);
    EXPECT_NEAR(occupied.right(), 342.5, 1e-3);
    EXPECT_NEAR(unused.left(), 57.5, 1e-3);
    EXPECT_NEAR(unused.right(), 200, 1e-3);
    chart.setRoot(nullptr);
}

TEST_F(Pointer, boundsOfADiscAndOfAMissingRing) {
    const double radius = chart.getLayout().getRadius(0);
    EXPECT_EQ(chart.getBoundsOfItem(tree.root(), 0, 0.0),
              QRectF(200 - radius, 150 - radius, 2 * radius, 2 * radius));
    EXPECT_TRUE(chart.getBoundsOfItem(x, 3, 0.0).isNull());
}

TEST_F(Pointer, selectedItemIsPlacedByTheSizesBeforeIt) {
    chart.selectItem(y);
    ASSERT_EQ(chart.getSelectedSectors().size(), 1u);
    EXPECT_EQ(chart.getSelectedSectors()[0].m_pItem(), y);
    EXPECT_EQ(chart.getSelectedSectors()[0].m_nSubLevel(), 2);
    EXPECT_EQ(chart.getSelectedSectors()[0].m_dSkAngle(), 0.25);
    chart.selectItem(f);
    ASSERT_EQ(chart.getSelectedSectors().size(), 1u);
    EXPECT_EQ(chart.getSelectedSectors()[0].m_nSubLevel(), 1);
    EXPECT_EQ(chart.getSelectedSectors()[0].m_dSkAngle(), 0.5);
}

TEST_F(Pointer, nothingRootAndOrphanEmptyTheSelection) {
    for (FileSystemItem* item :
         {static_cast<FileSystemItem*>(nullptr), static_cast<FileSystemItem*>(tree.root())}) {
        chart.selectItem(f);
        chart.selectItem(item);
        EXPECT_TRUE(chart.getSelectedSectors().empty());
    }
    show(a);
    chart.selectItem(a);
    EXPECT_TRUE(chart.getSelectedSectors().empty());
}

TEST_F(Pointer, severalItemsAreSelectedTogether) {
    FileSystemItem* const items[] = {x, nullptr, tree.root(), f};
    chart.selectItems(items);
    ASSERT_EQ(chart.getSelectedSectors().size(), 2u);
    EXPECT_EQ(chart.getSelectedSectors()[0].m_pItem(), x);
    EXPECT_EQ(chart.getSelectedSectors()[1].m_pItem(), f);
}

TEST_F(Pointer, selectionIsPlacedOnTheCircleOfADrilledRoot) {
    show(a);
    chart.selectItem(y);
    EXPECT_EQ(chart.getSelectedSectors()[0].m_nSubLevel(), 1);
    EXPECT_EQ(chart.getSelectedSectors()[0].m_dSkAngle(), 0.5);
}

TEST_F(Pointer, itemThatIsNotBelowTheRootLeavesTheSectorEmpty) {
    show(a);
    chart.setHiliteOnRadial(f);
    EXPECT_EQ(pointed().m_pItem(), nullptr);
}

TEST_F(Pointer, hoverOnATableRowPointsAtItsItemAndNilAtNothing) {
    chart.setHiliteOnRadial(y);
    EXPECT_EQ(pointed().m_pItem(), y);
    EXPECT_EQ(pointed().m_nSubLevel(), 2);
    chart.setHiliteOnRadial(nullptr);
    EXPECT_EQ(pointed().m_pItem(), nullptr);
    EXPECT_EQ(pointed().m_nSubLevel(), 0);
    EXPECT_EQ(pointed().m_dSkAngle(), 0.0);
}

TEST_F(Pointer, selectionFollowsSizesWhenComputedAnew) {
    chart.selectItem(f);
    tree.file(a, "z", 20);
    tree.recount();
    chart.recacSelItemsParameters();
    EXPECT_EQ(chart.getSelectedSectors()[0].m_dSkAngle(), 0.7);
}

} // namespace
} // namespace veltrano
