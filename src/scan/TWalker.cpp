#include "scan/TWalker.h"

#include "platform/ThreadPriority.h"
#include "scan/HandOverQueue.h"

#include <system_error>
#include <thread>
#include <utility>

namespace veltrano {

namespace {

// The conditions of a worker's lock.
constexpr int kIdle = 0;
constexpr int kWorkWaiting = 1;
constexpr int kLeft = 2;

} // namespace

TWalker::TWalker(std::uint32_t index, std::shared_ptr<WalkerTables> tables, CSWalkOperation& progrInt)
    : nID(index),
      m_pTables(std::move(tables)),
      m_pIterator(m_pTables->catalogue->makeIterator()),
      m_arena(m_pTables->storage->workerArena(static_cast<int>(index))),
      progressor(progrInt) {}

std::shared_ptr<TWalker> TWalker::initWithID(std::uint32_t nID, std::shared_ptr<WalkerTables> tables,
                                             CSWalkOperation& progrInt) {
    const std::shared_ptr<TWalker> walker(new TWalker(nID, std::move(tables), progrInt));
    walker->m_pTables->gWalkers[nID] = walker;
    return walker;
}

bool TWalker::start() {
    ownLock().lock();
    ownLock().unlockWithCondition(kIdle);
    m_pTables->threads.enter();
    try {
        // Detached: whoever needs to know asks isMainFinished or waits for the group, with a limit.
        std::thread([self = shared_from_this()] {
            lowerThreadPriority();
            self->main();
            self->m_pTables->threads.leave();
        }).detach();
    } catch (const std::system_error&) {
        mbMainFinished = true;
        m_pTables->threads.leave();
        ownLock().lock();
        ownLock().unlockWithCondition(kLeft);
        return false;
    }
    return true;
}

void TWalker::main() {
    // Both flags are set before the lock is tried by who sets them, and tested here after it is free again:
    // so whoever fails to wake this thread has told it in time.
    while (!BCancelled && bWORKing) {
        ownLock().lockWhenCondition(kWorkWaiting);
        if (pfsref) {
            IterateFolderStack();
            if (BCancelled)
                finalizeCancelWork();
            pfsref = false;
            endJob();
        }
        ownLock().unlockWithCondition(kIdle);
    }

    // Work may have been handed over between the cancel and this moment.
    ownLock().lock();
    if (std::exchange(pfsref, false)) {
        keepUnread(fsref);
        endJob();
    }
    ownLock().unlockWithCondition(kLeft);
    mbMainFinished = true;
}

bool TWalker::tryDispacthWork(stackitem2& folder, const std::string* withName, bool bAddFolderManually) {
    if (m_pTables->gBusyWalkers == static_cast<std::int32_t>(kWalkerCount))
        return false;
    for (std::size_t index = 0; index < kWalkerCount; ++index) {
        ConditionLock& lock = m_pTables->gWalkerLocks[index];
        if (index == nID || !lock.tryLockWhenCondition(kIdle))
            continue;
        const std::shared_ptr<TWalker> target = m_pTables->gWalkers[index].lock();
        if (!target) {
            lock.unlockWithCondition(kLeft);
            continue;
        }
        target->setFSRef(std::move(folder));
        target->setName(withName);
        target->setParentFolder(bAddFolderManually);
        lock.unlockWithCondition(kWorkWaiting);
        return true;
    }
    return false;
}

void TWalker::setFSRef(stackitem2&& folder) {
    fsref = std::move(folder);
    pfsref = true;
    m_bInJob = true;
    ++m_pTables->gBusyWalkers;
    m_pTables->group->enter();
}

void TWalker::setName(const std::string* name) {
    aname.clear();
    if (name)
        aname = *name;
}

void TWalker::setParentFolder(bool bAddFolderManually) {
    if (bAddFolderManually)
        send(fsref.bPack ? HandOver::Kind::Package : HandOver::Kind::Folder, fsref.item);
}

/// Once per job, by its worker or by whoever gives the worker up.
void TWalker::endJob() {
    if (!m_bInJob.exchange(false))
        return;
    // The last one out sees to it that all that was found is taken in.
    if (--m_pTables->gBusyWalkers == 0)
        m_pTables->queue->flush();
    m_pTables->group->leave();
}

void TWalker::abandon() {
    m_pTables->queue->refuse(nID);
    endJob();
}

void TWalker::finalizeWork(bool finished) {
    bWORKing = false;
    const bool idle = ownLock().tryLockWhenCondition(kIdle);
    HandOver message;
    message.kind = HandOver::Kind::LastMerge;
    message.bFinished = finished;
    message.nWorker = static_cast<std::uint8_t>(nID);
    m_pTables->queue->push(std::move(message));
    if (idle)
        ownLock().unlockWithCondition(kWorkWaiting);
}

void TWalker::cancelTwalker() {
    BCancelled = true;
    if (ownLock().tryLockWhenCondition(kIdle))
        ownLock().unlockWithCondition(kWorkWaiting);
}

/// The folders that are left are not read, but they are there: they stay in the tree with nothing in them.
void TWalker::finalizeCancelWork() {
    stackitem2 folder;
    while (mstack.pop(folder))
        keepUnread(folder);
}

} // namespace veltrano
