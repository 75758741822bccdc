#include "scan/TWalker.h"

#include "scan/CSWalkOperation.h"
#include "scan/HandOverQueue.h"
#include "scan/ScanRun.h"
#include "support/MemoryDisk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#ifdef __linux__
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace veltrano {
namespace {

using test::itemAt;
using test::RecordingSink;
using test::ScanRun;

class TWalkerTest : public testing::Test {
protected:
    TWalkerTest() {
        disk->setBeforeRead([this](const std::string& path) {
            const std::lock_guard guard(mutex);
            readers[path] = std::this_thread::get_id();
        });
    }
    ~TWalkerTest() override { gate->release(); }

    /// A folder with one file, which its reader can't read before the gate opens.
    void gatedFolder(const std::string& path) {
        disk->addFile(path + "/f", 10);
        disk->gateReads(path, gate);
    }

    std::thread::id readerOf(const std::string& path) {
        const std::lock_guard guard(mutex);
        return readers.at(path);
    }

    void finish() {
        gate->release();
        EXPECT_TRUE(run.waitFor([&] { return run.finished == 1; }));
    }

    std::shared_ptr<MemoryDisk> disk = std::make_shared<MemoryDisk>();
    std::shared_ptr<ReadGate> gate = std::make_shared<ReadGate>();
    ScanRun run{disk};
    std::mutex mutex;
    std::map<std::string, std::thread::id> readers;
};

TEST_F(TWalkerTest, firstSubfolderIsKeptEvenWhenOthersAreIdle) {
    gatedFolder("/disk/a");
    run.start("/disk");
    EXPECT_TRUE(gate->waitForArrivals(1));
    EXPECT_EQ(readerOf("/disk"), readerOf("/disk/a"));
    finish();
}

TEST_F(TWalkerTest, secondSubfolderGoesToAnIdleWorker) {
    gatedFolder("/disk/a");
    gatedFolder("/disk/b");
    run.start("/disk");
    EXPECT_TRUE(gate->waitForArrivals(2));
    EXPECT_EQ(readerOf("/disk"), readerOf("/disk/a"));
    EXPECT_NE(readerOf("/disk"), readerOf("/disk/b"));
    finish();
}

TEST_F(TWalkerTest, oneFolderSpreadsOverAllFourWorkers) {
    for (const char* const name : {"a", "b", "c", "d"})
        gatedFolder("/disk/" + std::string(name));
    run.start("/disk");
    EXPECT_TRUE(gate->waitForArrivals(4));
    const std::set<std::thread::id> threads{readerOf("/disk/a"), readerOf("/disk/b"), readerOf("/disk/c"),
                                            readerOf("/disk/d")};
    EXPECT_EQ(4u, threads.size());
    finish();
}

TEST_F(TWalkerTest, whenAllAreBusyANewFolderStaysWithItsFinder) {
    for (const char* const name : {"a", "b", "c", "d", "e"})
        gatedFolder("/disk/" + std::string(name));
    run.start("/disk");
    // The finder has kept a and e, and reads the last one first.
    EXPECT_TRUE(gate->waitForArrivals(4));
    EXPECT_EQ(readerOf("/disk"), readerOf("/disk/e"));
    finish();
    EXPECT_EQ(readerOf("/disk"), readerOf("/disk/e"));
    EXPECT_EQ(50, run.root->gettotalsize());
}

TEST_F(TWalkerTest, folderInsideAPackageIsHandedOnLikeAnyOther) {
    gatedFolder("/disk/x.app/a");
    gatedFolder("/disk/x.app/b");
    run.start("/disk");
    EXPECT_TRUE(gate->waitForArrivals(2));
    EXPECT_NE(readerOf("/disk/x.app/a"), readerOf("/disk/x.app/b"));
    finish();
    EXPECT_EQ(20, itemAt(*run.root, "x.app")->gettotalsize());
    EXPECT_EQ(1u, run.root->numberOfChildren());
}

TEST_F(TWalkerTest, childrenMayBeLinkedBeforeTheirFolder) {
    // The merges at the end run in the workers' order, so the second worker's folder, found by the first, and
    // the first worker's folders come in any order of depth.
    for (int folder = 0; folder < 40; ++folder)
        for (int below = 0; below < 5; ++below)
            disk->addFile("/disk/d" + std::to_string(folder) + "/e" + std::to_string(below) + "/f", 1);
    run.scan("/disk");
    EXPECT_EQ(200, run.root->gettotalsize());
    EXPECT_EQ(40u, run.root->numberOfChildren());
}

TEST_F(TWalkerTest, rootIsNotItsOwnChild) {
    disk->addFile("/disk/f", 1);
    run.scan("/disk");
    EXPECT_EQ(1u, run.root->numberOfChildren());
    EXPECT_EQ(nullptr, run.root->getParent());
}

TEST_F(TWalkerTest, filesFromTheThresholdOnAreOffered) {
    RecordingSink sink;
    sink.porog = 100;
    disk->addFile("/disk/below", 99);
    disk->addFile("/disk/at", 100);
    disk->addFile("/disk/d/above", 101);
    run.scan("/disk", 0, &sink);
    std::vector<std::string> names;
    for (const auto& offer : sink.offers) {
        names.push_back(offer.name);
        EXPECT_EQ(100, offer.porog);
        EXPECT_FALSE(offer.checkForExist);
    }
    EXPECT_THAT(names, testing::UnorderedElementsAre("at", "above"));
}

TEST_F(TWalkerTest, foldersAreNotOffered) {
    RecordingSink sink;
    disk->addFile("/disk/d/f", 50);
    run.scan("/disk", 0, &sink);
    ASSERT_EQ(1u, sink.offers.size());
    EXPECT_EQ("f", sink.offers.front().name);
}

TEST_F(TWalkerTest, packagesAreOfferedAsOnesThatMayBeThere) {
    RecordingSink sink;
    sink.porog = 30;
    disk->addFile("/disk/big.app/f", 20);
    disk->addFile("/disk/big.app/d/g", 15);
    disk->addFile("/disk/small.app/f", 29);
    run.scan("/disk", 0, &sink);
    ASSERT_FALSE(sink.offers.empty());
    for (const auto& offer : sink.offers) {
        EXPECT_EQ("big.app", offer.name);
        EXPECT_TRUE(offer.checkForExist);
    }
    EXPECT_EQ(35, sink.offers.back().size);
}

TEST_F(TWalkerTest, packagesAreWeighedAnewAtEveryMerge) {
    // The package is merged while half of it is read, and again at the end.
    RecordingSink sink;
    for (int file = 0; file < 400; ++file)
        disk->addFile("/disk/x.app/f" + std::to_string(file), 1);
    for (int file = 0; file < 400; ++file)
        disk->addFile("/disk/x.app/d/f" + std::to_string(file), 1);
    for (int file = 0; file < 400; ++file)
        disk->addFile("/disk/x.app/d/e/f" + std::to_string(file), 1);
    auto late = std::make_shared<ReadGate>();
    disk->gateReads("/disk/x.app/d", gate);
    disk->gateReads("/disk/x.app/d/e", late);
    run.start("/disk", 0, &sink);
    EXPECT_TRUE(gate->waitForArrivals(1));
    run.loop.advance(0.25); // the tick has begun with the first request
    gate->release();
    EXPECT_TRUE(late->waitForArrivals(1));
    run.loop.advance(0);
    ASSERT_EQ(1u, sink.offers.size());
    const std::int64_t early = sink.offers.front().size;
    EXPECT_GT(early, 400);
    EXPECT_LE(early, 800);
    late->release();
    EXPECT_TRUE(run.waitFor([&] { return run.finished == 1; }));
    EXPECT_EQ(1200, sink.offers.back().size);
}

TEST_F(TWalkerTest, tableIsShownAfterAMergeThatChangedIt) {
    RecordingSink changing;
    disk->addFile("/disk/f", 10);
    run.scan("/disk", 0, &changing);
    EXPECT_EQ(2, changing.updates); // the last merge of one worker, and the end
}

TEST_F(TWalkerTest, thresholdIsAskedAtEachMerge) {
    class RisingSink final : public BiggestFilesSink {
    public:
        std::int64_t getPorogforScan() const override { return ++asked; }
        bool tryAddtoScanArray(FileSystemItem*, std::int64_t, bool) override { return false; }
        void tryUpdateTableByScanning() override {}
        mutable std::int64_t asked = 0;
    } sink;
    disk->addFile("/disk/f", 10);
    run.scan("/disk", 0, &sink);
    EXPECT_EQ(4, sink.asked); // once for each worker's last merge
}

#ifdef __linux__
TEST_F(TWalkerTest, workersStepBackBehindTheWindow) {
    std::atomic<int> niceness{-100};
    disk->setBeforeRead(
        [&](const std::string&) { niceness = ::getpriority(PRIO_PROCESS, static_cast<id_t>(::gettid())); });
    const int own = ::getpriority(PRIO_PROCESS, 0);
    disk->addFile("/disk/f", 10);
    run.scan("/disk");
    EXPECT_GE(niceness, 10);
    EXPECT_EQ(own, ::getpriority(PRIO_PROCESS, 0));
}
#endif

/// Workers by themselves: the messages of one are collected, and no operation deals with them.
class LoneWalkerTest : public TWalkerTest {
protected:
    LoneWalkerTest() {
        tables->queue = std::make_shared<HandOverQueue>(run.loop, tables->group, [this] {
            HandOver message;
            while (tables->queue->next(message))
                received.push_back(message.kind);
        });
        reader = TWalker::initWithID(0, tables, *operation);
        sender = TWalker::initWithID(3, tables, *operation);
    }
    ~LoneWalkerTest() override { tables->queue->close(); }

    void giveStartFolder() {
        ASSERT_TRUE(reader->start());
        stackitem2 start;
        start.item = top;
        const std::string path = "/disk";
        ASSERT_TRUE(sender->tryDispacthWork(start, &path, true));
    }

    const std::shared_ptr<TreeStorage> storage = TreeStorage::create();
    FolderSystemItem* const top = FolderSystemItem::initWithPathSizeNoParent(storage->mainArena(), "/disk",
                                                                             nullptr, 0, false, 0, false);
    const std::shared_ptr<TrashFolders> trash = std::make_shared<TrashFolders>(std::vector<std::string>{});
    const std::shared_ptr<CSWalkOperation> operation =
        CSWalkOperation::initWithRoot(TreeStorage::hold(top), *run.model, run.loop, disk, run.timeCode, trash,
                                      std::make_shared<ScanFacts>(), run.model->getProgressGate().getSign());
    const std::shared_ptr<WalkerTables> tables = std::make_shared<WalkerTables>(
        disk, run.timeCode, trash, storage, run.model->getProgressGate().getSign());
    std::shared_ptr<TWalker> reader;
    std::shared_ptr<TWalker> sender;
    std::vector<HandOver::Kind> received;
};

TEST_F(LoneWalkerTest, whatWasReadIsCounted) {
    // disk
    //  +- f, alias
    //  +- d
    //  |   +- g
    //  +- empty
    //  +- x.app
    //      +- h
    //      +- inside
    //          +- i
    disk->addFile("/disk/f", 10);
    disk->addFile("/disk/alias", {.size = 7, .isAlias = true});
    disk->addFile("/disk/d/g", 20);
    disk->addFolder("/disk/empty");
    disk->addFile("/disk/x.app/h", 5);
    disk->addFile("/disk/x.app/inside/i", 5);
    giveStartFolder();
    EXPECT_TRUE(run.waitFor([&] { return tables->group->wait(0); }));
    EXPECT_EQ(3, tables->gScanFolderCount); // d, x.app and what is inside it
    EXPECT_EQ(4, tables->gScanFileCount);
    EXPECT_EQ(9u, reader->getfound());
    EXPECT_EQ(47, reader->getsz());
    EXPECT_EQ(0u, sender->getfound());

    EXPECT_FALSE(reader->isMainFinished());
    reader->finalizeWork(true);
    EXPECT_TRUE(tables->threads.wait(60));
    EXPECT_TRUE(reader->isMainFinished());
}

TEST_F(LoneWalkerTest, workerThatIsGivenUpDeliversNothingMore) {
    gatedFolder("/disk");
    giveStartFolder();
    EXPECT_TRUE(gate->waitForArrivals(1));
    reader->abandon();
    EXPECT_EQ(0, tables->gBusyWalkers);
    run.loop.advance(0);
    EXPECT_TRUE(tables->group->wait(0));
    EXPECT_EQ(std::vector{HandOver::Kind::Folder}, received); // the start folder, handed over with the job

    gate->release();
    reader->finalizeWork(false);
    EXPECT_TRUE(tables->threads.wait(60));
    run.loop.advance(0);
    EXPECT_EQ((std::vector{HandOver::Kind::Folder, HandOver::Kind::LastMerge}), received);
    EXPECT_EQ(0, tables->gBusyWalkers);
}

TEST_F(LoneWalkerTest, whatWaitsForAMergeIsCountedItemByItem) {
    EXPECT_EQ(0u, reader->getArrayItemCount());
    HandOver leaves;
    leaves.kind = HandOver::Kind::Leaves;
    leaves.block.folder = top;
    leaves.block.files = storage->workerArena(0).makeChildArray(3);
    leaves.block.files->count = 3;
    reader->receive(leaves);
    EXPECT_EQ(3u, reader->getArrayItemCount());
    for (const HandOver::Kind kind : {HandOver::Kind::Folder, HandOver::Kind::Package}) {
        HandOver folder;
        folder.kind = kind;
        folder.block.folder = top;
        reader->receive(folder);
    }
    EXPECT_EQ(5u, reader->getArrayItemCount());
}

} // namespace
} // namespace veltrano
