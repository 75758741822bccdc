// Folders of the sidebar: choosing one to scan, favourites and recents.

#include "app/CSTreeController.h"

#include "app/DisplayText.h"
#include "app/MainWindow.h"

#include <QPointer>

namespace veltrano {

void CSTreeController::actionScanFolder() {
    if (!isProcessing())
        mainWindow.openFolderPanel();
}

void CSTreeController::doScanFolder(const std::string& path) {
    if (isProcessing())
        return;
    // A volume is a large thing to read: choosing its root selects it, and its scan is asked for by itself.
    if (dirwalker->getVolumeItemWithPath(path)) {
        selectVolumeByName(path);
        return;
    }
    if (mFFoldersController.getFolderItemByPath(path)) {
        if (!showsFolders())
            setTableShowType(TableShowType::Folders);
    } else {
        if (!mRecentsController.addFolderToList(path, FolderItemsController::WithCheck::Yes))
            return;
        mRecentsController.saveToPreferences();
        if (!showsFolders())
            setTableShowType(TableShowType::Folders);
        else
            fillVolumesTable();
    }
    mVolsController->selectVolumeByNameOrAny(path);
    startAction();
}

/// Never waits for a path that does not answer: what hangs in a dead mount is taken to be there, and its scan
/// can be stopped.
bool CSTreeController::isThere(const std::string& path) const {
    if (dirwalker->getVolumeItemWithPath(path))
        return true; // as the mount table tells
    const std::vector<FolderFacts> answers = m_services.folderQuestions.ask({path});
    return answers.front().answer != FolderAnswer::NoFolder || m_services.files.fileExistsAtPath(path);
}

void CSTreeController::askAboutVanishedFolder(const std::string& path) {
    Alerts::Question question;
    question.message = tr("Can't scan folder.").toStdString();
    question.informativeText = tr("Folder \"%1\" does not exist. Remove it from the Favorites?")
                                   .arg(displayText(path))
                                   .toStdString();
    question.buttons = {tr("Yes").toStdString(), tr("No").toStdString()};
    // The answer is about the folder that the question names, whatever is selected by then.
    const QPointer<CSTreeController> self(this);
    m_services.alerts.ask(question, [self, path](int button) {
        if (self && button == 0)
            self->removeFolder(path);
    });
}

void CSTreeController::addFolderToFavorite(const FileSystemItem& item) {
    const std::string path = item.getFullPath();
    if (dirwalker->getVolumeItemWithPath(path) || mFFoldersController.getFolderItemByPath(path)) {
        selectVolumeByName(path);
        return;
    }
    if (const auto recent = mRecentsController.getFolderItemByPath(path)) {
        moveToFavorites(recent);
    } else {
        if (!mFFoldersController.addFolderToList(path, FolderItemsController::WithCheck::Yes))
            return;
        mFFoldersController.saveToPreferences();
    }
    if (!showsFolders())
        return;
    fillVolumesTable();
    selectVolumeByName(path);
}

bool CSTreeController::isFolderFavorite(const FileSystemItem& item) const {
    return mFFoldersController.getFolderItemByPath(item.getFullPath()) != nullptr;
}

/// The entry keeps its tree.
void CSTreeController::moveToFavorites(const std::shared_ptr<FolderItem>& recent) {
    mFFoldersController.addFolderItemToList(recent);
    mRecentsController.removeFolderItemFromList(recent.get());
    mRecentsController.saveToPreferences();
    mFFoldersController.saveToPreferences();
}

void CSTreeController::actionRemoveFolder() {
    if (const auto selected = mVolsController->getSelectedVolume())
        removeFolder(*selected);
}

void CSTreeController::removeFolder(const std::string& path) {
    FolderItemsController* list = nullptr;
    if (mRecentsController.getFolderItemByPath(path))
        list = &mRecentsController;
    else if (mFFoldersController.getFolderItemByPath(path))
        list = &mFFoldersController;
    if (!list)
        return;
    if (getProcessingVol() == path)
        stopAction();
    list->removeFolderFromList(path);
    list->saveToPreferences();
    if (showsFolders())
        fillVolumesTable();
}

bool CSTreeController::isSelectedRecentFolder() const {
    const auto selected = mVolsController->getObjectForSelectedRow();
    return selected && selected->isFolder() && mRecentsController.getIndexOfItem(selected.get());
}

void CSTreeController::actionAddToFavorites() {
    if (!isSelectedRecentFolder())
        return;
    const std::string path = mVolsController->getObjectForSelectedRow()->getPath();
    moveToFavorites(mRecentsController.getFolderItemByPath(path));
    if (!showsFolders())
        return;
    fillVolumesTable();
    selectVolumeByName(path);
}

} // namespace veltrano
