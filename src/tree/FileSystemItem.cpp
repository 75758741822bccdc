#include "tree/FileSystemItem.h"

#include "tree/FolderSystemItem.h"
#include "tree/PathComponents.h"

#include <algorithm>
#include <vector>

namespace veltrano {

FileSystemItem::FileSystemItem(std::string_view name, FolderSystemItem* folder, std::int64_t itemsize,
                               std::uint8_t timeCode, bool hidden)
    : parent(folder),
      mnselfsize(itemsize),
      m_pName(name.data()),
      m_nNameLength(static_cast<std::uint32_t>(name.size())),
      mntimeCode(static_cast<std::uint8_t>(timeCode & kTimeCodeMask)) {
    setHiddenFlag(hidden);
}

FileSystemItem* FileSystemItem::initWithPathSize(TreeArena& arena, std::string_view name,
                                                 FolderSystemItem* parent, std::int64_t itemsize,
                                                 std::uint8_t withTimeCode, bool withHiddenFlag) {
    auto* const item = initWithPathSizeNoParent(arena, name, parent, itemsize, withTimeCode, withHiddenFlag);
    if (parent)
        parent->addChild(item);
    return item;
}

FileSystemItem* FileSystemItem::initWithPathSizeNoParent(TreeArena& arena, std::string_view name,
                                                         FolderSystemItem* parent, std::int64_t itemsize,
                                                         std::uint8_t withTimeCode, bool withHiddenFlag) {
    return arena.make<FileSystemItem>(arena.copyBytes(name), parent, itemsize, withTimeCode, withHiddenFlag);
}

bool FileSystemItem::hasFlagUpwards(std::uint8_t mask) const {
    for (const FileSystemItem* item = this; item; item = item->parent) {
        if ((item->mntimeCode & mask) != 0)
            return true;
    }
    return false;
}

void FileSystemItem::setRelativePath(std::string_view name) {
    m_pName = name.data();
    m_nNameLength = static_cast<std::uint32_t>(name.size());
}

std::string FileSystemItem::fullPath() const {
    std::vector<std::string_view> names;
    std::size_t length = 0;
    for (const FileSystemItem* item = this; item; item = item->parent) {
        names.push_back(item->relativePath());
        length += names.back().size() + 1;
    }

    std::string path;
    path.reserve(length);
    path = names.back();
    for (auto name = names.rbegin() + 1; name != names.rend(); ++name)
        appendPathComponent(path, *name);
    return path;
}

std::string FileSystemItem::getDisplayName() const {
    return std::string(lastPathComponent(getFullPath()));
}

bool FileSystemItem::isMyParent(const FileSystemItem* item) const {
    for (const FileSystemItem* folder = parent; folder; folder = folder->parent) {
        if (folder == item)
            return true;
    }
    return false;
}

void FileSystemItem::addFileSizeForAll(std::int64_t size) {
    for (FileSystemItem* item = this; item; item = item->parent)
        item->addFileSize(size);
}

void FileSystemItem::recordLevelSize(LevelSizes maxSizes, int level) const {
    if (level < kLevelCount) {
        std::int64_t& largest = maxSizes[static_cast<std::size_t>(level)];
        largest = std::max(largest, mnselfsize);
    }
}

std::int64_t FileSystemItem::calcTotalSizeWithMaxSizes(LevelSizes maxSizes, int withCurLevel) {
    recordLevelSize(maxSizes, withCurLevel);
    return mnselfsize;
}

} // namespace veltrano
