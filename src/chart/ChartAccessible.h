#pragma once

#include "chart/SectorItem.h"

#include <QAccessibleWidget>

#include <memory>
#include <unordered_map>
#include <vector>

namespace veltrano {

class ChartAccessible;
class RadialController;
class RadialView;

/// One sector as assistive programs see it: an item of the chart's tree that can be clicked and whose menu
/// can be opened. Stays askable, as an invalid one, when its sector or its whole tree has gone. Owned by the
/// toolkit's register; main thread.
class SectorAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    SectorAccessible(ChartAccessible& chart, TreeObject* item);

    /// Takes where the sector lies now.
    void place(int ring, double start, double share);
    TreeObject* getItem() const { return m_pItem; }
    /// Whether this stands for the item as long as its tree lives, and not for one that took its place.
    bool standsFor(TreeObject* item) const;

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::TreeItem; }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // The actions: "Press" clicks, "ShowMenu" opens the menu, "SetFocus" points at the sector.
    QStringList actionNames() const override;
    QString localizedActionName(const QString& name) const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString& name) const override;

private:
    ChartAccessible& m_chart;
    TreeObject* const m_pItem;
    const std::weak_ptr<TreeStorage> m_pTree;
    const bool m_bIsNode; // of a tree
    int m_nRing = 0;
    double m_dStart = 0; // fraction of a turn
    double m_dShare = 0; // fraction of a turn
};

/// The chart as assistive programs see it: a tree with an item for the disc and one for each visible sector,
/// in the order of drawing. The items are looked up when they are asked for and kept while they are visible.
/// Made and kept by the toolkit; main thread.
class ChartAccessible final : public QAccessibleWidget {
public:
    explicit ChartAccessible(RadialView& view);
    ~ChartAccessible() override;

    RadialView& getView() const { return m_view; }
    RadialController& getController() const;
    /// The item of a sector; null where it is not visible.
    QAccessibleInterface* getSector(const TreeObject* item) const;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QString text(QAccessible::Text kind) const override;

private:
    void refresh() const;

    RadialView& m_view;
    // What is kept for the next question.
    mutable std::vector<QAccessible::Id> m_order;
    mutable std::unordered_map<const TreeObject*, QAccessible::Id> m_sectors;
    mutable unsigned m_nSeenChange = 0;
};

/// Teaches the toolkit to describe the chart so; later calls change nothing.
void installChartAccessible();

} // namespace veltrano
