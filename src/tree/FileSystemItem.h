#pragma once

#include "tree/TreeObject.h"
#include "tree/TreeStorage.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace veltrano {

class FolderSystemItem;

/// The levels of which a volume's tree records the largest item: the root and 13 rings.
inline constexpr int kLevelCount = 14;

/// The sizes by level that a recount fills in; entry n is the largest total on level n, 0 the root.
using LevelSizes = std::span<std::int64_t, kLevelCount>;

/// A node of a scanned tree; on its own a plain file. Lies in its tree's storage, which owns it: it is made
/// by the two factories, is never destroyed by itself, and stays as small as it can, since a full disk has
/// millions. A worker makes it; from the merge on it is the main thread's, but for the name and the parent,
/// which never change and may be read from any thread.
class FileSystemItem : public TreeObject {
public:
    /// An item that joins its parent, if there is one. `timeCode` is cut to its low 4 bits; the name is
    /// copied.
    static FileSystemItem* initWithPathSize(TreeArena& arena, std::string_view name, FolderSystemItem* parent,
                                            std::int64_t itemsize, std::uint8_t withTimeCode,
                                            bool withHiddenFlag);

    /// The same, but the parent's children are left alone: the form of the workers.
    static FileSystemItem* initWithPathSizeNoParent(TreeArena& arena, std::string_view name,
                                                    FolderSystemItem* parent, std::int64_t itemsize,
                                                    std::uint8_t withTimeCode, bool withHiddenFlag);

    /// Age class, 0 to 7 (0: not known).
    std::uint8_t getTimeCode() const { return mntimeCode & kTimeCodeMask; }

    // The item's own flags, and whether it or any item above it has them. Only the topmost marked item stores
    // a flag; that is how a whole subtree is shown as hidden, trashed or collected.
    void setCollected(bool collected) { setFlag(kCollectedMask, collected); }
    bool isCollected() const { return (mntimeCode & kCollectedMask) != 0; }
    bool isTopCollected() const { return hasFlagUpwards(kCollectedMask); }
    void setHiddenFlag(bool hidden) { setFlag(kHiddenMask, hidden); }
    bool isHiddenFlag() const { return (mntimeCode & kHiddenMask) != 0; }
    bool isTopHiddenFlag() const { return hasFlagUpwards(kHiddenMask); }
    void setTrashFlag(bool trash) { setFlag(kTrashMask, trash); }
    bool isTrashFlag() const { return (mntimeCode & kTrashMask) != 0; }
    bool isTopTrashFlag() const { return hasFlagUpwards(kTrashMask); }

    /// Whether the item hangs in the growing tree, so that its size counts above; kept by RunningTotals.
    bool isCountedFlag() const { return (mntimeCode & kCountedMask) != 0; }
    void setCountedFlag(bool counted) { setFlag(kCountedMask, counted); }

    /// The item's own name, bytes; the whole path at a root; without data for an item that has no name.
    std::string_view relativePath() const { return {m_pName, m_nNameLength}; }

    virtual std::int64_t getWholeItemSize() const { return gettotalsize(); }
    virtual std::int64_t gettotalsize() const { return mnselfsize; }

    /// Recounts the subtree from its leaves and answers its size, never negative for a file.
    virtual std::int64_t calctotalsize() { return mnselfsize < 0 ? 0 : mnselfsize; }

    /// The names from the root down, joined. Any thread.
    std::string fullPath() const;
    virtual std::string getFullPath() const { return fullPath(); }
    /// What a person calls the item: the last component of its path.
    virtual std::string getDisplayName() const;

    FolderSystemItem* getParent() const { return parent; }
    void setParent(FolderSystemItem* folder) { parent = folder; }
    /// Whether `item` is the parent or any ancestor.
    bool isMyParent(const FileSystemItem* item) const;

    virtual bool isHidden() const { return false; } ///< An aggregate of hidden files, not the flag.
    virtual bool isDir() const { return false; }
    virtual bool isPack() const { return false; }
    virtual bool isVol() const { return false; }
    virtual bool isFileVaultDir() const { return false; }
    virtual bool isUnscanned() const { return false; }
    virtual bool isCutItem() const { return false; }

    /// The text shown for an item that stands for no file; a view without data for one that does.
    virtual std::string_view getDesc() const { return {}; }

    virtual std::size_t numberOfChildren() const { return 0; }
    virtual FileSystemItem* childAtIndex(std::size_t) const { return nullptr; }

    /// Adds to the size of this item, where it keeps a sum; nothing on a file.
    virtual void addFileSize(std::int64_t) {}
    /// addFileSize to this item and every one above it.
    virtual void addFileSizeForAll(std::int64_t size);

    virtual std::int64_t getChildDepth() const { return 0; }
    virtual std::int64_t calcChildDepth() const { return 0; }

    virtual void SetitsLeafPackage() {}
    /// The weight of an item that shrinks away or grows in; only such items have one.
    virtual void setdrawkoef(double) {}
    virtual double getdrawkoef() const { return 1.0; }

    /// Recounts like calctotalsize and notes the largest size of each level. `withCurLevel` is 0 at the root.
    virtual std::int64_t calcTotalSizeWithMaxSizes(LevelSizes maxSizes, int withCurLevel);

    /// Whether the search ends here: this item is the component at the offset. The slot, if there is one,
    /// takes the item when the offset is the last component.
    virtual bool findItemByPathComponents(std::span<const std::string_view> components,
                                          std::size_t withOffset, FileSystemItem** withResItem);
    /// The same for a folder that is wanted: a file in its place ends the search with no result.
    virtual bool findFolderItemByPathComponents(std::span<const std::string_view> components,
                                                std::size_t withOffset, FolderSystemItem** withResItem);

    // Collection marks: an item at one of the full paths is marked, or its mark and those below it are
    // cleared.
    virtual void updateAddedItemsToCollection(std::span<const std::string> paths);
    virtual void updateRemovedItemsInCollection(std::span<const std::string> paths);
    virtual void cleanCollected() { setCollected(false); }

    FileSystemItem* asFileSystemItem() override { return this; }
    virtual FolderSystemItem* asFolderSystemItem() { return nullptr; }

    static constexpr std::uint8_t kTimeCodeMask = 15;
    static constexpr std::uint8_t kCollectedMask = 16;
    static constexpr std::uint8_t kHiddenMask = 32;
    static constexpr std::uint8_t kTrashMask = 64;
    static constexpr std::uint8_t kCountedMask = 128;

protected:
    friend class TreeArena;
    /// `name` must live as long as the tree.
    FileSystemItem(std::string_view name, FolderSystemItem* folder, std::int64_t itemsize,
                   std::uint8_t timeCode, bool hidden);
    ~FileSystemItem() = default;

    void setRelativePath(std::string_view name);
    void recordLevelSize(LevelSizes maxSizes, int level) const;

private:
    void setFlag(std::uint8_t mask, bool set) {
        mntimeCode = static_cast<std::uint8_t>(set ? mntimeCode | mask : mntimeCode & ~mask);
    }
    bool hasFlagUpwards(std::uint8_t mask) const;

protected:
    FolderSystemItem* parent; // the folder above, null at a root; good as long as the tree stands
    std::int64_t mnselfsize;  // bytes

private:
    const char* m_pName; // into the tree's storage
    std::uint32_t m_nNameLength;
    std::uint8_t mntimeCode; // time code and flags, see the masks
};

} // namespace veltrano
