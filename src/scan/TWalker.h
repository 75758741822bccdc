#pragma once

#include "platform/FileCatalogue.h"
#include "scan/FolderStack.h"
#include "scan/HandOver.h"
#include "scan/TurnBudget.h"
#include "scan/WalkerTables.h"
#include "tree/BiggestFilesSink.h"
#include "tree/FolderSystemItem.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veltrano {

class CSWalkOperation;

/// One of the four threads that read the disk. It reads folders one after the other, makes items without
/// linking them, gives subfolders to idle workers and hands everything to the main thread, where the same
/// object collects it and links it into the tree, in merges. So the object has two halves that share no
/// field.
///
/// Shared between its operation and its own thread: the thread is never waited for longer than a second after
/// a cancel, since it may hang in a dead mount.
class TWalker : public std::enable_shared_from_this<TWalker> {
public:
    /// Enters itself in the tables; the operation outlives every merge.
    static std::shared_ptr<TWalker> initWithID(std::uint32_t nID, std::shared_ptr<WalkerTables> tables,
                                               CSWalkOperation& progrInt);
    TWalker(const TWalker&) = delete;
    TWalker& operator=(const TWalker&) = delete;

    void setBigController(BiggestFilesSink* controller) { mpBiggestFilesController = controller; }
    /// Bytes between two requests for an update; 0 to count entries instead.
    void setSize4Update(std::uint64_t size) { mnSize4Update = size; }

    /// Starts the thread, which waits for work. False if the system has no thread to give; the worker then
    /// takes no work. Operation's thread.
    [[nodiscard]] bool start();

    /// Offers a folder to an idle worker other than this one, lowest index first; answers whether one took
    /// it, which moves it away. `withName` is the path of a start folder, else null. `bAddFolderManually`:
    /// the folder's item is handed to the main thread as the target's. Any worker's thread, or the
    /// operation's.
    bool tryDispacthWork(stackitem2& folder, const std::string* withName, bool bAddFolderManually);

    /// The end of the scan: one last merge, and the thread leaves. Operation's thread.
    void finalizeWork(bool finished);

    /// Makes the thread leave as soon as it sees it: before the next read, or at the next entry. Any thread.
    void cancelTwalker();

    /// Gives up a worker that does not come back: what it was doing no longer counts as under way, and what
    /// it may still deliver is dropped. Operation's thread.
    void abandon();

    bool isMainFinished() const { return mbMainFinished; }
    /// Entries and bytes that this worker has read. Any thread.
    std::uint32_t getfound() const { return mnfound.load(std::memory_order_relaxed); }
    std::int64_t getsz() const { return mnsz.load(std::memory_order_relaxed); }
    /// Full paths. After the thread's last job.
    const std::vector<std::string>& getFoldersWithDenied() const { return foldersWithDeniedItems; }

    // The merge, TWalkerMerge.cpp. Main thread.

    /// Collects what the worker has handed over.
    void receive(HandOver& message);
    /// The items that wait for a merge, files one by one.
    std::size_t getArrayItemCount() const;
    /// Begins a merge if the gate lets it pass; answers whether it did.
    [[nodiscard]] bool doUpdateProgress();
    /// Begins a merge. `scanning` is false for the last merge of a cancelled scan.
    void doForceUpdateProgress(bool scanning);
    /// Goes on with the merge; answers whether it is complete. One worker merges at a time.
    [[nodiscard]] bool goOnMerging(TurnBudget& budget);

private:
    TWalker(std::uint32_t index, std::shared_ptr<WalkerTables> tables, CSWalkOperation& progrInt);

    // The thread, TWalker.cpp.
    void main();
    void setFSRef(stackitem2&& folder);
    void setName(const std::string* name);
    void setParentFolder(bool bAddFolderManually);
    void endJob();
    void finalizeCancelWork();
    ConditionLock& ownLock() { return m_pTables->gWalkerLocks[nID]; }

    // Reading, TWalkerReading.cpp. Own thread.
    CatalogueStatus IterateFolderStack();
    CatalogueStatus readFolder(stackitem2& folder);
    bool readEntries(stackitem2& folder, std::span<const CatalogueEntry> entries);
    std::int64_t ProcesFileSystemElement(const CatalogueEntry& entry, std::size_t withRef,
                                         const stackitem2& forParent, std::uint8_t withTimeCode);
    void processFolder(const CatalogueEntry& entry, std::size_t withRef, const stackitem2& forParent,
                       std::uint8_t withTimeCode);
    void processFile(const CatalogueEntry& entry, const stackitem2& forParent, std::uint8_t withTimeCode);
    std::string_view itemName(std::string_view catalogueName);
    void announce(stackitem2& folder);
    void keepUnread(stackitem2& folder) { announce(folder); }
    bool isUpdateDue(std::size_t entries);
    void deliver(const stackitem2& folder, bool folderEnded);
    void deliverLeaves(const stackitem2& folder, bool folderEnded);
    void send(HandOver::Kind kind, FolderSystemItem* folder);

    // Constant once the thread runs.
    const std::uint32_t nID;
    const std::shared_ptr<WalkerTables> m_pTables;
    const std::unique_ptr<CatalogueIterator> m_pIterator;
    TreeArena& m_arena;
    std::uint64_t mnSize4Update = 100'000'000; // bytes

    // Any thread.
    std::atomic<bool> bWORKing{true};
    std::atomic<bool> BCancelled{false};
    std::atomic<bool> mbMainFinished{false};
    std::atomic<bool> m_bInJob{false}; // counted in gBusyWalkers and the group
    std::atomic<std::int64_t> mnsz{0};
    std::atomic<std::uint32_t> mnfound{0};

    // The job, guarded by the condition lock of this index.
    stackitem2 fsref;
    bool pfsref = false; // work is waiting in fsref
    std::string aname;   // the path of the start folder, empty for every other job

    // Own thread.
    stack2 mstack;
    std::vector<std::string> foldersWithDeniedItems; // the operation's once the thread has no job left
    std::vector<FileSystemItem*> m_files;            // of the folder being read, not yet delivered
    std::int64_t m_nFilesSum = 0;                    // bytes; for a package, of its files
    std::int64_t m_nFilesLargest = 0;                // bytes
    std::uint32_t m_nSubfolders = 0;                 // of the folder being read
    std::int32_t m_nFilesSeen = 0;                   // in the read that is being dealt with
    bool m_bDelivered = false;                       // some of its files are under way already
    std::int64_t m_nRunningSize = 0;                 // bytes found in this job
    std::int64_t m_nSizeAtUpdate = 0;                // of those, at the last request
    std::size_t m_nEntriesSinceUpdate = 0;
    std::string m_nameBuffer;

    // Main thread.
    /// The steps of a merge, in their order.
    enum class MergeStep { Files, Folders, RememberPackages, Packages, Hiddens, Empty, Weigh, Offer };
    bool linkAll(TurnBudget& budget);
    bool doMergeStep(TurnBudget& budget);
    bool linkFiles(TurnBudget& budget);
    bool linkFolders(std::vector<FolderSystemItem*>& folders, TurnBudget& budget);
    void linkBlock(LeavesBlock& block);
    void offerFiles(FolderSystemItem& folder, std::size_t from);
    bool offerPackages(TurnBudget& budget);
    void report();

    CSWalkOperation& progressor;
    BiggestFilesSink* mpBiggestFilesController = nullptr;
    std::vector<LeavesBlock> fileArray;
    std::vector<FolderSystemItem*> folderArray;
    std::vector<FolderSystemItem*> packageArray;
    std::vector<FolderSystemItem*> folderHiddens;    // stays empty, but is merged
    std::vector<FolderSystemItem*> allPackagesArray; // every package of this worker in the scan
    bool mbFIN = false;                              // the last merge of a cancelled scan has begun
    MergeStep m_mergeStep = MergeStep::Files;
    std::size_t m_nMergeIndex = 0; // the next element of the step's array
    std::int64_t m_nPorog = 0;     // bytes, the list's threshold during this merge
    bool m_bListChanged = false;
    bool m_bThroughGate = false;
};

} // namespace veltrano
