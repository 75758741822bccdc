#include "scan/CSWalkOperation.h"
#include "scan/TWalker.h"

#include <algorithm>
#include <mutex>

namespace veltrano {

void TWalker::receive(HandOver& message) {
    switch (message.kind) {
    case HandOver::Kind::Folder:
        folderArray.push_back(message.block.folder);
        break;
    case HandOver::Kind::Package:
        packageArray.push_back(message.block.folder);
        break;
    case HandOver::Kind::Leaves:
        fileArray.push_back(std::move(message.block));
        break;
    default:
        break;
    }
}

std::size_t TWalker::getArrayItemCount() const {
    std::size_t count = folderArray.size() + packageArray.size() + folderHiddens.size();
    for (const LeavesBlock& block : fileArray)
        count += block.files->count;
    return count;
}

bool TWalker::doUpdateProgress() {
    if (!progressor.askProgressGate())
        return false;
    m_bThroughGate = true;
    doForceUpdateProgress(true);
    return true;
}

void TWalker::doForceUpdateProgress(bool scanning) {
    if (!scanning)
        mbFIN = true;
    m_nPorog = mpBiggestFilesController ? mpBiggestFilesController->getPorogforScan() : 0;
    m_bListChanged = false;
    m_mergeStep = MergeStep::Files;
    m_nMergeIndex = 0;
}

bool TWalker::goOnMerging(TurnBudget& budget) {
    {
        const std::lock_guard guard(m_pTables->storage->lock());
        if (!linkAll(budget))
            return false;
    }
    report();
    return true;
}

/// Links and weighs everything collected, step by step; false if the turn's time is up before.
bool TWalker::linkAll(TurnBudget& budget) {
    for (;;) {
        if (!doMergeStep(budget))
            return false;
        m_nMergeIndex = 0;
        if (m_mergeStep == MergeStep::Offer)
            return true;
        m_mergeStep = static_cast<MergeStep>(static_cast<int>(m_mergeStep) + 1);
    }
}

bool TWalker::doMergeStep(TurnBudget& budget) {
    switch (m_mergeStep) {
    case MergeStep::Files:
        return linkFiles(budget);
    case MergeStep::Folders:
        return linkFolders(folderArray, budget);
    case MergeStep::RememberPackages:
        allPackagesArray.insert(allPackagesArray.end(), packageArray.begin(), packageArray.end());
        return true;
    case MergeStep::Packages:
        return linkFolders(packageArray, budget);
    case MergeStep::Hiddens:
        return linkFolders(folderHiddens, budget);
    case MergeStep::Empty:
        fileArray.clear();
        folderArray.clear();
        packageArray.clear();
        folderHiddens.clear();
        return true;
    case MergeStep::Weigh:
        return progressor.weighGrownPackages(budget);
    case MergeStep::Offer:
        return offerPackages(budget);
    }
    return true;
}

bool TWalker::linkFiles(TurnBudget& budget) {
    for (; m_nMergeIndex < fileArray.size(); ++m_nMergeIndex) {
        if (budget.isSpent())
            return false;
        linkBlock(fileArray[m_nMergeIndex]);
    }
    return true;
}

/// Links the files of one folder without looking at them: their sum and the largest came along. Only where
/// one may be among the biggest are they offered one by one.
void TWalker::linkBlock(LeavesBlock& block) {
    FolderSystemItem& folder = *block.folder;
    const std::size_t before = folder.numberOfChildren();
    if (block.transient && !folder.childrenArray()) {
        // The folder would keep the array, and this one is not the tree's.
        ChildArray* const copy = m_pTables->storage->mainArena().makeChildArray(block.files->count);
        std::copy(block.files->begin(), block.files->end(), copy->items());
        copy->count = block.files->count;
        folder.addChildren(copy);
    } else {
        folder.addChildren(block.files);
    }
    progressor.totals().leavesLinked(folder, block.sum, block.largest);
    if (mpBiggestFilesController && block.largest >= m_nPorog)
        offerFiles(folder, before);
}

void TWalker::offerFiles(FolderSystemItem& folder, std::size_t from) {
    for (std::size_t index = from; index < folder.numberOfChildren(); ++index) {
        FileSystemItem* const file = folder.childAtIndex(index);
        if (file->gettotalsize() >= m_nPorog &&
            mpBiggestFilesController->tryAddtoScanArray(file, m_nPorog, false))
            m_bListChanged = true;
    }
}

bool TWalker::linkFolders(std::vector<FolderSystemItem*>& folders, TurnBudget& budget) {
    for (; m_nMergeIndex < folders.size(); ++m_nMergeIndex) {
        if (budget.isSpent())
            return false;
        FolderSystemItem& folder = *folders[m_nMergeIndex];
        // The root comes along as the first worker's folder and has nowhere to go.
        if (FolderSystemItem* const above = folder.getParent()) {
            above->addChild(&folder);
            progressor.totals().folderLinked(folder);
        }
    }
    return true;
}

/// Packages grow as their contents arrive, so they are offered anew at every merge.
bool TWalker::offerPackages(TurnBudget& budget) {
    if (!mpBiggestFilesController)
        return true;
    for (; m_nMergeIndex < allPackagesArray.size(); ++m_nMergeIndex) {
        if (budget.isSpent())
            return false;
        FolderSystemItem* const package = allPackagesArray[m_nMergeIndex];
        if (package->gettotalsize() >= m_nPorog &&
            mpBiggestFilesController->tryAddtoScanArray(package, m_nPorog, true))
            m_bListChanged = true;
    }
    return true;
}

void TWalker::report() {
    progressor.tryUpdateProgress2();
    // Whoever hears of the progress may have let go of the whole scan.
    if (progressor.isForgotten())
        return;
    if (m_bListChanged && !mbFIN)
        mpBiggestFilesController->tryUpdateTableByScanning();
    if (m_bThroughGate)
        progressor.closeProgressGate();
    m_bThroughGate = false;
}

} // namespace veltrano
