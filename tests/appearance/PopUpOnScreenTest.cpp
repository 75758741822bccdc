// Pop-ups on a real X server under a window manager, without and with something that composites.

#include "appearance/MAAttachedWindow.h"
#include "platform/NotificationCentre.h"

#include <QApplication>
#include <QPainter>
#include <QProcess>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace veltrano {
namespace {

constexpr QColor kBehind(0, 90, 0);
constexpr QColor kGround(0, 200, 0);
constexpr QColor kFill(200, 0, 0);

class Ground final : public QWidget {
public:
    explicit Ground(const QColor& colour) : m_colour(colour) {}

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), m_colour); }

private:
    const QColor m_colour;
};

QColor screenColour(const QPoint& point) {
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, point.x(), point.y(), 1, 1)
        .toImage()
        .pixelColor(0, 0);
}

bool comesToShow(const QPoint& point, const QColor& colour) {
    return QTest::qWaitFor([&] { return screenColour(point) == colour; });
}

class PopUpOnScreen : public testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        // Behind everything, so that what shines through is known.
        behind.setGeometry(100, 100, 1200, 800);
        behind.setWindowFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnBottomHint);
        behind.show();
        ASSERT_TRUE(comesToShow({1020, 220}, kBehind));
        window.setGeometry(300, 300, 500, 300);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        ASSERT_TRUE(comesToShow(onScreen({250, 150}), kGround));
        if (GetParam())
            startCompositor();
        view.resize(120, 60);
    }
    void TearDown() override {
        compositor.kill();
        compositor.waitForFinished();
    }

    void startCompositor() {
        compositor.start(QStringLiteral("xcompmgr"), {QStringLiteral("-n")});
        ASSERT_TRUE(compositor.waitForStarted()) << "xcompmgr is not installed";
        // It is there when what lies behind a translucent window is seen.
        QWidget glass(nullptr, Qt::ToolTip);
        glass.setAttribute(Qt::WA_TranslucentBackground);
        glass.setGeometry(1000, 200, 50, 50);
        glass.show();
        ASSERT_TRUE(comesToShow({1020, 220}, kBehind));
    }

    std::unique_ptr<MAAttachedWindow> attach(const QPointF& point) {
        std::unique_ptr<MAAttachedWindow> made(
            MAAttachedWindow::initWithView(notifications, &view, point, &window, AttachedSide::Right, 14));
        made->setBackgroundColor(kFill);
        made->setArrowHeight(10);
        made->show();
        return made;
    }

    QPoint onScreen(const QPoint& inWindow) const { return window.mapToGlobal(inWindow); }

    NotificationCentre notifications;
    QWidget view;
    Ground behind{kBehind};
    Ground window{kGround};
    QProcess compositor;
};

TEST_P(PopUpOnScreen, outsideItsWindowItsCornersShowWhatLiesBehind) {
    // Its frame lies at 494, 118 and is 134 by 64; the window ends at 500.
    const auto pop = attach({480, 150});
    view.hide();
    ASSERT_TRUE(pop->isSeparate());
    ASSERT_TRUE(comesToShow(onScreen({494 + 60, 150}), kFill));
    EXPECT_TRUE(comesToShow(onScreen({495, 119}), kGround)) << "beside the arrow, over the window";
    EXPECT_TRUE(comesToShow(onScreen({501, 119}), kBehind)) << "beside the arrow, outside the window";
    EXPECT_TRUE(comesToShow(onScreen({494 + 132, 119}), kBehind)) << "at a round corner";
    EXPECT_TRUE(comesToShow(onScreen({494 + 132, 180}), kBehind)) << "at a round corner";
}

TEST_P(PopUpOnScreen, insideItsWindowItsCornersShowTheWindow) {
    const auto pop = attach({100, 150});
    view.hide();
    ASSERT_FALSE(pop->isSeparate());
    ASSERT_TRUE(comesToShow(onScreen({114 + 60, 150}), kFill));
    const QColor corner = screenColour(onScreen({114 + 132, 119}));
    EXPECT_GT(corner.green(), 150) << "under the shadow";
    EXPECT_LT(corner.red(), 30);
}

TEST_P(PopUpOnScreen, outsideItsWindowItIsFilled) {
    const auto pop = attach({480, 150});
    view.hide();
    EXPECT_TRUE(comesToShow(onScreen({494 + 60, 150}), kFill));
}

TEST_P(PopUpOnScreen, takesNoFocusFromItsWindow) {
    const auto pop = attach({480, 150});
    view.hide();
    ASSERT_TRUE(comesToShow(onScreen({494 + 60, 150}), kFill));
    EXPECT_EQ(QApplication::activeWindow(), &window);
    EXPECT_TRUE(window.isActiveWindow());
}

TEST_P(PopUpOnScreen, comesBackIntoItsWindow) {
    const auto pop = attach({480, 150});
    view.hide();
    ASSERT_TRUE(comesToShow(onScreen({494 + 60, 150}), kFill));
    pop->setPoint({100, 150}, AttachedSide::Right);
    EXPECT_FALSE(pop->isSeparate());
    EXPECT_TRUE(comesToShow(onScreen({114 + 60, 150}), kFill));
    pop->setBackgroundColor(QColor(0, 0, 210));
    EXPECT_TRUE(comesToShow(onScreen({114 + 60, 150}), QColor(0, 0, 210)));
    EXPECT_TRUE(comesToShow(onScreen({494 + 60, 150}), kBehind));
}

TEST_P(PopUpOnScreen, followsThePointOutsideItsWindow) {
    const auto pop = attach({480, 150});
    view.hide();
    ASSERT_TRUE(comesToShow(onScreen({494 + 60, 150}), kFill));
    pop->setPoint({480, 250}, AttachedSide::Right);
    EXPECT_TRUE(comesToShow(onScreen({494 + 60, 250}), kFill));
    EXPECT_TRUE(comesToShow(onScreen({494 + 60, 150}), kBehind));
}

INSTANTIATE_TEST_SUITE_P(Without, PopUpOnScreen, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(WithCompositor, PopUpOnScreen, testing::Values(true));

} // namespace
} // namespace veltrano
