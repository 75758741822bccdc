#include "chart/ChartFixture.h"
#include "chart/PanelController.h"
#include "platform/NotificationCentre.h"
#include "tree/TopLevelItem.h"

#include <QLabel>
#include <QTest>

namespace veltrano {
namespace {

class HintingHost final : public ChartHost {
public:
    std::optional<std::string> getProcessingVol() const override { return std::nullopt; }
    QString getDisplayText(std::string_view bytes) const override {
        return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
    bool getShowHint() const override { return showHint; }
    bool getForceShowHint() const override { return forceShowHint; }

    bool showHint = true;
    bool forceShowHint = false;
};

class HoverPanelTest : public test::ChartTest {
protected:
    HoverPanelTest() {
        chart.setHost(&hints);
        chart.setPanelController(&panel);
        big = tree.file(tree.root(), "big", 750);
        inner = tree.folder(tree.root(), "inner");
        tree.file(inner, "f", 250);
        tree.recount();
        show(tree.root());
    }
    ~HoverPanelTest() override { chart.setPanelController(nullptr); }

    /// Moves the real pointer to a point of the chart, and tells the chart.
    void point(const QPointF& at) {
        QCursor::setPos(view.mapToGlobal(view.getChartTransform().map(at)).toPoint());
        settle();
        chart.operateMouseMoveFromRadialView(at);
    }
    void pointAtBig() { point(middleOf(1, 0.0, 0.75)); }
    void pointAtGap() { point(QPointF(5, 5)); }

    bool isShown() const { return panel.getAttachedWindow() != nullptr; }
    QString text() const { return panel.getPathLabel().text(); }

    HintingHost hints;
    NotificationCentre notifications;
    PanelController panel{notifications, &area, {}};
    test::TreeBuilder tree{"/home/mara"};
    FileSystemItem* big = nullptr;
    FolderSystemItem* inner = nullptr;
};

TEST_F(HoverPanelTest, tellsWhatThePointerIsOn) {
    pointAtBig();
    ASSERT_TRUE(isShown());
    EXPECT_EQ(text(), QStringLiteral("big"));
    EXPECT_EQ(panel.getSizeLabel().text(), QStringLiteral("750 bytes"));
    point(middleOf(1, 0.75, 0.25));
    EXPECT_EQ(text(), QStringLiteral("inner"));
    point(chart.getLayout().m_Center);
    EXPECT_EQ(text(), QStringLiteral("mara"));
    EXPECT_EQ(panel.getSizeLabel().text(), QStringLiteral("1.00 KB"));
}

TEST_F(HoverPanelTest, followsThePointerInsideOneSector) {
    pointAtBig();
    const QRectF before = panel.getAttachedWindow()->getFrame();
    EXPECT_EQ(before.left(), QCursor::pos().x() + 14);
    EXPECT_NEAR(before.center().y(), QCursor::pos().y(), 0.5);
    point(middleOf(1, 0.0, 0.75) + QPointF(3, 2));
    EXPECT_EQ(panel.getAttachedWindow()->getFrame(), before.translated(3, -2));
}

TEST_F(HoverPanelTest, hidesInAGap) {
    pointAtBig();
    pointAtGap();
    EXPECT_FALSE(isShown());
}

TEST_F(HoverPanelTest, saysThatNothingIsPointedWhereThatIsWanted) {
    hints.forceShowHint = true;
    pointAtBig();
    pointAtGap();
    ASSERT_TRUE(isShown());
    EXPECT_EQ(text(), QStringLiteral("No selected item"));
    EXPECT_EQ(panel.getContentSize(), QSize(154, 21));
    EXPECT_FALSE(panel.getSizeLabel().isVisible());
    EXPECT_FALSE(panel.getDateLabel().isVisible());
    EXPECT_EQ(panel.getAttachedWindow()->getFrame().left(), QCursor::pos().x() + 14);
}

TEST_F(HoverPanelTest, staysAwayWithoutHints) {
    hints.showHint = false;
    hints.forceShowHint = true;
    pointAtBig();
    EXPECT_FALSE(isShown());
    pointAtGap();
    EXPECT_FALSE(isShown());
}

TEST_F(HoverPanelTest, hintsSwitchedOffTakeItAway) {
    pointAtBig();
    hints.showHint = false;
    point(middleOf(1, 0.0, 0.75));
    EXPECT_FALSE(isShown());
}

TEST_F(HoverPanelTest, hidesWhileThePointerIsOutside) {
    pointAtBig();
    QCursor::setPos(area.mapToGlobal(QPoint(-20, 50)));
    chart.ShowToolTipforItem(big);
    EXPECT_FALSE(isShown());
}

TEST_F(HoverPanelTest, pointingAtTheSameItemAgainBringsItBack) {
    pointAtBig();
    chart.hidePanel();
    EXPECT_FALSE(isShown());
    EXPECT_FALSE(chart.OperateMousePoint(middleOf(1, 0.0, 0.75), nullptr));
    EXPECT_TRUE(isShown());
    EXPECT_EQ(text(), QStringLiteral("big"));
}

TEST_F(HoverPanelTest, hidesAtAPressAlsoDuringAnAnimation) {
    pointAtBig();
    press(middleOf(1, 0.0, 0.75));
    EXPECT_FALSE(isShown());
    release(middleOf(1, 0.0, 0.75));
    chart.startDrillInAnimation(inner, 1, 0.75);
    EXPECT_TRUE(chart.isRDAnimating());
    chart.ShowToolTipforItem(big);
    EXPECT_TRUE(isShown());
    press(middleOf(1, 0.0, 0.75));
    EXPECT_FALSE(isShown());
    EXPECT_TRUE(chart.isRDAnimating());
    release(middleOf(1, 0.0, 0.75));
}

TEST_F(HoverPanelTest, anUnscannedVolumeTellsBothItsParts) {
    VolumeItem volume("/mnt/disk", "disk", 1000, 400, 0);
    show(&volume);
    point(middleOf(1, 0.0, 0.6));
    EXPECT_EQ(panel.getSizeCaption().text(), QStringLiteral("Occupied:"));
    EXPECT_EQ(panel.getSizeLabel().text(), QStringLiteral("600 bytes"));
    point(middleOf(1, 0.6, 0.4));
    EXPECT_EQ(panel.getSizeCaption().text(), QStringLiteral("Free:"));
    EXPECT_EQ(panel.getSizeLabel().text(), QStringLiteral("400 bytes"));
    point(chart.getLayout().m_Center);
    EXPECT_EQ(panel.getSizeCaption().text(), QStringLiteral("Size:"));
    EXPECT_EQ(text(), QStringLiteral("disk"));
    chart.setRoot(nullptr);
}

TEST_F(HoverPanelTest, aStrangerLeavesTheTextsAsTheyAre) {
    class Stranger final : public TreeObject {};
    Stranger stranger;
    pointAtBig();
    chart.ShowToolTipforItem(&stranger);
    EXPECT_TRUE(isShown());
    EXPECT_EQ(text(), QStringLiteral("big"));
}

TEST_F(HoverPanelTest, withoutAPanelOrHostNothingHappens) {
    chart.setPanelController(nullptr);
    chart.ShowToolTipforItem(big);
    chart.hidePanel();
    chart.setPanelController(&panel);
    chart.setHost(nullptr);
    chart.ShowToolTipforItem(big);
    EXPECT_FALSE(isShown());
}

/// In a window so wide that the panel lies over the chart, and with a mouse that moves as a hand moves it:
/// the window finds out itself what is under it.
class HoverPanelOverTheChart : public HoverPanelTest {
protected:
    HoverPanelOverTheChart() {
        area.resize(800, 300);
        settle();
    }
    void moveMouse(const QPoint& at) {
        QTest::mouseMove(&view, at);
        settle();
    }
    QRectF frame() const { return panel.getAttachedWindow()->getFrame(); }
    /// The upper edge of the big sector runs to the right from here.
    QPoint onBig() const { return inView(middleOf(1, 0.0, 0.02)); }
};

TEST_F(HoverPanelOverTheChart, comesBackBesideThePointerWhereItStoodItselfBefore) {
    const QPoint later = onBig() + QPoint(25, 0);
    moveMouse(onBig());
    ASSERT_TRUE(isShown());
    ASSERT_TRUE(frame().contains(view.mapToGlobal(later)));
    moveMouse(QPoint(3, 3));
    ASSERT_FALSE(isShown());
    moveMouse(later);
    ASSERT_TRUE(isShown());
    EXPECT_EQ(frame().left(), view.mapToGlobal(later).x() + 14);
    EXPECT_EQ(text(), QStringLiteral("big"));
}

TEST_F(HoverPanelOverTheChart, givesWayToAPointerThatReachesIt) {
    moveMouse(onBig());
    ASSERT_TRUE(isShown());
    for (int step = 16; step < 40; step += 4) {
        moveMouse(onBig() + QPoint(step, 0));
        EXPECT_TRUE(!isShown() || !frame().contains(QCursor::pos())) << step;
    }
}

/// The panel of the sector that the keyboard points at; the mouse is far away.
class HintOfTheKeys : public HoverPanelTest {
protected:
    HintOfTheKeys() {
        QCursor::setPos(0, 0);
        area.activateWindow();
        view.setFocus();
        settle();
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&view, key, modifiers);
    }
    /// Whether the panel stands right of a point of the chart.
    testing::AssertionResult standsBeside(const QPointF& point) const {
        if (!isShown())
            return testing::AssertionFailure() << "it is not shown";
        const QRectF frame = panel.getAttachedWindow()->getFrame();
        const QPointF wanted = view.mapToGlobal(view.getChartTransform().map(point));
        if (std::abs(frame.left() - wanted.x() - 14) <= 1 && std::abs(frame.center().y() - wanted.y()) <= 1)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << frame.left() << ", " << frame.center().y() << " is not beside "
                                           << wanted.x() << ", " << wanted.y();
    }
};

TEST_F(HintOfTheKeys, goesFromSectorToSectorWithTheArrows) {
    key(Qt::Key_Up);
    EXPECT_TRUE(standsBeside(chart.getLayout().m_Center));
    EXPECT_EQ(text(), QStringLiteral("mara"));
    key(Qt::Key_Up);
    EXPECT_TRUE(standsBeside(middleOf(1, 0.0, 0.75)));
    EXPECT_EQ(text(), QStringLiteral("big"));
    EXPECT_EQ(panel.getSizeLabel().text(), QStringLiteral("750 bytes"));
    key(Qt::Key_Right);
    EXPECT_TRUE(standsBeside(middleOf(1, 0.75, 0.25)));
    EXPECT_EQ(text(), QStringLiteral("inner"));
}

TEST_F(HintOfTheKeys, goesAlongWithItsSectorDuringAScan) {
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    key(Qt::Key_Right);
    tree.file(tree.root(), "new", 1000);
    tree.recount();
    chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
    ASSERT_EQ(chart.getCurPointedSector().m_pItem(), inner);
    EXPECT_TRUE(standsBeside(middleOf(1, chart.getCurPointedSector().m_dSkAngle(), 0.125)));
    EXPECT_EQ(text(), QStringLiteral("inner"));
}

TEST_F(HintOfTheKeys, goesAlongWithItsSectorIntoAnotherSize) {
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    area.resize(600, 500);
    settle();
    EXPECT_TRUE(standsBeside(middleOf(1, 0.0, 0.75)));
}

TEST_F(HintOfTheKeys, goesWhereItsSectorIsNoLongerSeen) {
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    tree.file(tree.root(), "huge", 1'000'000'000);
    tree.recount();
    chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
    ASSERT_EQ(chart.getCurPointedSector().m_pItem(), big);
    EXPECT_FALSE(isShown());
}

TEST_F(HintOfTheKeys, closedOneIsNotBroughtBackByAScan) {
    key(Qt::Key_Up);
    chart.hidePanel();
    chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
    EXPECT_FALSE(isShown());
}

TEST_F(HintOfTheKeys, leavesWithTheFocus) {
    key(Qt::Key_Up);
    ASSERT_TRUE(isShown());
    view.clearFocus();
    EXPECT_FALSE(isShown());
    chart.movePointedSector(SectorMove::Outwards);
    EXPECT_FALSE(isShown());
}

TEST_F(HintOfTheKeys, mousesOwnStaysWhenTheFocusLeaves) {
    pointAtBig();
    view.clearFocus();
    EXPECT_TRUE(isShown());
}

TEST_F(HintOfTheKeys, leavesForAMenu) {
    key(Qt::Key_Up);
    ASSERT_TRUE(isShown());
    key(Qt::Key_Menu);
    ASSERT_TRUE(QApplication::activePopupWidget());
    EXPECT_FALSE(isShown());
    QApplication::activePopupWidget()->close();
}

TEST_F(HintOfTheKeys, leavesForADrill) {
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    key(Qt::Key_Right);
    ASSERT_TRUE(isShown());
    key(Qt::Key_Return);
    EXPECT_TRUE(chart.isDrillAnimating());
    EXPECT_FALSE(isShown());
}

TEST_F(HintOfTheKeys, leavesForTheWayUp) {
    for (const auto& [which, modifiers] :
         {std::pair(Qt::Key_Backspace, Qt::KeyboardModifiers()),
          std::pair(Qt::Key_Home, Qt::KeyboardModifiers(Qt::ControlModifier))}) {
        chart.setRoot(inner);
        key(Qt::Key_Up);
        ASSERT_TRUE(isShown());
        key(which, modifiers);
        EXPECT_TRUE(chart.isDrillAnimating());
        EXPECT_FALSE(isShown());
        chart.releaseRDAnimation();
    }
}

TEST_F(HintOfTheKeys, isNotShownWithoutHints) {
    hints.showHint = false;
    key(Qt::Key_Up);
    EXPECT_FALSE(isShown());
}

TEST_F(HintOfTheKeys, givesWayToTheMouse) {
    key(Qt::Key_Up);
    pointAtBig();
    EXPECT_EQ(text(), QStringLiteral("big"));
    EXPECT_EQ(panel.getAttachedWindow()->getFrame().left(), QCursor::pos().x() + 14);
}

TEST_F(HintOfTheKeys, givesWayToAMouseThatMovesOnIt) {
    area.resize(800, 300);
    settle();
    const QPoint mouse = inView(chart.getLayout().m_Center) + QPoint(60, 0);
    QTest::mouseMove(&view, mouse);
    settle();
    key(Qt::Key_Up);
    key(Qt::Key_Down);
    ASSERT_EQ(chart.getCurPointedSector().m_pItem(), tree.root());
    QTest::mouseMove(&view, mouse + QPoint(1, 1));
    settle();
    EXPECT_TRUE(!isShown() || !panel.getAttachedWindow()->getFrame().contains(QCursor::pos()));
}

class PathClickTest : public HoverPanelTest {
protected:
    PathClickTest() {
        middle = tree.folder(inner, "middle");
        deep = tree.folder(middle, "deep");
        tree.file(deep, "f", 100);
        tree.recount();
        chart.setRoot(deep);
    }

    FolderSystemItem* middle = nullptr;
    FolderSystemItem* deep = nullptr;
};

TEST_F(PathClickTest, goesUpToTheFolderOfThePath) {
    chart.clickedonPathComponent("/home/mara/inner");
    EXPECT_TRUE(chart.isDrillAnimating());
    chart.releaseRDAnimation();
    EXPECT_EQ(chart.getRootObject(), inner);
    chart.clickedonPathComponent("/home/mara");
    chart.releaseRDAnimation();
    EXPECT_EQ(chart.getRootObject(), tree.root());
}

TEST_F(PathClickTest, aboveTheScannedFolderNothingHappens) {
    chart.clickedonPathComponent("/home");
    EXPECT_FALSE(chart.isDrillAnimating());
    EXPECT_EQ(chart.getRootObject(), deep);
    chart.setRoot(tree.root());
    chart.clickedonPathComponent("/home/mara");
    EXPECT_EQ(chart.getRootObject(), tree.root());
    chart.setRoot(nullptr);
    chart.clickedonPathComponent("/home/mara");
    EXPECT_EQ(chart.getRootObject(), nullptr);
}

TEST_F(PathClickTest, onTheRootItselfNothingHappens) {
    chart.clickedonPathComponent("/home/mara/inner/middle/deep");
    EXPECT_FALSE(chart.isDrillAnimating());
    EXPECT_EQ(chart.getRootObject(), deep);
}

} // namespace
} // namespace veltrano
