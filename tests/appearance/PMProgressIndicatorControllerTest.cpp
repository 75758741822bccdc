// The bars on the application's icon: who is listed, when it is drawn, and where each bar stands.

#include "appearance/PMProgressIndicatorController.h"

#include "appearance/PMProgressIndicator.h"
#include "support/FakeMainLoop.h"
#include "support/IconRecorders.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>
#include <optional>
#include <vector>

namespace veltrano {
namespace {

const double kBarberOffsetAtTheStart = PMProgressIndicatorController::getBarberOffset();

constexpr int kSide = RecordedIcon::kSide;
const QColor kIconColour = RecordedIcon::colour();
const QColor kBlue(0, 0, 255);
const QColor kGrey(128, 128, 128);

QPixmap plain(int width, const QColor& colour) {
    QPixmap pixmap(width, 13);
    pixmap.fill(colour);
    return pixmap;
}

/// A pole of which every column has a colour of its own.
QPixmap ruler() {
    QImage picture(160, 13, QImage::Format_ARGB32_Premultiplied);
    for (int x = 0; x < 160; ++x)
        for (int y = 0; y < 13; ++y)
            picture.setPixelColor(x, y, QColor(x, 0, 0));
    return QPixmap::fromImage(picture);
}

class PMProgressIndicatorControllerTest : public testing::Test {
protected:
    PMProgressIndicatorControllerTest() {
        bars = {.blueBar = plain(kSide, kBlue), .greyBar = plain(kSide, kGrey), .barberBar = ruler()};
    }

    PMProgressIndicatorController& make() {
        controller.emplace(loop, icon, launcher, bars);
        return *controller;
    }
    std::unique_ptr<PMProgressIndicator> indicatorAt(double value) {
        auto indicator = std::make_unique<PMProgressIndicator>(loop);
        indicator->setDoubleValue(value);
        return indicator;
    }

    FakeMainLoop loop;
    RecordedIcon icon;
    RecordedLauncher launcher;
    PMProgressIndicatorController::Bars bars;
    std::optional<PMProgressIndicatorController> controller;
};

TEST_F(PMProgressIndicatorControllerTest, isFoundByTheIndicatorsWhileItLives) {
    EXPECT_EQ(PMProgressIndicatorController::sharedInstance(), nullptr);
    PMProgressIndicatorController& made = make();
    EXPECT_EQ(PMProgressIndicatorController::sharedInstance(), &made);
    controller.reset();
    EXPECT_EQ(PMProgressIndicatorController::sharedInstance(), nullptr);
}

TEST_F(PMProgressIndicatorControllerTest, anIndicatorIsListedOnce) {
    make();
    const auto indicator = indicatorAt(1);
    indicator->setDoubleValue(2);
    indicator->setDrawDockProgress(true);
    EXPECT_EQ(controller->numProgressIndicators(), 1U);
}

TEST_F(PMProgressIndicatorControllerTest, anIndicatorThatIsNotToShowOnTheIconIsNotListed) {
    make();
    PMProgressIndicator indicator(loop);
    indicator.setDrawDockProgress(false);
    indicator.setDoubleValue(5);
    EXPECT_EQ(controller->numProgressIndicators(), 0U);
}

TEST_F(PMProgressIndicatorControllerTest, takingTheFlagAwayTakesTheIndicatorOff) {
    make();
    const auto indicator = indicatorAt(5);
    indicator->setDrawDockProgress(false);
    EXPECT_EQ(controller->numProgressIndicators(), 0U);
}

TEST_F(PMProgressIndicatorControllerTest, anIndicatorThatDiesLeavesTheIcon) {
    make();
    indicatorAt(5).reset();
    EXPECT_EQ(controller->numProgressIndicators(), 0U);
    loop.advance(0.1);
    EXPECT_EQ(icon.shown.back(), icon.icon);
}

TEST_F(PMProgressIndicatorControllerTest, anIndicatorMayOutliveTheController) {
    make();
    const auto indicator = indicatorAt(5);
    controller.reset();
    indicator->setDoubleValue(6);
    indicator->display();
    EXPECT_EQ(indicator->value(), 6);
}

TEST_F(PMProgressIndicatorControllerTest, aRangeOfOneLeavesTheIconAtBothEnds) {
    make();
    PMProgressIndicator indicator(loop);
    indicator.setMinValue(-1);
    indicator.setMaxValue(1);
    indicator.setDoubleValue(-1);
    EXPECT_EQ(controller->numProgressIndicators(), 1U); // a fraction of 0 is not at the least of -1
    indicator.setMinValue(0);
    indicator.setDoubleValue(1);
    EXPECT_EQ(controller->numProgressIndicators(), 0U);
    indicator.setDrawDockProgress(true);
    EXPECT_EQ(controller->numProgressIndicators(), 1U);
    indicator.setDoubleValue(0);
    EXPECT_EQ(controller->numProgressIndicators(), 0U);
}

TEST_F(PMProgressIndicatorControllerTest, aLargerRangeLeavesTheIconAtTheLowerEndOnly) {
    make();
    const auto indicator = indicatorAt(1000);
    EXPECT_EQ(controller->numProgressIndicators(), 1U);
    indicator->setDoubleValue(0);
    EXPECT_EQ(controller->numProgressIndicators(), 0U);
}

TEST_F(PMProgressIndicatorControllerTest, theIconFollowsAfterATenthOfASecond) {
    make();
    const auto indicator = indicatorAt(500);
    loop.advance(0.09);
    EXPECT_TRUE(icon.shown.empty());
    loop.advance(0.011);
    EXPECT_EQ(icon.shown.size(), 1U);
}

TEST_F(PMProgressIndicatorControllerTest, manyRequestsAreOneDrawing) {
    make();
    const auto first = indicatorAt(100);
    const auto second = indicatorAt(200);
    for (int value = 101; value < 200; ++value)
        first->setDoubleValue(value);
    loop.advance(1);
    EXPECT_EQ(icon.shown.size(), 1U);
}

TEST_F(PMProgressIndicatorControllerTest, drawingNowTakesThePlaceOfTheRequest) {
    make();
    const auto indicator = indicatorAt(100);
    controller->drawProgressIndicators();
    loop.advance(1);
    EXPECT_EQ(icon.shown.size(), 1U);
}

TEST_F(PMProgressIndicatorControllerTest, displayOfAnIndicatorDrawsTheIconAtOnce) {
    make();
    const auto indicator = indicatorAt(100);
    indicator->display();
    EXPECT_EQ(icon.shown.size(), 1U);
    indicator->setDrawDockProgress(false);
    indicator->display();
    EXPECT_EQ(icon.shown.size(), 1U);
}

TEST_F(PMProgressIndicatorControllerTest, withoutIndicatorsTheBareIconReturns) {
    make();
    const auto indicator = indicatorAt(500);
    controller->drawProgressIndicators();
    EXPECT_NE(icon.shown.back(), icon.icon);
    indicator->setDoubleValue(0);
    loop.advance(0.1);
    EXPECT_EQ(icon.shown.back(), icon.icon);
}

TEST_F(PMProgressIndicatorControllerTest, restoringShowsTheBareIconAtOnce) {
    make();
    const auto indicator = indicatorAt(500);
    controller->drawProgressIndicators();
    controller->restoreIcon();
    EXPECT_EQ(icon.shown.back(), icon.icon);
}

TEST_F(PMProgressIndicatorControllerTest, theEndOfTheProgramRestoresTheIcon) {
    make();
    const auto indicator = indicatorAt(500);
    controller->drawProgressIndicators();
    controller.reset();
    EXPECT_EQ(icon.shown.back(), icon.icon);
    EXPECT_EQ(launcher.told.back(), std::nullopt);
}

TEST_F(PMProgressIndicatorControllerTest, blueFillsTheShareAndGreyTheRest) {
    make();
    const auto indicator = indicatorAt(250); // 32 of 128
    controller->drawProgressIndicators();
    EXPECT_EQ(icon.at(0, 0), kBlue);
    EXPECT_EQ(icon.at(31, 12), kBlue);
    EXPECT_EQ(icon.at(32, 0), kGrey);
    EXPECT_EQ(icon.at(127, 12), kGrey);
    EXPECT_EQ(icon.at(0, 13), kIconColour);
}

TEST_F(PMProgressIndicatorControllerTest, theShareOnTheIconIsOfTheValueItselfAndNotOfItsPlaceInTheRange) {
    make();
    PMProgressIndicator indicator(loop);
    indicator.setMinValue(-100);
    indicator.setMaxValue(100);
    indicator.setDoubleValue(50); // 50 * 128 / 200 = 32
    controller->drawProgressIndicators();
    EXPECT_EQ(icon.at(31, 5), kBlue);
    EXPECT_EQ(icon.at(32, 5), kGrey);
}

TEST_F(PMProgressIndicatorControllerTest, threeIndicatorsStandAtZeroSixteenAndThirtyTwo) {
    make();
    const auto first = indicatorAt(250);
    const auto second = indicatorAt(500);
    const auto third = indicatorAt(750);
    controller->drawProgressIndicators();
    const int ends[] = {32, 64, 96};
    for (int i = 0; i < 3; ++i) {
        const int y = 16 * i;
        EXPECT_EQ(icon.at(ends[i] - 1, y), kBlue) << i;
        EXPECT_EQ(icon.at(ends[i], y), kGrey) << i;
        EXPECT_EQ(icon.at(0, y + 12), kBlue) << i;
        EXPECT_EQ(icon.at(0, y + 13), kIconColour) << i;
        EXPECT_EQ(icon.at(0, y + 15), kIconColour) << i;
    }
    EXPECT_EQ(icon.at(0, 48), kIconColour);
}

TEST_F(PMProgressIndicatorControllerTest, moreIndicatorsThanFitDoNoHarm) {
    make();
    std::vector<std::unique_ptr<PMProgressIndicator>> many;
    for (int i = 0; i < 20; ++i)
        many.push_back(indicatorAt(1000));
    controller->drawProgressIndicators();
    EXPECT_EQ(icon.at(0, 112), kBlue);
}

TEST_F(PMProgressIndicatorControllerTest, aRangeWithoutWidthIsAnEmptyBar) {
    make();
    PMProgressIndicator indicator(loop);
    indicator.setMinValue(5);
    indicator.setMaxValue(5);
    indicator.setDrawDockProgress(true);
    controller->drawProgressIndicators();
    EXPECT_EQ(icon.at(0, 5), kGrey);
}

TEST_F(PMProgressIndicatorControllerTest, stripesStartThirtyTwoPointsIn) {
    EXPECT_EQ(kBarberOffsetAtTheStart, 32.0);
}

TEST_F(PMProgressIndicatorControllerTest, aPoleTurnsByOneAndAHalfPeriodsASecond) {
    make();
    PMProgressIndicator indicator(loop);
    indicator.setIndeterminate(true);
    indicator.setDrawDockProgress(true);
    controller->drawProgressIndicators();
    for (int step = 0; step < 20; ++step) {
        const double before = PMProgressIndicatorController::getBarberOffset();
        loop.advance(0.125); // at 0.1 the pole has turned; 0.025 are left for the next step
        controller->drawProgressIndicators();
        double expected = before - 0.125 * 1.5 * 32;
        if (expected < 0)
            expected += 32;
        EXPECT_NEAR(PMProgressIndicatorController::getBarberOffset(), expected, 1e-9) << step;
    }
}

TEST_F(PMProgressIndicatorControllerTest, onlyThePartOfTheAgeBehindThePointTurnsThePole) {
    make();
    PMProgressIndicator indicator(loop);
    indicator.setIndeterminate(true);
    indicator.setDrawDockProgress(true);
    controller->drawProgressIndicators();
    const double before = PMProgressIndicatorController::getBarberOffset();
    indicator.setDrawDockProgress(false);
    loop.advance(0.1);
    // The pole stood for seven seconds and an eighth.
    loop.advance(7.025);
    indicator.setDrawDockProgress(true);
    controller->drawProgressIndicators();
    double expected = before - 0.125 * 1.5 * 32;
    if (expected < 0)
        expected += 32;
    EXPECT_NEAR(PMProgressIndicatorController::getBarberOffset(), expected, 1e-9);
}

TEST_F(PMProgressIndicatorControllerTest, aPoleIsDrawnWithItsOffsetLeftOfTheIcon) {
    make();
    PMProgressIndicator indicator(loop);
    indicator.setIndeterminate(true);
    indicator.setDrawDockProgress(true);
    controller->drawProgressIndicators();
    const double offset = PMProgressIndicatorController::getBarberOffset();
    EXPECT_NEAR(icon.at(64, 5).red(), 64 + offset, 1);
    EXPECT_EQ(icon.at(64, 13), kIconColour);
}

TEST_F(PMProgressIndicatorControllerTest, aPoleIsDrawnTenTimesASecondAndNothingElseIs) {
    make();
    const auto bar = indicatorAt(500);
    loop.advance(5);
    EXPECT_EQ(icon.shown.size(), 1U);
    bar->setIndeterminate(true);
    controller->drawProgressIndicators();
    icon.shown.clear();
    loop.advance(2.05);
    EXPECT_EQ(icon.shown.size(), 20U);
    bar->setIndeterminate(false);
    icon.shown.clear();
    loop.advance(2);
    EXPECT_EQ(icon.shown.size(), 1U);
}

TEST_F(PMProgressIndicatorControllerTest, aPoleWithoutItsPictureLeavesItsStripBare) {
    bars.barberBar = QPixmap();
    make();
    PMProgressIndicator indicator(loop);
    indicator.setIndeterminate(true);
    indicator.setDrawDockProgress(true);
    controller->drawProgressIndicators();
    EXPECT_EQ(icon.shown.back(), icon.icon);
}

/// What source-over makes of layers at an alpha of 0.78 on the icon's colour.
QColor layered(const std::vector<QColor>& layers) {
    double red = kIconColour.red();
    double green = kIconColour.green();
    double blue = kIconColour.blue();
    for (const QColor& layer : layers) {
        red = layer.red() * 0.78 + red * 0.22;
        green = layer.green() * 0.78 + green * 0.22;
        blue = layer.blue() * 0.78 + blue * 0.22;
    }
    return {static_cast<int>(std::lround(red)), static_cast<int>(std::lround(green)),
            static_cast<int>(std::lround(blue))};
}

void expectNear(const QColor& colour, const QColor& expected, int y) {
    EXPECT_NEAR(colour.red(), expected.red(), 3) << y;
    EXPECT_NEAR(colour.green(), expected.green(), 3) << y;
    EXPECT_NEAR(colour.blue(), expected.blue(), 3) << y;
}

TEST_F(PMProgressIndicatorControllerTest, withoutAPictureTheBarIsPaintedInLayers) {
    bars.greyBar = QPixmap();
    make();
    const auto under = indicatorAt(500);
    const auto indicator = indicatorAt(500); // stands at 16
    controller->drawProgressIndicators();
    const QColor f0(129, 204, 255), f3(105, 183, 255), f4(94, 171, 254), f5(76, 148, 229);
    const QColor e0(241, 241, 241), e3(228, 228, 228), e4(210, 210, 210), e5(200, 200, 200);
    const std::vector<std::pair<std::vector<QColor>, std::vector<QColor>>> rows = {
        {{f0}, {e0}},
        {{f0}, {e0}},
        {{f0}, {e0}},
        {{f0, f3}, {e0, e3}},
        {{f0, f3, f4}, {e0, e3, e4}},
        {{f0, f3, f4, f5}, {e0, e3, e4, e5}},
        {{f0, f3, f4, f5}, {e0, e3, e4, e5}},
        {{f0, f3, f4}, {e0, e3, e4}},
        {{f0, f3}, {e0, e3}},
        {{f0}, {e0}},
        {{f0}, {e0}},
        {{QColor(94, 147, 213)}, {QColor(200, 210, 210)}},
        {{QColor(59, 120, 185)}, {QColor(160, 160, 160)}},
        {{}, {}},
    };
    for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
        const auto& [filled, empty] = rows[static_cast<std::size_t>(row)];
        expectNear(icon.at(0, 16 + row), layered(filled), row);
        expectNear(icon.at(63, 16 + row), layered(filled), row);
        expectNear(icon.at(64, 16 + row), layered(empty), row);
        expectNear(icon.at(127, 16 + row), layered(empty), row);
    }
}

TEST_F(PMProgressIndicatorControllerTest, theProgramHasAllThreePictures) {
    const auto own = PMProgressIndicatorController::barsFor(icon.icon);
    EXPECT_EQ(own.blueBar.size(), QSize(128, 13));
    EXPECT_EQ(own.greyBar.size(), QSize(128, 13));
    EXPECT_EQ(own.barberBar.size(), QSize(160, 13));
}

TEST_F(PMProgressIndicatorControllerTest, theDockIsToldTheFirstShareThatIsKnown) {
    make();
    PMProgressIndicator pole(loop);
    pole.setIndeterminate(true);
    pole.setDrawDockProgress(true);
    controller->drawProgressIndicators();
    EXPECT_EQ(launcher.told.back(), std::nullopt);
    const auto first = indicatorAt(250);
    const auto second = indicatorAt(750);
    controller->drawProgressIndicators();
    EXPECT_EQ(launcher.told.back(), 0.25);
}

} // namespace
} // namespace veltrano
