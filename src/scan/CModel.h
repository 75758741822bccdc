#pragma once

#include "platform/FileCatalogue.h"
#include "platform/MainLoop.h"
#include "platform/NotificationCentre.h"
#include "platform/ScanFacts.h"
#include "platform/Volumes.h"
#include "scan/ProgressGate.h"
#include "scan/TimeCode.h"
#include "tree/BiggestFilesSink.h"
#include "tree/FolderSystemItem.h"
#include "tree/TopLevelItem.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veltrano {

class CSWalkOperation;
class TrashFolders;

/// Posted after each merge, ten times a second at most, and once at the end. Its object is a std::int64_t:
/// the bytes counted so far.
inline constexpr std::string_view DIUpdateProgressNotification = "DIUpdateProgressNotification";
/// The walk is over and was not cancelled. Its object is the CModel*.
inline constexpr std::string_view FinishWalkingVolume = "FinishWalkingVolume";
/// The walk is over and was cancelled. Its object is the CModel*.
inline constexpr std::string_view WalkingVolumeCanceled = "WalkingVolumeCanceled";

/// The one object through which the main controller reaches the scan engine: the mounted volumes, the root of
/// the result tree, the start and stop of scans, and three notifications. Lives as long as the main
/// controller. Main thread only; what a scan's own threads have to tell comes through the main loop. It may
/// go while a scan runs: nothing is delivered afterwards, and no thread is waited for.
class CModel {
public:
    /// Loop and centre outlive the model. The catalogue is shared, since a worker that hangs in a dead mount
    /// may outlive everything else. The volumes outlive the model.
    CModel(MainLoop& mainLoop, NotificationCentre& notifications, std::shared_ptr<FileCatalogue> catalogue,
           const TimeCode& timeCode, ScanFacts facts, Volumes& volumes);
    CModel(const CModel&) = delete;
    CModel& operator=(const CModel&) = delete;
    ~CModel();

    /// Starts a scan of the folder or volume at an absolute path (bytes) and answers the root of its growing
    /// tree. A scan that runs is cancelled first, without waiting for its end. `withOcSize` is the occupied
    /// size in bytes, 0 if not known: it sets the pace of updates. The controller may be null; else it
    /// outlives the scan.
    std::shared_ptr<FolderSystemItem> StartWalkWithPath(const std::string& path, std::uint64_t withOcSize,
                                                        BiggestFilesSink* withBigController);

    /// Cancels what runs and explains the space of a volume that was not scanned. Does not wait;
    /// WalkingVolumeCanceled follows. Nothing when no scan runs.
    void StopWalking();

    /// Lets go of the tree. Whoever else holds it keeps it.
    void ClearResultsTree();

    /// Builds the root for `startPath`: that of a volume if a volume lies at this very path, else of a
    /// folder.
    void initRootItem();

    /// Null before the first scan.
    const std::shared_ptr<FolderSystemItem>& getRootItem() const { return mresultroot; }

    /// The list itself, in the order of enumeration.
    std::vector<std::shared_ptr<VolumeItem>>& getVolumesInfo() { return arrVolumes; }

    /// The first volume whose path is equal byte by byte; null if there is none.
    std::shared_ptr<VolumeItem> getVolumeItemWithPath(std::string_view path) const;

    // The volumes. All of these answer at once from what the platform heard last. To compare with how things
    // stand, refresh the platform's volumes and call updateVolumesInfo when that is done.

    /// Empties the list and fills it anew. True.
    bool enumerateVolumes();

    /// Refreshes the entries in place. True if any has changed. False, with the list as it is, if volumes
    /// have come or gone (they come and go by events of their own), and false at the first entry that stands
    /// for another path, with the entries before it refreshed.
    bool updateVolumesInfo();

    /// Makes the entry of the volume mounted at a path and appends it, to the model's list if `inArray` is
    /// null. Null, and nothing appended, if no volume is mounted there or it tells of no space at all.
    std::shared_ptr<VolumeItem> addVolumeAtPath(std::string_view path,
                                                std::vector<std::shared_ptr<VolumeItem>>* inArray = nullptr);

    /// Takes the first entry of that path off the list. The entry's tree lives on with whoever holds it.
    void removeVolFromList(std::string_view path);

    /// Whether the file system is a local snapshot of the backup service, which is never listed.
    bool isSystemMTMFS(std::string_view path) const;

    /// Free bytes of the startup disk as a script of the application tells them, -1 if it does not.
    std::int64_t getSystemDiskFreeSize() const;

    /// Adds "Unscanned Disk Space" for what a volume holds beyond what was found; answers whether there was
    /// anything to add.
    bool addUnscannedItem();

    /// The path of the running scan; nothing when none runs or the last one was stopped. The controller
    /// clears it when it has dealt with the end of a scan.
    const std::optional<std::string>& getStartPath() const { return startPath; }
    void setStartPath(std::optional<std::string> path) { startPath = std::move(path); }

    /// Whether a scan runs. Every refusal asks this.
    bool getProcessing() const { return startPath.has_value(); }

    // What the operation reports, on the main thread.
    void updateprogress(const CSWalkOperation& operation);
    void walkfinished();
    void walkcanceled();
    /// The operation has ended and takes no further part; told just before walkfinished or walkcanceled.
    void operationEnded(const CSWalkOperation& operation);
    ProgressGate& getProgressGate() { return m_progressGate; }

private:
    using VolumeList = std::vector<std::shared_ptr<VolumeItem>>;

    const VolumeFacts* factsAtPath(std::string_view path) const;
    std::shared_ptr<VolumeItem> makeVolume(const VolumeFacts& facts) const;
    VolumeList listVolumes() const;

    MainLoop& m_mainLoop;
    NotificationCentre& m_notifications;
    std::shared_ptr<FileCatalogue> m_pCatalogue;
    TimeCode m_timeCode;
    std::shared_ptr<const TrashFolders> m_pTrash;
    std::shared_ptr<const ScanFacts> m_pFacts;
    Volumes& m_volumes;

    std::optional<std::string> startPath;
    std::vector<std::shared_ptr<VolumeItem>> arrVolumes;
    std::shared_ptr<FolderSystemItem> mresultroot;
    /// The operations that have not ended: one, or for a moment an old one beside the new.
    std::vector<std::shared_ptr<CSWalkOperation>> asyncQueue;
    ProgressGate m_progressGate;
};

} // namespace veltrano
