#include "platform/linux/LinuxFolderQuestions.h"

#include "support/FakeMainLoop.h"
#include "support/MemoryDisk.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace veltrano {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kShort{20};
/// Longer than any answer takes that comes at all; a test that waits so long has failed.
constexpr milliseconds kPlenty{60'000};

/// A file system that keeps silent below "/dead" until it is let go.
struct SilentServer {
    VolumeQuestions::Ask ask() {
        return [gate = gate](const std::string& path) {
            if (path.starts_with("/dead"))
                gate->pass();
            return VolumeAnswer{.isReadable = !path.ends_with("gone"), .pathFacts = {.valence = 7}};
        };
    }
    ~SilentServer() { gate->release(); }

    std::shared_ptr<ReadGate> gate = std::make_shared<ReadGate>();
};

FolderAnswer answerOf(FolderQuestions& questions, const std::string& path) {
    return questions.ask({path}).front().answer;
}

class LinuxFolderQuestionsTest : public testing::Test {
protected:
    FakeMainLoop mainLoop;
    TestDir folder;
};

TEST_F(LinuxFolderQuestionsTest, aFolderAnswersWithItsDates) {
    folder.createFolder("some");
    folder.setModified("some", 1'600'000'000, 0);
    LinuxFolderQuestions questions(mainLoop, askVolume, kPlenty);
    const FolderFacts facts = questions.ask({folder.path("some")}).front();
    EXPECT_EQ(facts.answer, FolderAnswer::Folder);
    EXPECT_EQ(facts.pathFacts.modified, catalogueDateFromUnixTime(1'600'000'000, 0));
}

TEST_F(LinuxFolderQuestionsTest, whatIsNoFolderIsNone) {
    folder.createFile("file", 1);
    folder.createFifo("fifo");
    folder.createSymlink("to nowhere", "nowhere");
    folder.createSymlink("to file", "file");
    LinuxFolderQuestions questions(mainLoop, askVolume, kPlenty);
    for (const char* name : {"file", "fifo", "to nowhere", "to file", "gone", "file/below"})
        EXPECT_EQ(answerOf(questions, folder.path(name)), FolderAnswer::NoFolder) << name;
}

TEST_F(LinuxFolderQuestionsTest, aLinkToAFolderIsAFolder) {
    folder.createFolder("some");
    folder.createSymlink("link", "some");
    LinuxFolderQuestions questions(mainLoop, askVolume, kPlenty);
    EXPECT_EQ(answerOf(questions, folder.path("link")), FolderAnswer::Folder);
}

TEST_F(LinuxFolderQuestionsTest, namesThatAreNoUtf8AreAsked) {
    folder.createFolder("m\xFCller\n");
    LinuxFolderQuestions questions(mainLoop, askVolume, kPlenty);
    EXPECT_EQ(answerOf(questions, folder.path("m\xFCller\n")), FolderAnswer::Folder);
}

TEST_F(LinuxFolderQuestionsTest, whatIsNoAbsolutePathIsNotAsked) {
    SilentServer server;
    LinuxFolderQuestions questions(mainLoop, server.ask(), kPlenty);
    for (const std::string& path :
         {std::string(), std::string("."), std::string("tmp"), std::string("/a\0b", 4)})
        EXPECT_EQ(answerOf(questions, path), FolderAnswer::NoFolder) << path;
}

TEST_F(LinuxFolderQuestionsTest, answersStandInTheOrderOfThePaths) {
    SilentServer server;
    LinuxFolderQuestions questions(mainLoop, server.ask(), kPlenty);
    const auto facts = questions.ask({"/b", "/a gone", "relative", "/b", "/a"});
    std::vector<FolderAnswer> answers;
    for (const FolderFacts& each : facts)
        answers.push_back(each.answer);
    using enum FolderAnswer;
    EXPECT_EQ(answers, (std::vector{Folder, NoFolder, NoFolder, Folder, Folder}));
}

TEST_F(LinuxFolderQuestionsTest, noPathsGetNoAnswers) {
    LinuxFolderQuestions questions(mainLoop);
    EXPECT_TRUE(questions.ask({}).empty());
}

TEST_F(LinuxFolderQuestionsTest, aDeadServerIsSilentAndTheOthersAnswer) {
    SilentServer server;
    LinuxFolderQuestions questions(mainLoop, server.ask(), kShort);
    std::vector<std::string> paths;
    for (int number = 0; number < 10; ++number)
        paths.push_back("/dead/" + std::to_string(number));
    paths.emplace_back("/alive");
    const auto facts = questions.ask(paths);
    for (std::size_t index = 0; index < 10; ++index)
        EXPECT_EQ(facts[index].answer, FolderAnswer::Silent) << index;
    EXPECT_EQ(facts[10].answer, FolderAnswer::Folder);
}

TEST_F(LinuxFolderQuestionsTest, aSilentFolderThatAnswersAfterAllIsTold) {
    SilentServer server;
    LinuxFolderQuestions questions(mainLoop, server.ask(), kShort);
    std::vector<std::pair<std::string, FolderFacts>> told;
    questions.addObserver(
        [&](const std::string& path, const FolderFacts& facts) { told.emplace_back(path, facts); });
    ASSERT_EQ(answerOf(questions, "/dead/server"), FolderAnswer::Silent);
    EXPECT_TRUE(told.empty());
    server.gate->release();
    ASSERT_TRUE(mainLoop.runUntil([&] { return !told.empty(); }));
    EXPECT_EQ(told.front().first, "/dead/server");
    EXPECT_EQ(told.front().second.answer, FolderAnswer::Folder);
    EXPECT_EQ(told.front().second.pathFacts.valence, 7);
}

TEST_F(LinuxFolderQuestionsTest, aLateAnswerIsToldAlsoWhenAnotherQuestionMeetsItFirst) {
    SilentServer server;
    LinuxFolderQuestions questions(mainLoop, server.ask(), kShort);
    std::vector<std::string> told;
    questions.addObserver([&](const std::string& path, const FolderFacts&) { told.push_back(path); });
    ASSERT_EQ(answerOf(questions, "/dead/server"), FolderAnswer::Silent);
    server.gate->release();
    // The main loop stands still until the answer is in, so that the second question comes first.
    while (mainLoop.pendingPosts() == 0)
        std::this_thread::yield();
    ASSERT_EQ(answerOf(questions, "/alive"), FolderAnswer::Folder);
    EXPECT_TRUE(told.empty()) << "observers hear in a turn of their own";
    mainLoop.advance(0);
    EXPECT_EQ(told, std::vector<std::string>{"/dead/server"});
}

TEST_F(LinuxFolderQuestionsTest, whoIsRemovedHearsNothing) {
    SilentServer server;
    LinuxFolderQuestions questions(mainLoop, server.ask(), kShort);
    int heardByFirst = 0;
    int heardBySecond = 0;
    FolderQuestions::Token second = 0;
    questions.addObserver([&](const std::string&, const FolderFacts&) {
        ++heardByFirst;
        questions.removeObserver(second);
    });
    second = questions.addObserver([&](const std::string&, const FolderFacts&) { ++heardBySecond; });
    questions.removeObserver(0);
    ASSERT_EQ(answerOf(questions, "/dead/server"), FolderAnswer::Silent);
    server.gate->release();
    ASSERT_TRUE(mainLoop.runUntil([&] { return heardByFirst == 1; }));
    mainLoop.advance(0);
    EXPECT_EQ(heardBySecond, 0);
}

TEST_F(LinuxFolderQuestionsTest, anAnswerThatIsPostedFindsNobodyWhenTheQuestionsAreGone) {
    SilentServer server;
    int heard = 0;
    {
        LinuxFolderQuestions questions(mainLoop, server.ask(), kShort);
        questions.addObserver([&](const std::string&, const FolderFacts&) { ++heard; });
        ASSERT_EQ(answerOf(questions, "/dead/server"), FolderAnswer::Silent);
        server.gate->release();
        while (mainLoop.pendingPosts() == 0)
            std::this_thread::yield();
    }
    mainLoop.advance(0);
    EXPECT_EQ(heard, 0);
}

} // namespace
} // namespace veltrano
