#include "scan/CSWalkOperation.h"

#include "platform/ThreadPriority.h"
#include "scan/HandOverQueue.h"
#include "scan/TWalker.h"

#include <algorithm>
#include <system_error>
#include <thread>
#include <utility>

namespace veltrano {

namespace {

constexpr double kPollSeconds = 0.005;
/// How long the workers of a cancelled scan are waited for; one that hangs longer is left behind.
constexpr double kFinalWaitSeconds = 1.0;
/// Updates in the course of a scan of known size.
constexpr std::uint64_t kUpdateSteps = 3600;

/// Whether the system can take the path at all.
bool isUsablePath(std::string_view path) {
    return !path.empty() && path.find('\0') == std::string_view::npos;
}

} // namespace

std::shared_ptr<CSWalkOperation>
CSWalkOperation::initWithRoot(std::shared_ptr<FolderSystemItem> root, CModel& parent, MainLoop& mainLoop,
                              std::shared_ptr<FileCatalogue> catalogue, const TimeCode& timeCode,
                              std::shared_ptr<const TrashFolders> trash,
                              std::shared_ptr<const ScanFacts> facts, ProgressGate::Sign gate) {
    const std::shared_ptr<CSWalkOperation> operation(
        new CSWalkOperation(std::move(root), parent, mainLoop, std::move(catalogue), timeCode,
                            std::move(trash), std::move(facts), std::move(gate)));
    // The queue may outlive the operation in a worker's hands.
    operation->m_pTables->queue = std::make_shared<HandOverQueue>(mainLoop, operation->m_pTables->group,
                                                                  [weak = operation->weak_from_this()] {
                                                                      if (const auto self = weak.lock())
                                                                          self->consume();
                                                                  });
    return operation;
}

CSWalkOperation::CSWalkOperation(std::shared_ptr<FolderSystemItem> root, CModel& parent, MainLoop& mainLoop,
                                 std::shared_ptr<FileCatalogue> catalogue, const TimeCode& timeCode,
                                 std::shared_ptr<const TrashFolders> trash,
                                 std::shared_ptr<const ScanFacts> facts, ProgressGate::Sign gate)
    : resultroot(std::move(root)),
      startPath(resultroot->getFullPath()),
      m_mainLoop(mainLoop),
      m_pFacts(std::move(facts)),
      m_pTables(std::make_shared<WalkerTables>(std::move(catalogue), timeCode, std::move(trash),
                                               TreeStorage::of(resultroot.get()).shared_from_this(),
                                               std::move(gate))),
      mparent(&parent) {
    m_totals.emplace(*resultroot);
}

CSWalkOperation::~CSWalkOperation() = default;

void CSWalkOperation::start() {
    try {
        std::thread([self = shared_from_this()] { self->main(); }).detach();
    } catch (const std::system_error&) {
        // No thread is to be had: the scan is over with nothing found.
        sendToMain(HandOver::Kind::Ended);
    }
}

void CSWalkOperation::main() {
    lowerThreadPriority();
    tmpScan();
    sendToMain(HandOver::Kind::Ended);
}

void CSWalkOperation::mthscanStack() {
    m_pTables->gScanFolderCount = 0;
    m_pTables->gScanFileCount = 0;
    mpFoldersWithDeniedItems.clear();
    if (!isUsablePath(startPath))
        return;

    DispatchGroup& group = *m_pTables->group;
    if (createWalkers() && giveStartFolder()) {
        while (m_pTables->gBusyWalkers != 0 && !mbWasCancelled)
            group.wait(kPollSeconds);
        while (!group.wait(kPollSeconds) && !mbWasCancelled && !allWorkersFinished()) {
        }
    }
    const bool cancelled = mbWasCancelled;
    if (cancelled)
        giveUpHangingWorkers();

    for (const auto& walker : wlkrs)
        if (walker)
            walker->finalizeWork(!cancelled);
    group.wait(kFinalWaitSeconds);
    if (!cancelled) {
        for (const auto& walker : wlkrs)
            addFoldersWithDenied(walker->getFoldersWithDenied());
        sendToMain(HandOver::Kind::Explain);
        group.wait();
    }
    sendToMain(HandOver::Kind::Release);
    group.wait();
}

/// False if a cancel came first.
bool CSWalkOperation::createWalkers() {
    for (std::uint32_t index = 0; index < kWalkerCount; ++index) {
        const std::lock_guard guard(m_walkersMutex);
        if (mbWasCancelled)
            return false;
        auto walker = TWalker::initWithID(index, m_pTables, *this);
        walker->setBigController(mpBiggestFilesController);
        walker->setSize4Update(mnOcSize / kUpdateSteps);
        // Without a thread of its own it takes no work, and the others do it all.
        static_cast<void>(walker->start());
        wlkrs[index] = std::move(walker);
    }
    return true;
}

/// The last worker offers the start folder, and passes over itself: so the first one takes it.
bool CSWalkOperation::giveStartFolder() {
    stackitem2 start;
    start.item = resultroot.get();
    return wlkrs.back()->tryDispacthWork(start, &startPath, true);
}

bool CSWalkOperation::allWorkersFinished() {
    return std::all_of(wlkrs.begin(), wlkrs.end(),
                       [](const auto& walker) { return walker->isMainFinished(); });
}

/// Lets the workers of a cancelled scan deliver what they hold, so that it comes before their last merge. One
/// that does not come back within the limit hangs in the system, and what it delivers later is dropped.
void CSWalkOperation::giveUpHangingWorkers() {
    if (m_pTables->threads.wait(kFinalWaitSeconds))
        return;
    for (const auto& walker : wlkrs)
        if (walker && !walker->isMainFinished())
            walker->abandon();
}

void CSWalkOperation::addFoldersWithDenied(const std::vector<std::string>& folders) {
    mpFoldersWithDeniedItems.insert(mpFoldersWithDeniedItems.end(), folders.begin(), folders.end());
}

void CSWalkOperation::sendToMain(HandOver::Kind kind) {
    HandOver message;
    message.kind = kind;
    m_pTables->queue->push(std::move(message));
}

void CSWalkOperation::cancelWalking() {
    const std::lock_guard guard(m_walkersMutex);
    mbWasCancelled = true;
    for (const auto& walker : wlkrs)
        if (walker)
            walker->cancelTwalker();
}

} // namespace veltrano
