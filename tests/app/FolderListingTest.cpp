#include "app/FolderListing.h"

#include "platform/linux/LinuxCatalogue.h"
#include "support/MemoryDisk.h"
#include "support/TestDir.h"

#include <gmock/gmock.h>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> namesOf(const FolderListing& listing) {
    std::vector<std::string> names;
    for (const Subfolder& folder : listing.folders)
        names.push_back(folder.name);
    return names;
}

/// Everything that the listing of a folder tells, in turn.
std::vector<FolderListing> listingsOf(FileCatalogue& catalogue, const std::string& path) {
    std::vector<FolderListing> found;
    listSubfolders(
        catalogue, path, [] { return false; },
        [&](FolderListing listing) { found.push_back(std::move(listing)); });
    return found;
}

class FolderListingTest : public testing::Test {
protected:
    FolderListing listed() { return listingsOf(catalogue, folder.path()).back(); }

    TestDir folder;
    LinuxCatalogue catalogue;
};

TEST_F(FolderListingTest, namesAreSortedWithoutCaseAndNumbersByValue) {
    for (const char* name : {"Zeta", "photos 10", "Photos 9", "alpha", "Photos 100", "beta"})
        folder.createFolder(name);
    EXPECT_THAT(namesOf(listed()),
                ElementsAre("alpha", "beta", "Photos 9", "photos 10", "Photos 100", "Zeta"));
}

TEST_F(FolderListingTest, filesAndOtherThingsAreLeftOut) {
    folder.createFolder("folder");
    folder.createFile("file");
    folder.createFifo("fifo");
    folder.createSymlink("link to file", "file");
    folder.createSymlink("dangling", "nowhere");
    folder.createSymlink("loop", "loop");
    EXPECT_THAT(namesOf(listed()), ElementsAre("folder"));
}

TEST_F(FolderListingTest, linksToFoldersCountAndComeInASecondListing) {
    folder.createFolder("folder");
    folder.createSymlink("a link", "folder");
    const std::vector<FolderListing> found = listingsOf(catalogue, folder.path());
    ASSERT_EQ(found.size(), 2U);
    EXPECT_THAT(namesOf(found[0]), ElementsAre("folder"));
    EXPECT_FALSE(found[0].isComplete);
    EXPECT_THAT(namesOf(found[1]), ElementsAre("a link", "folder"));
    EXPECT_TRUE(found[1].isComplete);
}

TEST_F(FolderListingTest, bytesThatAreNoTextStayInTheName) {
    folder.createFolder("one\xFF");
    folder.createFolder("one\xFE");
    const FolderListing listing = listed();
    EXPECT_THAT(namesOf(listing), ElementsAre("one\xFE", "one\xFF"));
    EXPECT_EQ(listing.folders[0].text, QStringLiteral("one\uFFFD"));
}

TEST_F(FolderListingTest, aFolderWithoutFoldersIsReadToItsEnd) {
    folder.createFile("file");
    EXPECT_EQ(listed().status, CatalogueStatus::EndOfFolder);
    EXPECT_THAT(listed().folders, IsEmpty());
}

TEST_F(FolderListingTest, aFolderThatIsNotThereIsGone) {
    EXPECT_EQ(listingsOf(catalogue, folder.path("nowhere")).back().status, CatalogueStatus::Gone);
}

TEST(FolderListingOfADisk, aDeniedReadTellsSoAndKeepsWhatCameBefore) {
    MemoryDisk disk;
    disk.addFolder("/disk/one");
    disk.addFolder("/disk/two");
    disk.failAfter("/disk", 1);
    const FolderListing listing = listingsOf(disk, "/disk").back();
    EXPECT_EQ(listing.status, CatalogueStatus::Denied);
    EXPECT_EQ(listing.folders.size(), 1U);
}

TEST(FolderListingOfADisk, anAbandonedReadingStopsAndIsSilent) {
    MemoryDisk disk;
    for (int i = 0; i < 3 * kEntriesPerRead; ++i)
        disk.addFolder("/disk/folder " + std::to_string(i));
    int reads = 0;
    disk.setBeforeRead([&](const std::string&) { ++reads; });
    bool isToldOf = false;
    listSubfolders(
        disk, "/disk", [&] { return reads == 1; }, [&](const FolderListing&) { isToldOf = true; });
    EXPECT_EQ(reads, 1);
    EXPECT_FALSE(isToldOf);
}

TEST_F(FolderListingTest, foldersAreToldFromEverythingElse) {
    folder.createFile("file");
    folder.createSymlink("link", ".");
    EXPECT_TRUE(isFolderAtPath(catalogue, folder.path()));
    EXPECT_TRUE(isFolderAtPath(catalogue, folder.path("link")));
    EXPECT_FALSE(isFolderAtPath(catalogue, folder.path("file")));
    EXPECT_FALSE(isFolderAtPath(catalogue, folder.path("nowhere")));
    EXPECT_FALSE(isFolderAtPath(catalogue, ""));
}

} // namespace
} // namespace veltrano
