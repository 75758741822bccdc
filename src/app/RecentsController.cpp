#include "app/RecentsController.h"

#include <limits>

namespace veltrano {

namespace {

constexpr std::string_view kFoldersKey = "Recents";
constexpr std::string_view kSubKey = "Recent";
constexpr std::string_view kLimitKey = "RecentsLimit";

} // namespace

void RecentsController::setRecentsLimit(std::int32_t limit) {
    if (limit < 1)
        return;
    m_nRecentsLimit = limit;
    while (foldersCount() > static_cast<std::size_t>(limit))
        removeLast();
}

RecentsController::Entry RecentsController::addFolderToList(const std::string& path, WithCheck withCheck) {
    if (withCheck == WithCheck::No)
        return FolderItemsController::addFolderToList(path, withCheck);
    const std::string added = path; // The caller's may lie in the entry that goes.
    removeFolderFromList(added);
    Entry entry = createFolderItemByPath(added);
    if (!entry)
        return nullptr;
    while (foldersCount() >= static_cast<std::size_t>(m_nRecentsLimit))
        removeLast();
    insertFirst(entry);
    return entry;
}

bool RecentsController::initFromPreferences() {
    if (!initListFromPreferences("", kFoldersKey, kSubKey))
        return false;
    const std::int64_t limit = getSettings().integerForKey(kLimitKey).value_or(kUsualLimit);
    const bool isLimit = limit >= 1 && limit <= std::numeric_limits<std::int32_t>::max();
    m_nRecentsLimit = isLimit ? static_cast<std::int32_t>(limit) : kUsualLimit;
    return true;
}

bool RecentsController::saveToPreferences() const {
    const bool isSaved = saveListToPreferences("", kFoldersKey, kSubKey);
    getSettings().setInteger(kLimitKey, m_nRecentsLimit);
    return isSaved;
}

} // namespace veltrano
