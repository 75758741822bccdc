#include "app/CSTreeController.h"

#include "app/DisplayText.h"
#include "app/MainWindow.h"
#include "app/ProgressBlock.h"
#include "chart/ChartArea.h"
#include "chart/RadialController.h"
#include "scan/SizeText.h"
#include "tree/PathComponents.h"

#include <QLocale>

#include <utility>

namespace veltrano {

CSTreeController::CSTreeController(const Services& services, std::unique_ptr<CModel> model,
                                   MainWindow& window)
    : m_services(services),
      mainWindow(window),
      mRadialController(window.chartArea().controller()),
      dirwalker(std::move(model)) {
    mRadialController.setHost(this);

    auto observe = [this](std::string_view name, NotificationCentre::Handler handler) {
        m_observers.push_back(m_services.notifications.addObserver(std::string(name), std::move(handler)));
    };
    using Object = NotificationCentre::Object;
    observe(DIUpdateProgressNotification, [this](const Object& counted) { updateProgress(counted); });
    observe(FinishWalkingVolume, [this](const Object&) { walkfinished(); });
    observe(WalkingVolumeCanceled, [this](const Object&) { walkcanceled(); });

    connect(&mainWindow, &MainWindow::scanToggled, this, &CSTreeController::toggleStartStopScan);
    connect(&mainWindow, &MainWindow::folderPanelRequested, this, &CSTreeController::actionScanFolder);
    connect(&mainWindow, &MainWindow::folderChosen, this,
            [this](const QByteArray& path) { doScanFolder(path.toStdString()); });
    connect(&mainWindow, &MainWindow::liveResizeStarted, this, [this] {
        mRadialController.SuspendAnimation();
        mRadialController.hideSelectionDuringLiveResize();
    });
    connect(&mainWindow, &MainWindow::liveResizeEnded, this, [this] {
        mRadialController.ResumeAnimation();
        mRadialController.showSelectionAfterLiveResize();
    });
}

CSTreeController::~CSTreeController() {
    for (const auto token : m_observers)
        m_services.notifications.removeObserver(token);
    m_services.mainLoop.cancel(m_nDelayedUpdate);
    m_services.mainLoop.cancel(m_nFinishRun);
    m_services.mainLoop.cancel(m_nChartUpdate);
    mRadialController.setHost(nullptr);
}

void CSTreeController::actionScanFolder() {
    if (!isProcessing())
        mainWindow.openFolderPanel();
}

void CSTreeController::doScanFolder(const std::string& path) {
    // A volume is a large thing to read: choosing its root selects it, and its scan is asked for by itself.
    if (auto volume = dirwalker->getVolumeItemWithPath(path)) {
        m_pSelectedEntry = std::move(volume);
        mainWindow.setCanScan(true);
        return;
    }
    if (!m_pSelectedEntry || m_pSelectedEntry->getPath() != path) {
        std::string name(lastPathComponent(path));
        m_pSelectedEntry = std::make_shared<FolderItem>(path, std::move(name), 0, 0, 0);
    }
    startAction();
}

void CSTreeController::actionRemoveFolder() {
    mRadialController.setRoot(nullptr);
    m_pSelectedEntry.reset();
    mainWindow.setCanScan(false);
    mainWindow.setStartHintShown(true);
}

QString CSTreeController::getDisplayText(std::string_view bytes) const {
    return displayText(bytes);
}

void CSTreeController::showProgress() {
    ProgressBlock& progress = mainWindow.progress();
    progress.bar().setIndeterminate(dockProgress.indeterminate);
    progress.bar().setValue(dockProgress.value);
}

void CSTreeController::showStatus() {
    // Without an end in sight, what has been found says more than how often it was reported.
    const QString bytes =
        mdProgress > 0
            ? QString::fromStdString(stringFromFileSizeShort1(static_cast<std::int64_t>(mdProgress)))
            : QString();
    mainWindow.progress().setCounter(dockProgress.indeterminate ? bytes : QLocale().toString(nposition));
}

} // namespace veltrano
