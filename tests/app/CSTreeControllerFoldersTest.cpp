// The main controller and the folders of the sidebar: scanning one by its path, favourites and recents.

#include "app/ControllerFixture.h"

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Paths = std::vector<std::string>;

class CSTreeControllerFoldersTest : public test::ControllerFixture {
protected:
    CSTreeControllerFoldersTest() { settings.setArray("FFolders", {}); }

    void keepFavorites(const Paths& paths) {
        settings.setArray("FFolders", paths);
        for (const std::string& path : paths)
            folderQuestions.addFolder(path);
    }
    void keepRecents(const Paths& paths) {
        settings.setArray("Recents", paths);
        for (const std::string& path : paths)
            folderQuestions.addFolder(path);
    }
    Paths favorites() { return settings.arrayForKey("FFolders").value_or(Paths{"not saved"}); }
    Paths recents() { return settings.arrayForKey("Recents").value_or(Paths{"not saved"}); }
    const FileSystemItem& itemAt(const std::string& path) { return *root()->getItemByFilePath(path); }
};

TEST_F(CSTreeControllerFoldersTest, chosenFolderBecomesTheFirstOfTheRecentsAndIsScanned) {
    keepRecents({"/old"});
    launch();
    controller->doScanFolder("/disk");
    EXPECT_EQ(controller->getProcessingVol(), "/disk");
    EXPECT_THAT(rows(), ElementsAre("/disk", "/old"));
    EXPECT_EQ(selected(), "/disk");
    EXPECT_THAT(recents(), ElementsAre("/disk", "/old"));
}

TEST_F(CSTreeControllerFoldersTest, chosenFavoriteIsScannedWithoutBecomingRecent) {
    keepFavorites({"/disk"});
    keepRecents({});
    launch();
    controller->doScanFolder("/disk");
    EXPECT_EQ(controller->getProcessingVol(), "/disk");
    EXPECT_THAT(rows(), ElementsAre("/disk"));
    EXPECT_THAT(recents(), IsEmpty());
}

TEST_F(CSTreeControllerFoldersTest, whatIsNoFolderIsNeitherListedNorScanned) {
    keepRecents({"/old"});
    launch();
    controller->doScanFolder("/disk/a/file");
    EXPECT_FALSE(controller->isProcessing());
    EXPECT_THAT(rows(), ElementsAre("/old"));
    EXPECT_THAT(alerts.questions, IsEmpty());
}

TEST_F(CSTreeControllerFoldersTest, folderChosenAmongVolumesOnlyShowsTheFolders) {
    mount("/one");
    launch();
    controller->setTableShowTypeVolumes();
    controller->doScanFolder("/disk");
    EXPECT_EQ(controller->getTableShowType(), CSTreeController::TableShowType::Folders);
    EXPECT_EQ(selected(), "/disk");
    EXPECT_TRUE(controller->isProcessing());
}

TEST_F(CSTreeControllerFoldersTest, favoriteChosenAmongVolumesOnlyShowsTheFolders) {
    mount("/one");
    keepFavorites({"/disk"});
    launch();
    controller->setTableShowTypeVolumes();
    controller->doScanFolder("/disk");
    EXPECT_EQ(controller->getTableShowType(), CSTreeController::TableShowType::Folders);
    EXPECT_TRUE(controller->isProcessing());
}

TEST_F(CSTreeControllerFoldersTest, recentScannedAgainMovesToTheTopWithAFreshEntry) {
    launch();
    scanFolderToItsEnd("/disk/a");
    const std::weak_ptr<TopLevelItem> first = sidebar().getObjectForSelectedRow();
    scanFolderToItsEnd("/disk/b");
    EXPECT_THAT(rows(), ElementsAre("/disk/b", "/disk/a"));
    scanFolderToItsEnd("/disk/a");
    EXPECT_THAT(rows(), ElementsAre("/disk/a", "/disk/b"));
    EXPECT_TRUE(first.expired());
}

TEST_F(CSTreeControllerFoldersTest, eleventhRecentPushesTheOldestOut) {
    keepRecents({"/0", "/1", "/2", "/3", "/4", "/5", "/6", "/7", "/8", "/9"});
    launch();
    controller->doScanFolder("/disk");
    EXPECT_THAT(recents(), ElementsAre("/disk", "/0", "/1", "/2", "/3", "/4", "/5", "/6", "/7", "/8"));
}

TEST_F(CSTreeControllerFoldersTest, choosingAnyFolderDuringAScanChangesNothing) {
    keepRecents({"/old"});
    launch();
    scanHeldUp();
    controller->doScanFolder("/disk/a");
    EXPECT_THAT(rows(), ElementsAre("/disk", "/old"));
    EXPECT_EQ(selected(), "/disk");
    EXPECT_EQ(controller->getProcessingVol(), "/disk");
}

TEST_F(CSTreeControllerFoldersTest, folderOfATreeBecomesAFavoriteAndIsSelected) {
    launch();
    scanFolderToItsEnd("/disk");
    EXPECT_FALSE(controller->isFolderFavorite(itemAt("/disk/b")));
    const auto tree = model->getRootItem();
    controller->addFolderToFavorite(itemAt("/disk/b"));
    EXPECT_THAT(favorites(), ElementsAre("/disk/b"));
    EXPECT_EQ(selected(), "/disk/b");
    EXPECT_TRUE(controller->isFolderFavorite(*tree->getItemByFilePath("/disk/b")));
}

TEST_F(CSTreeControllerFoldersTest, favoriteOrVolumeIsNotAddedAgainButSelected) {
    mount("/disk/a");
    keepFavorites({"/disk/b"});
    launch();
    scanFolderToItsEnd("/disk");
    const auto tree = model->getRootItem();
    controller->addFolderToFavorite(*tree->getItemByFilePath("/disk/b"));
    EXPECT_EQ(selected(), "/disk/b");
    controller->addFolderToFavorite(*tree->getItemByFilePath("/disk/a"));
    EXPECT_EQ(selected(), "/disk/a");
    EXPECT_THAT(favorites(), ElementsAre("/disk/b"));
}

TEST_F(CSTreeControllerFoldersTest, recentThatBecomesAFavoriteKeepsItsTree) {
    launch();
    scanFolderToItsEnd("/disk/b");
    const auto small = model->getRootItem();
    scanFolderToItsEnd("/disk");
    controller->addFolderToFavorite(itemAt("/disk/b"));
    EXPECT_THAT(favorites(), ElementsAre("/disk/b"));
    EXPECT_THAT(recents(), ElementsAre("/disk"));
    EXPECT_EQ(chart().getRootObject(), small.get());
}

TEST_F(CSTreeControllerFoldersTest, favoriteAddedAmongVolumesOnlyLeavesTheRows) {
    launch();
    scanFolderToItsEnd("/disk");
    mount("/one");
    controller->setTableShowTypeVolumes();
    controller->addFolderToFavorite(itemAt("/disk/b"));
    EXPECT_THAT(favorites(), ElementsAre("/disk/b"));
    EXPECT_THAT(rows(), ElementsAre("/one"));
}

TEST_F(CSTreeControllerFoldersTest, folderThatCannotBeAddedChangesNothing) {
    launch();
    scanFolderToItsEnd("/disk");
    folderQuestions.folders.erase("/disk/b");
    controller->addFolderToFavorite(itemAt("/disk/b"));
    EXPECT_THAT(favorites(), IsEmpty());
    EXPECT_EQ(selected(), "/disk");
}

TEST_F(CSTreeControllerFoldersTest, selectedRecentMovesToTheFavoritesWithItsTree) {
    launch();
    scanFolderToItsEnd("/disk");
    EXPECT_TRUE(controller->isSelectedRecentFolder());
    controller->actionAddToFavorites();
    EXPECT_THAT(favorites(), ElementsAre("/disk"));
    EXPECT_THAT(recents(), IsEmpty());
    EXPECT_EQ(selected(), "/disk");
    EXPECT_EQ(chart().getRootObject(), root());
    EXPECT_FALSE(controller->isSelectedRecentFolder());
}

TEST_F(CSTreeControllerFoldersTest, favoriteIsNoRecentToBeMoved) {
    keepFavorites({"/disk"});
    keepRecents({});
    launch();
    EXPECT_FALSE(controller->isSelectedRecentFolder());
    controller->actionAddToFavorites();
    EXPECT_THAT(favorites(), ElementsAre("/disk"));
}

TEST_F(CSTreeControllerFoldersTest, removedFolderHandsTheChartToTheNext) {
    launch();
    scanFolderToItsEnd("/disk/a");
    scanFolderToItsEnd("/disk/b");
    const std::weak_ptr<FolderSystemItem> tree = model->getRootItem();
    controller->actionRemoveFolder();
    EXPECT_THAT(rows(), ElementsAre("/disk/a"));
    EXPECT_THAT(recents(), ElementsAre("/disk/a"));
    EXPECT_EQ(selected(), "/disk/a");
    EXPECT_EQ(shown(), "/disk/a");
    model->ClearResultsTree();
    EXPECT_TRUE(QTest::qWaitFor([&] { return tree.expired(); }));
}

TEST_F(CSTreeControllerFoldersTest, folderInBothListsIsRemovedFromTheRecentsFirst) {
    keepFavorites({"/disk"});
    keepRecents({"/disk"});
    launch();
    controller->actionRemoveFolder();
    EXPECT_THAT(recents(), IsEmpty());
    EXPECT_THAT(favorites(), ElementsAre("/disk"));
}

TEST_F(CSTreeControllerFoldersTest, removingAVolumeOrNothingDoesNothing) {
    launch();
    controller->actionRemoveFolder();
    mount("/one");
    controller->actionRemoveFolder();
    EXPECT_THAT(rows(), ElementsAre("/one"));
}

TEST_F(CSTreeControllerFoldersTest, removedFolderUnderScanStopsItsScan) {
    keepRecents({"/old"});
    launch();
    scanHeldUp();
    controller->actionRemoveFolder();
    EXPECT_FALSE(controller->isProcessing());
    EXPECT_THAT(rows(), ElementsAre("/old"));
    EXPECT_EQ(shown(), "/old");
    gate->release();
    ASSERT_TRUE(loop.runUntil([&] { return !sounds.played.empty(); }));
    EXPECT_EQ(shown(), "/old");
    EXPECT_TRUE(scanButton->isEnabled());
}

TEST_F(CSTreeControllerFoldersTest, lastFolderThatIsRemovedUnderScanLeavesTheProgramAtRest) {
    launch();
    scanHeldUp();
    controller->actionRemoveFolder();
    gate->release();
    ASSERT_TRUE(loop.runUntil([&] { return !sounds.played.empty(); }));
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_FALSE(scanButton->isEnabled());
    EXPECT_FALSE(window->removeEntryButton().isEnabled());
    EXPECT_FALSE(menus().actionRemoveFolder->isEnabled());
    window->repaint();
}

TEST_F(CSTreeControllerFoldersTest, buttonBelowTheSidebarRemovesFoldersOnly) {
    mount("/one");
    keepRecents({"/disk", "/old"});
    launch();
    EXPECT_FALSE(window->removeEntryButton().isEnabled());
    controller->selectVolumeByName("/disk");
    EXPECT_TRUE(window->removeEntryButton().isEnabled());
    QTest::mouseClick(&window->removeEntryButton(), Qt::LeftButton);
    EXPECT_THAT(rows(), ElementsAre("/one", "/old"));
    controller->selectVolumeByName("/one");
    EXPECT_FALSE(window->removeEntryButton().isEnabled());
}

} // namespace
} // namespace veltrano
