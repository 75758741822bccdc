#include "platform/linux/LinuxVolumes.h"

#include "support/FakeMainLoop.h"
#include "support/MemoryDisk.h"
#include "support/TestDir.h"

#include <gmock/gmock.h>

#include <fstream>
#include <mutex>
#include <optional>

namespace veltrano {
namespace {

using std::chrono::milliseconds;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr milliseconds kPlenty{60'000};

/// What the file systems of a machine answer, changed by the test while others ask.
class Answers {
public:
    void set(const std::string& path, const VolumeAnswer& answer) {
        const std::lock_guard guard(m_mutex);
        m_answers[path] = answer;
    }

    VolumeAnswer of(const std::string& path) {
        if (path == "/dead")
            gate.pass();
        const std::lock_guard guard(m_mutex);
        const auto found = m_answers.find(path);
        return found == m_answers.end() ? VolumeAnswer{.isReadable = true, .size = 1'000, .freeSize = 400}
                                        : found->second;
    }

    ReadGate gate; ///< Before "/dead" answers.

private:
    std::mutex m_mutex;
    std::map<std::string, VolumeAnswer> m_answers;
};

class LinuxVolumesTest : public testing::Test {
protected:
    ~LinuxVolumesTest() override { m_answers->gate.release(); }

    void setTable(const std::string& table) {
        std::ofstream(m_dir.path("table.new"), std::ios::binary) << table;
        ASSERT_EQ(::rename(m_dir.path("table.new").c_str(), m_dir.path("table").c_str()), 0);
    }

    /// A mount on a device of its own; the root is to be number 2.
    static std::string line(int id, const std::string& path, const std::string& options = "rw") {
        return std::to_string(id) + (path == "/" ? " 1 8:" : " 2 8:") + std::to_string(id) + " / " + path +
               " " + options + " - ext4 /dev/sda" + std::to_string(id) + " " + options + "\n";
    }

    /// Where all volumes answer, the list waits for all of them.
    void begin(const std::string& table, VolumeReader::Options options = {}) {
        setTable(table);
        if (table.find("/dead") == std::string::npos && options.startupDiskScript.empty())
            options.patience = kPlenty;
        options.mountTable = m_dir.path("table");
        options.places = {m_dir.path("sys"), m_dir.path("udev"), m_dir.path("dev")};
        options.ask = [answers = m_answers](const std::string& path) {
            return answers->of(path);
        };
        m_volumes.emplace(m_loop, options, kPlenty);
    }

    void observe() {
        m_volumes->observe({[this](const std::string& path) { m_events.push_back("mounted " + path); },
                            [this](const std::string& path) { m_events.push_back("unmounted " + path); },
                            [this] {
                                m_events.push_back("changed");
                            }});
    }

    /// Asks for everything anew and waits until it is there.
    void refresh() {
        bool isDone = false;
        m_volumes->refresh([&] { isDone = true; });
        EXPECT_TRUE(m_loop.runUntil([&] { return isDone; }));
    }

    std::vector<std::string> listed() {
        std::vector<std::string> paths;
        for (const VolumeFacts& facts : m_volumes->mountedLocalVolumes())
            paths.push_back(facts.path);
        return paths;
    }

    const VolumeFacts& first() { return m_volumes->mountedLocalVolumes().front(); }

    TestDir m_dir;
    FakeMainLoop m_loop;
    std::shared_ptr<Answers> m_answers = std::make_shared<Answers>();
    std::vector<std::string> m_events;
    std::optional<LinuxVolumes> m_volumes;
};

TEST_F(LinuxVolumesTest, firstListIsThereAtTheFirstQuestion) {
    begin(line(2, "/") + line(3, "/home"));
    EXPECT_THAT(listed(), ElementsAre("/", "/home"));
    EXPECT_TRUE(first().hasAnswered);
    EXPECT_EQ(first().size, 1'000);
    EXPECT_EQ(first().freeSize, 400);
}

TEST_F(LinuxVolumesTest, mountTellsWhetherItIsWritableAndCanBeUnmounted) {
    begin(line(2, "/") + line(3, "/media/disc", "ro"));
    const auto& volumes = m_volumes->mountedLocalVolumes();
    EXPECT_TRUE(volumes[0].isWritable);
    EXPECT_FALSE(volumes[0].isUnmountable);
    EXPECT_FALSE(volumes[1].isWritable);
    EXPECT_TRUE(volumes[1].isUnmountable);
    EXPECT_EQ(volumes[1].fileSystemType, "ext4");
}

TEST_F(LinuxVolumesTest, volumeWithoutALabelGoesByItsFolder) {
    begin(line(2, "/") + line(3, "/media/mara/My\\040Disk"));
    EXPECT_EQ(m_volumes->mountedLocalVolumes()[1].name, "My Disk");
}

TEST_F(LinuxVolumesTest, rootWithoutALabelIsTheFileSystem) {
    begin(line(2, "/") + line(3, "/media/disk"));
    EXPECT_EQ(first().path, "/");
    EXPECT_EQ(first().name, "File System");
}

TEST_F(LinuxVolumesTest, labelNamesTheFirstSubvolumeOfAFileSystem) {
    m_dir.createFolder("sys/devices/sda2");
    m_dir.createFolder("sys/class/block");
    m_dir.createSymlink("sys/class/block/sda2", m_dir.path("sys/devices/sda2"));
    m_dir.createFile("sys/devices/sda2/dev");
    std::ofstream(m_dir.path("sys/devices/sda2/dev")) << "8:2\n";
    m_dir.createFile("udev/b8:2");
    std::ofstream(m_dir.path("udev/b8:2")) << "E:ID_FS_LABEL_ENC=system\n";
    begin("25 1 0:31 /@ / rw - btrfs /dev/sda2 rw,subvol=/@\n"
          "26 25 0:31 /@home /home rw - btrfs /dev/sda2 rw,subvol=/@home\n");
    EXPECT_EQ(m_volumes->mountedLocalVolumes()[0].name, "system");
    EXPECT_EQ(m_volumes->mountedLocalVolumes()[1].name, "home");
}

TEST_F(LinuxVolumesTest, volumeOnTheDeviceOfTheRootIsTheBootVolume) {
    begin("25 1 0:31 /@ / rw - btrfs /dev/sda2 rw,subvol=/@\n"
          "26 25 0:31 /@home /home rw - btrfs /dev/sda2 rw,subvol=/@home\n" +
          line(9, "/srv"));
    const auto& volumes = m_volumes->mountedLocalVolumes();
    EXPECT_TRUE(volumes[0].device.isBootVolume);
    EXPECT_TRUE(volumes[1].device.isBootVolume);
    EXPECT_FALSE(volumes[2].device.isBootVolume);
}

TEST_F(LinuxVolumesTest, twoVolumesOfOneNameAreTwo) {
    begin(line(2, "/") + line(3, "/a/disk") + line(4, "/b/disk"));
    m_answers->set("/b/disk", {.isReadable = true, .size = 5, .freeSize = 1});
    refresh();
    const auto& volumes = m_volumes->mountedLocalVolumes();
    EXPECT_EQ(volumes[1].name, volumes[2].name);
    EXPECT_EQ(volumes[1].size, 1'000);
    EXPECT_EQ(volumes[2].size, 5);
}

TEST_F(LinuxVolumesTest, volumeThatCannotBeReadOrHasNoSpaceIsNotListed) {
    m_answers->set("/denied", {});
    m_answers->set("/empty", {.isReadable = true});
    begin(line(2, "/") + line(3, "/denied") + line(4, "/empty"));
    EXPECT_THAT(listed(), ElementsAre("/"));
}

TEST_F(LinuxVolumesTest, silentVolumeIsListedWithWhatIsKnown) {
    begin(line(2, "/") + line(3, "/dead"));
    EXPECT_THAT(listed(), ElementsAre("/", "/dead"));
    const VolumeFacts& dead = m_volumes->mountedLocalVolumes()[1];
    EXPECT_FALSE(dead.hasAnswered);
    EXPECT_EQ(dead.name, "dead");
    EXPECT_EQ(dead.size, 0);
}

TEST_F(LinuxVolumesTest, lateAnswerIsAChange) {
    begin(line(2, "/") + line(3, "/dead"));
    EXPECT_FALSE(m_volumes->mountedLocalVolumes()[1].hasAnswered);
    observe();
    m_answers->gate.release();
    EXPECT_TRUE(m_loop.runUntil([&] { return m_volumes->mountedLocalVolumes()[1].hasAnswered; }));
    EXPECT_THAT(m_events, Not(IsEmpty()));
    EXPECT_THAT(m_events, Each("changed"));
}

TEST_F(LinuxVolumesTest, volumeThatFallsSilentKeepsWhatItSaid) {
    m_answers->gate.letPass(1);
    begin(line(2, "/") + line(3, "/dead"));
    listed();
    const auto haveAllAnswered = [&] {
        const auto& volumes = m_volumes->mountedLocalVolumes();
        return volumes[0].hasAnswered && volumes[1].hasAnswered;
    };
    EXPECT_TRUE(m_loop.runUntil(haveAllAnswered));
    observe();
    refresh();
    EXPECT_EQ(m_volumes->mountedLocalVolumes()[1].size, 1'000);
    EXPECT_THAT(m_events, IsEmpty());
}

TEST_F(LinuxVolumesTest, volumeThatFailsForAWhileKeepsWhatItSaid) {
    begin(line(2, "/") + line(3, "/server"));
    listed();
    observe();
    m_answers->set("/server", {});
    refresh();
    EXPECT_THAT(listed(), ElementsAre("/", "/server"));
    EXPECT_THAT(m_events, IsEmpty());
}

TEST_F(LinuxVolumesTest, endWaitsForNoSilentVolume) {
    begin(line(2, "/") + line(3, "/dead"));
    EXPECT_THAT(listed(), ElementsAre("/", "/dead"));
    m_volumes.reset();
    m_answers->gate.release();
    m_loop.advance(1);
    EXPECT_EQ(m_loop.pendingPosts(), 0u);
}

TEST_F(LinuxVolumesTest, volumesComeAndGoAsEvents) {
    begin(line(2, "/") + line(3, "/a"));
    listed();
    observe();
    setTable(line(2, "/") + line(4, "/b") + line(5, "/c"));
    refresh();
    EXPECT_THAT(m_events, ElementsAre("unmounted /a", "mounted /b", "mounted /c"));
    EXPECT_THAT(listed(), ElementsAre("/", "/b", "/c"));
}

TEST_F(LinuxVolumesTest, anotherVolumeAtAnOldPathGoesAndComes) {
    begin(line(2, "/") + line(3, "/a"));
    listed();
    observe();
    setTable(line(2, "/") + line(4, "/a"));
    refresh();
    EXPECT_THAT(m_events, ElementsAre("unmounted /a", "mounted /a"));
}

TEST_F(LinuxVolumesTest, changedSizeIsAnEventOfItsOwn) {
    begin(line(2, "/"));
    listed();
    observe();
    m_answers->set("/", {.isReadable = true, .size = 1'000, .freeSize = 399});
    refresh();
    EXPECT_THAT(m_events, ElementsAre("changed"));
    refresh();
    EXPECT_THAT(m_events, ElementsAre("changed"));
}

TEST_F(LinuxVolumesTest, whoHasNotAskedYetHearsNothing) {
    begin(line(2, "/"));
    observe();
    refresh();
    setTable(line(2, "/") + line(3, "/a"));
    refresh();
    EXPECT_THAT(m_events, IsEmpty());
    EXPECT_THAT(listed(), ElementsAre("/", "/a"));
}

TEST_F(LinuxVolumesTest, observerThatHasEndedHearsNothing) {
    begin(line(2, "/"));
    listed();
    observe();
    m_volumes->observe({});
    setTable(line(3, "/a"));
    refresh();
    EXPECT_THAT(m_events, IsEmpty());
}

TEST_F(LinuxVolumesTest, newVolumesGoToTheEndOfTheOrder) {
    begin(line(2, "/") + line(3, "/b"));
    listed();
    setTable(line(4, "/a") + line(3, "/b") + line(2, "/"));
    refresh();
    EXPECT_THAT(listed(), ElementsAre("/", "/b", "/a"));
}

TEST_F(LinuxVolumesTest, listIsNewBeforeItsEventsAreTold) {
    begin(line(2, "/"));
    listed();
    std::vector<std::string> seen;
    m_volumes->observe({.didMount = [&](const std::string&) {
        seen = listed();
    }});
    setTable(line(2, "/") + line(3, "/a"));
    refresh();
    EXPECT_THAT(seen, ElementsAre("/", "/a"));
}

TEST_F(LinuxVolumesTest, tableThatCannotBeReadChangesNothing) {
    begin(line(2, "/") + line(3, "/a"));
    listed();
    observe();
    m_dir.remove("table");
    refresh();
    EXPECT_THAT(listed(), ElementsAre("/", "/a"));
    EXPECT_THAT(m_events, IsEmpty());
}

TEST_F(LinuxVolumesTest, scriptTellsTheFreeSizeOfTheStartupDisk) {
    VolumeReader::Options options;
    options.startupDiskScript = "echo 4711";
    options.patience = kPlenty;
    begin(line(2, "/"), options);
    listed();
    EXPECT_EQ(m_volumes->startupDiskFreeSize(), 4'711);
}

TEST_F(LinuxVolumesTest, withoutAScriptTheStartupDiskTellsNothingOfItsOwn) {
    begin(line(2, "/"));
    listed();
    EXPECT_EQ(m_volumes->startupDiskFreeSize(), -1);
}

TEST_F(LinuxVolumesTest, scriptThatHangsDelaysNoVolume) {
    VolumeReader::Options options;
    options.startupDiskScript = "sleep 1000";
    options.scriptLimit = milliseconds(3'000);
    begin(line(2, "/"), options);
    EXPECT_THAT(listed(), ElementsAre("/"));
    EXPECT_TRUE(m_loop.runUntil([&] { return first().hasAnswered; }));
    EXPECT_EQ(m_volumes->startupDiskFreeSize(), -1);
}

TEST_F(LinuxVolumesTest, fiveThousandMountsAreListed) {
    std::string table;
    for (int id = 2; id < 5'002; ++id)
        table += line(id, "/m" + std::to_string(id));
    begin(table);
    EXPECT_EQ(listed().size(), 5'000u);
}

TEST_F(LinuxVolumesTest, tablesOfThisMachineAreListedWithoutTrouble) {
    LinuxVolumes volumes(m_loop, {}, kPlenty);
    for (const VolumeFacts& facts : volumes.mountedLocalVolumes()) {
        EXPECT_TRUE(facts.path.starts_with('/'));
        EXPECT_LE(facts.freeSize, facts.size);
    }
}

} // namespace
} // namespace veltrano
