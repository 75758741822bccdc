#include "appearance/PathColntrolCell.h"

#include "appearance/Images.h"
#include "appearance/PathElementCell.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

namespace veltrano {
namespace {

using testing::ElementsAre;

PathCellWidths fit(int room) {
    constexpr int full[] = {80, 100, 90, 60};
    constexpr int least[] = {30, 40, 40, 30};
    return fitPathCells(full, least, 25, room);
}

TEST(PathCells, keepTheirTitlesWhereTheyFit) {
    EXPECT_THAT(fit(330).widths, ElementsAre(80, 100, 90, 60));
    EXPECT_FALSE(fit(330).showsGapMark);
}

TEST(PathCells, shrinkFromTheSecondOneOn) {
    EXPECT_THAT(fit(300).widths, ElementsAre(80, 70, 90, 60));
    EXPECT_THAT(fit(250).widths, ElementsAre(80, 40, 70, 60));
}

TEST(PathCells, showNoTitleOfWhichNextToNothingIsLeft) {
    EXPECT_THAT(fit(294).widths, ElementsAre(80, 64, 90, 60));
    EXPECT_THAT(fit(293).widths, ElementsAre(80, 40, 90, 60));
}

TEST(PathCells, leaveOutTheMiddleFromTheSecondOneOnBehindAMark) {
    const PathCellWidths oneGone = fit(215);
    EXPECT_THAT(oneGone.widths, ElementsAre(80, 0, 40, 60));
    EXPECT_TRUE(oneGone.showsGapMark);
    EXPECT_THAT(fit(190).widths, ElementsAre(80, 0, 0, 60));
}

TEST(PathCells, shrinkTheLastBeforeTheFirst) {
    EXPECT_THAT(fit(160).widths, ElementsAre(80, 0, 0, 55));
    EXPECT_THAT(fit(150).widths, ElementsAre(80, 0, 0, 30));
    EXPECT_THAT(fit(120).widths, ElementsAre(65, 0, 0, 30));
    EXPECT_THAT(fit(10).widths, ElementsAre(30, 0, 0, 30));
}

TEST(PathCells, ofAShortPathNeverLeave) {
    constexpr int full[] = {110};
    constexpr int least[] = {30};
    EXPECT_THAT(fitPathCells(full, least, 25, 60).widths, ElementsAre(60));
    EXPECT_TRUE(fitPathCells({}, {}, 25, 50).widths.empty());
}

class PathControlCells : public testing::Test {
protected:
    PathControlCells() {
        window.resize(800, 60);
        control = new PathColntrolCell(&window);
        window.show();
    }

    void showPath(const QStringList& titles, int room = 700) {
        std::vector<PathColntrolCell::Component> components;
        std::string path;
        for (const QString& title : titles) {
            path += "/" + title.toStdString();
            components.push_back({title, QStringLiteral("extra/folder"), path});
        }
        control->setPathComponents(components);
        control->setRoom(QRect(10, 12, room, 28));
        QApplication::processEvents();
    }

    PathElementCell& cell(std::size_t index) { return *control->pathComponentCells()[index]; }

    QWidget window;
    PathColntrolCell* control = nullptr;
};

TEST_F(PathControlCells, knowTheEndsOfTheRow) {
    showPath({"a", "b", "c"});
    EXPECT_TRUE(cell(0).isFirstinView());
    EXPECT_FALSE(cell(0).isLastinView());
    EXPECT_FALSE(cell(1).isFirstinView());
    EXPECT_FALSE(cell(1).isLastinView());
    EXPECT_TRUE(cell(2).isLastinView());
}

TEST_F(PathControlCells, lieSideBySide) {
    showPath({"alpha", "beta", "gamma"});
    EXPECT_EQ(cell(0).x(), 0);
    EXPECT_EQ(cell(1).x(), cell(0).width());
    EXPECT_EQ(cell(2).x(), cell(1).x() + cell(1).width());
    EXPECT_EQ(control->geometry(), QRect(10, 12, cell(2).x() + cell(2).width(), 28));
}

TEST_F(PathControlCells, aClickTellsThePath) {
    showPath({"a", "b", "c"});
    QSignalSpy clicked(control, &PathColntrolCell::pathComponentClicked);
    QTest::mouseClick(&cell(1), Qt::LeftButton);
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked.at(0).at(0).toByteArray(), QByteArray("/a/b"));
}

TEST_F(PathControlCells, returnAndSpacePressThem) {
    showPath({"a", "b", "c"});
    QSignalSpy clicked(control, &PathColntrolCell::pathComponentClicked);
    cell(1).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&cell(1), Qt::Key_Return);
    QTest::keyClick(&cell(1), Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 2);
}

TEST_F(PathControlCells, arrowKeysGoAlongTheRow) {
    showPath({"a", "b", "c"});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    cell(0).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&cell(0), Qt::Key_Right);
    EXPECT_TRUE(cell(1).hasFocus());
    QTest::keyClick(&cell(1), Qt::Key_Left);
    EXPECT_TRUE(cell(0).hasFocus());
}

TEST(PathCells, areReachedByTabWhereTheyLieAfterTheyHaveChangedToo) {
    QWidget window;
    QLineEdit before(&window);
    PathColntrolCell row(&window);
    QLineEdit behind(&window);
    row.setRoom(QRect(0, 0, 700, 28));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (const std::string path : {"/a", "/b"}) {
        row.setPathComponents({{"x", "extra/folder", path, true}, {"y", "extra/folder", path + "/y", true}});
        std::vector<QWidget*> order;
        before.setFocus(Qt::TabFocusReason);
        for (int step = 0; step < 4; ++step) {
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
            order.push_back(window.focusWidget());
        }
        const auto& cells = row.pathComponentCells();
        EXPECT_THAT(order, ElementsAre(cells[0], cells[1], &behind, &before));
    }
}

TEST_F(PathControlCells, thatLeadNowhereCanNotBeReachedOrPressed) {
    control->setPathComponents({{"a", "extra/folder", "/a", false}, {"b", "extra/folder", "/a/b", true}});
    control->setRoom(QRect(10, 12, 700, 28));
    QSignalSpy clicked(control, &PathColntrolCell::pathComponentClicked);
    QTest::mouseClick(&cell(0), Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 0);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    cell(1).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&cell(1), Qt::Key_Left);
    EXPECT_FALSE(cell(0).hasFocus());
}

TEST_F(PathControlCells, focusStaysInTheRowWhenAPressHasChangedIt) {
    showPath({"a", "b", "c"});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    cell(1).setFocus(Qt::TabFocusReason);
    control->setPathComponents({{"a", "extra/folder", "/a", true}, {"b", "extra/folder", "/a/b", false}});
    EXPECT_TRUE(cell(0).hasFocus());
}

TEST_F(PathControlCells, keyboardFocusIsSeen) {
    showPath({"a", "b"});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const QImage without = cell(1).grab().toImage();
    cell(1).setFocus(Qt::TabFocusReason);
    EXPECT_NE(cell(1).grab().toImage(), without);
}

TEST_F(PathControlCells, speakTheirTitles) {
    showPath({"alpha", "beta"});
    EXPECT_EQ(cell(1).accessibleName(), QStringLiteral("beta"));
}

TEST_F(PathControlCells, elidedOnesTellTheirTitleUnderThePointer) {
    showPath({"first", "a folder with a very long name", "last"}, 230);
    EXPECT_LT(cell(1).width(), cell(1).getFullWidth());
    EXPECT_EQ(cell(1).toolTip(), QStringLiteral("a folder with a very long name"));
    EXPECT_TRUE(cell(0).toolTip().isEmpty());
    EXPECT_LE(control->width(), 230);
}

TEST_F(PathControlCells, aDeepPathKeepsItsEndsAndShowsAMark) {
    QStringList titles;
    for (int level = 0; level < 40; ++level)
        titles.append(QStringLiteral("folder%1").arg(level));
    showPath(titles, 400);
    EXPECT_TRUE(cell(0).isVisible());
    EXPECT_FALSE(cell(1).isVisible());
    EXPECT_TRUE(cell(39).isVisible());
    EXPECT_EQ(cell(39).width(), cell(39).getFullWidth());
    EXPECT_LE(control->width(), 400);
    bool marked = false;
    for (const auto* mark : control->findChildren<PathElementCell*>())
        marked = marked || (mark->isVisible() && mark->text() == QStringLiteral("…"));
    EXPECT_TRUE(marked);
}

TEST_F(PathControlCells, anotherPathMayFollowFromAClick) {
    showPath({"a", "b", "c"});
    QObject::connect(control, &PathColntrolCell::pathComponentClicked, &window, [&] { showPath({"a"}); });
    QTest::mouseClick(&cell(1), Qt::LeftButton);
    EXPECT_EQ(control->pathComponentCells().size(), 1U);
}

/// What a cell's picture must show at a place: the same as that of an image of the program.
testing::AssertionResult showsImage(const QImage& picture, const QPoint& at, const QString& name,
                                    const QPoint& inImage) {
    QImage wanted(64, 64, QImage::Format_ARGB32_Premultiplied);
    wanted.fill(Qt::transparent);
    QPainter(&wanted).drawPixmap(0, 0, image(name, 1));
    if (picture.pixelColor(at) == wanted.pixelColor(inImage))
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << picture.pixelColor(at).name(QColor::HexArgb).toStdString() << " is not "
           << wanted.pixelColor(inImage).name(QColor::HexArgb).toStdString();
}

QImage pictureOf(PathElementCell& cell) {
    QImage picture(cell.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    cell.render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
    return picture;
}

TEST_F(PathControlCells, theFirstDrawsTheLeftEndAndNoArrow) {
    showPath({"a", "b", "c"});
    const QImage picture = pictureOf(cell(0));
    EXPECT_TRUE(showsImage(picture, {0, 14}, QStringLiteral("path_left"), {0, 14}));
    EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0); // round corner
    EXPECT_TRUE(showsImage(picture, {picture.width() - 1, 0}, QStringLiteral("path_mid"), {1, 0}));
}

TEST_F(PathControlCells, theLastDrawsTheRightEndAndAnArrow) {
    showPath({"a", "b", "c"});
    const QImage picture = pictureOf(cell(2));
    EXPECT_TRUE(showsImage(picture, {picture.width() - 1, 14}, QStringLiteral("path_right"), {7, 14}));
    EXPECT_EQ(picture.pixelColor(picture.width() - 1, 0).alpha(), 0);
    // The arrow is 16 high, in the middle of 28; its tip is at 7 of 10, 8 from its top.
    EXPECT_LT(picture.pixelColor(6, 14).lightness(), 190);
}

TEST_F(PathControlCells, theMiddleOnesDrawThePlateAndAnArrow) {
    showPath({"a", "b", "c"});
    const QImage picture = pictureOf(cell(1));
    EXPECT_TRUE(showsImage(picture, {0, 0}, QStringLiteral("path_mid"), {1, 0}));
    EXPECT_LT(picture.pixelColor(6, 14).lightness(), 190);
}

} // namespace
} // namespace veltrano
