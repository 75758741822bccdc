#include "appearance/Colours.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

testing::AssertionResult isColour(const QColor& colour, float red, float green, float blue) {
    // QColor keeps 16 bits a channel.
    constexpr float step = 1.0f / 65535.0f;
    if (std::abs(colour.redF() - red) <= step && std::abs(colour.greenF() - green) <= step &&
        std::abs(colour.blueF() - blue) <= step && colour.alphaF() == 1.0f)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << colour.redF() << ", " << colour.greenF() << ", " << colour.blueF() << ", " << colour.alphaF();
}

class ColoursTest : public testing::Test {
protected:
    ~ColoursTest() override {
        colours.setSelectedCellDrawing(false);
        colours.setCollectedItemDrawing(false);
        colours.setHiddOrTrashedDrawing(false);
    }
    Colours& colours = Colours::sharedColours();
};

TEST_F(ColoursTest, sharedColoursAreTheDesigns) {
    EXPECT_TRUE(isColour(colours.cTrashColor(), 0.4862745f, 0.4509804f, 0.6431373f));
    EXPECT_TRUE(isColour(colours.cHiddenColor(), 0.9372549f, 0.9372549f, 0.9372549f));
    EXPECT_TRUE(isColour(colours.cOccupiedColor(), 0.4313725f, 0.6745098f, 0.8980392f));
    EXPECT_TRUE(isColour(colours.cFreeColor(), 0.6274510f, 0.6666667f, 0.7254902f));
    EXPECT_TRUE(isColour(colours.cCollectedColor(), 1.0f, 0.6156863f, 0.6313725f));
    EXPECT_TRUE(isColour(colours.cEndRootColor(), 0.7764706f, 0.9176471f, 0.9607843f));
    EXPECT_TRUE(isColour(colours.cLineColor(), 0.1176471f, 0.1372549f, 0.1568627f));
    EXPECT_TRUE(isColour(colours.secTextColor(), 1.0f, 0.8901961f, 0.8941176f));
    EXPECT_TRUE(isColour(colours.secTextColor2(), 0.9450980f, 1.0f, 1.0f));
}

TEST_F(ColoursTest, eightAgeClassesGiveFiveTones) {
    EXPECT_TRUE(isColour(colours.getColorByTimeCode(0), 0.3960784f, 0.6886275f, 0.8741176f));
    for (const std::uint8_t code : std::initializer_list<std::uint8_t>{1, 2})
        EXPECT_TRUE(isColour(colours.getColorByTimeCode(code), 0.7686275f, 0.8980392f, 0.9450980f));
    for (const std::uint8_t code : std::initializer_list<std::uint8_t>{3, 4})
        EXPECT_TRUE(isColour(colours.getColorByTimeCode(code), 0.5529412f, 0.8196078f, 0.9921569f));
    for (const std::uint8_t code : std::initializer_list<std::uint8_t>{5, 6})
        EXPECT_TRUE(isColour(colours.getColorByTimeCode(code), 0.4313725f, 0.6745098f, 0.8980392f));
    EXPECT_TRUE(isColour(colours.getColorByTimeCode(7), 0.5411765f, 0.7019608f, 0.8274510f));
}

TEST_F(ColoursTest, timeCodeOutOfRangeCountsAsUnknown) {
    EXPECT_EQ(colours.getColorByTimeCode(8), colours.getColorByTimeCode(0));
    EXPECT_EQ(colours.getColorByTimeCode(255), colours.getColorByTimeCode(0));
}

TEST_F(ColoursTest, plainCellTextIsGrey) {
    EXPECT_TRUE(isColour(colours.getPrimaryTableTextColor(), 0.2f, 0.2f, 0.2f));
    EXPECT_TRUE(isColour(colours.getSecondaryTableTextColor(), 0.2f, 0.2f, 0.2f));
}

TEST_F(ColoursTest, selectedCellTextIsWhite) {
    colours.setSelectedCellDrawing(true);
    EXPECT_TRUE(isColour(colours.getPrimaryTableTextColor(), 1, 1, 1));
    EXPECT_TRUE(isColour(colours.getSecondaryTableTextColor(), 1, 1, 1));
}

TEST_F(ColoursTest, collectedBeatsSelectedInThePrimaryTextOnly) {
    colours.setSelectedCellDrawing(true);
    colours.setCollectedItemDrawing(true);
    EXPECT_EQ(colours.getPrimaryTableTextColor(), colours.secTextColor());
    EXPECT_TRUE(isColour(colours.getSecondaryTableTextColor(), 1, 1, 1));
}

TEST_F(ColoursTest, hiddenOrTrashedBeatsCollected) {
    colours.setCollectedItemDrawing(true);
    colours.setHiddOrTrashedDrawing(true);
    EXPECT_EQ(colours.getPrimaryTableTextColor(), colours.secTextColor2());
}

} // namespace
} // namespace veltrano
