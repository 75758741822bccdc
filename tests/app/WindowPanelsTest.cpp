#include "app/WindowPanels.h"

#include "appearance/CCTableView.h"
#include "appearance/Colours.h"
#include "appearance/PushButton.h"

#include <QImage>

#include <gtest/gtest.h>

namespace veltrano {
namespace {

/// The footer as it looks with so much room for its legend, from x 0.
class Legend {
public:
    explicit Legend(int room) {
        FooterBand footer;
        footer.resize(800, 45);
        footer.setLegendRange(0, room);
        m_picture = footer.grab().toImage();
    }

    /// Where the first pixel of a colour is, from the left; -1 for none.
    int placeOf(const QColor& colour) const {
        for (int column = 0; column < m_picture.width(); ++column)
            if (m_picture.pixelColor(column, 22) == QColor(colour.rgb()))
                return column;
        return -1;
    }
    bool shows(const QColor& colour) const { return placeOf(colour) >= 0; }

private:
    QImage m_picture;
};

const Colours& colours() {
    return Colours::sharedColours();
}

TEST(FooterLegend, goesFromYoungToOldAndThenTheStates) {
    const Legend legend(800);
    int last = 0;
    for (const QColor& colour :
         {colours().getColorByTimeCode(1), colours().getColorByTimeCode(3), colours().getColorByTimeCode(5),
          colours().getColorByTimeCode(7), colours().cTrashColor(), colours().cCollectedColor()}) {
        EXPECT_GT(legend.placeOf(colour), last);
        last = legend.placeOf(colour);
    }
}

TEST(FooterLegend, dropsItsLeadFirst) {
    const QColor first = colours().getColorByTimeCode(1);
    EXPECT_GT(Legend(800).placeOf(first), 50);
    const Legend narrow(440);
    EXPECT_LT(narrow.placeOf(first), 10);
    EXPECT_TRUE(narrow.shows(colours().cCollectedColor()));
}

TEST(FooterLegend, dropsTheStatesTogether) {
    for (int room = 500; room >= 300; room -= 5) {
        const Legend legend(room);
        EXPECT_EQ(legend.shows(colours().cTrashColor()), legend.shows(colours().cCollectedColor())) << room;
        EXPECT_TRUE(legend.shows(colours().getColorByTimeCode(7))) << room;
    }
    // As in a window of the smallest size.
    EXPECT_FALSE(Legend(356).shows(colours().cTrashColor()));
}

TEST(FooterLegend, withoutRoomShowsNothing) {
    EXPECT_FALSE(Legend(10).shows(colours().getColorByTimeCode(1)));
}

TEST(SidebarPanel, tableBeginsFourBelowTheHeaderAndLeavesTheHairline) {
    SidebarPanel panel;
    panel.resize(270, 636);
    panel.grab(); // lays it out
    EXPECT_EQ(panel.table().geometry(), QRect(0, 4, 269, 632));
    const QImage picture = panel.grab().toImage();
    EXPECT_EQ(picture.pixelColor(269, 300), QColor(0xC9, 0xD4, 0xDF));
}

TEST(FooterBand, removeButtonStandsUnderTheSidebarAndIsDisabledAtFirst) {
    FooterBand footer;
    footer.resize(800, 45);
    const PushButton& button = footer.removeEntryButton();
    constexpr int margin = PushButton::kFocusMargin;
    EXPECT_EQ(button.geometry().adjusted(margin, margin, -margin, -margin), QRect(12, 8, 28, 28));
    EXPECT_FALSE(button.isEnabled());
    EXPECT_FALSE(button.accessibleName().isEmpty());
}

} // namespace
} // namespace veltrano
