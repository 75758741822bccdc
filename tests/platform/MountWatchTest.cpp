#include "platform/linux/MountWatch.h"

#include "support/ChildProcess.h"
#include "support/RealMounts.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <sys/mount.h>

namespace veltrano {
namespace {

constexpr const char* kNotPermitted = "not permitted";
constexpr std::chrono::milliseconds kSoon{10};

/// Counts what it is told on another thread.
class Bell {
public:
    void ring() {
        const std::lock_guard guard(m_mutex);
        ++m_nRings;
        m_rung.notify_all();
    }

    /// Whether it rings more often than so many times, now or within a minute.
    bool waitForMoreThan(int rings) {
        std::unique_lock lock(m_mutex);
        return m_rung.wait_until(lock, std::chrono::steady_clock::now() + std::chrono::seconds(60),
                                 [&] { return m_nRings > rings; });
    }

    int rings() {
        const std::lock_guard guard(m_mutex);
        return m_nRings;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_rung;
    int m_nRings = 0;
};

TEST(MountWatch, mountAndUnmountAreTold) {
    TestDir dir;
    dir.createFolder("inside");
    const std::string answer = runInChild([&]() -> std::string {
        if (!hasPrivateMounts())
            return kNotPermitted;
        Bell bell;
        const MountWatch watch([&] { bell.ring(); }, kSoon);
        if (::mount("none", dir.path("inside").c_str(), "tmpfs", 0, nullptr) != 0)
            return kNotPermitted;
        if (!bell.waitForMoreThan(0))
            return "mount missed";
        const int before = bell.rings();
        ::umount(dir.path("inside").c_str());
        return bell.waitForMoreThan(before) ? "both told" : "unmount missed";
    });
    if (answer == kNotPermitted)
        GTEST_SKIP() << "this user may not mount";
    EXPECT_EQ(answer, "both told");
}

TEST(MountWatch, changeOfOptionsIsTold) {
    TestDir dir;
    dir.createFolder("inside");
    const std::string answer = runInChild([&]() -> std::string {
        if (!hasPrivateMounts() || ::mount("none", dir.path("inside").c_str(), "tmpfs", 0, nullptr) != 0)
            return kNotPermitted;
        Bell bell;
        const MountWatch watch([&] { bell.ring(); }, kSoon);
        ::mount(nullptr, dir.path("inside").c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr);
        return bell.waitForMoreThan(0) ? "told" : "missed";
    });
    if (answer == kNotPermitted)
        GTEST_SKIP() << "this user may not mount";
    EXPECT_EQ(answer, "told");
}

TEST(MountWatch, tableThatIsNotThereIsNeverTold) {
    const TestDir dir;
    Bell bell;
    {
        const MountWatch watch([&] { bell.ring(); }, kSoon, dir.path("none"));
    }
    EXPECT_EQ(bell.rings(), 0);
}

TEST(MountWatch, plainFileIsNeverTold) {
    TestDir dir;
    dir.createFile("table", 100);
    Bell bell;
    {
        const MountWatch watch([&] { bell.ring(); }, kSoon, dir.path("table"));
    }
    EXPECT_EQ(bell.rings(), 0);
}

} // namespace
} // namespace veltrano
