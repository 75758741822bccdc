#include "chart/RootLabel.h"

#include "appearance/Fonts.h"
#include "chart/ChartFixture.h"

#include <QFontMetricsF>

#include <cmath>
#include <numbers>

namespace veltrano {
namespace {

double widthAt(const QString& text, int fontSize) {
    return std::ceil(QFontMetricsF(VTFontWithSize(fontSize)).horizontalAdvance(text));
}

/// The smallest square in which a text just fits at a font size.
float sideFor(const QString& text, int fontSize) {
    return static_cast<float>(widthAt(text, fontSize) + 3);
}

const QString kName = QStringLiteral("A folder with a long name");

TEST(RootLabelFit, startsAtFourteen) {
    const LabelFit fit = fitLabel(QStringLiteral("System\n512 GB"), 200);
    EXPECT_EQ(fit.fontSize, 14);
    EXPECT_FALSE(fit.wraps);
    EXPECT_FALSE(fit.truncates);
    EXPECT_EQ(fit.lines, QStringList({"System", "512 GB"}));
}

TEST(RootLabelFit, eachSizeDownToNineKeepsTheLine) {
    for (int size = 14; size >= 9; --size) {
        const LabelFit fit = fitLabel(kName, sideFor(kName, size));
        EXPECT_EQ(fit.fontSize, size);
        EXPECT_FALSE(fit.wraps) << size;
        EXPECT_EQ(fit.lines, QStringList(kName)) << size;
    }
}

TEST(RootLabelFit, textMustStayTwoPointsBelowTheSide) {
    const float side = sideFor(kName, 14);
    EXPECT_EQ(fitLabel(kName, side).fontSize, 14);
    EXPECT_EQ(fitLabel(kName, side - 1).fontSize, 13);
}

TEST(RootLabelFit, wrapsAtEight) {
    const float side = sideFor(kName, 9) - 1;
    const LabelFit fit = fitLabel(kName, side);
    EXPECT_EQ(fit.fontSize, 8);
    EXPECT_TRUE(fit.wraps);
    const LabelFit narrow = fitLabel(kName, 60);
    EXPECT_EQ(narrow.fontSize, 8);
    EXPECT_GT(narrow.lines.size(), 1);
    EXPECT_FALSE(narrow.truncates);
    EXPECT_EQ(narrow.lines.join(QLatin1Char(' ')), kName);
}

TEST(RootLabelFit, breaksAWordThatIsLongerThanALine) {
    const QString word(60, QLatin1Char('m'));
    const LabelFit fit = fitLabel(word, 100);
    EXPECT_GT(fit.lines.size(), 1);
    EXPECT_LE(fit.size.width(), 100);
    EXPECT_EQ(fit.lines.join(QString()), word);
}

TEST(RootLabelFit, cutsTheLastLineOnlyWhereLinesDoNotFit) {
    const QString words = QStringLiteral("word ").repeated(60).trimmed();
    const LabelFit fit = fitLabel(words, 60);
    EXPECT_EQ(fit.fontSize, 8);
    EXPECT_TRUE(fit.truncates);
    EXPECT_LE(fit.size.height(), 60);
    EXPECT_LE(fit.size.width(), 60);
    for (qsizetype line = 0; line + 1 < fit.lines.size(); ++line)
        EXPECT_FALSE(fit.lines[line].contains(QChar(0x2026)));
    EXPECT_TRUE(fit.lines.last().endsWith(QChar(0x2026)));
}

TEST(RootLabelFit, aSquareLowerThanALineShowsOneCutLine) {
    const LabelFit fit = fitLabel(QStringLiteral("System\n512 GB"), 9);
    EXPECT_TRUE(fit.truncates);
    EXPECT_EQ(fit.lines.size(), 1);
    EXPECT_LE(fit.size.width(), 9);
}

TEST(RootLabelFit, noTextAndNoRoomGiveTheEmptyBox) {
    EXPECT_EQ(fitLabel(QString(), 100).size, QSizeF());
    EXPECT_TRUE(fitLabel(QString(), 100).lines.isEmpty());
    EXPECT_TRUE(fitLabel(kName, 0).lines.isEmpty());
}

TEST(RootLabelFit, boxHasTheMeasuredSize) {
    const LabelFit fit = fitLabel(QStringLiteral("System\n512 GB"), 200);
    EXPECT_EQ(fit.size.width(), std::max(widthAt("System", 14), widthAt("512 GB", 14)));
    EXPECT_EQ(fit.size.height(), 2 * std::ceil(QFontMetricsF(VTFontWithSize(14)).height()));
}

class RootLabelTest : public test::ChartTest {
protected:
    RootLabelTest() { host.showsLabel = true; }

    /// Where the pixels lie that only a label makes, in points of the view.
    QRect labelBounds() {
        const QImage with = chartImage();
        host.showsLabel = false;
        chart.setNeedsDisplayRadialViewandSelection();
        settle();
        const QImage without = chartImage();
        host.showsLabel = true;
        chart.setNeedsDisplayRadialViewandSelection();
        settle();
        QRect bounds;
        for (int y = 0; y < with.height(); ++y)
            for (int x = 0; x < with.width(); ++x)
                if (with.pixel(x, y) != without.pixel(x, y))
                    bounds |= QRect(x, y, 1, 1);
        return bounds;
    }

    /// The darkest or lightest pixel inside the disc.
    QColor extreme(bool dark) {
        const QImage picture = chartImage();
        QColor found = dark ? QColor(Qt::white) : QColor(Qt::black);
        const QRect square(170, 120, 60, 60);
        for (int y = square.top(); y <= square.bottom(); ++y)
            for (int x = square.left(); x <= square.right(); ++x) {
                const QColor pixel = picture.pixelColor(x, y);
                if (dark ? pixel.lightness() < found.lightness() : pixel.lightness() > found.lightness())
                    found = pixel;
            }
        return found;
    }
};

TEST_F(RootLabelTest, standsUprightInTheMiddle) {
    const auto tree = test::TreeBuilder::volume("/", 1000, 400);
    tree.file(tree.root(), "f", 500);
    tree.recount();
    show(tree.root());
    const QRect bounds = labelBounds();
    ASSERT_FALSE(bounds.isEmpty());
    EXPECT_NEAR(bounds.center().x(), 200, 4);
    EXPECT_NEAR(bounds.center().y(), 150, 6);
    const double side = chart.getLayout().getRadius(0) * std::numbers::sqrt2;
    EXPECT_LE(bounds.width(), side);
    EXPECT_LE(bounds.height(), side);
}

TEST_F(RootLabelTest, aRootWithoutOccupiedSizeShowsItsNameOnly) {
    const auto full = test::TreeBuilder::volume("/name", 1000, 400);
    show(full.root());
    const int two = labelBounds().height();
    const test::TreeBuilder empty("/name");
    show(empty.root());
    const QRect one = labelBounds();
    ASSERT_FALSE(one.isEmpty());
    EXPECT_LT(one.height(), two * 2 / 3);
}

TEST_F(RootLabelTest, anItemWithoutANameShowsNothing) {
    host.showsLabel = false;
    const auto tree = test::TreeBuilder::volume("/", 1000, 400);
    show(tree.root());
    const QImage picture = chartImage();
    QImage again = picture;
    QPainter painter(&again);
    painter.setTransform(view.getChartTransform());
    chart.DrawRootLabel(painter, *tree.root(), 1.0f, 60);
    EXPECT_EQ(again, picture);
}

TEST_F(RootLabelTest, isDarkOnAFinishedChartAndLightOnAScan) {
    const auto tree = test::TreeBuilder::volume("/", 1000, 400);
    tree.file(tree.root(), "f", 500);
    tree.recount();
    show(tree.root());
    EXPECT_LT(extreme(true).lightness(), 80);
    host.processing = "/";
    show(tree.root());
    QImage picture(60, 30, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.translate(30 - chart.getLayout().m_Center.x(), 15 + chart.getLayout().m_Center.y());
    painter.scale(1, -1);
    chart.DrawRootLabel(painter, *tree.root(), 1.0f, 60);
    QColor lightest(Qt::black);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y).lightness() > lightest.lightness())
                lightest = picture.pixelColor(x, y);
    EXPECT_TRUE(test::isColour(lightest, QColor::fromRgbF(0.75f, 0.8f, 0.85f), 12));
}

TEST_F(RootLabelTest, isDrawnForAnyFolderAtItsAlpha) {
    const test::TreeBuilder tree("/r");
    auto* const below = tree.folder(tree.root(), "mmmm");
    tree.file(below, "f", 500);
    tree.recount();
    show(tree.root());
    const auto darkest = [&](float alpha) {
        QImage picture(80, 60, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        painter.translate(40 - chart.getLayout().m_Center.x(), 30 + chart.getLayout().m_Center.y());
        painter.scale(1, -1);
        chart.DrawRootLabel(painter, *below, alpha, 50);
        int lightness = 255;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                lightness = std::min(lightness, picture.pixelColor(x, y).lightness());
        return lightness;
    };
    EXPECT_NEAR(darkest(1.0f), 51, 10);
    EXPECT_NEAR(darkest(0.5f), 153, 10);
    EXPECT_EQ(darkest(0.0f), 255);
}

} // namespace
} // namespace veltrano
