#include "platform/linux/SysfsDevices.h"

#include "support/TestDir.h"

#include <gmock/gmock.h>

#include <fstream>

namespace veltrano {
namespace {

constexpr const char* kPci = "pci0000:00/0000:00:17.0";

/// The kernel's device tree and udev's database of a machine, built in a folder.
class SysfsDevicesTest : public testing::Test {
protected:
    SysfsDevicesTest() {
        m_dir.createFolder("sys/devices");
        m_dir.createFolder("sys/dev/block");
        m_dir.createFolder("sys/class/block");
        m_dir.createFolder("dev/mapper");
    }

    void write(const std::string& relative, const std::string& text) {
        m_dir.createFile(relative);
        std::ofstream(m_dir.path(relative), std::ios::binary) << text << "\n";
    }

    /// Marks a folder below sys/devices as belonging to a subsystem.
    void setSubsystem(const std::string& folder, const std::string& name) {
        m_dir.createFolder("sys/bus/" + name);
        m_dir.createSymlink("sys/devices/" + folder + "/subsystem", m_dir.path("sys/bus/" + name));
    }

    /// A whole disk in the folder of its device, which `device` leads back to.
    void addDisk(const std::string& device, const std::string& name, const std::string& number) {
        const std::string folder = device + "/block/" + name;
        m_dir.createFolder("sys/devices/" + folder + "/slaves");
        m_dir.createSymlink("sys/devices/" + folder + "/device", m_dir.path("sys/devices/" + device));
        enter(folder, name, number);
        write("sys/devices/" + folder + "/removable", "0");
    }

    void addPartition(const std::string& disk, const std::string& name, const std::string& number) {
        enter(disk + "/" + name, name, number);
        write("sys/devices/" + disk + "/" + name + "/partition", "1");
    }

    void addVirtual(const std::string& name, const std::string& number) {
        m_dir.createFolder("sys/devices/virtual/block/" + name + "/slaves");
        enter("virtual/block/" + name, name, number);
        write("sys/devices/virtual/block/" + name + "/removable", "0");
    }

    void putOn(const std::string& upper, const std::string& lower) {
        m_dir.createSymlink("sys/devices/virtual/block/" + upper + "/slaves/" +
                                lower.substr(lower.rfind('/') + 1),
                            m_dir.path("sys/devices/" + lower));
    }

    /// What udev keeps of a device, lines without their "E:".
    void setUdev(const std::string& number, const std::vector<std::string>& properties) {
        std::string text = "I:1\n";
        for (const std::string& property : properties)
            text += "E:" + property + "\n";
        write("udev/b" + number, text);
    }

    void addSata(const std::string& name, const std::string& number) {
        m_dir.createFolder(std::string("sys/devices/") + m_sata);
        setSubsystem(m_sata, "scsi");
        addDisk(m_sata, name, number);
    }

    SysfsDevices::Description describe(const MountEntry& mount) const {
        return SysfsDevices({m_dir.path("sys"), m_dir.path("udev"), m_dir.path("dev")}, [](const auto&) {})
            .describe(mount);
    }

    SysfsDevices::Description describe(unsigned major, unsigned minor) const {
        return describe({.major = major,
                         .minor = minor,
                         .mountPoint = "/m",
                         .fileSystemType = "ext4",
                         .source = "/dev/x"});
    }

    TestDir m_dir;
    const std::string m_sata = std::string(kPci) + "/ata1/host0/target0:0:0/0:0:0:0";

private:
    void enter(const std::string& folder, const std::string& name, const std::string& number) {
        write("sys/devices/" + folder + "/dev", number);
        write("sys/devices/" + folder + "/ro", "0");
        m_dir.createSymlink("sys/dev/block/" + number, m_dir.path("sys/devices/" + folder));
        m_dir.createSymlink("sys/class/block/" + name, m_dir.path("sys/devices/" + folder));
    }
};

TEST_F(SysfsDevicesTest, partitionOfASataDiskIsDescribedByItsDisk) {
    addSata("sda", "8:0");
    addPartition(m_sata + "/block/sda", "sda1", "8:1");
    write("sys/devices/" + m_sata + "/model", "Disk Model 4711 ");
    write("sys/devices/" + m_sata + "/type", "0");
    const auto description = describe(8, 1);
    EXPECT_TRUE(description.facts.isDescribed);
    EXPECT_EQ(description.facts.bsdName, "sda1");
    EXPECT_EQ(description.facts.protocol, "SATA");
    EXPECT_EQ(description.facts.model, "Disk Model 4711");
    EXPECT_EQ(description.facts.mediaWritable, "1");
    EXPECT_EQ(description.facts.volumeKind, std::nullopt);
    EXPECT_EQ(description.facts.internal, 1);
    EXPECT_EQ(description.facts.mediaClass, MediaClass::FixedOrUnknown);
    EXPECT_FALSE(description.isRemovable);
    EXPECT_EQ(description.label, std::nullopt);
}

TEST_F(SysfsDevicesTest, udevKnowsTheWholeModelTheLabelAndTheKind) {
    addSata("sda", "8:0");
    addPartition(m_sata + "/block/sda", "sda1", "8:1");
    write("sys/devices/" + m_sata + "/model", "A Long Disk Mode");
    setUdev("8:0", {"ID_MODEL_ENC=A\\x20Long\\x20Disk\\x20Model"});
    setUdev("8:1", {"ID_FS_LABEL_ENC=My\\x20Disk", "ID_FS_TYPE=ntfs"});
    const auto description = describe(8, 1);
    EXPECT_EQ(description.facts.model, "A Long Disk Model");
    EXPECT_EQ(description.facts.volumeKind, "ntfs");
    EXPECT_EQ(description.label, "My Disk");
}

TEST_F(SysfsDevicesTest, usbStickIsRemovableAndOutside) {
    const std::string port = "pci0000:00/0000:00:14.0/usb2/2-1";
    const std::string device = port + "/2-1:1.0/host6/target6:0:0/6:0:0:0";
    m_dir.createFolder("sys/devices/" + device);
    setSubsystem(port, "usb");
    setSubsystem(device, "scsi");
    addDisk(device, "sdb", "8:16");
    write("sys/devices/" + device + "/block/sdb/removable", "1");
    const auto description = describe(8, 16);
    EXPECT_EQ(description.facts.bsdName, "sdb");
    EXPECT_EQ(description.facts.protocol, "USB");
    EXPECT_EQ(description.facts.internal, 0);
    EXPECT_TRUE(description.isRemovable);
}

TEST_F(SysfsDevicesTest, nvmeDiskIsOnPciExpress) {
    const std::string device = "pci0000:00/0000:00:1d.0/0000:02:00.0/nvme/nvme0";
    m_dir.createFolder("sys/devices/" + device);
    setSubsystem(device, "nvme");
    write("sys/devices/" + device + "/model", "Fast Disk");
    addDisk(device, "nvme0n1", "259:0");
    addPartition(device + "/block/nvme0n1", "nvme0n1p2", "259:2");
    const auto facts = describe(259, 2).facts;
    EXPECT_EQ(facts.protocol, "PCI-Express");
    EXPECT_EQ(facts.model, "Fast Disk");
    EXPECT_EQ(facts.bsdName, "nvme0n1p2");
    EXPECT_EQ(facts.internal, 1);
}

TEST_F(SysfsDevicesTest, nvmeDiskOfSeveralPathsIsOnPciExpress) {
    const std::string device = "virtual/nvme-subsystem/nvme-subsys0";
    m_dir.createFolder("sys/devices/" + device);
    setSubsystem(device, "nvme-subsystem");
    addDisk(device, "nvme0n1", "259:0");
    EXPECT_EQ(describe(259, 0).facts.protocol, "PCI-Express");
}

TEST_F(SysfsDevicesTest, diskBehindAPortThatCallsItselfRemovableIsOutside) {
    const std::string device = "pci0000:00/0000:00:1d.0/nvme/nvme0";
    m_dir.createFolder("sys/devices/" + device);
    setSubsystem(device, "nvme");
    addDisk(device, "nvme0n1", "259:0");
    write("sys/devices/pci0000:00/0000:00:1d.0/removable", "removable");
    EXPECT_EQ(describe(259, 0).facts.internal, 0);
}

TEST_F(SysfsDevicesTest, memoryCardHasANameAndIsOutside) {
    const std::string device = "platform/soc/mmc_host/mmc0/mmc0:aaaa";
    m_dir.createFolder("sys/devices/" + device);
    setSubsystem(device, "mmc");
    write("sys/devices/" + device + "/name", "SC64G");
    write("sys/devices/" + device + "/type", "SD");
    addDisk(device, "mmcblk0", "179:0");
    const auto facts = describe(179, 0).facts;
    EXPECT_EQ(facts.protocol, "Secure Digital");
    EXPECT_EQ(facts.model, "SC64G");
    EXPECT_EQ(facts.internal, 0);
}

TEST_F(SysfsDevicesTest, solderedMemoryIsInside) {
    const std::string device = "platform/soc/mmc_host/mmc1/mmc1:0001";
    m_dir.createFolder("sys/devices/" + device);
    setSubsystem(device, "mmc");
    write("sys/devices/" + device + "/type", "MMC");
    addDisk(device, "mmcblk1", "179:8");
    EXPECT_EQ(describe(179, 8).facts.internal, 1);
}

TEST_F(SysfsDevicesTest, virtualDiskIsVirtio) {
    const std::string device = "pci0000:00/0000:00:02.0/virtio1";
    m_dir.createFolder("sys/devices/" + device);
    setSubsystem(device, "virtio");
    addDisk(device, "vda", "254:0");
    const auto facts = describe(254, 0).facts;
    EXPECT_EQ(facts.protocol, "Virtio");
    EXPECT_EQ(facts.model, std::nullopt);
}

TEST_F(SysfsDevicesTest, loopDeviceIsAVirtualInterface) {
    addVirtual("loop3", "7:3");
    write("sys/devices/virtual/block/loop3/loop/backing_file", "/home/mara/disk.img");
    const auto facts = describe(7, 3).facts;
    EXPECT_EQ(facts.protocol, "Virtual Interface");
    EXPECT_EQ(facts.internal, 0);
    EXPECT_EQ(facts.bsdName, "loop3");
}

TEST_F(SysfsDevicesTest, volumeOnAnEncryptedDiskHasTheProtocolOfTheDisk) {
    addSata("sda", "8:0");
    addPartition(m_sata + "/block/sda", "sda3", "8:3");
    write("sys/devices/" + m_sata + "/model", "Disk");
    addVirtual("dm-0", "253:0");
    addVirtual("dm-1", "253:1");
    putOn("dm-0", m_sata + "/block/sda/sda3");
    putOn("dm-1", "virtual/block/dm-0");
    setUdev("253:1", {"ID_FS_LABEL_ENC=home"});
    const auto description = describe(253, 1);
    EXPECT_EQ(description.facts.bsdName, "dm-1");
    EXPECT_EQ(description.facts.protocol, "SATA");
    EXPECT_EQ(description.facts.model, "Disk");
    EXPECT_EQ(description.label, "home");
}

TEST_F(SysfsDevicesTest, mapperOnAFileIsAVirtualInterface) {
    addVirtual("loop0", "7:0");
    addVirtual("dm-0", "253:0");
    putOn("dm-0", "virtual/block/loop0");
    EXPECT_EQ(describe(253, 0).facts.protocol, "Virtual Interface");
}

TEST_F(SysfsDevicesTest, devicesThatLieOnEachOtherInACircleEndTheSearch) {
    addVirtual("dm-0", "253:0");
    addVirtual("dm-1", "253:1");
    putOn("dm-0", "virtual/block/dm-1");
    putOn("dm-1", "virtual/block/dm-0");
    EXPECT_EQ(describe(253, 0).facts.protocol, "Virtual Interface");
}

TEST_F(SysfsDevicesTest, subvolumeIsFoundByItsSource) {
    addSata("sda", "8:0");
    addPartition(m_sata + "/block/sda", "sda2", "8:2");
    const MountEntry mount{.minor = 31, .mountPoint = "/", .fileSystemType = "btrfs", .source = "/dev/sda2"};
    EXPECT_EQ(describe(mount).facts.protocol, "SATA");
    EXPECT_EQ(describe(mount).facts.bsdName, "sda2");
}

TEST_F(SysfsDevicesTest, sourceThatIsALinkIsFollowed) {
    addVirtual("loop0", "7:0");
    addVirtual("dm-0", "253:0");
    putOn("dm-0", "virtual/block/loop0");
    m_dir.createFile("dev/dm-0");
    m_dir.createSymlink("dev/mapper/vg-home", "../dm-0");
    const MountEntry mount{
        .minor = 31, .mountPoint = "/", .fileSystemType = "btrfs", .source = "/dev/mapper/vg-home"};
    EXPECT_EQ(describe(mount).facts.bsdName, "dm-0");
}

TEST_F(SysfsDevicesTest, compactDiscIsToldByUdev) {
    addSata("sr0", "11:0");
    write("sys/devices/" + m_sata + "/type", "5");
    write("sys/devices/" + m_sata + "/block/sr0/removable", "1");
    setUdev("11:0", {"ID_CDROM=1", "ID_CDROM_DVD=1", "ID_CDROM_MEDIA=1", "ID_CDROM_MEDIA_CD_RW=1"});
    EXPECT_EQ(describe(11, 0).facts.mediaClass, MediaClass::CD);
    EXPECT_EQ(describe(11, 0).facts.protocol, "SATA");
    EXPECT_TRUE(describe(11, 0).isRemovable);
}

TEST_F(SysfsDevicesTest, digitalVersatileDiscIsToldByUdev) {
    addSata("sr0", "11:0");
    write("sys/devices/" + m_sata + "/type", "5");
    for (const char* medium :
         {"ID_CDROM_MEDIA_DVD=1", "ID_CDROM_MEDIA_DVD_PLUS_R=1", "ID_CDROM_MEDIA_BD=1"}) {
        setUdev("11:0", {"ID_CDROM=1", "ID_CDROM_CD=1", medium});
        EXPECT_EQ(describe(11, 0).facts.mediaClass, MediaClass::DVD) << medium;
        m_dir.remove("udev/b11:0");
    }
}

TEST_F(SysfsDevicesTest, discIsToldByItsSizeWithoutUdev) {
    addSata("sr0", "11:0");
    write("sys/devices/" + m_sata + "/type", "5");
    const std::string size = "sys/devices/" + m_sata + "/block/sr0/size";
    EXPECT_EQ(describe(11, 0).facts.mediaClass, MediaClass::FixedOrUnknown);
    write(size, "1433600");
    EXPECT_EQ(describe(11, 0).facts.mediaClass, MediaClass::CD);
    m_dir.remove(size);
    write(size, "9180416");
    EXPECT_EQ(describe(11, 0).facts.mediaClass, MediaClass::DVD);
}

TEST_F(SysfsDevicesTest, otherScsiDiskIsScsi) {
    const std::string device = std::string(kPci) + "/host2/target2:0:0/2:0:0:0";
    m_dir.createFolder("sys/devices/" + device);
    setSubsystem(device, "scsi");
    addDisk(device, "sdc", "8:32");
    EXPECT_EQ(describe(8, 32).facts.protocol, "SCSI");
}

TEST_F(SysfsDevicesTest, readOnlyMediumIsNotWritable) {
    addSata("sda", "8:0");
    m_dir.remove("sys/devices/" + m_sata + "/block/sda/ro");
    EXPECT_EQ(describe(8, 0).facts.mediaWritable, std::nullopt);
    write("sys/devices/" + m_sata + "/block/sda/ro", "1");
    EXPECT_EQ(describe(8, 0).facts.mediaWritable, "0");
}

// A folder in the place of a file fails to be read whoever reads it.
TEST_F(SysfsDevicesTest, factThatCannotBeReadIsNotAvailable) {
    addSata("sda", "8:0");
    m_dir.remove("sys/devices/" + m_sata + "/block/sda/ro");
    m_dir.createFolder("sys/devices/" + m_sata + "/block/sda/ro");
    m_dir.createFolder("sys/devices/" + m_sata + "/model");
    EXPECT_EQ(describe(8, 0).facts.model, "Not available");
    EXPECT_EQ(describe(8, 0).facts.mediaWritable, "Not available");
}

TEST_F(SysfsDevicesTest, eachFailureIsReportedOnce) {
    addSata("sda", "8:0");
    const std::string disk = "sys/devices/" + m_sata + "/block/sda";
    m_dir.remove(disk + "/ro");
    m_dir.createFolder(disk + "/ro");
    m_dir.createFolder("sys/devices/" + m_sata + "/model");
    m_dir.createSymlink(disk + "/partition", "partition"); // leads nowhere but to itself
    std::vector<std::string> lines;
    const SysfsDevices devices({m_dir.path("sys"), m_dir.path("udev"), m_dir.path("dev")},
                               [&](const std::string& line) { lines.push_back(line); });
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(devices.describe({.major = 8, .mountPoint = "/m", .source = "/dev/sda"}).facts.bsdName,
                  "sda");
        EXPECT_FALSE(devices.describe({.major = 8, .minor = 99, .mountPoint = "/n", .source = "/dev/x"})
                         .facts.isDescribed);
    }
    EXPECT_THAT(lines, testing::ElementsAre("sda: Could not retrieve Whole property",
                                            "sda: Could not retrieve device/model property",
                                            "sda: Could not retrieve ro property",
                                            "Device 8:99: Could not find it in the device tree"));
}

TEST_F(SysfsDevicesTest, factThatIsMissingIsNoFailure) {
    addSata("sda", "8:0");
    m_dir.remove("sys/devices/" + m_sata + "/block/sda/ro");
    const MountEntry pool{.minor = 40, .mountPoint = "/p", .fileSystemType = "zfs", .source = "pool"};
    const MountEntry share{.minor = 50, .mountPoint = "/n", .fileSystemType = "nfs4", .source = "server:/n"};
    std::vector<std::string> lines;
    const SysfsDevices devices({m_dir.path("sys"), m_dir.path("udev"), m_dir.path("dev")},
                               [&](const std::string& line) { lines.push_back(line); });
    EXPECT_EQ(devices.describe({.major = 8, .mountPoint = "/m"}).facts.model, std::nullopt);
    EXPECT_TRUE(devices.describe(pool).facts.protocol);
    EXPECT_FALSE(devices.describe(share).facts.protocol);
    EXPECT_THAT(lines, testing::IsEmpty());
}

TEST_F(SysfsDevicesTest, missingTreeOfDevicesIsOneLineOnTheErrorStream) {
    const SysfsDevices devices({m_dir.path("none"), m_dir.path("none"), m_dir.path("none")});
    testing::internal::CaptureStderr();
    for (const unsigned minor : {1U, 2U})
        EXPECT_FALSE(devices.describe({.major = 8, .minor = minor, .mountPoint = "/m"}).facts.isDescribed);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Could not find the device tree\n");
}

TEST_F(SysfsDevicesTest, unknownDeviceStillHasAProtocol) {
    const auto facts = describe(8, 99).facts;
    EXPECT_FALSE(facts.isDescribed);
    EXPECT_TRUE(facts.protocol.has_value());
    EXPECT_EQ(facts.bsdName, "x");
    EXPECT_EQ(facts.internal, std::nullopt);
}

TEST_F(SysfsDevicesTest, localFileSystemWithoutADeviceHasAProtocol) {
    for (const char* type : {"zfs", "overlay", "fuse.mergerfs"}) {
        const MountEntry mount{.minor = 40, .mountPoint = "/", .fileSystemType = type, .source = "pool"};
        EXPECT_TRUE(describe(mount).facts.protocol.has_value()) << type;
        EXPECT_EQ(describe(mount).facts.bsdName, "");
    }
}

TEST_F(SysfsDevicesTest, networkMountHasNoFactsAtAll) {
    const MountEntry mount{.minor = 50, .mountPoint = "/n", .fileSystemType = "nfs4", .source = "server:/n"};
    EXPECT_EQ(describe(mount).facts, DeviceFacts());
    EXPECT_FALSE(describe(mount).isRemovable);
}

TEST_F(SysfsDevicesTest, machineWithoutATreeOfDevicesKnowsNothing) {
    const SysfsDevices devices({m_dir.path("none"), m_dir.path("none"), m_dir.path("none")});
    EXPECT_FALSE(devices.describe({.major = 8, .mountPoint = "/", .source = "/dev/sda"}).facts.isDescribed);
    EXPECT_FALSE(devices.describe({.mountPoint = "/", .source = "/dev/.."}).facts.isDescribed);
}

} // namespace
} // namespace veltrano
