#include "chart/ChartMenu.h"
#include "chart/ChartFixture.h"
#include "tree/SpecialItems.h"
#include "tree/TopLevelItem.h"

#include <QClipboard>
#include <QContextMenuEvent>

namespace veltrano {
namespace {

using test::ChartTest;
using test::TreeBuilder;
using testing::ElementsAre;
using testing::IsEmpty;
using Paths = std::vector<std::string>;

//  /v ─┬─ a (50) ── x (25), deep (25) ── z (25)
//      └─ f (50)
class ContextMenu : public ChartTest {
protected:
    ContextMenu() {
        a = tree.folder(tree.root(), "a");
        x = tree.file(a, "x", 25);
        deep = tree.folder(a, "deep");
        tree.file(deep, "z", 25);
        f = tree.file(tree.root(), "f", 50);
        tree.recount();
        show(tree.root());
    }
    ~ContextMenu() override {
        if (QWidget* const menu = QApplication::activePopupWidget())
            menu->close();
    }

    QPointF centre() const { return chart.getLayout().m_Center; }
    QPointF onA() const { return middleOf(1, 0.0, 0.5); }
    QPointF onF() const { return middleOf(1, 0.5, 0.5); }

    /// The titles that are to be seen, "-" for a line, in brackets what is disabled, with a mark what is
    /// checked.
    static std::vector<std::string> titlesOf(const ChartMenu& menu) {
        std::vector<std::string> titles;
        for (const QAction* entry : menu.actions()) {
            if (entry->isSeparator() || !entry->isVisible())
                continue;
            std::string title = entry->text().toStdString();
            if (entry->isChecked())
                title += " *";
            titles.push_back(entry->isEnabled() ? title : "(" + title + ")");
        }
        return titles;
    }

    ChartMenu* openBy(const QPointF& point) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, inView(point), view.mapToGlobal(inView(point)));
        QApplication::sendEvent(&view, &event);
        return qobject_cast<ChartMenu*>(QApplication::activePopupWidget());
    }

    static void choose(ChartMenu& menu, ChartAction action) {
        menu.setActiveAction(menu.getEntry(action));
        QTest::keyClick(&menu, Qt::Key_Return);
    }

    TreeBuilder tree = TreeBuilder::volume("/v", 200, 100);
    FolderSystemItem* a;
    FileSystemItem* x;
    FolderSystemItem* deep;
    FileSystemItem* f;
};

TEST_F(ContextMenu, itemOfATopRootHasTheVolumesMenu) {
    ChartMenu* const menu = openBy(onA());
    ASSERT_TRUE(menu);
    EXPECT_THAT(titlesOf(*menu),
                ElementsAre("Show in File Manager", "Get Info", "Copy Path", "Add to Favorites"));
}

TEST_F(ContextMenu, gapOfATopRootHasTheVolumesMenuToo) {
    pointAt(onF());
    const ChartMenu* const inGap = chart.getContextMenuByPoint(QPointF(2, 2));
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), nullptr);
    EXPECT_EQ(inGap, chart.getContextMenuByPoint(onA()));
}

TEST_F(ContextMenu, discOfATopRootHasItsOwnMenu) {
    ChartMenu* const menu = openBy(centre());
    ASSERT_TRUE(menu);
    EXPECT_THAT(titlesOf(*menu), ElementsAre("Show in File Manager", "Get Info", "Copy Path"));
}

TEST_F(ContextMenu, partsOfAVolumeHaveTheMenuOfTheDisc) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    const ChartMenu* const onDisc = chart.getContextMenuByPoint(centre());
    EXPECT_EQ(chart.getContextMenuByPoint(middleOf(1, 0.2, 0.0)), onDisc);
    EXPECT_EQ(chart.getContextMenuByPoint(middleOf(1, 0.7, 0.0)), onDisc);
    chart.setRoot(nullptr);
}

TEST_F(ContextMenu, drilledRootHasOneMenuForAll) {
    show(a);
    ChartMenu* const menu = openBy(centre());
    ASSERT_TRUE(menu);
    EXPECT_THAT(titlesOf(*menu), ElementsAre("Show in File Manager", "Get Info", "Copy Path",
                                             "Add to Favorites", "Show Disk Structure"));
    EXPECT_EQ(chart.getContextMenuByPoint(middleOf(1, 0.0, 0.5)), menu);
    EXPECT_EQ(chart.getContextMenuByPoint(QPointF(2, 2)), menu);
}

TEST_F(ContextMenu, thereIsNoneWithoutRootAndDuringItsScan) {
    host.processing = "/v";
    EXPECT_EQ(openBy(onA()), nullptr);
    host.processing = "/elsewhere";
    EXPECT_NE(openBy(onA()), nullptr);
    host.processing.reset();
    show(nullptr);
    EXPECT_EQ(chart.getContextMenuByPoint(onA()), nullptr);
    EXPECT_EQ(chart.getContextMenuForPointedSector(), nullptr);
}

TEST_F(ContextMenu, pointsAtWhatItIsOpenedOn) {
    ASSERT_TRUE(chart.getContextMenuByPoint(middleOf(2, 0.25, 0.25)));
    EXPECT_EQ(chart.getCurPointedSector().m_pItem(), deep);
    EXPECT_EQ(chart.getCurPointedSector().m_nSubLevel(), 2);
    EXPECT_EQ(chart.getCurPointedSector().m_dSkAngle(), 0.25);
}

TEST_F(ContextMenu, isAllowedDuringAnAnimation) {
    chart.startDrillInAnimation(a, 1, 0.0);
    EXPECT_NE(chart.getContextMenuByPoint(onF()), nullptr);
}

TEST_F(ContextMenu, panelsAreOfferedAndMarkedWhereThereAreTwo) {
    host.segment = InfoSegment::Information;
    EXPECT_THAT(
        titlesOf(*chart.getContextMenuByPoint(centre())),
        ElementsAre("Show in File Manager", "Get Info", "Copy Path", "Biggest Files", "Information *"));
    host.segment = InfoSegment::BiggestFiles;
    ChartMenu* const menu = openBy(centre());
    ASSERT_TRUE(menu);
    EXPECT_THAT(titlesOf(*menu), ElementsAre("Show in File Manager", "Get Info", "Copy Path",
                                             "Biggest Files *", "Information"));
    choose(*menu, ChartAction::Switch2InfoPanel);
    EXPECT_EQ(host.segment, InfoSegment::Information);
    choose(*openBy(centre()), ChartAction::Switch2BiggestTable);
    EXPECT_EQ(host.segment, InfoSegment::BiggestFiles);
}

TEST_F(ContextMenu, showsThePointedItemInTheFileManager) {
    choose(*openBy(onF()), ChartAction::RevealInFinder);
    EXPECT_THAT(host.shown, ElementsAre(Paths{"/v/f"}));
}

TEST_F(ContextMenu, tellsAboutThePointedAndEachOtherSelectedItem) {
    FileSystemItem* const items[] = {f, x};
    chart.selectItems(items);
    choose(*openBy(onF()), ChartAction::GetInformation);
    EXPECT_THAT(host.informed, ElementsAre(Paths{"/v/f", "/v/a/x"}));
}

TEST_F(ContextMenu, worksOnTheRootWhenNothingIsPointedAtOrSelected) {
    choose(*openBy(QPointF(2, 2)), ChartAction::RevealInFinder);
    EXPECT_THAT(host.shown, ElementsAre(Paths{"/v"}));
}

TEST_F(ContextMenu, worksOnTheSelectionWhenNothingIsPointedAt) {
    chart.selectItem(x);
    choose(*openBy(QPointF(2, 2)), ChartAction::RevealInFinder);
    EXPECT_THAT(host.shown, ElementsAre(Paths{"/v/a/x"}));
}

TEST_F(ContextMenu, copiesThePath) {
    choose(*openBy(onF()), ChartAction::Copy);
    EXPECT_EQ(QApplication::clipboard()->text(), "/v/f");
}

TEST_F(ContextMenu, showsTheDisksStructureFromAnyDepth) {
    show(deep);
    choose(*openBy(centre()), ChartAction::ShowDiskStructure);
    loop.advance(2);
    EXPECT_EQ(chart.getRootObject()->getObject(), tree.root());
}

TEST_F(ContextMenu, diskStructureOfATopRootIsDisabled) {
    EXPECT_FALSE(chart.validateMenuItem(ChartAction::ShowDiskStructure, chart.getTarget()).bEnabled);
    chart.showDiskStructure();
    EXPECT_FALSE(chart.isRDAnimating());
    show(a);
    EXPECT_TRUE(chart.validateMenuItem(ChartAction::ShowDiskStructure, chart.getTarget()).bEnabled);
}

TEST_F(ContextMenu, actsOnWhatItWasOpenedOnAfterAnotherScan) {
    show(a);
    host.processing = "/other";
    ChartMenu* const menu = openBy(middleOf(1, 0.0, 0.5));
    ASSERT_TRUE(menu);
    {
        TreeBuilder other("/other");
        other.file(other.root(), "new", 10);
        other.recount();
        // All that held the old tree lets go of it.
        tree = TreeBuilder::volume("/w", 100, 0);
        show(other.root());
        choose(*menu, ChartAction::RevealInFinder);
        EXPECT_THAT(host.shown, ElementsAre(Paths{"/v/a/x"}));
        host.processing.reset();
        chart.setRoot(nullptr);
    }
}

TEST_F(ContextMenu, diskStructureOfATreeThatIsGoneStaysGone) {
    show(a);
    ChartMenu* const menu = openBy(centre());
    ASSERT_TRUE(menu);
    TreeBuilder other("/other");
    other.file(other.root(), "new", 10);
    other.recount();
    show(other.root());
    choose(*menu, ChartAction::ShowDiskStructure);
    loop.advance(2);
    EXPECT_EQ(chart.getRootObject()->getObject(), other.root());
    chart.setRoot(nullptr);
}

TEST_F(ContextMenu, closedOneKeepsNoTree) {
    show(a);
    ChartMenu* const menu = openBy(centre());
    ASSERT_TRUE(menu);
    const std::weak_ptr<FolderSystemItem> old = TreeStorage::hold(a);
    show(nullptr);
    tree = TreeBuilder::volume("/w", 100, 0);
    EXPECT_FALSE(old.expired());
    menu->close();
    settle();
    EXPECT_TRUE(old.expired());
}

// Favourites.

TEST_F(ContextMenu, folderBecomesAFavouriteOnce) {
    choose(*openBy(onA()), ChartAction::AddToFavorite);
    EXPECT_EQ(host.favorite, "/v/a");
    ASSERT_TRUE(chart.getContextMenuByPoint(onA()));
    EXPECT_EQ(chart.getItemForAddToFavorite(), nullptr);
    EXPECT_FALSE(chart.validateMenuItem(ChartAction::AddToFavorite, chart.getTarget()).bEnabled);
}

TEST_F(ContextMenu, favouriteIsThePointedItemEvenIfItCanBeNone) {
    chart.selectItem(a);
    pointAt(onF());
    EXPECT_EQ(chart.getItemForAddToFavorite(), nullptr);
    chart.addToFavorite();
    EXPECT_EQ(host.favorite, "");
}

TEST_F(ContextMenu, favouriteIsTheFirstSelectedFolderElseTheRoot) {
    show(a);
    chart.selectItem(deep);
    EXPECT_EQ(chart.getItemForAddToFavorite(), deep);
    chart.selectItem(x);
    EXPECT_EQ(chart.getItemForAddToFavorite(), a);
    chart.cleanSelectedItems();
    EXPECT_EQ(chart.getItemForAddToFavorite(), a);
}

TEST_F(ContextMenu, volumePackageHiddenAndTrashedFolderAreNoFavourites) {
    EXPECT_EQ(chart.getItemForAddToFavorite(), nullptr);
    chart.setHiliteOnRadial(a);
    EXPECT_EQ(chart.getItemForAddToFavorite(), a);
    a->setHiddenFlag(true);
    EXPECT_EQ(chart.getItemForAddToFavorite(), nullptr);
    a->setHiddenFlag(false);
    a->setTrashFlag(true);
    EXPECT_EQ(chart.getItemForAddToFavorite(), nullptr);
    chart.setHiliteOnRadial(deep);
    EXPECT_EQ(chart.getItemForAddToFavorite(), nullptr);
    chart.setHiliteOnRadial(tree.package(tree.root(), "pack", 10));
    EXPECT_EQ(chart.getItemForAddToFavorite(), nullptr);
}

TEST_F(ContextMenu, entryOrPartIsNoFavourite) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    EXPECT_EQ(chart.getItemForAddToFavorite(), nullptr);
    pointAt(middleOf(1, 0.2, 0.0));
    EXPECT_EQ(chart.getItemForAddToFavorite(), nullptr);
    chart.setRoot(nullptr);
}

} // namespace
} // namespace veltrano
