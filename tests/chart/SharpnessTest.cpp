#include "chart/ChartFixture.h"

#include <QScreen>

namespace veltrano {
namespace {

using test::ChartTest;
using test::TreeBuilder;

// Runs at several pixel ratios of the screen, see CMakeLists.txt.
class ChartSharpness : public ChartTest {
protected:
    qreal ratio() const { return area.devicePixelRatioF(); }
};

TEST_F(ChartSharpness, screenHasTheRatioThatTheRunAsksFor) {
    const double wanted = qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble();
    EXPECT_EQ(ratio(), wanted);
}

TEST_F(ChartSharpness, everyPixelOfTheScreenIsPaintedForItself) {
    const TreeBuilder tree = TreeBuilder::random(5, 2000);
    show(tree.root());
    const QImage shown = view.grab().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    ASSERT_EQ(shown.size(), area.size() * ratio());

    QImage direct(shown.size(), QImage::Format_ARGB32_Premultiplied);
    direct.setDevicePixelRatio(ratio());
    direct.fill(shown.pixelColor(0, 0)); // The ground of the grab; no sector reaches the corner.
    QPainter painter(&direct);
    painter.setTransform(view.getChartTransform());
    chart.DrawRadialSructure(painter, view.getChartBounds());
    painter.end();

    // A picture that was scaled would differ along every edge. Lines that are composed over the ground at
    // once or by way of the kept picture differ by rounding.
    int different = 0;
    for (int row = 0; row < shown.height(); ++row) {
        for (int column = 0; column < shown.width(); ++column)
            different += !test::isColour(shown.pixelColor(column, row), direct.pixelColor(column, row), 8);
    }
    EXPECT_EQ(different, 0);
}

TEST_F(ChartSharpness, hoverLeavesNoTrailBehind) {
    const TreeBuilder tree = TreeBuilder::random(5, 2000);
    show(tree.root());
    pointAt(QPointF(0, 0));
    settle();
    // What is on the screen, painted piece by piece, unlike a picture that is painted at once.
    const auto screen = [&] {
        return area.screen()->grabWindow(area.winId()).toImage();
    };
    const QImage before = screen();
    ASSERT_FALSE(before.isNull());
    const std::vector<Sector> sectors = test::sectorsOf(*tree.root(), chart.getLayout());
    ASSERT_GT(sectors.size(), 50u);
    bool seen = false;
    for (std::size_t index = 0; index < sectors.size(); index += 7) {
        const Sector& sector = sectors[index];
        pointAt(middleOf(sector.nSubLevel, sector.dSkAngle, sector.dDeltaAngle));
        settle();
        seen = seen || screen() != before;
    }
    EXPECT_TRUE(seen) << "No outline has come up.";
    pointAt(QPointF(0, 0));
    settle();
    EXPECT_EQ(screen(), before);
}

} // namespace
} // namespace veltrano
