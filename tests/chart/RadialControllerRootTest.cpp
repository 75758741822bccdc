#include "chart/ChartFixture.h"
#include "tree/TopLevelItem.h"

namespace veltrano {
namespace {

using test::ChartTest;
using test::TreeBuilder;
using Told = std::vector<std::string>;

//  /v (capacity 1000, free 200) ─┬─ a (300) ── x (300)
//                                └─ f (100)
class RadialControllerRoot : public ChartTest {
protected:
    RadialControllerRoot() {
        a = tree.folder(tree.root(), "a");
        x = tree.file(a, "x", 300);
        f = tree.file(tree.root(), "f", 100);
        tree.recount();
    }
    TreeBuilder tree = TreeBuilder::volume("/v", 1000, 200);
    FolderSystemItem* a;
    FileSystemItem* x;
    FileSystemItem* f;
};

TEST_F(RadialControllerRoot, startsEmpty) {
    EXPECT_EQ(chart.getRootObject(), nullptr);
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 0);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 0);
    EXPECT_EQ(chart.getFullRatio(), 1.0);
    EXPECT_FALSE(chart.isDrawFreeSector());
    EXPECT_EQ(chart.getOriginAnglek(), 0.0f);
    EXPECT_EQ(chart.getKoeffAngle(), 1.0f);
}

TEST_F(RadialControllerRoot, layoutFollowsTheView) {
    EXPECT_EQ(chart.getLayout().m_fullRadius, 142.5f);
    EXPECT_EQ(chart.getLayout().m_Center, QPointF(200, 150));
    area.resize(600, 800);
    settle();
    EXPECT_EQ(chart.getLayout().m_fullRadius, 285.0f);
    EXPECT_EQ(chart.getLayout().m_Center, QPointF(300, 400));
}

TEST_F(RadialControllerRoot, rootIsToldRoundInOrder) {
    host.told.clear();
    chart.setRoot(tree.root());
    EXPECT_EQ(host.told, (Told{"setPathControlText", "showCollection", "ReinitSortedList",
                               "ReinitBiggestFilesArray", "showRightBiggestView"}));
    EXPECT_EQ(host.pathItem, tree.root());
}

TEST_F(RadialControllerRoot, sameRootChangesNothingUnlessForced) {
    chart.setRoot(tree.root());
    host.told.clear();
    chart.setRoot(tree.root());
    EXPECT_TRUE(host.told.empty());
    chart.setRoot(tree.root(), true, true);
    EXPECT_FALSE(host.told.empty());
}

TEST_F(RadialControllerRoot, changeIsPaintedOnlyIfAsked) {
    show(tree.root());
    const int paints = host.chartPaints;
    chart.setRoot(tree.root(), true, false);
    settle();
    EXPECT_EQ(host.chartPaints, paints);
    chart.setRoot(tree.root(), true, true);
    settle();
    EXPECT_EQ(host.chartPaints, paints + 1);
}

TEST_F(RadialControllerRoot, entryWithoutScanHidesTheEmptyCollectionAndTheTable) {
    VolumeItem volume("/v", "v", 1000, 200, 0);
    host.told.clear();
    chart.setRoot(&volume);
    EXPECT_EQ(host.told, (Told{"setPathControlText", "hideCollection", "tryHideTable25", "ReinitSortedList",
                               "ReinitBiggestFilesArray", "showRightBiggestView"}));
}

TEST_F(RadialControllerRoot, collectionWithItemsStays) {
    VolumeItem volume("/v", "v", 1000, 200, 0);
    host.collectionEmpty = false;
    host.told.clear();
    chart.setRoot(&volume);
    EXPECT_EQ(host.told[1], "showCollection");
}

TEST_F(RadialControllerRoot, rootUnderScanHidesTheEmptyCollection) {
    host.processing = "/v";
    host.told.clear();
    chart.setRoot(tree.root());
    EXPECT_EQ(host.told[1], "hideCollection");
    EXPECT_EQ(std::ranges::count(host.told, "tryHideTable25"), 0);
}

TEST_F(RadialControllerRoot, fullTurnIsTheSizeOfTheRoot) {
    chart.setRoot(tree.root());
    EXPECT_EQ(chart.getLayout().m_lTotalSize, tree.root()->getTheSize());
    chart.setRoot(a);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 300);
}

TEST_F(RadialControllerRoot, rootUnderScanIsSizedByItsOccupiedSpace) {
    host.processing = "/v";
    chart.setRoot(tree.root());
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 800);
    host.processing = "/other";
    chart.setRoot(tree.root(), true, true);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, tree.root()->getTheSize());
}

TEST_F(RadialControllerRoot, freeSectorIsRemembered) {
    tree.root()->setUseFreeSector(true);
    chart.setRoot(tree.root());
    EXPECT_TRUE(chart.isDrawFreeSector());
    EXPECT_EQ(chart.getFullRatio(), 0.8);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, tree.root()->getTheSize());
}

TEST_F(RadialControllerRoot, folderKnowsItsPlaceOnTheVolume) {
    chart.setRoot(a);
    EXPECT_EQ(chart.getOriginAnglek(), 0.0f);
    EXPECT_EQ(chart.getKoeffAngle(), 0.3f);
    FolderSystemItem* const b = tree.folder(tree.root(), "b");
    tree.file(b, "y", 50);
    tree.recount();
    chart.setRoot(b);
    EXPECT_EQ(chart.getOriginAnglek(), 0.4f);
    EXPECT_EQ(chart.getKoeffAngle(), 0.05f);
    chart.setRoot(tree.root());
    EXPECT_EQ(chart.getOriginAnglek(), 0.0f);
    EXPECT_EQ(chart.getKoeffAngle(), 1.0f);
}

TEST_F(RadialControllerRoot, folderOfAFolderTreeIsPlacedByTheSizeOfItsTop) {
    TreeBuilder plain("/r");
    plain.file(plain.root(), "before", 25);
    FolderSystemItem* const folder = plain.folder(plain.root(), "a");
    plain.file(folder, "x", 75);
    plain.recount();
    chart.setRoot(folder);
    EXPECT_EQ(chart.getOriginAnglek(), 0.25f);
    EXPECT_EQ(chart.getKoeffAngle(), 0.75f);
    chart.setRoot(nullptr);
}

TEST_F(RadialControllerRoot, changeOfRootForgetsPointedAndSelected) {
    show(tree.root());
    chart.selectItem(a);
    chart.setHiliteOnRadial(f);
    chart.setRoot(a);
    EXPECT_TRUE(chart.getSelectedSectors().empty());
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), nullptr);
}

TEST_F(RadialControllerRoot, changeOfRootPointsAtWhatIsUnderTheStillPointer) {
    QCursor::setPos(area.mapToGlobal(QPoint(200, 150)));
    show(tree.root());
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), tree.root());
    EXPECT_EQ(chart.getCurPointedSector().m_nSubLevel(), 0);
}

TEST_F(RadialControllerRoot, treeOfTheRootStaysAlive) {
    std::weak_ptr<TreeStorage> storage;
    {
        const TreeBuilder passing = TreeBuilder::random(1, 500);
        storage = passing.storage();
        show(passing.root());
    }
    EXPECT_FALSE(storage.expired());
    chart.setNeedsDisplayRadialViewandSelection();
    settle();
    chart.setRoot(nullptr);
    EXPECT_TRUE(storage.expired());
}

TEST_F(RadialControllerRoot, pointedItemKeepsItsTree) {
    SectorItem sector;
    std::weak_ptr<TreeStorage> storage;
    {
        const TreeBuilder passing("/p");
        storage = passing.storage();
        sector.setM_pItem(passing.root());
    }
    EXPECT_FALSE(storage.expired());
    sector.cleanSector();
    EXPECT_TRUE(storage.expired());
    EXPECT_EQ(sector.m_pItem(), nullptr);
    EXPECT_EQ(sector.m_nSubLevel(), 0);
    EXPECT_EQ(sector.m_dSkAngle(), 0.0);
}

TEST_F(RadialControllerRoot, removedVolumeEmptiesTheChart) {
    show(tree.root());
    chart.volumeWasRemoved("/other");
    EXPECT_EQ(chart.getRootObject(), tree.root());
    chart.volumeWasRemoved("/v");
    EXPECT_EQ(chart.getRootObject(), nullptr);
    settle();
    EXPECT_EQ(chartImage().pixelColor(200, 150).alpha(), 0);
}

TEST_F(RadialControllerRoot, scanIsToldByItsPath) {
    EXPECT_FALSE(chart.isSelectedScanningRoot());
    chart.setRoot(tree.root());
    EXPECT_FALSE(chart.isSelectedScanningRoot());
    host.processing = "/v";
    EXPECT_TRUE(chart.isSelectedScanningRoot());
    host.processing = "/v/a";
    EXPECT_FALSE(chart.isSelectedScanningRoot());
}

TEST_F(RadialControllerRoot, entryWithTheScannedPathIsUnderScanToo) {
    VolumeItem volume("/v", "v", 1000, 200, 0);
    host.processing = "/v";
    chart.setRoot(&volume);
    EXPECT_TRUE(chart.isSelectedScanningRoot());
    chart.setRoot(nullptr);
}

TEST_F(RadialControllerRoot, ringsAreNoneWithoutASizeOrARadius) {
    TreeBuilder empty("/e");
    chart.setRoot(empty.root());
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 0);
    chart.setRoot(tree.root());
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 2);
    chart.initRadialParameters(QRectF());
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 0);
}

TEST_F(RadialControllerRoot, withoutARootTheRingCountKeepsItsValue) {
    chart.setRoot(tree.root());
    chart.setRoot(nullptr);
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 2);
}

TEST_F(RadialControllerRoot, volumeWithoutScanHasOneRing) {
    VolumeItem volume("/v", "v", 1000, 200, 0);
    chart.setRoot(&volume);
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 1);
    chart.setRoot(nullptr);
}

TEST_F(RadialControllerRoot, scanTickOfAnotherRootIsLeftAlone) {
    show(tree.root());
    TreeBuilder other("/o");
    host.told.clear();
    const int paints = host.chartPaints;
    chart.UpdateRadialStructureDuringProcessByRoot(other.root());
    settle();
    EXPECT_TRUE(host.told.empty());
    EXPECT_EQ(host.chartPaints, paints);
}

TEST_F(RadialControllerRoot, scanTickShowsWhatHasGrown) {
    TreeBuilder growing("/g");
    growing.file(growing.root(), "f", 100);
    growing.recount();
    show(growing.root());
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 1);
    const int paints = host.chartPaints;
    host.told.clear();
    growing.file(growing.folder(growing.root(), "a"), "x", 200);
    growing.recount();
    chart.UpdateRadialStructureDuringProcessByRoot(growing.root());
    settle();
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 2);
    EXPECT_EQ(chart.getLayout().m_lTotalSize, 300);
    EXPECT_EQ(host.chartPaints, paints + 1);
    EXPECT_EQ(host.told, Told{"ReinitSortedList"});
}

TEST_F(RadialControllerRoot, circleNeverShrinksDuringAScan) {
    show(tree.root());
    const std::int64_t before = chart.getLayout().m_lTotalSize;
    tree.root()->removeChild(a);
    tree.recount();
    chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
    EXPECT_EQ(chart.getLayout().m_lTotalSize, before);
}

TEST_F(RadialControllerRoot, scanOfADeepTreeShowsOneMoreRingEachSecond) {
    TreeBuilder deep = TreeBuilder::volume("/d", 1000, 0);
    deep.file(deep.chain(deep.root(), "d", 20), "f", 1000);
    deep.root()->initSizesByLevels();
    deep.recount();
    host.processing = "/d";
    chart.setRoot(deep.root());
    chart.StartAnimation();
    for (int rings = 1; rings <= 13; ++rings) {
        chart.UpdateRadialStructureDuringProcessByRoot(deep.root());
        EXPECT_EQ(chart.getLayout().m_nSubLevels, rings);
        loop.advance(1.0);
    }
    chart.StopAnimation();
    chart.setRoot(nullptr);
}

TEST_F(RadialControllerRoot, endOfAScanShowsAllRingsAtOnce) {
    TreeBuilder deep = TreeBuilder::volume("/d", 1000, 0);
    deep.file(deep.chain(deep.root(), "d", 20), "f", 1000);
    deep.root()->initSizesByLevels();
    deep.recount();
    chart.StartAnimation();
    chart.setRoot(deep.root());
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 1);
    chart.StopAnimation();
    chart.setRoot(deep.root(), true, true);
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 13);
    chart.setRoot(nullptr);
}

} // namespace
} // namespace veltrano
