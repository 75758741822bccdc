#pragma once

#include "platform/DeviceFacts.h"
#include "platform/linux/MountTable.h"
#include "platform/linux/UdevRecord.h"

#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <string>

namespace veltrano {

/// What is known of the block device under a mount, from the kernel's device tree and udev's database. Asks
/// no daemon and touches no medium. What can't be found out is reported, once for each device and fact. Any
/// thread.
class SysfsDevices {
public:
    /// Takes a line without its end. On the thread that asks.
    using Report = std::function<void(const std::string& line)>;

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
    /// Without a report the lines go to the error stream.
    explicit SysfsDevices(Places places, Report report = nullptr);
    SysfsDevices(const SysfsDevices&) = delete;
    SysfsDevices& operator=(const SysfsDevices&) = delete;

    /// Facts that are missing stay so; one that is there but can't be read is kNotAvailable. Every mount but
    /// one of the network has a protocol.
    [[nodiscard]] Description describe(const MountEntry& mount) const;

private:
    std::string folderOf(const MountEntry& mount) const;
    std::string folderOfSource(const std::string& source) const;
    std::string wholeDisk(const std::string& folder) const;
    std::string firstPhysical(std::string disk) const;
    std::optional<std::string> getintrnlProp(const std::string& folder, const std::string& forkey) const;
    std::optional<std::string> mediaWritable(const std::string& folder) const;
    std::optional<std::string> modelOf(const std::string& disk, const UdevRecord& record) const;
    UdevRecord recordOf(const std::string& folder) const;
    std::string protocolOf(const std::string& disk) const;
    bool isOutside(const std::string& disk, const std::string& protocol) const;
    void reportMissing(const MountEntry& mount) const;
    void reportFailure(const std::string& line) const;

    // Constant after construction.
    const Places m_places;
    const Report m_report;
    const std::string m_devicesRoot; ///< Where the walk towards the parents ends.

    mutable std::mutex m_mutex;
    mutable std::set<std::string> m_reported; ///< Guarded by the mutex.
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
