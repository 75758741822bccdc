// The life of a scan: start, progress, finish run, end and stop.

#include "app/CSTreeController.h"

#include "app/DisplayText.h"
#include "app/MainWindow.h"
#include "app/ProgressBlock.h"
#include "chart/ChartArea.h"
#include "chart/RadialController.h"
#include "scan/SizeText.h"

#include <QPointer>

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
    if (isProcessing() || !m_pSelectedEntry)
        return;
    const std::string path = m_pSelectedEntry->getPath();
    if (!m_services.files.fileExistsAtPath(path)) {
        askAboutVanishedFolder(path);
        return;
    }
    initstart();
    initSizeCaptions(path);
    // No list of the biggest files takes part yet.
    const auto root = dirwalker->StartWalkWithPath(path, static_cast<std::uint64_t>(nvoloc), nullptr);
    mRadialController.setRoot(root.get(), true, true);
    m_pSelectedEntry->setScannedRoot(root);
    m_pSelectedEntry->setScanCompleted(false);
    m_pScannedEntry = m_pSelectedEntry;
    mRadialController.StartAnimation();
    mainWindow.setStartHintShown(false);
    mainWindow.setCanScan(false);
    mainWindow.setScanning(true);
}

void CSTreeController::askAboutVanishedFolder(const std::string& path) {
    Alerts::Question question;
    question.message = "Can't scan folder.";
    question.informativeText =
        "Folder \"" + displayText(path).toStdString() + "\" does not exist. Remove it from the Favorites?";
    question.buttons = {"Yes", "No"};
    // The answer is about the entry that the question names, whatever is selected by then.
    const QPointer<CSTreeController> self(this);
    m_services.alerts.ask(question, [self, entry = m_pSelectedEntry](int button) {
        if (self && button == 0 && self->m_pSelectedEntry == entry)
            self->actionRemoveFolder();
    });
}

void CSTreeController::initstart() {
    nposition = 0;
    dirwalker->ClearResultsTree();
    dockProgress = ScanProgress{.value = ScanProgress::kMinimum, .indeterminate = !m_pSelectedEntry->isVol()};
    mdProgress = 0;
    mainWindow.progress().setText(tr("Scanning “%1”").arg(displayText(m_pSelectedEntry->getDisplayName())));
    mainWindow.progress().setCounter(QString());
    showProgress();
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
    dockProgress.count(mdProgress, nvoloc);
    showProgress();
    showStatus();
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
    if (dockProgress.value == ScanProgress::kMaximum)
        walkEnd(true);
    else
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
    // The end of the way is known, so the bar shows it also where it could not during the scan.
    dockProgress.indeterminate = false;
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
    dockProgress.value = ScanProgress::kMinimum;
    showProgress();
    mainWindow.setScanning(false);
    mainWindow.setCanScan(m_pSelectedEntry != nullptr);
    const auto root = dirwalker->getRootItem();
    if (root)
        root->initSizesByLevels();
    if (m_pScannedEntry) {
        m_pScannedEntry->setScannedRoot(root);
        m_pScannedEntry->setScanCompleted(completed);
    }
    if (root && m_pSelectedEntry && m_pSelectedEntry->getPath() == root->getFullPath())
        mRadialController.setRoot(root.get(), true, true);
    ++m_nScanned;
    if (m_bPlayFinishSound)
        m_services.sounds.play("Submarine");
}

void CSTreeController::stopAction() {
    if (isProcessing())
        mainWindow.setCanScan(false);
    dirwalker->StopWalking();
    mainWindow.setScanning(isProcessing());
}

} // namespace veltrano
