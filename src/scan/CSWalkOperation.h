#pragma once

#include "platform/MainLoop.h"
#include "platform/ScanFacts.h"
#include "scan/HandOver.h"
#include "scan/TurnBudget.h"
#include "scan/WalkerTables.h"
#include "tree/BiggestFilesSink.h"
#include "tree/FolderSystemItem.h"
#include "tree/RunningTotals.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace veltrano {

class CModel;
class HandOverQueue;
class TWalker;

/// One scan, on a thread of its own. It walks nothing itself: it starts the four workers, gives the first one
/// the start path, waits for the end of all work, explains what could not be read and tells the model. On the
/// main thread the same object deals with what the workers hand over.
///
/// Shared by the model and its own thread. The model may forget it at any moment; the thread then runs out by
/// itself and nothing reaches the main thread any more.
class CSWalkOperation : public std::enable_shared_from_this<CSWalkOperation> {
public:
    /// A scan below a root that has no children yet. The model outlives the operation or forgets it; the loop
    /// outlives the model.
    static std::shared_ptr<CSWalkOperation>
    initWithRoot(std::shared_ptr<FolderSystemItem> root, CModel& parent, MainLoop& mainLoop,
                 std::shared_ptr<FileCatalogue> catalogue, const TimeCode& timeCode,
                 std::shared_ptr<const TrashFolders> trash, std::shared_ptr<const ScanFacts> facts,
                 ProgressGate::Sign gate);
    CSWalkOperation(const CSWalkOperation&) = delete;
    CSWalkOperation& operator=(const CSWalkOperation&) = delete;
    ~CSWalkOperation();

    /// Occupied bytes of what is scanned; sets the workers' pace of updates.
    void setOcSize(std::uint64_t size) { mnOcSize = size; }
    /// May be null.
    void setBigController(BiggestFilesSink* controller) { mpBiggestFilesController = controller; }

    /// Starts the thread.
    void start();

    /// Makes the workers stop and the operation end early. Returns at once. Main thread.
    void cancelWalking();

    /// The model goes, or wants to hear nothing more. Main thread; after cancelWalking.
    void forget();
    bool isForgotten() const { return mparent == nullptr; }

    /// Size counted so far, bytes. Main thread.
    std::int64_t getcountedsize() const { return nprogress; }
    bool isCancelled() const { return mbWasCancelled; }
    const std::shared_ptr<FolderSystemItem>& getRoot() const { return resultroot; }

    /// Adds an item for space that was not scanned, and its size to everything above it, also to what later
    /// merges build on. Main thread.
    void addUnscannedItem(FolderSystemItem& folder, std::string_view description, std::int64_t size);

    // What the workers' merges need. Main thread.
    RunningTotals& totals() { return *m_totals; }
    /// The totals stand: reports them.
    void tryUpdateProgress2();
    bool askProgressGate();
    void closeProgressGate();
    /// Brings the totals up to all that has arrived inside packages, of every worker. False if the turn's
    /// time is up before.
    [[nodiscard]] bool weighGrownPackages(TurnBudget& budget);

private:
    CSWalkOperation(std::shared_ptr<FolderSystemItem> root, CModel& parent, MainLoop& mainLoop,
                    std::shared_ptr<FileCatalogue> catalogue, const TimeCode& timeCode,
                    std::shared_ptr<const TrashFolders> trash, std::shared_ptr<const ScanFacts> facts,
                    ProgressGate::Sign gate);

    // The operation's thread.
    void main();
    void tmpScan() { mthscanStack(); }
    void mthscanStack();
    [[nodiscard]] bool createWalkers();
    bool giveStartFolder();
    void waitForWorkers();
    void giveUpHangingWorkers();
    void addFoldersWithDenied(const std::vector<std::string>& folders);
    void sendToMain(HandOver::Kind kind);
    bool allWorkersFinished();

    // The main thread, CSWalkOperationMerge.cpp.
    void consume();
    bool dealWith(HandOver& message);
    void receiveFromWorker(HandOver& message);
    void explain();
    void processFoldersWithDenied();
    FolderSystemItem& folderAboveHome();
    void end();

    // Constant after construction.
    const std::shared_ptr<FolderSystemItem> resultroot;
    const std::string startPath; // full path of the root
    MainLoop& m_mainLoop;        // main thread only
    const std::shared_ptr<const ScanFacts> m_pFacts;
    const std::shared_ptr<WalkerTables> m_pTables;
    std::uint64_t mnOcSize = 0; // bytes
    BiggestFilesSink* mpBiggestFilesController = nullptr;

    std::atomic<bool> mbWasCancelled{false};

    std::mutex m_walkersMutex;
    /// Guarded by the mutex while they are made and cancelled; given back on the main thread, since messages
    /// name them up to the end.
    std::array<std::shared_ptr<TWalker>, kWalkerCount> wlkrs;

    /// Gathered by the operation's thread, then the main thread's.
    std::vector<std::string> mpFoldersWithDeniedItems;

    // Main thread.
    CModel* mparent; // null once forgotten
    std::optional<RunningTotals> m_totals;
    std::int64_t nprogress = 0;      // bytes
    std::int64_t mnprevProgress = 0; // bytes, nprogress at the last report
    TWalker* m_pMerging = nullptr;   // the one whose merge is under way
    std::vector<FolderSystemItem*> m_grownPackages;
};

} // namespace veltrano
