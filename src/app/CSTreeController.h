#pragma once

#include "app/ScanProgress.h"
#include "chart/ChartHost.h"
#include "platform/Alerts.h"
#include "platform/FileActions.h"
#include "platform/FileCatalogue.h"
#include "platform/MainLoop.h"
#include "platform/NotificationCentre.h"
#include "platform/Sounds.h"
#include "scan/CModel.h"
#include "tree/TopLevelItem.h"

#include <QObject>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrano {

class MainWindow;
class RadialController;

/// The main controller: owns the scan's model, starts and stops scans, turns what the model tells into
/// progress, and hands the growing and the finished tree to the chart. One per program, made after the window
/// and destroyed before it; main thread.
class CSTreeController final : public QObject, public ChartHost {
    Q_OBJECT

public:
    /// What the controller takes from outside; all of it outlives the controller.
    struct Services {
        MainLoop& mainLoop;
        NotificationCentre& notifications;
        Alerts& alerts;
        Sounds& sounds;
        const FileActions& files;
    };

    CSTreeController(const Services& services, std::unique_ptr<CModel> model, MainWindow& window);
    ~CSTreeController() override;

    /// Starts a scan of the selected entry. Refused in silence while one runs; asks when the path is gone.
    void startAction();
    /// Cancels the running scan; nothing otherwise.
    void stopAction();
    void toggleStartStopScan();
    /// Opens the panel that chooses a folder to scan.
    void actionScanFolder();
    /// Selects the folder and scans it; the root of a volume is selected only. The path is bytes, absolute.
    void doScanFolder(const std::string& path);

    /// Whether a scan runs: the model's start path is set.
    bool isProcessing() const;
    /// The path under scan; nothing when none is.
    std::optional<std::string> getProcessingVol() const override;
    QString getDisplayText(std::string_view bytes) const override;

private:
    void initstart();
    void initSizeCaptions(const std::string& path);
    void updateProgress(const NotificationCentre::Object& counted);
    void updateProgressDelay();
    void walkfinished();
    void walkcanceled();
    void initfinalizeTimer();
    void ProgressFinalizeTimer();
    void walkEnd(bool completed);

    void showProgress();
    void showStatus();
    void askAboutVanishedFolder(const std::string& path);
    void actionRemoveFolder();
    void scheduleUpdateProgressDelay();
    void cancelUpdateProgressDelay();

    // Injected, constant.
    Services m_services;
    MainWindow& mainWindow;
    RadialController& mRadialController; // the window's

    // Owned.
    std::unique_ptr<CModel> dirwalker;
    std::shared_ptr<TopLevelItem>
        m_pSelectedEntry; // what "Scan Selected" scans; null before the first choice

    // State of the scan that runs or ran last.
    std::shared_ptr<TopLevelItem> m_pScannedEntry; // whose tree grows
    ScanProgress dockProgress;
    std::int64_t nvolsize = 0; // bytes, as of the last volume scanned
    std::int64_t nvoloc = 0;   // bytes
    std::int64_t nvolfr = 0;   // bytes
    std::int64_t nnodes = 0;
    double mdProgress = 0;        // bytes counted, as last reported
    int nposition = 0;            // reports of the current scan
    std::uint32_t m_nScanned = 0; // scans ended so far
    bool m_bPlayFinishSound = true;

    MainLoop::Token m_nDelayedUpdate = 0;
    MainLoop::Token m_nFinishRun = 0;
    MainLoop::Token m_nChartUpdate = 0;
    std::vector<NotificationCentre::Token> m_observers;
};

} // namespace veltrano
