#pragma once

#include "tree/FolderSystemItem.h"

#include <array>
#include <optional>

namespace veltrano {

/// Keeps the totals, the level table and the depth of a tree that grows by merges, without recounting what
/// did not change: after every call they equal a full recount from the leaves. One per scan, owned by it;
/// main thread, under the tree's lock.
///
/// A folder's counted flag says that it hangs in its parent's children. Sizes rise from link to link up to
/// the first folder that does not hang yet; that folder holds the sum of what is below it and hands it on
/// when it is linked itself. A walk up that ends at the root tells that the folder is part of the tree, so
/// folders may be linked in any order. Sizes only grow, which is why the table only has to rise.
class RunningTotals {
public:
    /// The root must have no children yet. Both live as long as the tree grows.
    explicit RunningTotals(FolderSystemItem& root);
    RunningTotals(const RunningTotals&) = delete;
    RunningTotals& operator=(const RunningTotals&) = delete;
    /// The tree grows no more.
    ~RunningTotals();

    /// Leaves, at least one, were added to `folder`: the sum of their sizes and the largest, bytes, not
    /// negative.
    void leavesLinked(FolderSystemItem& folder, std::int64_t sum, std::int64_t largest);

    /// `folder`, made with size 0, was added to its parent. Packages too. Once for each folder.
    void folderLinked(FolderSystemItem& folder);

    /// The running sum of a package has grown.
    void packageGrew(FolderSystemItem& package);

    /// Puts the root's level table back where someone has emptied it meanwhile, as a recount would: the end
    /// of a scan that was stopped empties the table of whatever tree is shown by then.
    void restoreLevels();

private:
    std::optional<std::int64_t> raise(FolderSystemItem& from, std::int64_t size);
    void raiseLevel(std::int64_t level, std::int64_t size);
    void recordNode(std::int64_t level, std::int64_t size);
    void recordSubtree(FolderSystemItem& folder, std::int64_t level);

    FolderSystemItem& m_root;
    TreeStorage& m_storage;
    std::array<std::int64_t, kLevelCount> m_levels{}; // what the root's table holds, or held before
};

} // namespace veltrano
