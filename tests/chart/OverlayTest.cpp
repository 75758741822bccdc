#include "chart/ChartFixture.h"
#include "chart/Pulse.h"
#include "tree/TopLevelItem.h"

#include <QPaintEvent>

namespace veltrano {
namespace {

using test::ChartTest;
using test::isColour;
using test::TreeBuilder;

/// Notes where a widget is asked to paint.
class PaintWatcher final : public QObject {
public:
    explicit PaintWatcher(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
    QRegion painted;
};

//  /v ─┬─ a (50) ── x (50)
//      └─ f (50)
class Overlay : public ChartTest {
protected:
    Overlay() {
        a = tree.folder(tree.root(), "a");
        x = tree.file(a, "x", 50);
        f = tree.file(tree.root(), "f", 50);
        tree.recount();
        show(tree.root());
    }

    QImage overlayImage() {
        QImage picture(overlay.size(), QImage::Format_ARGB32);
        picture.fill(Qt::transparent);
        overlay.render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
        return picture;
    }

    /// How much of the overlay is white outline, in points, along a line through a sector's outer edge.
    double whiteAcross(int ring, double k) {
        const QImage picture = overlayImage();
        double white = 0;
        const double edge = chart.getLayout().getRadius(ring);
        for (double radius = edge - 4; radius <= edge + 4; radius += 0.1)
            white += colourIn(picture, test::pointAt(chart.getLayout(), k, radius)).alpha() / 255.0 * 0.1;
        return white;
    }

    static int visiblePixels(const QImage& picture) {
        int visible = 0;
        for (int row = 0; row < picture.height(); ++row)
            for (int column = 0; column < picture.width(); ++column)
                visible += qAlpha(picture.pixel(column, row)) > 0;
        return visible;
    }

    TreeBuilder tree = TreeBuilder::volume("/v", 100, 0);
    FolderSystemItem* a;
    FileSystemItem* x;
    FileSystemItem* f;
};

TEST_F(Overlay, isEmptyWhileNothingIsPointedOrSelected) {
    EXPECT_EQ(visiblePixels(overlayImage()), 0);
}

TEST_F(Overlay, pointedSectorHasAWhiteOutline) {
    pointAt(middleOf(1, 0.5, 0.5));
    const double white = whiteAcross(1, 0.75);
    EXPECT_GT(white, 1.3);
    EXPECT_LT(white, 2.6);
    EXPECT_EQ(whiteAcross(1, 0.25), 0.0);
}

TEST_F(Overlay, selectedOutlineIsTwiceAsWide) {
    chart.selectItem(f);
    const double white = whiteAcross(1, 0.75);
    EXPECT_GT(white, 2.8);
    EXPECT_LT(white, 4.2);
}

TEST_F(Overlay, outlinesAreAnsweredForOnlyIfPainted) {
    QImage picture(400, 300, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    EXPECT_FALSE(chart.DrawFocusItem(painter));
    EXPECT_FALSE(chart.DrawSelectedItem(painter));
    chart.setHiliteOnRadial(f);
    chart.selectItem(x);
    EXPECT_TRUE(chart.DrawFocusItem(painter));
    EXPECT_TRUE(chart.DrawSelectedItem(painter));
}

TEST_F(Overlay, sectorThatIsTooSmallHasNoOutline) {
    FileSystemItem* const small = tree.file(tree.root(), "small", 1);
    tree.file(tree.root(), "large", 10'000);
    tree.recount();
    show(tree.root());
    chart.setHiliteOnRadial(small);
    chart.selectItem(small);
    EXPECT_EQ(visiblePixels(overlayImage()), 0);
}

TEST_F(Overlay, sectorBeyondTheRingsHasNoOutline) {
    TreeBuilder deep("/d");
    FileSystemItem* const bottom = deep.file(deep.chain(deep.root(), "d", 20), "f", 10);
    deep.recount();
    show(deep.root());
    chart.setHiliteOnRadial(bottom);
    chart.selectItem(bottom);
    EXPECT_EQ(visiblePixels(overlayImage()), 0);
}

TEST_F(Overlay, pointedDiscIsOutlinedAllRound) {
    pointAt(chart.getLayout().m_Center);
    for (const double k : {0.1, 0.4, 0.6, 0.9})
        EXPECT_GT(whiteAcross(0, k), 1.0);
}

TEST_F(Overlay, partsOfAVolumeWithoutScanAreOutlined) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    pointAt(middleOf(1, 0.2, 0.0));
    EXPECT_GT(whiteAcross(1, 0.25), 1.0);
    EXPECT_EQ(whiteAcross(1, 0.75), 0.0);
    pointAt(middleOf(1, 0.6, 0.0));
    EXPECT_EQ(whiteAcross(1, 0.25), 0.0);
    EXPECT_GT(whiteAcross(1, 0.75), 1.0);
    chart.setRoot(nullptr);
}

TEST_F(Overlay, hoverRepaintsOnlyTheOldAndTheNewOutline) {
    pointAt(middleOf(2, 0.0, 0.5));
    settle();
    PaintWatcher watcher(overlay);
    pointAt(middleOf(1, 0.0, 0.5));
    settle();
    // Both sectors lie right of the centre.
    EXPECT_FALSE(watcher.painted.isEmpty());
    EXPECT_GT(watcher.painted.boundingRect().left(), 200 - 5);
}

TEST_F(Overlay, liveResizeHidesTheOutlinesAndShowsThemAgain) {
    chart.setHiliteOnRadial(f);
    chart.hideSelectionDuringLiveResize();
    EXPECT_FALSE(overlay.isSelectionShown());
    EXPECT_EQ(visiblePixels(overlayImage()), 0);
    chart.showSelectionAfterLiveResize();
    EXPECT_TRUE(overlay.isSelectionShown());
    EXPECT_GT(visiblePixels(overlayImage()), 0);
}

TEST_F(Overlay, newSizesDuringALiveResizeLeaveTheOutlinesHidden) {
    chart.setHiliteOnRadial(f);
    chart.hideSelectionDuringLiveResize();
    for (const QSize size : {QSize(420, 310), QSize(440, 320)}) {
        area.resize(size);
        settle();
        EXPECT_FALSE(overlay.isSelectionShown());
        EXPECT_EQ(visiblePixels(overlayImage()), 0);
    }
}

TEST_F(Overlay, nextUpdateShowsHiddenOutlines) {
    chart.hideSelectionDuringLiveResize();
    chart.setNeedsDisplayRadialViewandSelection();
    EXPECT_TRUE(overlay.isSelectionShown());
}

TEST_F(Overlay, selectingOneItemThatCannotBeLeavesTheOutlinesAsTheyAreAndAListTellsThem) {
    chart.setHiliteOnRadial(f);
    chart.hideSelectionDuringLiveResize();
    chart.selectItem(nullptr);
    EXPECT_FALSE(overlay.isSelectionShown());
    chart.selectItems({});
    EXPECT_TRUE(overlay.isSelectionShown());
}

TEST_F(Overlay, removedSelectionLayerPaintsNothing) {
    chart.setHiliteOnRadial(f);
    overlay.cleanSelLayer();
    EXPECT_EQ(visiblePixels(overlayImage()), 0);
    overlay.HideSel();
    EXPECT_FALSE(overlay.isSelectionShown());
}

TEST_F(Overlay, glowIsACentredSquareOfTheShorterSide) {
    EXPECT_EQ(overlay.getCircleRect(), QRectF(50, 0, 300, 300));
    area.resize(200, 500);
    settle();
    EXPECT_EQ(overlay.getCircleRect(), QRectF(0, 150, 200, 200));
    area.resize(250, 250);
    settle();
    EXPECT_EQ(overlay.getCircleRect(), QRectF(0, 0, 250, 250));
}

TEST_F(Overlay, pulseIsNotThereBeforeItsFirstStart) {
    EXPECT_FALSE(overlay.isPulseShown());
    overlay.showScanningAnimation(true);
    overlay.RecalcAnimationParameters();
    loop.advance(1);
    EXPECT_FALSE(overlay.isPulseShown());
}

TEST_F(Overlay, pulseFadesAndWidensWithTime) {
    chart.StartAnimation();
    EXPECT_TRUE(overlay.isPulseRunning());
    const auto brightestRadius = [&] {
        const QImage picture = overlayImage();
        int best = 0;
        for (int column = 200; column < 350; ++column)
            if (picture.pixelColor(column, 150).alpha() > picture.pixelColor(200 + best, 150).alpha())
                best = column - 200;
        return best;
    };
    EXPECT_EQ(visiblePixels(overlayImage()), 0);
    loop.advance(0.5);
    const int radius = brightestRadius();
    EXPECT_NEAR(overlayImage().pixelColor(200 + radius, 150).alphaF(), 0.9, 0.06);
    EXPECT_NEAR(radius, 150 * 0.946 * getPulseFrame(0.5).dScale, 2);
    loop.advance(0.4);
    EXPECT_NEAR(brightestRadius(), 150 * 0.946 * getPulseFrame(0.9).dScale, 2);
    EXPECT_LT(overlayImage().pixelColor(200 + brightestRadius(), 150).alphaF(), 0.2);
    chart.StopAnimation();
}

TEST_F(Overlay, pulseRepaintsNothingOfTheChart) {
    chart.StartAnimation();
    settle();
    const int paints = host.chartPaints;
    for (int frame = 0; frame < 10; ++frame) {
        loop.advance(0.05);
        settle();
    }
    EXPECT_EQ(host.chartPaints, paints);
    chart.StopAnimation();
}

TEST_F(Overlay, stoppedPulseIsHiddenAndAsksForNoMoreFrames) {
    chart.StartAnimation();
    loop.advance(0.3);
    chart.StopAnimation();
    EXPECT_FALSE(overlay.isPulseShown());
    EXPECT_FALSE(overlay.isPulseRunning());
    loop.advance(0.3);
    EXPECT_EQ(loop.pendingTimers(), 0u);
}

TEST_F(Overlay, hiddenPulseAsksForNoFramesAndGoesOnWhenShown) {
    chart.StartAnimation();
    loop.advance(0.3);
    overlay.showScanningAnimation(false);
    EXPECT_FALSE(overlay.isPulseShown());
    EXPECT_TRUE(overlay.isPulseRunning());
    loop.advance(0.1);
    EXPECT_EQ(loop.pendingTimers(), 0u);
    overlay.showScanningAnimation(true);
    EXPECT_TRUE(overlay.isPulseShown());
    EXPECT_EQ(loop.pendingTimers(), 1u);
    chart.StopAnimation();
}

TEST_F(Overlay, recalculationRestartsThePulseInTheNextTurn) {
    chart.StartAnimation();
    overlay.RecalcAnimationParameters();
    EXPECT_FALSE(overlay.isPulseRunning());
    loop.advance(0);
    EXPECT_TRUE(overlay.isPulseRunning());
    EXPECT_TRUE(overlay.isPulseShown());
    chart.StopAnimation();
}

TEST_F(Overlay, stopForgetsARestartThatIsUnderWay) {
    chart.StartAnimation();
    overlay.RecalcAnimationParameters();
    chart.StopAnimation();
    loop.advance(1);
    EXPECT_FALSE(overlay.isPulseRunning());
}

TEST_F(Overlay, resumeStartsAPulseThatNeverWas) {
    overlay.ResumeAnimation();
    EXPECT_TRUE(overlay.isPulseRunning());
    overlay.StopAnimation();
    overlay.ResumeAnimation();
    EXPECT_FALSE(overlay.isPulseRunning());
}

TEST_F(Overlay, rootUnderScanShowsThePulseAndAnotherRootHidesIt) {
    host.processing = "/v";
    chart.StartAnimation();
    show(a);
    EXPECT_FALSE(overlay.isPulseShown());
    show(tree.root());
    loop.advance(0);
    EXPECT_TRUE(overlay.isPulseShown());
    chart.StopAnimation();
}

TEST_F(Overlay, suspendAndResumeLeaveThePaceOfTheRings) {
    TreeBuilder deep = TreeBuilder::volume("/v", 1000, 0);
    deep.file(deep.chain(deep.root(), "d", 20), "f", 1000);
    deep.root()->initSizesByLevels();
    deep.recount();
    host.processing = "/v";
    show(deep.root());
    chart.StartAnimation();
    for (int second = 0; second < 3; ++second) {
        loop.advance(1);
        chart.initCountOfSublevels(true);
    }
    chart.SuspendAnimation();
    EXPECT_FALSE(overlay.isPulseRunning());
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 4);
    chart.ResumeAnimation();
    EXPECT_TRUE(overlay.isPulseRunning());
    chart.initCountOfSublevels(true);
    EXPECT_EQ(chart.getLayout().m_nSubLevels, 4);
    chart.StopAnimation();
    chart.setRoot(nullptr);
}

TEST_F(Overlay, resumeNeedsARunningScanOfTheRootAndAVisibleOverlay) {
    chart.ResumeAnimation();
    EXPECT_FALSE(overlay.isPulseRunning());
    chart.StartAnimation();
    chart.SuspendAnimation();
    chart.ResumeAnimation();
    EXPECT_FALSE(overlay.isPulseRunning()) << "The root is not under scan.";
    host.processing = "/v";
    overlay.hide();
    chart.ResumeAnimation();
    EXPECT_FALSE(overlay.isPulseRunning()) << "The overlay is hidden.";
    overlay.show();
    chart.ResumeAnimation();
    EXPECT_TRUE(overlay.isPulseRunning());
    chart.StopAnimation();
}

TEST_F(Overlay, suspendWithoutAScanDoesNothing) {
    overlay.StartAnimation();
    chart.SuspendAnimation();
    EXPECT_TRUE(overlay.isPulseRunning());
    overlay.StopAnimation();
}

} // namespace
} // namespace veltrano
