#include "scan/CModel.h"

#include <algorithm>
#include <utility>

namespace veltrano {

namespace {

constexpr std::string_view kSnapshotType = "mtmfs";
constexpr std::string_view kStartupDisk = "/";

} // namespace

bool CModel::enumerateVolumes() {
    arrVolumes = listVolumes();
    return true;
}

bool CModel::updateVolumesInfo() {
    const VolumeList fresh = listVolumes();
    if (fresh.size() != arrVolumes.size())
        return false;
    bool hasChanged = false;
    for (std::size_t index = 0; index < fresh.size(); ++index) {
        if (!arrVolumes[index] || arrVolumes[index]->getPath() != fresh[index]->getPath())
            return false;
        if (arrVolumes[index]->isEqual(fresh[index].get()))
            continue;
        arrVolumes[index]->setPropsFrom(*fresh[index]);
        hasChanged = true;
    }
    return hasChanged;
}

std::shared_ptr<VolumeItem> CModel::addVolumeAtPath(std::string_view path, VolumeList* inArray) {
    const VolumeFacts* const facts = factsAtPath(path);
    auto volume = facts ? makeVolume(*facts) : nullptr;
    if (volume)
        (inArray ? *inArray : arrVolumes).push_back(volume);
    return volume;
}

void CModel::removeVolFromList(std::string_view path) {
    const auto found = std::find_if(arrVolumes.begin(), arrVolumes.end(),
                                    [&](const auto& volume) { return volume && volume->getPath() == path; });
    if (found != arrVolumes.end())
        arrVolumes.erase(found);
}

bool CModel::isSystemMTMFS(std::string_view path) const {
    const VolumeFacts* const facts = factsAtPath(path);
    return facts && facts->fileSystemType == kSnapshotType;
}

std::int64_t CModel::getSystemDiskFreeSize() const {
    return m_volumes.startupDiskFreeSize();
}

const VolumeFacts* CModel::factsAtPath(std::string_view path) const {
    const auto& volumes = m_volumes.mountedLocalVolumes();
    const auto found = std::find_if(volumes.begin(), volumes.end(),
                                    [&](const VolumeFacts& facts) { return facts.path == path; });
    return found == volumes.end() ? nullptr : &*found;
}

std::shared_ptr<VolumeItem> CModel::makeVolume(const VolumeFacts& facts) const {
    std::int64_t free = facts.freeSize;
    if (facts.path == kStartupDisk) {
        // A script that tells more than there is has failed as well.
        const std::int64_t told = getSystemDiskFreeSize();
        if (told >= 0 && told <= facts.size)
            free = told;
    }
    // A volume that has told nothing yet is listed with what is known of it.
    if (facts.hasAnswered && facts.size == 0 && free == 0)
        return nullptr;
    // The occupied space is never less than nothing.
    free = std::clamp<std::int64_t>(free, 0, std::max<std::int64_t>(facts.size, 0));
    auto volume = std::make_shared<VolumeItem>(facts.path, facts.name, facts.size, free, facts.nodes);
    volume->initDates(facts.pathFacts);
    volume->getDeepInfo(facts.device);
    volume->setRemovable(facts.isRemovable);
    volume->setWriteble(facts.isWritable);
    volume->setUnmountable(facts.isUnmountable);
    if (!volume->getDAVolumeKind())
        volume->setDAVolumeKind(facts.fileSystemType);
    return volume;
}

CModel::VolumeList CModel::listVolumes() const {
    VolumeList list;
    for (const VolumeFacts& facts : m_volumes.mountedLocalVolumes())
        if (facts.fileSystemType != kSnapshotType)
            if (auto volume = makeVolume(facts))
                list.push_back(std::move(volume));
    return list;
}

} // namespace veltrano
