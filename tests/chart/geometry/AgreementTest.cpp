#include "chart/geometry/RingCount.h"
#include "chart/geometry/SectorHit.h"
#include "chart/geometry/SectorOutline.h"

#include "chart/geometry/GeometryFixture.h"

#include <gtest/gtest.h>

#include <map>

namespace veltrano {
namespace {

using test::TreeBuilder;

class Sentinel final : public TreeObject {};

/// Random trees, view sizes, rotations and ring counts: the same for every fact below.
class Agreement : public testing::TestWithParam<std::uint64_t> {
protected:
    Agreement() : numbers(GetParam()), tree(TreeBuilder::random(GetParam(), 300 + numbers() % 4000)) {
        layout.setBounds(QRectF(0, 0, 200 + between(0, 800), 200 + between(0, 600)));
        layout.m_lTotalSize = tree.root()->gettotalsize();
        // Every third tree fills only a part of the turn, as during a scan.
        if (GetParam() % 3 == 0)
            layout.m_lTotalSize += layout.m_lTotalSize / 3;
        test::setOrigin(layout, between(-10, 10));
        layout.m_nSubLevels = GetParam() % 2 == 0 ? 1 + static_cast<int>(numbers() % 13)
                                                  : countRingsByWalk(layout, *tree.root());
    }

    double between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(numbers);
    }

    TreeObject* hit(const QPointF& point) {
        return getItemByPoint(layout, tree.root(), {&occupied, &unused}, point, &ring, &start);
    }

    QPainterPath outlineOf(const Sector& sector) const {
        SectorPath outline;
        FillSectorPath(layout, outline, sector.nSubLevel, sector.dSkAngle, sector.dDeltaAngle, 0.2);
        return outline.path;
    }

    std::mt19937_64 numbers;
    TreeBuilder tree;
    RingLayout layout;
    Sentinel occupied;
    Sentinel unused;
    int ring = 0;
    double start = 0;
};

TEST_P(Agreement, everyDrawnSectorIsHitAtItsMiddle) {
    const auto sectors = test::sectorsOf(*tree.root(), layout);
    ASSERT_FALSE(sectors.empty());
    for (const Sector& sector : sectors) {
        EXPECT_EQ(hit(test::middleOf(layout, sector.nSubLevel, sector.dSkAngle, sector.dDeltaAngle)),
                  &sector.item);
        EXPECT_EQ(ring, sector.nSubLevel);
        EXPECT_EQ(start, sector.dSkAngle);
    }
}

TEST_P(Agreement, everyDrawnSectorHoldsItsMiddleAndStaysInItsBounds) {
    for (const Sector& sector : test::sectorsOf(*tree.root(), layout)) {
        const QPainterPath outline = outlineOf(sector);
        EXPECT_TRUE(
            outline.contains(test::middleOf(layout, sector.nSubLevel, sector.dSkAngle, sector.dDeltaAngle)));
        EXPECT_EQ(getSectorBounds(layout, sector.nSubLevel, sector.dSkAngle, sector.dDeltaAngle),
                  outline.boundingRect());
    }
}

TEST_P(Agreement, everyPointThatHitsLiesInTheSectorThatIsDrawnThere) {
    struct Drawn {
        Sector sector;
        QPainterPath outline;
    };
    std::map<const TreeObject*, Drawn> drawn;
    for (const Sector& sector : test::sectorsOf(*tree.root(), layout))
        drawn.emplace(&sector.item, Drawn{sector, outlineOf(sector)});
    int hits = 0;
    for (int probe = 0; probe < 2000; ++probe) {
        const QPointF point(between(0, 2 * layout.m_Center.x()), between(0, 2 * layout.m_Center.y()));
        TreeObject* const item = hit(point);
        if (!item || item == tree.root())
            continue;
        const auto found = drawn.find(item);
        ASSERT_NE(found, drawn.end());
        // On the line itself rounding may put a point on either side.
        const QRectF around(point - QPointF(0.01, 0.01), QSizeF(0.02, 0.02));
        EXPECT_TRUE(found->second.outline.intersects(around));
        EXPECT_EQ(start, found->second.sector.dSkAngle);
        ++hits;
    }
    EXPECT_GT(hits, 20);
}

TEST_P(Agreement, everyPointInADrawnSectorHitsIt) {
    const auto sectors = test::sectorsOf(*tree.root(), layout);
    for (int probe = 0; probe < 300; ++probe) {
        const Sector& sector = sectors[numbers() % sectors.size()];
        const double k = sector.dSkAngle + sector.dDeltaAngle * between(0.001, 0.999);
        const double radius =
            between(layout.getRadius(sector.nSubLevel - 1) + 1e-6, layout.getRadius(sector.nSubLevel) - 1e-6);
        EXPECT_EQ(hit(test::pointAt(layout, k, radius)), &sector.item);
    }
}

TEST_P(Agreement, sectorsOfARingFollowEachOtherWithoutOverlap) {
    std::map<int, double> end;
    for (const Sector& sector : test::sectorsOf(*tree.root(), layout)) {
        EXPECT_GE(sector.dSkAngle, end[sector.nSubLevel] - 1e-12);
        end[sector.nSubLevel] = sector.dSkAngle + sector.dDeltaAngle;
        EXPECT_LE(end[sector.nSubLevel], 1.0 + 1e-9);
    }
}

TEST_P(Agreement, childLiesUnderTheArcOfItsParent) {
    std::map<const FileSystemItem*, const Sector*> drawn;
    const auto sectors = test::sectorsOf(*tree.root(), layout);
    for (const Sector& sector : sectors) {
        drawn[&sector.item] = &sector;
        if (sector.nSubLevel == 1)
            continue;
        const auto parent = drawn.find(sector.item.getParent());
        ASSERT_NE(parent, drawn.end());
        EXPECT_EQ(parent->second->nSubLevel, sector.nSubLevel - 1);
        EXPECT_GE(sector.dSkAngle, parent->second->dSkAngle - 1e-12);
        EXPECT_LE(sector.dSkAngle + sector.dDeltaAngle,
                  parent->second->dSkAngle + parent->second->dDeltaAngle + 1e-9);
    }
}

TEST_P(Agreement, sharesOfTheFirstRingAddUpToTheSizeOfTheRoot) {
    double sum = 0;
    for (std::size_t index = 0; index < tree.root()->numberOfChildren(); ++index)
        sum += layout.getFraction(tree.root()->childAtIndex(index)->gettotalsize());
    EXPECT_NEAR(sum, layout.getFraction(tree.root()->gettotalsize()), 1e-9);
}

TEST_P(Agreement, pointsFindASectorAsOftenAsItsAreaSays) {
    // Over the whole circle, the share of hits beyond the disc is the area of all sectors.
    double area = 0;
    for (const Sector& sector : test::sectorsOf(*tree.root(), layout)) {
        const double outer = layout.getRadius(sector.nSubLevel);
        const double inner = layout.getRadius(sector.nSubLevel - 1);
        area += sector.dDeltaAngle * std::numbers::pi * (outer * outer - inner * inner);
    }
    const double full = static_cast<double>(layout.m_fullRadius);
    constexpr int side = 120;
    int hits = 0;
    for (int column = 0; column < side; ++column) {
        for (int row = 0; row < side; ++row) {
            const QPointF offset((column + 0.5) / side * 2 - 1, (row + 0.5) / side * 2 - 1);
            TreeObject* const item = hit(layout.m_Center + offset * full);
            hits += item && item != tree.root();
        }
    }
    const double hitArea = hits * 4.0 * full * full / (side * side);
    EXPECT_NEAR(hitArea, area, 0.02 * std::numbers::pi * full * full);
}

INSTANTIATE_TEST_SUITE_P(RandomTrees, Agreement, testing::Range<std::uint64_t>(1, 31));

TEST(AgreementOfLargeSizes, sectorsBeyond53BitsAreHitAtTheirMiddle) {
    TreeBuilder tree("/r");
    constexpr std::int64_t step = (std::int64_t{1} << 53) + 1;
    for (int index = 0; index < 500; ++index)
        tree.file(tree.root(), "f" + std::to_string(index), step);
    tree.recount();
    const RingLayout layout = test::layoutFor(900, 700, 1, tree.root()->gettotalsize());
    const auto sectors = test::sectorsOf(*tree.root(), layout);
    ASSERT_EQ(sectors.size(), 500u);
    EXPECT_NEAR(sectors.back().dSkAngle + sectors.back().dDeltaAngle, 1.0, 1e-12);
    Sentinel sentinel;
    for (const Sector& sector : sectors)
        EXPECT_EQ(getItemByPoint(layout, tree.root(), {&sentinel, &sentinel},
                                 test::middleOf(layout, 1, sector.dSkAngle, sector.dDeltaAngle), nullptr,
                                 nullptr),
                  &sector.item);
}

} // namespace
} // namespace veltrano
