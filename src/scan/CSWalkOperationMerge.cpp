#include "scan/CModel.h"
#include "scan/CSWalkOperation.h"
#include "scan/HandOverQueue.h"
#include "scan/ScanDenied.h"
#include "scan/TWalker.h"
#include "tree/PathComponents.h"
#include "tree/SpecialItems.h"

namespace veltrano {

/// One turn of the main loop: deals with what has been handed over, as much as its time allows.
void CSWalkOperation::consume() {
    HandOverQueue& queue = *m_pTables->queue;
    TurnBudget budget(m_mainLoop);
    HandOver message;
    for (;;) {
        if (m_pMerging) {
            if (!m_pMerging->goOnMerging(budget))
                break;
            m_pMerging = nullptr;
        }
        if (budget.isSpent())
            break;
        if (!queue.next(message))
            return;
        if (!dealWith(message))
            return;
    }
    if (!queue.isClosed())
        queue.goOnLater();
}

/// False when the operation has ended.
bool CSWalkOperation::dealWith(HandOver& message) {
    switch (message.kind) {
    case HandOver::Kind::Explain:
        explain();
        break;
    case HandOver::Kind::Release: {
        const std::lock_guard guard(m_walkersMutex);
        wlkrs = {};
        break;
    }
    case HandOver::Kind::Ended:
        end();
        return false;
    default:
        receiveFromWorker(message);
    }
    return true;
}

void CSWalkOperation::receiveFromWorker(HandOver& message) {
    TWalker& walker = *wlkrs[message.nWorker];
    switch (message.kind) {
    case HandOver::Kind::PackageBytes: {
        FolderSystemItem* const package = message.block.folder;
        // Weighed at the next merge; equal values tell that it is not on the list yet.
        if (package->getAddSize() == package->gettotalsize())
            m_grownPackages.push_back(package);
        package->addFileSizeForAll(message.block.sum);
        break;
    }
    case HandOver::Kind::Update:
        if (walker.doUpdateProgress())
            m_pMerging = &walker;
        break;
    case HandOver::Kind::LastMerge:
        walker.doForceUpdateProgress(message.bFinished);
        m_pMerging = &walker;
        break;
    default:
        walker.receive(message);
    }
}

bool CSWalkOperation::weighGrownPackages(TurnBudget& budget) {
    while (!m_grownPackages.empty()) {
        if (budget.isSpent())
            return false;
        m_totals->packageGrew(*m_grownPackages.back());
        m_grownPackages.pop_back();
    }
    return true;
}

void CSWalkOperation::tryUpdateProgress2() {
    {
        // What the merges keep equals a recount of the whole tree from its leaves.
        const std::lock_guard guard(m_pTables->storage->lock());
        nprogress = resultroot->gettotalsize();
        m_totals->restoreLevels();
    }
    if (mparent)
        mparent->updateprogress(*this);
    mnprevProgress = nprogress;
}

bool CSWalkOperation::askProgressGate() {
    return mparent && mparent->getProgressGate().ask();
}

void CSWalkOperation::closeProgressGate() {
    if (mparent)
        mparent->getProgressGate().close();
}

void CSWalkOperation::addUnscannedItem(FolderSystemItem& folder, std::string_view description,
                                       std::int64_t size) {
    const std::lock_guard guard(m_pTables->storage->lock());
    FSUnscannedItem::initWithParent(m_pTables->storage->mainArena(), &folder, description, size);
    m_totals->leavesLinked(folder, size, size);
}

void CSWalkOperation::explain() {
    processFoldersWithDenied();
    tryUpdateProgress2();
    if (!isForgotten() && mpBiggestFilesController)
        mpBiggestFilesController->tryUpdateTableByScanning();
}

/// What a volume holds beyond what was found becomes one item, named for the users whose folders were denied.
/// On the main thread like every other link of a tree, so that nobody who walks it finds it changing.
void CSWalkOperation::processFoldersWithDenied() {
    const std::int64_t missing = resultroot->getOccSize() - resultroot->gettotalsize();
    if (!resultroot->isVol() || missing <= 0)
        return;
    std::string usersFolder = resultroot->getFullPath();
    appendPathComponent(usersFolder, m_pFacts->usersFolderName);
    std::vector<std::string> names;
    if (getUserNamesFromFolders(mpFoldersWithDeniedItems, usersFolder, names, IncludeCurUser::No,
                                m_pFacts->homeDirectory))
        addUnscannedItem(folderAboveHome(), filesOfUsersText(names), missing);
    else
        addUnscannedItem(*resultroot, kInaccessibleText, missing);
}

/// The folder that holds the current user's home, if it is in this tree; else the root.
FolderSystemItem& CSWalkOperation::folderAboveHome() {
    std::string_view home = m_pFacts->homeDirectory;
    const std::size_t separator = home.rfind('/');
    if (separator == std::string_view::npos)
        return *resultroot;
    FileSystemItem* const found =
        resultroot->getItemByFilePath(home.substr(0, std::max<std::size_t>(separator, 1)));
    FolderSystemItem* const folder = found ? found->asFolderSystemItem() : nullptr;
    return folder && !folder->isPack() ? *folder : *resultroot;
}

void CSWalkOperation::end() {
    CModel* const model = mparent;
    forget();
    model->operationEnded(*this);
    if (mbWasCancelled)
        model->walkcanceled();
    else
        model->walkfinished();
}

void CSWalkOperation::forget() {
    m_pTables->queue->close();
    mparent = nullptr;
    m_pMerging = nullptr;
    m_grownPackages.clear();
    m_totals.reset();
}

} // namespace veltrano
