#pragma once

#include "platform/Settings.h"

#include <cstdint>
#include <optional>
#include <string>

namespace veltrano {

class FolderItemsController;

/// The main controller's settings. A value; what it is made with is what a first start has.
struct SettingValues {
    bool m_bPlaySound = true;       ///< Sounds while the pointer moves over the chart.
    bool m_bPlayFinishSound = true; ///< A sound at the end of a scan.
    bool m_bShowHint = true;        ///< The hint beside the pointer at all.
    bool m_bForceShowHint = false;  ///< The hint also with nothing under the pointer.
    bool m_bDontAskFB = false;      ///< The feedback sheet is not wanted any more.
    bool m_bFBSent = false;         ///< A letter with feedback was opened.
    std::uint32_t m_nScanned = 0;   ///< Scans ended so far.

    bool operator==(const SettingValues&) const = default;
};

/// What loading found.
struct LoadedSettings {
    SettingValues values{};
    std::optional<std::string> selectedVolume{}; ///< Path of the entry that was selected, bytes.
};

/// Reads the settings. Before the first save they are those of a first start, whatever else is stored; after
/// it every truth value that is missing or is none reads false, and a counter 0.
[[nodiscard]] LoadedSettings loadSettings(const Settings& settings);

/// Fills both lists from the settings, the favourites first; a list that was never saved gets its default
/// content.
void loadFolderLists(FolderItemsController& favourites, FolderItemsController& recents);

/// Writes everything, last of all that it was saved, and brings it to the disk; false if that failed. Without
/// a selected entry the path that was stored stays.
[[nodiscard]] bool saveSettings(Settings& settings, const SettingValues& values,
                                const std::optional<std::string>& selectedVolume,
                                const FolderItemsController& favourites,
                                const FolderItemsController& recents);

} // namespace veltrano
