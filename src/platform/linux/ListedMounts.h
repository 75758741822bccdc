#pragma once

#include "platform/linux/MountTable.h"

#include <vector>

namespace veltrano {

/// Whether the file system lies on another machine.
[[nodiscard]] bool isNetworkMount(const MountEntry& mount);

/// The mounts that are volumes to a person, in the order of the table: file systems on devices, storage pools
/// and network mounts; of the memory and layered ones only the one at "/". Left out are pseudo file systems,
/// images of packages on loop devices, mounts that others cover, and all but one mount of each device and
/// root: a bind mount shows nothing of its own. A subvolume of btrfs is a root of its own.
[[nodiscard]] std::vector<MountEntry> listedMounts(const std::vector<MountEntry>& table);

} // namespace veltrano
