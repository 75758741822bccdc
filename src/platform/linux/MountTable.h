#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veltrano {

/// One line of the mount table. Texts are bytes with their escapes undone; what looks like an escape and
/// stands for no byte of a path stays as it is.
struct MountEntry {
    int id = 0;
    int parent = 0; ///< The id of the mount that this one stands on.
    unsigned major = 0;
    unsigned minor = 0;
    std::string
        root{}; ///< What of the file system is mounted: "/", a subvolume, or a folder of a bind mount.
    std::string mountPoint{};
    std::string options{}; ///< Of the mount, parted by commas.
    std::string fileSystemType{};
    std::string source{};
    std::string superOptions{}; ///< Of the file system, parted by commas.

    bool operator==(const MountEntry&) const = default;
};

/// The mounts of a table in the format of /proc/self/mountinfo, in its order. Lines without an absolute mount
/// point are passed over; other fields that are missing or no numbers are left empty or 0.
[[nodiscard]] std::vector<MountEntry> parseMountTable(std::string_view table);

/// Whether a list parted by commas holds the option.
[[nodiscard]] bool hasOption(std::string_view options, std::string_view option);

/// The table at a path, "/proc/self/mountinfo" as a rule; empty if it can't be read. Never blocks on a mount.
[[nodiscard]] std::string readMountTable(const std::string& path);

} // namespace veltrano
