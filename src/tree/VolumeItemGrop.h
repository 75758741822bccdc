#pragma once

#include <string>

namespace veltrano {

/// The heading of a group of entries in the sidebar. A value: a copy is a heading of its own. The class's
/// name and `writeble` are fixed spellings.
struct VolumeItemGrop {
    // What the group's volumes have in common, taken from the one that opened the group; false for folders.
    bool writeble = false;
    bool unmountable = false;
    bool removable = false;
    bool bFirstItem = false; ///< Marks the group at the top.
    std::string groupName{};
    std::string groupImage{}; ///< The name of the heading's image, which the sidebar looks up.

    /// Whether the three flags are the same.
    bool ifHavetheSameChars(const VolumeItemGrop& other) const {
        return removable == other.removable && writeble == other.writeble && unmountable == other.unmountable;
    }
};

} // namespace veltrano
