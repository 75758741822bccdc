#include "bench/LargeTree.h"

#include <algorithm>

namespace veltrano {

// The folders are numbered as in a heap: those in folder n are 4n + 1 to 4n + 4.

std::uint64_t LargeTree::entryCount(std::uint64_t folder) const {
    const std::uint64_t first = kFoldersPerFolder * folder + 1;
    const std::uint64_t inside =
        first < m_nFolders ? std::min(kFoldersPerFolder, m_nFolders - first) : std::uint64_t{0};
    return kFilesPerFolder + inside;
}

void LargeTree::entry(std::uint64_t folder, std::uint64_t index, GeneratedEntry& entry) const {
    entry.isDirectory = index >= kFilesPerFolder;
    entry.name.assign(entry.isDirectory ? "folder-" : "some-file-");
    entry.name += std::to_string(folder % 10'000).append("-").append(std::to_string(index));
    entry.facts.size =
        entry.isDirectory ? 0 : static_cast<std::int64_t>(4096 * (1 + (folder * 7 + index) % 50));
    entry.facts.date = {0, static_cast<std::uint32_t>(3'000'000'000 + folder), 0};
    entry.folder = kFoldersPerFolder * folder + 1 + (index - std::min(index, kFilesPerFolder));
}

} // namespace veltrano
