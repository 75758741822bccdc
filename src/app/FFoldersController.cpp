#include "app/FFoldersController.h"

#include "tree/PathComponents.h"

#include <utility>

namespace veltrano {

namespace {

constexpr std::string_view kFoldersKey = "FFolders";
constexpr std::string_view kSubKey = "FFolder";

/// A path as the rest of the program writes it, so that it is known again: some desktops give the home folder
/// a separator at its end.
std::string withoutTrailingSeparator(std::string path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    return path;
}

} // namespace

FFoldersController::FFoldersController(Settings& settings, FolderQuestions& questions, DefaultPlaces places)
    : FolderItemsController(settings, questions), m_places(std::move(places)) {}

bool FFoldersController::initFromPreferences() {
    return initListFromPreferences("", kFoldersKey, kSubKey);
}

void FFoldersController::initFolderListByDefault() {
    std::vector<std::string> paths{m_places.applications, withoutTrailingSeparator(m_places.home)};
    if (m_places.downloads)
        paths.push_back(withoutTrailingSeparator(*m_places.downloads));
    appendFolders(paths);

    // Not everybody has this one: it must have said that it is there.
    std::string dropbox = withoutTrailingSeparator(m_places.home);
    appendPathComponent(dropbox, "Dropbox");
    if (getQuestions().ask({dropbox}).front().answer == FolderAnswer::Folder)
        addFolderToList(dropbox, WithCheck::No);
}

bool FFoldersController::saveToPreferences() const {
    return saveListToPreferences("", kFoldersKey, kSubKey);
}

} // namespace veltrano
