#include "appearance/TextGeometrics.h"

#include "appearance/Fonts.h"

#include <QFontMetricsF>
#include <QStringList>

#include <gtest/gtest.h>

#include <cmath>

namespace veltrano {
namespace {

const QString kWords = QStringLiteral("one two three four five six");

TEST(TextGeometrics, emptyTextNeedsNoRoom) {
    EXPECT_EQ(sizeForWidth(QString(), VTFontWithSize(11), 0, 0), QSizeF(0, 0));
}

TEST(TextGeometrics, freeTextStaysOnOneLine) {
    const QFontMetricsF metrics(VTFontWithSize(11));
    EXPECT_NEAR(widthForHeight(kWords, VTFontWithSize(11), 13), metrics.horizontalAdvance(kWords), 2);
    EXPECT_NEAR(sizeForWidth(kWords, VTFontWithSize(11), 0, 0).height(), metrics.height(), 2);
}

TEST(TextGeometrics, aWidthWrapsTheText) {
    const double line = heightForWidth(kWords, VTFontWithSize(11), 1000);
    const QSizeF size = sizeForWidth(kWords, VTFontWithSize(11), 60, 0);
    EXPECT_LE(size.width(), 60);
    EXPECT_GE(size.height(), 2 * line - 1);
}

TEST(TextGeometrics, aHeightCutsLinesOff) {
    const double line = heightForWidth(kWords, VTFontWithSize(11), 1000);
    EXPECT_LE(sizeForWidth(kWords, VTFontWithSize(11), 60, 1.5 * line).height(), 1.5 * line);
}

TEST(TextGeometrics, lineBreaksCount) {
    const double line = heightForWidth(QStringLiteral("a"), VTFontWithSize(11), 0);
    EXPECT_NEAR(heightForWidth(QStringLiteral("a\nb"), VTFontWithSize(11), 0), 2 * line, 1.5);
}

TEST(Fonts, labelsAndCellsShareOneFamily) {
    EXPECT_EQ(VTFontWithSize(14).families(), interfaceFont(14).families());
    EXPECT_EQ(VTFontWithSize(14).families().first(), QStringLiteral("Lucida Grande"));
    EXPECT_EQ(VTFontWithSize(14).pixelSize(), 14);
    EXPECT_EQ(VTFontWithSize(14).weight(), QFont::Normal);
    EXPECT_EQ(VTBoldFontWithSize(20).weight(), QFont::Bold);
    EXPECT_EQ(VTBoldFontWithSize(20).pixelSize(), 20);
}

} // namespace
} // namespace veltrano
