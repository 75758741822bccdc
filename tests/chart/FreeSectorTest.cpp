#include "chart/DrillFixture.h"

#include "appearance/Motion.h"

namespace veltrano {
namespace {

using test::DrillChartTest;
using test::TreeBuilder;

/// The volume holds 1000 of 2000 bytes.
class FreeSector : public DrillChartTest {};

TEST_F(FreeSector, isRememberedByItsRootAtOnce) {
    chart.setDrawFreeSector();
    EXPECT_TRUE(chart.isDrawFreeSector());
    EXPECT_TRUE(tree.root()->getUseFreeSector());
    EXPECT_TRUE(chart.isRDAnimating());
    EXPECT_FALSE(chart.isDrillAnimating());
}

TEST_F(FreeSector, chartContractsToItsShareWithinASecond) {
    chart.setDrawFreeSector();
    EXPECT_EQ(chart.getFullRatio(), 1.0);
    loop.advance(0.2501);
    EXPECT_NEAR(chart.getFullRatio(), 0.5 + 0.5 * (1 - 0.15625), 1e-6);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, static_cast<std::int64_t>(1000 / chart.getFullRatio()));
    loop.advance(0.25);
    EXPECT_NEAR(chart.getFullRatio(), 0.75, 1e-6);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 1333);
    loop.advance(0.25);
    EXPECT_NEAR(chart.getFullRatio(), 0.5 + 0.5 * 0.15625, 1e-6);
    loop.advance(0.3);
    EXPECT_EQ(chart.getFullRatio(), 0.5);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 2000);
    EXPECT_FALSE(chart.isRDAnimating());
}

TEST_F(FreeSector, chartGrowsBackWithinASecond) {
    chart.setDrawFreeSector();
    toTheEnd();
    chart.changetoDrawFreeSector();
    EXPECT_FALSE(tree.root()->getUseFreeSector());
    loop.advance(0.2501);
    EXPECT_NEAR(chart.getFullRatio(), 0.5 + 0.5 * 0.15625, 1e-6);
    toTheEnd();
    EXPECT_EQ(chart.getFullRatio(), 1.0);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 1000);
    EXPECT_FALSE(chart.isRDAnimating());
}

TEST_F(FreeSector, freePartStaysBlankOnTheLeft) {
    const QPointF right = test::pointAt(chart.getLayout(), 0.4, chart.getLayout().getRadius(1) - 4);
    const QPointF left = test::pointAt(chart.getLayout(), 0.75, chart.getLayout().getRadius(1) - 4);
    EXPECT_EQ(chartColour(left).alpha(), 255);
    chart.setDrawFreeSector();
    toTheEnd();
    EXPECT_EQ(chartColour(right).alpha(), 255);
    EXPECT_EQ(chartColour(left).alpha(), 0);
}

TEST_F(FreeSector, ringsAreCountedOnlyAtTheEnd) {
    // 700 of 100,000 bytes are just long enough for ring 1, and too short at half the size.
    TreeBuilder thin = TreeBuilder::volume("/t", 200'000, 100'000);
    thin.file(thin.root(), "large", 99'500);
    FolderSystemItem* const small = thin.folder(thin.root(), "small");
    FileSystemItem* const leaf = thin.file(small, "leaf", 500);
    thin.recount();
    thin.root()->calctotalsizeex();
    show(thin.root());
    ASSERT_EQ(chart.getLayout().m_nSubLevels, 2);
    ASSERT_TRUE(chart.CanDrawItem(leaf, 2));
    chart.setDrawFreeSector();
    loop.advance(0.95);
    EXPECT_FALSE(chart.CanDrawItem(leaf, 2));
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 2);
    toTheEnd();
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 1);
    chart.setRoot(nullptr);
}

TEST_F(FreeSector, pointerIsForgottenAndFollowsTheMovingSectors) {
    // Three quarters round: the middle of the last item, and free space at the end.
    const QPointF point = test::pointAt(chart.getLayout(), 0.75, chart.getLayout().getRadius(1) - 4);
    const QPointF pixel = view.getChartTransform().map(point);
    QCursor::setPos(area.mapToGlobal(pixel.toPoint()));
    show(tree.root());
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), after);
    chart.setDrawFreeSector();
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), nullptr);
    loop.advance(0.2);
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), after);
    toTheEnd();
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), nullptr);
}

TEST_F(FreeSector, selectedSectorsKeepTheirPlaceInTheNumbersOfTheMoment) {
    chart.selectItem(after);
    chart.setDrawFreeSector();
    ASSERT_EQ(chart.getSelectedSectors().size(), 1u);
    EXPECT_EQ(chart.getSelectedSectors()[0].m_dSkAngle(), 0.5);
}

TEST_F(FreeSector, secondToggleFinishesTheFirstAndStartsFromThere) {
    chart.setDrawFreeSector();
    loop.advance(0.3);
    chart.setDrawFreeSector();
    EXPECT_EQ(chart.getFullRatio(), 0.5);
    EXPECT_FALSE(chart.isDrawFreeSector());
    toTheEnd();
    EXPECT_EQ(chart.getFullRatio(), 1.0);
    EXPECT_FALSE(tree.root()->getUseFreeSector());
}

TEST_F(FreeSector, everyFrameIsPainted) {
    chart.setDrawFreeSector();
    const int paints = host.chartPaints;
    loop.advance(0.5001);
    EXPECT_EQ(host.chartPaints, paints + 30);
}

TEST_F(FreeSector, anotherRootDropsTheMotion) {
    chart.setDrawFreeSector();
    loop.advance(0.3);
    chart.setRoot(a);
    EXPECT_FALSE(chart.isRDAnimating());
    toTheEnd();
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 250);
    EXPECT_EQ(chart.getFullRatio(), 1.0);
    EXPECT_TRUE(tree.root()->getUseFreeSector());
}

TEST_F(FreeSector, volumeOnWhichNothingIsUsedShrinksToNothing) {
    TreeBuilder empty = TreeBuilder::volume("/e", 1000, 1000);
    empty.recount();
    show(empty.root());
    chart.setDrawFreeSector();
    toTheEnd();
    EXPECT_EQ(chart.getFullRatio(), 0.0);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 1000);
    chart.setRoot(nullptr);
}

TEST_F(FreeSector, withoutARootNothingHappens) {
    chart.setRoot(nullptr);
    chart.setDrawFreeSector();
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_FALSE(chart.isDrawFreeSector());
}

TEST_F(FreeSector, withoutMotionTheEndShowsAtOnce) {
    test::StillStyle style;
    view.setStyle(&style);
    chart.setDrawFreeSector();
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_EQ(chart.getFullRatio(), 0.5);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 2000);
    view.setStyle(nullptr);
}

TEST_F(FreeSector, withoutMotionOnTheDesktopTheWayBackIsAtOnceToo) {
    chart.setDrawFreeSector();
    toTheEnd();
    setMotionReduced(true);
    chart.setDrawFreeSector();
    setMotionReduced(false);
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_EQ(chart.getFullRatio(), 1.0);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 1000);
    EXPECT_FALSE(tree.root()->getUseFreeSector());
}

} // namespace
} // namespace veltrano
