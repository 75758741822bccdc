#include "scan/DispatchGroup.h"

#include <gtest/gtest.h>

#include <thread>

namespace veltrano {
namespace {

TEST(DispatchGroup, emptyGroupIsNotWaitedFor) {
    DispatchGroup group;
    EXPECT_TRUE(group.wait(0));
    group.wait();
}

TEST(DispatchGroup, waitingEndsAtItsLimit) {
    DispatchGroup group;
    group.enter();
    EXPECT_FALSE(group.wait(0.001));
}

TEST(DispatchGroup, isEmptyWhenAllThatEnteredHaveLeft) {
    DispatchGroup group;
    group.enter();
    group.enter();
    group.leave();
    EXPECT_FALSE(group.wait(0));
    group.leave();
    EXPECT_TRUE(group.wait(0));
}

TEST(DispatchGroup, lastOneToLeaveWakesTheWaiter) {
    DispatchGroup group;
    int done = 0;
    group.enter();
    std::thread worker([&] {
        done = 1;
        group.leave();
    });
    group.wait();
    EXPECT_EQ(1, done);
    worker.join();
}

} // namespace
} // namespace veltrano
