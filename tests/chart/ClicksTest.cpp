#include "chart/ChartFixture.h"
#include "tree/SpecialItems.h"
#include "tree/TopLevelItem.h"

namespace veltrano {
namespace {

using test::ChartTest;
using test::TreeBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

//  /v (100 of 200) ─┬─ a (50) ── x (25), deep (25) ── z (25)
//                   ├─ f (20)
//                   ├─ pack (20)
//                   └─ vault (10), a link to /Volumes/home
class Clicks : public ChartTest {
protected:
    Clicks() {
        a = tree.folder(tree.root(), "a");
        x = tree.file(a, "x", 25);
        deep = tree.folder(a, "deep");
        tree.file(deep, "z", 25);
        f = tree.file(tree.root(), "f", 20);
        tree.package(tree.root(), "pack", 20);
        FileVaultDirItem::initWithPathSize(tree.arena(), "vault", tree.root(), 10, "/Volumes/home");
        tree.recount();
        show(tree.root());
        host.told.clear();
    }

    void endAnimation() {
        loop.advance(2);
        settle();
    }
    QPointF centre() const { return chart.getLayout().m_Center; }
    QPointF onA() const { return middleOf(1, 0.0, 0.5); }
    QPointF onF() const { return middleOf(1, 0.5, 0.2); }
    QPointF onPack() const { return middleOf(1, 0.7, 0.2); }
    QPointF onVault() const { return middleOf(1, 0.9, 0.1); }
    QPointF inCorner() const { return {2, 2}; }

    TreeBuilder tree = TreeBuilder::volume("/v", 200, 100);
    FolderSystemItem* a;
    FileSystemItem* x;
    FolderSystemItem* deep;
    FileSystemItem* f;
};

TEST_F(Clicks, clickOnAFolderDrillsIntoIt) {
    click(onA());
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), a);
}

TEST_F(Clicks, clickOnAFolderOfAnOuterRingDrillsIntoIt) {
    click(middleOf(2, 0.25, 0.25));
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), deep);
}

TEST_F(Clicks, clickOnTheDiscOfASubFolderDrillsOutOneLevel) {
    show(deep);
    click(centre());
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), a);
}

TEST_F(Clicks, clickOnAFileOrAPackageDoesNothing) {
    for (const QPointF& point : {onF(), onPack()}) {
        click(point);
        EXPECT_FALSE(chart.isRDAnimating());
        endAnimation();
        EXPECT_EQ(chart.getRootObject()->getObject(), tree.root());
    }
    EXPECT_THAT(host.told, IsEmpty());
}

TEST_F(Clicks, clickBesideTheCircleDoesNothing) {
    click(inCorner());
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_THAT(host.told, IsEmpty());
}

TEST_F(Clicks, otherButtonsClickNothing) {
    QTest::mouseClick(&view, Qt::MiddleButton, {}, inView(onA()));
    QTest::mouseClick(&view, Qt::RightButton, {}, inView(onA()));
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_EQ(chart.getRootObject()->getObject(), tree.root());
}

TEST_F(Clicks, clickOnALinkedHomeSelectsItsVolumeAndLooksAgain) {
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(), QPointF(), Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    EXPECT_TRUE(chart.LMouseClick(onVault(), release));
    EXPECT_THAT(host.told, ElementsAre("select /Volumes/home"));
}

TEST_F(Clicks, onlyADrillOutAsksTheViewToLookAgain) {
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(), QPointF(), Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    EXPECT_FALSE(chart.LMouseClick(onF(), release));
    EXPECT_FALSE(chart.LMouseClick(inCorner(), release));
    EXPECT_FALSE(chart.LMouseClick(onA(), release));
    endAnimation();
    EXPECT_TRUE(chart.LMouseClick(centre(), release));
}

TEST_F(Clicks, clickWithControlShowsTheItemInTheFileManager) {
    click(onF(), Qt::ControlModifier);
    EXPECT_THAT(host.shown, ElementsAre(std::vector<std::string>{"/v/f"}));
    click(onA(), Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier);
    EXPECT_EQ(host.shown.size(), 2u);
    EXPECT_THAT(host.informed, IsEmpty());
    EXPECT_FALSE(chart.isRDAnimating());
}

TEST_F(Clicks, clickWithAltTellsAboutTheItem) {
    click(onF(), Qt::AltModifier);
    EXPECT_THAT(host.informed, ElementsAre(std::vector<std::string>{"/v/f"}));
    EXPECT_THAT(host.shown, IsEmpty());
}

TEST_F(Clicks, shiftComesBeforeAltAndNeverDrills) {
    click(onA(), Qt::ShiftModifier | Qt::AltModifier);
    EXPECT_THAT(host.informed, IsEmpty());
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_EQ(chart.getRootObject()->getObject(), tree.root());
}

TEST_F(Clicks, scanOfTheShownRootTakesNoClick) {
    host.processing = "/v";
    click(onA());
    click(onF(), Qt::ControlModifier);
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_EQ(chart.getRootObject()->getObject(), tree.root());
    EXPECT_THAT(host.shown, IsEmpty());
}

TEST_F(Clicks, scanOfAnotherRootLeavesTheClick) {
    host.processing = "/elsewhere";
    click(onA());
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), a);
}

TEST_F(Clicks, clickDuringAnAnimationIsIgnored) {
    click(onA());
    if (!chart.isRDAnimating())
        GTEST_SKIP() << "animations are off";
    loop.advance(0.5);
    click(onF(), Qt::ControlModifier);
    EXPECT_THAT(host.shown, IsEmpty());
}

TEST_F(Clicks, discOfAnUnscannedVolumeStartsItsScan) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    host.told.clear();
    click(centre());
    EXPECT_THAT(host.told, ElementsAre("stopAction", "startAction"));
    chart.setRoot(nullptr);
}

TEST_F(Clicks, discOfAnUnscannedFolderStartsItsScan) {
    FolderItem folder("/w", "w", 0, 0, 0);
    show(&folder);
    host.told.clear();
    click(centre());
    EXPECT_THAT(host.told, ElementsAre("stopAction", "startAction"));
    chart.setRoot(nullptr);
}

TEST_F(Clicks, discOfAnUnscannedVolumeWaitsForARunningScan) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    host.told.clear();
    host.processing = "/elsewhere";
    click(centre());
    EXPECT_THAT(host.told, IsEmpty());
    chart.setRoot(nullptr);
}

TEST_F(Clicks, partsOfAnUnscannedVolumeTakeNoClick) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    host.told.clear();
    click(middleOf(1, 0.0, 0.5), Qt::ControlModifier);
    click(middleOf(1, 0.5, 0.5));
    EXPECT_THAT(host.told, IsEmpty());
    EXPECT_THAT(host.shown, IsEmpty());
    chart.setRoot(nullptr);
}

TEST_F(Clicks, discOfAVolumeTogglesItsFreePart) {
    ASSERT_FALSE(chart.isDrawFreeSector());
    click(centre());
    endAnimation();
    EXPECT_TRUE(chart.isDrawFreeSector());
    click(centre());
    endAnimation();
    EXPECT_FALSE(chart.isDrawFreeSector());
}

TEST_F(Clicks, volumeThatIsNinetyNinePerCentFullShowsNoFreePart) {
    for (const std::int64_t free : {10, 9}) {
        TreeBuilder full = TreeBuilder::volume("/full", 1000, free);
        full.file(full.root(), "big", 900);
        full.recount();
        show(full.root());
        click(centre());
        endAnimation();
        EXPECT_FALSE(chart.isDrawFreeSector()) << free;
        show(tree.root());
    }
    TreeBuilder roomy = TreeBuilder::volume("/roomy", 1000, 11);
    roomy.file(roomy.root(), "big", 900);
    roomy.recount();
    show(roomy.root());
    click(centre());
    endAnimation();
    EXPECT_TRUE(chart.isDrawFreeSector());
    show(tree.root());
}

TEST_F(Clicks, volumeOfWhichMoreIsCountedThanItHoldsShowsNoFreePart) {
    TreeBuilder overfull = TreeBuilder::volume("/o", 1000, 500);
    overfull.file(overfull.root(), "big", 1000);
    overfull.recount();
    show(overfull.root());
    click(centre());
    endAnimation();
    EXPECT_FALSE(chart.isDrawFreeSector());
    show(tree.root());
}

TEST_F(Clicks, discOfATopFolderDoesNothing) {
    TreeBuilder folder("/home");
    folder.file(folder.root(), "big", 1000);
    folder.recount();
    show(folder.root());
    click(centre());
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_FALSE(chart.isDrawFreeSector());
    show(tree.root());
}

// Turning the chart.

TEST_F(Clicks, dragFromBesideTheCircleTurnsTheChart) {
    const RingLayout before = chart.getLayout();
    const QPointF from = before.m_Center + QPointF(0, 148);
    const QPointF to = before.m_Center + QPointF(148, 0);
    press(from);
    dragTo(to);
    // A quarter, clockwise: the seam follows the pointer.
    EXPECT_NEAR(chart.getLayout().g_dOriginAngleRad, before.g_dOriginAngleRad - std::numbers::pi / 2, 0.01);
    EXPECT_DOUBLE_EQ(chart.getLayout().g_dOriginAngleDeg,
                     chart.getLayout().g_dOriginAngleRad * 180.0 / std::numbers::pi);
    release(to);
}

TEST_F(Clicks, turningKeepsTheFractionsAndTheHitTestAgreesWithThePicture) {
    QMouseEvent none(QEvent::MouseMove, QPointF(), QPointF(), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    const QPointF middle = centre();
    const QColor colour = chartColour(onF());
    chart.LMouseDown(middle + QPointF(0, 149), none);
    chart.LMouseDragged(middle + QPointF(149, 0), none);
    int ring = 0;
    double start = 0;
    // onF() is asked anew: it stands for the fraction, not for the place.
    EXPECT_EQ(chart.getItemByPoint(onF(), &ring, &start), f);
    EXPECT_EQ(start, 0.5);
    EXPECT_TRUE(test::isColour(chartColour(onF()), colour));
    EXPECT_NEAR(chart.getLayout().g_dOriginAngleRad, 0, 1e-12);
}

TEST_F(Clicks, turnedChartIsPaintedAtOnce) {
    press(inCorner());
    const int paints = host.chartPaints;
    dragTo(inCorner() + QPointF(0, 100));
    EXPECT_EQ(host.chartPaints, paints + 1);
    release(inCorner());
}

TEST_F(Clicks, newStartAngleStaysForOtherRoots) {
    press(inCorner());
    dragTo(inCorner() + QPointF(0, 100));
    release(inCorner());
    const double angle = chart.getLayout().g_dOriginAngleRad;
    EXPECT_NE(angle, std::numbers::pi / 2);
    show(a);
    EXPECT_EQ(chart.getLayout().g_dOriginAngleRad, angle);
    area.resize(500, 400);
    EXPECT_EQ(chart.getLayout().g_dOriginAngleRad, angle);
}

TEST_F(Clicks, releaseOfATurnIsNoClickAndTheNextOneIs) {
    press(inCorner());
    dragTo(onF());
    release(onA());
    EXPECT_FALSE(chart.isRDAnimating());
    EXPECT_EQ(chart.getRootObject()->getObject(), tree.root());
    click(onA());
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), a);
}

TEST_F(Clicks, trembleOfAClickIsNoDrag) {
    const double angle = chart.getLayout().g_dOriginAngleRad;
    press(inCorner());
    dragTo(inCorner() + QPointF(1, 1));
    EXPECT_EQ(chart.getLayout().g_dOriginAngleRad, angle);
    release(inCorner());
    press(onA());
    dragTo(onA() + QPointF(1, 1));
    release(onA() + QPointF(1, 1));
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), a);
}

TEST_F(Clicks, dragToTheSamePlaceTurnsNothingAndLeavesTheClick) {
    QMouseEvent none(QEvent::MouseMove, QPointF(), QPointF(), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    const double angle = chart.getLayout().g_dOriginAngleRad;
    EXPECT_TRUE(chart.LMouseDown(inCorner(), none));
    EXPECT_TRUE(chart.LMouseDragged(inCorner(), none));
    EXPECT_EQ(chart.getLayout().g_dOriginAngleRad, angle);
    chart.LMouseClick(onA(), none);
    endAnimation();
    EXPECT_EQ(chart.getRootObject()->getObject(), a);
}

TEST_F(Clicks, dragThatReachesAFileGoesOnTurning) {
    press(inCorner());
    dragTo(onF());
    const double angle = chart.getLayout().g_dOriginAngleRad;
    dragTo(onA());
    EXPECT_NE(chart.getLayout().g_dOriginAngleRad, angle);
    release(onA());
}

TEST_F(Clicks, scanOfTheShownRootIsTurnedAlsoFromASector) {
    host.processing = "/v";
    const double angle = chart.getLayout().g_dOriginAngleRad;
    press(onF());
    dragTo(onA());
    EXPECT_NE(chart.getLayout().g_dOriginAngleRad, angle);
    release(onA());
}

TEST_F(Clicks, dragDuringAnAnimationDoesNothing) {
    press(inCorner());
    const double angle = chart.getLayout().g_dOriginAngleRad;
    chart.startDrillInAnimation(a, 1, 0.0);
    if (!chart.isRDAnimating())
        GTEST_SKIP() << "animations are off";
    QMouseEvent none(QEvent::MouseMove, QPointF(), QPointF(), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    EXPECT_FALSE(chart.LMouseDragged(onF(), none));
    EXPECT_EQ(chart.getLayout().g_dOriginAngleRad, angle);
    release(inCorner());
}

// Sounds.

class PointerSounds : public Clicks {};

TEST_F(PointerSounds, folderPopsAndFileTinks) {
    pointAt(onA());
    pointAt(onF());
    pointAt(onPack());
    pointAt(centre());
    EXPECT_THAT(host.sounds, ElementsAre("Pop", "Tink", "Tink", "Pop"));
}

TEST_F(PointerSounds, sameItemIsHeardOnce) {
    pointAt(middleOf(1, 0.1, 0.1));
    pointAt(middleOf(1, 0.2, 0.1));
    EXPECT_THAT(host.sounds, ElementsAre("Pop"));
}

TEST_F(PointerSounds, gapAndOutsideAreSilent) {
    pointAt(inCorner());
    pointAt(middleOf(2, 0.6, 0.1));
    EXPECT_THAT(host.sounds, IsEmpty());
}

TEST_F(PointerSounds, freePartIsHeardOnceThoughEveryMoveIsNews) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    pointAt(middleOf(1, 0.6, 0.0));
    pointAt(middleOf(1, 0.7, 0.0));
    pointAt(centre());
    EXPECT_THAT(host.sounds, ElementsAre("Tink", "Pop"));
    chart.setRoot(nullptr);
}

TEST_F(PointerSounds, nothingIsHeardWhenSoundsAreOff) {
    host.playsSounds = false;
    pointAt(onA());
    EXPECT_THAT(host.sounds, IsEmpty());
}

TEST_F(PointerSounds, tickOfAScanIsSilentAndANewRootIsHeard) {
    QCursor::setPos(view.mapToGlobal(inView(onF())));
    chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
    ASSERT_EQ(chart.getCurPointedSector().m_pItem(), f);
    EXPECT_THAT(host.sounds, IsEmpty());
    chart.setRoot(tree.root(), true, true);
    EXPECT_THAT(host.sounds, ElementsAre("Tink"));
}

TEST_F(PointerSounds, clickableIsAVolumeOrAFolderThatIsNoPackage) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    FolderItem folder("/w", "w", 0, 0, 0);
    EXPECT_FALSE(RadialController::isItemClickable(nullptr));
    EXPECT_TRUE(RadialController::isItemClickable(&volume));
    EXPECT_FALSE(RadialController::isItemClickable(&folder));
    EXPECT_TRUE(RadialController::isItemClickable(a));
    EXPECT_TRUE(RadialController::isItemClickable(tree.root()));
    EXPECT_FALSE(RadialController::isItemClickable(f));
    EXPECT_FALSE(RadialController::isItemClickable(tree.root()->childAtIndex(2)));
    EXPECT_FALSE(RadialController::isItemClickable(chart.getSentinels().m_pFreeSector));
}

TEST_F(PointerSounds, leavingTheChartPutsTheRootOnThePathControl) {
    show(a);
    host.told.clear();
    host.pathItem = nullptr;
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&view, &leave);
    EXPECT_THAT(host.told, ElementsAre("setPathControlText"));
    EXPECT_EQ(host.pathItem, static_cast<VolumeFolderProtocol*>(a));
}

} // namespace
} // namespace veltrano
