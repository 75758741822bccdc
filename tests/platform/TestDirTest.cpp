#include "support/TestDir.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace veltrano {
namespace {

TEST(TestDirTest, nothingIsLeftOfATreeDeeperThanAnyPath) {
    std::string path;
    {
        TestDir dir;
        path = dir.path();
        dir.createSymlink("link", "nowhere");
        dir.createFifo("fifo");
        dir.createChain("chain", std::string(255, 'n'), 100, [](int folder, int) {
            ASSERT_EQ(::mkdirat(folder, "side", 0700), 0);
            createFileAt(folder, "file", 1);
        });
        EXPECT_EQ(::access(path.c_str(), F_OK), 0);
    }
    EXPECT_NE(::access(path.c_str(), F_OK), 0);
}

TEST(TestDirTest, removingALinkLeavesItsTarget) {
    TestDir dir;
    dir.createFile("target/file");
    dir.createSymlink("link", "target");
    dir.remove("link");
    EXPECT_EQ(::access(dir.path("target/file").c_str(), F_OK), 0);
    EXPECT_NE(::access(dir.path("link").c_str(), F_OK), 0);
}

TEST(TestDirTest, twoFoldersOfTestsAreApart) {
    EXPECT_NE(TestDir().path(), TestDir().path());
}

TEST(TestDirTest, sumCountsEveryEntryOnce) {
    // |-- a
    // |   |-- b
    // |   `-- three files
    // `-- c
    //     `-- file
    TestDir dir;
    dir.createFolder("a/b");
    for (const char* name : {"a/one", "a/two", "a/three", "c/file"})
        dir.createFile(name, 4096);
    dir.createHardLink("a/again", "a/one");
    struct stat facts {};
    ASSERT_EQ(::stat(dir.path("c/file").c_str(), &facts), 0);
    const TreeSum sum = sumOfTree(dir.path());
    EXPECT_EQ(sum.files, 5U);
    EXPECT_EQ(sum.folders, 3U);
    EXPECT_EQ(sum.fileBytes, 5 * std::int64_t{facts.st_blocks} * 512);
    EXPECT_EQ(sum.denied, 0U);
}

} // namespace
} // namespace veltrano
