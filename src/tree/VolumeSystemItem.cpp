#include "tree/VolumeSystemItem.h"

#include <algorithm>

namespace veltrano {

VolumeSystemItem::VolumeSystemItem(std::string_view path, std::int64_t diskSize, std::int64_t diskFreeSize,
                                   std::string_view displayName)
    : FolderSystemItem(path, nullptr, 0, 0, false),
      nVolSize(diskSize),
      nVolFreeSize(diskFreeSize),
      m_pDisplayName(displayName) {}

VolumeSystemItem* VolumeSystemItem::initWithPath(TreeArena& arena, std::string_view path,
                                                 std::int64_t diskSize, std::int64_t diskFSze,
                                                 std::string_view displayName) {
    return arena.make<VolumeSystemItem>(arena.copyBytes(path), diskSize, diskFSze,
                                        arena.copyBytes(displayName));
}

std::string VolumeSystemItem::getDisplayName() const {
    return m_pDisplayName.empty() ? FolderSystemItem::getDisplayName() : std::string(m_pDisplayName);
}

void VolumeSystemItem::initSizesByLevels() {
    maxSizesByLevels.fill(0);
}

std::int64_t VolumeSystemItem::getOccSize() const {
    return std::max(nVolSize - nVolFreeSize, gettotalsize());
}

double VolumeSystemItem::getFullRatio() const {
    if (nVolSize < 1)
        return 1.0;
    return static_cast<double>(getOccSize()) / static_cast<double>(getWholeItemSize());
}

std::int64_t VolumeSystemItem::getTheSize() const {
    if (bUseFreeSector)
        return nVolSize;
    const std::int64_t found = gettotalsize();
    return found < 1 ? nVolSize - nVolFreeSize : found;
}

void VolumeSystemItem::removeChildAndRecalc(FileSystemItem* child) {
    FolderSystemItem::removeChildAndRecalc(child);
    initSizesByLevels();
}

std::int64_t VolumeSystemItem::calctotalsizeex() {
    initSizesByLevels();
    return calcTotalSizeWithMaxSizes(maxSizesByLevels, 0);
}

std::int64_t VolumeSystemItem::calctotalsize() {
    initSizesByLevels();
    return FolderSystemItem::calctotalsize();
}

void VolumeSystemItem::raiseSizeOnLevel(std::int64_t level, std::int64_t size) {
    if (level < kLevelCount) {
        std::int64_t& largest = maxSizesByLevels[static_cast<std::size_t>(level)];
        largest = std::max(largest, size);
    }
}

} // namespace veltrano
