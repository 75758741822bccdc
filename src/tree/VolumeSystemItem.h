#pragma once

#include "tree/FolderSystemItem.h"

#include <array>

namespace veltrano {

/// The root of a volume's tree: knows what the file system reports, and keeps the table of the largest item
/// of each level while a scan runs. Owned by its tree's storage. Main thread; the table under the tree's
/// lock.
class VolumeSystemItem final : public FolderSystemItem {
public:
    /// `path` is the mount point, sizes are bytes. The display name is that of the volume, bytes; without one
    /// the mount point names it.
    static VolumeSystemItem* initWithPath(TreeArena& arena, std::string_view path, std::int64_t diskSize,
                                          std::int64_t diskFSze, std::string_view displayName = {});

    void initSizesByLevels() override;
    void setVolSize(std::int64_t size) { nVolSize = size; }
    void setVolFreeSize(std::int64_t size) { nVolFreeSize = size; }
    std::int64_t getVolSize() const { return nVolSize; }
    std::int64_t getVolFreeSize() const { return nVolFreeSize; }

    bool isVol() const override { return true; }
    std::string getDisplayName() const override;
    std::int64_t getWholeItemSize() const override { return nVolSize; }
    /// Capacity less free, or what was found if that is more.
    std::int64_t getOccSize() const override;
    /// 1.0 where the capacity is below 1.
    double getFullRatio() const override;
    bool getUseFreeSector() const override { return bUseFreeSector; }
    void setUseFreeSector(bool use) override { bUseFreeSector = use; }
    std::int64_t getTheSize() const override;
    void removeChildAndRecalc(FileSystemItem* child) override;
    /// The recount of a scan: totals and level table.
    std::int64_t calctotalsizeex() override;
    /// The recount after a change: totals; the table is empty afterwards.
    std::int64_t calctotalsize() override;
    bool isMaxSizesValid() const override { return maxSizesByLevels[0] > 0; }
    const std::int64_t* getMaxSizesByLevels() const override { return maxSizesByLevels.data(); }
    void raiseSizeOnLevel(std::int64_t level, std::int64_t size) override;

private:
    friend class TreeArena;
    VolumeSystemItem(std::string_view path, std::int64_t diskSize, std::int64_t diskFreeSize,
                     std::string_view displayName);
    ~VolumeSystemItem() = default;

    std::int64_t nVolSize;           // bytes
    std::int64_t nVolFreeSize;       // bytes
    std::string_view m_pDisplayName; // in the tree's storage
    bool bUseFreeSector = false;
    std::array<std::int64_t, kLevelCount> maxSizesByLevels{};
};

} // namespace veltrano
