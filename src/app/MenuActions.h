#pragma once

class QAction;

namespace veltrano {

/// The entries of the menu bar that somebody outside the window acts on or validates. Children of the main
/// window, which makes them; none is ever null once it is made. Main thread.
struct MenuActions {
    // Veltrano
    QAction* showPreferences = nullptr;
    // File
    QAction* actionScanFolder = nullptr;
    QAction* revealVolumeInFinder = nullptr;
    QAction* getVolumeInformation = nullptr;
    // Edit
    QAction* copy = nullptr;
    QAction* actionAddToFavorites = nullptr;
    QAction* actionRemoveFolder = nullptr;
    // View, one of the three checked
    QAction* setTableShowTypeAll = nullptr;
    QAction* setTableShowTypeVolumes = nullptr;
    QAction* setTableShowTypeFolders = nullptr;
    // Scan
    QAction* toggleStartStopScan = nullptr;
    // Help
    QAction* actShowFBPanel = nullptr;
};

} // namespace veltrano
