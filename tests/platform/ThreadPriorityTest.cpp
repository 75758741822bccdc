#include "platform/ThreadPriority.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <thread>
#include <unistd.h>

namespace veltrano {
namespace {

int niceness() {
    return ::getpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()));
}

TEST(ThreadPriorityTest, threadStepsBackAloneAndThoseItStartsFollow) {
    const int own = niceness();
    int lowered = -100;
    int inherited = -100;
    std::thread([&] {
        lowerThreadPriority();
        lowered = niceness();
        std::thread([&] { inherited = niceness(); }).join();
    }).join();
    EXPECT_GE(lowered, 10);
    EXPECT_EQ(lowered, inherited);
    EXPECT_EQ(own, niceness());
}

} // namespace
} // namespace veltrano
