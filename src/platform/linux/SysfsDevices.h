#pragma once

#include "platform/DeviceFacts.h"
#include "platform/linux/MountTable.h"
#include "platform/linux/UdevRecord.h"

#include <optional>
#include <string>

namespace veltrano {

/// What is known of the block device under a mount, from the kernel's device tree and udev's database. Asks
/// no daemon and touches no medium. Any thread.
class SysfsDevices {
public:
    struct Places {
        std::string sysfs = "/sys";
        std::string udev = "/run/udev/data";
        std::string devices =
            "/dev"; ///< Looked at only for names that are links, as those of logical volumes.
    };

    /// What the mount says of its device and of the volume on it.
    struct Description {
        DeviceFacts facts;
        bool isRemovable = false;
        std::optional<std::string> label; ///< Of the file system.
    };

    SysfsDevices() : SysfsDevices(Places()) {}
    explicit SysfsDevices(Places places);

    /// Facts that are missing stay so; one that is there but can't be read is kNotAvailable. Every mount but
    /// one of the network has a protocol.
    [[nodiscard]] Description describe(const MountEntry& mount) const;

private:
    std::string folderOf(const MountEntry& mount) const;
    std::string folderOfSource(const std::string& source) const;
    std::string firstPhysical(std::string disk) const;
    UdevRecord recordOf(const std::string& folder) const;
    std::string protocolOf(const std::string& disk) const;
    bool isOutside(const std::string& disk, const std::string& protocol) const;

    const Places m_places;
    std::string m_devicesRoot; ///< Where the walk towards the parents ends.
};

// What a device is connected by, in the words that the sidebar groups by.
inline constexpr const char* kProtocolSata = "SATA";
inline constexpr const char* kProtocolUsb = "USB";
inline constexpr const char* kProtocolPciExpress = "PCI-Express";
inline constexpr const char* kProtocolSecureDigital = "Secure Digital";
inline constexpr const char* kProtocolVirtualInterface = "Virtual Interface"; ///< A file that acts as a disk.
inline constexpr const char* kProtocolVirtio = "Virtio";
inline constexpr const char* kProtocolScsi = "SCSI";
/// A device that the kernel connects in some other way.
inline constexpr const char* kProtocolBlockDevice = "Block Device";
/// Local storage without a block device of its own.
inline constexpr const char* kProtocolStoragePool = "Storage Pool";

} // namespace veltrano
