#include "tree/TopLevelItem.h"

namespace veltrano {

bool VolumeItem::getDeepInfo(const DeviceFacts& facts) {
    mpBSDName = facts.bsdName;
    nFiles = facts.files;
    nFolders = facts.folders;
    DADeviceProtocol = facts.protocol;
    DADeviceModel = facts.model;
    DAMediaWritable = facts.mediaWritable;
    DAVolumeKind = facts.volumeKind;
    bInternal = facts.internal.value_or(-1);
    bootable = facts.isBootVolume;
    mMediaClass = static_cast<std::uint32_t>(facts.mediaClass);
    return facts.isDescribed;
}

bool VolumeItem::ifHavetheSameChars(const VolumeItem& other) const {
    if (!DADeviceProtocol && !other.DADeviceProtocol)
        return true;
    return DADeviceProtocol == other.DADeviceProtocol && mMediaClass == other.mMediaClass;
}

bool VolumeItem::isEqual(const TopLevelItem* other) const {
    if (!TopLevelItem::isEqual(other))
        return false;
    // The same kind of entry, as was just seen.
    const auto& volume = static_cast<const VolumeItem&>(*other);
    return ifHavetheSameChars(volume) && bootable == volume.bootable && bInternal == volume.bInternal &&
           mMediaClass == volume.mMediaClass && DADeviceProtocol == volume.DADeviceProtocol &&
           DADeviceModel == volume.DADeviceModel && DAMediaWritable == volume.DAMediaWritable &&
           DAVolumeKind == volume.DAVolumeKind && mpBSDName == volume.mpBSDName;
}

void VolumeItem::setPropsFrom(const TopLevelItem& other) {
    TopLevelItem::setPropsFrom(other);
    const auto* const volume = dynamic_cast<const VolumeItem*>(&other);
    if (!volume)
        return;
    removable = volume->removable;
    writeble = volume->writeble;
    unmountable = volume->unmountable;
    bEjectable = volume->bEjectable;
    bAutomounted = volume->bAutomounted;
    nFiles = volume->nFiles;
    nFolders = volume->nFolders;
    bootable = volume->bootable;
    bInternal = volume->bInternal;
    mMediaClass = volume->mMediaClass;
    mpBSDName = volume->mpBSDName;
    DADeviceProtocol = volume->DADeviceProtocol;
    DADeviceModel = volume->DADeviceModel;
    DAMediaWritable = volume->DAMediaWritable;
    DAVolumeKind = volume->DAVolumeKind;
}

} // namespace veltrano
