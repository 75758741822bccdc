#pragma once

#include "app/MenuActions.h"

#include <QMainWindow>
#include <QPixmap>
#include <QTimer>

#include <memory>
#include <string>

class QAction;
class QLabel;
class QMenu;

namespace veltrano {

class CCTableView;
class ChartArea;
class FileCatalogue;
class FooterBand;
class HeaderBand;
class MainLoop;
class PathControl;
class ProgressBlock;
class PushButton;
class RightColumn;
class SidebarPanel;
class VolumeFolderProtocol;

/// The main window: its regions and controls, and what the user did with them as signals. Holds no rules; the
/// main controller decides. Made and destroyed by the program's main function; main thread.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// The main loop is borrowed and outlives the window. Catalogue and home folder (an absolute path, bytes)
    /// are those of the folder panel.
    MainWindow(MainLoop& mainLoop, std::shared_ptr<FileCatalogue> catalogue, std::string homeFolder);

    /// The size to start with on a screen with so much room, points: the default one, less where the screen
    /// is smaller, but never below the minimum.
    static QSize startSize(const QSize& available);

    ChartArea& chartArea() { return *m_pChartArea; }
    CCTableView& sidebarTable();
    /// The button under the sidebar that removes a folder's entry.
    PushButton& removeEntryButton();
    ProgressBlock& progress() { return *m_pProgress; }

    const MenuActions& menuActions() const { return m_actions; }

    /// Shows the menu of the selected sidebar row at a point of the screen. Does not wait for it.
    void showEntryMenu(const QPoint& globalPosition);

    /// Whether the button "Scan Selected" can do anything.
    void setCanScan(bool canScan);

    /// Turns the scan button into the stop button and back.
    void setScanning(bool scanning);

    /// Shows or hides the progress in the header.
    void setProgressShown(bool shown);

    /// Shows or hides the words that stand where the chart will be.
    void setStartHintShown(bool shown);

    /// Shows where the chart's root lies, in the header; null and a volume hide that. `rootTitle` is the name
    /// of the volume at "/"; empty for none.
    void setPathControlTextForItem(const VolumeFolderProtocol* item, const QString& rootTitle);
    PathControl& pathControl() { return *mPathControl; }

    /// Opens the panel that chooses a folder, at the last one chosen or else the home folder; folderChosen
    /// follows if the user accepts.
    void openFolderPanel();

signals:
    /// A menu is about to be seen: its entries are to be validated.
    void menusAboutToShow();
    void scanToggled();
    void folderPanelRequested();
    /// The path as bytes.
    void folderChosen(const QByteArray& path);
    /// A component of the path was clicked; its path as bytes.
    void pathComponentClicked(const QByteArray& path);
    void liveResizeStarted();
    void liveResizeEnded();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // MainWindowMenus.cpp.
    QMenu* addMenu(const QString& title);
    void createMenus();
    void createProgramMenus();
    void createViewMenu();
    void createScanMenu();
    void createWindowMenu();
    void createRegionKeys();
    /// Takes the focus to the next region that has room for it, or with -1 to the one before.
    void walkRegions(int step);

    // MainWindow.cpp.
    void createRegions(MainLoop& mainLoop);
    void layOutRegions();
    void layOutHeader();
    void toggleFullScreen();
    void beginLiveResize();

    // Injected, constant.
    std::shared_ptr<FileCatalogue> m_pCatalogue;
    const std::string m_homeFolder;

    // Children of this window.
    HeaderBand* m_pHeader = nullptr;
    PushButton* m_pScanButton = nullptr;
    PushButton* m_pFolderButton = nullptr;
    ProgressBlock* m_pProgress = nullptr;
    PathControl* mPathControl = nullptr;
    SidebarPanel* m_pSidebar = nullptr;
    ChartArea* m_pChartArea = nullptr;
    QLabel* m_pStartHint = nullptr;
    RightColumn* m_pRightColumn = nullptr;
    FooterBand* m_pFooter = nullptr;
    MenuActions m_actions;
    QAction* m_pFullScreenAction = nullptr;

    std::string m_lastFolder; // where the folder panel opens, bytes
    QPixmap m_ground;         // a strip of the window's ground
    bool m_bScanning = false;
    bool m_bCanScan = false;
    QTimer m_resizeEnd; // runs while the window is being resized
};

} // namespace veltrano
