#include "chart/geometry/SectorHit.h"

#include "chart/geometry/GeometryFixture.h"
#include "tree/TopLevelItem.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using test::layoutFor;
using test::pointAt;
using test::TreeBuilder;

class Sentinel final : public TreeObject {};

//  /r ─┬─ a (50) ── x (25)
//      └─ f (25), and 25 of the total that nobody takes
class SectorHit : public testing::Test {
protected:
    SectorHit() {
        a = tree.folder(tree.root(), "a");
        x = tree.file(a, "x", 25);
        f = tree.file(tree.root(), "f", 25);
        tree.recount();
        a->increaseTotalSize(25);
        layout.m_Center = QPointF(0, 0);
        layout.m_fullRadius = 128; // A power of two, so that boundaries are met exactly.
        layout.m_nSubLevels = 2;
        layout.m_lTotalSize = 100;
    }

    TreeObject* hit(const QPointF& point) {
        return getItemByPoint(layout, tree.root(), {&occupied, &unused}, point, &ring, &start);
    }
    TreeObject* hitAt(double k, double radius) { return hit(pointAt(layout, k, radius)); }

    TreeBuilder tree{"/r"};
    FolderSystemItem* a;
    FileSystemItem* x;
    FileSystemItem* f;
    Sentinel occupied;
    Sentinel unused;
    RingLayout layout;
    int ring = -7;
    double start = -7.0;
};

TEST_F(SectorHit, findsTheItemItsRingAndItsStart) {
    EXPECT_EQ(hitAt(0.6, 80), f);
    EXPECT_EQ(ring, 1);
    EXPECT_EQ(start, 0.5);
    EXPECT_EQ(hitAt(0.1, 120), x);
    EXPECT_EQ(ring, 2);
    EXPECT_EQ(start, 0.0);
}

TEST_F(SectorHit, discIsTheRoot) {
    EXPECT_EQ(hitAt(0.6, 10), tree.root());
    EXPECT_EQ(ring, 0);
    EXPECT_EQ(start, 0.0);
}

TEST_F(SectorHit, resultPlacesMayBeMissing) {
    EXPECT_EQ(
        getItemByPoint(layout, tree.root(), {&occupied, &unused}, pointAt(layout, 0.6, 80), nullptr, nullptr),
        f);
}

TEST_F(SectorHit, noRootHitsNothing) {
    EXPECT_EQ(getItemByPoint(layout, nullptr, {&occupied, &unused}, QPointF(0, 0), &ring, &start), nullptr);
    EXPECT_EQ(ring, -7);
}

TEST_F(SectorHit, outsideOfTheCircleNothingIsHitAndTheResultsStay) {
    EXPECT_EQ(hitAt(0.6, 129), nullptr);
    EXPECT_EQ(ring, -7);
    EXPECT_EQ(start, -7.0);
}

TEST_F(SectorHit, rimItselfBelongsToTheOutermostRing) {
    EXPECT_EQ(hit(QPointF(0, 128)), x);
    EXPECT_EQ(hit(QPointF(0, std::nextafter(128.0, 129.0))), nullptr);
}

TEST_F(SectorHit, boundaryBelongsToTheInnerRing) {
    // Half of 128: the disc's edge, exact in every width.
    EXPECT_EQ(hit(QPointF(0, 64)), tree.root());
    EXPECT_EQ(hit(QPointF(0, std::nextafter(64.0, 65.0))), a);
}

TEST_F(SectorHit, boundariesAreComparedAt32Bits) {
    // 0.8 as a float is a little more than 0.8.
    const double bound = static_cast<double>(0.8f);
    EXPECT_GT(bound, 0.8);
    EXPECT_EQ(hit(QPointF(0, bound * 128)), a);
    EXPECT_EQ(hit(QPointF(0, std::nextafter(bound * 128, 200.0))), x);
}

TEST_F(SectorHit, arcIncludesItsStartAndExcludesItsEnd) {
    double found = 0;
    EXPECT_EQ(getItemBySublevel(layout, *tree.root(), 1, 0.0, &found), a);
    EXPECT_EQ(getItemBySublevel(layout, *tree.root(), 1, std::nextafter(0.5, 0.0), &found), a);
    EXPECT_EQ(getItemBySublevel(layout, *tree.root(), 1, 0.5, &found), f);
    EXPECT_EQ(found, 0.5);
    EXPECT_EQ(getItemBySublevel(layout, *tree.root(), 1, 0.75, &found), nullptr);
}

TEST_F(SectorHit, blankArcPastTheLastChildHitsNothingButTellsTheRing) {
    EXPECT_EQ(hitAt(0.9, 80), nullptr);
    EXPECT_EQ(ring, 1);
    EXPECT_EQ(start, -7.0);
}

TEST_F(SectorHit, blankArcPastTheChildrenOfAFolderHitsNothing) {
    EXPECT_EQ(hitAt(0.4, 80), a);
    EXPECT_EQ(hitAt(0.4, 120), nullptr);
}

TEST_F(SectorHit, fileHasNothingAboveIt) {
    EXPECT_EQ(hitAt(0.6, 120), nullptr);
}

TEST_F(SectorHit, packageIsALeaf) {
    TreeBuilder other("/r");
    other.package(other.root(), "p", 100);
    other.recount();
    EXPECT_EQ(getItemBySublevel(layout, *other.root(), 2, 0.5, nullptr), nullptr);
    EXPECT_NE(getItemBySublevel(layout, *other.root(), 1, 0.5, nullptr), nullptr);
}

TEST_F(SectorHit, pointerOverATooSmallSectorFindsNothingAndNotItsNeighbour) {
    TreeBuilder other("/r");
    other.file(other.root(), "small", 1);
    FileSystemItem* const large = other.file(other.root(), "large", 9'999);
    other.recount();
    layout.m_lTotalSize = 10'000;
    EXPECT_EQ(getItemBySublevel(layout, *other.root(), 1, 0.00005, nullptr), nullptr);
    EXPECT_EQ(getItemBySublevel(layout, *other.root(), 1, 0.0001, nullptr), large);
}

TEST_F(SectorHit, folderWithoutChildrenHasNothingAboveIt) {
    TreeBuilder other("/r");
    EXPECT_EQ(getItemBySublevel(layout, *other.root(), 1, 0.5, nullptr), nullptr);
}

TEST_F(SectorHit, justBeforeTwelveOClockIsTheEndOfTheTurn) {
    layout.m_lTotalSize = 75; // Now f ends at a full turn.
    EXPECT_EQ(hitAt(0.999999, 80), f);
    EXPECT_EQ(hitAt(0.000001, 80), a);
}

TEST_F(SectorHit, rotationTurnsWhatIsHit) {
    test::setOrigin(layout, -5.0);
    EXPECT_EQ(hitAt(0.6, 80), f);
    EXPECT_EQ(hitAt(0.1, 120), x);
    test::setOrigin(layout, 40.0);
    EXPECT_EQ(hitAt(0.6, 80), f);
}

TEST_F(SectorHit, withoutAnyRingOnlyTheDiscIsHit) {
    layout.m_nSubLevels = 0;
    EXPECT_EQ(hitAt(0.1, 60), tree.root());
    EXPECT_EQ(hitAt(0.1, 65), nullptr);
}

TEST_F(SectorHit, viewWithoutSizeHitsNothing) {
    layout.m_fullRadius = 0;
    EXPECT_EQ(hit(QPointF(0, 0)), nullptr);
    EXPECT_EQ(hit(QPointF(3, 4)), nullptr);
}

class UnscannedVolumeHit : public SectorHit {
protected:
    UnscannedVolumeHit() { layout.m_nSubLevels = 1; }
    TreeObject* hitVolume(double k, double radius) {
        return getItemByPoint(layout, &volume, {&occupied, &unused}, pointAt(layout, k, radius), &ring,
                              &start);
    }
    VolumeItem volume{"/v", "v", 1000, 250, 0};
};

TEST_F(UnscannedVolumeHit, discIsTheVolume) {
    EXPECT_EQ(hitVolume(0.3, 64 - 1e-9), volume.getObject());
    EXPECT_EQ(ring, 0);
    EXPECT_EQ(start, 0.0);
}

TEST_F(UnscannedVolumeHit, occupiedPartStartsAtZero) {
    EXPECT_EQ(hitVolume(0.3, 100), &occupied);
    EXPECT_EQ(ring, 1);
    EXPECT_EQ(start, 0.0);
}

TEST_F(UnscannedVolumeHit, freePartStartsWhereThePointerIs) {
    EXPECT_EQ(hitVolume(0.8, 100), &unused);
    EXPECT_EQ(ring, 1);
    EXPECT_NEAR(start, 0.8, 1e-12);
}

TEST_F(UnscannedVolumeHit, ratioItselfIsOccupied) {
    // A quarter turn right of the top is exact: k is 0.25 at (r, 0).
    VolumeItem quarter("/q", "q", 1000, 750, 0);
    EXPECT_EQ(getItemByPoint(layout, &quarter, {&occupied, &unused}, QPointF(100, 0), &ring, &start),
              &occupied);
    EXPECT_EQ(getItemByPoint(layout, &quarter, {&occupied, &unused}, QPointF(100, -1e-9), &ring, &start),
              &unused);
}

TEST_F(UnscannedVolumeHit, ringIsOneOutToTheRim) {
    EXPECT_EQ(hitVolume(0.3, 128 - 1e-9), &occupied);
    EXPECT_EQ(ring, 1);
    ring = -7;
    EXPECT_EQ(hitVolume(0.3, 128.01), nullptr);
    EXPECT_EQ(ring, -7);
}

TEST_F(UnscannedVolumeHit, volumeWithoutSizeIsAllFree) {
    VolumeItem empty("/e", "e", 0, 0, 0);
    EXPECT_EQ(getOccupiedRatio(empty), 0.0);
    EXPECT_EQ(getItemByPoint(layout, &empty, {&occupied, &unused}, QPointF(100, 0), &ring, &start), &unused);
}

} // namespace
} // namespace veltrano
