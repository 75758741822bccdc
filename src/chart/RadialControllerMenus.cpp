// The context menus: which one, on what, and what their entries do.

#include "chart/ChartHost.h"
#include "chart/ChartMenu.h"
#include "chart/PathsMimeData.h"
#include "chart/RadialController.h"
#include "chart/RadialView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace veltrano {

namespace {

ChartMenu& madeOnce(ChartMenu*& menu, ChartMenu::Kind kind, RadialController& controller, QWidget* parent) {
    if (!menu)
        menu = new ChartMenu(kind, controller, parent);
    return *menu;
}

void copyText(const std::string& text) {
    auto pasteboard = std::make_unique<QMimeData>();
    if (writeFilePaths({&text, 1}, *pasteboard))
        QGuiApplication::clipboard()->setMimeData(pasteboard.release());
}

} // namespace

ChartMenu* RadialController::getContextMenuByPoint(const QPointF& point) {
    if (!m_pRoot || isSelectedScanningRoot() || !radialView)
        return nullptr;
    int ring = 0;
    double start = 0.0;
    TreeObject* const item = getItemByPoint(point, &ring, &start);
    m_pCurPointedSector.set(item, ring, start);
    return prepareMenu();
}

ChartMenu* RadialController::getContextMenuForPointedSector() {
    if (!m_pRoot || isSelectedScanningRoot() || !radialView)
        return nullptr;
    if (!m_pCurPointedSector.m_pItem())
        pointAtSector(m_pRoot->getObject(), 0, 0.0);
    return prepareMenu();
}

ChartMenu* RadialController::prepareMenu() {
    hidePanel();
    updateSelection();
    const TreeObject* const item = m_pCurPointedSector.m_pItem();
    const bool isRootOrPart = item && (item == m_pRoot->getObject() || item == m_sentinels.m_pOccupSector ||
                                       item == m_sentinels.m_pFreeSector);
    using enum ChartMenu::Kind;
    ChartMenu& menu = m_pRoot->getParent()
                          ? madeOnce(m_pFolderContextMenu, Folder, *this, radialView)
                          : (isRootOrPart ? madeOnce(m_pVolumeRootContextMenu, VolumeRoot, *this, radialView)
                                          : madeOnce(m_pVolumeContextMenu, Volume, *this, radialView));
    menu.prepare(getTarget());
    return &menu;
}

ChartTarget RadialController::getTarget() const {
    ChartTarget target;
    const auto add = [&](TreeObject* object) {
        if (auto path = getFullPathForObject(object))
            target.paths.push_back(std::move(*path));
    };
    TreeObject* const pointed = m_pCurPointedSector.m_pItem();
    bool any = pointed != nullptr;
    add(pointed);
    for (const SectorItem& sector : m_pSelectedSectors) {
        TreeObject* const selected = sector.m_pItem();
        any = any || selected;
        if (selected != pointed)
            add(selected);
    }
    if (!any && m_pRoot)
        add(m_pRoot->getObject());
    target.textToCopy = getTextToCopy();
    target.favorite = TreeStorage::hold(getItemForAddToFavorite());
    FileSystemItem* const root = m_pRoot ? m_pRoot->getObject()->asFileSystemItem() : nullptr;
    if (root && root->getParent())
        target.root = TreeStorage::hold(root->asFolderSystemItem());
    return target;
}

FolderSystemItem* RadialController::getItemForAddToFavorite() const {
    FileSystemItem* item = nullptr;
    if (TreeObject* const pointed = m_pCurPointedSector.m_pItem()) {
        item = pointed->asFileSystemItem();
    } else {
        TreeObject* const selected =
            m_pSelectedSectors.empty() ? nullptr : m_pSelectedSectors.front().m_pItem();
        item = selected ? selected->asFileSystemItem() : nullptr;
        if ((!item || !item->asFolderSystemItem()) && m_pRoot)
            item = m_pRoot->getObject()->asFileSystemItem();
    }
    FolderSystemItem* const folder = item ? item->asFolderSystemItem() : nullptr;
    if (!folder || folder->isPack() || folder->isTopTrashFlag() || folder->isTopHiddenFlag() ||
        folder->isVol() || !m_pHost || m_pHost->isFolderFavorite(*folder))
        return nullptr;
    return folder;
}

MenuItemState RadialController::validateMenuItem(ChartAction action, const ChartTarget& target) const {
    MenuItemState state;
    const auto segment = m_pHost ? m_pHost->getInfoSegment() : std::nullopt;
    const auto choosesPanel = [&](InfoSegment panel) {
        state.bShown = segment.has_value();
        state.bCheckable = true;
        state.bChecked = segment == panel;
    };
    switch (action) {
    case ChartAction::RevealInFinder:
    case ChartAction::GetInformation:
    case ChartAction::Copy:
        break;
    case ChartAction::AddToFavorite:
        state.bEnabled = target.favorite != nullptr;
        break;
    case ChartAction::ShowDiskStructure:
        state.bEnabled = target.root != nullptr;
        break;
    case ChartAction::Switch2BiggestTable:
        choosesPanel(InfoSegment::BiggestFiles);
        break;
    case ChartAction::Switch2InfoPanel:
        choosesPanel(InfoSegment::Information);
        break;
    }
    return state;
}

void RadialController::performMenuAction(ChartAction action, const ChartTarget& target) {
    switch (action) {
    case ChartAction::RevealInFinder:
        if (m_pHost && !target.paths.empty())
            m_pHost->showItems(target.paths);
        break;
    case ChartAction::GetInformation:
        if (m_pHost && !target.paths.empty())
            m_pHost->showItemProperties(target.paths);
        break;
    case ChartAction::Copy:
        if (target.textToCopy)
            copyText(*target.textToCopy);
        break;
    case ChartAction::AddToFavorite:
        if (m_pHost && target.favorite)
            m_pHost->addFolderToFavorite(*target.favorite);
        break;
    case ChartAction::ShowDiskStructure:
        // The chart may show another tree by now; this one's top is then no way up from it.
        if (target.root && m_pRoot == target.root.get())
            startDrillOutAnimation(target.root->getTopParent());
        break;
    case ChartAction::Switch2BiggestTable:
        if (m_pHost)
            m_pHost->switchInfoSegment(InfoSegment::BiggestFiles);
        break;
    case ChartAction::Switch2InfoPanel:
        if (m_pHost)
            m_pHost->switchInfoSegment(InfoSegment::Information);
        break;
    }
}

} // namespace veltrano
