#include "appearance/Colours.h"
#include "chart/ChartFixture.h"
#include "tree/SpecialItems.h"
#include "tree/TopLevelItem.h"

namespace veltrano {
namespace {

using test::ChartTest;
using test::isColour;
using test::TreeBuilder;

/// A colour as it looks at an alpha over nothing.
QColor at(QColor colour, float alpha) {
    colour.setAlphaF(alpha);
    return colour;
}

//  /v (capacity 800) ─┬─ a (400) ─┬─ x (200, age 3)
//                     │           └─ y (200, age 5)
//                     └─ f (400, age 7)
class ChartPainting : public ChartTest {
protected:
    ChartPainting() {
        a = tree.folder(tree.root(), "a");
        x = tree.file(a, "x", 200, 3);
        y = tree.file(a, "y", 200, 5);
        f = tree.file(tree.root(), "f", 400, 7);
        tree.recount();
    }

    QColor colourOf(const FileSystemItem* item) {
        for (const Sector& sector : test::sectorsOf(*tree.root(), chart.getLayout())) {
            if (&sector.item == item)
                return chartColour(middleOf(sector.nSubLevel, sector.dSkAngle, sector.dDeltaAngle));
        }
        ADD_FAILURE() << "not drawn";
        return {};
    }

    const Colours& colours = Colours::sharedColours();
    TreeBuilder tree = TreeBuilder::volume("/v", 800, 0);
    FolderSystemItem* a;
    FileSystemItem* x;
    FileSystemItem* y;
    FileSystemItem* f;
};

TEST_F(ChartPainting, nothingIsPaintedWithoutARoot) {
    const QImage picture = chartImage();
    for (const QPoint point : {QPoint(200, 150), QPoint(250, 150), QPoint(1, 1)})
        EXPECT_EQ(picture.pixelColor(point).alpha(), 0);
}

TEST_F(ChartPainting, sectorHasTheColourOfItsAge) {
    show(tree.root());
    EXPECT_TRUE(isColour(colourOf(a), colours.getColorByTimeCode(1)));
    EXPECT_TRUE(isColour(colourOf(x), colours.getColorByTimeCode(3)));
    EXPECT_TRUE(isColour(colourOf(y), colours.getColorByTimeCode(5)));
    EXPECT_TRUE(isColour(colourOf(f), colours.getColorByTimeCode(7)));
}

TEST_F(ChartPainting, firstSectorStandsRightOfTwelveOClock) {
    show(tree.root());
    // y points up in the chart and down in the picture: x is the upper right quarter, y the lower right.
    const QImage picture = chartImage();
    EXPECT_TRUE(isColour(picture.pixelColor(200 + 91, 150 - 91), colours.getColorByTimeCode(3)));
    EXPECT_TRUE(isColour(picture.pixelColor(200 + 91, 150 + 91), colours.getColorByTimeCode(5)));
}

TEST_F(ChartPainting, outsideOfSectorsNothingIsPainted) {
    show(tree.root());
    EXPECT_EQ(chartColour(middleOf(2, 0.6, 0.1)).alpha(), 0);
    EXPECT_EQ(chartImage().pixelColor(2, 2).alpha(), 0);
}

TEST_F(ChartPainting, collectedFolderPaintsWhatItHoldsAsCollectedButForHiddenAndTrash) {
    a->setCollected(true);
    y->setHiddenFlag(true);
    show(tree.root());
    EXPECT_TRUE(isColour(colourOf(a), colours.cCollectedColor()));
    EXPECT_TRUE(isColour(colourOf(x), colours.cCollectedColor()));
    EXPECT_TRUE(isColour(colourOf(y), colours.cHiddenColor()));
    y->setTrashFlag(true);
    show(tree.root());
    EXPECT_TRUE(isColour(colourOf(y), colours.cTrashColor()));
}

TEST_F(ChartPainting, hiddenFolderInACollectedOnePaintsItsChildrenAsHidden) {
    tree.root()->setCollected(true);
    a->setHiddenFlag(true);
    show(tree.root());
    EXPECT_TRUE(isColour(colourOf(a), colours.cHiddenColor()));
    EXPECT_TRUE(isColour(colourOf(x), colours.cHiddenColor()));
    EXPECT_TRUE(isColour(colourOf(f), colours.cCollectedColor()));
}

TEST_F(ChartPainting, trashFolderAndAllUnderItPaintAsTrashEvenWhenCollected) {
    a->setTrashFlag(true);
    a->setCollected(true);
    x->setCollected(true);
    show(tree.root());
    EXPECT_TRUE(isColour(colourOf(a), colours.cTrashColor()));
    EXPECT_TRUE(isColour(colourOf(x), colours.cTrashColor()));
}

TEST_F(ChartPainting, drilledFolderInheritsTheFlagsOfThoseAbove) {
    tree.root()->setCollected(true);
    show(a);
    EXPECT_TRUE(isColour(chartColour(middleOf(1, 0, 0.5)), colours.cCollectedColor()));
}

TEST_F(ChartPainting, flagsOfOneFolderDoNotReachItsSibling) {
    a->setCollected(true);
    show(tree.root());
    EXPECT_TRUE(isColour(colourOf(f), colours.getColorByTimeCode(7)));
}

TEST_F(ChartPainting, unscannedSpaceIsPaintedLikeHidden) {
    FileSystemItem* const missing = FSUnscannedItem::initWithParent(tree.arena(), tree.root(), "text", 300);
    tree.recount();
    show(tree.root());
    EXPECT_TRUE(isColour(colourOf(missing), colours.cHiddenColor()));
}

TEST_F(ChartPainting, whileScanningPlainSectorsArePaleAndOthersAreNot) {
    y->setTrashFlag(true);
    host.processing = "/v";
    show(tree.root());
    EXPECT_TRUE(isColour(colourOf(x), at(colours.getColorByTimeCode(3), 0.35f), 4));
    EXPECT_TRUE(isColour(colourOf(y), colours.cTrashColor()));
}

TEST_F(ChartPainting, scanOfAnotherRootDimsNothing) {
    host.processing = "/other";
    show(tree.root());
    EXPECT_TRUE(isColour(colourOf(x), colours.getColorByTimeCode(3)));
}

TEST_F(ChartPainting, topRootHasALightMiddleAndItsAgeColourAtTheEdge) {
    show(tree.root());
    const RingLayout& layout = chart.getLayout();
    EXPECT_TRUE(isColour(chartColour(layout.m_Center), colours.cEndRootColor(), 4));
    EXPECT_TRUE(isColour(chartColour(test::pointAt(layout, 0.125, layout.getRadius(0) - 2)),
                         colours.getColorByTimeCode(0), 6));
}

TEST_F(ChartPainting, collectedTopRootHasNoGradient) {
    tree.root()->setCollected(true);
    show(tree.root());
    EXPECT_TRUE(isColour(chartColour(chart.getLayout().m_Center), colours.cCollectedColor()));
}

TEST_F(ChartPainting, subFolderIsFlatInItsAgeColour) {
    show(a);
    const RingLayout& layout = chart.getLayout();
    EXPECT_TRUE(isColour(chartColour(layout.m_Center), colours.getColorByTimeCode(1)));
    EXPECT_TRUE(isColour(chartColour(test::pointAt(layout, 0.125, layout.getRadius(0) - 3)),
                         colours.getColorByTimeCode(1)));
}

TEST_F(ChartPainting, discIsHalfClearWhileScanning) {
    host.processing = "/v";
    show(tree.root());
    EXPECT_TRUE(isColour(chartColour(chart.getLayout().m_Center), at(colours.cEndRootColor(), 0.5f), 4));
}

TEST_F(ChartPainting, volumeWithoutScanIsOneBlueArcAndADisc) {
    VolumeItem volume("/u", "u", 1000, 250, 0);
    show(&volume);
    EXPECT_TRUE(isColour(chartColour(middleOf(1, 0.0, 0.2)), colours.cOccupiedColor()));
    EXPECT_TRUE(isColour(chartColour(middleOf(1, 0.7, 0.08)), colours.cOccupiedColor()));
    EXPECT_EQ(chartColour(middleOf(1, 0.78, 0.2)).alpha(), 0);
    EXPECT_TRUE(isColour(chartColour(chart.getLayout().m_Center), colours.cEndRootColor(), 4));
    chart.setRoot(nullptr);
}

TEST_F(ChartPainting, rootWithoutSizePaintsOnlyItsDiscAndLabel) {
    TreeBuilder empty("/e");
    empty.file(empty.root(), "f", 0);
    show(empty.root());
    const RingLayout& layout = chart.getLayout();
    EXPECT_EQ(layout.m_nSubLevels, 0);
    EXPECT_TRUE(isColour(chartColour(layout.m_Center), colours.cEndRootColor(), 4));
    EXPECT_EQ(chartColour(test::pointAt(layout, 0.25, 100)).alpha(), 0);
}

TEST_F(ChartPainting, tooSmallItemsLeaveAGap) {
    TreeBuilder gap("/g");
    for (int index = 0; index < 500; ++index)
        gap.file(gap.root(), "s" + std::to_string(index), 1);
    gap.file(gap.root(), "large", 500);
    gap.recount();
    show(gap.root());
    EXPECT_EQ(chartColour(middleOf(1, 0.1, 0.3)).alpha(), 0);
    EXPECT_NE(chartColour(middleOf(1, 0.6, 0.3)).alpha(), 0);
}

TEST_F(ChartPainting, labelIsDarkAndLightWhileScanning) {
    host.showsLabel = true;
    show(tree.root());
    const auto has = [&](const QColor& colour) {
        const QImage picture = chartImage();
        for (int row = 100; row < 200; ++row)
            for (int column = 150; column < 250; ++column)
                if (isColour(picture.pixelColor(column, row), colour, 24))
                    return true;
        return false;
    };
    const QColor ink(51, 51, 51);
    EXPECT_TRUE(has(ink));
    host.processing = "/v";
    show(tree.root());
    EXPECT_FALSE(has(ink));
    EXPECT_TRUE(has(QColor(191, 204, 217)));
}

TEST_F(ChartPainting, pointedSectorMovesAlongAsEarlierSiblingsGrowAndNeverBack) {
    show(tree.root());
    pointAt(middleOf(1, 0.5, 0.5));
    ASSERT_EQ(chart.getCurPointedSector().m_pItem(), f);
    EXPECT_EQ(chart.getCurPointedSector().m_dSkAngle(), 0.5);
    tree.file(a, "z", 400);
    tree.recount();
    chart.setNeedsDisplayRadialViewandSelection();
    settle();
    EXPECT_EQ(chart.getCurPointedSector().m_dSkAngle(), 1.0);
    a->removeChild(x);
    tree.recount();
    chart.setNeedsDisplayRadialViewandSelection();
    settle();
    EXPECT_EQ(chart.getCurPointedSector().m_dSkAngle(), 1.0);
}

TEST_F(ChartPainting, partThatIsAskedForIsPaintedAsInTheWhole) {
    show(tree.root());
    const auto paint = [&](const QRectF& dirty) {
        QImage picture(400, 300, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setTransform(view.getChartTransform());
        painter.setClipRect(dirty);
        chart.DrawRadialSructure(painter, dirty);
        painter.end();
        return picture;
    };
    const QImage whole = paint(view.getChartBounds());
    const QImage part = paint(QRectF(210, 160, 80, 60));
    for (int row = 300 - 215; row < 300 - 165; ++row)
        for (int column = 215; column < 285; ++column)
            ASSERT_EQ(part.pixel(column, row), whole.pixel(column, row)) << column << ", " << row;
    EXPECT_EQ(part.pixelColor(100, 150).alpha(), 0);
}

TEST_F(ChartPainting, repaintsOnlyWhenTheChartHasChanged) {
    show(tree.root());
    const int paints = host.chartPaints;
    view.update();
    settle();
    overlay.update();
    settle();
    EXPECT_EQ(host.chartPaints, paints);
    chart.updateRadialView();
    settle();
    EXPECT_EQ(host.chartPaints, paints + 1);
}

TEST_F(ChartPainting, severalChangesOfOneTurnArePaintedOnce) {
    show(tree.root());
    const int paints = host.chartPaints;
    for (int change = 0; change < 10; ++change)
        chart.setNeedsDisplayRadialViewandSelection();
    settle();
    EXPECT_EQ(host.chartPaints, paints + 1);
}

TEST_F(ChartPainting, resizeIsPaintedAtOnceAtItsNewSize) {
    show(tree.root());
    area.resize(500, 400);
    settle();
    EXPECT_TRUE(isColour(colourOf(f), colours.getColorByTimeCode(7)));
    EXPECT_EQ(chart.getLayout().m_Center, QPointF(250, 200));
}

} // namespace
} // namespace veltrano
