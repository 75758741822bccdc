#pragma once

#include "tree/FileSystemItem.h"
#include "tree/VolumeFolderProtocol.h"

namespace veltrano {

/// A folder or a package of a scanned tree. A package is a folder whose children are the shared marker: it
/// has no child nodes, and its size is nAddSize, the running sum of all that lies inside. Owned by its tree's
/// storage. Main thread, but for creation by a worker.
class FolderSystemItem : public FileSystemItem, public VolumeFolderProtocol {
public:
    /// Joins the parent, if there is one. A hidden folder whose name ends in a trash folder's name gets the
    /// trash flag.
    static FolderSystemItem* initWithPathSize(TreeArena& arena, std::string_view name,
                                              FolderSystemItem* parent, std::int64_t itemsize, bool bPack,
                                              std::uint8_t withTimeCode, bool withHiddenFlag);
    /// The same, but the parent's children are left alone.
    static FolderSystemItem* initWithPathSizeNoParent(TreeArena& arena, std::string_view name,
                                                      FolderSystemItem* parent, std::int64_t itemsize,
                                                      bool bPack, std::uint8_t withTimeCode,
                                                      bool withHiddenFlag);
    /// Takes over an array of the same storage as its children and becomes their parent; does not join its
    /// own and makes no trash test. A package ignores the array.
    static FolderSystemItem* initWithPathSize(TreeArena& arena, std::string_view name,
                                              FolderSystemItem* parent, std::int64_t itemsize, bool bPack,
                                              ChildArray* withChildren, std::uint8_t withTimeCode,
                                              bool withHiddenFlag);

    // Children. None of these moves a total, but for removeChildAndRecalc.
    const ChildArray* childrenArray() const override { return children; }
    bool containsObject(const FileSystemItem* item) const;
    /// Appends. Never to a package.
    void addChild(FileSystemItem* child);
    /// Appends all of `batch`. An array that lies in this tree's storage may become the folder's own, so it
    /// must not be used afterwards.
    void addChildren(ChildArray* batch);
    void removeChild(const FileSystemItem* child);
    virtual void removeChildAndRecalc(FileSystemItem* child);
    void replaceChild(const FileSystemItem* child, FileSystemItem* toNewChild);
    std::size_t numberOfChildren() const override;
    /// Null past the end and for a package.
    FileSystemItem* childAtIndex(std::size_t index) const override;

    /// Change the size here and in every folder above.
    void decreaseTotalSize(std::int64_t size) { increaseTotalSize(-size); }
    void increaseTotalSize(std::int64_t size);
    void addFileSize(std::int64_t size) override { mnselfsize += size; }
    /// Packages: adds to the running sum. On a plain folder a misuse, which is told on the console.
    void addFileSizeForAll(std::int64_t size) override;
    /// A package's running sum, bytes.
    std::int64_t getAddSize() const { return nAddSize; }

    std::int64_t calctotalsize() override;
    virtual std::int64_t calctotalsizeex() { return calctotalsize(); }
    std::int64_t calcTotalSizeWithMaxSizes(LevelSizes maxSizes, int withCurLevel) override;
    std::int64_t calcChildDepth() const override;
    /// As calcChildDepth; while a scan runs, the root answers what the merges keep, without a walk.
    std::int64_t getChildDepth() const override;

    /// What calcLevelsToParent answers at a root, so that asking for a stranger comes out negative.
    static constexpr std::int64_t kNoSuchParent = -1000;
    /// Steps up to `item`: 1 for the parent. Negative if it is not above this folder.
    std::int64_t calcLevelsToParent(const FileSystemItem* item) const;

    void SetitsLeafPackage() override;
    bool isDir() const override { return true; }
    bool isPack() const override { return children == &packageMarker; }
    bool isVol() const override { return false; }
    bool isMe(const TreeObject* object) const override;
    TreeObject* getObject() override { return this; }
    FolderSystemItem* getTopParent() override;
    bool isScanned() const override { return true; }
    bool isNotScannedVolume() const override { return false; }
    bool getUseFreeSector() const override { return false; }
    void setUseFreeSector(bool) override {}
    virtual void initSizesByLevels() {}
    bool isMaxSizesValid() const override { return false; }
    const std::int64_t* getMaxSizesByLevels() const override { return nullptr; }
    /// Notes a size on a level of the table, where there is one. Under the tree's lock.
    virtual void raiseSizeOnLevel(std::int64_t, std::int64_t) {}

    std::int64_t getWholeItemSize() const override { return gettotalsize(); }
    std::int64_t getChildrenCountedSize() const override { return gettotalsize(); }
    std::int64_t getOccSize() const override { return gettotalsize(); }
    std::int64_t getTheSize() const override { return gettotalsize(); }
    double getFullRatio() const override { return 1.0; }

    // Search by path, see FolderSearch.cpp. Paths are absolute; components are compared byte by byte.
    FileSystemItem* getItemByFilePath(std::string_view path) override;
    bool findItemByPathComponents(std::span<const std::string_view> components, std::size_t withOffset,
                                  FileSystemItem** withResItem) override;
    bool findFolderItemByPathComponents(std::span<const std::string_view> components, std::size_t withOffset,
                                        FolderSystemItem** withResItem) override;
    /// The folder at a path of this tree; missing folders are made. Null where a file or package is in the
    /// way or the path is not below this folder.
    FolderSystemItem* getFolderItemByFolderPath(std::string_view path);
    /// Makes one folder below the other for the components from the offset on, and answers the deepest. Null
    /// for an offset past the end and in a package, where nothing is made.
    FolderSystemItem* createFolderItemByComponents(std::span<const std::string_view> components,
                                                   std::size_t withOffset);

    // Collection marks by full path. A collected folder's descendants carry no mark of their own.
    void updateAddedItemsToCollection(std::span<const std::string> paths) override;
    void updateRemovedItemsInCollection(std::span<const std::string> paths) override;
    void cleanCollected() override;

    // The two bases answer these alike.
    FolderSystemItem* getParent() const override { return parent; }
    std::string_view relativePath() const override { return FileSystemItem::relativePath(); }
    std::string getFullPath() const override { return fullPath(); }
    std::string getDisplayName() const override { return FileSystemItem::getDisplayName(); }
    std::uint8_t getTimeCode() const override { return FileSystemItem::getTimeCode(); }
    bool isCollected() const override { return FileSystemItem::isCollected(); }
    bool isTopCollected() const override { return FileSystemItem::isTopCollected(); }
    bool isHiddenFlag() const override { return FileSystemItem::isHiddenFlag(); }
    bool isTopHiddenFlag() const override { return FileSystemItem::isTopHiddenFlag(); }
    bool isTopTrashFlag() const override { return FileSystemItem::isTopTrashFlag(); }

    FolderSystemItem* asFolderSystemItem() override { return this; }

protected:
    friend class TreeArena;
    FolderSystemItem(std::string_view name, FolderSystemItem* folder, std::int64_t itemsize,
                     std::uint8_t timeCode, bool hidden);
    ~FolderSystemItem() = default;

private:
    static ChildArray packageMarker; // told by its address; always empty

    ChildArray* children = nullptr; // null until the first child; the marker for a package
    std::int64_t nAddSize = 0;      // packages only, bytes
};

} // namespace veltrano
