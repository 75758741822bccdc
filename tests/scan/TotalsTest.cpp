#include "scan/DiskForms.h"
#include "scan/ScanRun.h"

#include <gtest/gtest.h>

#include <random>

namespace veltrano {
namespace {

using test::DiskForm;
using test::recountByLinks;
using test::ScanRun;
using test::TestDisk;

/// A disk with folders, packages, empty and denied folders and files of many sizes; answers what can be read.
std::int64_t growRandomDisk(TestDisk& disk, std::uint64_t seed, int entries) {
    std::mt19937_64 numbers(seed);
    std::vector<std::string> folders{""};
    std::int64_t sum = 0;
    for (int entry = 0; entry < entries; ++entry) {
        const std::string parent = folders[numbers() % folders.size()];
        const std::string name = "n" + std::to_string(entry);
        switch (numbers() % 16) {
        case 0:
        case 1:
        case 2:
            folders.push_back(parent + name + "/");
            break;
        case 3:
            folders.push_back(parent + name + ".app/");
            break;
        case 4:
            disk.folder(parent + name);
            break;
        case 5:
            if (numbers() % 4 == 0) {
                disk.file(parent + name + "/unseen", 4096);
                disk.deny(parent + name);
            }
            break;
        default:
            sum += disk.file(parent + name, static_cast<std::int64_t>(numbers() % 4) * 4096);
        }
    }
    return sum;
}

/// What the level table of a volume's tree must hold, by the child links alone.
void collectLevels(FileSystemItem& item, std::size_t level, std::vector<std::int64_t>& levels) {
    if (level >= levels.size())
        return;
    levels[level] = std::max(levels[level], item.gettotalsize());
    for (std::size_t index = 0; index < item.numberOfChildren(); ++index)
        collectLevels(*item.childAtIndex(index), level + 1, levels);
}

class Totals : public testing::TestWithParam<DiskForm> {};

TEST_P(Totals, everyMergeLeavesThemEqualToARecount) {
    for (std::uint64_t seed = 1; seed <= 5; ++seed) {
        const auto disk = TestDisk::make(GetParam());
        const std::int64_t sum = growRandomDisk(*disk, seed, 3000);
        ScanRun run(disk->catalogue());
        std::vector<std::string> wrong;
        run.onProgress = [&] {
            EXPECT_EQ(run.progress.back(), recountByLinks(*run.model->getRootItem(), &wrong));
        };
        run.scan(disk->root());
        EXPECT_TRUE(wrong.empty()) << "seed " << seed << ": " << wrong.front();
        EXPECT_EQ(sum, run.root->gettotalsize()) << seed;
    }
}

TEST_P(Totals, everyMergeLeavesTheLevelTableEqualToARecount) {
    for (std::uint64_t seed = 11; seed <= 13; ++seed) {
        const auto disk = TestDisk::make(GetParam());
        growRandomDisk(*disk, seed, 2000);
        ScanRun run(disk->catalogue());
        run.addVolume(disk->root(), 1'000'000'000, 0);
        run.onProgress = [&] {
            FolderSystemItem& root = *run.model->getRootItem();
            std::vector<std::int64_t> levels(kLevelCount);
            collectLevels(root, 0, levels);
            const std::int64_t* const table = root.getMaxSizesByLevels();
            EXPECT_EQ(levels, std::vector<std::int64_t>(table, table + kLevelCount));
        };
        run.scan(disk->root());
        EXPECT_EQ(1'000'000'000, run.root->gettotalsize());
    }
}

TEST_P(Totals, everyMergeFillsALevelTableThatSomeoneEmptied) {
    const auto disk = TestDisk::make(GetParam());
    growRandomDisk(*disk, 14, 1000);
    ScanRun run(disk->catalogue());
    run.addVolume(disk->root(), 1'000'000'000, 0);
    run.onProgress = [&] {
        FolderSystemItem& root = *run.model->getRootItem();
        std::vector<std::int64_t> levels(kLevelCount);
        collectLevels(root, 0, levels);
        const std::int64_t* const table = root.getMaxSizesByLevels();
        EXPECT_EQ(levels, std::vector<std::int64_t>(table, table + kLevelCount));
        root.initSizesByLevels();
    };
    run.scan(disk->root());
    EXPECT_LE(5u, run.progress.size());
}

TEST_P(Totals, progressNeverFalls) {
    const auto disk = TestDisk::make(GetParam());
    growRandomDisk(*disk, 21, 3000);
    ScanRun run(disk->catalogue());
    run.scan(disk->root());
    EXPECT_TRUE(std::is_sorted(run.progress.begin(), run.progress.end()));
}

TEST_P(Totals, twoScansOfOneDiskAgree) {
    const auto disk = TestDisk::make(GetParam());
    growRandomDisk(*disk, 31, 3000);
    ScanRun run(disk->catalogue());
    const auto first = run.scan(disk->root());
    const auto second = run.scan(disk->root());
    EXPECT_EQ(first->gettotalsize(), second->gettotalsize());
    EXPECT_EQ(first->calcChildDepth(), second->calcChildDepth());
}

INSTANTIATE_TEST_SUITE_P(Forms, Totals, test::allDiskForms(), test::diskFormName);

/// Merges in the middle of a scan, which a clock that jumps brings about as often as the gate allows.
TEST(TotalsWhileScanning, mergesInTheMiddleAreExact) {
    std::size_t early = 0;
    for (std::uint64_t seed = 41; seed <= 44; ++seed) {
        const auto disk = TestDisk::make(DiskForm::Memory);
        const std::int64_t sum = growRandomDisk(*disk, seed, 60'000);
        ScanRun run(disk->catalogue());
        std::vector<std::string> wrong;
        run.onProgress = [&] {
            recountByLinks(*run.model->getRootItem(), &wrong);
        };
        // A request for an update at almost every folder.
        run.scan(disk->root(), 3600);
        EXPECT_TRUE(wrong.empty()) << wrong.front();
        EXPECT_EQ(sum, run.root->gettotalsize());
        early += run.progress.size() - 5;
    }
    EXPECT_GT(early, 0u);
}

} // namespace
} // namespace veltrano
