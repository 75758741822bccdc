#include "chart/SectorColours.h"

#include "appearance/Colours.h"
#include "chart/ChartFixture.h"
#include "tree/SpecialItems.h"

namespace veltrano {
namespace {

using test::isColour;
using test::TreeBuilder;

class ChildFlagsTest : public testing::Test {
protected:
    ChildFlagsTest() : file(*tree.file(tree.root(), "f", 1)) {}
    TreeBuilder tree{"/r"};
    FileSystemItem& file;
};

TEST_F(ChildFlagsTest, ordinaryItemIsPlain) {
    const ChildFlags flags = getChildFlags(file, {});
    EXPECT_EQ(flags.colorFlag, kSectorPlain);
    EXPECT_FALSE(flags.passedOn.bCollected || flags.passedOn.bHidden || flags.passedOn.bTrash);
}

TEST_F(ChildFlagsTest, everyFlagIsTakenOverOrItsOwn) {
    file.setCollected(true);
    EXPECT_EQ(getChildFlags(file, {}).colorFlag, kSectorCollected);
    EXPECT_TRUE(getChildFlags(file, {}).passedOn.bCollected);
    file.setCollected(false);
    EXPECT_EQ(getChildFlags(file, {.bCollected = true}).colorFlag, kSectorCollected);
    EXPECT_TRUE(getChildFlags(file, {.bCollected = true}).passedOn.bCollected);

    file.setHiddenFlag(true);
    EXPECT_EQ(getChildFlags(file, {}).colorFlag, kSectorHidden);
    EXPECT_TRUE(getChildFlags(file, {}).passedOn.bHidden);
    file.setHiddenFlag(false);
    EXPECT_EQ(getChildFlags(file, {.bHidden = true}).colorFlag, kSectorHidden);

    file.setTrashFlag(true);
    EXPECT_EQ(getChildFlags(file, {}).colorFlag, kSectorTrash);
    EXPECT_TRUE(getChildFlags(file, {}).passedOn.bTrash);
    file.setTrashFlag(false);
    EXPECT_EQ(getChildFlags(file, {.bTrash = true}).colorFlag, kSectorTrash);
}

TEST_F(ChildFlagsTest, trashBeatsEverything) {
    file.setTrashFlag(true);
    file.setCollected(true);
    file.setHiddenFlag(true);
    EXPECT_EQ(getChildFlags(file, {}).colorFlag, kSectorTrash);
    EXPECT_TRUE(getChildFlags(file, {}).passedOn.bCollected);
    EXPECT_TRUE(getChildFlags(file, {}).passedOn.bHidden);
}

TEST_F(ChildFlagsTest, hiddenBeatsCollected) {
    file.setHiddenFlag(true);
    EXPECT_EQ(getChildFlags(file, {.bCollected = true}).colorFlag, kSectorHidden);
}

TEST_F(ChildFlagsTest, aggregateOfHiddenFilesIsHiddenButPassesNothingOn) {
    const FileSystemItem& hidden = *FileSystemHiddenItem::initWithPathSize(tree.arena(), "h", tree.root(), 5);
    EXPECT_EQ(getChildFlags(hidden, {.bCollected = true}).colorFlag, kSectorHidden);
    EXPECT_FALSE(getChildFlags(hidden, {}).passedOn.bHidden);
}

TEST_F(ChildFlagsTest, unscannedSpaceHasItsOwnFlagAndBeatsCollected) {
    const FileSystemItem& missing = *FSUnscannedItem::initWithParent(tree.arena(), tree.root(), "text", 5);
    EXPECT_EQ(getChildFlags(missing, {}).colorFlag, kSectorUnscanned);
    EXPECT_EQ(getChildFlags(missing, {.bCollected = true}).colorFlag, kSectorUnscanned);
    EXPECT_EQ(getChildFlags(missing, {.bHidden = true}).colorFlag, kSectorHidden);
}

TEST(SectorFill, everyFlagHasItsColour) {
    const Colours& colours = Colours::sharedColours();
    EXPECT_EQ(getSectorFill(kSectorHidden, 3, 1, false), colours.cHiddenColor());
    EXPECT_EQ(getSectorFill(kSectorFileVault, 3, 1, false), colours.cHiddenColor());
    EXPECT_EQ(getSectorFill(kSectorCollected, 3, 1, false), colours.cCollectedColor());
    EXPECT_EQ(getSectorFill(kSectorUnscanned, 3, 1, false), colours.cHiddenColor());
    EXPECT_EQ(getSectorFill(kSectorOccupied, 3, 1, false), colours.cOccupiedColor());
    EXPECT_EQ(getSectorFill(kSectorFree, 3, 1, false), colours.cFreeColor());
    EXPECT_EQ(getSectorFill(kSectorTrash, 3, 1, false), colours.cTrashColor());
    for (std::uint8_t code = 0; code < 8; ++code)
        EXPECT_EQ(getSectorFill(kSectorPlain, code, 1, false), colours.getColorByTimeCode(code));
}

TEST(SectorFill, flagsHaveTheirNumbers) {
    EXPECT_EQ(kSectorPlain, 0);
    EXPECT_EQ(kSectorHidden, 1);
    EXPECT_EQ(kSectorFileVault, 2);
    EXPECT_EQ(kSectorCollected, 3);
    EXPECT_EQ(kSectorUnscanned, 4);
    EXPECT_EQ(kSectorOccupied, 5);
    EXPECT_EQ(kSectorFree, 6);
    EXPECT_EQ(kSectorTrash, 7);
}

TEST(SectorFill, unknownFlagIsPlain) {
    for (const std::int16_t flag : std::initializer_list<std::int16_t>{-1, 8, 300})
        EXPECT_EQ(getSectorFill(flag, 3, 1, false), getSectorFill(kSectorPlain, 3, 1, false));
}

TEST(SectorFill, scanDimsPlainSectorsOnly) {
    EXPECT_NEAR(getSectorFill(kSectorPlain, 1, 1.0f, true).alphaF(), 0.35f, 1e-4f);
    EXPECT_NEAR(getSectorFill(kSectorPlain, 1, 0.5f, true).alphaF(), 0.175f, 1e-4f);
    for (int flag = kSectorHidden; flag <= kSectorTrash; ++flag)
        EXPECT_EQ(getSectorFill(static_cast<std::int16_t>(flag), 1, 1.0f, true).alphaF(), 1.0f) << flag;
}

TEST(SectorFill, takesTheAlphaThatItIsDrawnAt) {
    for (int flag = kSectorPlain; flag <= kSectorTrash; ++flag)
        EXPECT_NEAR(getSectorFill(static_cast<std::int16_t>(flag), 1, 0.5f, false).alphaF(), 0.5f, 1e-4f)
            << flag;
}

TEST(SectorLine, isDarkAtTheDrawnAlpha) {
    QColor dark = Colours::sharedColours().cLineColor();
    EXPECT_EQ(getSectorLine(1.0f, false), dark);
    dark.setAlphaF(0.25f);
    EXPECT_EQ(getSectorLine(0.25f, false), dark);
}

TEST(SectorLine, isOpaqueGreyWhileScanningWhateverTheAlpha) {
    EXPECT_EQ(getSectorLine(0.25f, true), getSectorLine(1.0f, true));
    EXPECT_TRUE(isColour(getSectorLine(0.25f, true), QColor(180, 180, 180), 0));
}

class DiscFillTest : public ChildFlagsTest {};

TEST_F(DiscFillTest, topRootHasItsAgeColourAndAGradient) {
    EXPECT_TRUE(getDiscFill(*tree.root()).bGradient);
    EXPECT_EQ(getDiscFill(*tree.root()).colour, Colours::sharedColours().getColorByTimeCode(0));
}

TEST_F(DiscFillTest, subFolderIsFlatInItsAgeColour) {
    const FolderSystemItem& folder = *tree.folder(tree.root(), "a");
    EXPECT_FALSE(getDiscFill(folder).bGradient);
    EXPECT_EQ(getDiscFill(folder).colour, Colours::sharedColours().getColorByTimeCode(1));
}

TEST_F(DiscFillTest, collectedTopRootHasNoGradient) {
    tree.root()->setCollected(true);
    tree.root()->setTrashFlag(true);
    EXPECT_FALSE(getDiscFill(*tree.root()).bGradient);
    EXPECT_EQ(getDiscFill(*tree.root()).colour, Colours::sharedColours().cCollectedColor());
}

TEST_F(DiscFillTest, trashBeatsHiddenOnTheDiscAndBothComeFromAbove) {
    tree.root()->setHiddenFlag(true);
    const FolderSystemItem& folder = *tree.folder(tree.root(), "a");
    EXPECT_EQ(getDiscFill(folder).colour, Colours::sharedColours().cHiddenColor());
    tree.root()->setTrashFlag(true);
    EXPECT_EQ(getDiscFill(folder).colour, Colours::sharedColours().cTrashColor());
}

} // namespace
} // namespace veltrano
