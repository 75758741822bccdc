#include "chart/DrillFixture.h"

namespace veltrano {
namespace {

using test::ChartTest;
using test::isColour;

class Backdrop : public ChartTest {
protected:
    QImage backdropImage() {
        QImage picture(backdrop.size(), QImage::Format_ARGB32);
        picture.fill(Qt::transparent);
        backdrop.render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
        return picture;
    }
};

TEST_F(Backdrop, plateCoversTheDialAtFirst) {
    EXPECT_EQ(backdrop.getPlateAlpha(), 0.9999);
    EXPECT_TRUE(isColour(backdropImage().pixelColor(200, 150), Qt::white));
    EXPECT_TRUE(isColour(backdropImage().pixelColor(0, 0), QColor(0xEF, 0xF4, 0xF9)));
}

TEST_F(Backdrop, scanFadesThePlateAwayInAQuarterOfASecond) {
    chart.showPanelsForScanning(true);
    EXPECT_EQ(backdrop.getPlateAlpha(), 0.9999);
    loop.advance(0.125);
    EXPECT_NEAR(backdrop.getPlateAlpha(), 0.5, 0.05);
    loop.advance(0.15);
    EXPECT_EQ(backdrop.getPlateAlpha(), 0.0);
    EXPECT_EQ(loop.pendingTimers(), 0u);
}

TEST_F(Backdrop, dialStandsInTheCentredSquareDarkInItsMiddle) {
    chart.showPanelsForScanning(true);
    loop.advance(1);
    const QImage picture = backdropImage();
    EXPECT_TRUE(isColour(picture.pixelColor(200, 150), QColor(0x0D, 0x1B, 0x2E), 6));
    EXPECT_EQ(picture.pixelColor(20, 150).alpha(), 0);
    EXPECT_EQ(picture.pixelColor(70, 150).alpha(), 255);
}

TEST_F(Backdrop, dialFillsItsSquareAtEverySize) {
    chart.showPanelsForScanning(true);
    loop.advance(1);
    for (const QSize size : {QSize(401, 301), QSize(600, 500)}) {
        area.resize(size);
        settle();
        const QImage picture = backdropImage();
        const int side = size.height();
        const int left = (size.width() - side) / 2;
        EXPECT_GT(picture.pixelColor(left + side / 2, side - 10).alpha(), 200);
        EXPECT_GT(picture.pixelColor(left + side - 10, side / 2).alpha(), 200);
    }
}

TEST_F(Backdrop, endOfTheScanFadesThePlateBackIn) {
    chart.showPanelsForScanning(true);
    loop.advance(1);
    chart.showPanelsForScanning(false);
    loop.advance(1);
    EXPECT_EQ(backdrop.getPlateAlpha(), 0.9999);
}

TEST_F(Backdrop, fadeThatIsUnderWayIsNotStartedAgain) {
    chart.showPanelsForScanning(true);
    loop.advance(0.2);
    chart.showPanelsForScanning(true);
    loop.advance(0.1);
    EXPECT_EQ(backdrop.getPlateAlpha(), 0.0);
}

TEST_F(Backdrop, fadeTurnsRoundFromWhereItIs) {
    chart.showPanelsForScanning(true);
    loop.advance(0.125);
    const double halfway = backdrop.getPlateAlpha();
    chart.showPanelsForScanning(false);
    EXPECT_NEAR(backdrop.getPlateAlpha(), halfway, 0.1);
    loop.advance(0.01);
    EXPECT_GT(backdrop.getPlateAlpha(), 0.3);
}

TEST_F(Backdrop, withReducedMotionThePlateSwitchesAtOnce) {
    test::StillStyle style;
    backdrop.setStyle(&style);
    chart.showPanelsForScanning(true);
    EXPECT_EQ(backdrop.getPlateAlpha(), 0.0);
    chart.showPanelsForScanning(false);
    EXPECT_EQ(backdrop.getPlateAlpha(), 0.9999);
    backdrop.setStyle(nullptr);
}

TEST_F(Backdrop, pulseOfAScanTakesThePlateAway) {
    chart.StartAnimation();
    loop.advance(1);
    EXPECT_EQ(backdrop.getPlateAlpha(), 0.0);
    chart.StopAnimation();
    loop.advance(1);
    EXPECT_EQ(backdrop.getPlateAlpha(), 0.9999);
}

} // namespace
} // namespace veltrano
