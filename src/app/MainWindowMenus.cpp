// The menu bar, the context menu of a sidebar row, and the keys that walk the regions.

#include "app/MainWindow.h"

#include "app/WindowPanels.h"
#include "appearance/Fonts.h"
#include "chart/ChartArea.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>

namespace veltrano {

namespace {

constexpr int kMenuBarHeight = 28; // points

/// The first widget of a region, in the order of Tab, that takes the focus by Tab; null for none.
QWidget* focusTargetIn(QWidget& region) {
    for (QWidget* widget = region.nextInFocusChain(); widget != &region; widget = widget->nextInFocusChain())
        if (region.isAncestorOf(widget) && widget->isVisible() && widget->isEnabled() &&
            (widget->focusPolicy() & Qt::TabFocus))
            return widget;
    return nullptr;
}

} // namespace

QMenu* MainWindow::addMenu(const QString& title) {
    QMenu* const menu = menuBar()->addMenu(title);
    connect(menu, &QMenu::aboutToShow, this, &MainWindow::menusAboutToShow);
    return menu;
}

void MainWindow::createMenus() {
    menuBar()->setFont(interfaceFont(12));
    menuBar()->setFixedHeight(kMenuBarHeight);
    createProgramMenus();
    createViewMenu();
    createScanMenu();
    createWindowMenu();
    QMenu* const help = addMenu(tr("&Help"));
    m_actions.actShowFBPanel = help->addAction(tr("Send &Feedback…"));
    createRegionKeys();
}

void MainWindow::createProgramMenus() {
    QMenu* const program = addMenu(tr("Ve&ltrano"));
    program->menuAction()->setFont(interfaceFont(12, QFont::Bold));
    m_actions.showPreferences = program->addAction(tr("&Preferences…"));
    m_actions.showPreferences->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    program->addSeparator();
    QAction* const quit = program->addAction(tr("&Quit Veltrano"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    connect(quit, &QAction::triggered, this, &QWidget::close);

    QMenu* const file = addMenu(tr("&File"));
    m_actions.actionScanFolder = file->addAction(tr("&Select Folder to Scan…"));
    m_actions.actionScanFolder->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    connect(m_actions.actionScanFolder, &QAction::triggered, this, &MainWindow::folderPanelRequested);
    file->addSeparator();
    m_actions.revealVolumeInFinder = file->addAction(tr("Show in File &Manager"));
    m_actions.revealVolumeInFinder->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
    m_actions.getVolumeInformation = file->addAction(tr("Get &Info"));
    m_actions.getVolumeInformation->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_I));

    QMenu* const edit = addMenu(tr("&Edit"));
    m_actions.copy = edit->addAction(tr("&Copy Path"));
    m_actions.copy->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_C));
    edit->addSeparator();
    m_actions.actionAddToFavorites = edit->addAction(tr("&Add to Favorites"));
    m_actions.actionAddToFavorites->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_T));
    m_actions.actionRemoveFolder = edit->addAction(tr("Remove from Favorites"));
}

void MainWindow::createViewMenu() {
    QMenu* const view = addMenu(tr("&View"));
    auto* const showTypes = new QActionGroup(this);
    const auto showType = [&](const QString& text, Qt::Key key) {
        QAction* const action = view->addAction(text);
        action->setCheckable(true);
        action->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | key));
        showTypes->addAction(action);
        return action;
    };
    m_actions.setTableShowTypeAll = showType(tr("&All"), Qt::Key_1);
    m_actions.setTableShowTypeVolumes = showType(tr("&Disks Only"), Qt::Key_2);
    m_actions.setTableShowTypeFolders = showType(tr("F&olders Only"), Qt::Key_3);
    m_actions.setTableShowTypeAll->setChecked(true);
    view->addSeparator();
    m_pFullScreenAction = view->addAction(tr("Enter &Full Screen"));
    m_pFullScreenAction->setShortcut(QKeySequence(Qt::Key_F11));
    connect(m_pFullScreenAction, &QAction::triggered, this, &MainWindow::toggleFullScreen);
}

void MainWindow::createScanMenu() {
    QMenu* const scan = addMenu(tr("&Scan"));
    m_actions.toggleStartStopScan = scan->addAction(tr("Scan Selected"));
    m_actions.toggleStartStopScan->setShortcut(QKeySequence(Qt::Key_F5));
    connect(m_actions.toggleStartStopScan, &QAction::triggered, this, &MainWindow::scanToggled);
}

void MainWindow::createWindowMenu() {
    QMenu* const menu = addMenu(tr("&Window"));
    QAction* const minimize = menu->addAction(tr("&Minimize"));
    minimize->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    connect(minimize, &QAction::triggered, this, &QWidget::showMinimized);
    QAction* const zoom = menu->addAction(tr("&Zoom"));
    connect(zoom, &QAction::triggered, this, [this] { setWindowState(windowState() ^ Qt::WindowMaximized); });
    menu->addSeparator();
    QAction* const front = menu->addAction(tr("&Bring to Front"));
    connect(front, &QAction::triggered, this, [this] {
        raise();
        activateWindow();
    });
}

void MainWindow::showEntryMenu(const QPoint& globalPosition) {
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    emit menusAboutToShow();
    menu->addAction(m_actions.toggleStartStopScan);
    menu->addSeparator();
    menu->addAction(m_actions.revealVolumeInFinder);
    menu->addAction(m_actions.getVolumeInformation);
    // A disk is on no list that it could be removed from.
    if (m_actions.actionRemoveFolder->isEnabled()) {
        menu->addSeparator();
        menu->addAction(m_actions.actionAddToFavorites);
        menu->addAction(m_actions.actionRemoveFolder);
    }
    menu->popup(globalPosition);
}

void MainWindow::createRegionKeys() {
    const auto walk = [this](const QKeySequence& keys, int step) {
        auto* const action = new QAction(this);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, [this, step] { walkRegions(step); });
        addAction(action);
    };
    walk(QKeySequence(Qt::Key_F6), 1);
    walk(QKeySequence(Qt::SHIFT | Qt::Key_F6), -1);
}

void MainWindow::walkRegions(int step) {
    QWidget* const regions[] = {m_pSidebar, m_pChartArea, m_pRightColumn, m_pFooter};
    constexpr int count = static_cast<int>(std::size(regions));
    QWidget* const focus = focusWidget();
    // From outside the regions the walk begins before the first or behind the last.
    int at = step > 0 ? -1 : count;
    for (int index = 0; index < count; ++index)
        if (focus && regions[index]->isAncestorOf(focus))
            at = index;
    for (int tried = 0; tried < count; ++tried) {
        at = (at + step + count) % count;
        if (QWidget* const target = focusTargetIn(*regions[at])) {
            target->setFocus(step > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return;
        }
    }
}

} // namespace veltrano
