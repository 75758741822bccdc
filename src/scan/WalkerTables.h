#pragma once

#include "platform/FileCatalogue.h"
#include "scan/ConditionLock.h"
#include "scan/DispatchGroup.h"
#include "scan/ProgressGate.h"
#include "scan/TimeCode.h"
#include "scan/TrashFolders.h"
#include "tree/TreeStorage.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace veltrano {

class HandOverQueue;
class TWalker;

inline constexpr std::size_t kWalkerCount = TreeStorage::kWorkerCount;

/// What the workers of one scan and its operation share. One per scan, not one per process: the workers of a
/// scan that was stopped may still wind down while the next scan runs, or hang in a dead mount for hours, and
/// must never touch its locks and counters. Shared by the operation and every worker, so that a worker that
/// nobody waits for any more still stands on firm ground.
struct WalkerTables {
    WalkerTables(std::shared_ptr<FileCatalogue> fileCatalogue, const TimeCode& codes,
                 std::shared_ptr<const TrashFolders> trashFolders, std::shared_ptr<TreeStorage> treeStorage,
                 ProgressGate::Sign gateSign)
        : catalogue(std::move(fileCatalogue)),
          timeCode(codes),
          trash(std::move(trashFolders)),
          storage(std::move(treeStorage)),
          gate(std::move(gateSign)) {}

    // Constant after construction.
    const std::shared_ptr<FileCatalogue> catalogue;
    const TimeCode timeCode;
    const std::shared_ptr<const TrashFolders> trash;
    const std::shared_ptr<TreeStorage> storage; // each worker writes into the arena of its index
    const ProgressGate::Sign gate;
    const std::shared_ptr<DispatchGroup> group = std::make_shared<DispatchGroup>(); // jobs and hand-overs
    std::shared_ptr<HandOverQueue> queue; // set before the first worker

    /// By index. Condition 0: idle. 1: work has been handed over, or the worker is to leave. 2: it has left.
    std::array<ConditionLock, kWalkerCount> gWalkerLocks{ConditionLock(2), ConditionLock(2), ConditionLock(2),
                                                         ConditionLock(2)};
    /// The workers by index, entered before the first job is handed over.
    std::array<std::weak_ptr<TWalker>, kWalkerCount> gWalkers;
    /// Workers that have a job, from the moment it is handed to them, so that it is 0 only when nobody reads
    /// and nothing is left to read.
    std::atomic<std::int32_t> gBusyWalkers{0};
    /// Folders and files seen.
    std::atomic<std::int32_t> gScanFolderCount{0};
    std::atomic<std::int32_t> gScanFileCount{0};

    /// The workers whose threads run.
    DispatchGroup threads;
};

} // namespace veltrano
