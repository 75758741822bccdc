#pragma once

#include "tree/FileSystemItem.h"

namespace veltrano {

// Nodes that stand for things that are not one file on disk. Owned by their tree's storage, where their texts
// lie too; main thread. Of the four a scan makes only FSUnscannedItem.

/// Space that was not or could not be read. Has no name, so no path finds it.
class FSUnscannedItem final : public FileSystemItem {
public:
    /// Joins the parent. `withDesc` is the text to show.
    static FSUnscannedItem* initWithParent(TreeArena& arena, FolderSystemItem* parent,
                                           std::string_view withDesc, std::int64_t withSize);

    std::string_view getDesc() const override { return m_pDesc; }
    bool isUnscanned() const override { return true; }

private:
    friend class TreeArena;
    FSUnscannedItem(std::string_view name, FolderSystemItem* folder, std::string_view desc,
                    std::int64_t size);
    ~FSUnscannedItem() = default;

    std::string_view m_pDesc; // into the tree's storage
};

/// An aggregate of the hidden files of one folder. A search passes over it.
class FileSystemHiddenItem final : public FileSystemItem {
public:
    /// Joins the parent, if there is one. Count and running sum start at 0.
    static FileSystemHiddenItem* initWithPathSize(TreeArena& arena, std::string_view name,
                                                  FolderSystemItem* parent, std::int64_t itemsize);
    /// The same, but the parent's children are left alone.
    static FileSystemHiddenItem* initWithPathSizeNoParent(TreeArena& arena, std::string_view name,
                                                          FolderSystemItem* parent, std::int64_t itemsize);
    /// Joins the parent. The running sum starts at `itemsize`; `withAddSize` is not read, since both hold the
    /// same value after a recount.
    static FileSystemHiddenItem* initWithPathSize(TreeArena& arena, std::string_view name,
                                                  FolderSystemItem* parent, std::int64_t itemsize,
                                                  std::uint64_t withHiddenCount, std::int64_t withAddSize);

    /// Counts one more entry of that many bytes.
    void addHiddenItem(std::int64_t size);
    void addFileSize(std::int64_t size) override { addHiddenItem(size); }
    /// Adds to the running sum alone: the count stays, and so do the folders above.
    void addFileSizeForAll(std::int64_t size) override { nAddSize += size; }
    std::uint64_t getHiddenCount() const { return mnhiddencount; }

    std::int64_t calctotalsize() override;
    std::int64_t calcTotalSizeWithMaxSizes(LevelSizes maxSizes, int withCurLevel) override;

    /// Gives the item another name, a copy; a view without data takes its name away.
    void setRelPath(std::string_view path);
    void setHiddenName() { setRelPath({}); }

    bool isHidden() const override { return true; }

private:
    friend class TreeArena;
    using FileSystemItem::FileSystemItem;
    ~FileSystemHiddenItem() = default;

    std::uint64_t mnhiddencount = 0; // entries added
    std::int64_t nAddSize = 0;       // their bytes
};

/// A home folder behind disk protection, which links to the volume that holds the real home.
class FileVaultDirItem final : public FileSystemItem {
public:
    /// Joins the parent, if there is one. `link` is the path of the volume.
    static FileVaultDirItem* initWithPathSize(TreeArena& arena, std::string_view name,
                                              FolderSystemItem* parent, std::int64_t itemsize,
                                              std::string_view link);

    void addFileSize(std::int64_t size) override { mnselfsize += size; }
    bool isFileVaultDir() const override { return true; }
    std::string_view getVolumeLinkPath() const { return linkVolumePath; }

private:
    friend class TreeArena;
    FileVaultDirItem(std::string_view name, FolderSystemItem* folder, std::int64_t itemsize,
                     std::string_view link);
    ~FileVaultDirItem() = default;

    std::string_view linkVolumePath; // into the tree's storage
};

/// A file or folder outside any tree, known by its absolute path. The hidden flag follows the name.
class FileSystemItemSirota final : public FileSystemItem {
public:
    static FileSystemItemSirota* initWithPathSize(TreeArena& arena, std::string_view name,
                                                  std::string_view abspath, std::int64_t itemsize, bool dir);

    std::string getFullPath() const override { return std::string(fullpath); }
    bool isDir() const override { return bDIR; }

private:
    friend class TreeArena;
    FileSystemItemSirota(std::string_view name, std::string_view abspath, std::int64_t itemsize, bool hidden,
                         bool dir);
    ~FileSystemItemSirota() = default;

    std::string_view fullpath; // into the storage
    bool bDIR;
};

} // namespace veltrano
