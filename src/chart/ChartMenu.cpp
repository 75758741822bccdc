#include "chart/ChartMenu.h"

#include "chart/RadialController.h"

#include <utility>

namespace veltrano {

ChartMenu::ChartMenu(Kind kind, RadialController& controller, QWidget* parent)
    : QMenu(parent), mController(controller) {
    add(ChartAction::RevealInFinder, tr("Show in File Manager"));
    add(ChartAction::GetInformation, tr("Get Info"));
    add(ChartAction::Copy, tr("Copy Path"));
    if (kind != Kind::VolumeRoot) {
        addSeparator();
        add(ChartAction::AddToFavorite, tr("Add to Favorites"));
    }
    addSeparator();
    if (kind == Kind::Folder)
        add(ChartAction::ShowDiskStructure, tr("Show Disk Structure"));
    add(ChartAction::Switch2BiggestTable, tr("Biggest Files"));
    add(ChartAction::Switch2InfoPanel, tr("Information"));
    // A closed menu keeps no tree. Later, since the chosen entry is told after the menu has gone.
    connect(
        this, &QMenu::aboutToHide, this,
        [this] {
            if (!isVisible())
                m_target = {};
        },
        Qt::QueuedConnection);
}

void ChartMenu::add(ChartAction action, const QString& title) {
    QAction* const entry = addAction(title);
    m_entries.push_back({action, entry});
    connect(entry, &QAction::triggered, this, [this, action] {
        // A copy: what the action does may open this menu anew.
        const ChartTarget target = m_target;
        mController.performMenuAction(action, target);
    });
}

void ChartMenu::prepare(ChartTarget target) {
    m_target = std::move(target);
    for (const Entry& entry : m_entries) {
        const MenuItemState state = mController.validateMenuItem(entry.action, m_target);
        entry.entry->setVisible(state.bShown);
        entry.entry->setEnabled(state.bEnabled);
        entry.entry->setCheckable(state.bCheckable);
        entry.entry->setChecked(state.bChecked);
    }
}

QAction* ChartMenu::getEntry(ChartAction action) const {
    for (const Entry& entry : m_entries) {
        if (entry.action == action)
            return entry.entry;
    }
    return nullptr;
}

} // namespace veltrano
