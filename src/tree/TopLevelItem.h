#pragma once

#include "platform/DeviceFacts.h"
#include "tree/FolderSystemItem.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace veltrano {

/// A date of an entry in whole seconds; nothing where the system has none.
using EntryDate = std::optional<std::chrono::sys_seconds>;

/// A sidebar entry: a volume or a folder before, during and after its scan. Knows what can be known without
/// scanning, and holds the scanned tree once there is one. Shared between the model's list, the sidebar and
/// whoever shows it, never copied. It fetches nothing: what the system knows of its path and device is handed
/// in. It has no children of its own; those are in the tree. Main thread.
class TopLevelItem : public TreeObject, public VolumeFolderProtocol {
public:
    /// Path and name are bytes, sizes bytes; both sizes are 0 for a folder.
    TopLevelItem(std::string initWithPath, std::string name, std::int64_t size, std::int64_t nfreesize,
                 std::int64_t nodes);
    virtual ~TopLevelItem() = default;

    const std::string& getName() const { return pname; }
    const std::string& getPath() const { return ppath; }
    std::int64_t getsize() const { return nsize; }
    std::int64_t getfsize() const { return nfreesize; }
    std::int64_t getnodescount() const { return nnodes; }
    std::int64_t getValence() const { return mnValence; }

    /// Creation, last change of the content and last access of the path.
    const EntryDate& getCreatedDate() const { return pcreatedDate; }
    const EntryDate& getModDate() const { return pmodDate; }
    const EntryDate& getAccDate() const { return paccDate; }

    /// Takes the valence and the three dates. Of a date only the low seconds count.
    void initDates(const PathFacts& facts);

    /// Whether this entry still tells what the other one, made anew, tells: sizes within one part in ten
    /// thousand, everything else exactly, and the same kind of entry. Null is never equal. Not symmetric at
    /// the very edge of the tolerance, which is measured from the other.
    virtual bool isEqual(const TopLevelItem* other) const;

    /// Takes over everything that the other entry knows without a scan. The tree and whether its scan ran to
    /// the end stay.
    virtual void setPropsFrom(const TopLevelItem& other);

    /// The tree of the last scan, which the entry keeps alive.
    const std::shared_ptr<FolderSystemItem>& getScannedRoot() const { return scannedRoot; }
    void setScannedRoot(std::shared_ptr<FolderSystemItem> root) { scannedRoot = std::move(root); }
    void setScanCompleted(bool completed) { mbScanCompleted = completed; }
    bool isScanCompleted() const { return mbScanCompleted; }

    virtual bool isFolder() const { return false; }
    virtual bool isNetworkVol() const { return false; }
    std::int64_t gettotalsize() const { return nsize - nfreesize; }
    bool isTrashFlag() const { return false; }

    FolderSystemItem* getParent() const override { return nullptr; }
    FolderSystemItem* getTopParent() override { return nullptr; }
    std::string_view relativePath() const override { return pname; }
    std::string getFullPath() const override { return ppath; }
    /// The name, so that a volume is called the same wherever it is shown; without one the last component of
    /// the path.
    std::string getDisplayName() const override;
    std::int64_t getOccSize() const override { return gettotalsize(); }
    std::int64_t getChildrenCountedSize() const override { return gettotalsize(); }
    std::int64_t getWholeItemSize() const override { return nsize; }
    /// 1.0 where the capacity is below 1.
    double getFullRatio() const override;
    std::int64_t getTheSize() const override;
    bool getUseFreeSector() const override { return false; }
    void setUseFreeSector(bool) override {}
    std::int64_t getChildDepth() const override { return 0; }
    std::int64_t calcChildDepth() const override { return 0; }
    bool isMaxSizesValid() const override { return false; }
    const std::int64_t* getMaxSizesByLevels() const override { return nullptr; }
    const ChildArray* childrenArray() const override { return nullptr; }
    std::size_t numberOfChildren() const override { return 0; }
    FileSystemItem* childAtIndex(std::size_t) const override { return nullptr; }
    bool isVol() const override { return false; }
    bool isNotScannedVolume() const override { return false; }
    /// Never, not even with itself: an entry is no node of a tree.
    bool isMe(const TreeObject*) const override { return false; }
    TreeObject* getObject() override { return this; }
    FileSystemItem* getItemByFilePath(std::string_view path) override;
    std::uint8_t getTimeCode() const override { return 0; }
    bool isScanned() const override { return scannedRoot != nullptr; }
    bool isCollected() const override { return false; }
    bool isTopCollected() const override { return false; }
    bool isHiddenFlag() const override { return false; }
    bool isTopHiddenFlag() const override { return false; }
    bool isTopTrashFlag() const override { return false; }

    // Forwarded to the tree; nothing without one.
    void updateAddedItemsToCollection(std::span<const std::string> paths);
    void updateRemovedItemsInCollection(std::span<const std::string> paths);

    TopLevelItem* asTopLevelItem() override { return this; }

private:
    std::shared_ptr<FolderSystemItem> scannedRoot;
    std::string pname;
    std::string ppath;
    EntryDate pcreatedDate;
    EntryDate pmodDate;
    EntryDate paccDate;
    std::int64_t nsize;     // bytes
    std::int64_t nfreesize; // bytes
    std::int64_t nnodes;
    std::int64_t mnValence = 0;
    bool mbScanCompleted = false;
};

/// A mounted volume, with what is known of its device. A text that is missing is not the same as an empty
/// one. `writeble` is the system's spelling.
class VolumeItem final : public TopLevelItem {
public:
    using TopLevelItem::TopLevelItem;

    /// Takes the facts of the device; what they lack is cleared. Answers whether there is a description of
    /// the device at all.
    bool getDeepInfo(const DeviceFacts& facts);

    /// Whether two volumes belong in one group of the sidebar: both without a protocol, or with the same
    /// protocol and class of medium.
    bool ifHavetheSameChars(const VolumeItem& other) const;

    bool isEqual(const TopLevelItem* other) const override;
    /// Whether the chart shows the free space stays too.
    void setPropsFrom(const TopLevelItem& other) override;

    bool isVol() const override { return true; }
    bool isNotScannedVolume() const override { return true; }
    /// A volume without a protocol.
    bool isNetworkVol() const override { return !DADeviceProtocol.has_value(); }
    bool getUseFreeSector() const override { return bUseFreeSector; }
    void setUseFreeSector(bool use) override { bUseFreeSector = use; }

    bool getRemovable() const { return removable; }
    void setRemovable(bool set) { removable = set; }
    bool getWriteble() const { return writeble; }
    void setWriteble(bool set) { writeble = set; }
    bool getUnmountable() const { return unmountable; }
    void setUnmountable(bool set) { unmountable = set; }
    bool getEjectable() const { return bEjectable; }
    void setEjectable(bool set) { bEjectable = set; }
    bool getAutomounted() const { return bAutomounted; }
    void setAutomounted(bool set) { bAutomounted = set; }

    /// Counts that the volume keeps itself; 0 where it keeps none.
    std::int64_t getFilesCount() const { return nFiles; }
    std::int64_t getFoldersCount() const { return nFolders; }
    /// Whether the system was started from this volume.
    bool isBootable() const { return bootable; }
    /// 1 inside the machine, 0 outside, -1 not known.
    std::int64_t isInternal() const { return bInternal; }
    /// 0 fixed or unknown, 1 CD, 2 DVD.
    std::uint32_t getMediaClass() const { return mMediaClass; }

    const std::string& getMpBSDName() const { return mpBSDName; }
    const std::optional<std::string>& getDADeviceProtocol() const { return DADeviceProtocol; }
    const std::optional<std::string>& getDADeviceModel() const { return DADeviceModel; }
    const std::optional<std::string>& getDAMediaWritable() const { return DAMediaWritable; }
    const std::optional<std::string>& getDAVolumeKind() const { return DAVolumeKind; }
    void setDAVolumeKind(std::optional<std::string> kind) { DAVolumeKind = std::move(kind); }

private:
    bool bUseFreeSector = false;
    bool removable = false;
    bool writeble = false;
    bool unmountable = false;
    bool bEjectable = false;
    bool bAutomounted = false;
    std::int64_t nFiles = 0;
    std::int64_t nFolders = 0;
    bool bootable = false;
    std::int64_t bInternal = -1; // not known
    std::uint32_t mMediaClass = 0;
    std::string mpBSDName;
    std::optional<std::string> DADeviceProtocol;
    std::optional<std::string> DADeviceModel;
    std::optional<std::string> DAMediaWritable;
    std::optional<std::string> DAVolumeKind;
};

/// A folder that the user picked.
class FolderItem final : public TopLevelItem {
public:
    using TopLevelItem::TopLevelItem;

    bool isFolder() const override { return true; }
};

} // namespace veltrano
