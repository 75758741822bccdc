#pragma once

#include "platform/linux/ListedMounts.h"

#include <string>
#include <vector>

namespace veltrano {

/// A mount table in the form of a real machine's, from fixtures/mounts. Empty, with a failure of the test, if
/// there is none of that name.
[[nodiscard]] std::vector<MountEntry> recordedTable(const std::string& name);

[[nodiscard]] std::vector<std::string> pathsOf(const std::vector<MountEntry>& mounts);

} // namespace veltrano
