#include "scan/CSWalkOperation.h"

#include "scan/DiskForms.h"
#include "scan/ScanRun.h"
#include "support/MemoryDisk.h"
#include "support/ThreadMainLoop.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

namespace veltrano {
namespace {

using test::DiskForm;
using test::itemAt;
using test::RecordingSink;
using test::recountByLinks;
using test::ScanRun;
using test::TestDisk;

class CSWalkOperationTest : public testing::Test {
protected:
    void addFiles(const std::string& folder, int count, std::int64_t size) {
        for (int file = 0; file < count; ++file)
            disk->addFile(folder + "/f" + std::to_string(file), size);
    }

    /// A chain of folders with files, each but the first held up by a gate of its own:
    /// /disk -> /disk/d1 -> /disk/d1/d2
    void makeGatedChain(int filesEach, std::int64_t size) {
        addFiles("/disk", filesEach, size);
        addFiles("/disk/d1", filesEach, size);
        addFiles("/disk/d1/d2", filesEach, size);
        disk->gateReads("/disk/d1", first);
        disk->gateReads("/disk/d1/d2", second);
    }

    /// Scans the chain and answers how many merges there were before its last folder was read. The first
    /// request of all only starts the tick.
    std::size_t mergesBeforeLastFolder(std::uint64_t occupied) {
        run.start("/disk", occupied);
        EXPECT_TRUE(first->waitForArrivals(1));
        run.loop.advance(0.25);
        first->release();
        EXPECT_TRUE(second->waitForArrivals(1));
        run.loop.advance(0);
        const std::size_t merges = run.progress.size();
        second->release();
        EXPECT_TRUE(run.waitFor([&] { return run.finished == 1; }));
        return merges;
    }

    std::shared_ptr<MemoryDisk> disk = std::make_shared<MemoryDisk>();
    std::shared_ptr<ReadGate> first = std::make_shared<ReadGate>();
    std::shared_ptr<ReadGate> second = std::make_shared<ReadGate>();
    ScanRun run{disk};

    ~CSWalkOperationTest() override {
        first->release();
        second->release();
    }
};

TEST_F(CSWalkOperationTest, withoutASizeUpdatesComeByEntries) {
    makeGatedChain(331, 10);
    EXPECT_EQ(1u, mergesBeforeLastFolder(3599));
    // The request comes with the third read of the second folder.
    EXPECT_EQ((331 + 330) * 10, run.progress.front());
}

TEST_F(CSWalkOperationTest, fewerThan301EntriesAreNoReasonForAnUpdate) {
    makeGatedChain(149, 10); // 150 entries in each of the first two folders
    EXPECT_EQ(0u, mergesBeforeLastFolder(0));
}

TEST_F(CSWalkOperationTest, entriesWithoutSizeAreNoReasonForAnUpdate) {
    makeGatedChain(331, 0);
    EXPECT_EQ(0u, mergesBeforeLastFolder(0));
}

TEST_F(CSWalkOperationTest, withASizeUpdatesComeByBytes) {
    makeGatedChain(3, 1000);
    EXPECT_EQ(1u, mergesBeforeLastFolder(3600 * 2999)); // steps of 2999 bytes, 3000 are found in each folder
}

TEST_F(CSWalkOperationTest, stepMustBeExceeded) {
    makeGatedChain(3, 1000);
    // Steps of 6000 bytes: 6000 are found before the last folder.
    EXPECT_EQ(0u, mergesBeforeLastFolder(3600 * 6000));
}

TEST_F(CSWalkOperationTest, noMoreThanOneMergePassesForEachTick) {
    makeGatedChain(1000, 10);
    EXPECT_EQ(1u, mergesBeforeLastFolder(0));
}

TEST_F(CSWalkOperationTest, eachWorkerMergesOnceMoreAtTheEndAndTheTotalIsToldOnceMore) {
    disk->addFile("/disk/a", 5);
    run.scan("/disk");
    EXPECT_EQ(5u, run.progress.size());
    EXPECT_EQ(5, run.progress.back());
}

TEST_F(CSWalkOperationTest, emptyStartFolderEndsAtOnce) {
    disk->addFolder("/disk");
    run.scan("/disk");
    EXPECT_EQ(1, run.finished);
    EXPECT_EQ(0u, run.root->numberOfChildren());
    EXPECT_EQ(0, run.progress.back());
}

TEST_F(CSWalkOperationTest, tableOfTheBiggestIsShownAtTheEnd) {
    RecordingSink sink;
    sink.changes = false;
    disk->addFile("/disk/a", 5);
    run.scan("/disk", 0, &sink);
    EXPECT_EQ(1, sink.updates);
}

TEST_F(CSWalkOperationTest, cancelledScanDoesNotShowTheTable) {
    RecordingSink sink;
    makeGatedChain(2, 10);
    run.start("/disk", 0, &sink);
    EXPECT_TRUE(first->waitForArrivals(1));
    run.model->StopWalking();
    first->release();
    EXPECT_TRUE(run.waitFor([&] { return run.cancelled == 1; }));
    EXPECT_EQ(0, sink.updates);
    EXPECT_FALSE(sink.offers.empty()); // the last merge still offers
}

TEST_F(CSWalkOperationTest, cancelledScanDoesNotExplainDeniedFolders) {
    makeGatedChain(2, 10);
    disk->deny("/disk/no");
    run.addVolume("/disk", 1'000'000, 0);
    run.start("/disk");
    EXPECT_TRUE(first->waitForArrivals(1));
    run.model->StopWalking();
    first->release();
    EXPECT_TRUE(run.waitFor([&] { return run.cancelled == 1; }));
    EXPECT_EQ(1u, test::countUnscanned(*run.root));
    EXPECT_EQ("Unscanned Disk Space", test::unscannedItem(*run.root)->getDesc());
}

/// 1 + 4 + 16 + 64 folders with files at depth 3.
void growTree(MemoryDisk& disk, const std::string& path, int depth) {
    disk.addFile(path + "/f", 10);
    for (int child = 0; depth > 0 && child < 4; ++child)
        growTree(disk, path + "/d" + std::to_string(child) + (child == 3 ? ".app" : ""), depth - 1);
}

/// The same on any disk; answers its bytes.
std::int64_t growTree(TestDisk& disk, const std::string& path, int depth) {
    std::int64_t sum = disk.file(path + "f", 10);
    for (int child = 0; depth > 0 && child < 4; ++child)
        sum += growTree(disk, path + "d" + std::to_string(child) + (child == 3 ? ".app/" : "/"), depth - 1);
    return sum;
}

class CancelAtEveryStep : public testing::TestWithParam<DiskForm> {};

TEST_P(CancelAtEveryStep, endsTheScanWithAWholeTree) {
    constexpr int kFolders = 1 + 4 + 16 + 64;
    /// Shared, since a worker that was slow enough to be given up may take its step later.
    struct Watch {
        std::atomic<int> steps = 0;
        ReadGate stopped;
    };
    const auto disk = TestDisk::make(GetParam());
    const std::int64_t sum = growTree(*disk, "", 3);
    for (int step = 0; step <= 2 * kFolders; ++step) {
        ScanRun run(disk->catalogue());
        const auto watch = std::make_shared<Watch>();
        disk->setBeforeStep([watch, step, &run] {
            if (watch->steps++ != step)
                return;
            run.loop.post([&run, watch] {
                run.model->StopWalking();
                watch->stopped.release();
            });
            watch->stopped.pass();
        });
        run.start(disk->root());
        ASSERT_TRUE(run.waitFor([&] { return run.cancelled + run.finished == 1; })) << step;
        EXPECT_EQ(watch->steps > step ? 1 : 0, run.cancelled) << step;
        EXPECT_LE(run.root->gettotalsize(), sum) << step;
        std::vector<std::string> wrong;
        recountByLinks(*run.root, &wrong);
        EXPECT_TRUE(wrong.empty()) << step << ": " << wrong.front();
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, CancelAtEveryStep, test::allDiskForms(), test::diskFormName);

/// Lets something happen on the main thread when a scan comes to a certain step, while its reader waits.
class StepWatch {
public:
    static void set(MemoryDisk& disk, FakeMainLoop& loop, int step, const std::function<void()>& happening) {
        const auto watch = std::make_shared<StepWatch>();
        auto atStep = [watch, step, &loop, happening](const std::string&) {
            if (watch->m_nSteps++ != step)
                return;
            loop.post([watch, happening] {
                happening();
                watch->m_done.release();
            });
            watch->m_done.pass();
        };
        disk.setBeforeOpen(atStep);
        disk.setBeforeRead(atStep);
    }

private:
    std::atomic<int> m_nSteps = 0;
    ReadGate m_done;
};

constexpr int kSmallTreeSteps = 2 * (1 + 4 + 16); // an open and a read of each folder

TEST(Destroy, atEveryStepTellsNobodyAndLeavesNoThread) {
    for (int step = 0; step < kSmallTreeSteps; ++step) {
        auto disk = std::make_shared<MemoryDisk>();
        growTree(*disk, "/disk", 2);
        ScanRun run(disk);
        run.addVolume("/disk", 100'000, 0);
        StepWatch::set(*disk, run.loop, step, [&run] { run.model.reset(); });
        run.start("/disk");
        ASSERT_TRUE(run.waitFor([&] { return !run.model; })) << step;
        run.root.reset();
        while (disk.use_count() > 1)
            std::this_thread::yield();
        run.loop.advance(1);
        EXPECT_EQ(0, run.finished + run.cancelled) << step;
    }
}

TEST(SecondScan, atEveryStepOfTheFirstIsWhole) {
    for (int step = 0; step < kSmallTreeSteps; ++step) {
        auto disk = std::make_shared<MemoryDisk>();
        growTree(*disk, "/disk", 2);
        ScanRun run(disk);
        StepWatch::set(*disk, run.loop, step, [&run] { run.start("/disk"); });
        const auto first = run.start("/disk");
        ASSERT_TRUE(run.waitFor([&] { return run.finished == 1 && run.cancelled == 1; })) << step;
        EXPECT_NE(first, run.root) << step;
        EXPECT_EQ((1 + 4 + 16) * 10, run.root->gettotalsize()) << step;
        for (const auto& root : {first, run.root}) {
            std::vector<std::string> wrong;
            recountByLinks(*root, &wrong);
            EXPECT_TRUE(wrong.empty()) << step << ": " << wrong.front();
        }
    }
}

TEST(Cancel, atEveryNotificationEndsTheScanOnce) {
    for (std::size_t at = 1; at <= 6; ++at) {
        auto disk = std::make_shared<MemoryDisk>();
        growTree(*disk, "/disk", 2);
        ScanRun run(disk);
        run.addVolume("/disk", 100'000, 0);
        run.onProgress = [&] {
            if (run.progress.size() == at)
                run.model->StopWalking();
        };
        run.start("/disk");
        ASSERT_TRUE(run.waitFor([&] { return run.cancelled + run.finished == 1; })) << at;
        run.loop.advance(1);
        EXPECT_EQ(1, run.cancelled + run.finished) << at;
        EXPECT_EQ(run.progress.size() >= at ? 1 : 0, run.cancelled) << at;
        EXPECT_EQ(1u, test::countUnscanned(*run.root)) << at;
        EXPECT_EQ(run.root->gettotalsize(), recountByLinks(*run.root)) << at;
    }
}

TEST(Cancel, rightAfterTheStartEndsTheScan) {
    for (int round = 0; round < 50; ++round) {
        auto disk = std::make_shared<MemoryDisk>();
        growTree(*disk, "/disk", 2);
        ScanRun run(disk);
        run.start("/disk");
        run.model->StopWalking();
        ASSERT_TRUE(run.waitFor([&] { return run.cancelled == 1; }));
    }
}

TEST(Cancel, foldersLeftUnreadStayInTheTreeWithoutSize) {
    auto disk = std::make_shared<MemoryDisk>();
    auto gate = std::make_shared<ReadGate>();
    for (int folder = 0; folder < 20; ++folder) {
        const std::string path = "/disk/d" + std::to_string(folder);
        disk->addFile(path + "/f", 10);
        disk->gateReads(path, gate);
    }
    ScanRun run(disk);
    run.start("/disk");
    EXPECT_TRUE(gate->waitForArrivals(4));
    run.model->StopWalking();
    gate->release();
    EXPECT_TRUE(run.waitFor([&] { return run.cancelled == 1; }));
    EXPECT_EQ(20u, run.root->numberOfChildren());
    EXPECT_LE(run.root->gettotalsize(), 40);
}

TEST(Cancel, workerThatHangsIsLeftBehind) {
    auto disk = std::make_shared<MemoryDisk>();
    auto gate = std::make_shared<ReadGate>();
    disk->addFile("/disk/a", 10);
    disk->addFile("/disk/dead/b", 20);
    disk->gateReads("/disk/dead", gate);
    ScanRun run(disk);
    run.start("/disk");
    EXPECT_TRUE(gate->waitForArrivals(1));
    run.model->StopWalking();
    EXPECT_TRUE(run.waitFor([&] { return run.cancelled == 1; }));
    EXPECT_EQ(10, run.root->gettotalsize());

    // What it delivers later is dropped, and the next scan does not notice it.
    disk->addFile("/next/c", 7);
    run.start("/next");
    gate->release();
    EXPECT_TRUE(run.waitFor([&] { return run.finished == 1; }));
    EXPECT_EQ(7, run.root->gettotalsize());
}

TEST(Cancel, hangingStartFolderIsLeftBehindToo) {
    auto disk = std::make_shared<MemoryDisk>();
    auto gate = std::make_shared<ReadGate>();
    disk->addFile("/dead/b", 20);
    disk->gateReads("/dead", gate);
    ScanRun run(disk);
    run.start("/dead");
    EXPECT_TRUE(gate->waitForArrivals(1));
    run.model->StopWalking();
    EXPECT_TRUE(run.waitFor([&] { return run.cancelled == 1; }));
    gate->release();
    run.model.reset();
    run.root.reset();
    while (disk.use_count() > 1)
        std::this_thread::yield();
}

TEST(Scan, worksOnARealMainLoop) {
    auto disk = std::make_shared<MemoryDisk>();
    growTree(*disk, "/disk", 4);
    ThreadMainLoop loop;
    NotificationCentre notifications;
    const TimeCode codes(currentCatalogueDate);
    bool finished = false;
    notifications.addObserver(std::string(FinishWalkingVolume), [&](const auto&) { finished = true; });
    FakeVolumes volumes;
    CModel model(loop, notifications, disk, codes, {}, volumes);
    const auto root = model.StartWalkWithPath("/disk", 0, nullptr);
    EXPECT_TRUE(loop.runUntil([&] { return finished; }));
    EXPECT_EQ((1 + 4 + 16 + 64 + 256) * 10, root->gettotalsize());
}

} // namespace
} // namespace veltrano
