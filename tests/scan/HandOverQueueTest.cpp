#include "scan/HandOverQueue.h"

#include "scan/DispatchGroup.h"
#include "support/FakeMainLoop.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace veltrano {
namespace {

HandOver numbered(std::int64_t number, HandOver::Kind kind = HandOver::Kind::Leaves,
                  std::uint8_t worker = 0) {
    HandOver message;
    message.kind = kind;
    message.nWorker = worker;
    message.block.sum = number;
    return message;
}

class HandOverQueueTest : public testing::Test {
protected:
    void takeAll() {
        ++turns;
        HandOver message;
        while (queue->next(message)) {
            taken.push_back(message.block.sum);
            senders.push_back(message.nWorker);
        }
    }

    FakeMainLoop loop;
    std::shared_ptr<DispatchGroup> group = std::make_shared<DispatchGroup>();
    std::shared_ptr<HandOverQueue> queue =
        std::make_shared<HandOverQueue>(loop, group, [this] { takeAll(); });
    std::vector<std::int64_t> taken;
    std::vector<int> senders;
    int turns = 0;
};

TEST_F(HandOverQueueTest, messageThatOnlyMattersToAMergeWakesNobody) {
    queue->push(numbered(1));
    EXPECT_EQ(0u, loop.pendingPosts());
}

TEST_F(HandOverQueueTest, requestWakesTheMainThread) {
    queue->push(numbered(1, HandOver::Kind::Update));
    EXPECT_EQ(1u, loop.pendingPosts());
}

TEST_F(HandOverQueueTest, manyRequestsCostOneWake) {
    for (int number = 0; number < 100; ++number)
        queue->push(numbered(number, HandOver::Kind::Update));
    EXPECT_EQ(1u, loop.pendingPosts());
    loop.advance(0);
    EXPECT_EQ(1, turns);
    EXPECT_EQ(100u, taken.size());
}

TEST_F(HandOverQueueTest, flushWakesForWhatWaits) {
    queue->flush();
    EXPECT_EQ(0u, loop.pendingPosts());
    queue->push(numbered(5));
    queue->flush();
    loop.advance(0);
    EXPECT_EQ(std::vector<std::int64_t>{5}, taken);
}

TEST_F(HandOverQueueTest, veryManyMessagesWakeTheMainThread) {
    for (int number = 0; number < 100'000; ++number)
        queue->push(numbered(number));
    EXPECT_EQ(1u, loop.pendingPosts());
}

TEST_F(HandOverQueueTest, wakesAnewAfterATurn) {
    queue->push(numbered(1, HandOver::Kind::Update));
    loop.advance(0);
    queue->push(numbered(2, HandOver::Kind::Update));
    EXPECT_EQ(1u, loop.pendingPosts());
    loop.advance(0);
    EXPECT_EQ((std::vector<std::int64_t>{1, 2}), taken);
}

TEST_F(HandOverQueueTest, orderIsThatOfPushing) {
    for (int number = 0; number < 1000; ++number)
        queue->push(numbered(number));
    queue->flush();
    loop.advance(0);
    ASSERT_EQ(1000u, taken.size());
    for (int number = 0; number < 1000; ++number)
        EXPECT_EQ(number, taken[static_cast<std::size_t>(number)]);
}

TEST_F(HandOverQueueTest, orderIsKeptPerThread) {
    constexpr std::int64_t kEach = 20'000;
    std::vector<std::thread> threads;
    for (std::uint8_t worker = 0; worker < 4; ++worker)
        threads.emplace_back([this, worker] {
            for (std::int64_t number = 0; number < kEach; ++number)
                queue->push(numbered(number, HandOver::Kind::Update, worker));
        });
    EXPECT_TRUE(loop.runUntil([&] { return taken.size() == 4 * kEach; }));
    for (std::thread& thread : threads)
        thread.join();
    std::int64_t next[4] = {};
    for (std::size_t index = 0; index < taken.size(); ++index)
        EXPECT_EQ(next[senders[index]]++, taken[index]);
}

TEST_F(HandOverQueueTest, countsAsUnderWayUntilAllIsTaken) {
    EXPECT_TRUE(group->wait(0));
    queue->push(numbered(1));
    EXPECT_FALSE(group->wait(0));
    queue->flush();
    EXPECT_FALSE(group->wait(0));
    loop.advance(0);
    EXPECT_TRUE(group->wait(0));
}

TEST_F(HandOverQueueTest, goingOnLaterIsAnotherTurnOfTheSameWork) {
    int parts = 0;
    std::shared_ptr<HandOverQueue> slow;
    slow = std::make_shared<HandOverQueue>(loop, group, [&] {
        HandOver message;
        if (slow->next(message)) {
            ++parts;
            slow->goOnLater();
        }
    });
    for (int number = 0; number < 5; ++number)
        slow->push(numbered(number, HandOver::Kind::Update));
    EXPECT_EQ(1u, loop.pendingPosts());
    loop.advance(0);
    EXPECT_EQ(5, parts);
    EXPECT_TRUE(group->wait(0));
}

TEST_F(HandOverQueueTest, closingDropsWhatWaitsAndFreesWhoWaits) {
    queue->push(numbered(1, HandOver::Kind::Update));
    queue->close();
    EXPECT_TRUE(group->wait(0));
    loop.advance(0);
    EXPECT_EQ(0, turns);
}

TEST_F(HandOverQueueTest, closedQueueSwallowsAndWakesNobody) {
    queue->close();
    queue->push(numbered(1, HandOver::Kind::Update));
    queue->flush();
    EXPECT_EQ(0u, loop.pendingPosts());
    EXPECT_TRUE(group->wait(0));
}

TEST_F(HandOverQueueTest, refusedWorkerIsSwallowedWithEverythingItSends) {
    queue->refuse(2);
    for (const HandOver::Kind kind : {HandOver::Kind::Folder, HandOver::Kind::Package, HandOver::Kind::Leaves,
                                      HandOver::Kind::PackageBytes, HandOver::Kind::Update})
        queue->push(numbered(1, kind, 2));
    EXPECT_EQ(0u, loop.pendingPosts());
    EXPECT_TRUE(group->wait(0));
    queue->flush();
    loop.advance(0);
    EXPECT_TRUE(taken.empty());
}

TEST_F(HandOverQueueTest, refusalOfAWorkerLeavesTheOthersAndWhatIsSaidOfIt) {
    queue->push(numbered(1, HandOver::Kind::Leaves, 2));
    queue->refuse(2);
    queue->push(numbered(2, HandOver::Kind::Leaves, 1));
    queue->push(numbered(3, HandOver::Kind::LastMerge, 2));
    loop.advance(0);
    EXPECT_EQ((std::vector<std::int64_t>{1, 2, 3}), taken);
}

TEST_F(HandOverQueueTest, mayBeClosedWhileItIsEmptied) {
    std::shared_ptr<HandOverQueue> closing;
    int seen = 0;
    closing = std::make_shared<HandOverQueue>(loop, group, [&] {
        HandOver message;
        while (closing->next(message)) {
            ++seen;
            closing->close();
        }
    });
    closing->push(numbered(1, HandOver::Kind::Update));
    closing->push(numbered(2, HandOver::Kind::Update));
    loop.advance(0);
    EXPECT_EQ(1, seen);
    EXPECT_TRUE(group->wait(0));
}

TEST_F(HandOverQueueTest, outlivesItsMainLoopOnceClosed) {
    auto shortLived = std::make_unique<FakeMainLoop>();
    const auto orphan = std::make_shared<HandOverQueue>(*shortLived, group, [] {});
    orphan->push(numbered(1, HandOver::Kind::Update));
    orphan->close();
    shortLived.reset();
    orphan->push(numbered(2, HandOver::Kind::Update));
    EXPECT_TRUE(group->wait(0));
}

} // namespace
} // namespace veltrano
