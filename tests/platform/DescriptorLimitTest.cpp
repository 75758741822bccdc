#include "platform/SystemForms.h"

#include "support/TestDir.h"

#include <array>
#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <mutex>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::Le;

/// The process may open no more than so many descriptors meanwhile.
class OpenFileLimit {
public:
    explicit OpenFileLimit(rlim_t limit) {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        const rlimit lower{limit, m_before.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &lower);
    }
    OpenFileLimit(const OpenFileLimit&) = delete;
    OpenFileLimit& operator=(const OpenFileLimit&) = delete;
    ~OpenFileLimit() { ::setrlimit(RLIMIT_NOFILE, &m_before); }

private:
    rlimit m_before{};
};

/// Every descriptor that the process may still open.
class AllDescriptors {
public:
    AllDescriptors() {
        for (int taken = ::open("/", O_PATH); taken >= 0; taken = ::open("/", O_PATH))
            m_taken.push_back(taken);
    }
    AllDescriptors(const AllDescriptors&) = delete;
    AllDescriptors& operator=(const AllDescriptors&) = delete;
    ~AllDescriptors() {
        for (const int taken : m_taken)
            ::close(taken);
    }

private:
    std::vector<int> m_taken;
};

/// Runs the work in a thread whose stack holds some hundred calls, not thousands.
void runOnSmallStack(std::function<void()> work) {
    constexpr std::size_t kStackBytes = 256 * 1024;
    pthread_attr_t attributes{};
    ASSERT_EQ(::pthread_attr_init(&attributes), 0);
    ASSERT_EQ(::pthread_attr_setstacksize(&attributes, kStackBytes), 0);
    const auto run = [](void* argument) -> void* {
        (*static_cast<std::function<void()>*>(argument))();
        return nullptr;
    };
    pthread_t thread{};
    ASSERT_EQ(::pthread_create(&thread, &attributes, run, &work), 0);
    ::pthread_join(thread, nullptr);
    ::pthread_attr_destroy(&attributes);
}

/// A chain of folders "d" with one more folder, that holds a file, at each level.
void createLadder(TestDir& dir, int depth) {
    dir.createChain("chain", "d", depth, [](int folder, int) {
        ASSERT_EQ(::mkdirat(folder, "side", 0755), 0);
        createFileAt(folder, "side/file", 1);
    });
}

class DescriptorLimitTest : public SystemFormTest {
protected:
    CatalogueRef start(std::string_view path = "") { return startFolder(*m_catalogue, m_dir.path(path)); }
    Listing list(const CatalogueRef& folder) { return listFolder(*m_catalogue, folder); }

    TestDir m_dir;
};

INSTANTIATE_TEST_SUITE_P(Forms, DescriptorLimitTest, testing::ValuesIn(kSystemForms), nameOfForm);

TEST_P(DescriptorLimitTest, defaultIsAQuarterOfWhatTheProcessMayOpen) {
    const OpenFileLimit limit(64);
    EXPECT_EQ(FolderHandles::defaultLimit(), 16U);
}

TEST_P(DescriptorLimitTest, defaultStaysBetween8And512) {
    {
        const OpenFileLimit limit(16);
        EXPECT_EQ(FolderHandles::defaultLimit(), 8U);
    }
    const OpenFileLimit limit(4000);
    EXPECT_EQ(FolderHandles::defaultLimit(), 512U);
}

TEST_P(DescriptorLimitTest, nothingStaysOpenOnceTheReferencesAreGone) {
    m_dir.createFile("a/b/file");
    {
        const Listing top = list(start());
        EXPECT_GT(openCount(), 0U);
        const Listing below = list(top["a"].reference);
        EXPECT_THAT(list(below["b"].reference).names(), ElementsAre("file"));
    }
    EXPECT_EQ(openCount(), 0U);
}

TEST_P(DescriptorLimitTest, folderWithoutSubfoldersKeepsNoDescriptor) {
    m_dir.createFile("file");
    const Listing listing = list(start());
    EXPECT_EQ(openCount(), 0U);
}

TEST_P(DescriptorLimitTest, pendingFoldersKeepNoMoreThanTheLimitOpen) {
    limitDescriptors(5);
    for (int i = 0; i < 40; ++i)
        m_dir.createFile("f" + std::to_string(i) + "/g/file");
    const Listing top = list(start());
    std::vector<Listing> pending;
    for (const SeenEntry& seen : top.entries) {
        pending.push_back(list(seen.reference));
        EXPECT_LE(openCount(), 5U);
    }
    for (const Listing& listing : pending)
        EXPECT_THAT(list(listing["g"].reference).names(), ElementsAre("file"));
    EXPECT_LE(openCount(), 5U);
}

TEST_P(DescriptorLimitTest, descriptorsInUseMayExceedTheLimit) {
    limitDescriptors(0);
    m_dir.createFile("a/b/c/file");
    EXPECT_EQ(walkTree(*m_catalogue, start()).files, 1U);
    EXPECT_EQ(openCount(), 0U);
}

TEST_P(DescriptorLimitTest, deepChainWithPendingFoldersOnEachLevelNeeds64Descriptors) {
    constexpr int kDepth = 5000;
    createLadder(m_dir, kDepth);
    const OpenFileLimit limit(64);
    limitDescriptors(FolderHandles::defaultLimit());
    const TreeTotals totals = walkTree(*m_catalogue, start("chain"));
    EXPECT_EQ(totals.files, std::uint64_t{kDepth});
    EXPECT_EQ(totals.folders, 2 * std::uint64_t{kDepth});
    EXPECT_EQ(totals.denied + totals.gone, 0U);
    EXPECT_EQ(openCount(), 0U);
}

TEST_P(DescriptorLimitTest, folderInTheMiddleOfADeepChainIsReachedFromTheStartAgain) {
    constexpr int kDepth = 600;
    createLadder(m_dir, kDepth);
    limitDescriptors(6);
    std::vector<CatalogueRef> sides;
    CatalogueRef down = start("chain/d");
    for (int level = 1; level < kDepth; ++level) {
        const Listing listing = list(down);
        sides.push_back(listing["side"].reference);
        down = listing["d"].reference;
    }
    for (const std::size_t level : {0U, 300U, 150U, 598U, 1U})
        EXPECT_THAT(list(sides[level]).names(), ElementsAre("file")) << level;
    EXPECT_LE(openCount(), 6U);
}

TEST_P(DescriptorLimitTest, releasingADeepChainAtOnceNeedsNoStack) {
    constexpr int kDepth = 5000;
    createLadder(m_dir, kDepth);
    limitDescriptors(6);
    std::vector<CatalogueRef> sides;
    CatalogueRef down = start("chain/d");
    for (int level = 1; level < kDepth; ++level) {
        const Listing listing = list(down);
        down = listing["d"].reference;
        if (level == 1)
            sides.push_back(listing["side"].reference);
    }
    runOnSmallStack([&down] { down = {}; });
    EXPECT_THAT(list(sides.front()).names(), ElementsAre("file"));
    sides.clear();
    EXPECT_EQ(openCount(), 0U);
}

TEST_P(DescriptorLimitTest, folderSwappedWhileItsDescriptorWasClosedIsGone) {
    limitDescriptors(0);
    m_dir.createFile("a/b/mine");
    const Listing top = list(start());
    const CatalogueRef b = list(top["a"].reference)["b"].reference;
    ASSERT_EQ(::rename(m_dir.path("a").c_str(), m_dir.path("moved").c_str()), 0);
    EXPECT_EQ(list(b).end, CatalogueStatus::Gone);
    m_dir.createFile("a/b/other");
    EXPECT_EQ(list(b).end, CatalogueStatus::Gone);
    EXPECT_EQ(openCount(), 0U);
}

TEST_P(DescriptorLimitTest, folderMovedWhileItsDescriptorIsOpenIsStillRead) {
    m_dir.createFile("a/b/mine");
    const Listing top = list(start());
    const CatalogueRef b = list(top["a"].reference)["b"].reference;
    ASSERT_EQ(::rename(m_dir.path("a").c_str(), m_dir.path("moved").c_str()), 0);
    EXPECT_THAT(list(b).names(), ElementsAre("mine"));
}

// A folder that is moved while the folder above it is closed has another folder above: its ".." must not be
// taken for the old one.
TEST_P(DescriptorLimitTest, folderAboveIsNotMistakenAfterAMove) {
    limitDescriptors(2);
    m_dir.createFile("a/b/c/file");
    m_dir.createFile("a/side/file");
    m_dir.createFile("other/side/wrong");
    const CatalogueRef a = list(start())["a"].reference;
    const Listing inA = list(a);
    CatalogueRef c = list(inA["b"].reference)["c"].reference;
    ASSERT_EQ(::rename(m_dir.path("a/b").c_str(), m_dir.path("other/b").c_str()), 0);
    const Listing inC = list(c);
    c = {};
    EXPECT_THAT(list(inA["side"].reference).names(), ElementsAre("file"));
}

TEST_P(DescriptorLimitTest, folderIsDeniedWhileTheProcessHasNoDescriptorLeft) {
    m_dir.createFile("file");
    const OpenFileLimit limit(64);
    const CatalogueRef folder = start();
    {
        const AllDescriptors taken;
        EXPECT_EQ(list(folder).end, CatalogueStatus::Denied);
    }
    EXPECT_THAT(list(folder).names(), ElementsAre("file"));
    EXPECT_EQ(openCount(), 0U);
}

TEST_P(DescriptorLimitTest, idleDescriptorsMakeWayWhenTheProcessHasNoneLeft) {
    for (int i = 0; i < 8; ++i)
        m_dir.createFile("f" + std::to_string(i) + "/g/file");
    const OpenFileLimit limit(64);
    const Listing top = list(start());
    std::vector<Listing> pending;
    for (const SeenEntry& seen : top.entries)
        pending.push_back(list(seen.reference));
    EXPECT_EQ(openCount(), 9U);
    const AllDescriptors taken;
    EXPECT_THAT(list(pending.back()["g"].reference).names(), ElementsAre("file"));
    EXPECT_LE(openCount(), 2U);
}

TEST_P(DescriptorLimitTest, fourThreadsShareFewDescriptors) {
    limitDescriptors(4);
    for (int i = 0; i < 64; ++i)
        m_dir.createFile("f" + std::to_string(i % 4) + "/g" + std::to_string(i % 16) + "/h" +
                             std::to_string(i) + "/file",
                         1);
    std::mutex mutex;
    std::vector<CatalogueRef> pending{start()};
    std::uint64_t files = 0;
    int reading = 0;
    const auto work = [&] {
        const auto iterator = m_catalogue->makeIterator();
        for (;;) {
            CatalogueRef folder;
            {
                const std::lock_guard lock(mutex);
                if (pending.empty() && reading == 0)
                    return;
                if (!pending.empty()) {
                    folder = std::move(pending.front());
                    pending.erase(pending.begin());
                    ++reading;
                }
            }
            if (!folder.isFilledIn()) {
                std::this_thread::yield();
                continue;
            }
            Listing listing;
            if (iterator->open(folder) == CatalogueStatus::Ok)
                listing = readToEnd(*iterator);
            iterator->close();
            const std::lock_guard lock(mutex);
            --reading;
            for (SeenEntry& seen : listing.entries) {
                if (seen.entry.isDirectory)
                    pending.push_back(std::move(seen.reference));
                else
                    ++files;
            }
        }
    };
    std::array<std::thread, 4> threads;
    for (std::thread& thread : threads)
        thread = std::thread(work);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(files, 64U);
    EXPECT_EQ(openCount(), 0U);
}

} // namespace
} // namespace veltrano
