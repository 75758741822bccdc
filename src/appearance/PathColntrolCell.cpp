#include "appearance/PathColntrolCell.h"

#include "appearance/PathElementCell.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace veltrano {

namespace {

/// Points of a title below which nothing of it is worth showing.
constexpr int kLeastTitle = 24;

/// The widget before this one that Tab reaches; only such a one has a place in the order of Tab.
QWidget* whoHasFocusBefore(QWidget& widget) {
    QWidget* before = widget.previousInFocusChain();
    while (before != &widget && !(before->focusPolicy() & Qt::TabFocus))
        before = before->previousInFocusChain();
    return before;
}

} // namespace

PathCellWidths fitPathCells(std::span<const int> full, std::span<const int> least, int gapMarkWidth,
                            int room) {
    PathCellWidths result{.widths = {full.begin(), full.end()}};
    std::vector<int>& widths = result.widths;
    if (widths.empty())
        return result;
    int excess = std::accumulate(widths.begin(), widths.end(), 0) - room;
    const std::size_t last = widths.size() - 1;
    const auto shrink = [&](std::size_t index) {
        const int most = widths[index] - least[index];
        int taken = std::clamp(excess, 0, most);
        if (taken > 0 && most - taken < kLeastTitle)
            taken = most;
        widths[index] -= taken;
        excess -= taken;
    };
    for (std::size_t index = 1; index < last && excess > 0; ++index)
        shrink(index);
    for (std::size_t index = 1; index < last && excess > 0; ++index) {
        if (!result.showsGapMark) {
            result.showsGapMark = true;
            excess += gapMarkWidth;
        }
        excess -= widths[index];
        widths[index] = 0;
    }
    shrink(last);
    shrink(0);
    return result;
}

void PathColntrolCell::setPathComponents(std::vector<Component> components) {
    if (components == m_components)
        return;
    m_components = std::move(components);
    const std::vector<PathElementCell*> before = std::exchange(m_cells, {});
    QWidget* neighbour = whoHasFocusBefore(*this);
    for (std::size_t index = 0; index < m_components.size(); ++index) {
        const Component& component = m_components[index];
        auto* const cell = new PathElementCell(component.title, component.iconName, this);
        cell->setPlace(index == 0, index + 1 == m_components.size());
        cell->setEnabled(component.isWay);
        // A new widget would be the last that Tab reaches, wherever it lies.
        setTabOrder(neighbour, cell);
        neighbour = cell;
        connect(cell, &QAbstractButton::clicked, this, [this, path = component.path] {
            emit pathComponentClicked(QByteArray::fromStdString(path));
        });
        m_cells.push_back(cell);
    }
    if (!m_pGapMark) {
        m_pGapMark = new PathElementCell(QStringLiteral("…"), QString(), this);
        m_pGapMark->setAccessibleName(tr("Folders in between"));
        m_pGapMark->setEnabled(false);
    }
    layOutCells();
    const auto hasFocus = [](const PathElementCell* cell) {
        return cell->hasFocus();
    };
    const auto isEnabled = [](const PathElementCell* cell) {
        return cell->isEnabled();
    };
    const auto nearest = std::find_if(m_cells.rbegin(), m_cells.rend(), isEnabled);
    if (std::any_of(before.begin(), before.end(), hasFocus) && nearest != m_cells.rend())
        (*nearest)->setFocus(Qt::TabFocusReason);
    // A press on one of them may be what leads here.
    for (PathElementCell* cell : before) {
        cell->hide();
        cell->deleteLater();
    }
}

void PathColntrolCell::setRoom(const QRect& room) {
    m_room = room;
    layOutCells();
}

void PathColntrolCell::layOutCells() {
    if (!m_pGapMark)
        return;
    std::vector<int> full;
    std::vector<int> least;
    for (const PathElementCell* cell : m_cells) {
        full.push_back(cell->getFullWidth());
        least.push_back(cell->getLeastWidth());
    }
    const int markWidth = m_pGapMark->getFullWidth();
    const PathCellWidths fitted = fitPathCells(full, least, markWidth, m_room.width());
    m_pGapMark->setVisible(fitted.showsGapMark);
    int x = 0;
    for (std::size_t index = 0; index < m_cells.size(); ++index) {
        PathElementCell& cell = *m_cells[index];
        const int width = fitted.widths[index];
        cell.setVisible(width > 0);
        cell.setGeometry(x, 0, width, PathElementCell::kHeight);
        cell.setToolTip(width < full[index] ? m_components[index].title.toHtmlEscaped() : QString());
        x += width;
        if (index == 0 && fitted.showsGapMark) {
            m_pGapMark->setGeometry(x, 0, markWidth, PathElementCell::kHeight);
            x += markWidth;
        }
    }
    setGeometry(m_room.left(), m_room.top(), std::min(x, m_room.width()), PathElementCell::kHeight);
}

} // namespace veltrano
