#include "scan/ProgressGate.h"

#include "support/FakeMainLoop.h"

#include <gtest/gtest.h>

#include <optional>

namespace veltrano {
namespace {

TEST(ProgressGate, firstRequestStartsTheTickAndDoesNotPass) {
    FakeMainLoop loop;
    ProgressGate gate(loop);
    EXPECT_EQ(0u, loop.pendingTimers());
    EXPECT_FALSE(gate.ask());
    EXPECT_EQ(1u, loop.pendingTimers());
}

TEST(ProgressGate, opensAfterATenthOfASecond) {
    FakeMainLoop loop;
    ProgressGate gate(loop);
    EXPECT_FALSE(gate.ask());
    loop.advance(0.09);
    EXPECT_FALSE(gate.ask());
    loop.advance(0.02);
    EXPECT_TRUE(gate.ask());
}

TEST(ProgressGate, staysOpenUntilAMergeHasRun) {
    FakeMainLoop loop;
    ProgressGate gate(loop);
    EXPECT_FALSE(gate.ask());
    loop.advance(0.11);
    EXPECT_TRUE(gate.ask());
    EXPECT_TRUE(gate.ask());
    gate.close();
    EXPECT_FALSE(gate.ask());
}

TEST(ProgressGate, letsTenMergesASecondPass) {
    FakeMainLoop loop;
    ProgressGate gate(loop);
    int merges = 0;
    for (int step = 0; step < 1005; ++step) {
        if (gate.ask()) {
            ++merges;
            gate.close();
        }
        loop.advance(0.001);
    }
    EXPECT_EQ(10, merges);
}

TEST(ProgressGate, tickGoesOnByItself) {
    FakeMainLoop loop;
    ProgressGate gate(loop);
    EXPECT_FALSE(gate.ask());
    loop.advance(60);
    EXPECT_TRUE(gate.ask());
    gate.close();
    loop.advance(0.11);
    EXPECT_TRUE(gate.ask());
}

TEST(ProgressGate, signInvitesTheFirstRequest) {
    FakeMainLoop loop;
    const ProgressGate gate(loop);
    EXPECT_TRUE(*gate.getSign());
}

TEST(ProgressGate, signTellsWhetherARequestWouldPass) {
    FakeMainLoop loop;
    ProgressGate gate(loop);
    const ProgressGate::Sign sign = gate.getSign();
    EXPECT_FALSE(gate.ask());
    EXPECT_FALSE(*sign);
    loop.advance(0.11);
    EXPECT_TRUE(*sign);
    gate.close();
    EXPECT_FALSE(*sign);
}

TEST(ProgressGate, leavesNoTimerBehind) {
    FakeMainLoop loop;
    std::optional<ProgressGate> gate(loop);
    EXPECT_FALSE(gate->ask());
    loop.advance(0.35);
    gate.reset();
    EXPECT_EQ(0u, loop.pendingTimers());
}

} // namespace
} // namespace veltrano
