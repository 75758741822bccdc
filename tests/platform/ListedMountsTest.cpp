#include "platform/linux/ListedMounts.h"

#include "platform/MountFixtures.h"

#include <gmock/gmock.h>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> listedOf(const std::string& fixture) {
    return pathsOf(listedMounts(recordedTable(fixture)));
}

std::vector<std::string> networkOf(const std::string& fixture) {
    std::vector<std::string> paths;
    for (const MountEntry& mount : listedMounts(recordedTable(fixture)))
        if (isNetworkMount(mount))
            paths.push_back(mount.mountPoint);
    return paths;
}

TEST(ListedMounts, desktopListsItsDisksAndMediaAlone) {
    EXPECT_THAT(listedOf("ext4-desktop"),
                ElementsAre("/", "/boot/efi", "/home", "/media/mara/My Stick", "/media/mara/Photos 2019"));
}

TEST(ListedMounts, eachSubvolumeAndSnapshotIsListedOnce) {
    EXPECT_THAT(listedOf("btrfs-subvolumes"),
                ElementsAre("/", "/.snapshots", "/home", "/var", "/mnt/backup"));
}

TEST(ListedMounts, bindMountsAreNotListed) {
    EXPECT_THAT(listedOf("bind-mounts"), ElementsAre("/", "/pool"));
}

TEST(ListedMounts, rootGoesBeforeAMountThatShowsMoreOfItsDevice) {
    const auto mounts = listedMounts(parseMountTable("25 1 8:2 /deploy/1 / rw - ext4 /dev/sda2 rw\n"
                                                     "26 25 8:2 / /sysroot rw - ext4 /dev/sda2 rw\n"
                                                     "27 25 8:2 /var /var rw - ext4 /dev/sda2 rw\n"));
    EXPECT_THAT(pathsOf(mounts), ElementsAre("/"));
}

TEST(ListedMounts, layersOfContainersAreNotListed) {
    EXPECT_THAT(listedOf("container-host"), ElementsAre("/", "/var/lib/docker"));
}

TEST(ListedMounts, containerListsItsRootAndWhatIsMountedIntoIt) {
    EXPECT_THAT(listedOf("inside-container"), ElementsAre("/", "/etc/resolv.conf", "/work"));
}

TEST(ListedMounts, liveSystemListsItsRootAndItsMedium) {
    EXPECT_THAT(listedOf("live-system"), ElementsAre("/", "/run/live/medium"));
}

TEST(ListedMounts, networkMountsAreListedOnceEach) {
    EXPECT_THAT(listedOf("network"),
                ElementsAre("/", "/mnt/nfs", "/mnt/nfs3", "/mnt/share one", "/home/mara/ssh",
                            "/home/mara/cloud", "/net/server", "/mnt/other"));
}

TEST(ListedMounts, networkMountsAreToldFromDisks) {
    EXPECT_THAT(networkOf("network"), ElementsAre("/mnt/nfs", "/mnt/nfs3", "/mnt/share one", "/home/mara/ssh",
                                                  "/home/mara/cloud", "/net/server", "/mnt/other"));
    EXPECT_THAT(networkOf("ext4-desktop"), IsEmpty());
    EXPECT_THAT(networkOf("fuse"), IsEmpty());
    EXPECT_THAT(networkOf("pools"), ElementsAre("/mnt/plan9"));
}

TEST(ListedMounts, fuseIsListedWhereItHoldsStorage) {
    EXPECT_THAT(listedOf("fuse"), ElementsAre("/", "/mnt/windows", "/mnt/pool", "/home/mara/Private"));
}

TEST(ListedMounts, encryptedVolumesAreListedByTheirMappers) {
    EXPECT_THAT(listedOf("lvm-on-luks"), ElementsAre("/", "/boot", "/home"));
}

TEST(ListedMounts, imagesOfPackagesAreNotListedButDiskImagesAre) {
    EXPECT_THAT(listedOf("package-images"),
                ElementsAre("/", "/media/mara/Disk Image", "/media/mara/Installer", "/media/mara/live"));
}

TEST(ListedMounts, poolsAndSharesOfTheHostAreListed) {
    EXPECT_THAT(listedOf("pools"), ElementsAre("/", "/home", "/mnt/host", "/mnt/c", "/mnt/plan9", "/data"));
}

TEST(ListedMounts, mountsThatOthersCoverAreNotListed) {
    EXPECT_THAT(listedOf("covered"), ElementsAre("/", "/mnt", "/mnt/seen", "/srv"));
}

TEST(ListedMounts, oddLinesDoNoHarm) {
    EXPECT_THAT(listedOf("odd-lines"),
                ElementsAre("/", "/mnt/no-numbers", "/mnt/tab\tnewline\nbackslash\\end", "/mnt/half\\04",
                            "/mnt/many", "/mnt/huge", "/mnt/caf\xE9", "/mnt/last"));
}

TEST(ListedMounts, mountsThatStandOnEachOtherInACircleEndTheSearch) {
    const auto mounts = listedMounts(parseMountTable("1 2 8:1 / /a rw - ext4 /dev/sda1 rw\n"
                                                     "2 1 8:2 / /b rw - ext4 /dev/sda2 rw\n"));
    EXPECT_THAT(pathsOf(mounts), ElementsAre("/a", "/b"));
}

TEST(ListedMounts, memoryIsNoVolume) {
    EXPECT_THAT(listedMounts(parseMountTable("30 25 0:40 / /mnt/memory rw - tmpfs none rw\n")), IsEmpty());
}

// A host of containers: an overlay, a memory file system and a bind mount for each.
TEST(ListedMounts, fiveThousandMountsLeaveTheVolumes) {
    std::string text = "25 1 8:2 / / rw,relatime shared:1 - ext4 /dev/sda2 rw\n";
    for (int number = 0; number < 1'666; ++number) {
        const std::string name = std::to_string(number);
        const auto line = [&](int id, const std::string& device, const std::string& place,
                              const std::string& type) {
            text +=
                std::to_string(id) + " 25 " + device + " /srv/" + place + name + " rw - " + type + " rw\n";
        };
        line(1'000 + 3 * number, "0:" + std::to_string(100 + number) + " /", "merged", "overlay overlay");
        line(1'001 + 3 * number, "0:" + std::to_string(9'100 + number) + " /", "shm", "tmpfs shm");
        line(1'002 + 3 * number, "8:2 /volumes/" + name, "volume", "ext4 /dev/sda2");
    }
    text += "9999 25 8:3 / /home rw - ext4 /dev/sda3 rw\n";
    const auto table = parseMountTable(text);
    ASSERT_EQ(table.size(), 5'000u);
    EXPECT_THAT(pathsOf(listedMounts(table)), ElementsAre("/", "/home"));
}

} // namespace
} // namespace veltrano
