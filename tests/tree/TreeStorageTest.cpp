#include "tree/TreeStorage.h"

#include "support/ChildProcess.h"
#include "support/TreeBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <thread>
#include <vector>

namespace veltrano {
namespace {

using test::TreeBuilder;

// --- Arenas ---

TEST(TreeArena, pieceIsAlignedAsAsked) {
    const auto storage = TreeStorage::create();
    TreeArena& arena = storage->mainArena();
    for (std::size_t alignment = 1; alignment <= 64; alignment *= 2) {
        arena.allocate(1, 1);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(arena.allocate(8, alignment)) % alignment, 0u);
    }
}

TEST(TreeArena, piecesDoNotOverlap) {
    const auto storage = TreeStorage::create();
    TreeArena& arena = storage->mainArena();
    std::vector<std::pair<unsigned char*, std::size_t>> pieces;
    for (std::size_t piece = 0; piece < 5'000; ++piece) {
        const std::size_t size = piece % 400;
        auto* const bytes = static_cast<unsigned char*>(arena.allocate(size, 1));
        std::memset(bytes, static_cast<int>(piece % 251), size);
        pieces.emplace_back(bytes, size);
    }
    for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
        const auto [bytes, size] = pieces[piece];
        ASSERT_TRUE(
            std::all_of(bytes, bytes + size, [&](unsigned char byte) { return byte == piece % 251; }));
    }
}

TEST(TreeArena, largestPieceIsServed) {
    const auto storage = TreeStorage::create();
    TreeArena& arena = storage->mainArena();
    for (int piece = 0; piece < 10; ++piece)
        std::memset(arena.allocate(TreeArena::kLargestPiece, 16), 1, TreeArena::kLargestPiece);
    EXPECT_GE(arena.bytesReserved(), 10 * TreeArena::kLargestPiece);
}

TEST(TreeArena, copyLivesApartFromItsSource) {
    const auto storage = TreeStorage::create();
    std::string source("a\0b", 3);
    const std::string_view copy = storage->mainArena().copyBytes(source);
    source = "xyz";
    EXPECT_EQ(copy, std::string_view("a\0b", 3));
}

TEST(TreeArena, copyOfNothingIsNoNullView) {
    const auto storage = TreeStorage::create();
    EXPECT_NE(storage->mainArena().copyBytes({}).data(), nullptr);
    EXPECT_TRUE(storage->mainArena().copyBytes({}).empty());
}

TEST(TreeArena, textLongerThanAChunkIsCopiedWhole) {
    const auto storage = TreeStorage::create();
    const std::string source(3 * TreeArena::kChunkSize, 'x');
    const std::string_view copy = storage->mainArena().copyBytes(source);
    EXPECT_EQ(copy, source);
    EXPECT_EQ(storage->bytesReserved(), source.size());
}

TEST(TreeArena, newChildArrayHasRoomAndNoChild) {
    const auto storage = TreeStorage::create();
    const ChildArray* const array = storage->mainArena().makeChildArray(7);
    EXPECT_EQ(array->count, 0u);
    EXPECT_EQ(array->capacity, 7u);
    EXPECT_EQ(array->begin(), array->end());
}

TEST(TreeArena, arenasOfOneStorageServeTheirThreadsAtOnce) {
    const auto storage = TreeStorage::create();
    std::vector<std::vector<FileSystemItem*>> items(TreeStorage::kWorkerCount);
    std::vector<std::thread> workers;
    for (int worker = 0; worker < TreeStorage::kWorkerCount; ++worker) {
        workers.emplace_back([&, worker] {
            for (int item = 0; item < 20'000; ++item)
                items[static_cast<std::size_t>(worker)].push_back(FileSystemItem::initWithPathSizeNoParent(
                    storage->workerArena(worker), std::to_string(item), nullptr, item, 0, false));
        });
    }
    for (std::thread& worker : workers)
        worker.join();
    for (const auto& ofWorker : items) {
        for (std::size_t item = 0; item < ofWorker.size(); ++item) {
            ASSERT_EQ(ofWorker[item]->relativePath(), std::to_string(item));
            ASSERT_EQ(&TreeStorage::of(ofWorker[item]), storage.get());
        }
    }
}

// --- One storage ---

TEST(TreeStorage, storageOfEveryNodeIsFound) {
    const TreeBuilder first = TreeBuilder::random(3, 20'000);
    const TreeBuilder second = TreeBuilder::random(4, 20'000);
    ASSERT_GT(first.arena().bytesReserved(), TreeArena::kChunkSize);
    for (const TreeBuilder* tree : {&first, &second}) {
        std::vector<FileSystemItem*> waiting{tree->root()};
        while (!waiting.empty()) {
            FileSystemItem* const item = waiting.back();
            waiting.pop_back();
            ASSERT_EQ(&TreeStorage::of(item), tree->storage().get());
            for (std::size_t index = 0; index < item->numberOfChildren(); ++index)
                waiting.push_back(item->childAtIndex(index));
        }
    }
}

TEST(TreeStorage, storageOfANodeOfEveryWorkerIsFound) {
    const auto storage = TreeStorage::create();
    for (int worker = 0; worker < TreeStorage::kWorkerCount; ++worker) {
        auto* const item = FolderSystemItem::initWithPathSizeNoParent(storage->workerArena(worker), "f",
                                                                      nullptr, 0, false, 0, false);
        EXPECT_EQ(&TreeStorage::of(item), storage.get());
    }
}

TEST(TreeStorage, emptyStorageTakesNothing) {
    EXPECT_EQ(TreeStorage::create()->bytesReserved(), 0u);
}

TEST(TreeStorage, reservedBytesCountEveryArena) {
    const auto storage = TreeStorage::create();
    storage->mainArena().allocate(1, 1);
    EXPECT_EQ(storage->bytesReserved(), TreeArena::kChunkSize);
    storage->workerArena(0).allocate(1, 1);
    storage->workerArena(3).allocate(1, 1);
    EXPECT_EQ(storage->bytesReserved(), 3 * TreeArena::kChunkSize);
}

TEST(TreeStorage, reservedBytesCountALargeArrayWhileItGrows) {
    const auto storage = TreeStorage::create();
    ChildArray* array = storage->growChildren(nullptr, 10'000);
    EXPECT_EQ(storage->bytesReserved(), sizeof(ChildArray) + array->capacity * sizeof(void*));
    array = storage->growChildren(array, array->capacity + 1);
    EXPECT_EQ(storage->bytesReserved(), sizeof(ChildArray) + array->capacity * sizeof(void*));
}

TEST(TreeStorage, grownArrayKeepsItsChildren) {
    const TreeBuilder tree("/r");
    std::vector<FileSystemItem*> expected;
    ChildArray* array = nullptr;
    for (int child = 0; child < 3'000; ++child) {
        if (!array || array->count == array->capacity)
            array = tree.storage()->growChildren(array, array ? array->count + 1 : 1);
        expected.push_back(tree.file(nullptr, "f", child));
        array->items()[array->count++] = expected.back();
        ASSERT_LE(array->count, array->capacity);
    }
    EXPECT_EQ(std::vector<FileSystemItem*>(array->begin(), array->end()), expected);
}

TEST(TreeStorage, arrayOfAWorkerCanGrow) {
    const TreeBuilder tree("/r");
    ChildArray* array = tree.storage()->workerArena(1).makeChildArray(2);
    array->items()[array->count++] = tree.root();
    array = tree.storage()->growChildren(array, 5'000);
    EXPECT_GE(array->capacity, 5'000u);
    ASSERT_EQ(array->count, 1u);
    EXPECT_EQ(array->items()[0], tree.root());
}

TEST(TreeStorage, firstArrayHasRoomForWhatIsNeededAlone) {
    const auto storage = TreeStorage::create();
    EXPECT_EQ(storage->growChildren(nullptr, 1)->capacity, 1u);
    EXPECT_EQ(storage->growChildren(nullptr, 9)->capacity, 9u);
}

// A million appends must not copy a million times: each step adds half of what is there.
TEST(TreeStorage, fullArrayGrowsByHalf) {
    const auto storage = TreeStorage::create();
    ChildArray* const array = storage->growChildren(nullptr, 1'000);
    EXPECT_EQ(storage->growChildren(array, 1'001)->capacity, 1'500u);
}

TEST(TreeStorage, depthIsUnknownWhileNoScanRuns) {
    EXPECT_FALSE(TreeStorage::create()->m_nGrowingDepth.has_value());
}

TEST(TreeStorage, lockMayBeTakenTwiceByOneThread) {
    const auto storage = TreeStorage::create();
    const std::lock_guard outer(storage->lock());
    EXPECT_TRUE(storage->lock().try_lock());
    storage->lock().unlock();
}

// --- Holders ---

TEST(TreeStorage, itemHeldAloneKeepsItsTree) {
    std::shared_ptr<FileSystemItem> held;
    {
        const TreeBuilder tree("/r");
        held = TreeStorage::hold(tree.file(tree.chain(tree.root(), "x", 50), "f", 10));
    }
    EXPECT_EQ(held->getParent()->getTopParent()->relativePath(), "/r");
    EXPECT_EQ(held->getFullPath().size(), 2u + 2u * 50u + 2u);
    EXPECT_EQ(held->getParent()->getTopParent()->calctotalsize(), 10);
}

TEST(TreeStorage, treeGoesWithItsLastHolder) {
    std::weak_ptr<TreeStorage> storage;
    std::shared_ptr<FileSystemItem> held;
    {
        const TreeBuilder tree("/r");
        storage = tree.storage();
        held = TreeStorage::hold(tree.file(tree.root(), "f", 10));
    }
    EXPECT_FALSE(storage.expired());
    held.reset();
    EXPECT_TRUE(storage.expired());
}

TEST(TreeStorage, nothingIsHeldByNothing) {
    EXPECT_EQ(TreeStorage::hold(static_cast<FileSystemItem*>(nullptr)), nullptr);
}

// A big tree's memory goes back on a thread of its own; a leak or a double free shows under the sanitizers.
TEST(TreeStorage, bigTreeGoesWithItsLastHolderOnAnyThread) {
    TreeBuilder tree("/r");
    for (int child = 0; child < 200'000; ++child)
        tree.file(tree.root(), "some name of an ordinary length", child);
    EXPECT_GT(tree.storage()->bytesReserved(), 16 * TreeArena::kChunkSize);
    const std::weak_ptr<TreeStorage> storage = tree.storage();
    std::thread([held = TreeStorage::hold(tree.root()->childAtIndex(7)), other = std::move(tree)]() mutable {
        held.reset();
    }).join();
    EXPECT_TRUE(storage.expired());
}

TEST(TreeStorage, bigTreeGoesAlsoWhereNoThreadIsToBeHad) {
    const std::string answer = runInChild([]() -> std::string {
        if (!forbidThreads())
            return "threads are to be had";
        TreeBuilder tree("/r");
        for (int child = 0; child < 200'000; ++child)
            tree.file(tree.root(), "some name of an ordinary length", child);
        const std::weak_ptr<TreeStorage> storage = tree.storage();
        tree = TreeBuilder("/s");
        return storage.expired() ? "gone" : "still there";
    });
    if (answer == "threads are to be had")
        GTEST_SKIP() << "threads can't be limited here";
    EXPECT_EQ(answer, "gone");
}

} // namespace
} // namespace veltrano
