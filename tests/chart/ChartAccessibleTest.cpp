#include "chart/ChartAccessible.h"
#include "chart/ChartFixture.h"
#include "tree/TopLevelItem.h"

namespace veltrano {
namespace {

using test::ChartTest;
using test::TreeBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

/// What assistive programs would have been told, as "what name".
std::vector<std::string> g_told;

std::string nameOf(QAccessible::Event event) {
    switch (event) {
    case QAccessible::Focus:
        return "focus";
    case QAccessible::SelectionAdd:
        return "selected";
    case QAccessible::SelectionWithin:
        return "selection";
    case QAccessible::DescriptionChanged:
        return "description";
    case QAccessible::ObjectReorder:
        return "items";
    default:
        return "other";
    }
}

void note(QAccessibleEvent& event) {
    QAccessibleInterface* const about = event.accessibleInterface();
    if (about && (about->role() == QAccessible::Tree || about->role() == QAccessible::TreeItem))
        g_told.push_back(nameOf(event.type()) + " " + about->text(QAccessible::Name).toStdString());
}

//  /v ─┬─ a (50) ── x (25), tiny (0), y (25)
//      └─ f (50)
class AccessibleChart : public ChartTest {
protected:
    AccessibleChart() {
        a = tree.folder(tree.root(), "a");
        x = tree.file(a, "x", 25);
        tree.file(a, "tiny", 0);
        tree.file(a, "y", 25);
        f = tree.file(tree.root(), "f", 50);
        tree.recount();
        host.showsLabel = true;
        show(tree.root());
        view.setAccessibleListener(note);
        area.activateWindow();
        view.setFocus();
        settle();
        g_told.clear();
    }
    ~AccessibleChart() override {
        if (QWidget* const menu = QApplication::activePopupWidget())
            menu->close();
    }

    QAccessibleInterface& face() const { return *QAccessible::queryAccessibleInterface(&view); }
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (int index = 0; index < face().childCount(); ++index)
            names.push_back(face().child(index)->text(QAccessible::Name).toStdString());
        return names;
    }
    /// The item of this name.
    QAccessibleInterface* item(const std::string& name) const {
        for (int index = 0; index < face().childCount(); ++index) {
            if (face().child(index)->text(QAccessible::Name).toStdString() == name)
                return face().child(index);
        }
        return nullptr;
    }
    void doAction(const std::string& name, const QString& action) const {
        item(name)->actionInterface()->doAction(action);
    }

    TreeBuilder tree = TreeBuilder::volume("/v", 200, 100);
    FolderSystemItem* a;
    FileSystemItem* x;
    FileSystemItem* f;
};

TEST_F(AccessibleChart, isATreeWithAnItemForTheDiscAndEachVisibleSector) {
    EXPECT_EQ(face().role(), QAccessible::Tree);
    EXPECT_EQ(face().text(QAccessible::Name), "Chart");
    EXPECT_THAT(names(), ElementsAre("v", "a", "x", "y", "f"));
    EXPECT_EQ(item("a")->role(), QAccessible::TreeItem);
    EXPECT_EQ(item("a")->parent(), &face());
    EXPECT_EQ(face().indexOfChild(item("y")), 3);
    EXPECT_EQ(face().indexOfChild(&face()), -1);
    EXPECT_EQ(face().child(5), nullptr);
    EXPECT_EQ(face().child(-1), nullptr);
}

TEST_F(AccessibleChart, itemTellsSizeShareAndAge) {
    EXPECT_EQ(item("f")->text(QAccessible::Description), "50 bytes, 50.0 %, changed within a day");
    EXPECT_EQ(item("a")->text(QAccessible::Description), "50 bytes, 50.0 %, changed within a day, folder");
}

TEST_F(AccessibleChart, itemIsFoundWhereItIsSeen) {
    const QPoint onF = view.mapToGlobal(inView(middleOf(1, 0.5, 0.5)));
    EXPECT_EQ(face().childAt(onF.x(), onF.y()), item("f"));
    EXPECT_TRUE(item("f")->rect().contains(onF));
    const QPoint corner = view.mapToGlobal(QPoint(1, 1));
    EXPECT_EQ(face().childAt(corner.x(), corner.y()), nullptr);
}

TEST_F(AccessibleChart, statesFollowThePointAndTheSelection) {
    EXPECT_TRUE(item("a")->state().expandable);
    EXPECT_FALSE(item("f")->state().expandable);
    EXPECT_TRUE(item("f")->state().focusable);
    EXPECT_FALSE(item("f")->state().selected);
    chart.selectItem(f);
    EXPECT_TRUE(item("f")->state().selected);
    chart.setHiliteOnRadial(x);
    EXPECT_TRUE(item("x")->state().focused);
    EXPECT_EQ(face().focusChild(), item("x"));
    view.clearFocus();
    EXPECT_FALSE(item("x")->state().focused);
}

TEST_F(AccessibleChart, itemIsTheSameWhileItIsVisible) {
    QAccessibleInterface* const before = item("a");
    const QRect bounds = before->rect();
    tree.file(tree.root(), "new", 100);
    tree.recount();
    chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
    EXPECT_EQ(item("a"), before);
    EXPECT_NE(before->rect(), bounds);
    EXPECT_THAT(names(), ElementsAre("v", "a", "x", "y", "f", "new"));
}

TEST_F(AccessibleChart, itemOfATreeThatIsGoneIsInvalid) {
    QAccessibleInterface* const old = item("a");
    tree = TreeBuilder::volume("/w", 100, 0);
    chart.setRoot(nullptr);
    EXPECT_FALSE(old->isValid());
    EXPECT_TRUE(old->state().invalid);
    EXPECT_EQ(old->text(QAccessible::Name), QString());
    EXPECT_TRUE(old->rect().isNull());
    old->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(face().childCount(), 0);
}

TEST_F(AccessibleChart, partsOfAnUnscannedVolumeAreItems) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    EXPECT_THAT(names(), ElementsAre("u", "Occupied", "Free"));
    QAccessibleInterface* const disc = item("u");
    chart.setRoot(nullptr);
    EXPECT_FALSE(disc->isValid());
}

TEST_F(AccessibleChart, pressDrills) {
    EXPECT_EQ(item("a")->actionInterface()->localizedActionName(QAccessibleActionInterface::pressAction()),
              "Drill");
    doAction("a", QAccessibleActionInterface::pressAction());
    loop.advance(2);
    EXPECT_EQ(chart.getRootObject()->getObject(), a);
}

TEST_F(AccessibleChart, menuOpensOnTheItem) {
    doAction("f", QAccessibleActionInterface::showMenuAction());
    EXPECT_TRUE(QApplication::activePopupWidget());
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), f);
}

TEST_F(AccessibleChart, unknownActionDoesNothing) {
    doAction("f", QStringLiteral("Explode"));
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), nullptr);
    EXPECT_THAT(item("f")->actionInterface()->actionNames(), ElementsAre("Press", "ShowMenu", "SetFocus"));
}

TEST_F(AccessibleChart, focusFollowsTheKeysAndNotTheMouse) {
    pointAt(middleOf(1, 0.5, 0.5));
    EXPECT_THAT(g_told, IsEmpty());
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_Up);
    EXPECT_THAT(g_told, ElementsAre("focus a", "focus x"));
}

TEST_F(AccessibleChart, selectionIsTold) {
    FileSystemItem* const items[] = {f, x};
    chart.selectItems(items);
    EXPECT_THAT(g_told, ElementsAre("selected f", "selected x", "selection Chart"));
}

TEST_F(AccessibleChart, anotherRootIsTold) {
    show(a);
    EXPECT_THAT(g_told, ElementsAre("items Chart", "description Chart"));
    EXPECT_EQ(face().text(QAccessible::Description), "a, 50 bytes, 100.0 %, changed within a day, folder");
}

TEST_F(AccessibleChart, growthIsToldOnceInFiveSeconds) {
    for (int tick = 0; tick < 49; ++tick) {
        chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
        loop.advance(0.1);
    }
    EXPECT_THAT(g_told, IsEmpty());
    for (int tick = 0; tick < 20; ++tick) {
        chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
        loop.advance(0.1);
    }
    EXPECT_THAT(g_told, ElementsAre("items Chart", "description Chart"));
}

TEST_F(AccessibleChart, nothingIsToldWhenNobodyListens) {
    view.setAccessibleListener({});
    show(a);
    chart.selectItem(x);
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_THAT(g_told, IsEmpty());
}

} // namespace
} // namespace veltrano
