#include "scan/ConditionLock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace veltrano {
namespace {

TEST(ConditionLock, isTakenWithoutWaitingWhenFreeWithTheCondition) {
    ConditionLock lock(0);
    EXPECT_TRUE(lock.tryLockWhenCondition(0));
}

TEST(ConditionLock, isNotTakenWithAnotherCondition) {
    ConditionLock lock(0);
    EXPECT_FALSE(lock.tryLockWhenCondition(1));
}

TEST(ConditionLock, isNotTakenWhileHeld) {
    ConditionLock lock(0);
    ASSERT_TRUE(lock.tryLockWhenCondition(0));
    bool taken = true;
    std::thread([&] { taken = lock.tryLockWhenCondition(0); }).join();
    EXPECT_FALSE(taken);
}

TEST(ConditionLock, unlockingSetsTheCondition) {
    ConditionLock lock(0);
    lock.lock();
    lock.unlockWithCondition(7);
    EXPECT_EQ(7, lock.condition());
    EXPECT_TRUE(lock.tryLockWhenCondition(7));
}

TEST(ConditionLock, waiterIsWokenByItsCondition) {
    ConditionLock lock(0);
    std::atomic<bool> through = false;
    std::thread waiter([&] {
        lock.lockWhenCondition(1);
        through = true;
        lock.unlockWithCondition(2);
    });
    lock.lock();
    EXPECT_FALSE(through);
    lock.unlockWithCondition(1);
    waiter.join();
    EXPECT_TRUE(through);
    EXPECT_EQ(2, lock.condition());
}

TEST(ConditionLock, carriesWhatWasWrittenUnderIt) {
    ConditionLock lock(0);
    int value = 0;
    std::thread worker([&] {
        for (int round = 0; round < 1000; ++round) {
            lock.lockWhenCondition(1);
            value *= 2;
            lock.unlockWithCondition(0);
        }
    });
    bool right = true;
    for (int round = 0; round < 1000; ++round) {
        lock.lockWhenCondition(0);
        right = right && (round == 0 || value == 2 * (round - 1));
        value = round;
        lock.unlockWithCondition(1);
    }
    worker.join();
    EXPECT_TRUE(right);
    EXPECT_EQ(2 * 999, value);
}

#ifndef NDEBUG
TEST(ConditionLockDeathTest, onlyItsHolderMayUnlockIt) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    ConditionLock lock(0);
    ASSERT_TRUE(lock.tryLockWhenCondition(0));
    EXPECT_DEATH(std::thread([&] { lock.unlockWithCondition(0); }).join(), "m_holder");
}
#endif

} // namespace
} // namespace veltrano
