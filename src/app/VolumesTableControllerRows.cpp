// The flat array of rows: groups and their entries in the order of display.

#include "app/VolumesTableController.h"

#include <algorithm>

namespace veltrano {

namespace {

/// The group that a volume opens.
struct GroupTitle {
    const char* name;
    const char* image;
};

GroupTitle groupTitleOf(const VolumeItem& volume) {
    const auto& protocol = volume.getDADeviceProtocol();
    if (!protocol)
        return {"Network Disks", "pvttitleDisksNet"};
    if (*protocol == "Virtual Interface")
        return {"Disk Images", "pvttitleDisksImg"};
    if (*protocol == "USB")
        return {"External Disks", "pvttitleDisksExt"};
    const bool isOptical = volume.getMediaClass() == 1 || volume.getMediaClass() == 2;
    if (*protocol == "SATA" && isOptical)
        return {"Optical Disks", "pvttitleDisksOpt"};
    return {"Hard Disks", "pvttitleDisks"};
}

} // namespace

bool VolumesTableController::isRowValid(int row) const {
    return row >= 0 && row < numberOfRows();
}

bool VolumesTableController::isGroupRow(int row) const {
    return getGroupByRow(row) != nullptr;
}

VolumesTableController::Entry VolumesTableController::getItemByRow(int row) const {
    if (!isRowValid(row))
        return nullptr;
    const Entry* const entry = std::get_if<Entry>(&volumesArray[static_cast<std::size_t>(row)]);
    return entry ? *entry : nullptr;
}

const VolumeItemGrop* VolumesTableController::getGroupByRow(int row) const {
    if (!isRowValid(row))
        return nullptr;
    return std::get_if<VolumeItemGrop>(&volumesArray[static_cast<std::size_t>(row)]);
}

void VolumesTableController::resetVolumesArray() {
    volumesArray.clear();
}

void VolumesTableController::setVolumesArray(const std::vector<std::shared_ptr<VolumeItem>>& volumes,
                                             bool bAddorReplace) {
    if (bAddorReplace)
        resetVolumesArray();
    bool first = true; // of this call, whatever stands above
    for (const std::shared_ptr<VolumeItem>& volume : volumes) {
        if (!volume)
            continue;
        const auto isSameGroup = [&](const Row& row) {
            const Entry* const entry = std::get_if<Entry>(&row);
            const auto* const other = entry ? dynamic_cast<const VolumeItem*>(entry->get()) : nullptr;
            return other && other->ifHavetheSameChars(*volume);
        };
        const auto last = std::find_if(volumesArray.rbegin(), volumesArray.rend(), isSameGroup);
        if (last != volumesArray.rend()) {
            volumesArray.insert(last.base() - 1, volume);
            continue;
        }
        const GroupTitle title = groupTitleOf(*volume);
        volumesArray.emplace_back(VolumeItemGrop{.writeble = volume->getWriteble(),
                                                 .unmountable = volume->getUnmountable(),
                                                 .removable = volume->getRemovable(),
                                                 .bFirstItem = first,
                                                 .groupName = title.name,
                                                 .groupImage = title.image});
        volumesArray.emplace_back(volume);
        first = false;
    }
}

void VolumesTableController::addFFolders(const std::vector<std::shared_ptr<FolderItem>>& favourites,
                                         const std::vector<std::shared_ptr<FolderItem>>& withRFolders) {
    addFolderGroup(favourites, "Favorite Folders", "pvttitleFavoriteFolders");
    addFolderGroup(withRFolders, "Recent Folders", "pvttitleRecentFolders");
}

void VolumesTableController::addFolderGroup(const std::vector<std::shared_ptr<FolderItem>>& folders,
                                            const char* name, const char* image) {
    if (folders.empty())
        return;
    volumesArray.emplace_back(
        VolumeItemGrop{.bFirstItem = volumesArray.empty(), .groupName = name, .groupImage = image});
    volumesArray.insert(volumesArray.end(), folders.begin(), folders.end());
}

void VolumesTableController::volumesCountChanged(bool mounted, const std::string& withVol,
                                                 const std::shared_ptr<VolumeItem>& addedIem) {
    if (mounted) {
        if (!addedIem)
            return;
        setVolumesArray({addedIem}, false);
        reloadData();
        return;
    }
    const auto isTheVolume = [&](const Row& row) {
        const Entry* const entry = std::get_if<Entry>(&row);
        return entry && (*entry)->isVol() && (*entry)->getPath() == withVol;
    };
    const auto gone = std::find_if(volumesArray.begin(), volumesArray.end(), isTheVolume);
    if (gone == volumesArray.end())
        return;
    volumesArray.erase(gone);
    removeEmptyGroupsFromArray();
    reloadData();
}

void VolumesTableController::removeEmptyGroupsFromArray() {
    // A group is empty when another one follows it, or nothing does.
    std::vector<Row> kept;
    kept.reserve(volumesArray.size());
    const auto isGroup = [](const Row& row) {
        return std::holds_alternative<VolumeItemGrop>(row);
    };
    for (std::size_t row = 0; row < volumesArray.size(); ++row) {
        const bool isLast = row + 1 == volumesArray.size();
        if (!isGroup(volumesArray[row]) || (!isLast && !isGroup(volumesArray[row + 1])))
            kept.push_back(volumesArray[row]);
    }
    volumesArray = std::move(kept);
}

} // namespace veltrano
