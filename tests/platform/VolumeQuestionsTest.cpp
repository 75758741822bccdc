#include "platform/linux/VolumeQuestions.h"

#include "support/MemoryDisk.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <sys/statvfs.h>
#include <thread>

namespace veltrano {
namespace {

using std::chrono::milliseconds;
using Key = VolumeQuestions::Key;

constexpr milliseconds kShort{20};
/// Longer than any answer takes that comes at all; a test that waits so long has failed.
constexpr milliseconds kPlenty{60'000};

VolumeAnswer sizeOfPath(const std::string& path) {
    return {.isReadable = true, .size = static_cast<std::int64_t>(path.size())};
}

/// A file system that keeps silent at "/dead" until it is let go.
struct SilentVolume {
    VolumeQuestions::Ask ask() {
        return [gate = gate, asked = asked](const std::string& path) {
            if (path.starts_with("/dead")) {
                ++*asked;
                gate->pass();
            }
            return sizeOfPath(path);
        };
    }

    ~SilentVolume() { gate->release(); }

    std::shared_ptr<ReadGate> gate = std::make_shared<ReadGate>();
    std::shared_ptr<std::atomic<int>> asked = std::make_shared<std::atomic<int>>(0);
};

TEST(VolumeQuestions, everyVolumeIsAsked) {
    VolumeQuestions questions(sizeOfPath, [] {});
    std::vector<Key> keys;
    for (int number = 0; number < 500; ++number)
        keys.emplace_back(number, "/" + std::to_string(number));
    const auto answers = questions.ask(keys, kPlenty);
    ASSERT_EQ(answers.size(), keys.size());
    for (const Key& key : keys)
        EXPECT_EQ(answers.at(key).size, static_cast<std::int64_t>(key.second.size()));
}

TEST(VolumeQuestions, nothingAskedIsNothingAnswered) {
    VolumeQuestions questions(sizeOfPath, [] {});
    EXPECT_TRUE(questions.ask({}, kPlenty).empty());
}

TEST(VolumeQuestions, silentVolumeHoldsUpNoOther) {
    SilentVolume silent;
    VolumeQuestions questions(silent.ask(), [] {});
    const auto answers = questions.ask({{1, "/dead"}, {2, "/alive"}}, kShort);
    EXPECT_FALSE(answers.contains({1, "/dead"}));
    EXPECT_TRUE(answers.contains({2, "/alive"}));
}

TEST(VolumeQuestions, moreSilentVolumesThanThreadsHoldUpNoOther) {
    SilentVolume silent;
    VolumeQuestions questions(silent.ask(), [] {});
    std::vector<Key> keys;
    for (int number = 0; number < 20; ++number)
        keys.emplace_back(number, "/dead" + std::to_string(number));
    keys.emplace_back(99, "/alive");
    EXPECT_TRUE(questions.ask(keys, kShort).contains({99, "/alive"}));
}

TEST(VolumeQuestions, hundredsOfSilentVolumesEndTheWaitingAllTheSame) {
    SilentVolume silent;
    VolumeQuestions questions(silent.ask(), [] {});
    std::vector<Key> keys;
    for (int number = 0; number < 300; ++number)
        keys.emplace_back(number, "/dead" + std::to_string(number));
    EXPECT_TRUE(questions.ask(keys, milliseconds(1)).empty());
    EXPECT_LE(silent.asked->load(), 64);
}

TEST(VolumeQuestions, openQuestionIsNotPutAgain) {
    SilentVolume silent;
    VolumeQuestions questions(silent.ask(), [] {});
    for (int round = 0; round < 3; ++round)
        EXPECT_TRUE(questions.ask({{1, "/dead"}}, kShort).empty());
    EXPECT_EQ(silent.asked->load(), 1);
}

TEST(VolumeQuestions, newMountAtTheSamePathIsAskedItself) {
    SilentVolume silent;
    VolumeQuestions questions(silent.ask(), [] {});
    EXPECT_TRUE(questions.ask({{1, "/dead"}}, kShort).empty());
    EXPECT_TRUE(questions.ask({{2, "/dead"}}, kShort).empty());
    EXPECT_TRUE(silent.gate->waitForArrivals(2));
}

TEST(VolumeQuestions, lateAnswerIsToldAndComesWithTheNextQuestion) {
    SilentVolume silent;
    std::mutex mutex;
    std::condition_variable told;
    bool isTold = false;
    VolumeQuestions questions(silent.ask(), [&] {
        const std::lock_guard guard(mutex);
        isTold = true;
        told.notify_all();
    });
    EXPECT_TRUE(questions.ask({{1, "/dead"}}, kShort).empty());
    silent.gate->release();
    std::unique_lock lock(mutex);
    told.wait(lock, [&] { return isTold; });
    lock.unlock();
    EXPECT_TRUE(questions.ask({}, kPlenty).contains({1, "/dead"}));
    EXPECT_TRUE(questions.ask({{1, "/dead"}}, kPlenty).contains({1, "/dead"}));
}

TEST(VolumeQuestions, endWaitsForNoSilentVolume) {
    SilentVolume silent;
    {
        VolumeQuestions questions(silent.ask(), [] {});
        EXPECT_TRUE(questions.ask({{1, "/dead"}}, kShort).empty());
    }
    EXPECT_EQ(silent.asked->load(), 1);
}

TEST(VolumeQuestions, stopEndsAWaitingQuestion) {
    SilentVolume silent;
    VolumeQuestions questions(silent.ask(), [] {});
    std::thread stopper([&] {
        EXPECT_TRUE(silent.gate->waitForArrivals(1));
        questions.stop();
    });
    EXPECT_TRUE(questions.ask({{1, "/dead"}}, kPlenty).empty());
    stopper.join();
}

TEST(AskVolume, sizesAreThoseOfTheFileSystem) {
    const TestDir dir;
    struct statvfs space {};
    ASSERT_EQ(::statvfs(dir.path().c_str(), &space), 0);
    const VolumeAnswer answer = askVolume(dir.path());
    EXPECT_TRUE(answer.isReadable);
    EXPECT_EQ(answer.size, static_cast<std::int64_t>(space.f_blocks * space.f_frsize));
    EXPECT_GE(answer.freeSize, 0);
    EXPECT_LE(answer.freeSize, answer.size);
    EXPECT_EQ(answer.nodes, static_cast<std::int64_t>(space.f_files));
}

TEST(AskVolume, datesAreThoseOfTheMountPoint) {
    TestDir dir;
    dir.createFolder("m");
    dir.setModified("m", 1'600'000'000, 0);
    EXPECT_EQ(askVolume(dir.path("m")).pathFacts.modified, catalogueDateFromUnixTime(1'600'000'000));
    EXPECT_NE(askVolume(dir.path("m")).pathFacts.accessed, CatalogueDate());
}

TEST(AskVolume, whatIsNoFolderIsNoVolume) {
    TestDir dir;
    dir.createFile("file", 10);
    EXPECT_FALSE(askVolume(dir.path("file")).isReadable);
    EXPECT_FALSE(askVolume(dir.path("none")).isReadable);
}

} // namespace
} // namespace veltrano
