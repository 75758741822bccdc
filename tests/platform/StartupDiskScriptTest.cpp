#include "platform/linux/StartupDiskScript.h"

#include "support/TestDir.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace veltrano {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// Far more than any of these scripts needs.
constexpr seconds kPlenty{60};

/// Whether there is something to read, or a process has ended, before that time is over.
bool isReady(int descriptor) {
    pollfd waited{descriptor, POLLIN, 0};
    return ::poll(&waited, 1, static_cast<int>(milliseconds(kPlenty).count())) == 1;
}

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

TEST(StartupDiskScript, scriptThatClosesItsOutputAndNeverEndsIsKilled) {
    EXPECT_EQ(runStartupDiskScript("echo 42; exec >&-; sleep 1000", milliseconds(50)), -1);
}

TEST(StartupDiskScript, whatAScriptHasStartedEndsWithTheProgramThatRunsIt) {
    const TestDir dir;
    const std::string told = dir.path("told");
    ASSERT_EQ(::mkfifo(told.c_str(), 0600), 0);
    const int reader = ::open(told.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    const pid_t program = ::fork();
    ASSERT_GE(program, 0);
    if (program == 0) {
        (void)runStartupDiskScript("sleep 1000 & echo $! >" + told + "; wait", kPlenty);
        ::_exit(0);
    }
    EXPECT_TRUE(isReady(reader));
    std::array<char, 32> number{};
    EXPECT_GT(::read(reader, number.data(), number.size() - 1), 0);
    ::close(reader);
    const pid_t started = std::atoi(number.data());
    ASSERT_GT(started, 1);
    const int watched = static_cast<int>(::syscall(SYS_pidfd_open, started, 0));
    EXPECT_GE(watched, 0);
    ::kill(program, SIGKILL);
    ::waitpid(program, nullptr, 0);
    if (!isReady(watched)) {
        ADD_FAILURE() << "still there";
        ::kill(started, SIGKILL);
    }
    ::close(watched);
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
