// Working with several entries through the real window: each its own tree, stops, disks that come and go, the
// next start.

#include "app/QtSettings.h"
#include "platform/linux/LinuxCatalogue.h"
#include "platform/linux/LinuxFolderQuestions.h"
#include "platform/linux/LinuxVolumes.h"
#include "platform/posix/PosixFileActions.h"
#include "roads/Program.h"
#include "support/MemoryDisk.h"
#include "support/RealMounts.h"
#include "support/TestDir.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace veltrano {
namespace {

namespace fs = std::filesystem;

using test::kLimit;
using test::Program;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr std::int64_t kDiskBytes = 8 * 1024 * 1024;
constexpr std::chrono::milliseconds kPlenty{60'000};

/// Real folders, real settings in a real file.
class SidebarRoad : public testing::Test {
protected:
    SidebarRoad() {
        for (const char* name : {"home/a", "home/b", "config"})
            folder.createFolder(name);
        folder.createFile("home/a/one", 10'000);
        folder.createFile("home/b/two", 300'000);
    }

    test::Surroundings around() {
        return {.catalogue = std::make_shared<LinuxCatalogue>(),
                .files = files,
                .settings = settings,
                .makeFolderQuestions =
                    [](MainLoop& loop) { return std::make_unique<LinuxFolderQuestions>(loop); },
                .favouritePlaces = {.applications = a, .home = b}};
    }

    TestDir folder;
    const std::string a = folder.path("home/a");
    const std::string b = folder.path("home/b");
    PosixFileActions files;
    QtSettings settings{folder.path("config/Veltrano.conf")};
};

TEST_F(SidebarRoad, twoFoldersAreScannedAndEachRowShowsItsTreeAtOnce) {
    Program program(around());
    ASSERT_THAT(program.rows(), ElementsAre(a, b));
    ASSERT_TRUE(program.scanSelected());
    const std::int64_t bytesOfA = sumOfTree(a).fileBytes;
    EXPECT_EQ(program.root()->gettotalsize(), bytesOfA);
    QTest::keyClick(&program.window.sidebarTable(), Qt::Key_Down);
    EXPECT_FALSE(program.root()) << "the second folder has no tree yet";
    ASSERT_TRUE(program.scanSelected());
    EXPECT_EQ(program.root()->gettotalsize(), sumOfTree(b).fileBytes);
    QTest::keyClick(&program.window.sidebarTable(), Qt::Key_Up);
    ASSERT_TRUE(program.root());
    EXPECT_EQ(program.root()->getFullPath(), a);
    EXPECT_EQ(program.root()->gettotalsize(), bytesOfA);
}

TEST_F(SidebarRoad, theNextStartComesBackToTheSameEntry) {
    {
        Program program(around());
        ASSERT_TRUE(program.select(b));
        program.notifications.postNotification(ApplicationWillTerminate);
    }
    QtSettings again(folder.path("config/Veltrano.conf"));
    test::Surroundings next = around();
    Program program({.catalogue = next.catalogue,
                     .files = files,
                     .settings = again,
                     .makeFolderQuestions = next.makeFolderQuestions,
                     .favouritePlaces = {.applications = "/nowhere"}});
    EXPECT_THAT(program.rows(), ElementsAre(a, b));
    EXPECT_EQ(program.sidebar().getSelectedVolume(), b);
}

TEST_F(SidebarRoad, aFolderThatHasGoneMeanwhileIsNotInTheNextStart) {
    {
        Program program(around());
        program.notifications.postNotification(ApplicationWillTerminate);
    }
    folder.remove("home/a");
    Program program(around());
    EXPECT_THAT(program.rows(), ElementsAre(b));
}

TEST_F(SidebarRoad, settingsThatAreNoneLeaveAProgramThatStarts) {
    const std::string file = folder.path("config/odd.conf");
    const std::string text =
        "[General]\nSaved=true\nPlaySound=banana\nShowHint=\nScanned=-99999999999999999999\n"
        "FFolders=relative, \"\", /gone, " +
        b + ", /dev/null\nRecents=7\nRecentsLimit=-3\nSelectedVolume=one, two\n";
    std::ofstream(file) << text;
    QtSettings odd(file);
    test::Surroundings surroundings = around();
    Program program({.catalogue = surroundings.catalogue,
                     .files = files,
                     .settings = odd,
                     .makeFolderQuestions = surroundings.makeFolderQuestions});
    EXPECT_THAT(program.rows(), ElementsAre(b));
    EXPECT_EQ(program.sidebar().getSelectedVolume(), b);
    EXPECT_FALSE(program.controller.getPlaySound());
    EXPECT_EQ(program.controller.getScanned(), 0u);
    program.notifications.postNotification(ApplicationWillTerminate);
    EXPECT_EQ(odd.integerForKey("RecentsLimit"), 10);
    EXPECT_EQ(odd.arrayForKey("FFolders"), std::vector{b});
}

TEST_F(SidebarRoad, damagedSettingsAreKeptBesideTheNewOnesAndWhatCanBeReadCounts) {
    const std::string file = folder.path("config/damaged.conf");
    const std::string text = "no settings\xFF\n[General]\nSaved=true\nShowHint=true\nFFolders=" + a;
    std::ofstream(file, std::ios::binary) << text;
    QtSettings damaged(file);
    test::Surroundings surroundings = around();
    Program program({.catalogue = surroundings.catalogue,
                     .files = files,
                     .settings = damaged,
                     .makeFolderQuestions = surroundings.makeFolderQuestions});
    EXPECT_THAT(program.rows(), ElementsAre(a));
    EXPECT_TRUE(program.controller.getShowHint());
    EXPECT_FALSE(fs::exists(file + ".damaged")) << "nothing was written yet";
    program.notifications.postNotification(ApplicationWillTerminate);
    std::ifstream kept(file + ".damaged", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), {}), text);
    EXPECT_EQ(QtSettings(file).arrayForKey("FFolders"), std::vector{a});
}

TEST_F(SidebarRoad, twelveFoldersLeaveTheTenLatestAmongTheRecents) {
    Program program(around());
    std::vector<std::string> latest;
    for (int number = 0; number < 12; ++number) {
        const std::string path = folder.path("home/" + std::to_string(number));
        folder.createFolder("home/" + std::to_string(number));
        program.sounds.played.clear();
        program.controller.doScanFolder(path);
        ASSERT_TRUE(program.controller.isProcessing());
        program.controller.stopAction();
        ASSERT_TRUE(program.waitForEnd());
        latest.insert(latest.begin(), path);
    }
    latest.resize(10);
    EXPECT_EQ(settings.arrayForKey("Recents"), latest);
    EXPECT_EQ(program.rows().size(), 2u + 10u);
}

TEST_F(SidebarRoad, aStoppedScanLeavesItsMarkAndItsPartialTree) {
    const auto disk = std::make_shared<MemoryDisk>();
    const auto gate = std::make_shared<ReadGate>();
    disk->addFile(a + "/read/file", 1000);
    disk->addFile(a + "/held/file", 5000);
    disk->gateReads(a + "/held", gate);
    // The second read of a folder finds it at its end: what the first one found has been taken over by then.
    disk->setLastRead(MemoryDisk::LastRead::LeavesEmptyRead);
    std::atomic<int> reads = 0;
    disk->setBeforeRead([&](const std::string& path) { reads += path == a + "/read"; });
    test::Surroundings surroundings = around();
    surroundings.catalogue = disk;
    Program program(surroundings);
    QTest::keyClick(&program.window, Qt::Key_F5);
    ASSERT_TRUE(gate->waitForArrivals(1));
    ASSERT_TRUE(Program::waitFor([&] { return reads == 2; }));
    QTest::keyClick(&program.window, Qt::Key_F5);
    EXPECT_FALSE(program.controller.isProcessing());
    ASSERT_TRUE(program.waitForEnd());
    const auto entry = program.sidebar().getObjectForSelectedRow();
    EXPECT_TRUE(entry->isScanned());
    EXPECT_FALSE(entry->isScanCompleted());
    EXPECT_EQ(program.root()->gettotalsize(), 1000);
    gate->release();
}

/// Real disks, in mounts of this test program's own.
class DiskRoad : public SidebarRoad {
protected:
    void SetUp() override {
        if (!hasPrivateMounts())
            GTEST_SKIP() << "this user may not mount a file as a disk here";
        folder.createFolder("first");
        folder.createFolder("second");
    }

    test::Surroundings withVolumes() {
        test::Surroundings result = around();
        result.makeVolumes = [](MainLoop& loop) {
            VolumeReader::Options options;
            options.patience = kPlenty;
            return std::make_unique<LinuxVolumes>(loop, options, kPlenty);
        };
        return result;
    }
    std::unique_ptr<LoopDisk> mountDisk(const char* name) {
        return std::make_unique<LoopDisk>(folder.path(std::string(name) + ".image"), kDiskBytes,
                                          folder.path(name));
    }

    const std::string first = folder.path("first");
    const std::string second = folder.path("second");
};

TEST_F(DiskRoad, disksComeAndGoWhileTheProgramRuns) {
    Program program(withVolumes());
    auto disk = mountDisk("first");
    if (!disk->isMounted())
        GTEST_SKIP() << "this system has no loop devices";
    const auto isListed = [&](const std::string& path) {
        return testing::Value(program.rows(), Contains(path));
    };
    ASSERT_TRUE(Program::waitFor([&] { return isListed(first); }));
    const auto other = mountDisk("second");
    ASSERT_TRUE(Program::waitFor([&] { return isListed(second); }));
    ASSERT_TRUE(program.select(second));
    ASSERT_TRUE(disk->unmount());
    ASSERT_TRUE(Program::waitFor([&] { return !isListed(first); }));
    EXPECT_EQ(program.sidebar().getSelectedVolume(), second);
}

TEST_F(DiskRoad, twoDisksKeepTheirTrees) {
    const auto disk = mountDisk("first");
    const auto other = mountDisk("second");
    if (!disk->isMounted() || !other->isMounted())
        GTEST_SKIP() << "this system has no loop devices";
    folder.createFile("first/one", 1'000'000);
    folder.createFile("second/two", 2'000'000);
    Program program(withVolumes());
    ASSERT_TRUE(program.select(first));
    ASSERT_TRUE(program.scanSelected());
    ASSERT_TRUE(program.select(second));
    ASSERT_TRUE(program.scanSelected());
    EXPECT_EQ(program.root()->getFullPath(), second);
    EXPECT_TRUE(program.root()->isVol());
    EXPECT_NE(program.root()->getItemByFilePath(second + "/two"), nullptr);
    ASSERT_TRUE(program.select(first));
    EXPECT_NE(program.root()->getItemByFilePath(first + "/one"), nullptr);
}

TEST_F(DiskRoad, aDiskThatGoesUnderItsScanIsSurvived) {
    auto disk = mountDisk("first");
    if (!disk->isMounted())
        GTEST_SKIP() << "this system has no loop devices";
    // The tree is held up in memory, so that the disk goes in the middle of its scan for certain.
    const auto memory = std::make_shared<MemoryDisk>();
    const auto gate = std::make_shared<ReadGate>();
    memory->addFile(first + "/held/file", 5000);
    memory->gateReads(first + "/held", gate);
    test::Surroundings surroundings = withVolumes();
    surroundings.catalogue = memory;
    Program program(surroundings);
    ASSERT_TRUE(program.select(first));
    QTest::keyClick(&program.window, Qt::Key_F5);
    ASSERT_TRUE(gate->waitForArrivals(1));
    ASSERT_TRUE(disk->unmount());
    ASSERT_TRUE(Program::waitFor([&] { return !program.controller.isProcessing(); }));
    EXPECT_THAT(program.rows(), Not(Contains(first)));
    gate->release();
    ASSERT_TRUE(program.waitForEnd());
    EXPECT_NE(program.sidebar().getSelectedVolume(), std::nullopt);
    EXPECT_TRUE(program.scanButton->isEnabled());
}

} // namespace
} // namespace veltrano
