#pragma once

#include "chart/ChartTarget.h"

#include <QMenu>

#include <vector>

namespace veltrano {

class RadialController;

/// A context menu of the chart. There are three, made by the chart's controller and owned by the view that
/// they open over. Its actions work on what it was opened on; main thread.
class ChartMenu final : public QMenu {
    Q_OBJECT

public:
    enum class Kind {
        Folder,     ///< A drilled root.
        Volume,     ///< An item inside a top root.
        VolumeRoot, ///< The disc of a top root and what stands for its parts.
    };

    /// The controller is borrowed and outlives the menu.
    ChartMenu(Kind kind, RadialController& controller, QWidget* parent);

    /// Takes what the menu is about to be opened on, until it is closed, and enables, marks and hides its
    /// entries.
    void prepare(ChartTarget target);

    /// The entry of an action; null where this menu has none.
    QAction* getEntry(ChartAction action) const;

private:
    struct Entry {
        ChartAction action;
        QAction* entry; // a child of this menu
    };

    void add(ChartAction action, const QString& title);

    RadialController& mController;
    std::vector<Entry> m_entries;
    ChartTarget m_target;
};

} // namespace veltrano
