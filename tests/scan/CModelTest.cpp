#include "scan/CModel.h"

#include "scan/ScanRun.h"
#include "support/ChildProcess.h"
#include "support/MemoryDisk.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using test::countUnscanned;
using test::itemAt;
using test::recountByLinks;
using test::ScanRun;
using test::unscannedItem;

class CModelTest : public testing::Test {
protected:
    /// A scan that has read "/disk" and hangs in "/disk/slow" until the gate opens.
    void startAndHoldUp() {
        disk->addFile("/disk/slow/b", 50);
        disk->gateReads("/disk/slow", gate);
        run.start("/disk");
        EXPECT_TRUE(gate->waitForArrivals(1));
    }

    std::shared_ptr<MemoryDisk> disk = std::make_shared<MemoryDisk>();
    std::shared_ptr<ReadGate> gate = std::make_shared<ReadGate>();
    ScanRun run{disk};

    CModelTest() { disk->addFile("/disk/a", 100); }
    ~CModelTest() override { gate->release(); }
};

TEST_F(CModelTest, newModelHasNoTreeAndNoScan) {
    EXPECT_EQ(nullptr, run.model->getRootItem());
    EXPECT_FALSE(run.model->getProcessing());
    EXPECT_TRUE(run.model->getVolumesInfo().empty());
}

TEST_F(CModelTest, stoppingAModelThatNeverScannedAddsNothing) {
    run.addVolume("/disk", 1000, 0);
    run.model->StopWalking();
    EXPECT_EQ(nullptr, run.model->getRootItem());
    run.loop.advance(1);
    EXPECT_EQ(0, run.cancelled);
}

TEST_F(CModelTest, startAnswersTheRootAtOnce) {
    const auto root = run.start("/disk");
    EXPECT_EQ(run.model->getRootItem(), root);
    EXPECT_EQ("/disk", root->relativePath());
    EXPECT_EQ(nullptr, root->getParent());
    EXPECT_EQ(0, root->getTimeCode());
    EXPECT_FALSE(root->isHiddenFlag());
    EXPECT_TRUE(run.waitFor([&] { return run.finished == 1; }));
}

TEST_F(CModelTest, startPathIsSetWhileAScanRuns) {
    startAndHoldUp();
    EXPECT_TRUE(run.model->getProcessing());
    EXPECT_EQ("/disk", run.model->getStartPath());
}

TEST_F(CModelTest, finishLeavesTheStartPathToTheController) {
    run.start("/disk");
    EXPECT_TRUE(run.waitFor([&] { return run.finished == 1; }));
    EXPECT_TRUE(run.model->getProcessing());
}

TEST_F(CModelTest, finishedScanPostsItsEndOnceWithTheModel) {
    run.scan("/disk");
    run.loop.advance(1);
    EXPECT_EQ(1, run.finished);
    EXPECT_EQ(0, run.cancelled);
    EXPECT_EQ(&*run.model, run.lastSender);
}

TEST_F(CModelTest, lastProgressIsTheTotal) {
    run.scan("/disk");
    ASSERT_FALSE(run.progress.empty());
    EXPECT_EQ(100, run.progress.back());
    EXPECT_EQ(100, run.root->gettotalsize());
}

TEST_F(CModelTest, stopClearsTheStartPathAtOnce) {
    startAndHoldUp();
    run.model->StopWalking();
    EXPECT_FALSE(run.model->getProcessing());
}

TEST_F(CModelTest, stoppedScanPostsItsCancelOnce) {
    startAndHoldUp();
    run.model->StopWalking();
    EXPECT_EQ(0, run.cancelled);
    gate->release();
    EXPECT_TRUE(run.waitFor([&] { return run.cancelled == 1; }));
    run.loop.advance(1);
    EXPECT_EQ(1, run.cancelled);
    EXPECT_EQ(0, run.finished);
    EXPECT_EQ(&*run.model, run.lastSender);
}

TEST_F(CModelTest, stoppedScanKeepsWhatItFound) {
    startAndHoldUp();
    run.model->StopWalking();
    gate->release();
    EXPECT_TRUE(run.waitFor([&] { return run.cancelled == 1; }));
    EXPECT_NE(nullptr, itemAt(*run.root, "a"));
    EXPECT_EQ(run.root->gettotalsize(), recountByLinks(*run.root));
    EXPECT_GE(run.root->gettotalsize(), 100);
}

TEST_F(CModelTest, stopAfterTheEndAddsNoUnscannedItem) {
    run.addVolume("/disk", 1000, 500);
    run.scan("/disk");
    ASSERT_EQ(1u, countUnscanned(*run.root)); // the missing space, explained at the end
    run.root->increaseTotalSize(-50);
    run.model->StopWalking();
    EXPECT_EQ(1u, countUnscanned(*run.root));
    EXPECT_EQ(0, run.cancelled);
}

TEST_F(CModelTest, stoppedVolumeAddsUpToItsOccupiedSize) {
    run.addVolume("/disk", 10'000, 4'000);
    startAndHoldUp();
    run.model->StopWalking();
    EXPECT_EQ(6'000, run.root->gettotalsize());
    const FileSystemItem* const unscanned = unscannedItem(*run.root);
    ASSERT_NE(nullptr, unscanned);
    EXPECT_EQ("Unscanned Disk Space", unscanned->getDesc());
    EXPECT_EQ(run.root.get(), unscanned->getParent());
}

TEST_F(CModelTest, itemsThatArriveAfterAStopMayExceedTheOccupiedSize) {
    run.addVolume("/disk", 10'000, 4'000);
    startAndHoldUp();
    run.model->StopWalking();
    gate->release();
    EXPECT_TRUE(run.waitFor([&] { return run.cancelled == 1; }));
    EXPECT_GE(run.root->gettotalsize(), 6'100);
    EXPECT_EQ(run.root->gettotalsize(), recountByLinks(*run.root));
    EXPECT_EQ(1u, countUnscanned(*run.root));
}

TEST_F(CModelTest, stoppedFolderGetsNoUnscannedItem) {
    startAndHoldUp();
    run.model->StopWalking();
    EXPECT_EQ(0u, countUnscanned(*run.root));
}

TEST_F(CModelTest, secondStopAddsNothing) {
    run.addVolume("/disk", 10'000, 4'000);
    startAndHoldUp();
    run.model->StopWalking();
    run.model->StopWalking();
    EXPECT_EQ(1u, countUnscanned(*run.root));
    EXPECT_EQ(6'000, run.root->gettotalsize());
}

TEST_F(CModelTest, unscannedItemNeedsAVolume) {
    EXPECT_FALSE(run.model->addUnscannedItem());
    run.scan("/disk");
    EXPECT_FALSE(run.model->addUnscannedItem());
}

TEST_F(CModelTest, unscannedItemNeedsMissingSpace) {
    run.addVolume("/disk", 1'000, 900);
    run.scan("/disk");
    EXPECT_FALSE(run.model->addUnscannedItem());
    EXPECT_EQ(0u, countUnscanned(*run.root));
}

TEST_F(CModelTest, unscannedItemHoldsTheDifference) {
    run.addVolume("/disk", 1'000, 900);
    run.scan("/disk");
    run.root->increaseTotalSize(-30);
    EXPECT_TRUE(run.model->addUnscannedItem());
    EXPECT_EQ(30, unscannedItem(*run.root)->gettotalsize());
    EXPECT_EQ(100, run.root->gettotalsize());
}

TEST_F(CModelTest, volumesPathMakesAVolumeRoot) {
    run.addVolume("/other", 1, 1);
    run.addVolume("/disk", 5'000, 2'000);
    run.start("/disk");
    ASSERT_TRUE(run.root->isVol());
    EXPECT_EQ(5'000, run.root->getWholeItemSize());
    EXPECT_EQ(3'000, run.root->getOccSize());
    EXPECT_TRUE(run.waitFor([&] { return run.finished == 1; }));
}

TEST_F(CModelTest, trailingSeparatorMakesAFolderRoot) {
    run.addVolume("/disk", 5'000, 2'000);
    run.scan("/disk/");
    EXPECT_FALSE(run.root->isVol());
    EXPECT_EQ(100, run.root->gettotalsize());
}

TEST_F(CModelTest, volumeIsFoundByItsExactPath) {
    run.addVolume("/disk", 1, 0);
    run.addVolume("/disk", 2, 0);
    EXPECT_EQ(run.model->getVolumesInfo().front(), run.model->getVolumeItemWithPath("/disk"));
    EXPECT_EQ(nullptr, run.model->getVolumeItemWithPath("/disk/a"));
    EXPECT_EQ(nullptr, run.model->getVolumeItemWithPath("/Disk"));
}

TEST_F(CModelTest, rootOfAHiddenFolderIsHiddenAndSoIsAllBelow) {
    disk->addFile("/disk/.secret/f", 1);
    run.scan("/disk/.secret");
    EXPECT_TRUE(run.root->isHiddenFlag());
    const FileSystemItem* const file = itemAt(*run.root, "f");
    ASSERT_NE(nullptr, file);
    EXPECT_FALSE(file->isHiddenFlag());
    EXPECT_TRUE(file->isTopHiddenFlag());
}

TEST_F(CModelTest, clearedTreeStaysWithWhoHoldsIt) {
    const auto root = run.scan("/disk");
    run.model->ClearResultsTree();
    EXPECT_EQ(nullptr, run.model->getRootItem());
    EXPECT_NE(nullptr, itemAt(*root, "a"));
}

TEST_F(CModelTest, newScanDuringAStopHasItsOwnTree) {
    startAndHoldUp();
    const auto oldRoot = run.root;
    run.model->StopWalking();
    disk->addFile("/next/c", 7);
    run.start("/next");
    EXPECT_TRUE(run.model->getProcessing());
    gate->release();
    EXPECT_TRUE(run.waitFor([&] { return run.finished == 1 && run.cancelled == 1; }));
    EXPECT_EQ(7, run.root->gettotalsize());
    EXPECT_EQ(1u, run.root->numberOfChildren());
    EXPECT_EQ(oldRoot->gettotalsize(), recountByLinks(*oldRoot));
    EXPECT_NE(nullptr, itemAt(*oldRoot, "a"));
}

TEST_F(CModelTest, newStartCancelsTheScanThatRuns) {
    startAndHoldUp();
    disk->addFile("/next/c", 7);
    run.start("/next");
    gate->release();
    EXPECT_TRUE(run.waitFor([&] { return run.finished == 1 && run.cancelled == 1; }));
    EXPECT_EQ(7, run.root->gettotalsize());
}

TEST_F(CModelTest, scanMayBeStartedFromTheEndOfAnother) {
    bool again = true;
    run.notifications.addObserver(std::string(FinishWalkingVolume), [&](const auto&) {
        if (std::exchange(again, false))
            run.root = run.model->StartWalkWithPath("/disk", 0, nullptr);
    });
    run.start("/disk");
    EXPECT_TRUE(run.waitFor([&] { return run.finished == 2; }));
    EXPECT_EQ(100, run.root->gettotalsize());
}

TEST_F(CModelTest, pathThatCannotBeUsedFinishesWithAnEmptyTree) {
    for (const std::string& path : {std::string(), std::string("/di\0sk", 6)}) {
        run.scan(path);
        EXPECT_EQ(0u, run.root->numberOfChildren());
    }
    EXPECT_EQ(2, run.finished);
    EXPECT_TRUE(run.progress.empty());
}

TEST_F(CModelTest, missingPathFinishesWithAnEmptyTree) {
    run.scan("/nowhere");
    EXPECT_EQ(0u, run.root->numberOfChildren());
    EXPECT_EQ(0, run.root->gettotalsize());
    EXPECT_EQ(1, run.finished);
}

TEST_F(CModelTest, absurdlyLongPathFinishesWithAnEmptyTree) {
    run.scan("/" + std::string(1'000'000, 'x'));
    EXPECT_EQ(0u, run.root->numberOfChildren());
}

TEST_F(CModelTest, pathLongerThanAnyTextOfATreeIsScannedAtItsEnd) {
    std::string path;
    for (int level = 0; level < 400; ++level)
        path += "/" + std::string(200, 'd');
    ASSERT_GT(path.size(), TreeArena::kLargestPiece);
    disk->addFile(path + "/f", 10);
    disk->addFile(path.substr(0, 201) + "/not this", 5);
    run.scan(path);
    EXPECT_EQ(10, run.root->gettotalsize());
    EXPECT_EQ(path, run.root->getFullPath());
}

TEST_F(CModelTest, scanFinishesWithAnEmptyTreeWhereNoThreadIsToBeHad) {
    const std::string answer = runInChild([&]() -> std::string {
        if (!forbidThreads())
            return "threads are to be had";
        run.start("/disk");
        if (!run.waitFor([&] { return run.finished == 1; }))
            return "no end";
        return std::to_string(run.root->numberOfChildren()) + " children";
    });
    if (answer == "threads are to be had")
        GTEST_SKIP() << "threads can't be limited here";
    EXPECT_EQ("0 children", answer);
}

TEST_F(CModelTest, modelThatGoesDuringAScanTellsNobody) {
    startAndHoldUp();
    run.model.reset();
    gate->release();
    run.loop.advance(1);
    EXPECT_EQ(0, run.finished + run.cancelled);
    EXPECT_EQ(0u, run.loop.pendingPosts());
    EXPECT_EQ(0u, run.loop.pendingTimers());
}

TEST_F(CModelTest, modelMayGoInsideAProgressNotification) {
    run.onProgress = [&] {
        run.model.reset();
    };
    run.start("/disk");
    EXPECT_TRUE(run.waitFor([&] { return !run.model; }));
    run.loop.advance(1);
    EXPECT_EQ(0, run.finished + run.cancelled);
}

TEST_F(CModelTest, threadsOfAGoneModelLetGoOfEverything) {
    startAndHoldUp();
    run.model.reset();
    run.root.reset();
    gate->release();
    while (disk.use_count() > 1)
        std::this_thread::yield();
    EXPECT_EQ(1, disk.use_count());
}

TEST_F(CModelTest, tickOutlivesScansAndIsOnlyOne) {
    for (int file = 0; file < 1000; ++file)
        disk->addFile("/disk/f" + std::to_string(file), 10);
    run.scan("/disk");
    EXPECT_EQ(1u, run.loop.pendingTimers());
    run.scan("/disk");
    EXPECT_EQ(1u, run.loop.pendingTimers());
}

TEST_F(CModelTest, rootInATrashPlaceIsTrash) {
    ScanFacts facts;
    facts.trashFolders = {"/disk/Trash"};
    ScanRun trashRun(disk, facts);
    disk->addFile("/disk/Trash/f", 1);
    EXPECT_TRUE(trashRun.scan("/disk/Trash")->isTrashFlag());
    EXPECT_FALSE(trashRun.scan("/disk")->isTrashFlag());
    EXPECT_TRUE(itemAt(*trashRun.root, "Trash")->isTrashFlag());
}

} // namespace
} // namespace veltrano
