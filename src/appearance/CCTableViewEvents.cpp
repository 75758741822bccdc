// What the table makes of pointer and keys.

#include "appearance/CCTableView.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

namespace veltrano {

namespace {

constexpr QPoint kMenuOffset(24, 24); // points from a row's corner to the menu that a key opens

} // namespace

CCTableView::CellPlace CCTableView::placeAt(const QPoint& point) const {
    return {rowAtPoint(point), columnAtPoint(point)};
}

void CCTableView::pointAt(std::optional<QPoint> point) {
    m_pointer = point;
    const CellPlace place = point ? placeAt(*point) : CellPlace{};
    if (place == m_pointed)
        return;
    updateRow(m_pointed.row);
    m_pointed = place;
    updateRow(m_pointed.row);
}

void CCTableView::mousePressEvent(QMouseEvent* event) {
    event->accept();
    pointAt(event->position().toPoint());
    finishHolding();
    const CellPlace place = m_pointed;
    if (!m_pDelegate || place.row < 0 || !m_pDelegate->shouldSelectRow(place.row))
        return;
    if (event->button() == Qt::RightButton) {
        selectRowIndex(place.row);
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    if (place.row != m_nSelectedRow) {
        m_bHolding = true;
        setSelectedRow(place.row);
        emit selectionIsChanging();
    }
    if (!m_pDelegate->shouldTrackCell(place.column, place.row))
        return;
    if (m_pDelegate->isButtonCell(place.column, place.row)) {
        m_tracked = place;
        updateRow(place.row);
    }
}

void CCTableView::mouseDoubleClickEvent(QMouseEvent* event) {
    // Two quick presses are two presses.
    mousePressEvent(event);
}

void CCTableView::mouseMoveEvent(QMouseEvent* event) {
    pointAt(event->position().toPoint());
    const int row = m_pointed.row;
    if (!m_bHolding || row < 0 || row == m_nSelectedRow || !m_pDelegate->shouldSelectRow(row))
        return;
    setSelectedRow(row);
    emit selectionIsChanging();
}

void CCTableView::mouseReleaseEvent(QMouseEvent* event) {
    pointAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton)
        return;
    finishHolding();
    const CellPlace tracked = std::exchange(m_tracked, {});
    updateRow(tracked.row);
    if (tracked.row >= 0 && tracked == m_pointed && m_pDelegate->isButtonCell(tracked.column, tracked.row))
        emit buttonClicked(tracked.column, tracked.row);
}

void CCTableView::finishHolding() {
    if (std::exchange(m_bHolding, false))
        emit selectionDidChange();
}

void CCTableView::hideEvent(QHideEvent* event) {
    // The release of a button that was held goes elsewhere.
    finishHolding();
    m_tracked = {};
    pointAt({});
    QTableView::hideEvent(event);
}

bool CCTableView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave)
        pointAt({});
    return QTableView::viewportEvent(event);
}

int CCTableView::nextEntry(int row, int step) const {
    for (; row >= 0 && row < numberOfRows(); row += step)
        if (m_pDelegate->shouldSelectRow(row))
            return row;
    return -1;
}

std::optional<int> CCTableView::rowForKey(int key) const {
    const int last = numberOfRows() - 1;
    const bool isSelected = m_nSelectedRow >= 0;
    // A page away, but never onto a row beyond the last entry in that direction.
    const auto pageFrom = [&](int step) {
        const QRect from = rowRect(isSelected ? m_nSelectedRow : 0);
        const int page = std::max(viewport()->height() - from.height(), 1);
        int row = isSelected ? m_nSelectedRow : 0;
        int reached = -1;
        for (int next = nextEntry(row + step, step); next >= 0; next = nextEntry(row + step, step)) {
            if (reached >= 0 && std::abs(rowRect(next).top() - from.top()) > page)
                break;
            reached = row = next;
        }
        return reached;
    };
    switch (key) {
    case Qt::Key_Up:
        return isSelected ? nextEntry(m_nSelectedRow - 1, -1) : nextEntry(last, -1);
    case Qt::Key_Down:
        return nextEntry(isSelected ? m_nSelectedRow + 1 : 0, 1);
    case Qt::Key_Home:
        return nextEntry(0, 1);
    case Qt::Key_End:
        return nextEntry(last, -1);
    case Qt::Key_PageUp:
        return pageFrom(-1);
    case Qt::Key_PageDown:
        return pageFrom(1);
    default:
        return std::nullopt;
    }
}

void CCTableView::keyPressEvent(QKeyEvent* event) {
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool isEntry = canDrawFrameForRow(m_nSelectedRow);
    if (event->key() == Qt::Key_F10 && modifiers == Qt::ShiftModifier) {
        requestMenuAtSelection();
        return;
    }
    if (modifiers == Qt::NoModifier) {
        if (const std::optional<int> row = rowForKey(event->key())) {
            if (*row >= 0)
                selectRowIndex(*row);
            // The group's title above the first entry comes into view with it.
            if (nextEntry(0, 1) == m_nSelectedRow)
                verticalScrollBar()->setValue(0);
            return;
        }
        if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && isEntry) {
            emit rowActivated(m_nSelectedRow);
            return;
        }
        if (event->key() == Qt::Key_Delete && isEntry) {
            emit removeRequested(m_nSelectedRow);
            return;
        }
    }
    const bool isTyped =
        !(modifiers & ~Qt::ShiftModifier) && !event->text().isEmpty() && event->text().at(0).isPrint();
    if (isTyped && numberOfRows() > 0)
        keyboardSearch(event->text());
    else
        event->ignore();
}

void CCTableView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() != QContextMenuEvent::Mouse) {
        requestMenuAtSelection();
        return;
    }
    const int row = rowAtPoint(event->pos());
    if (row < 0 || !m_pDelegate->shouldSelectRow(row))
        return;
    selectRowIndex(row);
    emit contextMenuRequested(event->globalPos());
}

void CCTableView::requestMenuAtSelection() {
    if (!canDrawFrameForRow(m_nSelectedRow))
        return;
    scrollTo(model()->index(m_nSelectedRow, 0));
    emit contextMenuRequested(viewport()->mapToGlobal(rowRect(m_nSelectedRow).topLeft() + kMenuOffset));
}

} // namespace veltrano
