#include "platform/SystemForms.h"

#include "support/TestDir.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltrano {
namespace {

using testing::ElementsAre;

class StartPathTest : public SystemFormTest {
protected:
    CatalogueStatus statusOf(const std::string& path) {
        CatalogueRef reference;
        return m_catalogue->referenceFromPath(path, reference);
    }

    std::vector<std::string> namesAt(const std::string& path) { return listPath(*m_catalogue, path).names(); }

    /// A path down a chain of folders of that name.
    std::string chainPath(const std::string& name, int depth) const {
        std::string path = m_dir.path("chain");
        for (int i = 0; i < depth; ++i)
            path += "/" + name;
        return path;
    }

    TestDir m_dir;
};

INSTANTIATE_TEST_SUITE_P(Forms, StartPathTest, testing::ValuesIn(kSystemForms), nameOfForm);

TEST_P(StartPathTest, linkToAFolderOpensTheFolder) {
    m_dir.createFile("real/file");
    m_dir.createSymlink("link", "real");
    EXPECT_EQ(statusOf(m_dir.path("link")), CatalogueStatus::Ok);
    EXPECT_THAT(namesAt(m_dir.path("link")), ElementsAre("file"));
}

TEST_P(StartPathTest, linksOnTheWayAreFollowed) {
    m_dir.createFile("real/below/file");
    m_dir.createSymlink("link", "real");
    EXPECT_THAT(namesAt(m_dir.path("link/below")), ElementsAre("file"));
}

TEST_P(StartPathTest, danglingLinkIsGone) {
    m_dir.createSymlink("link", "nowhere");
    EXPECT_EQ(statusOf(m_dir.path("link")), CatalogueStatus::Gone);
}

TEST_P(StartPathTest, linkToAFileIsGone) {
    m_dir.createFile("file");
    m_dir.createSymlink("link", "file");
    EXPECT_EQ(statusOf(m_dir.path("link")), CatalogueStatus::Gone);
}

TEST_P(StartPathTest, linkLoopIsGone) {
    m_dir.createSymlink("one", "two");
    m_dir.createSymlink("two", "one");
    EXPECT_EQ(statusOf(m_dir.path("one")), CatalogueStatus::Gone);
}

TEST_P(StartPathTest, fifoIsGone) {
    m_dir.createFifo("fifo");
    EXPECT_EQ(statusOf(m_dir.path("fifo")), CatalogueStatus::Gone);
}

TEST_P(StartPathTest, fifoPutInPlaceOfTheFolderIsGoneAndNotWaitedFor) {
    m_dir.createFolder("a");
    const CatalogueRef a = startFolder(*m_catalogue, m_dir.path("a"));
    m_dir.remove("a");
    m_dir.createFifo("a");
    EXPECT_EQ(listFolder(*m_catalogue, a).end, CatalogueStatus::Gone);
}

TEST_P(StartPathTest, slashesMoreThanNeededDoNoHarm) {
    m_dir.createFile("a/file");
    EXPECT_THAT(namesAt("/" + m_dir.path() + "//a//"), ElementsAre("file"));
}

TEST_P(StartPathTest, bytesThatAreNoUtf8AreGood) {
    m_dir.createFile("\xC3\x28\xFF/file");
    EXPECT_THAT(namesAt(m_dir.path("\xC3\x28\xFF")), ElementsAre("file"));
}

TEST_P(StartPathTest, nameLongerThanAnyNameIsGone) {
    EXPECT_EQ(statusOf(m_dir.path(std::string(256, 'n'))), CatalogueStatus::Gone);
    EXPECT_EQ(statusOf(m_dir.path(std::string(70'000, 'n'))), CatalogueStatus::Gone);
}

TEST_P(StartPathTest, pathLongerThan1023BytesIsGood) {
    const std::string name(200, 'n');
    m_dir.createChain("chain", name, 6,
                      [](int folder, int level) { createFileAt(folder, "at" + std::to_string(level), 0); });
    EXPECT_THAT(namesAt(chainPath(name, 6)), ElementsAre("at6"));
}

TEST_P(StartPathTest, pathLongerThanAnyCallTakesIsGood) {
    const std::string name(255, 'n');
    m_dir.createChain("chain", name, 100,
                      [](int folder, int level) { createFileAt(folder, "at" + std::to_string(level), 0); });
    EXPECT_EQ(statusOf(chainPath(name, 99)), CatalogueStatus::Ok);
    EXPECT_THAT(namesAt(chainPath(name, 100)), ElementsAre("at100"));
    EXPECT_THAT(namesAt(chainPath(name, 100) + "//"), ElementsAre("at100"));
    EXPECT_EQ(statusOf(chainPath(name, 101)), CatalogueStatus::Gone);
    EXPECT_EQ(statusOf(chainPath(name, 100) + "/at100"), CatalogueStatus::Gone);
}

TEST_P(StartPathTest, pathOfMoreSlashesThanAnyCallTakesIsGood) {
    m_dir.createFile("a/file");
    EXPECT_THAT(namesAt(m_dir.path() + std::string(5000, '/') + "a" + std::string(5000, '/')),
                ElementsAre("file"));
}

TEST_P(StartPathTest, longStartPathWorksAgainAfterItsDescriptorWasClosed) {
    const std::string name(255, 'n');
    m_dir.createChain("chain", name, 40, [](int folder, int level) {
        if (level == 40 && ::mkdirat(folder, "sub", 0755) == 0)
            createFileAt(folder, "sub/file", 0);
    });
    limitDescriptors(0);
    const CatalogueRef sub = listPath(*m_catalogue, chainPath(name, 40))["sub"].reference;
    EXPECT_EQ(openCount(), 0U);
    EXPECT_THAT(listFolder(*m_catalogue, sub).names(), ElementsAre("file"));
}

} // namespace
} // namespace veltrano
