#include "tree/TopLevelItem.h"

#include "support/TreeBuilder.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using Text = std::optional<std::string>;

using Volume = std::unique_ptr<VolumeItem>;

Volume volumeWith(const DeviceFacts& facts) {
    auto volume = std::make_unique<VolumeItem>("/v", "v", 1000, 400, 7);
    volume->getDeepInfo(facts);
    return volume;
}

Volume volumeOn(const Text& protocol, MediaClass medium = MediaClass::FixedOrUnknown) {
    return volumeWith({.protocol = protocol, .mediaClass = medium});
}

DeviceFacts fullFacts() {
    return {.isDescribed = true,
            .bsdName = "sdb1",
            .protocol = "USB",
            .model = "Stick",
            .mediaWritable = "1",
            .volumeKind = "vfat",
            .internal = 0,
            .mediaClass = MediaClass::DVD,
            .isBootVolume = true,
            .files = 11,
            .folders = 12};
}

TEST(VolumeItem, newVolumeKnowsNothingOfItsDevice) {
    const VolumeItem volume("/v", "v", 1000, 400, 7);
    EXPECT_FALSE(volume.getRemovable() || volume.getWriteble() || volume.getUnmountable());
    EXPECT_FALSE(volume.getEjectable() || volume.getAutomounted());
    EXPECT_EQ(volume.getFilesCount(), 0);
    EXPECT_EQ(volume.getFoldersCount(), 0);
    EXPECT_FALSE(volume.isBootable());
    EXPECT_EQ(volume.isInternal(), -1);
    EXPECT_EQ(volume.getMediaClass(), 0u);
    EXPECT_EQ(volume.getMpBSDName(), "");
    EXPECT_EQ(volume.getDADeviceProtocol(), std::nullopt);
    EXPECT_EQ(volume.getDADeviceModel(), std::nullopt);
    EXPECT_EQ(volume.getDAMediaWritable(), std::nullopt);
    EXPECT_EQ(volume.getDAVolumeKind(), std::nullopt);
}

TEST(VolumeItem, deepInfoTakesEveryFact) {
    VolumeItem volume("/v", "v", 1000, 400, 7);
    EXPECT_TRUE(volume.getDeepInfo(fullFacts()));
    EXPECT_EQ(volume.getFilesCount(), 11);
    EXPECT_EQ(volume.getFoldersCount(), 12);
    EXPECT_TRUE(volume.isBootable());
    EXPECT_EQ(volume.isInternal(), 0);
    EXPECT_EQ(volume.getMediaClass(), 2u);
    EXPECT_EQ(volume.getMpBSDName(), "sdb1");
    EXPECT_EQ(volume.getDADeviceProtocol(), "USB");
    EXPECT_EQ(volume.getDADeviceModel(), "Stick");
    EXPECT_EQ(volume.getDAMediaWritable(), "1");
    EXPECT_EQ(volume.getDAVolumeKind(), "vfat");
}

TEST(VolumeItem, deepInfoClearsWhatTheDeviceLacks) {
    const Volume volume = volumeWith(fullFacts());
    EXPECT_FALSE(volume->getDeepInfo({}));
    EXPECT_EQ(volume->getDADeviceProtocol(), std::nullopt);
    EXPECT_EQ(volume->getDADeviceModel(), std::nullopt);
    EXPECT_EQ(volume->getDAMediaWritable(), std::nullopt);
    EXPECT_EQ(volume->getDAVolumeKind(), std::nullopt);
    EXPECT_EQ(volume->isInternal(), -1);
    EXPECT_EQ(volume->getMpBSDName(), "");
}

TEST(VolumeItem, compactDiscIsOfMediaClassOne) {
    EXPECT_EQ(volumeOn("SATA", MediaClass::CD)->getMediaClass(), 1u);
}

TEST(VolumeItem, flagsAreKept) {
    VolumeItem volume("/v", "v", 1, 0, 0);
    volume.setRemovable(true);
    EXPECT_TRUE(volume.getRemovable());
    volume.setWriteble(true);
    EXPECT_TRUE(volume.getWriteble());
    volume.setUnmountable(true);
    EXPECT_TRUE(volume.getUnmountable());
    volume.setEjectable(true);
    EXPECT_TRUE(volume.getEjectable());
    volume.setAutomounted(true);
    EXPECT_TRUE(volume.getAutomounted());
}

TEST(VolumeItem, volumeWithoutProtocolIsOnTheNetwork) {
    EXPECT_TRUE(volumeOn(std::nullopt)->isNetworkVol());
    EXPECT_FALSE(volumeOn("SATA")->isNetworkVol());
}

TEST(VolumeItem, emptyProtocolIsNotAMissingOne) {
    EXPECT_FALSE(volumeOn("")->isNetworkVol());
    EXPECT_FALSE(volumeOn("")->ifHavetheSameChars(*volumeOn(std::nullopt)));
}

TEST(VolumeItem, folderIsNeverOnTheNetwork) {
    EXPECT_FALSE(FolderItem("/f", "f", 0, 0, 0).isNetworkVol());
}

TEST(VolumeItem, twoNetworkVolumesHaveTheSameCharacteristics) {
    EXPECT_TRUE(volumeOn(std::nullopt)->ifHavetheSameChars(*volumeOn(std::nullopt)));
    EXPECT_TRUE(volumeOn(std::nullopt, MediaClass::CD)->ifHavetheSameChars(*volumeOn(std::nullopt)));
}

TEST(VolumeItem, networkVolumeAndDiskDiffer) {
    EXPECT_FALSE(volumeOn(std::nullopt)->ifHavetheSameChars(*volumeOn("SATA")));
    EXPECT_FALSE(volumeOn("SATA")->ifHavetheSameChars(*volumeOn(std::nullopt)));
}

TEST(VolumeItem, characteristicsAreProtocolAndMedium) {
    EXPECT_TRUE(volumeOn("SATA")->ifHavetheSameChars(*volumeOn("SATA")));
    EXPECT_FALSE(volumeOn("SATA")->ifHavetheSameChars(*volumeOn("USB")));
    EXPECT_FALSE(volumeOn("SATA")->ifHavetheSameChars(*volumeOn("SATA", MediaClass::CD)));
}

TEST(VolumeItem, equalityIncludesEveryFactOfTheDevice) {
    const Volume volume = volumeWith(fullFacts());
    const Volume same = volumeWith(fullFacts());
    EXPECT_TRUE(volume->isEqual(same.get()));

    const auto isEqualAfter = [&](const auto& change) {
        DeviceFacts facts = fullFacts();
        change(facts);
        const Volume other = volumeWith(facts);
        return volume->isEqual(other.get());
    };
    EXPECT_FALSE(isEqualAfter([](DeviceFacts& facts) { facts.isBootVolume = false; }));
    EXPECT_FALSE(isEqualAfter([](DeviceFacts& facts) { facts.internal = 1; }));
    EXPECT_FALSE(isEqualAfter([](DeviceFacts& facts) { facts.mediaClass = MediaClass::CD; }));
    EXPECT_FALSE(isEqualAfter([](DeviceFacts& facts) { facts.protocol = "SATA"; }));
    EXPECT_FALSE(isEqualAfter([](DeviceFacts& facts) { facts.model.reset(); }));
    EXPECT_FALSE(isEqualAfter([](DeviceFacts& facts) { facts.mediaWritable = "0"; }));
    EXPECT_FALSE(isEqualAfter([](DeviceFacts& facts) { facts.volumeKind = "exfat"; }));
    EXPECT_FALSE(isEqualAfter([](DeviceFacts& facts) { facts.bsdName = "sdb2"; }));
}

TEST(VolumeItem, emptyModelAndMissingModelAreNotEqual) {
    const Volume missing = volumeWith({.protocol = "USB"});
    const Volume empty = volumeWith({.protocol = "USB", .model = ""});
    EXPECT_FALSE(missing->isEqual(empty.get()));
}

TEST(VolumeItem, equalityLeavesOutFlagsAndCounts) {
    const Volume volume = volumeWith({.protocol = "USB"});
    const Volume other = volumeWith({.protocol = "USB", .files = 3, .folders = 4});
    other->setRemovable(true);
    other->setWriteble(true);
    other->setUnmountable(true);
    other->setUseFreeSector(true);
    EXPECT_TRUE(volume->isEqual(other.get()));
}

TEST(VolumeItem, refreshTakesEverythingButTheFreeSector) {
    VolumeItem fresh("/w", "w", 2000, 800, 14);
    fresh.getDeepInfo(fullFacts());
    fresh.initDates({.created = {.lowSeconds = 5}, .valence = 9});
    fresh.setRemovable(true);
    fresh.setWriteble(true);
    fresh.setUnmountable(true);
    fresh.setEjectable(true);
    fresh.setAutomounted(true);
    fresh.setUseFreeSector(true);

    VolumeItem volume("/v", "v", 1000, 400, 7);
    volume.setPropsFrom(fresh);
    EXPECT_TRUE(volume.isEqual(&fresh));
    EXPECT_EQ(volume.getsize(), 2000);
    EXPECT_EQ(volume.getValence(), 9);
    EXPECT_EQ(volume.getCreatedDate(), fresh.getCreatedDate());
    EXPECT_TRUE(volume.getRemovable() && volume.getWriteble() && volume.getUnmountable());
    EXPECT_TRUE(volume.getEjectable() && volume.getAutomounted());
    EXPECT_EQ(volume.getFilesCount(), 11);
    EXPECT_EQ(volume.getFoldersCount(), 12);
    EXPECT_FALSE(volume.getUseFreeSector());
}

TEST(VolumeItem, refreshKeepsTheTreeAndItsMark) {
    VolumeItem volume("/v", "v", 1000, 400, 7);
    const test::TreeBuilder tree("/v");
    volume.setScannedRoot(TreeStorage::hold(tree.root()));
    volume.setScanCompleted(true);
    volume.setPropsFrom(VolumeItem("/v", "v", 1000, 300, 7));
    EXPECT_EQ(volume.getScannedRoot().get(), tree.root());
    EXPECT_TRUE(volume.isScanCompleted());
    EXPECT_EQ(volume.getfsize(), 300);
}

TEST(VolumeItem, refreshFromAFolderTakesNoDeviceFacts) {
    const Volume volume = volumeWith(fullFacts());
    volume->setPropsFrom(FolderItem("/f", "f", 0, 0, 0));
    EXPECT_EQ(volume->getPath(), "/f");
    EXPECT_EQ(volume->getDADeviceProtocol(), "USB");
}

} // namespace
} // namespace veltrano
