#include "chart/PanelController.h"

#include "appearance/CloseHintView.h"
#include "appearance/TextGeometrics.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace veltrano {
namespace {

class PanelControllerTest : public testing::Test {
protected:
    PanelControllerTest() {
        window.setGeometry(200, 200, 800, 500);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        panel.setFrameTopLeftPoint(kPoint);
    }

    void tell(const QString& text, const std::optional<QString>& size = QStringLiteral("5.28 GB"),
              const std::optional<std::string>& path = "/a") {
        panel.setPathText(text, size, path, std::nullopt);
    }

    bool isShown() const { return panel.getAttachedWindow() != nullptr; }
    QRectF frame() const { return panel.getAttachedWindow()->getFrame(); }

    static constexpr QPointF kPoint{400, 400};
    QString date = QStringLiteral("9/12/23");
    std::vector<std::string> askedPaths;
    NotificationCentre notifications;
    QWidget window;
    PanelController panel{notifications, &window, [this](const std::string& path) {
                              askedPaths.push_back(path);
                              return date;
                          }};
};

TEST_F(PanelControllerTest, isMadeWhenShownAndGoesWhenHidden) {
    EXPECT_FALSE(isShown());
    panel.showPanel();
    ASSERT_TRUE(isShown());
    const QPointer<MAAttachedWindow> first = panel.getAttachedWindow();
    panel.showPanel();
    EXPECT_EQ(panel.getAttachedWindow(), first);
    panel.hidePanel();
    EXPECT_FALSE(isShown());
    EXPECT_FALSE(first->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(first.isNull());
}

TEST_F(PanelControllerTest, standsRightOfItsPoint) {
    tell("Glacier.mov");
    EXPECT_EQ(panel.getAttachedWindow()->getSide(), AttachedSide::Right);
    // Content 154 by 58, margins of 2, arrow of 10, distance 14.
    EXPECT_EQ(frame(), QRectF(414, 369, 168, 62));
}

TEST_F(PanelControllerTest, hasItsStyle) {
    panel.showPanel();
    const MAAttachedWindow& pop = *panel.getAttachedWindow();
    EXPECT_EQ(pop.viewMargin(), 2.0f);
    EXPECT_EQ(pop.borderWidth(), 0.7f);
    EXPECT_EQ(pop.cornerRadius(), 8.0f);
    EXPECT_EQ(pop.hasArrow(), 1.0f);
    EXPECT_EQ(pop.drawsRoundCornerBesideArrow(), 1.0f);
    EXPECT_EQ(pop.arrowBaseWidth(), 18.0f);
    EXPECT_EQ(pop.arrowHeight(), 10.0f);
    EXPECT_EQ(pop.borderColor(), QColor::fromRgbF(0.0f, 0.15f, 0.5015f, 0.9f));
    EXPECT_EQ(pop.windowBackgroundColor().color(), QColor::fromRgbF(0.25231f, 0.3337f, 0.45f, 0.93f));
    EXPECT_EQ(panel.getPathLabel().palette().color(QPalette::WindowText), QColor(Qt::white));
}

TEST_F(PanelControllerTest, contentIsAtLeast154Wide) {
    EXPECT_EQ(panel.getPanelInitWidth(), 154);
    tell("a");
    EXPECT_EQ(panel.getContentSize(), QSize(154, 58));
    EXPECT_EQ(panel.getPathLabel().width(), 144);
}

TEST_F(PanelControllerTest, showsItsThreeValues) {
    tell("Glacier.mov");
    EXPECT_EQ(panel.getPathLabel().text(), QStringLiteral("Glacier.mov"));
    EXPECT_EQ(panel.getSizeLabel().text(), QStringLiteral("5.28 GB"));
    EXPECT_EQ(panel.getDateLabel().text(), QStringLiteral("9/12/23"));
    EXPECT_EQ(panel.getSizeCaption().text(), QStringLiteral("Size:"));
    EXPECT_EQ(panel.getDateCaption().text(), QStringLiteral("Changed:"));
    EXPECT_EQ(askedPaths, std::vector<std::string>{"/a"});
}

TEST_F(PanelControllerTest, settingTextsShowsIt) {
    tell("a");
    EXPECT_TRUE(isShown());
    EXPECT_TRUE(panel.getPathLabel().isVisible());
}

TEST_F(PanelControllerTest, markupInNamesIsText) {
    tell("<b>a</b>");
    EXPECT_EQ(panel.getPathLabel().textFormat(), Qt::PlainText);
}

TEST_F(PanelControllerTest, withoutADateItsRowIsHidden) {
    date.clear();
    tell("a");
    EXPECT_TRUE(panel.getSizeLabel().isVisible());
    EXPECT_FALSE(panel.getDateLabel().isVisible());
    EXPECT_FALSE(panel.getDateCaption().isVisible());
    EXPECT_EQ(panel.getContentSize().height(), 58);
}

TEST_F(PanelControllerTest, withoutAPathNoDateIsAsked) {
    tell("a", QStringLiteral("1 GB"), std::nullopt);
    EXPECT_TRUE(askedPaths.empty());
    EXPECT_FALSE(panel.getDateLabel().isVisible());
}

TEST_F(PanelControllerTest, aDateThatComesLateIsShown) {
    date.clear();
    tell("a");
    ASSERT_FALSE(panel.getDateLabel().isVisible());
    const QRectF before = frame();
    panel.setLateDateText("/a", QStringLiteral("1/2/20"));
    EXPECT_TRUE(panel.getDateLabel().isVisible());
    EXPECT_TRUE(panel.getDateCaption().isVisible());
    EXPECT_EQ(panel.getDateLabel().text(), QStringLiteral("1/2/20"));
    EXPECT_EQ(frame(), before);
}

TEST_F(PanelControllerTest, aDateThatComesLateGivesThePanelItsRows) {
    date.clear();
    tell("a", QString());
    ASSERT_EQ(panel.getContentSize().height(), 21);
    panel.setLateDateText("/a", QStringLiteral("1/2/20"));
    EXPECT_EQ(panel.getContentSize().height(), 58);
    EXPECT_FALSE(panel.getSizeLabel().isVisible());
}

TEST_F(PanelControllerTest, theDateStaysWhileThePointerMovesOnOnePath) {
    date.clear();
    tell("a");
    panel.setLateDateText("/a", QStringLiteral("1/2/20"));
    tell("a");
    EXPECT_EQ(panel.getDateLabel().text(), QStringLiteral("1/2/20"));
    EXPECT_EQ(askedPaths, std::vector<std::string>{"/a"});
}

TEST_F(PanelControllerTest, anotherPathOrAnotherShowAsksForTheDateAnew) {
    tell("a");
    tell("b", QStringLiteral("1 GB"), "/b");
    panel.hidePanel();
    tell("b", QStringLiteral("1 GB"), "/b");
    EXPECT_EQ(askedPaths, (std::vector<std::string>{"/a", "/b", "/b"}));
}

TEST_F(PanelControllerTest, aLateDateOfAnotherPathIsNotShown) {
    date.clear();
    tell("a");
    tell("b", QStringLiteral("1 GB"), "/b");
    panel.setLateDateText("/a", QStringLiteral("1/2/20"));
    EXPECT_FALSE(panel.getDateLabel().isVisible());
    tell("No selected item", QString(), std::nullopt);
    panel.setLateDateText("/b", QStringLiteral("1/2/20"));
    EXPECT_FALSE(panel.getDateLabel().isVisible());
}

TEST_F(PanelControllerTest, aLateDateBringsNoHiddenPanelUp) {
    date.clear();
    tell("a");
    panel.hidePanel();
    panel.setLateDateText("/a", QStringLiteral("1/2/20"));
    EXPECT_FALSE(isShown());
    EXPECT_TRUE(panel.getDateLabel().text().isEmpty());
}

TEST_F(PanelControllerTest, withoutASizeItsRowIsHidden) {
    for (const std::optional<QString>& size : {std::optional<QString>(), std::optional<QString>(QString())}) {
        tell("a", size);
        EXPECT_FALSE(panel.getSizeLabel().isVisible());
        EXPECT_FALSE(panel.getSizeCaption().isVisible());
        EXPECT_TRUE(panel.getDateLabel().isVisible());
        EXPECT_EQ(panel.getContentSize().height(), 58);
    }
}

TEST_F(PanelControllerTest, withoutRowsItShrinksTo21) {
    tell("No selected item", QString(), std::nullopt);
    EXPECT_EQ(panel.getContentSize(), QSize(154, 21));
    EXPECT_EQ(frame(), QRectF(414, 388, 168, 25)); // on whole points
    // The corners give way to the arrow's base, and come back with the rows.
    EXPECT_EQ(panel.getAttachedWindow()->cornerRadius(), 3.5f);
    EXPECT_EQ(panel.getAttachedWindow()->arrowBaseWidth(), 18.0f);
    tell("a");
    EXPECT_EQ(panel.getContentSize(), QSize(154, 58));
    EXPECT_EQ(panel.getAttachedWindow()->cornerRadius(), 8.0f);
}

TEST_F(PanelControllerTest, aGivenCaptionReplacesThatOfTheSize) {
    panel.setPathText("disk", QStringLiteral("1 GB"), std::nullopt, QStringLiteral("Free:"));
    EXPECT_EQ(panel.getSizeCaption().text(), QStringLiteral("Free:"));
    panel.setPathText("disk", QStringLiteral("1 GB"), std::nullopt, std::nullopt);
    EXPECT_EQ(panel.getSizeCaption().text(), QStringLiteral("Free:"));
}

TEST_F(PanelControllerTest, aLongTextWidensIt) {
    const QString text = QStringLiteral("A file name that is clearly wider than the panel");
    tell(text);
    const int wanted = static_cast<int>(widthForHeight(text, panel.getPathLabel().font(), 13) + 10);
    ASSERT_GT(wanted, 154);
    EXPECT_EQ(panel.getPathLabel().width(), wanted);
    EXPECT_EQ(panel.getContentSize(), QSize(wanted + 10, 58));
    EXPECT_EQ(frame().width(), wanted + 24);
    EXPECT_EQ(panel.getPathLabel().text(), text);
}

TEST_F(PanelControllerTest, aShortTextTakesTheWidthBack) {
    tell("A file name that is clearly wider than the panel");
    tell("a");
    EXPECT_EQ(panel.getContentSize().width(), 154);
    EXPECT_EQ(panel.getPathLabel().width(), 144);
}

TEST_F(PanelControllerTest, theWidthBeginsToGrowAt155) {
    QString text;
    while (widthForHeight(text + 'i', panel.getPathLabel().font(), 13) + 10 < 155)
        text += 'i';
    tell(text);
    EXPECT_EQ(panel.getContentSize().width(), 154);
    tell(text + "ii");
    EXPECT_GE(panel.getContentSize().width(), 165);
}

TEST_F(PanelControllerTest, aTextWiderThanTheScreenIsCutInTheMiddle) {
    const QString text = QString(300, QLatin1Char('m')) + QStringLiteral(".mov");
    tell(text);
    const QRect screen = window.screen()->availableGeometry();
    EXPECT_LE(frame().right(), screen.right() + 1);
    EXPECT_TRUE(panel.getPathLabel().text().contains(QChar(0x2026)));
    EXPECT_TRUE(panel.getPathLabel().text().endsWith(QStringLiteral(".mov")));
    // Further left there is room for more.
    const int narrow = panel.getContentSize().width();
    panel.setFrameTopLeftPoint({300, 400});
    EXPECT_EQ(panel.getContentSize().width(), narrow + 100);
}

TEST_F(PanelControllerTest, widthWithoutTextIsTheFirstOne) {
    EXPECT_EQ(panel.calcWidthForPathElement(), 154);
    tell("abc");
    EXPECT_EQ(panel.calcWidthForPathElement(), widthForHeight("abc", panel.getPathLabel().font(), 13));
}

TEST_F(PanelControllerTest, movesWithoutBeingMadeAnew) {
    tell("a");
    MAAttachedWindow* const pop = panel.getAttachedWindow();
    panel.setFrameTopLeftPoint({450, 420});
    EXPECT_EQ(panel.getAttachedWindow(), pop);
    EXPECT_EQ(frame().topLeft(), QPointF(464, 389));
}

TEST_F(PanelControllerTest, aPointSetWhileHiddenIsKept) {
    panel.setFrameTopLeftPoint({500, 300});
    panel.showPanel();
    EXPECT_EQ(frame().left(), 514);
}

TEST_F(PanelControllerTest, hidingEmptiesItAlsoWhenItIsHidden) {
    tell("a");
    panel.hidePanel();
    EXPECT_TRUE(panel.getPathLabel().text().isEmpty());
    EXPECT_TRUE(panel.getSizeLabel().text().isEmpty());
    EXPECT_TRUE(panel.getDateLabel().text().isEmpty());
    panel.hidePanel();
    EXPECT_FALSE(isShown());
}

TEST_F(PanelControllerTest, goesWhenTheApplicationDeactivates) {
    tell("a");
    notifications.postNotification("applicationIsDeactivating");
    EXPECT_FALSE(isShown());
}

TEST_F(PanelControllerTest, doesNotComeBackByActivation) {
    notifications.postNotification("applicationActivated");
    EXPECT_FALSE(isShown());
    tell("a");
    notifications.postNotification("applicationActivated");
    EXPECT_TRUE(isShown());
}

TEST_F(PanelControllerTest, goesWhenThePointerReachesIt) {
    tell("a");
    QWidget* const content = panel.getPathLabel().parentWidget();
    QTest::mouseMove(content, QPoint(40, 30));
    QTest::mouseMove(content, QPoint(42, 31));
    QApplication::processEvents();
    EXPECT_FALSE(isShown());
    panel.showPanel();
    EXPECT_TRUE(isShown());
    panel.CloseHintPanel();
    EXPECT_FALSE(isShown());
}

TEST_F(PanelControllerTest, worksWithoutAWindow) {
    PanelController alone(notifications, nullptr, {});
    alone.setFrameTopLeftPoint({300, 300});
    alone.setPathText("a", QStringLiteral("1 GB"), "/a", std::nullopt);
    ASSERT_TRUE(alone.getAttachedWindow());
    EXPECT_TRUE(alone.getAttachedWindow()->isSeparate());
    EXPECT_EQ(alone.getAttachedWindow()->getFrame().left(), 314);
}

TEST_F(PanelControllerTest, outlivesItsWindow) {
    auto host = std::make_unique<QWidget>();
    host->setGeometry(200, 200, 600, 400);
    host->show();
    PanelController other(notifications, host.get(), {});
    other.showPanel();
    host.reset();
    EXPECT_EQ(other.getAttachedWindow(), nullptr);
    other.setPathText("a", std::nullopt, std::nullopt, std::nullopt);
    EXPECT_TRUE(other.getAttachedWindow()->isSeparate());
}

} // namespace
} // namespace veltrano
