#pragma once

#include "support/MemoryDisk.h"

namespace veltrano {

/// A tree of any size for a MemoryDisk: each folder holds 39 files and up to four folders.
class LargeTree final : public GeneratedTree {
public:
    /// Has about so many entries, files and folders.
    explicit LargeTree(std::uint64_t entries) : m_nFolders(entries / (kFilesPerFolder + 1) + 1) {}

    std::uint64_t entryCount(std::uint64_t folder) const override;
    void entry(std::uint64_t folder, std::uint64_t index, GeneratedEntry& entry) const override;

private:
    static constexpr std::uint64_t kFilesPerFolder = 39;
    static constexpr std::uint64_t kFoldersPerFolder = 4;

    std::uint64_t m_nFolders;
};

} // namespace veltrano
