#include "scan/DiskForms.h"
#include "scan/ScanRun.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using test::DiskForm;
using test::itemAt;
using test::kPresent;
using test::recountByLinks;
using test::ScanRun;
using test::TestDisk;

class Reading : public testing::TestWithParam<DiskForm> {
protected:
    FolderSystemItem& scan() {
        run.emplace(disk->catalogue());
        root = run->scan(disk->root());
        return *root;
    }

    std::unique_ptr<TestDisk> disk = TestDisk::make(GetParam());
    std::optional<ScanRun> run;
    std::shared_ptr<FolderSystemItem> root;
};

TEST_P(Reading, treeHasTheShapeOfTheDisk) {
    // root
    //  +- a
    //  |   +- b
    //  |   |   +- deep
    //  |   +- f
    //  +- g
    const std::int64_t deep = disk->file("a/b/deep", 4096);
    const std::int64_t f = disk->file("a/f", 8192);
    const std::int64_t g = disk->file("g", 0);
    scan();
    EXPECT_EQ(deep, itemAt(*root, "a/b")->gettotalsize());
    EXPECT_EQ(deep + f, itemAt(*root, "a")->gettotalsize());
    EXPECT_EQ(deep + f + g, root->gettotalsize());
    EXPECT_EQ(2u, root->numberOfChildren());
    EXPECT_EQ(disk->path("a/b/deep"), itemAt(*root, "a/b/deep")->getFullPath());
}

TEST_P(Reading, fileWithoutSizeIsThere) {
    disk->file("nothing", 0);
    scan();
    ASSERT_NE(nullptr, itemAt(*root, "nothing"));
    EXPECT_EQ(0, itemAt(*root, "nothing")->gettotalsize());
}

TEST_P(Reading, emptyFolderLeavesNoTrace) {
    disk->folder("empty");
    disk->file("f", 4096);
    scan();
    EXPECT_EQ(1u, root->numberOfChildren());
    EXPECT_EQ(nullptr, itemAt(*root, "empty"));
}

TEST_P(Reading, folderOfEmptyFoldersIsThereWithoutChildren) {
    disk->folder("a/empty");
    scan();
    ASSERT_NE(nullptr, itemAt(*root, "a"));
    EXPECT_EQ(0u, itemAt(*root, "a")->numberOfChildren());
}

TEST_P(Reading, foldersOwnSizeDoesNotCount) {
    const std::int64_t size = disk->file("a/f", 4096);
    scan();
    EXPECT_EQ(size, itemAt(*root, "a")->gettotalsize());
}

TEST_P(Reading, everyCountOfEntriesArrivesWhole) {
    for (const int count : {1, 109, 110, 111, 219, 220, 221, 330, 1100, 1101, 2500}) {
        const std::string folder = "n" + std::to_string(count);
        for (int file = 0; file < count; ++file)
            disk->file(folder + "/f" + std::to_string(file), 0);
    }
    scan();
    for (const int count : {1, 109, 110, 111, 219, 220, 221, 330, 1100, 1101, 2500})
        EXPECT_EQ(static_cast<std::size_t>(count),
                  itemAt(*root, "n" + std::to_string(count))->numberOfChildren());
}

TEST_P(Reading, filesAndFoldersMixedInOneFolderArriveWhole) {
    for (int entry = 0; entry < 500; ++entry) {
        disk->file("m/f" + std::to_string(entry), 0);
        disk->file("m/d" + std::to_string(entry) + "/x", 0);
    }
    scan();
    EXPECT_EQ(1000u, itemAt(*root, "m")->numberOfChildren());
}

TEST_P(Reading, startPathMayEndInASeparator) {
    const std::int64_t size = disk->file("a", 4096);
    run.emplace(disk->catalogue());
    EXPECT_EQ(size, run->scan(disk->root() + "/")->gettotalsize());
}

TEST_P(Reading, startPathThatIsAFileFindsNothing) {
    disk->file("a", 4096);
    run.emplace(disk->catalogue());
    root = run->scan(disk->path("a"));
    EXPECT_EQ(0u, root->numberOfChildren());
    EXPECT_EQ(0, root->gettotalsize());
}

TEST_P(Reading, startPathThatIsMissingFindsNothing) {
    run.emplace(disk->catalogue());
    EXPECT_EQ(0u, run->scan(disk->path("missing"))->numberOfChildren());
}

TEST_P(Reading, startPathNamedLikeAPackageIsReadAsAFolder) {
    disk->file("x.app/f", 4096);
    run.emplace(disk->catalogue());
    root = run->scan(disk->path("x.app"));
    EXPECT_FALSE(root->isPack());
    EXPECT_EQ(1u, root->numberOfChildren());
}

TEST_P(Reading, namesAreBytes) {
    for (const std::string& name :
         {std::string("new\nline"), std::string("co:lon"), std::string(255, 'n'),
          std::string("not \xff\xfe utf8"), std::string(" blank "), std::string("%s")})
        disk->file(name, 4096);
    scan();
    EXPECT_EQ(6u, root->numberOfChildren());
    EXPECT_NE(nullptr, itemAt(*root, "new\nline"));
    EXPECT_NE(nullptr, itemAt(*root, std::string(255, 'n')));
    EXPECT_NE(nullptr, itemAt(*root, "not \xff\xfe utf8"));
}

TEST_P(Reading, startPathMayHaveBytesThatAreNotUtf8) {
    const std::int64_t size = disk->file("\xff\xfe/f", 4096);
    run.emplace(disk->catalogue());
    EXPECT_EQ(size, run->scan(disk->path("\xff\xfe"))->gettotalsize());
}

TEST_P(Reading, startPathMayBeLongerThanAThousandBytes) {
    std::string path;
    for (int level = 0; level < 8; ++level)
        path += std::string(200, static_cast<char>('a' + level)) + "/";
    const std::int64_t size = disk->file(path + "f", 4096);
    run.emplace(disk->catalogue());
    EXPECT_EQ(size, run->scan(disk->path(path))->gettotalsize());
}

INSTANTIATE_TEST_SUITE_P(Forms, Reading, test::allDiskForms(), test::diskFormName);

class MemoryReading : public testing::Test {
protected:
    std::shared_ptr<MemoryDisk> disk = std::make_shared<MemoryDisk>();
    ScanRun run{disk};
};

TEST_F(MemoryReading, lastReadMayBeAnEmptyOne) {
    disk->setLastRead(MemoryDisk::LastRead::LeavesEmptyRead);
    for (int file = 0; file < 110; ++file)
        disk->addFile("/disk/d/f" + std::to_string(file), 1);
    disk->addFolder("/disk/empty");
    run.scan("/disk");
    EXPECT_EQ(110, run.root->gettotalsize());
    EXPECT_EQ(1u, run.root->numberOfChildren());
}

TEST_F(MemoryReading, entriesThatComeWithTheEndCount) {
    disk->setLastRead(MemoryDisk::LastRead::EndsFolder);
    for (int file = 0; file < 220; ++file)
        disk->addFile("/disk/d/f" + std::to_string(file), 1);
    run.scan("/disk");
    EXPECT_EQ(220, run.root->gettotalsize());
}

TEST_F(MemoryReading, knownValencesGiveTheSameTree) {
    disk->setValence(MemoryDisk::Valence::Known);
    disk->addFile("/disk/d/f", 1);
    disk->addFolder("/disk/empty");
    disk->addFolder("/disk/x.app");
    run.scan("/disk");
    EXPECT_EQ(1u, run.root->numberOfChildren());
    EXPECT_EQ(1, run.root->gettotalsize());
}

TEST_F(MemoryReading, separatorInANameReadsAsAColon) {
    disk->addFileNamed("/disk", "a/b", {.size = 1});
    disk->addFolderNamed("/disk", "c/d", {});
    disk->addFileNamed("/disk", "plain", {.size = 1});
    run.scan("/disk");
    EXPECT_NE(nullptr, test::childNamed(*run.root, "a:b"));
    EXPECT_NE(nullptr, test::childNamed(*run.root, "plain"));
}

TEST_F(MemoryReading, folderOnWhichAVolumeIsMountedLeavesNoTrace) {
    disk->addFile("/disk/mnt/f", 1);
    disk->coverByMount("/disk/mnt");
    disk->addFile("/disk/g", 1);
    run.scan("/disk");
    EXPECT_EQ(nullptr, itemAt(*run.root, "mnt"));
    EXPECT_EQ(1, run.root->gettotalsize());
}

TEST_F(MemoryReading, folderThatHasGoneLeavesNoTrace) {
    disk->addFile("/disk/gone/f", 1);
    disk->vanishAtOpen("/disk/gone");
    disk->addFile("/disk/g", 1);
    run.scan("/disk");
    EXPECT_EQ(1u, run.root->numberOfChildren());
}

TEST_F(MemoryReading, timeCodeComesFromTheContentsDate) {
    disk->addFile("/disk/today", {.date = test::dateAt(kPresent - 10)});
    disk->addFile("/disk/old", {.date = test::dateAt(kPresent - 40'000'000)});
    disk->addFile("/disk/unknown", MemoryFacts{});
    disk->addFolder("/disk/month", {.date = test::dateAt(kPresent - 2'000'000)});
    disk->addFile("/disk/month/f", 1);
    run.scan("/disk");
    EXPECT_EQ(1, itemAt(*run.root, "today")->getTimeCode());
    EXPECT_EQ(7, itemAt(*run.root, "old")->getTimeCode());
    EXPECT_EQ(0, itemAt(*run.root, "unknown")->getTimeCode());
    EXPECT_EQ(4, itemAt(*run.root, "month")->getTimeCode());
}

TEST_F(MemoryReading, deniedStartFolderFinishesWithAnEmptyTree) {
    disk->deny("/disk");
    run.addVolume("/disk", 500, 0);
    run.scan("/disk");
    EXPECT_EQ("Inaccessible Disk Space", test::unscannedItem(*run.root)->getDesc());
    EXPECT_EQ(500, run.root->gettotalsize());
}

/// Folders of files without end: folder 0 holds `width` files.
class WideFolder final : public GeneratedTree {
public:
    explicit WideFolder(std::uint64_t width) : m_nWidth(width) {}
    std::uint64_t entryCount(std::uint64_t) const override { return m_nWidth; }
    void entry(std::uint64_t, std::uint64_t index, GeneratedEntry& entry) const override {
        entry.name = "f" + std::to_string(index);
        entry.facts = {.size = static_cast<std::int64_t>(index % 1000)};
        entry.isDirectory = false;
    }

private:
    std::uint64_t m_nWidth;
};

TEST_F(MemoryReading, millionEntriesInOneFolder) {
    constexpr std::int64_t kFiles = 1'000'000;
    disk->addGenerated("/disk", std::make_shared<WideFolder>(kFiles), 0);
    run.scan("/disk");
    EXPECT_EQ(static_cast<std::size_t>(kFiles), run.root->numberOfChildren());
    EXPECT_EQ(kFiles / 1000 * 499'500, run.root->gettotalsize());
    EXPECT_EQ(run.root->gettotalsize(), recountByLinks(*run.root));
}

/// Every folder holds `width` folders and one file, down to `depth`.
class ManyFolders final : public GeneratedTree {
public:
    ManyFolders(std::uint64_t width, std::uint64_t depth) : m_nWidth(width), m_nDepth(depth) {}
    std::uint64_t entryCount(std::uint64_t folder) const override {
        return folder < m_nDepth ? m_nWidth + 1 : 1;
    }
    void entry(std::uint64_t folder, std::uint64_t index, GeneratedEntry& entry) const override {
        entry.name = "n" + std::to_string(index);
        entry.isDirectory = index > 0;
        entry.facts = {.size = index > 0 ? 0 : 10};
        entry.folder = folder + 1;
    }

private:
    std::uint64_t m_nWidth;
    std::uint64_t m_nDepth;
};

TEST_F(MemoryReading, folderOfManyThousandFoldersArrivesWhole) {
    disk->addGenerated("/disk", std::make_shared<ManyFolders>(20'000, 1), 0);
    run.scan("/disk");
    EXPECT_EQ(20'001u, run.root->numberOfChildren());
    EXPECT_EQ(200'010, run.root->gettotalsize());
}

TEST_F(MemoryReading, chainFiveThousandDeepIsReadToItsEnd) {
    constexpr std::int64_t kDepth = 5'000;
    disk->addGenerated("/disk", std::make_shared<ManyFolders>(1, kDepth), 0);
    run.scan("/disk");
    EXPECT_EQ((kDepth + 1) * 10, run.root->gettotalsize());
    EXPECT_EQ(kDepth + 1, run.root->calcChildDepth());
}

TEST_F(MemoryReading, bushyTreeAddsUp) {
    disk->addGenerated("/disk", std::make_shared<ManyFolders>(8, 5), 0);
    run.scan("/disk");
    const std::int64_t folders = 1 + 8 + 64 + 512 + 4096 + 32768;
    EXPECT_EQ(folders * 10, run.root->gettotalsize());
}

} // namespace
} // namespace veltrano
