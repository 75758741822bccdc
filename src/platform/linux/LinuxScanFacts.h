#pragma once

#include "platform/ScanFacts.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltrano {

/// The facts of this system: homes below "/home", the home of the user who runs the program, and the trash
/// folders that the freedesktop Trash rules name (in the user's data folder and at the top of every mount).
/// Reads the mount table, which never blocks on a mount.
[[nodiscard]] ScanFacts linuxScanFacts();

/// The mount points of a table in the format of /proc/self/mountinfo, as bytes, in the table's order. Lines
/// that are no mounts are passed over.
[[nodiscard]] std::vector<std::string> mountPointsOf(std::string_view mountTable);

/// The trash folders of a user: that of the data folder (skipped where it is empty) and one for each mount
/// point.
[[nodiscard]] std::vector<std::string>
trashFoldersOf(std::string_view dataFolder, const std::vector<std::string>& mountPoints, unsigned user);

} // namespace veltrano
