// The life of a scan: start, progress, finish run, end and stop.

#include "app/CSTreeController.h"

#include "app/DisplayText.h"
#include "app/MainWindow.h"
#include "app/ProgressBlock.h"
#include "appearance/PushButton.h"
#include "chart/ChartArea.h"
#include "chart/RadialController.h"
#include "scan/SizeText.h"

#include <any>
#include <utility>

namespace veltrano {

namespace {

/// From the click to the first look at the progress, seconds.
constexpr double kFirstUpdateDelay = 0.02;

} // namespace

bool CSTreeController::isProcessing() const {
    return dirwalker->getProcessing();
}

std::optional<std::string> CSTreeController::getProcessingVol() const {
    return dirwalker->getStartPath();
}

void CSTreeController::toggleStartStopScan() {
    if (isProcessing())
        stopAction();
    else
        startAction();
}

void CSTreeController::startAction() {
    if (isProcessing())
        return;
    const std::optional<std::string> path = mVolsController->getSelectedVolume();
    if (!path)
        return;
    if (!isThere(*path)) {
        askAboutVanishedFolder(*path);
        return;
    }
    initstart();
    initSizeCaptions(*path);
    // No list of the biggest files takes part yet.
    const auto root = dirwalker->StartWalkWithPath(*path, static_cast<std::uint64_t>(nvoloc), nullptr);
    mRadialController.setRoot(root.get(), true, true);
    mVolsController->setScannedRootInfo(root, false);
    mRadialController.StartAnimation();
    setCanStart(false);
    mVolsController->reloadData();
    showScanState();
}

void CSTreeController::initstart() {
    mainWindow.setProgressShown(true);
    nposition = 0;
    dirwalker->ClearResultsTree();
    // What is left of the finish run of a scan that was overtaken would end this one.
    m_services.mainLoop.cancel(std::exchange(m_nFinishRun, 0));
    const auto selected = mVolsController->getObjectForSelectedRow();
    dockProgress =
        ScanProgress{.value = ScanProgress::kMinimum, .indeterminate = !selected || !selected->isVol()};
    mdProgress = 0; // what the last scan counted says nothing of this one
    if (selected)
        mainWindow.progress().setText(tr("Scanning “%1”").arg(displayText(selected->getDisplayName())));
    mainWindow.progress().setCounter(QString());
    showProgress();
    mainWindow.progress().bar().setDisplayTimeRemaining(true);
    mainWindow.progress().bar().setDrawDockProgress(true);
    mainWindow.progress().bar().startAnimation();
    scheduleUpdateProgressDelay();
}

void CSTreeController::initSizeCaptions(const std::string& path) {
    const auto volume = dirwalker->getVolumeItemWithPath(path);
    if (!volume)
        return; // the numbers of the last volume stay
    nvolsize = volume->getsize();
    nvolfr = volume->getfsize();
    nvoloc = nvolsize - nvolfr;
    nnodes = volume->getnodescount();
}

void CSTreeController::scheduleUpdateProgressDelay() {
    cancelUpdateProgressDelay();
    m_nDelayedUpdate = m_services.mainLoop.callLater(kFirstUpdateDelay, [this] {
        m_nDelayedUpdate = 0;
        updateProgressDelay();
    });
}

void CSTreeController::cancelUpdateProgressDelay() {
    m_services.mainLoop.cancel(std::exchange(m_nDelayedUpdate, 0));
}

void CSTreeController::updateProgress(const NotificationCentre::Object& counted) {
    ++nposition;
    mdProgress = static_cast<double>(std::any_cast<std::int64_t>(counted));
    updateProgressDelay();
}

void CSTreeController::updateProgressDelay() {
    if (dockProgress.count(mdProgress, nvoloc)) {
        showProgress();
        showStatus();
    }
    if (m_nChartUpdate)
        return;
    // In a turn of its own, so that a merge and the chart's layout do not add up in one.
    m_nChartUpdate = m_services.mainLoop.callLater(0, [this] {
        m_nChartUpdate = 0;
        mRadialController.UpdateRadialStructureDuringProcessByRoot(dirwalker->getRootItem().get());
    });
}

void CSTreeController::walkfinished() {
    cancelUpdateProgressDelay();
    // A bar without an end is never there, though the numbers of another volume may say so.
    if (!dockProgress.indeterminate && dockProgress.value == ScanProgress::kMaximum) {
        walkEnd(true);
        return;
    }
    // From the speed of the finish run nothing can be told.
    mainWindow.progress().bar().setDisplayTimeRemaining(false);
    initfinalizeTimer();
}

void CSTreeController::walkcanceled() {
    cancelUpdateProgressDelay();
    walkEnd(false);
}

void CSTreeController::initfinalizeTimer() {
    m_services.mainLoop.cancel(m_nFinishRun);
    m_nFinishRun = m_services.mainLoop.callLater(ScanProgress::kFinishInterval, [this] {
        m_nFinishRun = 0;
        ProgressFinalizeTimer();
    });
}

void CSTreeController::ProgressFinalizeTimer() {
    int next = dockProgress.nextFinishValue();
    if (next > ScanProgress::kMaximum) {
        walkEnd(true);
        next = ScanProgress::kMaximum;
    } else {
        initfinalizeTimer();
    }
    dockProgress.value = next;
    showProgress();
}

void CSTreeController::walkEnd(bool completed) {
    cancelUpdateProgressDelay();
    mRadialController.StopAnimation();
    dirwalker->setStartPath(std::nullopt);
    mainWindow.progress().bar().setDrawDockProgress(false);
    dockProgress.value = ScanProgress::kMinimum;
    showProgress();
    mainWindow.progress().bar().stopAnimation();
    mainWindow.setProgressShown(false);
    mVolsController->reloadData();
    setCanStart(true);
    // Held here: what hears of the end may start another scan.
    const std::shared_ptr<FolderSystemItem> root = dirwalker->getRootItem();
    if (root) {
        root->initSizesByLevels();
        mVolsController->setScannedRootInfo(root, completed);
        if (mVolsController->getSelectedVolume() == root->getFullPath())
            setRootForRadial(root.get(), mVolsController->getObjectForSelectedRow());
    }
    showScanState();
    BBScanedNotify();
    if (getPlayFinishSound())
        m_services.sounds.play("Submarine");
}

void CSTreeController::BBScanedNotify() {
    ++m_settings.m_nScanned;
    SavePrefParameters();
}

void CSTreeController::stopAction() {
    if (isProcessing())
        setCanStart(false);
    dirwalker->StopWalking();
    showScanState();
}

void CSTreeController::setCanStart(bool canStart) {
    m_bCanStart = canStart;
    mVolsController->setCanStart(canStart);
}

void CSTreeController::showScanState() {
    mainWindow.setScanning(isProcessing());
    const auto selected = mVolsController->getObjectForSelectedRow();
    mainWindow.setCanScan(m_bCanStart && selected);
    mainWindow.removeEntryButton().setEnabled(selected && selected->isFolder());
    validateMenuItems();
}

void CSTreeController::showProgress() {
    ProgressBlock& progress = mainWindow.progress();
    progress.bar().setIndeterminate(dockProgress.indeterminate);
    progress.bar().setDoubleValue(dockProgress.value);
}

void CSTreeController::showStatus() {
    mainWindow.progress().setCounter(QString::fromStdString(dividedStringFromNumber(nposition)));
}

} // namespace veltrano
