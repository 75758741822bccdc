#include "chart/DrillFixture.h"

#include "appearance/Colours.h"

#include <QEvent>

namespace veltrano {
namespace {

using test::DrillChartTest;
using test::isColour;
using test::TreeBuilder;

class DrillPainting : public DrillChartTest {
protected:
    void drillIn() {
        chart.startDrillInAnimation(a, 1, 0.25);
        begun = loop.now();
    }
    void drillOut() {
        chart.startDrillOutAnimation(tree.root());
        begun = loop.now();
    }

    /// To the frame that is due so long after the beginning of the drill.
    void frameAt(double seconds) { loop.advance(begun + seconds + 0.001 - loop.now()); }

    /// The eased progress of a moment of the grid of frames.
    static double eased(double seconds) { return seconds * seconds * (3 - 2 * seconds); }

    /// A point of the chart.
    QPointF at(double angleK, double radius) const {
        return test::pointAt(chart.getLayout(), angleK, radius);
    }

    static QColor ageColour(std::uint8_t code) { return Colours::sharedColours().getColorByTimeCode(code); }

    static int darkPixels(const QImage& picture, const QRect& within) {
        int dark = 0;
        for (int row = within.top(); row <= within.bottom(); ++row)
            for (int column = within.left(); column <= within.right(); ++column)
                dark += qGray(picture.pixel(column, row)) < 110;
        return dark;
    }

    // Dark pixels in the middle of the disc: of the seam and the small inner arc, and of a label.
    static constexpr int kEdgesOnly = 20;
    static constexpr int kLetters = 60;

    double begun = 0; // seconds
};

// The circle has radius 142.5: of three rings (before, a, after; b; x, y) the radii are 57, 92.6, 121.1 and
// 142.5, of the two rings of a 71.25, 114 and 142.5.

TEST_F(DrillPainting, beginningIsTheOldChart) {
    const QImage ordinary = chartImage();
    drillIn();
    const QImage first = chartImage();
    // Flat and gradient discs differ, and sectors painted twice have denser edges.
    for (const double k : {0.1, 0.3, 0.45, 0.7}) {
        for (const double radius : {75.0, 105.0, 130.0}) {
            EXPECT_TRUE(isColour(colourIn(first, at(k, radius)), colourIn(ordinary, at(k, radius))))
                << k << ' ' << radius;
        }
    }
}

TEST_F(DrillPainting, endIsTheNewChart) {
    drillIn();
    frameAt(59.0 / 60);
    const QImage last = chartImage();
    toTheEnd();
    const QImage ordinary = chartImage();
    for (const double k : {0.1, 0.3, 0.5, 0.7, 0.9}) {
        for (const double radius : {30.0, 90.0, 128.0}) {
            EXPECT_TRUE(isColour(colourIn(last, at(k, radius)), colourIn(ordinary, at(k, radius)), 4))
                << k << ' ' << radius;
        }
    }
}

TEST_F(DrillPainting, oldChartFadesOutWhileDrillingIn) {
    drillIn();
    const QPointF outside = at(0.96, 75); // in `after`, which nothing else covers
    EXPECT_EQ(chartColour(outside).alpha(), 255);
    for (const double moment : {0.25, 0.5, 0.75}) {
        frameAt(moment);
        EXPECT_NEAR(chartColour(outside).alphaF(), 1 - eased(moment), 0.03) << moment;
    }
}

TEST_F(DrillPainting, newChartFadesInWhileDrillingOut) {
    show(a);
    drillOut();
    // Beyond the rim of the shrinking old chart nothing else is painted: `after` at the end of the motion.
    for (const double moment : {0.5, 0.75}) {
        frameAt(moment);
        EXPECT_NEAR(chartColour(at(0.9, 62)).alphaF(), eased(moment), 0.03) << moment;
    }
    toTheEnd();
    EXPECT_EQ(chartColour(at(0.9, 62)).alpha(), 255);
}

TEST_F(DrillPainting, drillingSectorsStayOpaque) {
    drillIn();
    frameAt(0.5);
    // Halfway b lies between (92.6 + 71.25) / 2 and (121.1 + 114) / 2, from 0.125 on for 0.625 of a turn.
    EXPECT_TRUE(isColour(chartColour(at(0.3, 100)), ageColour(1)));
    EXPECT_TRUE(isColour(chartColour(at(0.7, 100)), ageColour(1)));
    EXPECT_NE(chartColour(at(0.8, 100)), ageColour(1));
    // x and y lie beyond, x for 0.25 of a turn.
    EXPECT_TRUE(isColour(chartColour(at(0.3, 130)), ageColour(3)));
    EXPECT_TRUE(isColour(chartColour(at(0.6, 130)), ageColour(5)));
}

TEST_F(DrillPainting, childrenOfTheOutermostRingComeOutOfTheRim) {
    TreeBuilder deep("/d");
    FolderSystemItem* const bottom = deep.chain(deep.root(), "d", 13);
    deep.file(bottom, "f", 1000, 3);
    deep.recount();
    show(deep.root());
    ASSERT_EQ(chart.getLayout().m_nSubLevels, 13);
    chart.startDrillInAnimation(bottom, 13, 0.0);
    begun = loop.now();
    const QPointF nearTheRim = at(0.3, 139);
    EXPECT_FALSE(isColour(chartColour(nearTheRim), ageColour(3), 20));
    frameAt(0.5);
    EXPECT_TRUE(isColour(chartColour(nearTheRim), ageColour(3)));
    chart.setRoot(nullptr);
}

TEST_F(DrillPainting, discOfATopRootIsFlatUntilItIsBack) {
    show(a);
    drillOut();
    toTheEnd();
    EXPECT_NE(chartColour(at(0, 2)), chartColour(at(0, 40)));
    drillIn();
    frameAt(59.0 / 60);
    EXPECT_TRUE(isColour(chartColour(at(0.2, 2)), ageColour(1)));
    EXPECT_TRUE(isColour(chartColour(at(0.2, 40)), ageColour(1)));
}

TEST_F(DrillPainting, marksColourTheDrillingRootAndAllBelow) {
    const Colours& colours = Colours::sharedColours();
    a->setCollected(true);
    drillIn();
    frameAt(0.9);
    EXPECT_TRUE(isColour(chartColour(at(0.5, 20)), colours.cCollectedColor()));
    EXPECT_TRUE(isColour(chartColour(at(0.5, 92)), colours.cCollectedColor()));
    EXPECT_TRUE(isColour(chartColour(at(0.5, 130)), colours.cCollectedColor()));
    toTheEnd();
    a->setTrashFlag(true);
    drillOut();
    frameAt(0.02);
    // The Trash beats a mark on sectors, a mark beats the Trash on the disc.
    EXPECT_TRUE(isColour(chartColour(at(0.5, 20)), colours.cCollectedColor()));
    EXPECT_TRUE(isColour(chartColour(at(0.5, 92)), colours.cTrashColor()));
}

TEST_F(DrillPainting, frameFollowsWhatChangesMeanwhile) {
    drillIn();
    frameAt(0.5);
    a->setCollected(true);
    chart.setNeedsDisplayRadialViewandSelection();
    EXPECT_TRUE(isColour(chartColour(at(0.3, 100)), Colours::sharedColours().cCollectedColor()));
}

TEST_F(DrillPainting, frameReadsTheSizesOfARunningScanAsTheyAre) {
    host.processing = "/elsewhere";
    drillIn();
    frameAt(0.5);
    a->setCollected(true);
    frameAt(0.52);
    EXPECT_TRUE(isColour(chartColour(at(0.3, 100)), Colours::sharedColours().cCollectedColor()));
    host.processing.reset();
}

TEST_F(DrillPainting, nothingOfTheFadingStaysBehind) {
    drillIn();
    frameAt(0.7);
    chart.setRoot(tree.root(), true, true);
    settle();
    EXPECT_EQ(chartColour(at(0.8, 75)).alpha(), 255);
    show(a);
    drillOut();
    frameAt(0.1);
    chart.releaseRDAnimation();
    settle();
    EXPECT_EQ(chartColour(at(0.8, 75)).alpha(), 255);
}

TEST_F(DrillPainting, itemThatIsTooSmallNowMayComeInALaterFrame) {
    // 0.4 of 100 bytes of ring 2: 3 points only when it has a larger share of the turn.
    TreeBuilder thin("/t");
    thin.file(thin.root(), "large", 90'000, 7);
    FolderSystemItem* const small = thin.folder(thin.root(), "small");
    thin.file(small, "first", 9'900, 3);
    thin.file(small, "last", 300, 5);
    thin.recount();
    show(thin.root());
    chart.startDrillInAnimation(small, 1, 90'000.0 / 100'200.0);
    loop.advance(0.98);
    const double share = 300.0 / 10'200.0;
    EXPECT_TRUE(isColour(chartColour(at(1 - share / 2, 128)), ageColour(5), 8));
    chart.setRoot(nullptr);
}

TEST_F(DrillPainting, crowdIsFilledWithoutSmoothEdgesOnlyWhileItMovesFast) {
    TreeBuilder crowd("/c");
    FolderSystemItem* const folder = crowd.folder(crowd.root(), "folder");
    for (int number = 0; number < 240; ++number)
        crowd.file(folder, std::to_string(number), 1000, static_cast<std::uint8_t>(number % 8));
    crowd.recount();
    show(crowd.root());
    // On the rim, where neither a line nor the chart that fades has such an alpha: of smooth edges.
    const auto smoothPixels = [this] {
        const QImage picture = chartImage();
        int found = 0;
        for (double k = 0; k < 1; k += 0.001) {
            for (const double radius : {141.5, 142.0, 142.5, 143.0}) {
                const int alpha = colourIn(picture, at(k, radius)).alpha();
                found += alpha > 170 && alpha < 245;
            }
        }
        return found;
    };
    const int ordinary = smoothPixels();
    ASSERT_GT(ordinary, 200);
    chart.startDrillInAnimation(folder, 1, 0.0);
    begun = loop.now();
    frameAt(0.05);
    EXPECT_GT(smoothPixels(), ordinary / 2);
    for (const double moment : {0.5, 0.6, 0.75}) {
        frameAt(moment);
        EXPECT_LT(smoothPixels(), ordinary / 10) << moment;
    }
    frameAt(0.95);
    EXPECT_GT(smoothPixels(), ordinary / 2);
    chart.setRoot(nullptr);
}

TEST_F(DrillPainting, fewSectorsKeepTheirSmoothEdges) {
    show(a);
    drillOut();
    frameAt(0.5);
    const QImage picture = chartImage();
    int smooth = 0;
    for (int row = 0; row < picture.height(); ++row)
        for (int column = 0; column < picture.width(); ++column)
            smooth += qAlpha(picture.pixel(column, row)) > 160 && qAlpha(picture.pixel(column, row)) < 230;
    EXPECT_GT(smooth, 50);
}

TEST_F(DrillPainting, outlinesRestDuringADrill) {
    drillIn();
    loop.advance(0.1);
    chart.setHiliteOnRadial(after);
    QImage picture(overlay.size(), QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    overlay.render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
    int visible = 0;
    for (int row = 0; row < picture.height(); ++row)
        for (int column = 0; column < picture.width(); ++column)
            visible += qAlpha(picture.pixel(column, row)) > 0;
    EXPECT_EQ(visible, 0);
}

// The label of the drilling root.

TEST_F(DrillPainting, labelOfTheNewRootAppearsInTheLastTenth) {
    host.showsLabel = true;
    const QRect middle(160, 130, 80, 40);
    drillIn();
    // Eased progress 0.896: just before.
    frameAt(0.8);
    EXPECT_LT(darkPixels(chartImage(), middle), kEdgesOnly);
    frameAt(59.0 / 60);
    const int atEnd = darkPixels(chartImage(), middle);
    EXPECT_GT(atEnd, kLetters);
    toTheEnd();
    EXPECT_NEAR(darkPixels(chartImage(), middle), atEnd, 10);
}

TEST_F(DrillPainting, labelOfTheOldRootDisappearsInTheFirstTenth) {
    host.showsLabel = true;
    show(a);
    const QRect middle(160, 130, 80, 40);
    drillOut();
    frameAt(0.02);
    EXPECT_GT(darkPixels(chartImage(), middle), kLetters);
    // Eased progress 0.104: just past it.
    frameAt(0.2);
    EXPECT_LT(darkPixels(chartImage(), middle), kEdgesOnly);
}

} // namespace
} // namespace veltrano
