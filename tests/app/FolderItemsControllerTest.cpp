// The favourites and the recents: their lists, how they load and how they are saved.

#include "app/FFoldersController.h"
#include "app/QtSettings.h"
#include "app/RecentsController.h"
#include "platform/linux/LinuxFolderQuestions.h"
#include "support/FakeFolderQuestions.h"
#include "support/FakeMainLoop.h"
#include "support/MapSettings.h"
#include "support/TestDir.h"
#include "support/TreeBuilder.h"

#include <gmock/gmock.h>

#include <limits>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using WithCheck = FolderItemsController::WithCheck;
using Strings = std::vector<std::string>;

Strings pathsOf(const FolderItemsController& list) {
    Strings paths;
    for (const auto& entry : list.getFoldersArray())
        paths.push_back(entry->getFullPath());
    return paths;
}

/// A tree as a scan leaves it at an entry.
std::shared_ptr<FolderSystemItem> scannedTree() {
    return TreeStorage::hold(test::TreeBuilder("/a").root());
}

struct FolderLists : testing::Test {
    FolderLists() {
        for (const char* path : {"/usr", "/home/me", "/home/me/Downloads", "/a", "/b", "/c", "/d"})
            questions.addFolder(path);
    }

    void fillRecents(int count) {
        for (int number = 1; number <= count; ++number) {
            const std::string path = "/recent/" + std::to_string(number);
            questions.addFolder(path);
            ASSERT_TRUE(recents.addFolderToList(path, WithCheck::Yes));
        }
    }

    MapSettings settings;
    FakeFolderQuestions questions;
    FFoldersController favourites{settings, questions, {"/usr", "/home/me", "/home/me/Downloads"}};
    RecentsController recents{settings, questions};
};

using FolderItemsControllerTest = FolderLists;
using FFoldersControllerTest = FolderLists;
using RecentsControllerTest = FolderLists;

TEST_F(FolderItemsControllerTest, anEntryIsAFolderWithTheLastNameOfItsPathAndNoSizes) {
    const auto entry = favourites.createFolderItemByPath("/home/me");
    ASSERT_TRUE(entry);
    EXPECT_TRUE(entry->isFolder());
    EXPECT_EQ(entry->getFullPath(), "/home/me");
    EXPECT_EQ(entry->getName(), "me");
    EXPECT_EQ(entry->getsize(), 0);
    EXPECT_EQ(entry->getfsize(), 0);
    EXPECT_EQ(entry->getnodescount(), 0);
    EXPECT_FALSE(entry->isScanned());
    EXPECT_EQ(favourites.foldersCount(), 0U) << "made, not added";
}

TEST_F(FolderItemsControllerTest, anEntryKnowsTheDatesOfItsFolder) {
    const PathFacts facts{.modified = catalogueDateFromUnixTime(1'700'000'000, 0), .valence = 3};
    questions.addFolder("/dated", facts);
    const auto entry = favourites.addFolderToList("/dated", WithCheck::Yes);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->getModDate(), EntryDate(std::chrono::sys_seconds(std::chrono::seconds(1'700'000'000))));
    EXPECT_EQ(entry->getCreatedDate(), std::nullopt);
    EXPECT_EQ(entry->getValence(), 3);
}

TEST_F(FolderItemsControllerTest, aPathThatIsNoFolderGetsNoEntry) {
    EXPECT_EQ(favourites.createFolderItemByPath("/gone"), nullptr);
    EXPECT_EQ(favourites.addFolderToList("/gone", WithCheck::Yes), nullptr);
    EXPECT_EQ(favourites.addFolderToList("/gone", WithCheck::No), nullptr);
    EXPECT_EQ(favourites.foldersCount(), 0U);
}

TEST_F(FolderItemsControllerTest, aPathIsAddedOnceWithTheCheckOn) {
    const auto first = favourites.addFolderToList("/a", WithCheck::Yes);
    EXPECT_EQ(favourites.addFolderToList("/a", WithCheck::Yes), nullptr);
    EXPECT_THAT(favourites.getFoldersArray(), ElementsAre(first));
}

TEST_F(FolderItemsControllerTest, aPathIsAddedAgainWithTheCheckOff) {
    favourites.addFolderToList("/a", WithCheck::No);
    EXPECT_TRUE(favourites.addFolderToList("/a", WithCheck::No));
    EXPECT_THAT(pathsOf(favourites), ElementsAre("/a", "/a"));
}

TEST_F(FolderItemsControllerTest, entriesStandInTheOrderOfAdding) {
    for (const char* path : {"/c", "/a", "/b"})
        favourites.addFolderToList(path, WithCheck::Yes);
    EXPECT_THAT(pathsOf(favourites), ElementsAre("/c", "/a", "/b"));
    EXPECT_EQ(favourites.getFolderItemByIndex(1)->getPath(), "/a");
    EXPECT_EQ(favourites.getFolderItemByIndex(3), nullptr);
}

TEST_F(FolderItemsControllerTest, theFirstEntryOfAPathIsFound) {
    const auto first = favourites.addFolderToList("/a", WithCheck::No);
    favourites.addFolderToList("/a", WithCheck::No);
    EXPECT_EQ(favourites.getFolderItemByPath("/a"), first);
    EXPECT_EQ(favourites.getFolderItemByPath("/A"), nullptr);
    EXPECT_EQ(favourites.getFolderItemByPath(""), nullptr);
}

TEST_F(FolderItemsControllerTest, anIndexIsToldByTheObject) {
    favourites.addFolderToList("/a", WithCheck::No);
    const auto second = favourites.addFolderToList("/a", WithCheck::No);
    const auto stranger = favourites.createFolderItemByPath("/a");
    EXPECT_EQ(favourites.getIndexOfItem(second.get()), 1U);
    EXPECT_EQ(favourites.getIndexOfItem(stranger.get()), std::nullopt);
    EXPECT_EQ(favourites.getIndexOfItem(nullptr), std::nullopt);
}

TEST_F(FolderItemsControllerTest, removingAPathRemovesEveryEntryOfIt) {
    for (const char* path : {"/a", "/b", "/a"})
        favourites.addFolderToList(path, WithCheck::No);
    favourites.removeFolderFromList(favourites.getFolderItemByIndex(0)->getPath());
    EXPECT_THAT(pathsOf(favourites), ElementsAre("/b"));
    favourites.removeFolderFromList("/never there");
    EXPECT_THAT(pathsOf(favourites), ElementsAre("/b"));
}

TEST_F(FolderItemsControllerTest, removingAnEntryLeavesItsTwin) {
    const auto first = favourites.addFolderToList("/a", WithCheck::No);
    const auto twin = favourites.addFolderToList("/a", WithCheck::No);
    favourites.removeFolderItemFromList(first.get());
    EXPECT_THAT(favourites.getFoldersArray(), ElementsAre(twin));
    favourites.removeFolderItemFromList(nullptr);
    EXPECT_EQ(favourites.foldersCount(), 1U);
}

TEST_F(FolderItemsControllerTest, anEntryMovesBetweenListsWithItsTree) {
    const auto entry = recents.addFolderToList("/a", WithCheck::Yes);
    const auto tree = scannedTree();
    entry->setScannedRoot(tree);
    entry->setScanCompleted(true);
    EXPECT_EQ(favourites.addFolderItemToList(entry), entry);
    recents.removeFolderItemFromList(entry.get());
    EXPECT_THAT(pathsOf(recents), IsEmpty());
    EXPECT_EQ(favourites.getFolderItemByPath("/a")->getScannedRoot(), tree);
    EXPECT_TRUE(favourites.getFolderItemByPath("/a")->isScanCompleted());
}

TEST_F(FolderItemsControllerTest, noEntryAddsNothing) {
    EXPECT_EQ(favourites.addFolderItemToList(nullptr), nullptr);
    EXPECT_EQ(favourites.foldersCount(), 0U);
}

TEST_F(FolderItemsControllerTest, whatWasSavedIsLoadedInItsOrder) {
    for (const char* path : {"/c", "/a", "/b"})
        favourites.addFolderToList(path, WithCheck::Yes);
    EXPECT_TRUE(favourites.saveToPreferences());
    FFoldersController next(settings, questions, {});
    EXPECT_TRUE(next.initFromPreferences());
    EXPECT_THAT(pathsOf(next), ElementsAre("/c", "/a", "/b"));
}

TEST_F(FolderItemsControllerTest, pathsThatAreGoneFallOutAtLoadAndAreGoneAtTheNextSave) {
    settings.setArray("FFolders", {"/a", "/gone", "/b"});
    EXPECT_TRUE(favourites.initFromPreferences());
    EXPECT_THAT(pathsOf(favourites), ElementsAre("/a", "/b"));
    favourites.saveToPreferences();
    EXPECT_THAT(settings.arrayForKey("FFolders"), Optional(ElementsAre("/a", "/b")));
}

TEST_F(FolderItemsControllerTest, pathsThatKeepSilentKeepTheirEntriesAndAreSavedAgain) {
    questions.silent.insert("/server/away");
    settings.setArray("FFolders", {"/a", "/server/away"});
    EXPECT_TRUE(favourites.initFromPreferences());
    favourites.saveToPreferences();
    EXPECT_THAT(settings.arrayForKey("FFolders"), Optional(ElementsAre("/a", "/server/away")));
}

TEST_F(FolderItemsControllerTest, aSilentPathThatAnswersLateGetsItsDates) {
    questions.silent.insert("/server/away");
    settings.setArray("FFolders", {"/server/away", "/a"});
    ASSERT_TRUE(favourites.initFromPreferences());
    EXPECT_EQ(favourites.getFolderItemByPath("/server/away")->getModDate(), std::nullopt);
    const PathFacts facts{.modified = catalogueDateFromUnixTime(1'700'000'000, 0)};
    questions.answerLate("/server/away", {FolderAnswer::Folder, facts});
    EXPECT_TRUE(favourites.getFolderItemByPath("/server/away")->getModDate().has_value());
    EXPECT_EQ(favourites.getFolderItemByPath("/a")->getModDate(), std::nullopt);
}

TEST_F(FolderItemsControllerTest, aSilentPathThatTurnsOutGoneStaysUntilTheNextStart) {
    questions.silent.insert("/server/away");
    settings.setArray("FFolders", {"/server/away"});
    ASSERT_TRUE(favourites.initFromPreferences());
    questions.answerLate("/server/away", {FolderAnswer::NoFolder, {}});
    EXPECT_THAT(pathsOf(favourites), ElementsAre("/server/away"));
    FFoldersController next(settings, questions, {});
    EXPECT_TRUE(next.initFromPreferences());
    EXPECT_THAT(pathsOf(next), IsEmpty());
}

TEST_F(FolderItemsControllerTest, aListThatIsGoneHearsNoLateAnswer) {
    { const RecentsController gone(settings, questions); }
    EXPECT_EQ(questions.observers.size(), 2U) << "those of the two lists of the test";
}

TEST_F(FolderItemsControllerTest, loadingAsksAllPathsAtOnce) {
    Strings paths;
    for (int number = 0; number < 20'000; ++number) {
        paths.push_back("/many/" + std::to_string(number));
        questions.addFolder(paths.back());
    }
    settings.setArray("FFolders", paths);
    EXPECT_TRUE(favourites.initFromPreferences());
    EXPECT_THAT(questions.asked, ElementsAre(paths));
    EXPECT_EQ(pathsOf(favourites), paths);
}

TEST_F(FolderItemsControllerTest, doublesInTheSavedListStay) {
    settings.setArray("FFolders", {"/a", "/b", "/a"});
    EXPECT_TRUE(favourites.initFromPreferences());
    EXPECT_THAT(pathsOf(favourites), ElementsAre("/a", "/b", "/a"));
}

TEST_F(FolderItemsControllerTest, anEmptySavedListIsLoaded) {
    settings.setArray("FFolders", {});
    EXPECT_TRUE(favourites.initFromPreferences());
    EXPECT_EQ(favourites.foldersCount(), 0U);
}

TEST_F(FolderItemsControllerTest, withoutASavedArrayNothingIsLoaded) {
    EXPECT_FALSE(favourites.initFromPreferences());
    settings.setString("FFolders", "/a");
    EXPECT_FALSE(favourites.initFromPreferences());
    EXPECT_EQ(favourites.foldersCount(), 0U);
}

TEST_F(FolderItemsControllerTest, pathsThatAreNoUtf8AreSavedByteForByte) {
    const std::string path = "/home/m\xFCller\n";
    questions.addFolder(path);
    EXPECT_TRUE(recents.addFolderToList(path, WithCheck::Yes));
    recents.saveToPreferences();
    EXPECT_THAT(settings.arrayForKey("Recents"), Optional(ElementsAre(path)));
}

TEST_F(FFoldersControllerTest, aFirstStartHasApplicationsHomeAndDownloads) {
    favourites.initFolderListByDefault();
    EXPECT_THAT(pathsOf(favourites), ElementsAre("/usr", "/home/me", "/home/me/Downloads"));
}

TEST_F(FFoldersControllerTest, aFirstStartHasDropboxWhereItIsAFolder) {
    questions.addFolder("/home/me/Dropbox");
    favourites.initFolderListByDefault();
    EXPECT_THAT(pathsOf(favourites),
                ElementsAre("/usr", "/home/me", "/home/me/Downloads", "/home/me/Dropbox"));
}

TEST_F(FFoldersControllerTest, aDropboxThatKeepsSilentIsNotOffered) {
    questions.silent.insert("/home/me/Dropbox");
    favourites.initFolderListByDefault();
    EXPECT_THAT(pathsOf(favourites), ElementsAre("/usr", "/home/me", "/home/me/Downloads"));
}

TEST_F(FFoldersControllerTest, aDefaultThatIsNoFolderIsLeftOut) {
    questions.folders.erase("/home/me/Downloads");
    favourites.initFolderListByDefault();
    EXPECT_THAT(pathsOf(favourites), ElementsAre("/usr", "/home/me"));
}

TEST_F(FFoldersControllerTest, aUserWithoutAFolderForDownloadsGetsNone) {
    FFoldersController list(settings, questions, {"/usr", "/home/me", std::nullopt});
    list.initFolderListByDefault();
    EXPECT_THAT(pathsOf(list), ElementsAre("/usr", "/home/me"));
}

TEST_F(FFoldersControllerTest, aSeparatorAtTheEndOfTheHomeFolderIsNoPartOfTheFavourite) {
    questions.addFolder("/home/me/Dropbox");
    FFoldersController list(settings, questions, {"/usr", "/home/me/", "/home/me/Downloads/"});
    list.initFolderListByDefault();
    EXPECT_THAT(pathsOf(list), ElementsAre("/usr", "/home/me", "/home/me/Downloads", "/home/me/Dropbox"));
}

TEST_F(FFoldersControllerTest, theKeyIsFFolders) {
    favourites.addFolderToList("/a", WithCheck::Yes);
    EXPECT_TRUE(favourites.saveToPreferences());
    EXPECT_THAT(settings.written, ElementsAre("FFolders"));
    EXPECT_THAT(settings.arrayForKey("FFolders"), Optional(ElementsAre("/a")));
}

TEST_F(RecentsControllerTest, aFirstStartHasNone) {
    EXPECT_FALSE(recents.initFromPreferences());
    recents.initFolderListByDefault();
    EXPECT_EQ(recents.foldersCount(), 0U);
    EXPECT_EQ(recents.getRecentsLimit(), 10);
}

TEST_F(RecentsControllerTest, theLatestComesFirst) {
    fillRecents(3);
    EXPECT_THAT(pathsOf(recents), ElementsAre("/recent/3", "/recent/2", "/recent/1"));
}

TEST_F(RecentsControllerTest, theEleventhPushesOutTheOldest) {
    fillRecents(11);
    EXPECT_EQ(recents.foldersCount(), 10U);
    EXPECT_EQ(recents.getFolderItemByPath("/recent/1"), nullptr);
    EXPECT_EQ(recents.getFolderItemByIndex(9)->getPath(), "/recent/2");
}

TEST_F(RecentsControllerTest, aFolderScannedAgainMovesToTheTopAsANewEntry) {
    fillRecents(10);
    const auto old = recents.getFolderItemByPath("/recent/4");
    old->setScannedRoot(scannedTree());
    const auto added = recents.addFolderToList("/recent/4", WithCheck::Yes);
    ASSERT_TRUE(added);
    EXPECT_NE(added, old);
    EXPECT_FALSE(added->isScanned());
    EXPECT_EQ(recents.getFolderItemByIndex(0), added);
    EXPECT_EQ(recents.getIndexOfItem(old.get()), std::nullopt);
    EXPECT_EQ(recents.foldersCount(), 10U) << "none of the others went";
}

TEST_F(RecentsControllerTest, theTreeOfAnEntryGoesWithTheEntry) {
    std::weak_ptr<FolderSystemItem> tree;
    {
        auto scanned = scannedTree();
        tree = scanned;
        recents.addFolderToList("/a", WithCheck::Yes)->setScannedRoot(std::move(scanned));
    }
    EXPECT_FALSE(tree.expired());
    recents.addFolderToList("/a", WithCheck::Yes);
    EXPECT_TRUE(tree.expired());
}

TEST_F(RecentsControllerTest, aPathThatLiesInTheEntryItReplacesIsAddedAllTheSame) {
    fillRecents(2);
    recents.addFolderToList(recents.getFoldersArray()[1]->getPath(), WithCheck::Yes);
    EXPECT_THAT(pathsOf(recents), ElementsAre("/recent/1", "/recent/2"));
}

TEST_F(RecentsControllerTest, aFolderThatIsGoneLosesItsEntryAndPushesOutNoOther) {
    fillRecents(10);
    questions.folders.erase("/recent/4");
    EXPECT_EQ(recents.addFolderToList("/recent/4", WithCheck::Yes), nullptr);
    EXPECT_EQ(recents.foldersCount(), 9U);
    EXPECT_TRUE(recents.getFolderItemByPath("/recent/1"));
}

TEST_F(RecentsControllerTest, withTheCheckOffNoLimitCounts) {
    for (int number = 0; number < 15; ++number)
        EXPECT_TRUE(recents.addFolderToList("/a", WithCheck::No));
    EXPECT_EQ(recents.foldersCount(), 15U);
}

TEST_F(RecentsControllerTest, aLongSavedListLoadsInFullAndIsTrimmedByTheNextScan) {
    Strings paths;
    for (int number = 0; number < 15; ++number) {
        paths.push_back("/old/" + std::to_string(number));
        questions.addFolder(paths.back());
    }
    settings.setArray("Recents", paths);
    settings.setInteger("RecentsLimit", 10);
    EXPECT_TRUE(recents.initFromPreferences());
    EXPECT_EQ(pathsOf(recents), paths);
    recents.addFolderToList("/a", WithCheck::Yes);
    EXPECT_EQ(recents.foldersCount(), 10U);
    EXPECT_EQ(recents.getFolderItemByIndex(9)->getPath(), "/old/8");
}

TEST_F(RecentsControllerTest, theListAndThenTheLimitAreSaved) {
    fillRecents(2);
    settings.written.clear();
    EXPECT_TRUE(recents.saveToPreferences());
    EXPECT_THAT(settings.written, ElementsAre("Recents", "RecentsLimit"));
    EXPECT_THAT(settings.arrayForKey("Recents"), Optional(ElementsAre("/recent/2", "/recent/1")));
    EXPECT_EQ(settings.integerForKey("RecentsLimit"), 10);
}

TEST_F(RecentsControllerTest, theSavedLimitCounts) {
    settings.setArray("Recents", {});
    settings.setInteger("RecentsLimit", 3);
    EXPECT_TRUE(recents.initFromPreferences());
    fillRecents(5);
    EXPECT_EQ(recents.foldersCount(), 3U);
}

TEST_F(RecentsControllerTest, aSavedLimitThatIsNoneLeavesTheUsualOne) {
    for (const std::int64_t limit :
         {std::int64_t{0}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::min(), std::int64_t{1} << 31,
          (std::int64_t{1} << 32) + 3}) {
        RecentsController list(settings, questions);
        settings.setArray("Recents", {});
        settings.setInteger("RecentsLimit", limit);
        EXPECT_TRUE(list.initFromPreferences());
        EXPECT_EQ(list.getRecentsLimit(), 10) << limit;
        EXPECT_TRUE(list.addFolderToList("/a", WithCheck::Yes)) << limit;
    }
}

TEST_F(RecentsControllerTest, aSavedListWithoutALimitHasTheUsualOne) {
    settings.setArray("Recents", {});
    settings.setString("RecentsLimit", "many");
    EXPECT_TRUE(recents.initFromPreferences());
    EXPECT_EQ(recents.getRecentsLimit(), 10);
}

TEST_F(RecentsControllerTest, aLimitWithoutASavedListIsNotTaken) {
    settings.setInteger("RecentsLimit", 3);
    EXPECT_FALSE(recents.initFromPreferences());
    EXPECT_EQ(recents.getRecentsLimit(), 10);
}

TEST_F(RecentsControllerTest, aLowerLimitDropsEntriesFromTheEnd) {
    fillRecents(5);
    recents.setRecentsLimit(2);
    EXPECT_THAT(pathsOf(recents), ElementsAre("/recent/5", "/recent/4"));
    recents.setRecentsLimit(10);
    EXPECT_EQ(recents.foldersCount(), 2U);
}

TEST_F(RecentsControllerTest, aLimitBelowOneChangesNothing) {
    fillRecents(2);
    recents.setRecentsLimit(0);
    recents.setRecentsLimit(-5);
    EXPECT_EQ(recents.foldersCount(), 2U);
    EXPECT_EQ(recents.getRecentsLimit(), 10);
}

/// The lists with a real file of settings and real folders.
struct RealFolderListsTest : testing::Test {
    RealFolderListsTest() {
        folder.createFolder("m\xFCller");
        folder.createFolder("plain");
        folder.createFile("file", 1);
    }

    Strings loaded(const Strings& saved) {
        QtSettings settings(folder.path("Veltrano.conf"));
        settings.setArray("FFolders", saved);
        FFoldersController list(settings, questions, {});
        EXPECT_TRUE(list.initFromPreferences());
        return pathsOf(list);
    }

    TestDir folder;
    FakeMainLoop mainLoop;
    LinuxFolderQuestions questions{mainLoop, askVolume, std::chrono::minutes(1)};
};

TEST_F(RealFolderListsTest, foldersComeBackAndWhatIsNoFolderFallsOut) {
    EXPECT_THAT(loaded({folder.path("m\xFCller"), folder.path("file"), folder.path("gone"), "", "relative",
                        "/", folder.path("plain")}),
                ElementsAre(folder.path("m\xFCller"), "/", folder.path("plain")));
}

TEST_F(RealFolderListsTest, aFavouriteThatBecameAFileFallsOut) {
    ASSERT_THAT(loaded({folder.path("plain")}), ElementsAre(folder.path("plain")));
    folder.remove("plain");
    folder.createFile("plain", 1);
    EXPECT_THAT(loaded({folder.path("plain")}), IsEmpty());
}

TEST_F(RealFolderListsTest, theRootIsNamedByItsSeparator) {
    QtSettings settings(folder.path("Veltrano.conf"));
    RecentsController recents(settings, questions);
    ASSERT_TRUE(recents.addFolderToList("/", WithCheck::Yes));
    EXPECT_EQ(recents.getFolderItemByIndex(0)->getName(), "/");
}

TEST_F(RealFolderListsTest, aFirstStartFindsTheUsersFolders) {
    folder.createFolder("home/Downloads");
    folder.createFile("home/Dropbox", 1); // a file of that name is no folder
    QtSettings settings(folder.path("Veltrano.conf"));
    FFoldersController list(settings, questions,
                            {"/usr", folder.path("home"), folder.path("home/Downloads")});
    list.initFolderListByDefault();
    EXPECT_THAT(pathsOf(list), ElementsAre("/usr", folder.path("home"), folder.path("home/Downloads")));
    folder.remove("home/Dropbox");
    folder.createFolder("home/Dropbox");
    FFoldersController next(settings, questions,
                            {"/usr", folder.path("home"), folder.path("home/Downloads")});
    next.initFolderListByDefault();
    EXPECT_EQ(next.getFolderItemByIndex(3)->getPath(), folder.path("home/Dropbox"));
}

} // namespace
} // namespace veltrano
