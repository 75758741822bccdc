#include "app/CSTreeController.h"

#include "app/DisplayText.h"
#include "app/MainWindow.h"
#include "app/ModifiedDateText.h"
#include "app/p1AppDelegate.h"
#include "appearance/PushButton.h"
#include "chart/ChartArea.h"
#include "chart/PanelController.h"
#include "chart/RadialController.h"

#include <algorithm>
#include <utility>

namespace veltrano {

namespace {

/// From the start to the first look at the volumes, seconds: by then the start is over.
constexpr double kFirstVolumesUpdate = 20;

} // namespace

CSTreeController::CSTreeController(const Services& services, std::unique_ptr<CModel> model,
                                   MainWindow& window)
    : m_services(services),
      mainWindow(window),
      mRadialController(window.chartArea().controller()),
      dirwalker(std::move(model)),
      mPanelController(std::make_unique<PanelController>(
          services.notifications, &window,
          [this](const std::string& path) {
              return stringModifiedDateOfFilePath(m_services.fileDates, path, DateStyle::Short);
          })),
      mFFoldersController(services.settings, services.folderQuestions, services.favouritePlaces),
      mRecentsController(services.settings, services.folderQuestions),
      mVolsController(std::make_unique<VolumesTableController>(window.sidebarTable(), *this,
                                                               mFFoldersController, mRecentsController)) {
    awake();
}

void CSTreeController::awake() {
    mRadialController.setHost(this);
    mRadialController.setPanelController(mPanelController.get());
    connectWindow();
    connectMenus();
    enumVolumes();

    m_services.volumes.observe({.didMount = [this](const std::string& path) { didMountVolume(path); },
                                .didUnmount = [this](const std::string& path) { didUnmountVolume(path); },
                                .didChange =
                                    [this] {
                                        simpleUpdateVolumesInfo();
                                    }});

    m_services.fileDates.observe([this](const std::string& path, FileDates::Date date) {
        mPanelController->setLateDateText(path, stringModifiedDate(date, DateStyle::Short));
    });

    auto observe = [this](std::string_view name, NotificationCentre::Handler handler) {
        m_observers.push_back(m_services.notifications.addObserver(std::string(name), std::move(handler)));
    };
    using Object = NotificationCentre::Object;
    observe(DIUpdateProgressNotification, [this](const Object& counted) { updateProgress(counted); });
    observe(FinishWalkingVolume, [this](const Object&) { walkfinished(); });
    observe(WalkingVolumeCanceled, [this](const Object&) { walkcanceled(); });
    observe(InitTreeControllerParameters, [this](const Object&) { InitPrefParameters(); });
    observe(ApplicationWillTerminate, [this](const Object&) { SavePrefParameters(); });

    schedulePeriodicUpdate(kFirstVolumesUpdate);
    showScanState();
}

CSTreeController::~CSTreeController() {
    for (const auto token : m_observers)
        m_services.notifications.removeObserver(token);
    m_services.volumes.observe({});
    m_services.fileDates.observe({});
    for (const auto token : {m_nDelayedUpdate, m_nFinishRun, m_nChartUpdate, m_nPeriodicUpdate})
        m_services.mainLoop.cancel(token);
    mRadialController.setRoot(nullptr);
    mRadialController.setPanelController(nullptr);
    mRadialController.setHost(nullptr);
}

void CSTreeController::connectWindow() {
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
    connect(&mainWindow, &MainWindow::pathComponentClicked, this,
            [this](const QByteArray& path) { mRadialController.clickedonPathComponent(path.toStdString()); });
    connect(&mainWindow.removeEntryButton(), &QAbstractButton::clicked, this,
            &CSTreeController::actionRemoveFolder);
    connect(mVolsController.get(), &VolumesTableController::contextMenuRequested, &mainWindow,
            &MainWindow::showEntryMenu);
}

void CSTreeController::setRootForRadial(VolumeFolderProtocol* root,
                                        const std::shared_ptr<TopLevelItem>& withVolume) {
    // The entry before may have been the root, so it goes after it has been replaced there.
    const std::shared_ptr<TopLevelItem> before = std::exchange(m_pShownEntry, withVolume);
    mRadialController.setRoot(root, true, true);
}

void CSTreeController::setRootForRadial(VolumeFolderProtocol* root) {
    mRadialController.setRoot(root, true, true);
}

void CSTreeController::setPathControlTextForItem(VolumeFolderProtocol* item) {
    // Every change of the chart's root comes by here.
    mainWindow.setStartHintShown(item == nullptr);
    const auto volume = dirwalker->getVolumeItemWithPath("/");
    mainWindow.setPathControlTextForItem(item, volume ? displayText(volume->getDisplayName()) : QString());
}

void CSTreeController::treeIsDropped(FolderSystemItem&) {}

QString CSTreeController::getDisplayText(std::string_view bytes) const {
    return displayText(bytes);
}

std::string CSTreeController::getLocalizedPath(std::string path) {
    std::replace(path.begin(), path.end(), ':', '/');
    return path;
}

} // namespace veltrano
