#include "scan/DiskForms.h"
#include "scan/ScanRun.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#ifdef __linux__
#include <sys/mount.h>
#endif

namespace veltrano {
namespace {

using test::DiskForm;
using test::itemAt;
using test::realCatalogue;
using test::ScanRun;
using test::sumOnDisk;
using test::TemporaryFolder;
using test::writeFile;

/// What a real disk may hold in a reader's way.
class HostileDisk : public testing::TestWithParam<DiskForm> {
protected:
    std::string path(const std::string& relative) const { return folder.path() + "/" + relative; }

    FolderSystemItem& scan(const std::string& start) {
        root = run.scan(start);
        return *root;
    }
    FolderSystemItem& scan() { return scan(folder.path()); }

    /// Scans as a user whom permissions stop, also where the tests run as one whom they don't.
    void scanUnprivileged(const std::string& start) {
        constexpr uid_t kNobody = 65534;
        const uid_t self = ::geteuid();
        ASSERT_EQ(0, ::seteuid(self == 0 ? kNobody : self));
        scan(start);
        ASSERT_EQ(0, ::seteuid(self));
    }

    TemporaryFolder folder;
    ScanRun run{realCatalogue(GetParam())};
    std::shared_ptr<FolderSystemItem> root;
};

TEST_P(HostileDisk, danglingLinkAsStartFindsNothing) {
    std::filesystem::create_symlink("nowhere", path("link"));
    EXPECT_EQ(0u, scan(path("link")).numberOfChildren());
}

TEST_P(HostileDisk, linkToAFolderAsStartIsFollowed) {
    std::filesystem::create_directory(path("real"));
    const std::int64_t size = writeFile(path("real/f"), 4096);
    std::filesystem::create_symlink("real", path("link"));
    EXPECT_EQ(size, scan(path("link")).gettotalsize());
}

TEST_P(HostileDisk, unreadableStartFinishesWithAnEmptyTree) {
    std::filesystem::create_directory(path("shut"));
    writeFile(path("shut/f"), 4096);
    ASSERT_EQ(0, ::chmod(path("shut").c_str(), 0));
    ASSERT_EQ(0, ::chmod(folder.path().c_str(), 0755));
    scanUnprivileged(path("shut"));
    ::chmod(path("shut").c_str(), 0755);
    EXPECT_EQ(1, run.finished);
    EXPECT_EQ(0, root->gettotalsize());
}

TEST_P(HostileDisk, unreadableFolderLosesNothingElse) {
    std::filesystem::create_directories(path("shut"));
    std::filesystem::create_directories(path("open"));
    writeFile(path("shut/f"), 4096);
    const std::int64_t size = writeFile(path("open/f"), 4096);
    ASSERT_EQ(0, ::chmod(path("shut").c_str(), 0));
    ASSERT_EQ(0, ::chmod(folder.path().c_str(), 0755));
    scanUnprivileged(folder.path());
    ::chmod(path("shut").c_str(), 0755);
    EXPECT_EQ(size, root->gettotalsize());
    EXPECT_NE(nullptr, itemAt(*root, "shut"));
}

TEST_P(HostileDisk, linkLoopsAreNotFollowed) {
    std::filesystem::create_directory(path("a"));
    std::filesystem::create_symlink("..", path("a/up"));
    std::filesystem::create_symlink("self", path("self"));
    std::filesystem::create_symlink(folder.path(), path("a/root"));
    writeFile(path("a/f"), 4096);
    scan();
    EXPECT_EQ(sumOnDisk(folder.path()), root->gettotalsize());
    EXPECT_EQ(3u, itemAt(*root, "a")->numberOfChildren());
    EXPECT_FALSE(itemAt(*root, "a/up")->isDir());
}

TEST_P(HostileDisk, pipesSocketsAndDevicesAreFilesThatAreNotOpened) {
    ASSERT_EQ(0, ::mkfifo(path("pipe").c_str(), 0600));
    const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s", path("socket").c_str());
    ASSERT_EQ(0, ::bind(server, reinterpret_cast<sockaddr*>(&address), sizeof address));
    const bool device = ::mknod(path("null").c_str(), S_IFCHR | 0600, makedev(1, 3)) == 0;
    scan();
    ::close(server);
    EXPECT_EQ(device ? 3u : 2u, root->numberOfChildren());
    EXPECT_EQ(0, root->gettotalsize());
}

TEST_P(HostileDisk, eachHardLinkCounts) {
    const std::int64_t size = writeFile(path("one"), 8192);
    std::filesystem::create_hard_link(path("one"), path("two"));
    EXPECT_EQ(2 * size, scan().gettotalsize());
}

TEST_P(HostileDisk, sparseFileWeighsWhatItTakes) {
    const int file = ::open(path("sparse").c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    ASSERT_EQ(0, ::ftruncate(file, std::int64_t{1} << 40));
    ::close(file);
    EXPECT_LT(scan().gettotalsize(), 1'000'000);
}

TEST_P(HostileDisk, chainFiveThousandDeepIsReadToItsEnd) {
    constexpr int kDepth = 5000;
    int at = ::open(folder.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int level = 0; level < kDepth; ++level) {
        ASSERT_EQ(0, ::mkdirat(at, "folder", 0700));
        const int next = ::openat(at, "folder", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ASSERT_GE(next, 0);
        ::close(at);
        at = next;
    }
    const int file = ::openat(at, "deep", O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    ASSERT_EQ(0, ::posix_fallocate(file, 0, 4096));
    struct stat facts {};
    ASSERT_EQ(0, ::fstat(file, &facts));
    ::close(file);
    ::close(at);

    scan();
    EXPECT_EQ(facts.st_blocks * 512, root->gettotalsize());
    EXPECT_EQ(kDepth + 1, root->calcChildDepth());
    const FileSystemItem* item = root.get();
    while (item->numberOfChildren() == 1)
        item = item->childAtIndex(0);
    EXPECT_EQ("deep", item->relativePath());
    EXPECT_GT(item->getFullPath().size(), 5u * 4096u);

    // Each turn takes the second folder out of the first, so that no path grows long.
    for (int level = 1; level < kDepth; ++level) {
        ASSERT_EQ(0, ::rename(path("folder/folder").c_str(), path("rest").c_str()));
        ASSERT_EQ(0, ::rmdir(path("folder").c_str()));
        ASSERT_EQ(0, ::rename(path("rest").c_str(), path("folder").c_str()));
    }
}

TEST_P(HostileDisk, startPathLongerThanAnyTextOfATreeIsScannedAtItsEnd) {
    constexpr int kDepth = 400;
    const std::string name(200, 'd');
    TestDir deep;
    deep.createChain("", name, kDepth, [](int descriptor, int level) {
        createFileAt(descriptor, level == kDepth ? "f" : "not this", 1);
    });
    std::string start = deep.path();
    for (int level = 0; level < kDepth; ++level)
        start += "/" + name;
    ASSERT_GT(start.size(), TreeArena::kLargestPiece);
    scan(start);
    ASSERT_EQ(1u, root->numberOfChildren());
    EXPECT_EQ("f", root->childAtIndex(0)->relativePath());
}

TEST_P(HostileDisk, treeThatChangesWhileItIsReadLosesNoFileThatStays) {
    std::int64_t staying = 0;
    for (int dir = 0; dir < 40; ++dir) {
        const std::string name = "s" + std::to_string(dir);
        std::filesystem::create_directories(path(name));
        for (int file = 0; file < 20; ++file)
            staying += writeFile(path(name + "/f" + std::to_string(file)), 4096);
    }
    std::atomic<bool> going = true;
    std::thread meddler([&] {
        for (int round = 0; going; ++round) {
            const std::string name = path("v" + std::to_string(round % 7));
            std::filesystem::create_directories(name + "/a/b");
            std::FILE* const made = std::fopen((name + "/a/b/f").c_str(), "w");
            if (made)
                std::fclose(made);
            std::error_code ignored;
            std::filesystem::remove_all(name, ignored);
        }
    });
    for (int round = 0; round < 10; ++round) {
        scan();
        EXPECT_EQ(staying, root->gettotalsize());
        EXPECT_EQ(root->gettotalsize(), test::recountByLinks(*root));
    }
    going = false;
    meddler.join();
}

TEST_P(HostileDisk, treeThatIsDeletedWhileItIsReadEndsCalmly) {
    for (int round = 0; round < 5; ++round) {
        for (int dir = 0; dir < 60; ++dir) {
            std::filesystem::create_directories(path("d/x" + std::to_string(dir) + "/y/z"));
            writeFile(path("d/x" + std::to_string(dir) + "/y/z/f"), 0);
        }
        run.start(folder.path());
        std::thread deleter([&] {
            std::error_code ignored;
            std::filesystem::remove_all(path("d"), ignored);
        });
        EXPECT_TRUE(run.waitFor([&] { return run.finished == round + 1; }));
        deleter.join();
        EXPECT_EQ(0, run.root->gettotalsize());
    }
}

TEST_P(HostileDisk, sixtyFourDescriptorsAreEnough) {
    for (int wide = 0; wide < 30; ++wide) {
        std::string name = "w" + std::to_string(wide);
        for (int level = 0; level < 20; ++level)
            name += "/d" + std::to_string(level % 3);
        std::filesystem::create_directories(path(name));
        writeFile(path(name + "/f"), 4096);
    }
    rlimit before{};
    ASSERT_EQ(0, ::getrlimit(RLIMIT_NOFILE, &before));
    const rlimit low{64, before.rlim_max};
    ASSERT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &low));
    ScanRun tight(realCatalogue(GetParam()));
    root = tight.scan(folder.path());
    ASSERT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &before));
    EXPECT_EQ(sumOnDisk(folder.path()), root->gettotalsize());
}

#ifdef __linux__
TEST_P(HostileDisk, mountInsideIsNotEntered) {
    std::filesystem::create_directories(path("mounted"));
    const std::int64_t size = writeFile(path("f"), 4096);
    if (::mount("none", path("mounted").c_str(), "tmpfs", 0, "size=1m") != 0)
        GTEST_SKIP() << "mounting is not allowed here";
    writeFile(path("mounted/g"), 8192);
    scan();
    ::umount(path("mounted").c_str());
    EXPECT_EQ(size, root->gettotalsize());
    EXPECT_EQ(nullptr, itemAt(*root, "mounted"));
}
#endif

TEST_P(HostileDisk, stopAndStartAgainAndAgain) {
    for (int dir = 0; dir < 100; ++dir) {
        std::filesystem::create_directories(path("d" + std::to_string(dir) + "/e"));
        writeFile(path("d" + std::to_string(dir) + "/e/f"), 4096);
    }
    for (int round = 0; round < 20; ++round) {
        run.start(folder.path());
        run.loop.advance(0);
        run.model->StopWalking();
    }
    scan();
    EXPECT_EQ(sumOnDisk(folder.path()), root->gettotalsize());
    EXPECT_TRUE(run.waitFor([&] { return run.cancelled == 20; }));
}

TEST_P(HostileDisk, everyDescriptorIsGivenBack) {
    std::filesystem::create_directories(path("a/b/c/d"));
    writeFile(path("a/b/c/d/f"), 4096);
    auto openDescriptors = [] {
        int count = 0;
        for (int descriptor = 0; descriptor < 1024; ++descriptor)
            count += ::fcntl(descriptor, F_GETFD) >= 0 ? 1 : 0;
        return count;
    };
    const int before = openDescriptors();
    auto catalogue = realCatalogue(GetParam());
    {
        ScanRun own(catalogue);
        own.scan(folder.path());
    }
    while (catalogue.use_count() > 1)
        std::this_thread::yield();
    catalogue.reset();
    EXPECT_EQ(before, openDescriptors());
}

INSTANTIATE_TEST_SUITE_P(Forms, HostileDisk, test::realDiskForms(), test::diskFormName);

} // namespace
} // namespace veltrano
