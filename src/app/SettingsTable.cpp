#include "app/SettingsTable.h"

#include "app/FolderItemsController.h"

#include <limits>
#include <string_view>

namespace veltrano {

namespace {

/// One truth value: its key and its field.
struct Switch {
    std::string_view key;
    bool SettingValues::*field;
};

/// In the order of writing; the selected entry stands between the two tables.
constexpr Switch kSoundsAndHints[] = {{"PlaySound", &SettingValues::m_bPlaySound},
                                      {"PlayFinishSound", &SettingValues::m_bPlayFinishSound},
                                      {"ShowHint", &SettingValues::m_bShowHint},
                                      {"ForceShowHint", &SettingValues::m_bForceShowHint}};
constexpr Switch kFeedback[] = {{"DontAskFB", &SettingValues::m_bDontAskFB},
                                {"FBSent", &SettingValues::m_bFBSent}};

constexpr std::string_view kSavedKey = "Saved";
constexpr std::string_view kSelectedVolumeKey = "SelectedVolume";
constexpr std::string_view kScannedKey = "Scanned";

/// 0 for a number that the counter can't hold.
std::uint32_t counterFrom(std::int64_t number) {
    const bool fits = number >= 0 && number <= std::numeric_limits<std::uint32_t>::max();
    return fits ? static_cast<std::uint32_t>(number) : 0;
}

} // namespace

LoadedSettings loadSettings(const Settings& settings) {
    LoadedSettings loaded;
    if (!settings.boolForKey(kSavedKey).value_or(false))
        return loaded;
    for (const Switch& each : kSoundsAndHints)
        loaded.values.*each.field = settings.boolForKey(each.key).value_or(false);
    for (const Switch& each : kFeedback)
        loaded.values.*each.field = settings.boolForKey(each.key).value_or(false);
    loaded.values.m_nScanned = counterFrom(settings.integerForKey(kScannedKey).value_or(0));
    loaded.selectedVolume = settings.stringForKey(kSelectedVolumeKey);
    return loaded;
}

void loadFolderLists(FolderItemsController& favourites, FolderItemsController& recents) {
    for (FolderItemsController* const list : {&favourites, &recents}) {
        if (!list->initFromPreferences())
            list->initFolderListByDefault();
    }
}

bool saveSettings(Settings& settings, const SettingValues& values,
                  const std::optional<std::string>& selectedVolume, const FolderItemsController& favourites,
                  const FolderItemsController& recents) {
    for (const Switch& each : kSoundsAndHints)
        settings.setBool(each.key, values.*each.field);
    if (selectedVolume)
        settings.setString(kSelectedVolumeKey, *selectedVolume);
    for (const Switch& each : kFeedback)
        settings.setBool(each.key, values.*each.field);
    settings.setInteger(kScannedKey, values.m_nScanned);
    favourites.saveToPreferences();
    recents.saveToPreferences();
    settings.setBool(kSavedKey, true);
    return settings.synchronize();
}

} // namespace veltrano
