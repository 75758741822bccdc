#pragma once

#include "app/FFoldersController.h"
#include "app/RecentsController.h"
#include "app/ScanProgress.h"
#include "app/SettingsTable.h"
#include "app/SidebarHost.h"
#include "app/VolumesTableController.h"
#include "chart/ChartHost.h"
#include "platform/Alerts.h"
#include "platform/Desktop.h"
#include "platform/FileActions.h"
#include "platform/FileDates.h"
#include "platform/FolderQuestions.h"
#include "platform/MainLoop.h"
#include "platform/NotificationCentre.h"
#include "platform/Settings.h"
#include "platform/Sounds.h"
#include "platform/Volumes.h"
#include "scan/CModel.h"
#include "tree/TopLevelItem.h"

#include <QObject>
#include <QPointer>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrano {

class FileSystemItem;
class MainWindow;
class PanelController;
class PreferencesSheet;
class RadialController;

/// The main controller, where scan model, chart, sidebar and settings meet: it starts and stops scans, turns
/// what the model tells into progress, hands the growing and the finished tree to the chart, keeps the list
/// of volumes up to date, and loads and saves the settings. One per program, made after the window and
/// destroyed before it; main thread. That a scan runs is asked of the model alone.
///
/// Its files: construction and windows in CSTreeController.cpp, then Scan, Volumes, Folders, Settings, Menus,
/// Chart.
class CSTreeController final : public QObject, public ChartHost, public SidebarHost {
    Q_OBJECT

public:
    /// What the controller takes from outside; all of it outlives the controller.
    struct Services {
        MainLoop& mainLoop;
        NotificationCentre& notifications;
        Alerts& alerts;
        Sounds& sounds;
        const FileActions& files;
        Settings& settings;
        Desktop& desktop;
        Volumes& volumes;
        FolderQuestions& folderQuestions;
        FileDates& fileDates;
        FFoldersController::DefaultPlaces favouritePlaces{};
    };

    /// Which entries the sidebar shows.
    enum class TableShowType : std::uint16_t { All = 0, Volumes = 1, Folders = 2 };

    /// Lists the volumes at once; settings and folders come with "InitTreeControllerParameters".
    CSTreeController(const Services& services, std::unique_ptr<CModel> model, MainWindow& window);
    ~CSTreeController() override;

    // The scan.

    /// Starts a scan of the selected entry. Refused in silence while one runs; asks when the path is gone.
    void startAction() override;
    /// Cancels the running scan; nothing otherwise. That a scan runs is false at once, its end comes later.
    void stopAction() override;
    void toggleStartStopScan();
    /// Opens the panel that chooses a folder to scan; nothing while a scan runs.
    void actionScanFolder();
    /// Selects the folder, which becomes the first of the recents unless it is a favourite, and scans it; the
    /// root of a volume is selected only. Nothing while a scan runs, or if there is no such folder. The path
    /// is bytes, absolute.
    void doScanFolder(const std::string& path);
    /// Whether a scan runs: the model's start path is set.
    bool isProcessing() const override;
    /// The path under scan; nothing when none is.
    std::optional<std::string> getProcessingVol() const override;

    // Sidebar and chart.

    /// Makes a tree, or an entry without one, the chart's root, and keeps the entry as long as it is.
    void setRootForRadial(VolumeFolderProtocol* root,
                          const std::shared_ptr<TopLevelItem>& withVolume) override;
    /// Makes another tree of the same entry the chart's root.
    void setRootForRadial(VolumeFolderProtocol* root);
    void setTableShowType(TableShowType type);
    TableShowType getTableShowType() const { return m_nTableShowType; }
    void setTableShowTypeAll();
    /// These two do nothing while a scan runs, since the entry under scan could lose its row.
    void setTableShowTypeVolumes();
    void setTableShowTypeFolders();
    /// Builds the sidebar's rows anew; the selection is kept by path.
    void fillVolumesTable();
    /// The first entry of exactly this path becomes the selected one; null, and no change, if there is none.
    std::shared_ptr<TopLevelItem> selectVolumeByName(const std::optional<std::string>& path) override;
    void didSelectionChange(const std::shared_ptr<TopLevelItem>& item) override;
    /// Takes over what the platform knows of the volumes; rebuilds the sidebar if anything has changed.
    void simpleUpdateVolumesInfo() override;
    void didMountVolume(const std::string& path);
    void didUnmountVolume(const std::string& path);
    VolumesTableController& getVolsController() { return *mVolsController; }

    // Folders.

    /// Makes a folder of a tree a favourite and selects it; one that is in the sidebar already is selected, a
    /// recent one moves and keeps its tree.
    void addFolderToFavorite(const FileSystemItem& item) override;
    bool isFolderFavorite(const FileSystemItem& item) const override;
    /// Takes the folder that is selected off its list, the recents before the favourites; a scan of it is
    /// stopped. Nothing for a path that neither has.
    void actionRemoveFolder() override;
    /// Moves the selected recent folder to the favourites, with its tree.
    void actionAddToFavorites();
    bool isSelectedRecentFolder() const;

    // Settings.

    /// Takes settings and folder lists from where they are stored and selects the entry of last time.
    void InitPrefParameters();
    void SavePrefParameters();
    /// Opens the sheet of preferences, of which each box counts at once.
    void showPreferences();
    /// Closes the sheet if it is open, and saves.
    void closePreferences();
    bool getPlaySound() const override { return m_settings.m_bPlaySound; }
    bool getPlayFinishSound() const { return m_settings.m_bPlayFinishSound; }
    bool getShowHint() const override { return m_settings.m_bShowHint; }
    bool getForceShowHint() const override { return m_settings.m_bForceShowHint; }
    /// Scans ended so far, stopped ones too.
    std::uint32_t getScanned() const { return m_settings.m_nScanned; }

    // Menus.

    /// Opens a letter to our support, and remembers that it was opened.
    void createEmailWithFeedBack();
    /// The menu's way to the same.
    void actShowFBPanel();
    /// Opens the sheet that asks for feedback. Nothing in the program asks by itself.
    void askForFeedback();
    /// Show the selected entry in the file manager, or its information; nothing without one.
    void revealVolumeInFinder();
    void getVolumeInformation();
    /// Brings enabled, title, mark and visibility of every entry up to date.
    void validateMenuItems();

    QString getDisplayText(std::string_view bytes) const override;
    void setPathControlTextForItem(VolumeFolderProtocol* item) override;
    void playSound(std::string_view name) override;
    void showItems(const std::vector<std::string>& paths) override;
    void showItemProperties(const std::vector<std::string>& paths) override;
    void treeIsDropped(FolderSystemItem& oldRoot) override;
    /// The path with every ":" turned into "/", bytes.
    static std::string getLocalizedPath(std::string path);
    /// What a KB is, in bytes.
    static constexpr int getKbytesDivider() { return 1000; }

private:
    void awake();
    void connectWindow();
    void connectMenus();

    void initstart();
    void initSizeCaptions(const std::string& path);
    void updateProgress(const NotificationCentre::Object& counted);
    void updateProgressDelay();
    void walkfinished();
    void walkcanceled();
    void initfinalizeTimer();
    void ProgressFinalizeTimer();
    void walkEnd(bool completed);
    void BBScanedNotify();
    void setCanStart(bool canStart);
    void showScanState();
    void showProgress();
    void showStatus();
    bool isThere(const std::string& path) const;
    void askAboutVanishedFolder(const std::string& path);
    void scheduleUpdateProgressDelay();
    void cancelUpdateProgressDelay();

    void enumVolumes();
    void schedulePeriodicUpdate(double seconds);
    void periodicUpdateVolumesInfo();

    bool showsFolders() const { return m_nTableShowType != TableShowType::Volumes; }
    void removeFolder(const std::string& path);
    void moveToFavorites(const std::shared_ptr<FolderItem>& recent);

    // Injected, constant.
    const Services m_services;
    MainWindow& mainWindow;
    RadialController& mRadialController; // the window's

    // Owned.
    const std::unique_ptr<CModel> dirwalker;
    const std::unique_ptr<PanelController> mPanelController;
    FFoldersController mFFoldersController;
    RecentsController mRecentsController;
    const std::unique_ptr<VolumesTableController> mVolsController;
    /// What the chart shows or belongs to; the chart itself keeps trees only.
    std::shared_ptr<TopLevelItem> m_pShownEntry;

    // State of the scan that runs or ran last.
    ScanProgress dockProgress;
    std::int64_t nvolsize = 0; // bytes, as of the last volume scanned
    std::int64_t nvoloc = 0;   // bytes
    std::int64_t nvolfr = 0;   // bytes
    std::int64_t nnodes = 0;
    double mdProgress = 0; // bytes counted, as last reported
    int nposition = 0;     // reports of the current scan
    bool m_bCanStart = true;

    // State of the window.
    SettingValues m_settings;
    TableShowType m_nTableShowType = TableShowType::All;
    QPointer<PreferencesSheet> m_pPreferences; // the sheet while it is open

    MainLoop::Token m_nDelayedUpdate = 0;
    MainLoop::Token m_nFinishRun = 0;
    MainLoop::Token m_nChartUpdate = 0;
    MainLoop::Token m_nPeriodicUpdate = 0;
    std::vector<NotificationCentre::Token> m_observers;
};

} // namespace veltrano
