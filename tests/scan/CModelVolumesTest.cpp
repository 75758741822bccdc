#include "scan/ScanRun.h"

#include "support/FakeVolumes.h"
#include "support/MemoryDisk.h"

#include <gmock/gmock.h>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

VolumeFacts volumeAt(const std::string& path, std::int64_t size = 1'000'000, std::int64_t free = 400'000) {
    return {.path = path,
            .name = "Name of " + path,
            .fileSystemType = "ext4",
            .hasAnswered = true,
            .size = size,
            .freeSize = free,
            .nodes = 7,
            .device = {.protocol = "SATA"}};
}

class CModelVolumesTest : public testing::Test {
protected:
    CModelVolumesTest() {
        model.emplace(run.loop, run.notifications, std::make_shared<MemoryDisk>(), run.timeCode, ScanFacts(),
                      volumes);
    }

    std::vector<std::string> listed() {
        std::vector<std::string> paths;
        for (const auto& volume : model->getVolumesInfo())
            paths.push_back(volume->getPath());
        return paths;
    }

    /// Lists volumes at these paths.
    void enumerate(const std::vector<std::string>& paths) {
        volumes.volumes.clear();
        for (const std::string& path : paths)
            volumes.volumes.push_back(volumeAt(path));
        EXPECT_TRUE(model->enumerateVolumes());
    }

    VolumeItem& first() { return *model->getVolumesInfo().front(); }

    test::ScanRun run{std::make_shared<MemoryDisk>()};
    FakeVolumes volumes;
    std::optional<CModel> model;
};

TEST_F(CModelVolumesTest, volumesAreListedInTheSystemsOrder) {
    enumerate({"/", "/z", "/a"});
    EXPECT_THAT(listed(), ElementsAre("/", "/z", "/a"));
}

TEST_F(CModelVolumesTest, enumerationBeginsAnew) {
    enumerate({"/", "/a"});
    const auto old = model->getVolumesInfo().front();
    enumerate({"/"});
    EXPECT_THAT(listed(), ElementsAre("/"));
    EXPECT_NE(model->getVolumesInfo().front(), old);
}

TEST_F(CModelVolumesTest, whereNothingIsMountedNothingIsListed) {
    EXPECT_TRUE(run.model->enumerateVolumes());
    EXPECT_FALSE(run.model->updateVolumesInfo());
    EXPECT_EQ(run.model->addVolumeAtPath("/"), nullptr);
    EXPECT_EQ(run.model->getSystemDiskFreeSize(), -1);
    EXPECT_FALSE(run.model->isSystemMTMFS("/"));
    EXPECT_THAT(run.model->getVolumesInfo(), IsEmpty());
}

TEST_F(CModelVolumesTest, entryTakesAllThatThePlatformTells) {
    VolumeFacts facts = volumeAt("/v");
    facts.isRemovable = true;
    facts.isWritable = true;
    facts.isUnmountable = true;
    facts.pathFacts.valence = 5;
    facts.device.bsdName = "sda1";
    volumes.volumes = {facts};
    model->enumerateVolumes();
    EXPECT_EQ(first().getName(), "Name of /v");
    EXPECT_EQ(first().getsize(), 1'000'000);
    EXPECT_EQ(first().getfsize(), 400'000);
    EXPECT_EQ(first().getnodescount(), 7);
    EXPECT_EQ(first().getValence(), 5);
    EXPECT_TRUE(first().getRemovable());
    EXPECT_TRUE(first().getWriteble());
    EXPECT_TRUE(first().getUnmountable());
    EXPECT_EQ(first().getDADeviceProtocol(), "SATA");
    EXPECT_EQ(first().getMpBSDName(), "sda1");
    EXPECT_FALSE(first().isScanCompleted());
}

TEST_F(CModelVolumesTest, eachFlagHasItsOwnFact) {
    for (const auto& [fact, flag] : {std::pair(&VolumeFacts::isRemovable, &VolumeItem::getRemovable),
                                     std::pair(&VolumeFacts::isWritable, &VolumeItem::getWriteble),
                                     std::pair(&VolumeFacts::isUnmountable, &VolumeItem::getUnmountable)}) {
        VolumeFacts facts = volumeAt("/v");
        facts.*fact = true;
        volumes.volumes = {facts};
        model->enumerateVolumes();
        EXPECT_TRUE((first().*flag)());
        EXPECT_EQ(first().getRemovable() + first().getWriteble() + first().getUnmountable(), 1);
    }
}

TEST_F(CModelVolumesTest, kindOfTheVolumeFallsBackOnItsFileSystem) {
    volumes.volumes = {volumeAt("/v")};
    model->enumerateVolumes();
    EXPECT_EQ(first().getDAVolumeKind(), "ext4");
    volumes.volumes.front().device.volumeKind = "ntfs";
    model->enumerateVolumes();
    EXPECT_EQ(first().getDAVolumeKind(), "ntfs");
}

TEST_F(CModelVolumesTest, twoVolumesOfOneNameKeepTheirOwnFacts) {
    volumes.volumes = {volumeAt("/a"), volumeAt("/b")};
    volumes.volumes[0].name = volumes.volumes[1].name = "Disk";
    volumes.volumes[0].device.bsdName = "sda1";
    volumes.volumes[1].device.bsdName = "sdb1";
    model->enumerateVolumes();
    EXPECT_EQ(model->getVolumesInfo()[0]->getMpBSDName(), "sda1");
    EXPECT_EQ(model->getVolumesInfo()[1]->getMpBSDName(), "sdb1");
}

TEST_F(CModelVolumesTest, volumeWithoutAnySpaceIsNotListed) {
    volumes.volumes = {volumeAt("/none", 0, 0), volumeAt("/full", 10, 0)};
    model->enumerateVolumes();
    EXPECT_THAT(listed(), ElementsAre("/full"));
}

TEST_F(CModelVolumesTest, volumeThatHasNotAnsweredIsListedWithWhatIsKnown) {
    VolumeFacts facts = volumeAt("/away", 0, 0);
    facts.hasAnswered = false;
    volumes.volumes = {facts};
    model->enumerateVolumes();
    EXPECT_THAT(listed(), ElementsAre("/away"));
    EXPECT_EQ(first().getName(), "Name of /away");
}

TEST_F(CModelVolumesTest, freeSpaceIsNeverMoreThanTheCapacity) {
    volumes.volumes = {volumeAt("/v", 100, 200)};
    model->enumerateVolumes();
    EXPECT_EQ(first().getfsize(), 100);
    EXPECT_EQ(first().getOccSize(), 0);
}

TEST_F(CModelVolumesTest, freeSpaceIsNeverLessThanNothing) {
    volumes.volumes = {volumeAt("/v", 100, -5)};
    model->enumerateVolumes();
    EXPECT_EQ(first().getOccSize(), 100);
}

TEST_F(CModelVolumesTest, startupDiskShowsTheFreeSizeOfTheScript) {
    volumes.scriptAnswer = 123'456;
    enumerate({"/", "/other"});
    EXPECT_EQ(model->getSystemDiskFreeSize(), 123'456);
    EXPECT_EQ(first().getfsize(), 123'456);
    EXPECT_EQ(model->getVolumesInfo()[1]->getfsize(), 400'000);
}

TEST_F(CModelVolumesTest, scriptMayTellThatNothingIsFree) {
    volumes.scriptAnswer = 0;
    enumerate({"/"});
    EXPECT_EQ(first().getfsize(), 0);
}

TEST_F(CModelVolumesTest, startupDiskFallsBackOnTheFileSystem) {
    for (const std::int64_t answer : {std::int64_t{-1}, std::int64_t{-7}, std::int64_t{1'000'001}}) {
        volumes.scriptAnswer = answer;
        enumerate({"/"});
        EXPECT_EQ(first().getfsize(), 400'000) << answer;
    }
}

TEST_F(CModelVolumesTest, localSnapshotIsNotListed) {
    volumes.volumes = {volumeAt("/"), volumeAt("/snapshot")};
    volumes.volumes[1].fileSystemType = "mtmfs";
    model->enumerateVolumes();
    EXPECT_THAT(listed(), ElementsAre("/"));
    EXPECT_TRUE(model->isSystemMTMFS("/snapshot"));
    EXPECT_FALSE(model->isSystemMTMFS("/"));
    EXPECT_FALSE(model->isSystemMTMFS("/nowhere"));
}

TEST_F(CModelVolumesTest, localSnapshotIsNotCountedInAnUpdate) {
    enumerate({"/"});
    volumes.volumes.push_back(volumeAt("/snapshot"));
    volumes.volumes.back().fileSystemType = "mtmfs";
    volumes.volumes.front().size *= 2;
    EXPECT_TRUE(model->updateVolumesInfo());
    EXPECT_THAT(listed(), ElementsAre("/"));
}

TEST_F(CModelVolumesTest, snapshotIsToldByItsExactType) {
    volumes.volumes = {volumeAt("/a"), volumeAt("/b")};
    volumes.volumes[0].fileSystemType = "MTMFS";
    volumes.volumes[1].fileSystemType = "mtmfs2";
    model->enumerateVolumes();
    EXPECT_THAT(listed(), ElementsAre("/a", "/b"));
}

TEST_F(CModelVolumesTest, updateWithoutAChangeAnswersFalse) {
    enumerate({"/", "/a"});
    EXPECT_FALSE(model->updateVolumesInfo());
}

TEST_F(CModelVolumesTest, updateRefreshesTheSameObjects) {
    enumerate({"/", "/a"});
    const auto kept = model->getVolumesInfo();
    volumes.volumes[1].freeSize = 100'000;
    EXPECT_TRUE(model->updateVolumesInfo());
    EXPECT_EQ(model->getVolumesInfo(), kept);
    EXPECT_EQ(kept[1]->getfsize(), 100'000);
    EXPECT_FALSE(model->updateVolumesInfo());
}

TEST_F(CModelVolumesTest, smallDriftOfTheFreeSizeIsNoChange) {
    enumerate({"/"});
    volumes.volumes[0].freeSize -= 39;
    EXPECT_FALSE(model->updateVolumesInfo());
    EXPECT_EQ(first().getfsize(), 400'000);
    volumes.volumes[0].freeSize -= 100;
    EXPECT_TRUE(model->updateVolumesInfo());
    EXPECT_EQ(first().getfsize(), 399'861);
}

TEST_F(CModelVolumesTest, updateChangesNothingWhenAVolumeHasCome) {
    enumerate({"/"});
    volumes.volumes.push_back(volumeAt("/new"));
    volumes.volumes[0].size *= 2;
    EXPECT_FALSE(model->updateVolumesInfo());
    EXPECT_THAT(listed(), ElementsAre("/"));
    EXPECT_EQ(first().getsize(), 1'000'000);
}

TEST_F(CModelVolumesTest, updateChangesNothingWhenAVolumeHasGone) {
    enumerate({"/", "/gone"});
    volumes.volumes.pop_back();
    volumes.volumes[0].size *= 2;
    EXPECT_FALSE(model->updateVolumesInfo());
    EXPECT_THAT(listed(), ElementsAre("/", "/gone"));
    EXPECT_EQ(first().getsize(), 1'000'000);
}

TEST_F(CModelVolumesTest, updateEndsAtTheFirstOtherPath) {
    enumerate({"/", "/a", "/b"});
    for (VolumeFacts& facts : volumes.volumes)
        facts.size *= 2;
    volumes.volumes[1].path = "/other";
    EXPECT_FALSE(model->updateVolumesInfo());
    EXPECT_EQ(model->getVolumesInfo()[0]->getsize(), 2'000'000);
    EXPECT_EQ(model->getVolumesInfo()[1]->getsize(), 1'000'000);
    EXPECT_EQ(model->getVolumesInfo()[2]->getsize(), 1'000'000);
}

TEST_F(CModelVolumesTest, updateEndsAtAMissingEntry) {
    enumerate({"/", "/a"});
    model->getVolumesInfo()[0].reset();
    volumes.volumes[1].size *= 2;
    EXPECT_FALSE(model->updateVolumesInfo());
    EXPECT_EQ(model->getVolumesInfo()[1]->getsize(), 1'000'000);
    model->getVolumesInfo().erase(model->getVolumesInfo().begin());
}

TEST_F(CModelVolumesTest, mountedVolumeIsAppended) {
    enumerate({"/"});
    volumes.volumes.push_back(volumeAt("/new"));
    const auto added = model->addVolumeAtPath("/new");
    ASSERT_NE(added, nullptr);
    EXPECT_THAT(listed(), ElementsAre("/", "/new"));
    EXPECT_EQ(model->getVolumesInfo().back(), added);
}

TEST_F(CModelVolumesTest, volumeMayGoIntoAnotherList) {
    enumerate({"/"});
    std::vector<std::shared_ptr<VolumeItem>> other;
    const auto added = model->addVolumeAtPath("/", &other);
    EXPECT_THAT(other, ElementsAre(added));
    EXPECT_THAT(listed(), ElementsAre("/"));
    EXPECT_NE(first().asTopLevelItem(), added.get());
}

TEST_F(CModelVolumesTest, pathThatIsNoMountMakesNoEntry) {
    enumerate({"/"});
    EXPECT_EQ(model->addVolumeAtPath("/home"), nullptr);
    EXPECT_THAT(listed(), ElementsAre("/"));
}

TEST_F(CModelVolumesTest, unmountedVolumeIsTakenOff) {
    enumerate({"/", "/a", "/b"});
    model->removeVolFromList("/a");
    EXPECT_THAT(listed(), ElementsAre("/", "/b"));
    model->removeVolFromList("/a");
    EXPECT_THAT(listed(), ElementsAre("/", "/b"));
}

TEST_F(CModelVolumesTest, onlyTheFirstEntryOfAPathIsTakenOff) {
    enumerate({"/", "/a"});
    const auto second = model->addVolumeAtPath("/a");
    model->removeVolFromList("/a");
    EXPECT_THAT(listed(), ElementsAre("/", "/a"));
    EXPECT_EQ(model->getVolumesInfo().back(), second);
}

TEST_F(CModelVolumesTest, listedVolumeIsFoundByItsPathAndHeadsItsTree) {
    enumerate({"/", "/disk"});
    EXPECT_EQ(model->getVolumeItemWithPath("/disk"), model->getVolumesInfo()[1]);
    model->setStartPath("/disk");
    model->initRootItem();
    EXPECT_TRUE(model->getRootItem()->isVol());
    EXPECT_EQ(model->getRootItem()->getDisplayName(), "Name of /disk");
}

} // namespace
} // namespace veltrano
