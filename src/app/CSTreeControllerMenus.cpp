// The menus: what an entry does, when it can, and how it is called then.

#include "app/CSTreeController.h"

#include "app/MainWindow.h"
#include "chart/RadialController.h"

#include <QAction>

namespace veltrano {

void CSTreeController::connectMenus() {
    const MenuActions& menus = mainWindow.menuActions();
    const auto act = [this](QAction* action, void (CSTreeController::*operation)()) {
        connect(action, &QAction::triggered, this, operation);
    };
    act(menus.showPreferences, &CSTreeController::showPreferences);
    act(menus.revealVolumeInFinder, &CSTreeController::revealVolumeInFinder);
    act(menus.getVolumeInformation, &CSTreeController::getVolumeInformation);
    connect(menus.copy, &QAction::triggered, this, [this] { mRadialController.copy(); });
    act(menus.actionAddToFavorites, &CSTreeController::actionAddToFavorites);
    act(menus.actionRemoveFolder, &CSTreeController::actionRemoveFolder);
    act(menus.setTableShowTypeAll, &CSTreeController::setTableShowTypeAll);
    act(menus.setTableShowTypeVolumes, &CSTreeController::setTableShowTypeVolumes);
    act(menus.setTableShowTypeFolders, &CSTreeController::setTableShowTypeFolders);
    act(menus.actShowFBPanel, &CSTreeController::actShowFBPanel);
    connect(&mainWindow, &MainWindow::menusAboutToShow, this, &CSTreeController::validateMenuItems);
}

void CSTreeController::validateMenuItems() {
    const MenuActions& menus = mainWindow.menuActions();
    const bool idle = !isProcessing();
    const auto selected = mVolsController->getObjectForSelectedRow();
    const bool recent = isSelectedRecentFolder();

    menus.actionScanFolder->setEnabled(idle);
    menus.setTableShowTypeVolumes->setEnabled(idle);
    menus.setTableShowTypeFolders->setEnabled(idle);
    menus.setTableShowTypeAll->setChecked(m_nTableShowType == TableShowType::All);
    menus.setTableShowTypeVolumes->setChecked(m_nTableShowType == TableShowType::Volumes);
    menus.setTableShowTypeFolders->setChecked(m_nTableShowType == TableShowType::Folders);
    menus.toggleStartStopScan->setText(idle ? tr("Scan Selected") : tr("Stop Scanning"));
    menus.actionRemoveFolder->setEnabled(selected && selected->isFolder());
    menus.actionRemoveFolder->setText(recent ? tr("Remove from Recents") : tr("Remove from Favorites"));
    menus.actionAddToFavorites->setEnabled(recent);
    menus.actionAddToFavorites->setVisible(recent);
    menus.revealVolumeInFinder->setEnabled(selected != nullptr);
    menus.getVolumeInformation->setEnabled(selected != nullptr);
}

void CSTreeController::revealVolumeInFinder() {
    if (const auto selected = mVolsController->getSelectedVolume())
        m_services.desktop.showItems({*selected});
}

void CSTreeController::getVolumeInformation() {
    if (const auto selected = mVolsController->getSelectedVolume())
        m_services.desktop.showItemProperties({*selected});
}

} // namespace veltrano
