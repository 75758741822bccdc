#include "platform/linux/MountTable.h"

#include "platform/MountFixtures.h"
#include "support/TestDir.h"

#include <gmock/gmock.h>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(MountTable, lineTellsEveryField) {
    const auto table = parseMountTable(
        "61 29 253:3 /sub /home rw,relatime shared:31 master:2 - btrfs /dev/dm-3 rw,subvol=/sub\n");
    const MountEntry expected{.id = 61,
                              .parent = 29,
                              .major = 253,
                              .minor = 3,
                              .root = "/sub",
                              .mountPoint = "/home",
                              .options = "rw,relatime",
                              .fileSystemType = "btrfs",
                              .source = "/dev/dm-3",
                              .superOptions = "rw,subvol=/sub"};
    EXPECT_THAT(table, ElementsAre(expected));
}

TEST(MountTable, pathsAreBytesWithTheirEscapesUndone) {
    EXPECT_THAT(pathsOf(recordedTable("odd-lines")),
                ElementsAre("/", "/mnt/no-numbers", "/mnt/no-dash", "/mnt/tab\tnewline\nbackslash\\end",
                            "/mnt/half\\04", "/mnt/many", "/mnt/huge", "/mnt/caf\xE9", "/mnt/last"));
}

TEST(MountTable, escapeThatStandsForNoByteOfAPathStaysAsItIs) {
    const auto table = parseMountTable("1 0 8:1 / /mnt/nul\\000end rw - ext4 /dev/sda1 rw\n"
                                       "2 0 8:2 / /mnt/large\\440 rw - ext4 /dev/sda2 rw\n"
                                       "3 0 8:3 / /mnt/last\\377 rw - ext4 /dev/sda3 rw\n");
    EXPECT_THAT(pathsOf(table), ElementsAre("/mnt/nul\\000end", "/mnt/large\\440", "/mnt/last\xFF"));
}

TEST(MountTable, sourcesAreUnescapedToo) {
    const auto table = recordedTable("network");
    EXPECT_EQ(table[4].mountPoint, "/mnt/share one");
    EXPECT_EQ(table[4].source, "//nas/share one");
}

TEST(MountTable, numbersThatAreNoneAreZero) {
    const auto table = recordedTable("odd-lines");
    EXPECT_EQ(table[1].id, 0);
    EXPECT_EQ(table[1].major, 0u);
    EXPECT_EQ(table[6].major, 0u);
    EXPECT_EQ(table[6].minor, 1u);
}

TEST(MountTable, lineWithoutADashHasNoFileSystem) {
    EXPECT_EQ(recordedTable("odd-lines")[2].fileSystemType, "");
}

TEST(MountTable, emptyTableHasNoMounts) {
    EXPECT_THAT(parseMountTable(""), IsEmpty());
    EXPECT_THAT(parseMountTable("\n\n"), IsEmpty());
}

TEST(MountTable, optionIsFoundWholeOnly) {
    EXPECT_TRUE(hasOption("rw,ro", "ro"));
    EXPECT_TRUE(hasOption("ro", "ro"));
    EXPECT_FALSE(hasOption("rw,errors=remount-ro", "ro"));
    EXPECT_FALSE(hasOption("rox,xro", "ro"));
    EXPECT_FALSE(hasOption("", "ro"));
}

TEST(MountTable, tableThatIsNotThereIsEmpty) {
    const TestDir dir;
    EXPECT_EQ(readMountTable(dir.path("none")), "");
    EXPECT_EQ(readMountTable(dir.path()), "");
}

TEST(MountTable, tableOfThisProcessHasARoot) {
    EXPECT_THAT(pathsOf(parseMountTable(readMountTable("/proc/self/mountinfo"))), testing::Contains("/"));
}

} // namespace
} // namespace veltrano
