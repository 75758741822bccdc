#include "platform/linux/StartupDiskScript.h"

#include <gtest/gtest.h>

#include <sys/statvfs.h>

namespace veltrano {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// Far more than any of these scripts needs.
constexpr seconds kPlenty{60};

TEST(StartupDiskScript, outputIsADecimalNumber) {
    EXPECT_EQ(numberInOutput("123456789012345\n"), 123'456'789'012'345);
    EXPECT_EQ(numberInOutput(" \t0\r\n"), 0);
    EXPECT_EQ(numberInOutput("9223372036854775807"), 9'223'372'036'854'775'807);
}

TEST(StartupDiskScript, otherOutputIsAFailure) {
    for (const char* output :
         {"", "\n", "-1", "12 34", "0x10", "1e6", "free: 5", "9223372036854775808", "5k"})
        EXPECT_EQ(numberInOutput(output), -1) << output;
}

TEST(StartupDiskScript, scriptIsRunAndItsAnswerRead) {
    EXPECT_EQ(runStartupDiskScript("echo $((40 + 2))", kPlenty), 42);
}

TEST(StartupDiskScript, missingScriptFails) {
    EXPECT_EQ(runStartupDiskScript("", kPlenty), -1);
}

TEST(StartupDiskScript, scriptThatFailsAfterItsAnswerFails) {
    EXPECT_EQ(runStartupDiskScript("echo 42; exit 3", kPlenty), -1);
    EXPECT_EQ(runStartupDiskScript("echo 42; kill -9 $$", kPlenty), -1);
}

TEST(StartupDiskScript, scriptThatNeverEndsIsKilled) {
    EXPECT_EQ(runStartupDiskScript("echo 42; sleep 1000", milliseconds(50)), -1);
}

TEST(StartupDiskScript, scriptThatNeverStopsTalkingIsKilled) {
    EXPECT_EQ(runStartupDiskScript("while :; do echo 1; done", kPlenty), -1);
}

// What is free changes all the time; that it lies within the capacity does not.
TEST(StartupDiskScript, ownScriptTellsTheFreeBytesOfTheRoot) {
    struct statvfs space {};
    ASSERT_EQ(::statvfs("/", &space), 0);
    const std::int64_t answer = runStartupDiskScript(kFreeSpaceScript, kPlenty);
    EXPECT_GE(answer, 0);
    EXPECT_LE(answer, static_cast<std::int64_t>(space.f_blocks * space.f_frsize));
    EXPECT_EQ(answer % static_cast<std::int64_t>(space.f_frsize), 0);
}

TEST(StartupDiskScript, scriptReadsNoInput) {
    EXPECT_EQ(runStartupDiskScript("read line || echo 7", kPlenty), 7);
}

} // namespace
} // namespace veltrano
