#include "chart/geometry/SectorOutline.h"

#include "chart/geometry/GeometryFixture.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using test::layoutFor;
using test::pointAt;

SectorPath outlineOf(const RingLayout& layout, int ring, double start, double delta) {
    SectorPath outline;
    FillSectorPath(layout, outline, ring, start, delta, 0.2);
    return outline;
}

double areaOf(const QPainterPath& path) {
    double area = 0;
    for (const QPolygonF& polygon : path.toSubpathPolygons(QTransform::fromScale(64, 64))) {
        for (qsizetype index = 0; index + 1 < polygon.size(); ++index)
            area += polygon[index].x() * polygon[index + 1].y() - polygon[index + 1].x() * polygon[index].y();
    }
    return std::abs(area) / 2 / (64 * 64);
}

/// Radius 100 around (200, 200): the disc reaches 20 and rings 1 and 2 of 13 reach 32.15 and 43.3.
class SectorOutline : public testing::Test {
protected:
    SectorOutline() {
        layout.m_Center = QPointF(200, 200);
        layout.m_fullRadius = 100;
        layout.m_nSubLevels = 2;
        layout.m_lTotalSize = 1000;
    }
    RingLayout layout;
};

TEST_F(SectorOutline, quarterStartsAtTwelveOClockAndGoesClockwise) {
    // Two rings: disc 50, ring 1 to 80, y upwards.
    const QRectF bounds = outlineOf(layout, 1, 0.0, 0.25).path.boundingRect();
    EXPECT_NEAR(bounds.left(), 200, 1e-4);
    EXPECT_NEAR(bounds.right(), 280, 1e-4);
    EXPECT_NEAR(bounds.top(), 200, 1e-4);
    EXPECT_NEAR(bounds.bottom(), 280, 1e-4);
}

TEST_F(SectorOutline, originTurnsTheSector) {
    test::setOrigin(layout, 0.0);
    const QRectF bounds = outlineOf(layout, 1, 0.0, 0.25).path.boundingRect();
    EXPECT_NEAR(bounds.right(), 280, 1e-4);
    EXPECT_NEAR(bounds.top(), 120, 1e-4);
    EXPECT_NEAR(bounds.bottom(), 200, 1e-4);
}

TEST_F(SectorOutline, arcsStayOnTheirCircles) {
    const SectorPath outline = outlineOf(layout, 2, 0.1, 0.7);
    for (int step = 0; step <= 1000; ++step) {
        const QPointF point = outline.path.pointAtPercent(step / 1000.0) - layout.m_Center;
        const double radius = std::hypot(point.x(), point.y());
        const double offCircle = std::min(std::abs(radius - 80), std::abs(radius - 100));
        const double k = (std::numbers::pi / 2 - std::atan2(point.y(), point.x())) / (2 * std::numbers::pi);
        const double turn = k < 0 ? k + 1 : k;
        const bool onEdge = std::abs(turn - 0.1) < 1e-3 || std::abs(turn - 0.8) < 1e-3;
        EXPECT_TRUE(onEdge || offCircle < 1e-3) << step << ": " << radius << ", " << turn;
    }
}

TEST_F(SectorOutline, areaIsTheShareOfItsRing) {
    const double ring = std::numbers::pi * (100.0 * 100.0 - 80.0 * 80.0);
    for (const double delta : {0.001, 0.1, 0.5, 0.9})
        EXPECT_NEAR(areaOf(outlineOf(layout, 2, 0.3, delta).path), delta * ring, 1e-3 * ring);
}

TEST_F(SectorOutline, straightEdgesTakeTheirAngleAs32Bits) {
    const double end = 0.123456789 + 0.1;
    const SectorPath outline = outlineOf(layout, 1, 0.123456789, 0.1);
    const double angle =
        static_cast<double>(static_cast<float>(layout.g_dOriginAngleRad - 6.283185307179586 * end));
    const double radius = layout.getRadius(1);
    // One curve of three points follows the first point, then the edge to the outer circle.
    const auto element = outline.path.elementAt(4);
    EXPECT_EQ(element.type, QPainterPath::LineToElement);
    EXPECT_EQ(element.x, 200 + std::cos(angle) * radius);
    EXPECT_EQ(element.y, 200 + std::sin(angle) * radius);
}

TEST_F(SectorOutline, wholeTurnOnARingIsARingWithASeam) {
    const SectorPath outline = outlineOf(layout, 1, 0.0, 1.0);
    EXPECT_NEAR(areaOf(outline.path), std::numbers::pi * (80.0 * 80.0 - 50.0 * 50.0), 1.0);
    EXPECT_TRUE(outline.path.contains(pointAt(layout, 0.01, 65)));
    EXPECT_TRUE(outline.path.contains(pointAt(layout, 0.5, 65)));
    EXPECT_TRUE(outline.path.contains(pointAt(layout, 0.99, 65)));
    EXPECT_FALSE(outline.path.contains(pointAt(layout, 0.5, 40)));
}

TEST_F(SectorOutline, moreThanAWholeTurnGoesRoundOnce) {
    EXPECT_LE(outlineOf(layout, 1, 0.0, 1e12).path.elementCount(), 60);
}

TEST_F(SectorOutline, wholeDiscIsAnOvalWithoutASeam) {
    const SectorPath outline = outlineOf(layout, 0, 0.0, 1.0);
    for (int index = 1; index < outline.path.elementCount(); ++index)
        EXPECT_NE(outline.path.elementAt(index).type, QPainterPath::LineToElement);
    EXPECT_NEAR(areaOf(outline.path), std::numbers::pi * 50 * 50, 1.0);
    const QRectF bounds = outline.path.boundingRect();
    EXPECT_NEAR(bounds.left(), 150, 1e-3);
    EXPECT_NEAR(bounds.right(), 250, 1e-3);
    EXPECT_NEAR(bounds.top(), 150, 1e-3);
    EXPECT_NEAR(bounds.bottom(), 250, 1e-3);
}

TEST_F(SectorOutline, anyOtherDiscIsAPieWithEdgesToTheCentre) {
    const SectorPath outline = outlineOf(layout, 0, 0.0, 0.75);
    bool throughCentre = false;
    for (int index = 0; index < outline.path.elementCount(); ++index)
        throughCentre = throughCentre || QPointF(outline.path.elementAt(index)) == layout.m_Center;
    EXPECT_TRUE(throughCentre);
    EXPECT_NEAR(areaOf(outline.path), 0.75 * std::numbers::pi * 50 * 50, 1.0);
    EXPECT_TRUE(outline.path.contains(pointAt(layout, 0.7, 25)));
    EXPECT_FALSE(outline.path.contains(pointAt(layout, 0.8, 25)));
}

TEST_F(SectorOutline, almostWholeDiscIsStillAPie) {
    const SectorPath outline = outlineOf(layout, 0, 0.0, std::nextafter(1.0, 0.0));
    bool throughCentre = false;
    for (int index = 0; index < outline.path.elementCount(); ++index)
        throughCentre = throughCentre || QPointF(outline.path.elementAt(index)) == layout.m_Center;
    EXPECT_TRUE(throughCentre);
}

TEST_F(SectorOutline, takesTheLineWidthAndAlwaysAnswersYes) {
    SectorPath outline;
    EXPECT_TRUE(FillSectorPath(layout, outline, 1, 0.0, 0.5, 1.5));
    EXPECT_EQ(outline.dLineWidth, 1.5);
}

TEST_F(SectorOutline, appendsToWhatIsThere) {
    SectorPath outline;
    FillSectorPath(layout, outline, 1, 0.0, 0.25, 0.2);
    FillSectorPath(layout, outline, 1, 0.5, 0.25, 0.2);
    EXPECT_TRUE(outline.path.contains(pointAt(layout, 0.125, 65)));
    EXPECT_TRUE(outline.path.contains(pointAt(layout, 0.625, 65)));
    EXPECT_FALSE(outline.path.contains(pointAt(layout, 0.375, 65)));
    EXPECT_EQ(outline.path.toSubpathPolygons().size(), 2);
}

TEST_F(SectorOutline, isClosed) {
    const QPainterPath path = outlineOf(layout, 1, 0.2, 0.1).path;
    EXPECT_EQ(QPointF(path.elementAt(0)), QPointF(path.elementAt(path.elementCount() - 1)));
}

TEST_F(SectorOutline, boundsEncloseTheSectorTightly) {
    const QRectF bounds = getSectorBounds(layout, 1, 0.0, 0.5);
    EXPECT_NEAR(bounds.left(), 200, 1e-3);
    EXPECT_NEAR(bounds.width(), 80, 1e-3);
    EXPECT_NEAR(bounds.height(), 160, 1e-3);
}

TEST_F(SectorOutline, boundsOfTheDiscAreItsSquare) {
    EXPECT_EQ(getSectorBounds(layout, 0, 0.3, 0.1), QRectF(150, 150, 100, 100));
}

TEST_F(SectorOutline, boundsOfARingThatIsNotShownAreEmpty) {
    EXPECT_TRUE(getSectorBounds(layout, 3, 0.0, 0.5).isNull());
}

} // namespace
} // namespace veltrano
