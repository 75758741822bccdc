#include "platform/linux/LinuxFileDates.h"

#include "support/FakeMainLoop.h"
#include "support/MemoryDisk.h"
#include "support/TestDir.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <utility>
#include <vector>

namespace veltrano {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr milliseconds kShort{20};
/// Longer than any answer takes that comes at all; a test that waits so long has failed.
constexpr milliseconds kPlenty{60'000};
constexpr std::int64_t kSeconds = 1'600'000'000;

FileDates::Date dateAt(std::int64_t seconds) {
    return std::chrono::sys_seconds(std::chrono::seconds(seconds));
}

/// Files that keep silent below "/dead" until they are let go; all have one date, those named "gone" none.
struct SilentServer {
    VolumeQuestions::Ask ask() {
        return [gate = gate, asked = asked](const std::string& path) {
            if (path.starts_with("/dead")) {
                ++*asked;
                gate->pass();
            }
            VolumeAnswer answer{.isReadable = !path.ends_with("gone")};
            if (answer.isReadable)
                answer.pathFacts.modified = catalogueDateFromUnixTime(kSeconds);
            return answer;
        };
    }
    ~SilentServer() { gate->release(); }

    std::shared_ptr<ReadGate> gate = std::make_shared<ReadGate>();
    std::shared_ptr<std::atomic<int>> asked = std::make_shared<std::atomic<int>>(0);
};

/// Every folder of the root is a mount.
std::string firstFolder(const std::string& path) {
    return path.substr(0, path.find('/', 1));
}

class LinuxFileDatesTest : public testing::Test {
protected:
    LinuxFileDates::LateAnswer keep() {
        return [this](const std::string& path, FileDates::Date date) {
            told.emplace_back(path, date);
        };
    }
    /// Whether the date of one of the server's files comes, at once or later.
    bool comes(LinuxFileDates& dates, const std::string& path) {
        if (dates.modificationDate(path) == dateAt(kSeconds))
            return true;
        return mainLoop.runUntil([&] {
            return std::find(told.begin(), told.end(), std::pair(path, dateAt(kSeconds))) != told.end();
        });
    }

    FakeMainLoop mainLoop;
    TestDir folder;
    std::vector<std::pair<std::string, FileDates::Date>> told;
};

TEST_F(LinuxFileDatesTest, aFileAndAFolderTellTheirDates) {
    folder.createFile("file", 1);
    folder.setModified("file", kSeconds, 0);
    folder.createFolder("some");
    folder.setModified("some", kSeconds + 86'400, 0);
    LinuxFileDates dates(mainLoop, mountPointAbove, askModification, kPlenty);
    EXPECT_EQ(dates.modificationDate(folder.path("file")), dateAt(kSeconds));
    EXPECT_EQ(dates.modificationDate(folder.path("some")), dateAt(kSeconds + 86'400));
}

TEST_F(LinuxFileDatesTest, aDateBefore1970IsTold) {
    folder.createFile("old", 1);
    folder.setModified("old", -kSeconds, 0);
    LinuxFileDates dates(mainLoop, mountPointAbove, askModification, kPlenty);
    EXPECT_EQ(dates.modificationDate(folder.path("old")), dateAt(-kSeconds));
}

TEST_F(LinuxFileDatesTest, aLinkTellsItsOwnDate) {
    folder.createFile("file", 1);
    folder.setModified("file", kSeconds, 0);
    folder.createSymlink("link", "file");
    folder.createSymlink("to nowhere", "nowhere");
    LinuxFileDates dates(mainLoop, mountPointAbove, askModification, kPlenty);
    const auto link = dates.modificationDate(folder.path("link"));
    ASSERT_TRUE(link);
    EXPECT_GT(link, dateAt(kSeconds));
    EXPECT_TRUE(dates.modificationDate(folder.path("to nowhere")));
}

TEST_F(LinuxFileDatesTest, namesThatAreNoUtf8AreAsked) {
    folder.createFile("m\xFCller\n", 1);
    LinuxFileDates dates(mainLoop, mountPointAbove, askModification, kPlenty);
    EXPECT_TRUE(dates.modificationDate(folder.path("m\xFCller\n")));
}

TEST_F(LinuxFileDatesTest, whatIsNotThereHasNoDate) {
    folder.createFile("file", 1);
    LinuxFileDates dates(mainLoop, mountPointAbove, askModification, kPlenty);
    for (const std::string& path : {std::string(), std::string("."), folder.path("gone"),
                                    folder.path("file/x"), folder.path() + std::string("\0x", 2)})
        EXPECT_FALSE(dates.modificationDate(path)) << path;
}

TEST_F(LinuxFileDatesTest, aFileOnADeadServerIsToldWhenItAnswersAfterAll) {
    SilentServer server;
    LinuxFileDates dates(mainLoop, firstFolder, server.ask(), kShort);
    dates.observe(keep());
    EXPECT_FALSE(dates.modificationDate("/dead/a")); // returns, though nothing answers
    mainLoop.advance(0);
    EXPECT_THAT(told, IsEmpty());
    server.gate->release();
    ASSERT_TRUE(mainLoop.runUntil([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre(Pair("/dead/a", dateAt(kSeconds))));
}

TEST_F(LinuxFileDatesTest, thatNothingIsThereIsToldLateToo) {
    SilentServer server;
    LinuxFileDates dates(mainLoop, firstFolder, server.ask(), kShort);
    dates.observe(keep());
    EXPECT_FALSE(dates.modificationDate("/dead/gone"));
    server.gate->release();
    ASSERT_TRUE(mainLoop.runUntil([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre(Pair("/dead/gone", FileDates::Date())));
}

TEST_F(LinuxFileDatesTest, aSilentMountIsAskedOnceHoweverManyOfItsFilesAreWanted) {
    SilentServer server;
    LinuxFileDates dates(mainLoop, firstFolder, server.ask(), kShort);
    for (int number = 0; number < 100; ++number)
        EXPECT_FALSE(dates.modificationDate("/dead/" + std::to_string(number)));
    ASSERT_TRUE(server.gate->waitForArrivals(1));
    EXPECT_EQ(*server.asked, 1);
}

TEST_F(LinuxFileDatesTest, otherMountsAnswerWhileOneIsSilent) {
    SilentServer server;
    LinuxFileDates dates(mainLoop, firstFolder, server.ask(), kShort);
    dates.observe(keep());
    for (int number = 0; number < 100; ++number)
        EXPECT_FALSE(dates.modificationDate("/dead/" + std::to_string(number)));
    EXPECT_TRUE(comes(dates, "/alive/a"));
}

TEST_F(LinuxFileDatesTest, theFileWantedLastIsAskedNext) {
    SilentServer server;
    LinuxFileDates dates(mainLoop, firstFolder, server.ask(), kShort);
    dates.observe(keep());
    for (const char* path : {"/dead/a", "/dead/b", "/dead/c"})
        EXPECT_FALSE(dates.modificationDate(path));
    server.gate->letPass(1);
    ASSERT_TRUE(mainLoop.runUntil([&] { return told.size() == 1; }));
    server.gate->release();
    ASSERT_TRUE(mainLoop.runUntil([&] { return told.size() == 2; }));
    EXPECT_THAT(told, ElementsAre(Pair("/dead/a", dateAt(kSeconds)), Pair("/dead/c", dateAt(kSeconds))));
    EXPECT_EQ(*server.asked, 2);
}

TEST_F(LinuxFileDatesTest, aFileThatIsWantedAgainWhileItIsAskedIsToldOnce) {
    SilentServer server;
    LinuxFileDates dates(mainLoop, firstFolder, server.ask(), kShort);
    dates.observe(keep());
    for (const char* path : {"/dead/a", "/dead/b", "/dead/a"})
        EXPECT_FALSE(dates.modificationDate(path));
    server.gate->release();
    ASSERT_TRUE(mainLoop.runUntil([&] { return !told.empty(); }));
    mainLoop.advance(0);
    EXPECT_THAT(told, ElementsAre(Pair("/dead/a", dateAt(kSeconds))));
    EXPECT_EQ(*server.asked, 1);
}

TEST_F(LinuxFileDatesTest, aServerThatIsBackAnswersAgain) {
    SilentServer server;
    LinuxFileDates dates(mainLoop, firstFolder, server.ask(), kShort);
    dates.observe(keep());
    EXPECT_FALSE(dates.modificationDate("/dead/a"));
    server.gate->release();
    ASSERT_TRUE(mainLoop.runUntil([&] { return !told.empty(); }));
    EXPECT_TRUE(comes(dates, "/dead/b"));
}

TEST_F(LinuxFileDatesTest, anAnswerAfterItsEndFindsNobody) {
    SilentServer server;
    {
        LinuxFileDates dates(mainLoop, firstFolder, server.ask(), kShort);
        dates.observe(keep());
        EXPECT_FALSE(dates.modificationDate("/dead/a"));
    }
    server.gate->release();
    mainLoop.advance(0);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(LinuxFileDatesTest, aPathLiesUnderTheNextMountPointAboveIt) {
    EXPECT_EQ(mountPointAbove("/proc/self"), "/proc");
    EXPECT_EQ(mountPointAbove("/proc"), "/proc");
    EXPECT_EQ(mountPointAbove("/procession"), "/");
    EXPECT_EQ(mountPointAbove("proc"), "");
}

} // namespace
} // namespace veltrano
