// What the main controller keeps from one run to the next, and in what order it is written.

#include "app/SettingsTable.h"

#include "app/FFoldersController.h"
#include "app/QtSettings.h"
#include "app/RecentsController.h"
#include "support/FakeFolderQuestions.h"
#include "support/MapSettings.h"
#include "support/TestDir.h"

#include <gmock/gmock.h>

namespace veltrano {
namespace {

using testing::ElementsAre;
using WithCheck = FolderItemsController::WithCheck;

/// Every value unlike that of a first start.
constexpr SettingValues kUnlike{.m_bPlaySound = false,
                                .m_bPlayFinishSound = false,
                                .m_bShowHint = false,
                                .m_bForceShowHint = true,
                                .m_bDontAskFB = true,
                                .m_bFBSent = true,
                                .m_nScanned = 4'000'000'000U};

struct SettingsTableTest : testing::Test {
    SettingsTableTest() {
        questions.addFolder("/usr");
        questions.addFolder("/home/me");
    }

    bool save(Settings& to, const SettingValues& values, const std::optional<std::string>& selected) {
        return saveSettings(to, values, selected, favourites, recents);
    }

    MapSettings settings;
    FakeFolderQuestions questions;
    FFoldersController favourites{settings, questions, {"/usr", "/home/me", std::nullopt}};
    RecentsController recents{settings, questions};
};

TEST_F(SettingsTableTest, aFirstStartHasSoundsAndTheHintAndNothingElse) {
    const LoadedSettings loaded = loadSettings(settings);
    EXPECT_TRUE(loaded.values.m_bPlaySound);
    EXPECT_TRUE(loaded.values.m_bPlayFinishSound);
    EXPECT_TRUE(loaded.values.m_bShowHint);
    EXPECT_FALSE(loaded.values.m_bForceShowHint);
    EXPECT_FALSE(loaded.values.m_bDontAskFB);
    EXPECT_FALSE(loaded.values.m_bFBSent);
    EXPECT_EQ(loaded.values.m_nScanned, 0U);
    EXPECT_EQ(loaded.selectedVolume, std::nullopt);
}

TEST_F(SettingsTableTest, nothingIsReadBeforeTheFirstSave) {
    ASSERT_TRUE(save(settings, kUnlike, "/home"));
    for (const bool isRemoved : {false, true}) {
        if (isRemoved)
            settings.remove("Saved");
        else
            settings.setBool("Saved", false);
        EXPECT_EQ(loadSettings(settings).values, SettingValues());
        EXPECT_EQ(loadSettings(settings).selectedVolume, std::nullopt);
    }
}

TEST_F(SettingsTableTest, aSavedMarkOfAnotherTypeIsNone) {
    ASSERT_TRUE(save(settings, kUnlike, "/home"));
    settings.setInteger("Saved", 1);
    EXPECT_EQ(loadSettings(settings).values, SettingValues());
}

TEST_F(SettingsTableTest, whatWasSavedIsRead) {
    EXPECT_TRUE(save(settings, kUnlike, "/m\xFCller"));
    EXPECT_EQ(loadSettings(settings).values, kUnlike);
    EXPECT_EQ(loadSettings(settings).selectedVolume, "/m\xFCller");
}

TEST_F(SettingsTableTest, whatWasSavedIsReadFromARealFile) {
    const TestDir folder;
    const std::string file = folder.path("Quorvex/Veltrano.conf");
    {
        QtSettings real(file);
        EXPECT_TRUE(save(real, kUnlike, "/m\xFCller"));
    }
    const LoadedSettings loaded = loadSettings(QtSettings(file));
    EXPECT_EQ(loaded.values, kUnlike);
    EXPECT_EQ(loaded.selectedVolume, "/m\xFCller");
}

TEST_F(SettingsTableTest, everyKeyHoldsItsOwnValue) {
    const std::pair<const char*, bool SettingValues::*> kTable[] = {
        {"PlaySound", &SettingValues::m_bPlaySound}, {"PlayFinishSound", &SettingValues::m_bPlayFinishSound},
        {"ShowHint", &SettingValues::m_bShowHint},   {"ForceShowHint", &SettingValues::m_bForceShowHint},
        {"DontAskFB", &SettingValues::m_bDontAskFB}, {"FBSent", &SettingValues::m_bFBSent}};
    for (const auto& [key, field] : kTable) {
        SettingValues values;
        for (const auto& [otherKey, otherField] : kTable)
            values.*otherField = otherField == field;
        ASSERT_TRUE(save(settings, values, {}));
        for (const auto& [otherKey, otherField] : kTable)
            EXPECT_EQ(settings.boolForKey(otherKey), otherField == field) << key << ' ' << otherKey;
        EXPECT_EQ(loadSettings(settings).values, values) << key;
    }
}

TEST_F(SettingsTableTest, valuesThatAreMissingAfterASaveReadFalse) {
    settings.setBool("Saved", true);
    const SettingValues values = loadSettings(settings).values;
    EXPECT_FALSE(values.m_bPlaySound);
    EXPECT_FALSE(values.m_bPlayFinishSound);
    EXPECT_FALSE(values.m_bShowHint);
    EXPECT_FALSE(values.m_bForceShowHint);
    EXPECT_FALSE(values.m_bDontAskFB);
    EXPECT_FALSE(values.m_bFBSent);
    EXPECT_EQ(values.m_nScanned, 0U);
}

TEST_F(SettingsTableTest, valuesOfAnotherTypeReadAsMissingOnes) {
    settings.setBool("Saved", true);
    settings.setString("PlaySound", "loud");
    settings.setString("Scanned", "often");
    settings.setArray("SelectedVolume", {"/a", "/b"});
    const LoadedSettings loaded = loadSettings(settings);
    EXPECT_FALSE(loaded.values.m_bPlaySound);
    EXPECT_EQ(loaded.values.m_nScanned, 0U);
    EXPECT_EQ(loaded.selectedVolume, std::nullopt);
}

TEST_F(SettingsTableTest, aCounterOutOfRangeReadsZero) {
    settings.setBool("Saved", true);
    for (const std::int64_t number : {std::int64_t{-1}, std::int64_t{1} << 32}) {
        settings.setInteger("Scanned", number);
        EXPECT_EQ(loadSettings(settings).values.m_nScanned, 0U) << number;
    }
}

TEST_F(SettingsTableTest, everythingIsWrittenInOrderAndThatItWasSavedLast) {
    EXPECT_TRUE(save(settings, {}, "/home"));
    EXPECT_THAT(settings.written, ElementsAre("PlaySound", "PlayFinishSound", "ShowHint", "ForceShowHint",
                                              "SelectedVolume", "DontAskFB", "FBSent", "Scanned", "FFolders",
                                              "Recents", "RecentsLimit", "Saved"));
    EXPECT_EQ(settings.boolForKey("Saved"), true);
    EXPECT_EQ(settings.synchronizations, 1);
}

TEST_F(SettingsTableTest, withNothingSelectedTheOldSelectionStays) {
    EXPECT_TRUE(save(settings, {}, "/home"));
    settings.written.clear();
    EXPECT_TRUE(save(settings, {}, std::nullopt));
    EXPECT_THAT(settings.written, testing::Not(testing::Contains("SelectedVolume")));
    EXPECT_EQ(loadSettings(settings).selectedVolume, "/home");
}

TEST_F(SettingsTableTest, aSaveThatDoesNotReachTheDiskSaysSo) {
    settings.canSynchronize = false;
    EXPECT_FALSE(save(settings, {}, std::nullopt));
}

TEST_F(SettingsTableTest, listsThatWereNeverSavedGetTheirDefaults) {
    loadFolderLists(favourites, recents);
    EXPECT_EQ(favourites.foldersCount(), 2U);
    EXPECT_EQ(recents.foldersCount(), 0U);
}

TEST_F(SettingsTableTest, listsThatWereSavedEmptyStayEmpty) {
    settings.setArray("FFolders", {});
    settings.setArray("Recents", {});
    loadFolderLists(favourites, recents);
    EXPECT_EQ(favourites.foldersCount(), 0U);
    EXPECT_EQ(recents.foldersCount(), 0U);
}

TEST_F(SettingsTableTest, theFavouritesAreLoadedBeforeTheRecents) {
    settings.setArray("FFolders", {"/home/me"});
    settings.setArray("Recents", {"/usr"});
    loadFolderLists(favourites, recents);
    EXPECT_THAT(questions.asked, ElementsAre(ElementsAre("/home/me"), ElementsAre("/usr")));
    EXPECT_EQ(favourites.getFolderItemByIndex(0)->getPath(), "/home/me");
    EXPECT_EQ(recents.getFolderItemByIndex(0)->getPath(), "/usr");
}

} // namespace
} // namespace veltrano
