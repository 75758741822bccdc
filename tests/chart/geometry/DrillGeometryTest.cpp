#include "chart/geometry/DrillGeometry.h"

#include "chart/geometry/GeometryFixture.h"
#include "chart/geometry/RingCount.h"

#include <gtest/gtest.h>

#include <array>

namespace veltrano {
namespace {

using test::layoutFor;

constexpr std::array kMoments{0.0, 0.25, 0.5, 0.75, 1.0};

/// The outer chart has radius 380 and three rings (0.4, 0.65, 0.85, 1) of 1000 bytes. The drilling root takes
/// 250 bytes from a quarter turn on; as the disc it has two rings (0.5, 0.8, 1).
class DrillGeometry : public testing::Test {
protected:
    DrillGeometry() {
        motion.outer = layoutFor(800, 800, 3, 1000);
        motion.m_nDrillAnimating = kDrillIn;
        motion.m_lDrTotalSize = 250;
        motion.m_nDrSubLevels = 2;
        motion.m_nDrRootSubLevel = 1;
        motion.m_dDrRootSkAngle = 0.25;
    }

    DrillSector at(double progress, int ring, double start, double delta) {
        motion.m_fDrillAnimation = progress;
        const std::optional<DrillSector> sector = getDrillSector(motion, ring, start, delta);
        EXPECT_TRUE(sector.has_value());
        return sector.value_or(DrillSector{});
    }

    /// The values at each of the five moments lie evenly between those at the ends.
    void expectMoves(int ring, double start, double delta, const DrillSector& from, const DrillSector& to) {
        for (const double t : kMoments) {
            const DrillSector sector = at(t, ring, start, delta);
            EXPECT_NEAR(sector.dOuterRadius, from.dOuterRadius + (to.dOuterRadius - from.dOuterRadius) * t,
                        1e-4);
            EXPECT_NEAR(sector.dInnerRadius, from.dInnerRadius + (to.dInnerRadius - from.dInnerRadius) * t,
                        1e-4);
            EXPECT_NEAR(sector.dStartAngleK, from.dStartAngleK + (to.dStartAngleK - from.dStartAngleK) * t,
                        1e-12);
            EXPECT_NEAR(sector.dDeltaAngleK, from.dDeltaAngleK + (to.dDeltaAngleK - from.dDeltaAngleK) * t,
                        1e-12);
        }
    }

    DrillMotion motion;
};

TEST_F(DrillGeometry, drillingInTheRootOpensOutAndSinksIntoTheCentre) {
    // Ring 1 of three reaches from 152 to 247; the disc of two rings reaches 190.
    expectMoves(0, 0.25, 0.25, {247, 152, 0.25, 0.25}, {190, 0, 0.0, 1.0});
}

TEST_F(DrillGeometry, drillingInAChildSlidesToItsNewRing) {
    // Ring 2 of three reaches from 247 to 323; ring 1 of two from 190 to 304.
    expectMoves(1, 0.35, 0.1, {323, 247, 0.35, 0.1}, {304, 190, 0.4, 0.4});
}

TEST_F(DrillGeometry, drillingOutIsTheWayBack) {
    motion.m_nDrillAnimating = kDrillOut;
    expectMoves(0, 0.0, 1.0, {190, 0, 0.0, 1.0}, {247, 152, 0.25, 0.25});
    expectMoves(1, 0.4, 0.4, {304, 190, 0.4, 0.4}, {323, 247, 0.35, 0.1});
}

TEST_F(DrillGeometry, sameMomentsOfInAndOutAgreeFromTheOtherEnd) {
    for (const double t : kMoments) {
        const DrillSector in = at(t, 1, 0.35, 0.1);
        motion.m_nDrillAnimating = kDrillOut;
        const DrillSector out = at(1.0 - t, 1, 0.4, 0.4);
        motion.m_nDrillAnimating = kDrillIn;
        EXPECT_NEAR(in.dOuterRadius, out.dOuterRadius, 1e-9);
        EXPECT_NEAR(in.dInnerRadius, out.dInnerRadius, 1e-9);
        EXPECT_NEAR(in.dStartAngleK, out.dStartAngleK, 1e-12);
        EXPECT_NEAR(in.dDeltaAngleK, out.dDeltaAngleK, 1e-12);
    }
}

TEST_F(DrillGeometry, childrenOfTheOutermostRingGrowOutOfTheRim) {
    motion.m_nDrRootSubLevel = 3;
    expectMoves(0, 0.25, 0.25, {380, 323, 0.25, 0.25}, {190, 0, 0.0, 1.0});
    expectMoves(1, 0.25, 0.25, {380, 380, 0.25, 0.25}, {304, 190, 0.0, 1.0});
    expectMoves(2, 0.25, 0.25, {380, 380, 0.25, 0.25}, {380, 304, 0.0, 1.0});
}

TEST_F(DrillGeometry, drillingOutWhatLiesBeyondTheEdgeShrinksIntoTheRim) {
    motion.m_nDrillAnimating = kDrillOut;
    motion.m_nDrRootSubLevel = 2;
    expectMoves(2, 0.0, 0.5, {380, 304, 0.0, 0.5}, {380, 380, 0.25, 0.125});
}

TEST_F(DrillGeometry, twoLevelsUpTheOldRootEndsOnRingTwo) {
    motion.m_nDrillAnimating = kDrillOut;
    motion.m_nDrRootSubLevel = 2;
    expectMoves(0, 0.0, 1.0, {190, 0, 0.0, 1.0}, {323, 247, 0.25, 0.25});
    expectMoves(1, 0.5, 0.5, {304, 190, 0.5, 0.5}, {380, 323, 0.375, 0.125});
}

TEST_F(DrillGeometry, ringAboveTheInnerChartsIsNotDrawn) {
    EXPECT_TRUE(getDrillSector(motion, 2, 0.25, 0.25));
    EXPECT_FALSE(getDrillSector(motion, 3, 0.25, 0.25));
}

TEST_F(DrillGeometry, withoutADrillNothingIsDrawn) {
    motion.m_nDrillAnimating = kDrillNone;
    for (const int ring : {0, 1, 2})
        EXPECT_FALSE(getDrillSector(motion, ring, 0.25, 0.25));
}

TEST_F(DrillGeometry, chartsWithoutSizeAreNotLaidOut) {
    motion.m_lDrTotalSize = 0;
    EXPECT_FALSE(getDrillSector(motion, 0, 0.25, 0.25));
    motion.m_lDrTotalSize = 250;
    motion.outer.m_lTotalSize = 0;
    EXPECT_FALSE(getDrillSector(motion, 0, 0.25, 0.25));
}

TEST_F(DrillGeometry, arcOfThreePointsIsDrawnAndAShorterOneNot) {
    motion.m_fDrillAnimation = 0.5;
    // Halfway the child's ring reaches to (323 + 304) / 2, and its share is 2.5 times the measured one.
    const double radius = at(0.5, 1, 0.3, 0.1).dOuterRadius;
    const double limit = 3.0 / (RingLayout::kFullTurn * radius) / 2.5;
    EXPECT_TRUE(getDrillSector(motion, 1, 0.3, limit * (1 + 1e-9)));
    EXPECT_FALSE(getDrillSector(motion, 1, 0.3, limit * (1 - 1e-9)));
}

TEST_F(DrillGeometry, whatIsTooShortMayReturnLater) {
    // 2.5 points at the start, and four times the share at the end.
    const double delta = 2.5 / (RingLayout::kFullTurn * 323);
    motion.m_fDrillAnimation = 0;
    EXPECT_FALSE(getDrillSector(motion, 1, 0.3, delta));
    motion.m_fDrillAnimation = 1;
    EXPECT_TRUE(getDrillSector(motion, 1, 0.3, delta));
}

TEST_F(DrillGeometry, outlineTellsItsStartAndDelta) {
    motion.m_fDrillAnimation = 0.5;
    SectorPath path;
    double start = -1;
    double delta = -1;
    EXPECT_TRUE(FillDrillingSectorPath(motion, path, 1, 0.35, 0.1, 0.2, &start, &delta));
    EXPECT_NEAR(start, 0.375, 1e-12);
    EXPECT_NEAR(delta, 0.25, 1e-12);
    EXPECT_EQ(path.dLineWidth, 0.2);
    EXPECT_TRUE(FillDrillingSectorPath(motion, path, 1, 0.35, 0.1, 0.2, nullptr, nullptr));
}

TEST_F(DrillGeometry, outlineThatIsNotDrawnLeavesTheResultPlacesAlone) {
    SectorPath path;
    double start = -1;
    double delta = -1;
    EXPECT_FALSE(FillDrillingSectorPath(motion, path, 3, 0.35, 0.1, 0.2, &start, &delta));
    EXPECT_EQ(start, -1);
    EXPECT_EQ(delta, -1);
    EXPECT_TRUE(path.path.isEmpty());
}

TEST_F(DrillGeometry, outlineIsNewEachTime) {
    SectorPath path;
    FillDrillingSectorPath(motion, path, 1, 0.35, 0.1, 0.2, nullptr, nullptr);
    const int elements = path.path.elementCount();
    FillDrillingSectorPath(motion, path, 1, 0.35, 0.1, 0.2, nullptr, nullptr);
    EXPECT_EQ(path.path.elementCount(), elements);
}

TEST_F(DrillGeometry, discAtTheEndIsASectorOfAWholeTurnFromTheCentre) {
    motion.m_fDrillAnimation = 1;
    SectorPath path;
    ASSERT_TRUE(FillDrillingSectorPath(motion, path, 0, 0.25, 0.25, 0.2, nullptr, nullptr));
    const QRectF bounds = path.path.boundingRect();
    EXPECT_NEAR(bounds.width(), 380, 0.01);
    EXPECT_NEAR(bounds.height(), 380, 0.01);
    EXPECT_TRUE(path.path.contains(test::pointAt(motion.outer, 0.37, 1)));
    EXPECT_TRUE(path.path.contains(test::pointAt(motion.outer, 0.87, 189)));
    // Not an oval: it begins in the centre.
    EXPECT_NEAR(path.path.elementAt(0).x, 400, 1e-6);
    EXPECT_NEAR(path.path.elementAt(0).y, 400, 1e-6);
}

TEST_F(DrillGeometry, outlineTurnsWithTheChart) {
    test::setOrigin(motion.outer, 0.0);
    motion.m_fDrillAnimation = 0;
    SectorPath path;
    ASSERT_TRUE(FillDrillingSectorPath(motion, path, 1, 0.25, 0.25, 0.2, nullptr, nullptr));
    // From six to nine o'clock.
    EXPECT_LE(path.path.boundingRect().right(), 400.001);
    EXPECT_LE(path.path.boundingRect().bottom(), 400.001);
}

//  /r (1000) ─┬─ before (250)
//             ├─ a (250) ─┬─ x (100) ── deep (100)
//             │           └─ y (150)
//             └─ after (500)
class DrillAgreement : public testing::Test {
protected:
    DrillAgreement() {
        tree.file(tree.root(), "before", 250);
        a = tree.folder(tree.root(), "a");
        FolderSystemItem* const x = tree.folder(a, "x");
        tree.file(x, "deep", 100);
        tree.file(a, "y", 150);
        tree.file(tree.root(), "after", 500);
        tree.recount();
        motion.outer = layoutFor(800, 800, 0, tree.root()->getTheSize());
        motion.outer.m_nSubLevels = countRingsByWalk(motion.outer, *tree.root());
        motion.m_nDrillAnimating = kDrillIn;
        motion.m_lDrTotalSize = a->getTheSize();
        motion.m_nDrSubLevels = countRingsByWalk(motion.getInner(), *a);
        motion.m_nDrRootSubLevel = 1;
        motion.m_dDrRootSkAngle = 0.25;
    }

    std::vector<Sector> measured() {
        std::vector<Sector> sectors;
        const auto visit = [&](const Sector& sector) {
            sectors.push_back(sector);
            return SectorVisit::Descend;
        };
        walkSectors(a->childrenArray(), DrillLayout(motion), 1, motion.getFirstStart(), visit);
        return sectors;
    }

    test::TreeBuilder tree{"/r"};
    FolderSystemItem* a;
    DrillMotion motion;
};

TEST_F(DrillAgreement, ringsOfTheChartToComeAreThoseItHasAsRoot) {
    EXPECT_EQ(motion.outer.m_nSubLevels, 3);
    EXPECT_EQ(motion.m_nDrSubLevels, 2);
}

TEST_F(DrillAgreement, endOfADrillInIsTheOrdinaryChart) {
    const RingLayout inner = motion.getInner();
    const std::vector<Sector> ordinary = test::sectorsOf(*a, inner);
    const std::vector<Sector> drilled = measured();
    ASSERT_EQ(test::namesOf(drilled), test::namesOf(ordinary));
    motion.m_fDrillAnimation = 1;
    for (std::size_t index = 0; index < drilled.size(); ++index) {
        const Sector& sector = drilled[index];
        const auto end = getDrillSector(motion, sector.nSubLevel, sector.dSkAngle, sector.dDeltaAngle);
        ASSERT_TRUE(end);
        EXPECT_NEAR(end->dStartAngleK, ordinary[index].dSkAngle, 1e-12);
        EXPECT_NEAR(end->dDeltaAngleK, ordinary[index].dDeltaAngle, 1e-12);
        EXPECT_NEAR(end->dOuterRadius, inner.getRadius(sector.nSubLevel), 1e-9);
        EXPECT_NEAR(end->dInnerRadius, inner.getRadius(sector.nSubLevel - 1), 1e-9);
    }
    EXPECT_EQ(ordinary.front().dSkAngle, 0.0);
}

TEST_F(DrillAgreement, beginningOfADrillInIsTheOldChart) {
    motion.m_fDrillAnimation = 0;
    std::vector<Sector> below;
    for (const Sector& sector : test::sectorsOf(*tree.root(), motion.outer)) {
        const std::string_view name = sector.item.relativePath();
        if (name == "x" || name == "deep" || name == "y")
            below.push_back(sector);
    }
    const std::vector<Sector> drilled = measured();
    ASSERT_EQ(test::namesOf(drilled), test::namesOf(below));
    for (std::size_t index = 0; index < drilled.size(); ++index) {
        const auto start = getDrillSector(motion, drilled[index].nSubLevel, drilled[index].dSkAngle,
                                          drilled[index].dDeltaAngle);
        ASSERT_TRUE(start);
        EXPECT_NEAR(start->dStartAngleK, below[index].dSkAngle, 1e-12);
        EXPECT_NEAR(start->dDeltaAngleK, below[index].dDeltaAngle, 1e-12);
        EXPECT_NEAR(start->dOuterRadius, motion.outer.getRadius(below[index].nSubLevel), 1e-9);
        EXPECT_NEAR(start->dInnerRadius, motion.outer.getRadius(below[index].nSubLevel - 1), 1e-9);
    }
}

TEST_F(DrillAgreement, drillingOutMeasuresInTheOldChartAndEndsInTheNew) {
    motion.m_nDrillAnimating = kDrillOut;
    motion.m_fDrillAnimation = 1;
    const std::vector<Sector> drilled = measured();
    ASSERT_EQ(test::namesOf(drilled), (std::vector<std::string>{"x", "deep", "y"}));
    EXPECT_DOUBLE_EQ(drilled[2].dSkAngle, 0.4);
    const auto end = getDrillSector(motion, 1, drilled[2].dSkAngle, drilled[2].dDeltaAngle);
    ASSERT_TRUE(end);
    EXPECT_NEAR(end->dStartAngleK, 0.35, 1e-12);
    EXPECT_NEAR(end->dDeltaAngleK, 0.15, 1e-12);
}

TEST(DrillLayout, walkMissesNothingThatIsDrawnAtSomeMoment) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const auto tree = test::TreeBuilder::random(seed, 2000);
        FolderSystemItem* folder = nullptr;
        DrillMotion motion;
        motion.outer = layoutFor(600, 500, 0, tree.root()->getTheSize());
        motion.outer.m_nSubLevels = countRingsByWalk(motion.outer, *tree.root());
        for (const Sector& sector : test::sectorsOf(*tree.root(), motion.outer)) {
            if (!folder && sector.item.isDir() && !sector.item.isPack()) {
                folder = sector.item.asFolderSystemItem();
                motion.m_dDrRootSkAngle = sector.dSkAngle;
                motion.m_nDrRootSubLevel = sector.nSubLevel;
            }
        }
        ASSERT_TRUE(folder);
        motion.m_lDrTotalSize = folder->getTheSize();
        motion.m_nDrSubLevels = countRingsByWalk(motion.getInner(), *folder);
        for (const DrillMode mode : {kDrillIn, kDrillOut}) {
            motion.m_nDrillAnimating = mode;
            const DrillLayout all(motion);
            std::vector<const FileSystemItem*> kept;
            const auto keep = [&](const Sector& sector) {
                kept.push_back(&sector.item);
                return SectorVisit::Descend;
            };
            walkSectors(folder->childrenArray(), all, 1, motion.getFirstStart(), keep);
            const RingLayout noLimit = layoutFor(1e9, 1e9, motion.m_nDrSubLevels, motion.getMeasuredTotal());
            const auto check = [&](const Sector& sector) {
                bool seen = false;
                for (int step = 0; step <= 20 && !seen; ++step) {
                    motion.m_fDrillAnimation = step / 20.0;
                    seen = getDrillSector(motion, sector.nSubLevel, sector.dSkAngle, sector.dDeltaAngle)
                               .has_value();
                }
                if (seen) {
                    EXPECT_EQ(std::ranges::count(kept, &sector.item), 1)
                        << seed << ' ' << sector.item.relativePath();
                }
                return seen ? SectorVisit::Descend : SectorVisit::Skip;
            };
            walkSectors(folder->childrenArray(), noLimit, 1, motion.getFirstStart(), check);
        }
    }
}

} // namespace
} // namespace veltrano
