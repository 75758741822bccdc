#include "tree/FolderSystemItem.h"

#include "tree/FolderWalk.h"
#include "tree/PathComponents.h"

#include <algorithm>
#include <cassert>
#include <cstdio>

namespace veltrano {

namespace {

bool isTrashName(std::string_view name) {
    const std::string_view last = lastPathComponent(name);
    return last == ".Trashes" || last == ".Trash";
}

} // namespace

ChildArray FolderSystemItem::packageMarker;

FolderSystemItem::FolderSystemItem(std::string_view name, FolderSystemItem* folder, std::int64_t itemsize,
                                   std::uint8_t timeCode, bool hidden)
    : FileSystemItem(name, folder, itemsize, timeCode, hidden) {}

FolderSystemItem* FolderSystemItem::initWithPathSize(TreeArena& arena, std::string_view name,
                                                     FolderSystemItem* parent, std::int64_t itemsize,
                                                     bool bPack, std::uint8_t withTimeCode,
                                                     bool withHiddenFlag) {
    auto* const folder =
        initWithPathSizeNoParent(arena, name, parent, itemsize, bPack, withTimeCode, withHiddenFlag);
    if (parent)
        parent->addChild(folder);
    return folder;
}

FolderSystemItem* FolderSystemItem::initWithPathSizeNoParent(TreeArena& arena, std::string_view name,
                                                             FolderSystemItem* parent, std::int64_t itemsize,
                                                             bool bPack, std::uint8_t withTimeCode,
                                                             bool withHiddenFlag) {
    auto* const folder =
        arena.make<FolderSystemItem>(arena.copyBytes(name), parent, itemsize, withTimeCode, withHiddenFlag);
    if (withHiddenFlag && isTrashName(name))
        folder->setTrashFlag(true);
    if (bPack)
        folder->SetitsLeafPackage();
    return folder;
}

FolderSystemItem* FolderSystemItem::initWithPathSize(TreeArena& arena, std::string_view name,
                                                     FolderSystemItem* parent, std::int64_t itemsize,
                                                     bool bPack, ChildArray* withChildren,
                                                     std::uint8_t withTimeCode, bool withHiddenFlag) {
    auto* const folder =
        arena.make<FolderSystemItem>(arena.copyBytes(name), parent, itemsize, withTimeCode, withHiddenFlag);
    if (bPack) {
        folder->SetitsLeafPackage();
    } else if (withChildren) {
        folder->children = withChildren;
        for (FileSystemItem* child : *withChildren)
            child->setParent(folder);
    }
    return folder;
}

bool FolderSystemItem::containsObject(const FileSystemItem* item) const {
    return children && std::find(children->begin(), children->end(), item) != children->end();
}

void FolderSystemItem::addChild(FileSystemItem* child) {
    assert(!isPack());
    if (!children || children->count == children->capacity)
        children = TreeStorage::of(this).growChildren(children, children ? children->count + 1 : 1);
    children->items()[children->count++] = child;
}

void FolderSystemItem::addChildren(ChildArray* batch) {
    assert(!isPack());
    if (!batch || batch->count == 0)
        return;
    if (!children) {
        children = batch;
        return;
    }
    const std::uint32_t needed = children->count + batch->count;
    if (needed > children->capacity)
        children = TreeStorage::of(this).growChildren(children, needed);
    std::copy(batch->begin(), batch->end(), children->items() + children->count);
    children->count = needed;
}

void FolderSystemItem::removeChild(const FileSystemItem* child) {
    if (!children)
        return;
    FileSystemItem** const begin = children->items();
    children->count = static_cast<std::uint32_t>(std::remove(begin, begin + children->count, child) - begin);
}

void FolderSystemItem::removeChildAndRecalc(FileSystemItem* child) {
    decreaseTotalSize(child->gettotalsize());
    removeChild(child);
}

void FolderSystemItem::replaceChild(const FileSystemItem* child, FileSystemItem* toNewChild) {
    if (!children)
        return;
    FileSystemItem** const end = children->items() + children->count;
    FileSystemItem** const place = std::find(children->items(), end, child);
    if (place != end)
        *place = toNewChild;
}

std::size_t FolderSystemItem::numberOfChildren() const {
    return children ? children->count : 0;
}

FileSystemItem* FolderSystemItem::childAtIndex(std::size_t index) const {
    return index < numberOfChildren() ? children->items()[index] : nullptr;
}

void FolderSystemItem::increaseTotalSize(std::int64_t size) {
    for (FolderSystemItem* folder = this; folder; folder = folder->parent)
        folder->mnselfsize += size;
}

void FolderSystemItem::addFileSizeForAll(std::int64_t size) {
    if (isPack())
        nAddSize += size;
    else
        std::fputs("ERROR! called function not for package\n", stderr);
}

std::int64_t FolderSystemItem::calctotalsize() {
    if (isPack())
        return mnselfsize = nAddSize;
    walkFolder(
        *this, 0, [](FolderSystemItem& folder, std::int64_t) { folder.mnselfsize = 0; },
        [](FileSystemItem& leaf, FolderSystemItem& folder, std::int64_t) {
            folder.mnselfsize += leaf.calctotalsize();
        },
        [](FolderSystemItem& folder, FolderSystemItem* above, std::int64_t) {
            if (above)
                above->mnselfsize += folder.mnselfsize;
        });
    return mnselfsize;
}

std::int64_t FolderSystemItem::calcTotalSizeWithMaxSizes(LevelSizes maxSizes, int withCurLevel) {
    if (isPack()) {
        mnselfsize = nAddSize;
        return FileSystemItem::calcTotalSizeWithMaxSizes(maxSizes, withCurLevel);
    }
    walkFolder(
        *this, withCurLevel, [](FolderSystemItem& folder, std::int64_t) { folder.mnselfsize = 0; },
        [&](FileSystemItem& leaf, FolderSystemItem& folder, std::int64_t level) {
            folder.mnselfsize += leaf.calcTotalSizeWithMaxSizes(maxSizes, static_cast<int>(level));
        },
        [&](FolderSystemItem& folder, FolderSystemItem* above, std::int64_t level) {
            folder.recordLevelSize(maxSizes, static_cast<int>(level));
            if (above)
                above->mnselfsize += folder.mnselfsize;
        });
    return mnselfsize;
}

std::int64_t FolderSystemItem::calcChildDepth() const {
    if (numberOfChildren() == 0)
        return 0;
    std::int64_t deepest = 0;
    // The walk is shared with operations that change the nodes, so it takes them as changeable; here it only
    // asks.
    walkFolder(
        const_cast<FolderSystemItem&>(*this), 0,
        [&](FolderSystemItem&, std::int64_t level) { deepest = std::max(deepest, level); },
        [&](FileSystemItem& leaf, FolderSystemItem&, std::int64_t level) {
            deepest = std::max(deepest, level + leaf.getChildDepth());
        },
        [](FolderSystemItem&, FolderSystemItem*, std::int64_t) {});
    return deepest;
}

std::int64_t FolderSystemItem::getChildDepth() const {
    if (!parent) {
        if (const auto depth = TreeStorage::of(this).m_nGrowingDepth)
            return *depth;
    }
    return calcChildDepth();
}

std::int64_t FolderSystemItem::calcLevelsToParent(const FileSystemItem* item) const {
    std::int64_t levels = 0;
    for (const FolderSystemItem* folder = this; folder->parent; folder = folder->parent) {
        ++levels;
        if (folder->parent == item)
            return levels;
    }
    return kNoSuchParent + levels;
}

void FolderSystemItem::SetitsLeafPackage() {
    children = &packageMarker;
}

bool FolderSystemItem::isMe(const TreeObject* object) const {
    return object == this;
}

FolderSystemItem* FolderSystemItem::getTopParent() {
    FolderSystemItem* top = this;
    while (top->parent)
        top = top->parent;
    return top;
}

} // namespace veltrano
