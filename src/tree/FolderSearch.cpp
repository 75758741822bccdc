// The operations that work by path rather than by link: finding an item, finding or making a folder, and the
// marks of the collection. None recurses, since a tree may be deeper than a thread's stack allows.

#include "tree/FolderSystemItem.h"
#include "tree/FolderWalk.h"
#include "tree/PathComponents.h"

#include <algorithm>
#include <vector>

namespace veltrano {

namespace {

using Components = std::span<const std::string_view>;

bool matches(const FileSystemItem& item, Components components, std::size_t offset) {
    return !item.isHidden() && offset < components.size() && item.relativePath() == components[offset];
}

bool containsPath(std::span<const std::string> paths, const std::string& path) {
    return std::find(paths.begin(), paths.end(), path) != paths.end();
}

/// Marked paths in an order that finds one without a look at all of them: a folder may hold a million files,
/// and the collection thousands of paths.
class SortedPaths {
public:
    explicit SortedPaths(std::span<const std::string> paths) : m_paths(paths.begin(), paths.end()) {
        std::sort(m_paths.begin(), m_paths.end());
    }

    bool contains(std::string_view path) const {
        return std::binary_search(m_paths.begin(), m_paths.end(), path);
    }

    bool containsWithPrefix(std::string_view prefix) const {
        const auto first = std::lower_bound(m_paths.begin(), m_paths.end(), prefix);
        return first != m_paths.end() && first->starts_with(prefix);
    }

private:
    std::vector<std::string_view> m_paths;
};

/// Goes down from `top` to the paths. `onFolder` gets a folder at one of them, below which the walk does not
/// go, and `onLeaf` a file or package.
template <class OnFolder, class OnLeaf>
void walkToPaths(FolderSystemItem& top, const SortedPaths& paths, OnFolder onFolder, OnLeaf onLeaf) {
    std::vector<FolderSystemItem*> waiting{&top};
    while (!waiting.empty()) {
        FolderSystemItem& folder = *waiting.back();
        waiting.pop_back();
        const std::string path = folder.getFullPath();
        if (paths.contains(path)) {
            onFolder(folder);
            continue;
        }
        if (!paths.containsWithPrefix(path))
            continue;
        for (std::size_t index = 0; index < folder.numberOfChildren(); ++index) {
            FileSystemItem* const child = folder.childAtIndex(index);
            if (!child)
                continue;
            if (FolderSystemItem* const below = asPlainFolder(*child))
                waiting.push_back(below);
            else if (paths.contains(child->getFullPath()))
                onLeaf(*child);
        }
    }
}

} // namespace

// --- Files: what ends a search ---

bool FileSystemItem::findItemByPathComponents(Components components, std::size_t withOffset,
                                              FileSystemItem** withResItem) {
    if (!matches(*this, components, withOffset))
        return false;
    if (withResItem && withOffset + 1 == components.size())
        *withResItem = this;
    return true;
}

bool FileSystemItem::findFolderItemByPathComponents(Components components, std::size_t withOffset,
                                                    FolderSystemItem**) {
    return matches(*this, components, withOffset);
}

void FileSystemItem::updateAddedItemsToCollection(std::span<const std::string> paths) {
    if (!isHidden() && containsPath(paths, getFullPath()))
        setCollected(true);
}

void FileSystemItem::updateRemovedItemsInCollection(std::span<const std::string> paths) {
    if (!isHidden() && containsPath(paths, getFullPath()))
        cleanCollected();
}

// --- Folders: lookup ---

FileSystemItem* FolderSystemItem::getItemByFilePath(std::string_view path) {
    const std::string ownPath = getFullPath();
    if (ownPath == path)
        return this;
    const auto ownComponents = pathComponents(ownPath);
    const auto components = pathComponents(path);
    if (!isFolderParent(ownPath, &ownComponents, path, &components))
        return nullptr;

    FileSystemItem* found = nullptr;
    for (std::size_t index = 0; index < numberOfChildren(); ++index) {
        FileSystemItem* const child = childAtIndex(index);
        if (child && child->findItemByPathComponents(components, ownComponents.size(), &found))
            break;
    }
    return found;
}

bool FolderSystemItem::findItemByPathComponents(Components components, std::size_t withOffset,
                                                FileSystemItem** withResItem) {
    struct Step {
        FolderSystemItem* folder;
        std::size_t next;
    };
    std::vector<Step> steps; // the folders that match the components from withOffset on

    // Answers whether the search ends at this folder; if not, its children come next where it matches.
    auto endsAt = [&](FolderSystemItem& folder) {
        const std::size_t offset = withOffset + steps.size();
        if (!matches(folder, components, offset))
            return false;
        const bool last = offset + 1 == components.size();
        if (last || folder.isPack()) {
            // A path inside a package has no node, so the search ends there with nothing.
            if (withResItem)
                *withResItem = last ? &folder : nullptr;
            return true;
        }
        steps.push_back({&folder, 0});
        return false;
    };

    if (endsAt(*this))
        return true;
    while (!steps.empty()) {
        Step& step = steps.back();
        if (step.next == step.folder->numberOfChildren()) {
            steps.pop_back();
            continue;
        }
        FileSystemItem* const child = step.folder->childAtIndex(step.next++);
        if (!child)
            continue;
        FolderSystemItem* const folder = child->asFolderSystemItem();
        if (folder ? endsAt(*folder)
                   : child->findItemByPathComponents(components, withOffset + steps.size(), withResItem))
            return true;
    }
    return false;
}

FolderSystemItem* FolderSystemItem::getFolderItemByFolderPath(std::string_view path) {
    const std::string ownPath = getFullPath();
    if (ownPath == path)
        return this;
    const auto ownComponents = pathComponents(ownPath);
    const auto components = pathComponents(path);
    if (!isFolderParent(ownPath, &ownComponents, path, &components))
        return nullptr;

    FolderSystemItem* found = nullptr;
    for (std::size_t index = 0; index < numberOfChildren(); ++index) {
        FileSystemItem* const child = childAtIndex(index);
        if (child && child->findFolderItemByPathComponents(components, ownComponents.size(), &found))
            return found;
    }
    return createFolderItemByComponents(components, ownComponents.size());
}

bool FolderSystemItem::findFolderItemByPathComponents(Components components, std::size_t withOffset,
                                                      FolderSystemItem** withResItem) {
    if (!matches(*this, components, withOffset))
        return false;
    auto endWith = [&](FolderSystemItem* result) {
        if (withResItem)
            *withResItem = result;
        return true;
    };

    // A folder that matches always ends the search, so there is no way back up from one.
    FolderSystemItem* folder = this;
    for (std::size_t offset = withOffset;; ++offset) {
        if (folder->isPack())
            return endWith(nullptr);
        if (offset + 1 == components.size())
            return endWith(folder);

        FolderSystemItem* below = nullptr;
        for (std::size_t index = 0; !below && index < folder->numberOfChildren(); ++index) {
            FileSystemItem* const child = folder->childAtIndex(index);
            if (!child || !matches(*child, components, offset + 1))
                continue;
            below = child->asFolderSystemItem();
            if (!below)
                return child->findFolderItemByPathComponents(components, offset + 1, withResItem);
        }
        if (!below)
            return endWith(folder->createFolderItemByComponents(components, offset + 1));
        folder = below;
    }
}

FolderSystemItem* FolderSystemItem::createFolderItemByComponents(Components components,
                                                                 std::size_t withOffset) {
    constexpr std::uint8_t kNewFolderTimeCode = 1; // made just now
    if (withOffset >= components.size() || isPack())
        return nullptr;
    TreeArena& arena = TreeStorage::of(this).mainArena();
    FolderSystemItem* deepest = this;
    for (const std::string_view name : components.subspan(withOffset))
        deepest = initWithPathSize(arena, name, deepest, 0, false, kNewFolderTimeCode, name.starts_with('.'));
    return deepest;
}

// --- Folders: marks of the collection ---

void FolderSystemItem::updateAddedItemsToCollection(std::span<const std::string> paths) {
    if (isPack()) {
        FileSystemItem::updateAddedItemsToCollection(paths);
        return;
    }
    walkToPaths(
        *this, SortedPaths(paths),
        [](FolderSystemItem& folder) {
            // Marks below a collected folder are redundant and are wiped.
            folder.cleanCollected();
            folder.setCollected(true);
        },
        [&](FileSystemItem& leaf) { leaf.updateAddedItemsToCollection(paths); });
}

void FolderSystemItem::updateRemovedItemsInCollection(std::span<const std::string> paths) {
    if (isPack()) {
        FileSystemItem::updateRemovedItemsInCollection(paths);
        return;
    }
    walkToPaths(
        *this, SortedPaths(paths), [](FolderSystemItem& folder) { folder.cleanCollected(); },
        [&](FileSystemItem& leaf) { leaf.updateRemovedItemsInCollection(paths); });
}

void FolderSystemItem::cleanCollected() {
    walkFolder(
        *this, 0, [](FolderSystemItem& folder, std::int64_t) { folder.setCollected(false); },
        [](FileSystemItem& leaf, FolderSystemItem&, std::int64_t) { leaf.cleanCollected(); },
        [](FolderSystemItem&, FolderSystemItem*, std::int64_t) {});
}

} // namespace veltrano
