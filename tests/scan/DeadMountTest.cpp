// Scans that meet a real mount of a server that never answers, each in a child process of its own.

#include "platform/linux/LinuxCatalogue.h"
#include "scan/ScanRun.h"
#include "support/ChildProcess.h"
#include "support/RealMounts.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>

namespace veltrano::test {
namespace {

constexpr const char* kNotPermitted = "not permitted";
constexpr std::size_t kFileBytes = 100'000;

//  top ─┬─ a/file
//       ├─ b/file
//       └─ server (dead)
class DeadMountTest : public testing::Test {
protected:
    void expectAnswer(const std::string& expected,
                      const std::function<std::string(DeadMount& server)>& work) {
        m_dir.createFile("top/a/file", kFileBytes);
        m_dir.createFile("top/b/file", kFileBytes);
        m_dir.createFolder("top/server");
        const std::string answer = runInChild([&]() -> std::string {
            if (!hasPrivateMounts())
                return kNotPermitted;
            DeadMount server(m_dir.path("top/server"));
            return server.isMounted() ? work(server) : kNotPermitted;
        });
        if (answer == kNotPermitted)
            GTEST_SKIP() << "this user may not mount a file system of its own here";
        EXPECT_EQ(answer, expected);
    }

    TestDir m_dir;
};

TEST_F(DeadMountTest, scanThatHangsInItIsStoppedAtOnce) {
    expectAnswer("stopped", [this](DeadMount& server) -> std::string {
        ScanRun run(std::make_shared<LinuxCatalogue>());
        run.start(m_dir.path("top"));
        if (!server.waitForQuestion())
            return "no worker hangs";
        run.model->StopWalking();
        return run.waitFor([&] { return run.cancelled == 1; }, FakeMainLoop::WhenIdle::Wait) ? "stopped"
                                                                                             : "went on";
    });
}

TEST_F(DeadMountTest, modelThatGoesWhileAWorkerHangsWaitsForNone) {
    expectAnswer("gone", [this](DeadMount& server) -> std::string {
        ScanRun run(std::make_shared<LinuxCatalogue>());
        run.start(m_dir.path("top"));
        if (!server.waitForQuestion())
            return "no worker hangs";
        run.root.reset();
        run.model.reset();
        return "gone";
    });
}

TEST_F(DeadMountTest, scanGoesOnOnceItIsGivenUp) {
    expectAnswer("both files", [this](DeadMount& server) -> std::string {
        ScanRun run(std::make_shared<LinuxCatalogue>());
        const auto root = run.start(m_dir.path("top"));
        if (!server.waitForQuestion())
            return "no worker hangs";
        server.giveUp();
        if (!run.waitFor([&] { return run.finished == 1; }))
            return "never finished";
        const bool hasBoth = itemAt(*root, "a/file") && itemAt(*root, "b/file");
        return hasBoth && !itemAt(*root, "server") ? "both files" : "something else";
    });
}

} // namespace
} // namespace veltrano::test
