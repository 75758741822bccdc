#include "platform/linux/LinuxScanFacts.h"

#include <gmock/gmock.h>

#include <unistd.h>

namespace veltrano {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(LinuxScanFacts, readsMountPointsInTheOrderOfTheTable) {
    const auto points = mountPointsOf("22 28 0:21 / /proc rw - proc proc rw\n"
                                      "28 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n");
    EXPECT_THAT(points, ElementsAre("/proc", "/"));
}

TEST(LinuxScanFacts, mountPointsAreBytesWithTheirEscapesUndone) {
    EXPECT_THAT(mountPointsOf("40 28 8:17 / /media/My\\040Disk\\011\\012\\134 rw - vfat /dev/sdb1 rw\n"),
                ElementsAre("/media/My Disk\t\n\\"));
    EXPECT_THAT(mountPointsOf("40 28 8:17 / /media/caf\xE9 rw - vfat /dev/sdb1 rw"),
                ElementsAre("/media/caf\xE9"));
}

TEST(LinuxScanFacts, brokenEscapesAndLinesDoNoHarm) {
    EXPECT_THAT(mountPointsOf("1 2 3 / /a\\04 rw"), ElementsAre("/a\\04"));
    EXPECT_THAT(mountPointsOf("\n\nnonsense\n1 2 3\n"), IsEmpty());
    EXPECT_THAT(mountPointsOf(""), IsEmpty());
}

TEST(LinuxScanFacts, namesATrashFolderForTheHomeAndForEachMount) {
    EXPECT_THAT(trashFoldersOf("/home/mara/.local/share", {"/", "/media/disk"}, 1000),
                ElementsAre("/home/mara/.local/share/Trash", "/.Trash-1000", "/media/disk/.Trash-1000"));
    EXPECT_THAT(trashFoldersOf("", {}, 1000), IsEmpty());
}

TEST(LinuxScanFacts, theHomeHasNoSeparatorAtItsEnd) {
    const ScanFacts facts = linuxScanFacts();
    EXPECT_EQ(facts.usersFolderName, "home");
    EXPECT_TRUE(facts.homeDirectory.empty() || facts.homeDirectory == "/" ||
                facts.homeDirectory.back() != '/');
    EXPECT_THAT(facts.trashFolders, Contains("/.Trash-" + std::to_string(::getuid())));
}

} // namespace
} // namespace veltrano
