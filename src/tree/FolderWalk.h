#pragma once

#include "tree/FolderSystemItem.h"

#include <vector>

namespace veltrano {

/// The item as a folder that a walk may go into by itself. Null for a file, for a package, which has no nodes
/// below it, and for an item with a weight, whose own operations scale what lies below.
inline FolderSystemItem* asPlainFolder(FileSystemItem& item) {
    FolderSystemItem* const folder = item.asFolderSystemItem();
    return folder && !folder->isPack() && !folder->isCutItem() ? folder : nullptr;
}

/// Walks everything below a folder, children in index order, passing over null ones. It keeps its own stack,
/// since a tree may be deeper than a thread's stack allows. Nobody may change the tree's shape meanwhile.
/// - `enter(folder, level)` before a plain folder's children, `top` included, whose level is `topLevel`;
/// - `leaf(item, folder, level)` for every child of `folder` that is no plain folder;
/// - `leave(folder, above, level)` after its children; `above` is null for `top`.
template <class Enter, class Leaf, class Leave>
void walkFolder(FolderSystemItem& top, std::int64_t topLevel, Enter enter, Leaf leaf, Leave leave) {
    struct Step {
        FolderSystemItem* folder;
        const ChildArray* children;
        std::uint32_t next;
    };
    std::vector<Step> steps;
    auto push = [&](FolderSystemItem& folder) {
        enter(folder, topLevel + static_cast<std::int64_t>(steps.size()));
        steps.push_back({&folder, folder.childrenArray(), 0});
    };

    push(top);
    while (!steps.empty()) {
        Step& step = steps.back();
        if (!step.children || step.next == step.children->count) {
            FolderSystemItem& left = *step.folder;
            steps.pop_back();
            leave(left, steps.empty() ? nullptr : steps.back().folder,
                  topLevel + static_cast<std::int64_t>(steps.size()));
            continue;
        }
        FileSystemItem* const child = step.children->items()[step.next++];
        if (!child)
            continue;
        if (FolderSystemItem* const folder = asPlainFolder(*child))
            push(*folder);
        else
            leaf(*child, *step.folder, topLevel + static_cast<std::int64_t>(steps.size()));
    }
}

} // namespace veltrano
