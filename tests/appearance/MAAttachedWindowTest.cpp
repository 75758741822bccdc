#include "appearance/MAAttachedWindow.h"

#include "appearance/CloseHintView.h"
#include "platform/NotificationCentre.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace veltrano {
namespace {

using enum AttachedSide;

class Plain final : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), QColor(0, 200, 0)); }
};

class AttachedWindowTest : public testing::Test {
protected:
    AttachedWindowTest() {
        window.setGeometry(200, 200, 600, 400);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        view.resize(100, 50);
        notifications.addObserver(kPerformCloseHintPanel,
                                  [this](const NotificationCentre::Object&) { ++closings; });
    }

    std::unique_ptr<MAAttachedWindow> attach(const QPointF& point, AttachedSide side = Right) {
        std::unique_ptr<MAAttachedWindow> made(
            MAAttachedWindow::initWithView(notifications, &view, point, &window, side, 14));
        made->show();
        QApplication::processEvents();
        return made;
    }

    QColor windowColour(const QPoint& point) { return window.grab().toImage().pixelColor(point); }

    NotificationCentre notifications;
    int closings = 0;
    QWidget view;
    Plain window;
};

TEST_F(AttachedWindowTest, startsWithItsMeasures) {
    const auto pop = attach({100, 100});
    EXPECT_EQ(pop->borderColor(), QColor(Qt::white));
    EXPECT_EQ(pop->borderWidth(), 2);
    EXPECT_EQ(pop->viewMargin(), 2);
    EXPECT_EQ(pop->arrowBaseWidth(), 20);
    EXPECT_EQ(pop->arrowHeight(), 16);
    EXPECT_EQ(pop->hasArrow(), 1.0f);
    EXPECT_EQ(pop->cornerRadius(), 8);
    EXPECT_EQ(pop->drawsRoundCornerBesideArrow(), 1.0f);
    EXPECT_EQ(pop->windowBackgroundColor().color().red(), 26);
    EXPECT_EQ(pop->windowBackgroundColor().color().alpha(), 191);
}

TEST_F(AttachedWindowTest, noViewGivesNoWindow) {
    EXPECT_EQ(MAAttachedWindow::initWithView(notifications, nullptr, {100, 100}, &window, Right, 14),
              nullptr);
}

TEST_F(AttachedWindowTest, whatIsNotNamedIsAutomaticWithoutDistanceAndWindow) {
    const auto take = [](MAAttachedWindow* made) {
        return std::unique_ptr<MAAttachedWindow>(made);
    };
    const QPointF point(700, 500);
    auto pop = take(MAAttachedWindow::initWithView(notifications, &view, point));
    EXPECT_EQ(pop->getSide(), Bottom);
    EXPECT_EQ(pop->getFrame(), QRectF(648, 500, 104, 70));
    EXPECT_TRUE(pop->isSeparate());
    pop = take(MAAttachedWindow::initWithView(notifications, &view, point, Top));
    EXPECT_EQ(pop->getFrame(), QRectF(648, 430, 104, 70));
    pop = take(MAAttachedWindow::initWithView(notifications, &view, point, 10.0f));
    EXPECT_EQ(pop->getFrame(), QRectF(648, 510, 104, 70));
    pop = take(MAAttachedWindow::initWithView(notifications, &view, point, Top, 10.0f));
    EXPECT_EQ(pop->getFrame(), QRectF(648, 420, 104, 70));
    pop = take(MAAttachedWindow::initWithView(notifications, &view, QPointF(300, 200), &window));
    EXPECT_EQ(pop->getFrame(), QRectF(448, 400, 104, 70));
    pop = take(MAAttachedWindow::initWithView(notifications, &view, QPointF(300, 200), &window, 10.0f));
    EXPECT_EQ(pop->getFrame(), QRectF(448, 410, 104, 70));
}

TEST_F(AttachedWindowTest, standsBesideItsPointAndHoldsItsView) {
    const auto pop = attach({100, 100});
    EXPECT_EQ(pop->getFrame(), QRectF(314, 273, 120, 54));
    EXPECT_EQ(view.geometry(), QRect(18, 2, 100, 50));
    EXPECT_TRUE(view.isVisible());
}

TEST_F(AttachedWindowTest, theViewLiesAwayFromAnArrowBelowIt) {
    const auto pop = attach({300, 200}, Top);
    EXPECT_EQ(pop->getFrame(), QRectF(448, 316, 104, 70));
    EXPECT_EQ(view.geometry(), QRect(2, 2, 100, 50));
    pop->setPoint({300, 200}, Bottom);
    EXPECT_EQ(view.geometry(), QRect(2, 18, 100, 50));
}

TEST_F(AttachedWindowTest, insideItsWindowItIsAChildOfIt) {
    const auto pop = attach({100, 100});
    EXPECT_FALSE(pop->isSeparate());
    EXPECT_EQ(pop->geometry(), QRect(114, 73, 120, 54));
}

TEST_F(AttachedWindowTest, leavesItsWindowOnlyWhereItMust) {
    const auto pop = attach({466, 100});
    EXPECT_FALSE(pop->isSeparate());
    pop->setPoint({467, 100}, Right);
    EXPECT_TRUE(pop->isSeparate());
    EXPECT_TRUE(pop->isVisible());
    EXPECT_EQ(pop->getFrame(), QRectF(681, 273, 120, 54));
    pop->setPoint({466, 100}, Right);
    EXPECT_FALSE(pop->isSeparate());
    EXPECT_TRUE(pop->isVisible());
}

TEST_F(AttachedWindowTest, takesNoFocusEitherWay) {
    const auto pop = attach({100, 100});
    EXPECT_EQ(QApplication::activeWindow(), &window);
    pop->setPoint({590, 100}, Right);
    QApplication::processEvents();
    EXPECT_EQ(QApplication::activeWindow(), &window);
}

TEST_F(AttachedWindowTest, movesWithItsWindow) {
    const auto pop = attach({590, 100});
    ASSERT_TRUE(pop->isSeparate());
    window.move(300, 250);
    QApplication::processEvents();
    EXPECT_EQ(pop->getFrame().topLeft(), QPointF(window.mapToGlobal(QPoint(604, 73))));
}

TEST_F(AttachedWindowTest, followsAViewThatChangedItsSize) {
    const auto pop = attach({100, 100});
    view.resize(200, 80);
    pop->needUpdateSize();
    EXPECT_EQ(pop->getFrame(), QRectF(314, 258, 220, 84));
}

/// Counts the resize events of a widget.
class ResizeCounter final : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Resize ? 1 : 0;
        return false;
    }
    int count = 0;
};

TEST_F(AttachedWindowTest, aResizeOfItsOwnStartsNoOtherRound) {
    const auto pop = attach({100, 100});
    ResizeCounter counter;
    pop->installEventFilter(&counter);
    view.resize(200, 80);
    pop->needUpdateSize();
    EXPECT_EQ(counter.count, 1);
}

TEST_F(AttachedWindowTest, aResizeFromOutsideIsPutRight) {
    const auto pop = attach({100, 100});
    pop->resize(300, 300);
    EXPECT_EQ(pop->getFrame(), QRectF(314, 273, 120, 54));
}

TEST_F(AttachedWindowTest, aNegativeMarginIsNone) {
    const auto pop = attach({100, 100});
    pop->setViewMargin(-5);
    EXPECT_EQ(pop->viewMargin(), 0);
    EXPECT_EQ(pop->getFrame(), QRectF(314, 275, 116, 50));
}

TEST_F(AttachedWindowTest, aLargeRadiusIsCutToItsLimit) {
    view.resize(60, 30);
    const auto pop = attach({100, 100});
    pop->setCornerRadius(100);
    EXPECT_EQ(pop->cornerRadius(), 7);
    EXPECT_EQ(pop->arrowBaseWidth(), 20);
}

TEST_F(AttachedWindowTest, onATinyViewTheArrowIsReducedToo) {
    view.resize(12, 12);
    const auto pop = attach({100, 100});
    pop->setCornerRadius(100);
    EXPECT_EQ(pop->cornerRadius(), 0);
    EXPECT_EQ(pop->arrowBaseWidth(), 16);
}

TEST_F(AttachedWindowTest, aSmallerMarginLimitsTheRadiusAnew) {
    view.resize(60, 30);
    const auto pop = attach({100, 100});
    pop->setCornerRadius(7);
    pop->setViewMargin(0);
    EXPECT_EQ(pop->cornerRadius(), 5);
}

TEST_F(AttachedWindowTest, flagsTravelAsNumbers) {
    const auto pop = attach({100, 100});
    pop->setHasArrow(0.0f);
    EXPECT_EQ(pop->hasArrow(), 0.0f);
    pop->setHasArrow(0.5f);
    EXPECT_EQ(pop->hasArrow(), 1.0f);
    pop->setDrawsRoundCornerBesideArrow(0.0f);
    EXPECT_EQ(pop->drawsRoundCornerBesideArrow(), 0.0f);
}

TEST_F(AttachedWindowTest, withoutItsArrowItKeepsItsSize) {
    const auto pop = attach({100, 100});
    const QRectF frame = pop->getFrame();
    EXPECT_NE(windowColour({122, 100}), QColor(0, 200, 0)); // in the arrow
    pop->setHasArrow(0.0f);
    EXPECT_EQ(pop->getFrame(), frame);
    const QColor ground = windowColour({122, 100});
    EXPECT_GT(ground.green(), 150); // the window, under the shadow
}

TEST_F(AttachedWindowTest, aHigherArrowTakesMoreRoom) {
    const auto pop = attach({100, 100});
    pop->setArrowHeight(10);
    EXPECT_EQ(pop->getFrame(), QRectF(314, 273, 114, 54));
}

TEST_F(AttachedWindowTest, isFilledWithItsColour) {
    view.setVisible(false);
    const auto pop = attach({100, 100});
    pop->setBackgroundColor(QColor(200, 0, 0));
    EXPECT_EQ(pop->windowBackgroundColor().color(), QColor(200, 0, 0));
    EXPECT_EQ(windowColour({180, 120}), QColor(200, 0, 0));
}

TEST_F(AttachedWindowTest, isFilledWithCopiesOfAnImage) {
    const auto pop = attach({100, 100});
    QPixmap image(4, 4);
    image.fill(QColor(0, 0, 210));
    pop->setBackgroundImage(image);
    EXPECT_EQ(windowColour({180, 120}), QColor(0, 0, 210));
    pop->setBackgroundImage(QPixmap());
    EXPECT_EQ(windowColour({180, 120}), QColor(0, 0, 210));
}

TEST_F(AttachedWindowTest, theBorderIsInsideTheOutlineWithAGreyRim) {
    const auto pop = attach({100, 100});
    pop->setBackgroundColor(QColor(200, 0, 0));
    pop->setBorderColor(QColor(0, 0, 210));
    // The edge on the right lies at 119 of 120.
    EXPECT_EQ(windowColour({114 + 118, 100}), QColor(0, 0, 210));
    EXPECT_EQ(windowColour({114 + 117, 100}), QColor(0, 0, 210));
    const QColor rim = windowColour({114 + 116, 100});
    EXPECT_NEAR(rim.green(), 232 * 3 / 4, 6); // three quarters of a point over red
    EXPECT_EQ(windowColour({114 + 114, 100}), QColor(200, 0, 0));
    pop->setBorderWidth(0);
    EXPECT_EQ(windowColour({114 + 117, 100}), QColor(200, 0, 0));
}

TEST_F(AttachedWindowTest, cornersShowWhatLiesBehind) {
    const auto pop = attach({100, 100});
    const QColor corner = windowColour({114 + 118, 74});
    EXPECT_GT(corner.green(), 120);
    EXPECT_LT(corner.red(), 40);
}

TEST_F(AttachedWindowTest, thePointerGoesThroughWhatLiesBesideTheArrow) {
    const auto pop = attach({100, 100});
    EXPECT_EQ(window.childAt(118, 80), nullptr);
    EXPECT_NE(window.childAt(126, 100), nullptr);
}

TEST_F(AttachedWindowTest, thePointerGoesThroughTheShadow) {
    const auto pop = attach({100, 100});
    EXPECT_NE(windowColour({180, 130}), QColor(0, 200, 0));
    EXPECT_EQ(window.childAt(180, 130), nullptr);
}

TEST_F(AttachedWindowTest, theShadowGoesWithIt) {
    auto pop = attach({100, 100});
    pop->hide();
    EXPECT_EQ(windowColour({180, 130}), QColor(0, 200, 0));
    pop->show();
    EXPECT_NE(windowColour({180, 130}), QColor(0, 200, 0));
    pop.reset();
    EXPECT_EQ(windowColour({180, 130}), QColor(0, 200, 0));
}

TEST_F(AttachedWindowTest, aPointerThatReachesItAsksForItsEnd) {
    const auto pop = attach({100, 100});
    QTest::mouseMove(pop.get(), QPoint(60, 1));
    QTest::mouseMove(pop.get(), QPoint(61, 1));
    EXPECT_GE(closings, 1);
}

TEST_F(AttachedWindowTest, givesItsViewBack) {
    auto pop = attach({100, 100});
    pop.reset();
    EXPECT_EQ(view.parent(), nullptr);
    EXPECT_FALSE(view.isVisible());
}

TEST_F(AttachedWindowTest, goesWithItsWindowAndLeavesTheView) {
    auto host = std::make_unique<QWidget>();
    host->resize(600, 400);
    const QPointer<MAAttachedWindow> pop =
        MAAttachedWindow::initWithView(notifications, &view, {100, 100}, host.get(), Right, 14);
    host.reset();
    EXPECT_TRUE(pop.isNull());
    EXPECT_EQ(view.parent(), nullptr);
}

TEST_F(AttachedWindowTest, isNoMainWindow) {
    EXPECT_FALSE(MAAttachedWindow::canBecomeMainWindow());
    EXPECT_TRUE(MAAttachedWindow::canBecomeKeyWindow());
    EXPECT_TRUE(MAAttachedWindow::isExcludedFromWindowsMenu());
}

TEST_F(AttachedWindowTest, closingClosesItsWindowOrItself) {
    auto pop = attach({100, 100});
    pop->performClose();
    EXPECT_FALSE(window.isVisible());
    pop.reset(MAAttachedWindow::initWithView(notifications, &view, {700, 500}));
    pop->show();
    pop->performClose();
    EXPECT_FALSE(pop->isVisible());
}

TEST(CloseHintView, eachMoveOfThePointerAsksForTheEnd) {
    NotificationCentre notifications;
    int closings = 0;
    notifications.addObserver(kPerformCloseHintPanel, [&](const NotificationCentre::Object&) { ++closings; });
    CloseHintView content(notifications);
    content.setGeometry(300, 300, 154, 58);
    content.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&content));
    QTest::mouseMove(&content, QPoint(20, 20));
    QTest::mouseMove(&content, QPoint(30, 30));
    QApplication::processEvents();
    EXPECT_GE(closings, 2);
}

} // namespace
} // namespace veltrano
