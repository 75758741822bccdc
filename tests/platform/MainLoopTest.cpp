#include "support/FakeMainLoop.h"
#include "support/ThreadMainLoop.h"

#include <gmock/gmock.h>
#include <string>
#include <thread>
#include <vector>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FakeMainLoopTest : public testing::Test {
protected:
    MainLoop::Task say(std::string word) {
        return [this, word = std::move(word)] {
            m_said.push_back(word);
        };
    }

    FakeMainLoop m_loop;
    std::vector<std::string> m_said;
};

TEST_F(FakeMainLoopTest, postedTaskWaitsForALaterTurn) {
    m_loop.post(say("task"));
    EXPECT_THAT(m_said, IsEmpty());
    EXPECT_EQ(m_loop.pendingPosts(), 1U);
    m_loop.advance(0);
    EXPECT_THAT(m_said, ElementsAre("task"));
}

TEST_F(FakeMainLoopTest, tasksRunInTheOrderOfPosting) {
    m_loop.post([this] {
        m_said.emplace_back("first");
        m_loop.post(say("third"));
    });
    m_loop.post(say("second"));
    m_loop.advance(0);
    EXPECT_THAT(m_said, ElementsAre("first", "second", "third"));
}

TEST_F(FakeMainLoopTest, timerRunsOnceAtItsMoment) {
    double moment = 0;
    m_loop.callLater(0.25, [&] { moment = m_loop.now(); });
    m_loop.advance(0.2);
    EXPECT_EQ(moment, 0);
    m_loop.advance(10);
    EXPECT_DOUBLE_EQ(moment, 0.25);
    EXPECT_EQ(m_loop.pendingTimers(), 0U);
    EXPECT_DOUBLE_EQ(m_loop.now(), 10.2);
}

TEST_F(FakeMainLoopTest, timersRunInTheOrderOfTheirMomentsThenOfTheirCalls) {
    m_loop.callLater(2, say("c"));
    m_loop.callLater(1, say("a"));
    m_loop.callLater(1, say("b"));
    m_loop.advance(2);
    EXPECT_THAT(m_said, ElementsAre("a", "b", "c"));
}

TEST_F(FakeMainLoopTest, timerSetByATimerRunsWithinTheSameAdvance) {
    m_loop.callLater(1, [this] { m_loop.callLater(1, say("second")); });
    m_loop.advance(2);
    EXPECT_THAT(m_said, ElementsAre("second"));
}

TEST_F(FakeMainLoopTest, cancelledTimerIsForgotten) {
    const MainLoop::Token token = m_loop.callLater(1, say("cancelled"));
    EXPECT_NE(token, 0U);
    m_loop.cancel(token);
    m_loop.cancel(token);
    m_loop.cancel(0);
    m_loop.advance(2);
    EXPECT_THAT(m_said, IsEmpty());
}

TEST_F(FakeMainLoopTest, runUntilRunsWhatAnotherThreadPosts) {
    std::thread other([this] {
        for (int i = 0; i < 100; ++i)
            m_loop.post(say("posted"));
    });
    EXPECT_TRUE(m_loop.runUntil([this] { return m_said.size() == 100; }));
    other.join();
}

TEST_F(FakeMainLoopTest, idleClockJumpsToTheNextTimerWhenAsked) {
    m_loop.callLater(3600, say("hour"));
    EXPECT_TRUE(m_loop.runUntil([this] { return !m_said.empty(); }, FakeMainLoop::WhenIdle::AdvanceClock));
    EXPECT_DOUBLE_EQ(m_loop.now(), 3600);
}

TEST_F(FakeMainLoopTest, runUntilGivesUpAtItsLimit) {
    m_loop.callLater(1, say("never due"));
    EXPECT_FALSE(m_loop.runUntil([this] { return !m_said.empty(); }, FakeMainLoop::WhenIdle::Wait, 0.01));
}

TEST(ThreadMainLoopTest, runsTasksOfAnotherThreadOnTheMainThread) {
    ThreadMainLoop loop;
    std::vector<std::thread::id> threads;
    std::thread other([&] {
        for (int i = 0; i < 100; ++i)
            loop.post([&] { threads.push_back(std::this_thread::get_id()); });
    });
    EXPECT_TRUE(loop.runUntil([&] { return threads.size() == 100; }));
    other.join();
    EXPECT_THAT(threads, testing::Each(std::this_thread::get_id()));
}

TEST(ThreadMainLoopTest, timerRunsNoSoonerThanItsMoment) {
    ThreadMainLoop loop;
    const double start = loop.now();
    double moment = 0;
    loop.callLater(0.02, [&] { moment = loop.now(); });
    EXPECT_TRUE(loop.runUntil([&] { return moment > 0; }));
    EXPECT_GE(moment - start, 0.02);
}

TEST(ThreadMainLoopTest, cancelledTimerIsForgotten) {
    ThreadMainLoop loop;
    bool isCancelledRun = false;
    bool isOtherRun = false;
    const MainLoop::Token token = loop.callLater(0, [&] { isCancelledRun = true; });
    loop.callLater(0.001, [&] { isOtherRun = true; });
    loop.cancel(token);
    EXPECT_TRUE(loop.runUntil([&] { return isOtherRun; }));
    EXPECT_FALSE(isCancelledRun);
}

TEST(ThreadMainLoopTest, runUntilGivesUpAtItsLimit) {
    ThreadMainLoop loop;
    EXPECT_FALSE(loop.runUntil([] { return false; }, 0.01));
}

TEST(ThreadMainLoopTest, observerHearsOfEveryTurn) {
    ThreadMainLoop loop;
    std::vector<double> turns;
    int run = 0;
    loop.setTurnObserver([&](double seconds) { turns.push_back(seconds); });
    loop.post([&] { ++run; });
    loop.callLater(0, [&] { ++run; });
    EXPECT_TRUE(loop.runUntil([&] { return run == 2; }));
    EXPECT_THAT(turns, testing::SizeIs(2));
    EXPECT_THAT(turns, testing::Each(testing::Ge(0.0)));
}

} // namespace
} // namespace veltrano
