#include "scan/CModel.h"

#include "scan/CSWalkOperation.h"
#include "scan/ScanDenied.h"
#include "scan/TrashFolders.h"
#include "tree/PathComponents.h"
#include "tree/SpecialItems.h"
#include "tree/VolumeSystemItem.h"

#include <algorithm>
#include <utility>

namespace veltrano {

CModel::CModel(MainLoop& mainLoop, NotificationCentre& notifications,
               std::shared_ptr<FileCatalogue> catalogue, const TimeCode& timeCode, ScanFacts facts,
               Volumes& volumes)
    : m_mainLoop(mainLoop),
      m_notifications(notifications),
      m_pCatalogue(std::move(catalogue)),
      m_timeCode(timeCode),
      m_pTrash(std::make_shared<TrashFolders>(facts.trashFolders)),
      m_pFacts(std::make_shared<ScanFacts>(std::move(facts))),
      m_volumes(volumes),
      m_progressGate(mainLoop) {}

CModel::~CModel() {
    StopWalking();
    for (const auto& operation : asyncQueue)
        operation->forget();
    ClearResultsTree();
}

std::shared_ptr<FolderSystemItem> CModel::StartWalkWithPath(const std::string& path, std::uint64_t withOcSize,
                                                            BiggestFilesSink* withBigController) {
    StopWalking();
    setStartPath(path);
    initRootItem();
    auto operation = CSWalkOperation::initWithRoot(mresultroot, *this, m_mainLoop, m_pCatalogue, m_timeCode,
                                                   m_pTrash, m_pFacts, m_progressGate.getSign());
    operation->setBigController(withBigController);
    operation->setOcSize(withOcSize);
    asyncQueue.push_back(operation);
    operation->start();
    return getRootItem();
}

void CModel::StopWalking() {
    if (asyncQueue.empty())
        return;
    for (const auto& operation : asyncQueue)
        operation->cancelWalking();
    setStartPath(std::nullopt);
    addUnscannedItem();
}

void CModel::ClearResultsTree() {
    mresultroot.reset();
}

void CModel::initRootItem() {
    ClearResultsTree();
    const std::string path = startPath.value_or(std::string());
    // Held until the root does.
    const std::shared_ptr<TreeStorage> storage = TreeStorage::create();
    TreeArena& arena = storage->mainArena();
    if (const auto volume = getVolumeItemWithPath(path)) {
        mresultroot = TreeStorage::hold(VolumeSystemItem::initWithPath(
            arena, path, volume->getsize(), volume->getfsize(), volume->getName()));
        return;
    }
    const bool hidden = lastPathComponent(path).starts_with('.');
    mresultroot = TreeStorage::hold(
        FolderSystemItem::initWithPathSizeNoParent(arena, path, nullptr, 0, false, 0, hidden));
    if (m_pTrash->contains(path))
        mresultroot->setTrashFlag(true);
}

std::shared_ptr<VolumeItem> CModel::getVolumeItemWithPath(std::string_view path) const {
    const auto found = std::find_if(arrVolumes.begin(), arrVolumes.end(),
                                    [&](const auto& volume) { return volume->getPath() == path; });
    return found == arrVolumes.end() ? nullptr : *found;
}

bool CModel::addUnscannedItem() {
    if (!mresultroot || !mresultroot->isVol())
        return false;
    const std::int64_t missing = mresultroot->getOccSize() - mresultroot->gettotalsize();
    if (missing <= 0)
        return false;
    const auto running = std::find_if(asyncQueue.begin(), asyncQueue.end(), [&](const auto& operation) {
        return operation->getRoot() == mresultroot;
    });
    if (running != asyncQueue.end()) {
        (*running)->addUnscannedItem(*mresultroot, kUnscannedText, missing);
        return true;
    }
    TreeStorage& storage = TreeStorage::of(mresultroot.get());
    const std::lock_guard guard(storage.lock());
    FSUnscannedItem::initWithParent(storage.mainArena(), mresultroot.get(), kUnscannedText, missing);
    mresultroot->increaseTotalSize(missing);
    return true;
}

void CModel::updateprogress(const CSWalkOperation& operation) {
    m_notifications.postNotification(DIUpdateProgressNotification,
                                     std::any(std::int64_t{operation.getcountedsize()}));
}

void CModel::walkfinished() {
    m_notifications.postNotification(FinishWalkingVolume, std::any(this));
}

void CModel::walkcanceled() {
    m_notifications.postNotification(WalkingVolumeCanceled, std::any(this));
}

void CModel::operationEnded(const CSWalkOperation& operation) {
    std::erase_if(asyncQueue, [&](const auto& queued) { return queued.get() == &operation; });
}

} // namespace veltrano
