#include "appearance/Images.h"

#include <QDirIterator>
#include <QImage>

#include <gtest/gtest.h>

namespace veltrano {
namespace {

TEST(Images, everyImageOfTheProgramCanBeDrawn) {
    QDirIterator files(QStringLiteral(":/images"), {QStringLiteral("*.svg")}, QDir::Files,
                       QDirIterator::Subdirectories);
    int images = 0;
    while (files.hasNext()) {
        const QString path = files.next();
        const QString name = path.mid(9).chopped(4);
        EXPECT_FALSE(image(name, 1.0).isNull()) << name.toStdString();
        ++images;
    }
    EXPECT_GT(images, 50);
}

TEST(Images, imageHasItsNaturalSizeTimesTheRatio) {
    for (const qreal ratio : {1.0, 1.25, 2.0}) {
        const QPixmap pulse = image(QStringLiteral("pulse"), ratio);
        EXPECT_EQ(pulse.size(), QSize(600, 600) * ratio);
        EXPECT_EQ(pulse.deviceIndependentSize(), QSizeF(600, 600));
    }
}

TEST(Images, pulseIsBrightestNearItsRimAndClearInItsMiddle) {
    const QImage pulse = image(QStringLiteral("pulse"), 1.0).toImage();
    EXPECT_EQ(pulse.pixelColor(300, 300).alpha(), 0);
    EXPECT_GT(pulse.pixelColor(300 + static_cast<int>(0.946 * 300), 300).alpha(), 240);
    EXPECT_EQ(pulse.pixelColor(0, 0).alpha(), 0);
}

TEST(Images, renderedImageFillsTheSizeAskedFor) {
    const QPixmap dial = renderImage(QStringLiteral("diskbackground"), QSizeF(100, 50), 2.0);
    EXPECT_EQ(dial.size(), QSize(200, 100));
    EXPECT_EQ(dial.toImage().pixelColor(100, 50).alpha(), 255);
}

TEST(Images, unknownNameGivesNothing) {
    EXPECT_TRUE(image(QStringLiteral("no such image"), 1.0).isNull());
    EXPECT_TRUE(renderImage(QStringLiteral("no such image"), QSizeF(10, 10), 1.0).isNull());
}

TEST(Images, mainTextColourIsTheOnePixel) {
    EXPECT_EQ(mainTextColor(), QColor(0x2B, 0x36, 0x45));
}

} // namespace
} // namespace veltrano
