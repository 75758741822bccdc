#include "app/QtMainLoop.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace veltrano {
namespace {

/// Turns Qt's loop until the condition holds; false after ten seconds.
template <class Condition>
bool turnUntil(Condition condition) {
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < 10'000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return condition();
}

TEST(QtMainLoop, runsTasksInTheOrderOfPosting) {
    QtMainLoop loop;
    std::vector<int> ran;
    for (int task = 0; task < 5; ++task)
        loop.post([&ran, task] { ran.push_back(task); });
    EXPECT_TRUE(ran.empty());
    EXPECT_TRUE(turnUntil([&] { return ran.size() == 5; }));
    EXPECT_EQ(ran, (std::vector{0, 1, 2, 3, 4}));
}

TEST(QtMainLoop, takesTasksFromAnyThread) {
    QtMainLoop loop;
    int ran = 0;
    const auto mainThread = std::this_thread::get_id();
    bool onMain = true;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int task = 0; task < 1000; ++task)
                loop.post([&] {
                    ++ran;
                    onMain = onMain && std::this_thread::get_id() == mainThread;
                });
        });
    EXPECT_TRUE(turnUntil([&] { return ran == 4000; }));
    EXPECT_TRUE(onMain);
    for (auto& thread : threads)
        thread.join();
}

TEST(QtMainLoop, whatATaskPostsRunsInALaterTurn) {
    QtMainLoop loop;
    bool inner = false;
    bool innerDuringOuter = true;
    loop.post([&] {
        loop.post([&] { inner = true; });
        innerDuringOuter = inner;
    });
    EXPECT_TRUE(turnUntil([&] { return inner; }));
    EXPECT_FALSE(innerDuringOuter);
}

TEST(QtMainLoop, tasksWithoutEndLeaveQtItsTurns) {
    QtMainLoop loop;
    bool timerRan = false;
    QTimer::singleShot(1, [&] { timerRan = true; });
    std::function<void()> again = [&] {
        if (!timerRan)
            loop.post(again);
    };
    loop.post(again);
    EXPECT_TRUE(turnUntil([&] { return timerRan; }));
}

TEST(QtMainLoop, callsLaterOnce) {
    QtMainLoop loop;
    int ran = 0;
    bool afterwards = false;
    loop.callLater(0, [&] { ++ran; });
    loop.callLater(0.05, [&] { afterwards = true; });
    EXPECT_TRUE(turnUntil([&] { return afterwards; }));
    EXPECT_EQ(ran, 1);
}

TEST(QtMainLoop, aCancelledTaskNeverRuns) {
    QtMainLoop loop;
    bool cancelledRan = false;
    bool otherRan = false;
    const auto token = loop.callLater(0.01, [&] { cancelledRan = true; });
    loop.callLater(0.05, [&] { otherRan = true; });
    loop.cancel(token);
    EXPECT_TRUE(turnUntil([&] { return otherRan; }));
    EXPECT_FALSE(cancelledRan);
}

TEST(QtMainLoop, cancellingWhatIsGoneDoesNoHarm) {
    QtMainLoop loop;
    bool ran = false;
    const auto token = loop.callLater(0, [&] { ran = true; });
    EXPECT_TRUE(turnUntil([&] { return ran; }));
    loop.cancel(token);
    loop.cancel(0);
}

TEST(QtMainLoop, aTaskMayCancelItself) {
    QtMainLoop loop;
    int ran = 0;
    MainLoop::Token token = 0;
    token = loop.callLater(0, [&] {
        loop.cancel(token);
        ++ran;
    });
    EXPECT_TRUE(turnUntil([&] { return ran == 1; }));
}

TEST(QtMainLoop, theClockRises) {
    QtMainLoop loop;
    const double before = loop.now();
    bool ran = false;
    loop.callLater(0.02, [&] { ran = true; });
    EXPECT_TRUE(turnUntil([&] { return ran; }));
    EXPECT_GE(loop.now() - before, 0.019);
}

} // namespace
} // namespace veltrano
