#pragma once

#include "tree/FolderSystemItem.h"
#include "tree/VolumeSystemItem.h"

#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace veltrano::test {

/// Builds a tree by hand, in the main arena of a storage that the builder holds. Nodes join their parents at
/// once, plain folders with size 0; totals are counted with `recount`.
///
///     TreeBuilder tree("/r");
///     auto* a = tree.folder(tree.root(), "a");
///     tree.file(a, "f", 10);
class TreeBuilder {
public:
    /// A tree with a folder as its root.
    explicit TreeBuilder(std::string_view rootPath)
        : m_storage(TreeStorage::create()),
          m_root(FolderSystemItem::initWithPathSize(arena(), rootPath, nullptr, 0, false, 0, false)) {}

    /// A tree with a volume as its root.
    static TreeBuilder volume(std::string_view path, std::int64_t capacity, std::int64_t free) {
        TreeBuilder tree;
        tree.m_root = VolumeSystemItem::initWithPath(tree.arena(), path, capacity, free);
        return tree;
    }

    /// A tree of about `nodes` nodes below its root: folders, files and packages of every age, some hidden,
    /// with names that do not repeat in a folder. The same seed makes the same tree.
    static TreeBuilder random(std::uint64_t seed, std::size_t nodes) {
        TreeBuilder tree("/random");
        tree.growRandomly(seed, nodes);
        return tree;
    }

    FolderSystemItem* root() const { return m_root; }
    /// The root of a tree that was made with `volume`.
    VolumeSystemItem* volumeRoot() const { return static_cast<VolumeSystemItem*>(m_root); }
    const std::shared_ptr<TreeStorage>& storage() const { return m_storage; }
    TreeArena& arena() const { return m_storage->mainArena(); }

    FolderSystemItem* folder(FolderSystemItem* parent, std::string_view name) const {
        return FolderSystemItem::initWithPathSize(arena(), name, parent, 0, false, 1, false);
    }
    FolderSystemItem* hiddenFolder(FolderSystemItem* parent, std::string_view name) const {
        return FolderSystemItem::initWithPathSize(arena(), name, parent, 0, false, 1, true);
    }
    /// A package whose running sum and size are `size`.
    FolderSystemItem* package(FolderSystemItem* parent, std::string_view name, std::int64_t size) const {
        auto* const item = FolderSystemItem::initWithPathSize(arena(), name, parent, 0, true, 1, false);
        item->addFileSizeForAll(size);
        item->calctotalsize();
        return item;
    }
    FileSystemItem* file(FolderSystemItem* parent, std::string_view name, std::int64_t size,
                         std::uint8_t timeCode = 1, bool hidden = false) const {
        return FileSystemItem::initWithPathSize(arena(), name, parent, size, timeCode, hidden);
    }

    /// `length` folders of that name, one below the other; answers the deepest.
    FolderSystemItem* chain(FolderSystemItem* parent, std::string_view name, std::size_t length) const {
        for (std::size_t level = 0; level < length; ++level)
            parent = folder(parent, name);
        return parent;
    }

    /// See `random`; adds to what is there.
    void growRandomly(std::uint64_t seed, std::size_t nodes) const {
        std::mt19937_64 numbers(seed);
        std::vector<FolderSystemItem*> folders{m_root};
        for (std::size_t node = 0; node < nodes; ++node) {
            FolderSystemItem* const parent = folders[numbers() % folders.size()];
            const std::string name = std::to_string(node);
            const auto size = static_cast<std::int64_t>(numbers() % 1'000'000);
            const auto kind = numbers() % 10;
            if (kind < 3)
                folders.push_back(FolderSystemItem::initWithPathSize(arena(), name, parent, 0, false, 1,
                                                                     numbers() % 8 == 0));
            else if (kind == 3)
                package(parent, name, size);
            else
                file(parent, name, size, static_cast<std::uint8_t>(numbers() % 8), numbers() % 8 == 0);
        }
        recount();
    }

    void recount() const { m_root->calctotalsizeex(); }

private:
    TreeBuilder() : m_storage(TreeStorage::create()), m_root(nullptr) {}

    std::shared_ptr<TreeStorage> m_storage;
    FolderSystemItem* m_root;
};

} // namespace veltrano::test
