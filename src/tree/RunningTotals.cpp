#include "tree/RunningTotals.h"

#include "tree/FolderWalk.h"

#include <algorithm>
#include <cassert>

namespace veltrano {

RunningTotals::RunningTotals(FolderSystemItem& root) : m_root(root), m_storage(TreeStorage::of(&root)) {
    assert(!root.getParent() && root.numberOfChildren() == 0);
    m_root.addFileSize(-m_root.gettotalsize());
    m_root.initSizesByLevels();
    m_root.setCountedFlag(true);
    m_storage.m_nGrowingDepth = 0;
}

RunningTotals::~RunningTotals() {
    m_storage.m_nGrowingDepth.reset();
}

void RunningTotals::leavesLinked(FolderSystemItem& folder, std::int64_t sum, std::int64_t largest) {
    if (const auto level = raise(folder, sum))
        recordNode(*level + 1, largest);
}

void RunningTotals::folderLinked(FolderSystemItem& folder) {
    assert(folder.getParent() && !folder.isCountedFlag());
    if (folder.isPack())
        packageGrew(folder);
    folder.setCountedFlag(true);
    if (const auto level = raise(*folder.getParent(), folder.gettotalsize()))
        recordSubtree(folder, *level + 1);
}

void RunningTotals::packageGrew(FolderSystemItem& package) {
    raise(package, package.getAddSize() - package.gettotalsize());
}

/// Adds to `from` and to the folders above it as far as they hang together. Answers the level of `from` if
/// that reaches up to the root.
std::optional<std::int64_t> RunningTotals::raise(FolderSystemItem& from, std::int64_t size) {
    std::int64_t level = 0;
    for (FolderSystemItem* folder = &from;; folder = folder->getParent(), ++level) {
        folder->addFileSize(size);
        if (folder == &m_root)
            break;
        if (!folder->isCountedFlag())
            return std::nullopt;
    }

    const FolderSystemItem* folder = &from;
    for (std::int64_t above = level; folder; folder = folder->getParent(), --above)
        raiseLevel(above, folder->gettotalsize());
    return level;
}

void RunningTotals::restoreLevels() {
    for (std::size_t level = 0; level < m_levels.size(); ++level)
        m_root.raiseSizeOnLevel(static_cast<std::int64_t>(level), m_levels[level]);
}

void RunningTotals::raiseLevel(std::int64_t level, std::int64_t size) {
    if (level >= kLevelCount)
        return;
    std::int64_t& largest = m_levels[static_cast<std::size_t>(level)];
    if (size > largest) {
        largest = size;
        m_root.raiseSizeOnLevel(level, size);
    }
}

void RunningTotals::recordNode(std::int64_t level, std::int64_t size) {
    raiseLevel(level, size);
    m_storage.m_nGrowingDepth = std::max(m_storage.m_nGrowingDepth.value_or(0), level);
}

/// Notes what hangs below a folder that has just become part of the tree, and the folder itself.
void RunningTotals::recordSubtree(FolderSystemItem& folder, std::int64_t level) {
    if (folder.numberOfChildren() == 0) {
        recordNode(level, folder.gettotalsize());
        return;
    }
    walkFolder(
        folder, level,
        [this](FolderSystemItem& below, std::int64_t on) { recordNode(on, below.gettotalsize()); },
        [this](FileSystemItem& leaf, FolderSystemItem&, std::int64_t on) {
            recordNode(on, leaf.gettotalsize());
        },
        [](FolderSystemItem&, FolderSystemItem*, std::int64_t) {});
}

} // namespace veltrano
