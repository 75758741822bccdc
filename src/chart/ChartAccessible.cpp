#include "chart/ChartAccessible.h"

#include "chart/RadialController.h"
#include "chart/RadialView.h"

#include <QWindow>

namespace veltrano {

namespace {

QAccessibleInterface* describe(const QString& className, QObject* object) {
    // The toolkit asks for the class of the object first, and then for each that it is derived from.
    if (className != QLatin1String(RadialView::staticMetaObject.className()))
        return nullptr;
    return new ChartAccessible(*qobject_cast<RadialView*>(object));
}

std::weak_ptr<TreeStorage> treeOf(TreeObject* object) {
    FileSystemItem* const item = object->asFileSystemItem();
    return item ? TreeStorage::of(item).weak_from_this() : std::weak_ptr<TreeStorage>();
}

} // namespace

SectorAccessible::SectorAccessible(ChartAccessible& chart, TreeObject* item)
    : m_chart(chart), m_pItem(item), m_pTree(treeOf(item)), m_bIsNode(item->asFileSystemItem() != nullptr) {}

void SectorAccessible::place(int ring, double start, double share) {
    m_nRing = ring;
    m_dStart = start;
    m_dShare = share;
}

bool SectorAccessible::standsFor(TreeObject* item) const {
    // Another tree may have come to lie where one that has gone lay.
    return item == m_pItem && (!m_bIsNode || m_pTree.lock() != nullptr);
}

bool SectorAccessible::isValid() const {
    if (m_bIsNode)
        return m_pTree.lock() != nullptr;
    const RadialController& controller = m_chart.getController();
    const SectorSentinels& sentinels = controller.getSentinels();
    VolumeFolderProtocol* const root = controller.getRootObject();
    return root && (m_pItem == sentinels.m_pOccupSector || m_pItem == sentinels.m_pFreeSector ||
                    m_pItem == root->getObject());
}

QWindow* SectorAccessible::window() const {
    return m_chart.window();
}

QAccessibleInterface* SectorAccessible::parent() const {
    return &m_chart;
}

QString SectorAccessible::text(QAccessible::Text kind) const {
    const auto tree = m_pTree.lock();
    if (!isValid() || (kind != QAccessible::Name && kind != QAccessible::Description))
        return {};
    const SectorText text = m_chart.getController().describe(*m_pItem, m_dShare);
    return kind == QAccessible::Name ? text.name : text.description;
}

QRect SectorAccessible::rect() const {
    const auto tree = m_pTree.lock();
    if (!isValid())
        return {};
    const RadialView& view = m_chart.getView();
    const QRectF bounds = m_chart.getController().getBoundsOfItem(m_pItem, m_nRing, m_dStart);
    const QRect inView = view.getChartTransform().mapRect(bounds).toAlignedRect();
    return {view.mapToGlobal(inView.topLeft()), inView.size()};
}

QAccessible::State SectorAccessible::state() const {
    QAccessible::State state;
    const auto tree = m_pTree.lock();
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const RadialController& controller = m_chart.getController();
    state.focusable = true;
    state.selectable = true;
    state.expandable = RadialController::isItemClickable(m_pItem);
    state.focused = m_chart.getView().hasFocus() && controller.getCurPointedSector().m_pItem() == m_pItem;
    for (const SectorItem& sector : controller.getSelectedSectors())
        state.selected = state.selected || sector.m_pItem() == m_pItem;
    return state;
}

void* SectorAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QStringList SectorAccessible::actionNames() const {
    return {pressAction(), showMenuAction(), setFocusAction()};
}

QString SectorAccessible::localizedActionName(const QString& name) const {
    if (name == pressAction())
        return RadialView::tr("Drill");
    return name == showMenuAction() ? RadialView::tr("Menu")
                                    : QAccessibleActionInterface::localizedActionName(name);
}

void SectorAccessible::doAction(const QString& name) {
    const auto tree = m_pTree.lock();
    if (!isValid() || !actionNames().contains(name))
        return;
    // Both may put another root on show, whose items take the place of this one: nothing here after them.
    RadialController& controller = m_chart.getController();
    RadialView& view = m_chart.getView();
    controller.pointAtSector(m_pItem, m_nRing, m_dStart);
    if (name == pressAction())
        controller.clickPointedSector();
    else if (name == showMenuAction())
        view.openMenuOnPointedSector();
}

QStringList SectorAccessible::keyBindingsForAction(const QString& name) const {
    if (name == pressAction())
        return {QStringLiteral("Return")};
    return name == showMenuAction() ? QStringList{QStringLiteral("Menu")} : QStringList();
}

ChartAccessible::ChartAccessible(RadialView& view)
    : QAccessibleWidget(&view, QAccessible::Tree), m_view(view) {}

ChartAccessible::~ChartAccessible() {
    for (const auto& [item, id] : m_sectors)
        QAccessible::deleteAccessibleInterface(id);
}

RadialController& ChartAccessible::getController() const {
    return m_view.getController();
}

void ChartAccessible::refresh() const {
    if (m_nSeenChange == m_view.getChangeCount())
        return;
    m_nSeenChange = m_view.getChangeCount();
    auto before = std::exchange(m_sectors, {});
    m_order.clear();
    getController().visitSectors([&](TreeObject& item, int ring, double start, double share) {
        const auto known = before.find(&item);
        auto* sector = known == before.end()
                           ? nullptr
                           : static_cast<SectorAccessible*>(QAccessible::accessibleInterface(known->second));
        QAccessible::Id id = 0;
        if (sector && sector->standsFor(&item)) {
            id = known->second;
            before.erase(known);
        } else {
            sector = new SectorAccessible(const_cast<ChartAccessible&>(*this), &item);
            id = QAccessible::registerAccessibleInterface(sector);
        }
        sector->place(ring, start, share);
        m_sectors.emplace(&item, id);
        m_order.push_back(id);
    });
    for (const auto& [item, id] : before)
        QAccessible::deleteAccessibleInterface(id);
}

QAccessibleInterface* ChartAccessible::getSector(const TreeObject* item) const {
    refresh();
    const auto found = m_sectors.find(item);
    return found == m_sectors.end() ? nullptr : QAccessible::accessibleInterface(found->second);
}

int ChartAccessible::childCount() const {
    refresh();
    return static_cast<int>(m_order.size());
}

QAccessibleInterface* ChartAccessible::child(int index) const {
    refresh();
    if (index < 0 || static_cast<std::size_t>(index) >= m_order.size())
        return nullptr;
    return QAccessible::accessibleInterface(m_order[static_cast<std::size_t>(index)]);
}

QAccessibleInterface* ChartAccessible::childAt(int x, int y) const {
    const QPointF inView = m_view.mapFromGlobal(QPointF(x, y));
    return getSector(
        getController().getItemByPoint(m_view.getChartTransform().map(inView), nullptr, nullptr));
}

QAccessibleInterface* ChartAccessible::focusChild() const {
    return m_view.hasFocus() ? getSector(getController().getCurPointedSector().m_pItem()) : nullptr;
}

int ChartAccessible::indexOfChild(const QAccessibleInterface* child) const {
    refresh();
    for (std::size_t index = 0; index < m_order.size(); ++index) {
        if (QAccessible::accessibleInterface(m_order[index]) == child)
            return static_cast<int>(index);
    }
    return -1;
}

QString ChartAccessible::text(QAccessible::Text kind) const {
    VolumeFolderProtocol* const root = getController().getRootObject();
    if (kind != QAccessible::Description || !root)
        return QAccessibleWidget::text(kind);
    const SectorText text = getController().describe(*root->getObject(), 1.0);
    return RadialView::tr("%1, %2").arg(text.name, text.description);
}

void installChartAccessible() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(describe);
        return true;
    }();
    Q_UNUSED(isInstalled)
}

} // namespace veltrano
