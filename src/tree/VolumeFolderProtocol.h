#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace veltrano {

class FileSystemItem;
class FolderSystemItem;
class TreeObject;
struct ChildArray;

/// The common face of a tree folder and a sidebar entry, so that the chart can hold either as its root. Sizes
/// are bytes, paths and names are bytes as the system gives them. Main thread.
class VolumeFolderProtocol {
public:
    virtual FolderSystemItem* getParent() const = 0;
    virtual FolderSystemItem* getTopParent() = 0;
    virtual std::string_view relativePath() const = 0;
    virtual std::string getFullPath() const = 0;
    virtual std::string getDisplayName() const = 0;

    virtual std::int64_t getOccSize() const = 0;
    virtual std::int64_t getChildrenCountedSize() const = 0;
    virtual std::int64_t getWholeItemSize() const = 0;
    /// Occupied share of the whole, 1.0 for a folder.
    virtual double getFullRatio() const = 0;
    /// What a full turn of the chart stands for.
    virtual std::int64_t getTheSize() const = 0;
    /// Whether the chart shows the free space of this root as a blank arc.
    virtual bool getUseFreeSector() const = 0;
    virtual void setUseFreeSector(bool use) = 0;

    virtual std::int64_t getChildDepth() const = 0;
    virtual std::int64_t calcChildDepth() const = 0;
    virtual bool isMaxSizesValid() const = 0;
    /// kLevelCount sizes by level, or null. Copy them under the lock of the top parent's tree.
    virtual const std::int64_t* getMaxSizesByLevels() const = 0;

    /// Null while there is no child.
    virtual const ChildArray* childrenArray() const = 0;
    virtual std::size_t numberOfChildren() const = 0;
    virtual FileSystemItem* childAtIndex(std::size_t index) const = 0;

    virtual bool isVol() const = 0;
    virtual bool isNotScannedVolume() const = 0;
    virtual bool isMe(const TreeObject* object) const = 0;
    virtual TreeObject* getObject() = 0;
    /// The item at an absolute path in this root's tree, or null.
    virtual FileSystemItem* getItemByFilePath(std::string_view path) = 0;

    virtual std::uint8_t getTimeCode() const = 0;
    virtual bool isScanned() const = 0;
    virtual bool isCollected() const = 0;
    virtual bool isTopCollected() const = 0;
    virtual bool isHiddenFlag() const = 0;
    virtual bool isTopHiddenFlag() const = 0;
    virtual bool isTopTrashFlag() const = 0;

protected:
    VolumeFolderProtocol() = default;
    ~VolumeFolderProtocol() = default;
};

} // namespace veltrano
