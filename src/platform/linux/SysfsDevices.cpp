#include "platform/linux/SysfsDevices.h"

#include "platform/linux/ListedMounts.h"
#include "platform/linux/SmallFile.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

namespace veltrano {

namespace {

constexpr const char* kOpticalDrive = "5"; ///< The SCSI type of CD and DVD drives.

struct Free {
    void operator()(char* text) const { std::free(text); }
};

/// The path with all links followed; empty if nothing is there.
std::string resolved(const std::string& path) {
    const std::unique_ptr<char, Free> real(::realpath(path.c_str(), nullptr));
    return real ? real.get() : "";
}

std::string lastComponent(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

std::string parentOf(const std::string& path) {
    const auto separator = path.rfind('/');
    return separator == std::string::npos ? std::string() : path.substr(0, separator);
}

/// The names in a folder, sorted; hidden ones left out.
std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(folder.c_str()), ::closedir);
    while (const dirent* record = stream ? ::readdir(stream.get()) : nullptr)
        if (record->d_name[0] != '.')
            names.emplace_back(record->d_name);
    std::sort(names.begin(), names.end());
    return names;
}

MediaClass mediaClassOf(const std::string& disk, const UdevRecord& record) {
    if (readValue(disk + "/device/type").text != kOpticalDrive && !record.hasFlag("ID_CDROM"))
        return MediaClass::FixedOrUnknown;
    // Discs of later kinds belong beside the DVDs.
    for (const char* kind : {"ID_CDROM_MEDIA_DVD", "ID_CDROM_MEDIA_BD", "ID_CDROM_MEDIA_HDDVD"})
        if (record.hasFlag(kind))
            return MediaClass::DVD;
    if (record.hasFlag("ID_CDROM_MEDIA_CD"))
        return MediaClass::CD;
    // No CD holds as much as a gigabyte, and no DVD so little.
    constexpr std::uint64_t kSectorsOfAGigabyte = 1'000'000'000 / 512;
    const std::string size = readValue(disk + "/size").text;
    std::uint64_t sectors = 0;
    std::from_chars(size.data(), size.data() + size.size(), sectors);
    if (sectors == 0)
        return MediaClass::FixedOrUnknown;
    return sectors < kSectorsOfAGigabyte ? MediaClass::CD : MediaClass::DVD;
}

bool isAtaPort(const std::string& name) {
    return name.size() > 3 && name.starts_with("ata") &&
           name.find_first_not_of("0123456789", 3) == std::string::npos;
}

/// The protocol that a step on the way from a disk to the root of all devices tells; null for most steps.
const char* protocolOfStep(const std::string& folder) {
    if (isAtaPort(lastComponent(folder)))
        return kProtocolSata;
    const std::string subsystem = lastComponent(resolved(folder + "/subsystem"));
    static constexpr std::pair<const char*, const char*> kProtocols[] = {
        {"usb", kProtocolUsb},
        {"nvme", kProtocolPciExpress},
        {"nvme-subsystem", kProtocolPciExpress},
        {"mmc", kProtocolSecureDigital},
        {"virtio", kProtocolVirtio},
    };
    for (const auto& [name, protocol] : kProtocols)
        if (subsystem == name)
            return protocol;
    return nullptr;
}

/// As the kernel writes it.
std::string numberOf(const MountEntry& mount) {
    return std::to_string(mount.major) + ":" + std::to_string(mount.minor);
}

void writeToErrorStream(const std::string& line) {
    std::fputs((line + "\n").c_str(), stderr);
}

} // namespace

SysfsDevices::SysfsDevices(Places places, Report report)
    : m_places(std::move(places)),
      m_report(report ? std::move(report) : writeToErrorStream),
      m_devicesRoot(resolved(m_places.sysfs + "/devices")) {}

SysfsDevices::Description SysfsDevices::describe(const MountEntry& mount) const {
    Description description;
    if (isNetworkMount(mount))
        return description;
    DeviceFacts& facts = description.facts;
    const std::string folder = folderOf(mount);
    if (folder.empty()) {
        const bool isOnDevice = mount.major != 0 || mount.source.starts_with("/dev/");
        facts.protocol = isOnDevice ? kProtocolBlockDevice : kProtocolStoragePool;
        if (isOnDevice)
            reportMissing(mount);
        if (mount.source.starts_with("/dev/"))
            facts.bsdName = lastComponent(mount.source);
        return description;
    }
    const std::string disk = firstPhysical(wholeDisk(folder));
    const UdevRecord record = recordOf(disk);
    facts.isDescribed = true;
    facts.bsdName = lastComponent(folder);
    facts.protocol = protocolOf(disk);
    facts.model = modelOf(disk, record);
    facts.mediaWritable = mediaWritable(folder);
    facts.mediaClass = mediaClassOf(disk, record);
    facts.internal = isOutside(disk, *facts.protocol) ? 0 : 1;
    description.isRemovable = readValue(disk + "/removable").text == "1";
    const UdevRecord content = recordOf(folder);
    facts.volumeKind = content.value("ID_FS_TYPE");
    description.label = content.decoded("ID_FS_LABEL_ENC");
    return description;
}

/// The folder of the mounted device in the kernel's device tree; empty if there is none.
std::string SysfsDevices::folderOf(const MountEntry& mount) const {
    if (mount.major == 0)
        return folderOfSource(mount.source);
    return resolved(m_places.sysfs + "/dev/block/" + numberOf(mount));
}

/// File systems over several devices have a number of their own, and name one of the devices as their source.
std::string SysfsDevices::folderOfSource(const std::string& source) const {
    constexpr std::string_view kDevices = "/dev/";
    if (!source.starts_with(kDevices))
        return {};
    const std::string name = source.substr(kDevices.size());
    std::string target = lastComponent(resolved(m_places.devices + "/" + name));
    if (target.empty())
        target = lastComponent(name);
    return target.empty() || target.starts_with('.') ? std::string()
                                                     : resolved(m_places.sysfs + "/class/block/" + target);
}

/// The disk of a partition; the folder itself for a whole disk.
std::string SysfsDevices::wholeDisk(const std::string& folder) const {
    if (::access((folder + "/partition").c_str(), F_OK) == 0)
        return parentOf(folder);
    if (errno != ENOENT)
        reportFailure(lastComponent(folder) + ": Could not retrieve Whole property");
    return folder;
}

/// Encrypted disks, logical volumes and arrays lie on others; the first of those stands for all.
std::string SysfsDevices::firstPhysical(std::string disk) const {
    constexpr int kMostLayers = 16;
    for (int layer = 0; layer < kMostLayers; ++layer) {
        const auto below = namesIn(disk + "/slaves");
        const std::string next = below.empty() ? "" : resolved(disk + "/slaves/" + below.front());
        if (next.empty())
            break;
        disk = wholeDisk(next);
    }
    return disk;
}

UdevRecord SysfsDevices::recordOf(const std::string& folder) const {
    const std::string number = readValue(folder + "/dev").text;
    return UdevRecord(number.empty() ? std::string() : readSmallFile(m_places.udev + "/b" + number).text);
}

/// Missing if the file is; "Not available" if it can't be read; else its value.
std::optional<std::string> SysfsDevices::getintrnlProp(const std::string& folder,
                                                       const std::string& forkey) const {
    SmallFile file = readValue(folder + "/" + forkey);
    switch (file.state) {
    case SmallFile::State::Missing:
        return std::nullopt;
    case SmallFile::State::Unreadable:
        reportFailure(lastComponent(folder) + ": Could not retrieve " + forkey + " property");
        return kNotAvailable;
    case SmallFile::State::Read:
        break;
    }
    return file.text.empty() ? std::nullopt : std::optional(std::move(file.text));
}

/// "1" or "0" from the kernel's opposite.
std::optional<std::string> SysfsDevices::mediaWritable(const std::string& folder) const {
    const auto readOnly = getintrnlProp(folder, "ro");
    if (!readOnly || *readOnly == kNotAvailable)
        return readOnly;
    return *readOnly == "0" ? "1" : "0";
}

/// Memory cards have a name where disks have a model. udev knows the whole name of a disk of which the kernel
/// keeps the first sixteen bytes.
std::optional<std::string> SysfsDevices::modelOf(const std::string& disk, const UdevRecord& record) const {
    if (auto model = record.decoded("ID_MODEL_ENC"))
        return model;
    if (auto model = getintrnlProp(disk, "device/model"))
        return model;
    return getintrnlProp(disk, "device/name");
}

std::string SysfsDevices::protocolOf(const std::string& disk) const {
    const std::string name = lastComponent(disk);
    if (name.starts_with("loop") || name.starts_with("dm-"))
        return kProtocolVirtualInterface;
    for (std::string step = disk; step.size() > m_devicesRoot.size(); step = parentOf(step))
        if (const char* const protocol = protocolOfStep(step))
            return protocol;
    const bool isScsi = lastComponent(resolved(disk + "/device/subsystem")) == "scsi";
    return isScsi ? kProtocolScsi : kProtocolBlockDevice;
}

bool SysfsDevices::isOutside(const std::string& disk, const std::string& protocol) const {
    if (protocol == kProtocolUsb || protocol == kProtocolVirtualInterface)
        return true;
    if (protocol == kProtocolSecureDigital)
        return readValue(disk + "/device/type").text != "MMC"; // that is soldered in
    // A port that the firmware calls removable, as for a disk behind a cable with a bus of its own.
    for (std::string step = parentOf(disk); step.size() > m_devicesRoot.size(); step = parentOf(step))
        if (readValue(step + "/removable").text == "removable")
            return true;
    return false;
}

/// A container may have no device tree at all, which is one failure and not one for each mount.
void SysfsDevices::reportMissing(const MountEntry& mount) const {
    if (m_devicesRoot.empty())
        reportFailure("Could not find the device tree");
    else
        reportFailure("Device " + numberOf(mount) + ": Could not find it in the device tree");
}

/// The volumes are read every few seconds, and what failed fails again.
void SysfsDevices::reportFailure(const std::string& line) const {
    {
        const std::lock_guard guard(m_mutex);
        if (!m_reported.insert(line).second)
            return;
    }
    m_report(line);
}

} // namespace veltrano
