#pragma once

#include <cstdint>
#include <string>

namespace veltrano {

/// What a bare walk came to.
struct BareWalkResult {
    std::uint64_t entries = 0; ///< Everything below the start folder, folders too.
    std::uint64_t folders = 0; ///< Of these.
    std::int64_t bytes = 0;    ///< Allocated, of all that is no folder.
};

/// The least that a scan can do: `threads` threads that read every folder below the path with getdents64, ask
/// statx for each entry and keep nothing. Folders that can't be read are left out. Other mounts are not
/// entered. This is the floor that a real scan is measured against, so it shares its work as that does: each
/// thread goes depth first and gives folders away only while another has none.
BareWalkResult bareWalk(const std::string& path, int threads);

} // namespace veltrano
