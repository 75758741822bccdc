#include "scan/DiskForms.h"
#include "scan/ScanRun.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using test::countUnscanned;
using test::DiskForm;
using test::itemAt;
using test::recountByLinks;
using test::ScanRun;
using test::TestDisk;
using test::unscannedItem;

class Classification : public testing::TestWithParam<DiskForm> {
protected:
    FolderSystemItem& scan() {
        run.emplace(disk->catalogue(), facts);
        root = run->scan(disk->root());
        return *root;
    }

    std::unique_ptr<TestDisk> disk = TestDisk::make(GetParam());
    ScanFacts facts;
    std::optional<ScanRun> run;
    std::shared_ptr<FolderSystemItem> root;
};

TEST_P(Classification, lowerCaseAppIsAPackage) {
    disk->file("Tool.app/f", 4096);
    disk->file("Tool.APP/f", 4096);
    disk->file("x.app/f", 4096);
    disk->file(".app/f", 4096);
    scan();
    auto isPack = [&](const char* name) {
        return itemAt(*root, name)->isPack();
    };
    EXPECT_TRUE(isPack("Tool.app"));
    EXPECT_FALSE(isPack("Tool.APP"));
    EXPECT_TRUE(isPack("x.app"));
    EXPECT_FALSE(isPack(".app"));
}

TEST_P(Classification, oneCharacterOfSeveralBytesBeforeAppIsEnough) {
    disk->file("\xc3\xa9.app/f", 4096);
    scan();
    EXPECT_TRUE(itemAt(*root, "\xc3\xa9.app")->isPack());
}

TEST_P(Classification, fileNamedLikeAPackageIsAFile) {
    const std::int64_t size = disk->file("x.app", 4096);
    scan();
    EXPECT_FALSE(itemAt(*root, "x.app")->isPack());
    EXPECT_EQ(size, itemAt(*root, "x.app")->gettotalsize());
}

TEST_P(Classification, packageIsOneLeafWithTheSumOfAllInside) {
    std::int64_t sum = disk->file("x.app/f", 8192);
    sum += disk->file("x.app/.hidden", 4096);
    sum += disk->file("x.app/a/b/c/g", 4096);
    sum += disk->file("x.app/inner.app/h", 4096);
    disk->folder("x.app/empty");
    scan();
    ASSERT_EQ(1u, root->numberOfChildren());
    const FileSystemItem* const package = root->childAtIndex(0);
    EXPECT_TRUE(package->isPack());
    EXPECT_EQ(0u, package->numberOfChildren());
    EXPECT_EQ(sum, package->gettotalsize());
    EXPECT_EQ(sum, root->gettotalsize());
}

TEST_P(Classification, packageOfEmptyFoldersWeighsNothing) {
    disk->folder("x.app/empty");
    scan();
    ASSERT_EQ(1u, root->numberOfChildren());
    EXPECT_EQ(0, root->childAtIndex(0)->gettotalsize());
}

TEST_P(Classification, emptyPackageLeavesNoTrace) {
    disk->folder("x.app");
    scan();
    EXPECT_EQ(0u, root->numberOfChildren());
}

TEST_P(Classification, namesWithAFullStopInFrontAreHidden) {
    disk->file(".file", 4096);
    disk->file("file", 4096);
    disk->file(".folder/inside", 4096);
    scan();
    EXPECT_TRUE(itemAt(*root, ".file")->isHiddenFlag());
    EXPECT_FALSE(itemAt(*root, "file")->isHiddenFlag());
    EXPECT_TRUE(itemAt(*root, ".folder")->isHiddenFlag());
    EXPECT_FALSE(itemAt(*root, ".folder/inside")->isHiddenFlag());
    EXPECT_TRUE(itemAt(*root, ".folder/inside")->isTopHiddenFlag());
}

TEST_P(Classification, hiddenFilesAreOrdinaryItems) {
    disk->file(".a", 4096);
    disk->file(".b", 4096);
    scan();
    EXPECT_EQ(2u, root->numberOfChildren());
    EXPECT_FALSE(root->childAtIndex(0)->isHidden());
}

TEST_P(Classification, trashIsToldByItsName) {
    disk->file(".Trash/f", 4096);
    disk->file(".Trashes/f", 4096);
    disk->file(".trash/f", 4096);
    disk->file("Trash/f", 4096);
    scan();
    EXPECT_TRUE(itemAt(*root, ".Trash")->isTrashFlag());
    EXPECT_TRUE(itemAt(*root, ".Trashes")->isTrashFlag());
    EXPECT_FALSE(itemAt(*root, ".trash")->isTrashFlag());
    EXPECT_FALSE(itemAt(*root, "Trash")->isTrashFlag());
}

TEST_P(Classification, trashIsToldByItsPlaceToo) {
    facts.trashFolders = {disk->path("share/Trash"), disk->path(".Trash-1000")};
    disk->file("share/Trash/files/f", 4096);
    disk->file("other/Trash/f", 4096);
    disk->file(".Trash-1000/f", 4096);
    disk->file(".Trash-1001/f", 4096);
    scan();
    EXPECT_TRUE(itemAt(*root, "share/Trash")->isTrashFlag());
    EXPECT_TRUE(itemAt(*root, "share/Trash/files/f")->isTopTrashFlag());
    EXPECT_FALSE(itemAt(*root, "other/Trash")->isTrashFlag());
    EXPECT_TRUE(itemAt(*root, ".Trash-1000")->isTrashFlag());
    EXPECT_FALSE(itemAt(*root, ".Trash-1001")->isTrashFlag());
}

TEST_P(Classification, deniedFolderStaysInTheTreeWithoutSize) {
    disk->file("no/f", 4096);
    disk->deny("no");
    const std::int64_t size = disk->file("yes/f", 4096);
    scan();
    ASSERT_NE(nullptr, itemAt(*root, "no"));
    EXPECT_EQ(0u, itemAt(*root, "no")->numberOfChildren());
    EXPECT_EQ(size, root->gettotalsize());
}

INSTANTIATE_TEST_SUITE_P(Forms, Classification, test::allDiskForms(), test::diskFormName);

/// What only a catalogue with marks on its entries can tell.
class Marks : public testing::Test {
protected:
    std::shared_ptr<MemoryDisk> disk = std::make_shared<MemoryDisk>();
    ScanRun run{disk};
};

TEST_F(Marks, bundleBitMakesAPackageOfAnyName) {
    disk->addFolder("/disk/plain", {.hasBundleBit = true});
    disk->addFile("/disk/plain/f", 10);
    run.scan("/disk");
    EXPECT_TRUE(itemAt(*run.root, "plain")->isPack());
    EXPECT_EQ(10, run.root->gettotalsize());
}

TEST_F(Marks, invisibleBitHidesAnOrdinaryName) {
    disk->addFile("/disk/f", {.size = 10, .hasInvisibleBit = true});
    disk->addFolder("/disk/d", {.hasInvisibleBit = true});
    disk->addFile("/disk/d/g", 10);
    run.scan("/disk");
    EXPECT_TRUE(itemAt(*run.root, "f")->isHiddenFlag());
    EXPECT_TRUE(itemAt(*run.root, "d")->isHiddenFlag());
}

TEST_F(Marks, invisibleFolderNamedTrashIsTrash) {
    disk->addFolder("/disk/.Trash", {.hasInvisibleBit = true});
    disk->addFile("/disk/.Trash/g", 10);
    run.scan("/disk");
    EXPECT_TRUE(itemAt(*run.root, ".Trash")->isTrashFlag());
}

TEST_F(Marks, aliasMakesNoItemAndWeighsNothing) {
    disk->addFile("/disk/alias", {.size = 10, .isAlias = true});
    disk->addFile("/disk/x.app/alias", {.size = 10, .isAlias = true});
    disk->addFile("/disk/x.app/f", 5);
    run.scan("/disk");
    EXPECT_EQ(nullptr, itemAt(*run.root, "alias"));
    EXPECT_EQ(5, run.root->gettotalsize());
}

TEST_F(Marks, folderIsNoAliasWhateverItsBit) {
    disk->addFolder("/disk/d", {.isAlias = true});
    disk->addFile("/disk/d/f", 10);
    run.scan("/disk");
    ASSERT_NE(nullptr, itemAt(*run.root, "d"));
    EXPECT_EQ(10, run.root->gettotalsize());
}

TEST_F(Marks, packageOfAliasesStaysWithoutSize) {
    disk->addFile("/disk/x.app/alias", {.size = 10, .isAlias = true});
    run.scan("/disk");
    ASSERT_EQ(1u, run.root->numberOfChildren());
    EXPECT_EQ(0, run.root->gettotalsize());
}

TEST_F(Marks, aliasesCountForThePaceOfUpdates) {
    // Steps of 10 bytes. The aliases of the first folder are what asks for the first update, which starts the
    // tick.
    auto gate = std::make_shared<ReadGate>();
    disk->addFile("/disk/alias", {.size = 11, .isAlias = true});
    disk->addFile("/disk/d/f", 1);
    disk->gateReads("/disk/d", gate);
    run.start("/disk", 3600 * 10);
    EXPECT_TRUE(gate->waitForArrivals(1));
    run.loop.advance(0);
    EXPECT_EQ(1u, run.loop.pendingTimers());
    gate->release();
    EXPECT_TRUE(run.waitFor([&] { return run.finished == 1; }));
}

/// A volume at /vol with 1000 bytes occupied, of which 400 are in a file that is found.
class MissingSpace : public testing::Test {
protected:
    void scanVolume(const std::string& path) {
        ScanFacts facts;
        facts.homeDirectory = "/home/me";
        run.emplace(disk, facts);
        run->addVolume(path, 5'000, 4'000);
        root = run->scan(path);
    }

    std::string text() { return std::string(unscannedItem(*root)->getDesc()); }
    std::string place() { return unscannedItem(*root)->getParent()->getFullPath(); }

    std::shared_ptr<MemoryDisk> disk = std::make_shared<MemoryDisk>();
    std::optional<ScanRun> run;
    std::shared_ptr<FolderSystemItem> root;
};

TEST_F(MissingSpace, withoutDeniedFoldersIsInaccessible) {
    disk->addFile("/f", 400);
    scanVolume("/");
    EXPECT_EQ("Inaccessible Disk Space", text());
    EXPECT_EQ("/", place());
    EXPECT_EQ(600, unscannedItem(*root)->gettotalsize());
    EXPECT_EQ(1'000, root->gettotalsize());
    EXPECT_EQ(1'000, recountByLinks(*root));
    EXPECT_EQ(1'000, run->progress.back());
}

TEST_F(MissingSpace, isNamedForTheUserWhoseFolderIsDenied) {
    disk->addFile("/home/me/f", 400);
    disk->deny("/home/anna/private");
    scanVolume("/");
    EXPECT_EQ("Files of user: anna", text());
    EXPECT_EQ("/home", place());
    EXPECT_EQ(1'000, itemAt(*root, "home")->gettotalsize());
    EXPECT_EQ(1'000, root->gettotalsize());
}

TEST_F(MissingSpace, isNamedForSeveralUsers) {
    disk->addFile("/home/me/f", 400);
    disk->deny("/home/anna/a");
    disk->deny("/home/anna/b");
    disk->deny("/home/bert/c");
    scanVolume("/");
    const std::string described = text();
    EXPECT_TRUE(described == "Files of users: anna, bert" || described == "Files of users: bert, anna")
        << described;
}

TEST_F(MissingSpace, isNamedForThousandsOfUsersInFull) {
    constexpr std::size_t kUsers = 5'000;
    disk->addFile("/home/me/f", 400);
    for (std::size_t user = 0; user < kUsers; ++user)
        disk->deny("/home/somebody" + std::to_string(10'000 + user) + "/private");
    scanVolume("/");
    EXPECT_EQ(std::string_view("Files of users: ").size() + kUsers * 13 + (kUsers - 1) * 2, text().size());
    EXPECT_EQ(1'000, root->gettotalsize());
}

TEST_F(MissingSpace, inOnesOwnHomeNamesNobody) {
    disk->addFile("/home/me/f", 400);
    disk->deny("/home/me/private");
    scanVolume("/");
    EXPECT_EQ("Inaccessible Disk Space", text());
    EXPECT_EQ("/", place());
}

TEST_F(MissingSpace, outsideTheUsersFolderNamesNobody) {
    disk->addFile("/home/me/f", 400);
    disk->deny("/root/private");
    scanVolume("/");
    EXPECT_EQ("Inaccessible Disk Space", text());
}

TEST_F(MissingSpace, deniedHomeItselfNamesNobody) {
    disk->addFile("/home/me/f", 400);
    disk->deny("/home/anna");
    scanVolume("/");
    EXPECT_EQ("Inaccessible Disk Space", text());
}

TEST_F(MissingSpace, folderThatCannotBeOpenedIsNotListed) {
    disk->addFile("/home/me/f", 400);
    disk->addFile("/home/anna/private/f", 1);
    disk->vanishAtOpen("/home/anna/private");
    scanVolume("/");
    EXPECT_EQ("Inaccessible Disk Space", text());
}

TEST_F(MissingSpace, deniedFolderInAPackageCountsUnderThePackagesPath) {
    disk->addFile("/home/me/f", 400);
    disk->addFile("/home/anna.app/f", 1);
    disk->deny("/home/anna.app/inside/deep");
    scanVolume("/");
    // The package's own path is a home, and a home names nobody.
    EXPECT_EQ("Inaccessible Disk Space", text());
}

TEST_F(MissingSpace, readThatFailsHalfwayIsDeniedAndKeepsItsEntries) {
    disk->addFile("/home/me/f", 400);
    for (int file = 0; file < 10; ++file)
        disk->addFile("/home/anna/half/f" + std::to_string(file), 1);
    disk->failAfter("/home/anna/half", 4);
    scanVolume("/");
    EXPECT_EQ("Files of user: anna", text());
    EXPECT_EQ(4u, itemAt(*root, "home/anna/half")->numberOfChildren());
}

TEST_F(MissingSpace, nothingMissingAddsNothing) {
    disk->addFile("/home/me/f", 1'000);
    disk->deny("/home/anna/private");
    scanVolume("/");
    EXPECT_EQ(nullptr, unscannedItem(*root));
    EXPECT_EQ(1'000, root->gettotalsize());
}

TEST_F(MissingSpace, moreFoundThanOccupiedAddsNothing) {
    disk->addFile("/f", 2'000);
    scanVolume("/");
    EXPECT_EQ(nullptr, unscannedItem(*root));
}

TEST_F(MissingSpace, otherVolumeTakesItsOwnUsersFolderAndItsRoot) {
    disk->addFile("/mnt/home/me/f", 400);
    disk->deny("/mnt/home/anna/private");
    scanVolume("/mnt");
    EXPECT_EQ("Files of user: anna", text());
    EXPECT_EQ("/mnt", place());
}

TEST_F(MissingSpace, folderRootIsNeverExplained) {
    disk->addFile("/home/me/f", 400);
    disk->deny("/home/anna/private");
    run.emplace(disk);
    root = run->scan("/");
    EXPECT_EQ(nullptr, unscannedItem(*root));
}

TEST_F(MissingSpace, usersFolderIsAskedOfThePlatform) {
    disk->addFile("/Users/me/f", 400);
    disk->deny("/Users/anna/private");
    ScanFacts facts;
    facts.usersFolderName = "Users";
    facts.homeDirectory = "/Users/me";
    run.emplace(disk, facts);
    run->addVolume("/", 5'000, 4'000);
    root = run->scan("/");
    EXPECT_EQ("Files of user: anna", text());
    EXPECT_EQ("/Users", place());
}

TEST_F(MissingSpace, homeDirectlyUnderTheRootPutsItAtTheRoot) {
    disk->addFile("/home/me/f", 400);
    disk->deny("/home/anna/private");
    ScanFacts facts;
    facts.homeDirectory = "/root";
    run.emplace(disk, facts);
    run->addVolume("/", 5'000, 4'000);
    root = run->scan("/");
    EXPECT_EQ("/", place());
}

} // namespace
} // namespace veltrano
