#pragma once

#include "platform/FileCatalogue.h"

#include <cstdint>
#include <optional>
#include <string>

namespace veltrano {

/// What the catalogue says about a path itself. A value; all zero where nothing is known.
struct PathFacts {
    CatalogueDate created{};
    CatalogueDate modified{}; ///< Of the content.
    CatalogueDate accessed{};
    /// Entries directly in the path; 0 where the system tells none without reading the folder.
    std::int64_t valence = 0;

    bool operator==(const PathFacts&) const = default;
};

/// The medium in the device of a volume.
enum class MediaClass : std::uint32_t {
    FixedOrUnknown = 0,
    CD = 1,
    DVD = 2,
};

/// What is shown for a fact that is there but can't be read.
inline constexpr const char* kNotAvailable = "Not available";

/// What is known of the device under a volume. A value, gathered by the platform and handed to the entry. A
/// text that is missing means that the system has no such fact, which is not the same as an empty one: a
/// volume without a protocol is on the network.
struct DeviceFacts {
    /// Whether the device was found and described. Of one that was not its name and its protocol may be known
    /// all the same, by the mount.
    bool isDescribed = false;
    std::string bsdName{}; ///< The device's name, such as "sda1"; empty if there is none.
    std::optional<std::string> protocol{};
    std::optional<std::string> model{};
    std::optional<std::string> mediaWritable{}; ///< "1" or "0".
    std::optional<std::string> volumeKind{};
    std::optional<std::int32_t> internal{}; ///< 1 for a device inside the machine, 0 for one outside.
    MediaClass mediaClass = MediaClass::FixedOrUnknown;
    bool isBootVolume = false;
    std::int64_t files = 0;   ///< On the whole volume; 0 where it keeps no count.
    std::int64_t folders = 0; ///< Likewise.

    bool operator==(const DeviceFacts&) const = default;
};

} // namespace veltrano
