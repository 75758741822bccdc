#include "chart/PaintStrips.h"

#include "chart/ChartFixture.h"

#include <QPainterPath>
#include <QPixmap>

namespace veltrano {
namespace {

/// A picture to paint on, and something to paint that crosses every row.
class PaintStrips : public testing::Test {
protected:
    PaintStrips() { picture.fill(Qt::transparent); }

    static void paintSomething(QPainter& painter) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::blue);
        QPainterPath path;
        path.addEllipse(QRectF(11.3, 7.7, 70.2, 80.1));
        painter.drawPath(path);
    }

    QImage picture{100, 100, QImage::Format_ARGB32_Premultiplied};
};

TEST_F(PaintStrips, togetherMakeThePictureThatOnePainterMakes) {
    QImage plain = picture;
    {
        QPainter painter(&plain);
        painter.translate(3, 5);
        painter.scale(1, 0.9);
        paintSomething(painter);
    }
    for (const int row : {1, 50, 99}) {
        QImage split(100, 100, QImage::Format_ARGB32_Premultiplied);
        split.fill(Qt::transparent);
        QPainter painter(&split);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(3, 5);
        painter.scale(1, 0.9);
        if (!paintInStrips(painter, row, [](QPainter& strip, int) { paintSomething(strip); }))
            GTEST_SKIP() << "This machine has one processor.";
        painter.end();
        EXPECT_EQ(split, plain) << row;
    }
}

TEST_F(PaintStrips, rowOutsideOfThePicturePaintsNothing) {
    QPainter painter(&picture);
    for (const int row : {-1, 0, 100, 200})
        EXPECT_FALSE(paintInStrips(painter, row, [](QPainter&, int) { FAIL(); }));
}

TEST_F(PaintStrips, clippedOrFadedPainterPaintsNothing) {
    QPainter painter(&picture);
    painter.setOpacity(0.5);
    EXPECT_FALSE(paintInStrips(painter, 50, [](QPainter&, int) { FAIL(); }));
    painter.setOpacity(1);
    painter.setClipRect(0, 0, 10, 10);
    EXPECT_FALSE(paintInStrips(painter, 50, [](QPainter&, int) { FAIL(); }));
}

TEST_F(PaintStrips, deviceThatIsNoImagePaintsNothing) {
    QPixmap pixmap(100, 100);
    QPainter painter(&pixmap);
    EXPECT_FALSE(paintInStrips(painter, 50, [](QPainter&, int) { FAIL(); }));
}

using ChartInStrips = test::ChartTest;

TEST_F(ChartInStrips, looksAsItDoesInOnePiece) {
    const test::TreeBuilder tree("/r");
    for (int index = 0; index < 250; ++index) {
        FolderSystemItem* const folder = tree.folder(tree.root(), "d" + std::to_string(index));
        tree.file(folder, "f", 1000, static_cast<std::uint8_t>(index % 8));
    }
    tree.file(tree.folder(tree.root(), "large"), "f", 300'000);
    tree.recount();
    area.resize(900, 700);
    show(tree.root());
    ASSERT_GT(test::sectorsOf(*tree.root(), chart.getLayout()).size(), 400u);
    const auto paintOn = [&](QPaintDevice& device) {
        QPainter painter(&device);
        painter.setTransform(view.getChartTransform());
        chart.DrawRadialSructure(painter, view.getChartBounds());
    };
    QImage image(900, 700, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    paintOn(image);
    QPixmap pixmap(900, 700);
    pixmap.fill(Qt::transparent);
    paintOn(pixmap);
    // A line that is cut at the edge of a strip may start a step of its rounding elsewhere.
    const QImage whole = pixmap.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    int largest = 0;
    for (int row = 0; row < image.height(); ++row) {
        for (int column = 0; column < image.width(); ++column) {
            const QRgb one = image.pixel(column, row);
            const QRgb other = whole.pixel(column, row);
            for (const int difference : {qRed(one) - qRed(other), qGreen(one) - qGreen(other),
                                         qBlue(one) - qBlue(other), qAlpha(one) - qAlpha(other)})
                largest = std::max(largest, std::abs(difference));
        }
    }
    EXPECT_LE(largest, 12);
    chart.setRoot(nullptr);
}

} // namespace
} // namespace veltrano
