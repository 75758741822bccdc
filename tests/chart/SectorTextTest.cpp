#include "chart/SectorText.h"
#include "support/TreeBuilder.h"
#include "tree/SpecialItems.h"
#include "tree/TopLevelItem.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using test::TreeBuilder;

class Part final : public TreeObject {};

class SectorWords : public testing::Test {
protected:
    SectorText of(TreeObject& object, double share = 0.25) const { return of(object, *tree.root(), share); }
    SectorText of(TreeObject& object, const VolumeFolderProtocol& root, double share) const {
        return describeSector(object, root, {&occupied, &unused}, share, [](std::string_view bytes) {
            return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
        });
    }

    TreeBuilder tree = TreeBuilder::volume("/v", 1000, 400);
    mutable Part occupied;
    mutable Part unused;
};

TEST_F(SectorWords, fileHasNameSizeShareAndAge) {
    const SectorText text = of(*tree.file(tree.root(), "f", 2000, 2));
    EXPECT_EQ(text.name.toStdString(), "f");
    EXPECT_EQ(text.description.toStdString(), "2.00 KB, 25.0 %, changed within a week");
}

TEST_F(SectorWords, everyAgeHasItsWordsAndTheUnknownOneNone) {
    const char* const ages[] = {"2.00 KB, 25.0 %",
                                "2.00 KB, 25.0 %, changed within a day",
                                "2.00 KB, 25.0 %, changed within a week",
                                "2.00 KB, 25.0 %, changed within two weeks",
                                "2.00 KB, 25.0 %, changed within 30 days",
                                "2.00 KB, 25.0 %, changed within 60 days",
                                "2.00 KB, 25.0 %, changed within a year",
                                "2.00 KB, 25.0 %, unchanged for a year",
                                "2.00 KB, 25.0 %"};
    for (std::uint8_t code = 0; code <= 8; ++code)
        EXPECT_EQ(of(*tree.file(tree.root(), "f", 2000, code)).description.toStdString(), ages[code]);
}

TEST_F(SectorWords, folderAndPackageSayWhatTheyAre) {
    FolderSystemItem* const folder = tree.folder(tree.root(), "d");
    tree.file(folder, "f", 2000);
    tree.recount();
    EXPECT_EQ(of(*folder).description.toStdString(), "2.00 KB, 25.0 %, changed within a day, folder");
    EXPECT_EQ(of(*tree.package(tree.root(), "p", 2000)).description.toStdString(),
              "2.00 KB, 25.0 %, changed within a day, package");
}

TEST_F(SectorWords, whatTheColourSaysIsSaid) {
    FileSystemItem* const file = tree.file(tree.root(), "f", 2000, 0, true);
    EXPECT_EQ(of(*file).description.toStdString(), "2.00 KB, 25.0 %, hidden");
    file->setTrashFlag(true);
    EXPECT_EQ(of(*file).description.toStdString(), "2.00 KB, 25.0 %, in the Trash");
    file->setCollected(true);
    EXPECT_EQ(of(*file).description.toStdString(), "2.00 KB, 25.0 %, collected");
}

TEST_F(SectorWords, whatIsNoFileIsNamedByWhatItStandsFor) {
    auto* const folder = tree.folder(tree.root(), "d");
    EXPECT_EQ(of(*FSUnscannedItem::initWithParent(tree.arena(), folder, "Nobody may read this", 10)).name,
              "Nobody may read this");
    EXPECT_EQ(of(*FileSystemHiddenItem::initWithPathSize(tree.arena(), "few", folder, 10)).name,
              "Hidden items at few");
}

TEST_F(SectorWords, unscannedVolumeAndItsPartsAreNamed) {
    VolumeItem volume("/u", "disk", 1000'000, 250'000, 0);
    EXPECT_EQ(of(volume, volume, 1.0).name.toStdString(), volume.getDisplayName());
    EXPECT_EQ(of(volume, volume, 1.0).description.toStdString(), "1.00 MB, not scanned yet");
    EXPECT_EQ(of(occupied, volume, 0.75).name.toStdString(), "Occupied");
    EXPECT_EQ(of(occupied, volume, 0.75).description.toStdString(), "750 KB, 75.0 %");
    EXPECT_EQ(of(unused, volume, 0.25).name.toStdString(), "Free");
    EXPECT_EQ(of(unused, volume, 0.25).description.toStdString(), "250 KB, 25.0 %");
}

TEST_F(SectorWords, unscannedFolderHasNoSize) {
    FolderItem folder("/home/data", "data", 0, 0, 0);
    EXPECT_EQ(of(folder, folder, 1.0).name.toStdString(), "data");
    EXPECT_EQ(of(folder, folder, 1.0).description.toStdString(), "not scanned yet");
}

} // namespace
} // namespace veltrano
