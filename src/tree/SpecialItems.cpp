#include "tree/SpecialItems.h"

#include "tree/FolderSystemItem.h"
#include "tree/PathComponents.h"

namespace veltrano {

FSUnscannedItem::FSUnscannedItem(std::string_view name, FolderSystemItem* folder, std::string_view desc,
                                 std::int64_t size)
    : FileSystemItem(name, folder, size, 0, false), m_pDesc(desc) {}

FSUnscannedItem* FSUnscannedItem::initWithParent(TreeArena& arena, FolderSystemItem* parent,
                                                 std::string_view withDesc, std::int64_t withSize) {
    auto* const item =
        arena.make<FSUnscannedItem>(arena.copyBytes(""), parent, arena.copyBytes(withDesc), withSize);
    if (parent)
        parent->addChild(item);
    return item;
}

FileSystemHiddenItem* FileSystemHiddenItem::initWithPathSize(TreeArena& arena, std::string_view name,
                                                             FolderSystemItem* parent,
                                                             std::int64_t itemsize) {
    auto* const item = initWithPathSizeNoParent(arena, name, parent, itemsize);
    if (parent)
        parent->addChild(item);
    return item;
}

FileSystemHiddenItem* FileSystemHiddenItem::initWithPathSizeNoParent(TreeArena& arena, std::string_view name,
                                                                     FolderSystemItem* parent,
                                                                     std::int64_t itemsize) {
    return arena.make<FileSystemHiddenItem>(arena.copyBytes(name), parent, itemsize, std::uint8_t{0}, false);
}

FileSystemHiddenItem* FileSystemHiddenItem::initWithPathSize(TreeArena& arena, std::string_view name,
                                                             FolderSystemItem* parent, std::int64_t itemsize,
                                                             std::uint64_t withHiddenCount, std::int64_t) {
    auto* const item = initWithPathSize(arena, name, parent, itemsize);
    item->mnhiddencount = withHiddenCount;
    item->nAddSize = itemsize;
    return item;
}

void FileSystemHiddenItem::addHiddenItem(std::int64_t size) {
    ++mnhiddencount;
    nAddSize += size;
}

std::int64_t FileSystemHiddenItem::calctotalsize() {
    mnselfsize = nAddSize;
    return mnselfsize;
}

std::int64_t FileSystemHiddenItem::calcTotalSizeWithMaxSizes(LevelSizes maxSizes, int withCurLevel) {
    mnselfsize = nAddSize;
    return FileSystemItem::calcTotalSizeWithMaxSizes(maxSizes, withCurLevel);
}

void FileSystemHiddenItem::setRelPath(std::string_view path) {
    setRelativePath(path.data() ? TreeStorage::of(this).mainArena().copyBytes(path) : path);
}

FileVaultDirItem::FileVaultDirItem(std::string_view name, FolderSystemItem* folder, std::int64_t itemsize,
                                   std::string_view link)
    : FileSystemItem(name, folder, itemsize, 0, false), linkVolumePath(link) {}

FileVaultDirItem* FileVaultDirItem::initWithPathSize(TreeArena& arena, std::string_view name,
                                                     FolderSystemItem* parent, std::int64_t itemsize,
                                                     std::string_view link) {
    auto* const item =
        arena.make<FileVaultDirItem>(arena.copyBytes(name), parent, itemsize, arena.copyBytes(link));
    if (parent)
        parent->addChild(item);
    return item;
}

FileSystemItemSirota::FileSystemItemSirota(std::string_view name, std::string_view abspath,
                                           std::int64_t itemsize, bool hidden, bool dir)
    : FileSystemItem(name, nullptr, itemsize, 0, hidden), fullpath(abspath), bDIR(dir) {}

FileSystemItemSirota* FileSystemItemSirota::initWithPathSize(TreeArena& arena, std::string_view name,
                                                             std::string_view abspath, std::int64_t itemsize,
                                                             bool dir) {
    const bool hidden = lastPathComponent(name).starts_with('.');
    return arena.make<FileSystemItemSirota>(arena.copyBytes(name), arena.copyBytes(abspath), itemsize, hidden,
                                            dir);
}

} // namespace veltrano
