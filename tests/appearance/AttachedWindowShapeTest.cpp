#include "appearance/AttachedWindowShape.h"

#include <gtest/gtest.h>

#include <vector>

namespace veltrano {
namespace {

using enum AttachedSide;

constexpr QSizeF kView(100, 50);
constexpr QPointF kPoint(500, 400);
constexpr QRectF kScreen(0, 0, 1600, 1200);
constexpr float kDistance = 14;

AttachedWindowMeasures panelMeasures() {
    return {.arrowBaseWidth = 18, .arrowHeight = 10};
}

AttachedWindowGeometry geometryOn(AttachedSide side) {
    return attachedGeometry(panelMeasures(), kView, kPoint, side, kDistance);
}

AttachedSide bestSide(const QPointF& point, const QRectF& screen, const QRectF& within) {
    return bestSideForAutomaticPosition(panelMeasures(), kView, point, kDistance, screen, within);
}
AttachedSide bestSide(const QPointF& point, const QRectF& screen) {
    return bestSide(point, screen, screen);
}

/// The corners of an outline; of a round corner its end.
std::vector<QPointF> cornersOf(const QPainterPath& path) {
    std::vector<QPointF> corners;
    for (int index = 0; index < path.elementCount(); ++index) {
        const auto element = path.elementAt(index);
        if (element.type == QPainterPath::CurveToElement)
            index += 2;
        corners.emplace_back(path.elementAt(index));
    }
    return corners;
}

TEST(AttachedWindowShape, anArrowBesideARoundCornerSitsBehindIt) {
    AttachedWindowMeasures measures = panelMeasures();
    EXPECT_EQ(attachedArrowInset(measures), 17);
    measures.scale = 2;
    EXPECT_EQ(attachedArrowInset(measures), 34);
}

TEST(AttachedWindowShape, anArrowBesideAPointedCornerSitsAtItsEnd) {
    AttachedWindowMeasures measures = panelMeasures();
    measures.drawsRoundCornerBesideArrow = false;
    EXPECT_EQ(attachedArrowInset(measures), 9);
}

TEST(AttachedWindowShape, eachSideHasItsOrigin) {
    const std::vector<std::pair<AttachedSide, QPointF>> origins{
        {Left, {372, 373}},    {Bottom, {448, 322}},     {Right, {514, 373}},      {Top, {448, 414}},
        {LeftTop, {372, 383}}, {LeftBottom, {372, 363}}, {RightTop, {514, 383}},   {RightBottom, {514, 363}},
        {TopLeft, {413, 414}}, {TopRight, {483, 414}},   {BottomLeft, {413, 322}}, {BottomRight, {483, 322}},
    };
    for (const auto& [side, origin] : origins)
        EXPECT_EQ(geometryOn(side).frame.topLeft(), origin) << static_cast<int>(side);
}

TEST(AttachedWindowShape, anArrowAtASideTakesWidth) {
    for (const AttachedSide side : {Left, LeftTop, LeftBottom, Right, RightTop, RightBottom})
        EXPECT_EQ(geometryOn(side).frame.size(), QSizeF(114, 54)) << static_cast<int>(side);
}

TEST(AttachedWindowShape, anArrowAboveOrBelowTakesHeight) {
    for (const AttachedSide side : {Bottom, BottomLeft, BottomRight, Top, TopLeft, TopRight})
        EXPECT_EQ(geometryOn(side).frame.size(), QSizeF(104, 64)) << static_cast<int>(side);
}

TEST(AttachedWindowShape, theViewMakesRoomForAnArrowBeforeIt) {
    for (const AttachedSide side : {Left, LeftTop, LeftBottom, Bottom, BottomLeft, BottomRight})
        EXPECT_EQ(geometryOn(side).viewFrame, QRectF(2, 2, 100, 50)) << static_cast<int>(side);
    for (const AttachedSide side : {Right, RightTop, RightBottom})
        EXPECT_EQ(geometryOn(side).viewFrame, QRectF(12, 2, 100, 50)) << static_cast<int>(side);
    for (const AttachedSide side : {Top, TopLeft, TopRight})
        EXPECT_EQ(geometryOn(side).viewFrame, QRectF(2, 12, 100, 50)) << static_cast<int>(side);
}

TEST(AttachedWindowShape, measuresGrowWithTheScale) {
    AttachedWindowMeasures measures = panelMeasures();
    measures.scale = 2;
    const auto geometry = attachedGeometry(measures, kView, kPoint, Right, kDistance);
    EXPECT_EQ(geometry.viewFrame, QRectF(24, 4, 100, 50));
    EXPECT_EQ(geometry.frame, QRectF(514, 371, 128, 58));
}

TEST(AttachedWindowShape, withoutAnArrowItsRoomStays) {
    AttachedWindowMeasures measures = panelMeasures();
    measures.hasArrow = false;
    EXPECT_EQ(attachedGeometry(measures, kView, kPoint, Right, kDistance).frame, geometryOn(Right).frame);
}

TEST(AttachedWindowShape, theTipStandsAtTheDistanceFromThePoint) {
    for (int side = 0; side < 12; ++side) {
        const auto geometry = geometryOn(static_cast<AttachedSide>(side));
        const QPainterPath outline =
            attachedOutline(panelMeasures(), geometry.viewFrame, static_cast<AttachedSide>(side))
                .translated(geometry.frame.topLeft());
        double nearest = 1e9;
        for (const QPointF& corner : cornersOf(outline))
            nearest = std::min(nearest, QLineF(corner, kPoint).length());
        // The outline is snapped to whole numbers, half a point to one and a half inside.
        EXPECT_GE(nearest, 14) << side;
        EXPECT_LE(nearest, 15.5) << side;
    }
}

TEST(AttachedWindowShape, automaticPrefersBelowRightLeftAndAbove) {
    EXPECT_EQ(bestSide({800, 600}, kScreen), Bottom);
    EXPECT_EQ(bestSide({800, 77}, kScreen), Right);
    EXPECT_EQ(bestSide({1500, 77}, kScreen), Left);
    EXPECT_EQ(bestSide({60, 10}, QRectF(0, 0, 120, 1200)), Top);
}

TEST(AttachedWindowShape, automaticGoesBelowWhereNothingFits) {
    EXPECT_EQ(bestSide({60, 40}, QRectF(0, 0, 120, 80)), Bottom);
}

TEST(AttachedWindowShape, belowFitsExactlyAtTheScreensFoot) {
    // Height 54, distance 14 and arrow 10.
    EXPECT_EQ(bestSide({800, 78}, kScreen), Bottom);
    EXPECT_EQ(bestSide({800, 77.5}, kScreen), Right);
}

TEST(AttachedWindowShape, rightMustStayBelowTheScreensEnd) {
    EXPECT_EQ(bestSide({1471.5, 60}, kScreen), Right);
    EXPECT_EQ(bestSide({1472, 60}, kScreen), Left);
}

TEST(AttachedWindowShape, lowerLeftCornerGoesRightAndUp) {
    EXPECT_EQ(bestSide({10, 10}, kScreen), RightTop);
}

TEST(AttachedWindowShape, lowerRightCornerGoesLeftAndUp) {
    EXPECT_EQ(bestSide({1590, 10}, kScreen), LeftTop);
}

TEST(AttachedWindowShape, nearASideOfItsWindowItExtendsInwards) {
    EXPECT_EQ(bestSide({20, 600}, kScreen), BottomRight);
    EXPECT_EQ(bestSide({1590, 600}, kScreen), BottomLeft);
    EXPECT_EQ(bestSide({520, 600}, kScreen, QRectF(500, 300, 600, 400)), BottomRight);
    EXPECT_EQ(bestSide({1080, 600}, kScreen, QRectF(500, 300, 600, 400)), BottomLeft);
}

TEST(AttachedWindowShape, aboveExtendsInwardsToo) {
    EXPECT_EQ(bestSide({20, 10}, QRectF(0, 0, 140, 1200)), TopRight);
    EXPECT_EQ(bestSide({120, 10}, QRectF(0, 0, 140, 1200)), TopLeft);
}

TEST(AttachedWindowShape, atASideItExtendsDownwardsNearTheTop) {
    EXPECT_EQ(bestSide({800, 76}, QRectF(0, 0, 1600, 100)), RightBottom);
    EXPECT_EQ(bestSide({1590, 76}, QRectF(0, 0, 1600, 100)), LeftBottom);
}

TEST(AttachedWindowShape, pastBothEndsOfASmallWindowItGoesWhereTheScreenHasRoom) {
    // Neither up, since the screen ends there, nor centred: downwards.
    EXPECT_EQ(bestSide({800, 70}, QRectF(0, 0, 1600, 100), QRectF(0, 50, 1600, 30)), RightBottom);
    EXPECT_EQ(bestSide({1590, 70}, QRectF(0, 0, 1600, 100), QRectF(0, 50, 1600, 30)), LeftBottom);
    EXPECT_EQ(bestSide({1550, 600}, kScreen, QRectF(1540, 300, 20, 600)), BottomLeft);
}

TEST(AttachedWindowShape, outlineOfAPanelOnTheRight) {
    const std::vector<QPointF> expected{{19, 53}, {105, 53}, {113, 45}, {113, 9}, {105, 1}, {19, 1},
                                        {11, 9},  {11, 18},  {1, 27},   {11, 36}, {11, 45}, {19, 53}};
    EXPECT_EQ(cornersOf(attachedOutline(panelMeasures(), QRectF(12, 2, 100, 50), Right)), expected);
}

TEST(AttachedWindowShape, outlinesOfTheOtherCentredSides) {
    const auto below = cornersOf(attachedOutline(panelMeasures(), QRectF(2, 2, 100, 50), Bottom));
    EXPECT_EQ(below[1], QPointF(43, 53));
    EXPECT_EQ(below[2], QPointF(52, 63));
    EXPECT_EQ(below[3], QPointF(61, 53));
    const auto left = cornersOf(attachedOutline(panelMeasures(), QRectF(2, 2, 100, 50), Left));
    EXPECT_EQ(left[3], QPointF(103, 36));
    EXPECT_EQ(left[4], QPointF(113, 27));
    EXPECT_EQ(left[5], QPointF(103, 18));
    const auto above = cornersOf(attachedOutline(panelMeasures(), QRectF(2, 12, 100, 50), Top));
    EXPECT_EQ(above[5], QPointF(61, 11));
    EXPECT_EQ(above[6], QPointF(52, 1));
    EXPECT_EQ(above[7], QPointF(43, 11));
}

TEST(AttachedWindowShape, cornerArrowsBeginAtTheirCorner) {
    const QRectF view(2, 2, 100, 50);
    EXPECT_EQ(cornersOf(attachedOutline(panelMeasures(), view, BottomRight))[1], QPointF(18, 63));
    EXPECT_EQ(cornersOf(attachedOutline(panelMeasures(), view, LeftBottom))[3], QPointF(113, 36));
    EXPECT_EQ(cornersOf(attachedOutline(panelMeasures(), view, TopLeft))[5], QPointF(86, -9));
    EXPECT_EQ(cornersOf(attachedOutline(panelMeasures(), view, RightTop))[7], QPointF(-9, 18));
}

TEST(AttachedWindowShape, cornerArrowsEndAtTheirCorner) {
    const QRectF view(2, 2, 100, 50);
    EXPECT_EQ(cornersOf(attachedOutline(panelMeasures(), view, BottomLeft))[1], QPointF(77, 53));
    EXPECT_EQ(cornersOf(attachedOutline(panelMeasures(), view, LeftTop))[3], QPointF(103, 27));
    EXPECT_EQ(cornersOf(attachedOutline(panelMeasures(), view, TopRight))[5], QPointF(27, 1));
    EXPECT_EQ(cornersOf(attachedOutline(panelMeasures(), view, RightBottom))[7], QPointF(1, 27));
}

TEST(AttachedWindowShape, cornersBesideTheArrowCanBePointed) {
    AttachedWindowMeasures measures = panelMeasures();
    measures.drawsRoundCornerBesideArrow = false;
    const QRectF view(2, 2, 100, 50);
    const auto hasCorner = [&](AttachedSide side, const QPointF& corner) {
        const auto corners = cornersOf(attachedOutline(measures, view, side));
        return std::ranges::find(corners, corner) != corners.end();
    };
    const std::vector<std::pair<QPointF, std::vector<AttachedSide>>> pointed{
        {{1, 53}, {RightBottom, BottomRight}},
        {{103, 53}, {LeftBottom, BottomLeft}},
        {{103, 1}, {LeftTop, TopLeft}},
        {{1, 1}, {RightTop, TopRight}},
    };
    for (const auto& [corner, sides] : pointed) {
        for (int index = 0; index < 12; ++index) {
            const auto side = static_cast<AttachedSide>(index);
            EXPECT_EQ(hasCorner(side, corner), std::ranges::find(sides, side) != sides.end())
                << index << " at " << corner.x() << ' ' << corner.y();
        }
    }
}

TEST(AttachedWindowShape, withoutRadiusAllCornersArePointed) {
    AttachedWindowMeasures measures = panelMeasures();
    measures.cornerRadius = 0;
    measures.hasArrow = false;
    const QPainterPath path = attachedOutline(measures, QRectF(2, 2, 100, 50), Right);
    for (int index = 0; index < path.elementCount(); ++index)
        EXPECT_NE(path.elementAt(index).type, QPainterPath::CurveToElement);
    EXPECT_EQ(path.boundingRect(), QRectF(1, 1, 102, 52));
}

TEST(AttachedWindowShape, withoutAnArrowTheOutlineStaysInsideItsEdges) {
    AttachedWindowMeasures measures = panelMeasures();
    measures.hasArrow = false;
    for (int side = 0; side < 12; ++side)
        EXPECT_EQ(attachedOutline(measures, QRectF(12, 12, 100, 50), static_cast<AttachedSide>(side))
                      .boundingRect(),
                  QRectF(11, 11, 102, 52))
            << side;
}

TEST(AttachedWindowShape, radiusLeavesRoomForTheArrow) {
    EXPECT_EQ(limitedCornerRadius(panelMeasures(), QSizeF(30, 20), 100), 3);
    EXPECT_EQ(limitedCornerRadius(panelMeasures(), QSizeF(30, 20), 2), 2);
    EXPECT_EQ(limitedCornerRadius(panelMeasures(), QSizeF(30, 10), 100), 0);
}

TEST(AttachedWindowShape, arrowLeavesRoomForTheCorners) {
    AttachedWindowMeasures measures = panelMeasures();
    measures.cornerRadius = 5;
    EXPECT_EQ(limitedArrowBaseWidth(measures, QSizeF(30, 20), 100), 14);
    EXPECT_EQ(limitedArrowBaseWidth(measures, QSizeF(30, 20), 10), 10);
    measures.drawsRoundCornerBesideArrow = false;
    EXPECT_EQ(limitedArrowBaseWidth(measures, QSizeF(30, 20), 100), 19);
}

} // namespace
} // namespace veltrano
