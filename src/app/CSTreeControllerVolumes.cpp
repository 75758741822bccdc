// The sidebar's rows: volumes that come, go and change, what is shown, and what is selected.

#include "app/CSTreeController.h"

#include "app/MainWindow.h"
#include "appearance/PushButton.h"
#include "chart/RadialController.h"

#include <QPointer>

#include <utility>

namespace veltrano {

namespace {

/// Between two looks at the volumes, seconds.
constexpr double kVolumesUpdateInterval = 10;

} // namespace

void CSTreeController::enumVolumes() {
    if (dirwalker->enumerateVolumes())
        fillVolumesTable();
}

void CSTreeController::fillVolumesTable() {
    const std::optional<std::string> selected = mVolsController->getSelectedVolume();
    mVolsController->resetVolumesArray();
    if (m_nTableShowType != TableShowType::Folders)
        mVolsController->setVolumesArray(dirwalker->getVolumesInfo(), false);
    if (showsFolders())
        mVolsController->addFFolders(mFFoldersController.getFoldersArray(),
                                     mRecentsController.getFoldersArray());
    mVolsController->reloadData();
    mVolsController->selectVolumeByNameOrAny(selected);
    showScanState();
}

void CSTreeController::setTableShowType(TableShowType type) {
    if (type == m_nTableShowType)
        return;
    m_nTableShowType = type;
    fillVolumesTable();
}

void CSTreeController::setTableShowTypeAll() {
    setTableShowType(TableShowType::All);
}

void CSTreeController::setTableShowTypeVolumes() {
    if (!isProcessing())
        setTableShowType(TableShowType::Volumes);
}

void CSTreeController::setTableShowTypeFolders() {
    if (!isProcessing())
        setTableShowType(TableShowType::Folders);
}

std::shared_ptr<TopLevelItem> CSTreeController::selectVolumeByName(const std::optional<std::string>& path) {
    return mVolsController->selectVolumeByName(path);
}

void CSTreeController::didSelectionChange(const std::shared_ptr<TopLevelItem>& item) {
    showScanState();
    mainWindow.removeEntryButton().setEnabled(item && item->isFolder());
}

void CSTreeController::didMountVolume(const std::string& path) {
    const std::shared_ptr<VolumeItem> added = dirwalker->addVolumeAtPath(path);
    if (m_nTableShowType == TableShowType::All)
        fillVolumesTable();
    if (m_nTableShowType != TableShowType::Volumes)
        return;
    const std::optional<std::string> selected = mVolsController->getSelectedVolume();
    mVolsController->volumesCountChanged(true, path, added);
    mVolsController->selectVolumeByNameOrAny(selected);
}

void CSTreeController::didUnmountVolume(const std::string& path) {
    const std::optional<std::string> selected = mVolsController->getSelectedVolume();
    if (getProcessingVol() == path)
        stopAction();
    mRadialController.volumeWasRemoved(path);
    if (!mRadialController.getRootObject())
        m_pShownEntry.reset(); // with its tree
    dirwalker->removeVolFromList(path);
    mVolsController->volumesCountChanged(false, path, nullptr);
    mVolsController->selectVolumeByNameOrAny(selected);
    showScanState();
}

void CSTreeController::schedulePeriodicUpdate(double seconds) {
    m_nPeriodicUpdate = m_services.mainLoop.callLater(seconds, [this] { periodicUpdateVolumesInfo(); });
}

void CSTreeController::periodicUpdateVolumesInfo() {
    // The answers come when they come; the next look does not wait for them.
    const QPointer<CSTreeController> self(this);
    m_services.volumes.refresh([self] {
        if (self)
            self->simpleUpdateVolumesInfo();
    });
    schedulePeriodicUpdate(kVolumesUpdateInterval);
}

void CSTreeController::simpleUpdateVolumesInfo() {
    if (!dirwalker->updateVolumesInfo())
        return;
    fillVolumesTable();
    mRadialController.updateRadialView();
}

} // namespace veltrano
