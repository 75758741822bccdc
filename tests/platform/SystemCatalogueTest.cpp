#include "platform/SystemForms.h"

#include "support/ChildProcess.h"
#include "support/TestDir.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SystemCatalogueTest : public SystemFormTest {
protected:
    Listing list(std::string_view path = "") { return listPath(*m_catalogue, m_dir.path(path)); }

    std::int64_t blocksOf(const std::string& name) const {
        struct stat facts {};
        EXPECT_EQ(::lstat(m_dir.path(name).c_str(), &facts), 0) << name;
        return std::int64_t{facts.st_blocks} * 512;
    }

    void setMode(const std::string& name, mode_t mode) const {
        ASSERT_EQ(::chmod(m_dir.path(name).c_str(), mode), 0) << name;
    }

    /// Lists a folder as a user who owns nothing, and tells its entries and how it ended.
    std::string listAsNobody(std::string_view path) {
        setMode("", 0755);
        return runInChild([&]() -> std::string {
            if (!becomeNobody())
                return "not permitted";
            const Listing listing = list(path);
            std::string answer;
            for (const std::string& name : listing.names())
                answer += name + " ";
            return answer + (listing.end == CatalogueStatus::Denied        ? "denied"
                             : listing.end == CatalogueStatus::EndOfFolder ? "end"
                                                                           : "not opened");
        });
    }

    TestDir m_dir;
};

INSTANTIATE_TEST_SUITE_P(Forms, SystemCatalogueTest, testing::ValuesIn(kSystemForms), nameOfForm);

TEST_P(SystemCatalogueTest, whatIsNoFolderIsAFileOfItsOwnSize) {
    m_dir.createFile("target", 10'000);
    m_dir.createFolder("folder");
    m_dir.createSymlink("dangling", "nowhere");
    m_dir.createSymlink("linkToFile", "target");
    m_dir.createSymlink("linkToFolder", "folder");
    m_dir.createSymlink("loop", "loop");
    m_dir.createSymlink("longLink", std::string(3000, 'x'));
    m_dir.createFifo("fifo");
    m_dir.createSocket("socket");
    std::vector<std::string> names = {"target", "dangling", "linkToFile", "linkToFolder",
                                      "loop",   "longLink", "fifo",       "socket"};
    if (m_dir.createDevice("device"))
        names.emplace_back("device");
    const Listing listing = list();
    EXPECT_EQ(listing.end, CatalogueStatus::EndOfFolder);
    EXPECT_EQ(listing.entries.size(), names.size() + 1);
    for (const std::string& name : names) {
        EXPECT_FALSE(listing[name].entry.isDirectory) << name;
        EXPECT_EQ(listing[name].entry.dataPhysicalSize, blocksOf(name)) << name;
    }
    EXPECT_TRUE(listing["folder"].entry.isDirectory);
    EXPECT_EQ(listing["folder"].entry.dataPhysicalSize, blocksOf("folder"));
}

TEST_P(SystemCatalogueTest, linksAreToldWhereverTheyLead) {
    m_dir.createFolder("folder");
    m_dir.createFile("file");
    m_dir.createSymlink("linkToFolder", "folder");
    m_dir.createSymlink("linkToFile", "file");
    m_dir.createSymlink("dangling", "nowhere");
    const Listing listing = list();
    for (const char* const name : {"linkToFolder", "linkToFile", "dangling"})
        EXPECT_TRUE(listing[name].entry.isSymbolicLink) << name;
    for (const char* const name : {"folder", "file"})
        EXPECT_FALSE(listing[name].entry.isSymbolicLink) << name;
}

TEST_P(SystemCatalogueTest, sparseFileCountsWhatItTakes) {
    m_dir.createSparse("sparse", std::int64_t{1} << 32);
    EXPECT_EQ(list()["sparse"].entry.dataPhysicalSize, blocksOf("sparse"));
    EXPECT_LT(list()["sparse"].entry.dataPhysicalSize, 1 << 20);
}

TEST_P(SystemCatalogueTest, eachHardLinkCounts) {
    m_dir.createFile("one", 10'000);
    m_dir.createHardLink("two", "one");
    m_dir.createHardLink("below/three", "one");
    const TreeTotals totals = walkTree(*m_catalogue, startFolder(*m_catalogue, m_dir.path()));
    EXPECT_EQ(totals.files, 3U);
    EXPECT_EQ(totals.fileBytes, 3 * blocksOf("one"));
}

TEST_P(SystemCatalogueTest, treeWithLinksInCirclesIsReadOnce) {
    m_dir.createFile("a/b/file", 1);
    m_dir.createSymlink("a/b/up", "..");
    m_dir.createSymlink("a/b/top", m_dir.path());
    m_dir.createSymlink("a/b/self", ".");
    const TreeTotals totals = walkTree(*m_catalogue, startFolder(*m_catalogue, m_dir.path()));
    EXPECT_EQ(totals.folders, 2U);
    EXPECT_EQ(totals.files, 4U);
}

TEST_P(SystemCatalogueTest, folderReplacedByALinkIsGone) {
    m_dir.createFile("a/file");
    m_dir.createFile("elsewhere/secret");
    const CatalogueRef a = list()["a"].reference;
    m_dir.remove("a");
    m_dir.createSymlink("a", "elsewhere");
    EXPECT_EQ(listFolder(*m_catalogue, a).end, CatalogueStatus::Gone);
}

TEST_P(SystemCatalogueTest, folderReplacedByAFifoIsGone) {
    m_dir.createFolder("a");
    const CatalogueRef a = list()["a"].reference;
    m_dir.remove("a");
    m_dir.createFifo("a");
    EXPECT_EQ(listFolder(*m_catalogue, a).end, CatalogueStatus::Gone);
}

TEST_P(SystemCatalogueTest, timeBeforeTheCatalogueStartsIsItsFirstSecond) {
    m_dir.createFile("file");
    constexpr std::int64_t kYear1902 = -2'145'916'800;
    m_dir.setModified("file", kYear1902, 0);
    struct stat facts {};
    ASSERT_EQ(::stat(m_dir.path("file").c_str(), &facts), 0);
    if (facts.st_mtim.tv_sec != kYear1902)
        GTEST_SKIP() << "this file system keeps no time so early";
    EXPECT_EQ(list()["file"].entry.contentModDate.lowSeconds, 1U);
}

TEST_P(SystemCatalogueTest, folderWithoutPermissionOpensAndFailsAtItsFirstRead) {
    m_dir.createFile("closed/file");
    setMode("closed", 0700);
    const std::string answer = listAsNobody("closed");
    if (answer == "not permitted")
        GTEST_SKIP() << "this user may not become another";
    EXPECT_EQ(answer, "denied");
}

TEST_P(SystemCatalogueTest, folderThatMayBeEnteredButNotReadIsDenied) {
    m_dir.createFile("blind/file");
    setMode("blind", 0711);
    const std::string answer = listAsNobody("blind");
    if (answer == "not permitted")
        GTEST_SKIP() << "this user may not become another";
    EXPECT_EQ(answer, "denied");
}

TEST_P(SystemCatalogueTest, folderThatMayBeReadButNotEnteredIsDenied) {
    m_dir.createFile("names/file");
    setMode("names", 0744);
    const std::string answer = listAsNobody("names");
    if (answer == "not permitted")
        GTEST_SKIP() << "this user may not become another";
    EXPECT_EQ(answer, "denied");
}

TEST_P(SystemCatalogueTest, startFolderThatMayNotBeReachedIsGone) {
    m_dir.createFile("closed/inner/file");
    setMode("closed", 0700);
    setMode("", 0755);
    const std::string answer = runInChild([&]() -> std::string {
        CatalogueRef reference;
        if (!becomeNobody())
            return "not permitted";
        return m_catalogue->referenceFromPath(m_dir.path("closed/inner"), reference) == CatalogueStatus::Gone
                   ? "gone"
                   : "found";
    });
    if (answer == "not permitted")
        GTEST_SKIP() << "this user may not become another";
    EXPECT_EQ(answer, "gone");
}

TEST_P(SystemCatalogueTest, deniedFolderTakesNothingElseFromTheTotals) {
    m_dir.createFile("open/file", 1);
    m_dir.createFile("closed/file", 1);
    m_dir.createFile("file", 1);
    setMode("closed", 0700);
    setMode("", 0755);
    const std::string answer = runInChild([&]() -> std::string {
        if (!becomeNobody())
            return "not permitted";
        const TreeTotals totals = walkTree(*m_catalogue, startFolder(*m_catalogue, m_dir.path()));
        return std::to_string(totals.files) + " files, " + std::to_string(totals.denied) + " denied";
    });
    if (answer == "not permitted")
        GTEST_SKIP() << "this user may not become another";
    EXPECT_EQ(answer, "2 files, 1 denied");
}

TEST_P(SystemCatalogueTest, totalsAgreeWithAnIndependentCount) {
    for (int folder = 0; folder < 40; ++folder)
        for (int file = 0; file < folder * 7; ++file)
            m_dir.createFile("f" + std::to_string(folder % 6) + "/g" + std::to_string(folder) + "/file" +
                                 std::to_string(file),
                             static_cast<std::size_t>(file * 97));
    const TreeSum sum = sumOfTree(m_dir.path());
    const TreeTotals totals = walkTree(*m_catalogue, startFolder(*m_catalogue, m_dir.path()));
    EXPECT_EQ(sum.files, 5460U);
    EXPECT_EQ(totals.files, sum.files);
    EXPECT_EQ(totals.folders, sum.folders);
    EXPECT_EQ(totals.fileBytes, sum.fileBytes);
}

TEST_P(SystemCatalogueTest, namesOfFullLengthComeWholeInEveryRead) {
    std::vector<std::string> names;
    for (int i = 100; i < 900; ++i)
        names.push_back(std::to_string(i) + std::string(252, 'n'));
    for (const std::string& name : names)
        m_dir.createFile(name);
    EXPECT_EQ(list().names(), names);
}

} // namespace
} // namespace veltrano
