#include "platform/linux/LinuxVolumes.h"

#include "support/ChildProcess.h"
#include "support/FakeMainLoop.h"
#include "support/RealMounts.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>

#include <sys/mount.h>
#include <unistd.h>

namespace veltrano {
namespace {

constexpr const char* kNotPermitted = "not permitted";
constexpr std::chrono::milliseconds kPlenty{60'000};
constexpr std::int64_t kDiskBytes = 8 * 1024 * 1024;

/// Real volumes, watched in a child process whose mounts nobody else sees.
class LinuxVolumesMountTest : public testing::Test {
protected:
    /// The child's side.
    struct Watched {
        explicit Watched(const VolumeReader::Options& options = patiently())
            : volumes(loop, options, kPlenty) {
            volumes.mountedLocalVolumes();
            volumes.observe({.didMount = [this](const std::string& path) { mounted.push_back(path); },
                             .didUnmount =
                                 [this](const std::string& path) {
                                     unmounted.push_back(path);
                                 }});
        }

        static VolumeReader::Options patiently() {
            VolumeReader::Options options;
            options.patience = kPlenty;
            return options;
        }

        const VolumeFacts* at(const std::string& path) {
            for (const VolumeFacts& facts : volumes.mountedLocalVolumes())
                if (facts.path == path)
                    return &facts;
            return nullptr;
        }

        bool waitFor(const std::vector<std::string>& events) {
            return loop.runUntil([&] { return !events.empty(); });
        }

        FakeMainLoop loop;
        std::vector<std::string> mounted;
        std::vector<std::string> unmounted;
        LinuxVolumes volumes;
    };

    void expectAnswer(const std::string& expected, const std::function<std::string()>& work) {
        m_dir.createFolder("disk");
        m_dir.createFolder("second");
        m_dir.createFolder("memory");
        const std::string answer =
            runInChild([&]() -> std::string { return hasPrivateMounts() ? work() : kNotPermitted; });
        if (answer == kNotPermitted)
            GTEST_SKIP() << "this user may not mount a file as a disk here";
        EXPECT_EQ(answer, expected);
    }

    TestDir m_dir;
    const std::string m_disk = m_dir.path("disk");
};

TEST_F(LinuxVolumesMountTest, diskImageComesAndGoes) {
    expectAnswer("came and went", [this]() -> std::string {
        Watched watched;
        LoopDisk disk(m_dir.path("image"), kDiskBytes, m_disk);
        if (!disk.isMounted())
            return kNotPermitted;
        if (!watched.waitFor(watched.mounted) || watched.mounted.front() != m_disk || !watched.at(m_disk))
            return "mount missed";
        if (!disk.unmount())
            return "not unmounted";
        if (!watched.waitFor(watched.unmounted) || watched.unmounted.front() != m_disk || watched.at(m_disk))
            return "unmount missed";
        return "came and went";
    });
}

TEST_F(LinuxVolumesMountTest, diskImageTellsItsFacts) {
    expectAnswer("Virtual Interface, ext4, outside, writable, sized", [this]() -> std::string {
        const LoopDisk disk(m_dir.path("image"), kDiskBytes, m_disk);
        if (!disk.isMounted())
            return kNotPermitted;
        Watched watched;
        const VolumeFacts* const facts = watched.at(m_disk);
        if (!facts)
            return "not listed";
        const bool isSized = facts->size > 0 && facts->size <= kDiskBytes && facts->freeSize > 0 &&
                             facts->freeSize < facts->size && facts->nodes > 0;
        const bool isWritable = facts->isWritable && facts->device.mediaWritable == "1";
        return facts->device.protocol.value_or("none") + ", " + facts->fileSystemType +
               (facts->device.internal == 0 ? ", outside" : ", inside") +
               (isWritable ? ", writable" : ", not writable") + (isSized ? ", sized" : ", without a size");
    });
}

TEST_F(LinuxVolumesMountTest, fileThatGrowsTakesFreeSpace) {
    expectAnswer("less", [this]() -> std::string {
        const LoopDisk disk(m_dir.path("image"), kDiskBytes, m_disk);
        if (!disk.isMounted())
            return kNotPermitted;
        Watched watched;
        const std::int64_t before = watched.at(m_disk)->freeSize;
        m_dir.createFile("disk/file", 1'000'000);
        ::sync();
        bool isDone = false;
        watched.volumes.refresh([&] { isDone = true; });
        if (!watched.loop.runUntil([&] { return isDone; }))
            return "never refreshed";
        return watched.at(m_disk)->freeSize <= before - 1'000'000 ? "less" : "as before";
    });
}

TEST_F(LinuxVolumesMountTest, memoryThatIsMountedIsNoVolume) {
    expectAnswer("the disk alone", [this]() -> std::string {
        Watched watched;
        if (::mount("none", m_dir.path("memory").c_str(), "tmpfs", 0, nullptr) != 0)
            return kNotPermitted;
        const LoopDisk disk(m_dir.path("image"), kDiskBytes, m_disk);
        if (!disk.isMounted())
            return kNotPermitted;
        if (!watched.waitFor(watched.mounted))
            return "mount missed";
        return watched.mounted == std::vector{m_disk} && !watched.at(m_dir.path("memory")) ? "the disk alone"
                                                                                           : "memory too";
    });
}

TEST_F(LinuxVolumesMountTest, memoryThatCoversADiskTakesItAway) {
    expectAnswer("gone and back", [this]() -> std::string {
        const LoopDisk disk(m_dir.path("image"), kDiskBytes, m_disk);
        if (!disk.isMounted())
            return kNotPermitted;
        Watched watched;
        if (::mount("none", m_disk.c_str(), "tmpfs", 0, nullptr) != 0)
            return kNotPermitted;
        if (!watched.waitFor(watched.unmounted))
            return "still listed";
        ::umount(m_disk.c_str());
        return watched.waitFor(watched.mounted) && watched.at(m_disk) ? "gone and back" : "not back";
    });
}

TEST_F(LinuxVolumesMountTest, bindMountOfADiskIsNoSecondVolume) {
    expectAnswer("one", [this]() -> std::string {
        const LoopDisk disk(m_dir.path("image"), kDiskBytes, m_disk);
        const std::string second = m_dir.path("second");
        if (!disk.isMounted() || ::mount(m_disk.c_str(), second.c_str(), nullptr, MS_BIND, nullptr) != 0)
            return kNotPermitted;
        Watched watched;
        return watched.at(m_disk) && !watched.at(second) ? "one" : "other than one";
    });
}

TEST_F(LinuxVolumesMountTest, deadServerIsListedWithWhatIsKnownAndHoldsUpNoOther) {
    expectAnswer("silent, network; the disk answered", [this]() -> std::string {
        const DeadMount server(m_dir.path("second"));
        const LoopDisk disk(m_dir.path("image"), kDiskBytes, m_disk);
        if (!server.isMounted() || !disk.isMounted())
            return kNotPermitted;
        Watched watched{VolumeReader::Options{}};
        const VolumeFacts* const silent = watched.at(m_dir.path("second"));
        if (!silent || !watched.at(m_disk))
            return "not listed";
        return std::string(silent->hasAnswered ? "answered, " : "silent, ") +
               (silent->device.protocol ? "local; " : "network; ") +
               (watched.loop.runUntil([&] { return watched.at(m_disk)->hasAnswered; }) ? "the disk answered"
                                                                                       : "so was the disk");
    });
}

TEST_F(LinuxVolumesMountTest, deadServerThatIsGivenUpLeavesTheList) {
    expectAnswer("left", [this]() -> std::string {
        DeadMount server(m_dir.path("second"));
        if (!server.isMounted())
            return kNotPermitted;
        Watched watched{VolumeReader::Options{}};
        if (!watched.at(m_dir.path("second")))
            return "not listed";
        server.giveUp();
        return watched.waitFor(watched.unmounted) && !watched.at(m_dir.path("second")) ? "left" : "stayed";
    });
}

TEST_F(LinuxVolumesMountTest, deadServerThatComesLaterIsTold) {
    expectAnswer("told", [this]() -> std::string {
        Watched watched{VolumeReader::Options{}};
        const DeadMount server(m_dir.path("second"));
        if (!server.isMounted())
            return kNotPermitted;
        return watched.waitFor(watched.mounted) && watched.mounted.front() == m_dir.path("second") ? "told"
                                                                                                   : "missed";
    });
}

} // namespace
} // namespace veltrano
