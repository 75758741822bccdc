#include "app/WindowPanels.h"

#include "appearance/Colours.h"

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

} // namespace
} // namespace veltrano
