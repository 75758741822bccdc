#include "appearance/Look.h"

#include "appearance/Tokens.h"

#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QTest>

#include <gtest/gtest.h>

#include <array>

namespace veltrano {
namespace {

class MenuLookTest : public testing::Test {
protected:
    MenuLookTest() {
        [[maybe_unused]] static const bool isLooked = (applyLook(*qApp), true);
        menu.addAction(QStringLiteral("Show in File Manager"));
        menu.addAction(QStringLiteral("Get Info"));
        separator = menu.addSeparator();
        menu.addAction(QStringLiteral("Information"));
        menu.popup({100, 100});
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&menu));
    }

    QRect rowOf(int index) const { return menu.actionGeometry(menu.actions().at(index)); }
    /// How many pixels of a row of the mask are missing at its left and at its right end.
    std::pair<int, int> insetsOf(int y) const {
        int left = 0;
        while (left < menu.width() && !menu.mask().contains(QPoint(left, y)))
            ++left;
        int right = 0;
        while (right < menu.width() && !menu.mask().contains(QPoint(menu.width() - 1 - right, y)))
            ++right;
        return {left, right};
    }

    QMenu menu;
    QAction* separator = nullptr;
};

TEST_F(MenuLookTest, cornersAreRoundWithARadiusOf9) {
    // The pixels that lie in a circle of 9 points by half or more.
    constexpr std::array kInsets{6, 4, 3, 2, 1, 1, 0, 0, 0};
    for (int row = 0; row < 9; ++row) {
        const int inset = kInsets.at(static_cast<std::size_t>(row));
        EXPECT_EQ(insetsOf(row), std::pair(inset, inset)) << row;
        EXPECT_EQ(insetsOf(menu.height() - 1 - row), std::pair(inset, inset)) << row;
    }
    EXPECT_EQ(menu.mask().boundingRect(), menu.rect());
}

TEST_F(MenuLookTest, cornersFollowAMenuThatGrows) {
    const int before = menu.height();
    menu.addAction(QStringLiteral("Another entry with a long name"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return menu.height() > before; }));
    EXPECT_EQ(menu.mask().boundingRect(), menu.rect());
    EXPECT_EQ(insetsOf(menu.height() - 1).first, 6);
}

TEST_F(MenuLookTest, rowsAre26High) {
    for (const int index : {0, 1, 3})
        EXPECT_EQ(rowOf(index).height(), 26);
}

TEST_F(MenuLookTest, separatorsStand12InsideTheEdge) {
    const QImage image = menu.grab().toImage();
    const QRect row = menu.actionGeometry(separator);
    const int y = row.center().y();
    const QRgb line = tokens::kLineSoft.rgb();
    EXPECT_NE(image.pixel(12, y), line);
    EXPECT_EQ(image.pixel(13, y), line);
    EXPECT_EQ(image.pixel(menu.width() - 14, y), line);
    EXPECT_NE(image.pixel(menu.width() - 13, y), line);
}

TEST_F(MenuLookTest, thePlateOfTheEntryUnderThePointerHasRoundCorners) {
    menu.setActiveAction(menu.actions().at(1));
    const QImage image = menu.grab().toImage();
    const QRect row = rowOf(1);
    EXPECT_EQ(image.pixel(row.topLeft()), tokens::kWhite.rgb());
    EXPECT_EQ(image.pixel(row.left() + 5, row.top() + 1), tokens::kAccent.rgb());
    EXPECT_EQ(image.pixel(row.left() + 1, row.top() + 5), tokens::kAccent.rgb());
}

TEST_F(MenuLookTest, theEdgeIsDrawnAllAround) {
    const QImage image = menu.grab().toImage();
    for (const QPoint& at : {QPoint(menu.width() / 2, 0), QPoint(menu.width() / 2, menu.height() - 1),
                             QPoint(0, menu.height() / 2), QPoint(menu.width() - 1, menu.height() / 2)})
        EXPECT_EQ(image.pixel(at), tokens::kMenuEdge.rgb());
}

} // namespace
} // namespace veltrano
