#include "appearance/SGProgress.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace veltrano {
namespace {

constexpr int kWidth = 104; // so that the inner width is 100 and a percent is a point

/// The bar drawn into a rectangle at the origin, on nothing.
QImage drawn(double percentage, QSizeF size = {kWidth, 12}) {
    QImage picture(kWidth, 16, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    SGProgress bar;
    bar.setdValue(percentage);
    QPainter painter(&picture);
    bar.DrawAtRect(painter, QRectF(QPointF(0, 0), size));
    return picture;
}

/// Whether the bar is lit at this column: the fill is far bluer than the empty row.
bool isLit(const QImage& picture, int column) {
    const QColor colour = picture.pixelColor(column, 6);
    return colour.blue() - colour.red() > 60;
}

bool isEmpty(const QImage& picture) {
    QImage nothing(picture.size(), picture.format());
    nothing.fill(Qt::transparent);
    return picture == nothing;
}

TEST(SGProgress, drawsNothingInARectangleBelowTwelve) {
    EXPECT_TRUE(isEmpty(drawn(50, {kWidth, 11})));
    EXPECT_TRUE(isEmpty(drawn(50, {11, 12})));
    EXPECT_FALSE(isEmpty(drawn(50, {12, 12})));
}

TEST(SGProgress, emptyBarHasBothCapsAndTheRow) {
    const QImage picture = drawn(0);
    for (const int column : {2, 50, kWidth - 3}) {
        EXPECT_GT(picture.pixelColor(column, 6).alpha(), 200) << column;
        EXPECT_FALSE(isLit(picture, column)) << column;
    }
}

TEST(SGProgress, leftCapLightsUpAtAFillOfTwo) {
    EXPECT_FALSE(isLit(drawn(1.99), 2));
    EXPECT_TRUE(isLit(drawn(2.0), 2));
    EXPECT_FALSE(isLit(drawn(3.99), 4));
}

TEST(SGProgress, rowIsFilledToTheFill) {
    const QImage picture = drawn(50);
    EXPECT_TRUE(isLit(picture, 4));
    EXPECT_TRUE(isLit(picture, 49));
    EXPECT_FALSE(isLit(picture, 50));
}

TEST(SGProgress, rightCapLightsUpAtAHundredOnly) {
    EXPECT_FALSE(isLit(drawn(99.9), kWidth - 3));
    EXPECT_TRUE(isLit(drawn(99.995), kWidth - 3)); // within the room for rounding
    EXPECT_TRUE(isLit(drawn(100), kWidth - 3));
}

TEST(SGProgress, fullBarIsFilledUpToTheRightCap) {
    const QImage picture = drawn(100);
    for (int column = 1; column < kWidth - 1; ++column)
        EXPECT_TRUE(isLit(picture, column)) << column;
}

TEST(SGProgress, lessThanNothingShowsNoFillAndMoreThanAllAFullBar) {
    EXPECT_EQ(drawn(-0.01), drawn(0));
    EXPECT_EQ(drawn(250), drawn(100));
}

TEST(SGProgress, staysInItsTwelvePoints) {
    const QImage picture = drawn(100, {kWidth, 16});
    for (int column = 0; column < kWidth; ++column)
        EXPECT_EQ(picture.pixelColor(column, 12).alpha(), 0);
}

TEST(SGProgress, copyBeginsAtNothing) {
    SGProgress bar;
    bar.setdValue(40);
    const SGProgress copy(bar);
    EXPECT_EQ(copy.getdValue(), 0);
    EXPECT_EQ(bar.getdValue(), 40);
}

} // namespace
} // namespace veltrano
