#include "appearance/CCTableView.h"

#include "appearance/Colours.h"
#include "appearance/Fonts.h"
#include "appearance/Painting.h"
#include "appearance/SharedImages.h"
#include "appearance/TableCell.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <map>

namespace veltrano {

namespace {

constexpr int kCellInset = CCTableView::kRowSpacing / 2; // points from a row's rectangle to its cells
constexpr double kPlateLeft = 4;    // points; the plate's measures are those of its images
constexpr double kPlateWidth = 258; // points
constexpr double kPlateRadius = 8;  // points
constexpr int kPlateFoot = 1;       // points from a plate to the foot of its row
constexpr int kBigPlateFoot = 4;    // points, in the rows of volumes: keeps them apart
constexpr int kEmptyTextSize = 12;  // pixels
constexpr int kEmptyTextInset = 24; // points
constexpr float kFrameGrey = 0.3F;
constexpr QColor kKnobLeft = tokens::colour(0x9C9EA2);
constexpr QColor kKnobRight = tokens::colour(0x75777C);

constexpr tokens::Plate kInactivePlate{tokens::kSlatePlate.top, tokens::kSlatePlate.foot,
                                       tokens::colour(0x4C5C71)};

/// A knob without a track, as all our lists have.
QString scrollerLook() {
    return QStringLiteral("QScrollBar:vertical { background: transparent; border: none; width: %1px; "
                          "margin: 8px 0 8px 0; }"
                          "QScrollBar::handle:vertical { background: qlineargradient(x1: 0, y1: 0, x2: 1, "
                          "y2: 0, stop: 0 %2, stop: 1 %3); border-radius: 3px; min-height: 28px; }"
                          "QScrollBar::handle:vertical:hover { background: %4; }"
                          "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }"
                          "QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }")
        .arg(QString::number(CCTableView::kScrollerWidth), kKnobLeft.name(), kKnobRight.name(),
             tokens::kInk3.name());
}

} // namespace

CCTableView::CCTableView(QWidget* parent) : QTableView(parent) {
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setTabKeyNavigation(false);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->setStyleSheet(scrollerLook());
    horizontalHeader()->hide();
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setMinimumSectionSize(1);
    viewport()->setAutoFillBackground(false);
    setMouseTracking(true);
}

CCTableView::~CCTableView() = default;

void CCTableView::setTableDelegate(CCTableDelegate* delegate) {
    m_pDelegate = delegate;
    viewport()->update();
}

void CCTableView::setEmptyText(const QString& text) {
    m_emptyText = text;
    viewport()->update();
}

int CCTableView::numberOfRows() const {
    return m_pDelegate && model() ? model()->rowCount() : 0;
}

void CCTableView::reloadData() {
    const int scrolled = verticalScrollBar()->value();
    const int rows = numberOfRows();
    // Most rows are of one height, which the header takes as that of all: setting each by itself would take
    // the square of their number.
    std::map<int, int> heights;
    for (int row = 0; row < rows; ++row)
        ++heights[m_pDelegate->heightOfRow(row) + kRowSpacing];
    const auto mostRows = [](const auto& a, const auto& b) {
        return a.second < b.second;
    };
    const auto common = std::max_element(heights.begin(), heights.end(), mostRows);
    if (common != heights.end())
        verticalHeader()->setDefaultSectionSize(common->first);
    for (int row = 0; row < rows; ++row)
        setRowHeight(row, m_pDelegate->heightOfRow(row) + kRowSpacing);

    m_tracked = {};
    if (m_nSelectedRow >= rows)
        m_nSelectedRow = -1;
    mirrorSelection();
    setAccessibleDescription(rows == 0 ? m_emptyText : QString());
    updateGeometries();
    verticalScrollBar()->setValue(scrolled);
    pointAt(m_pointer);
    viewport()->update();
}

void CCTableView::selectRowIndex(int row) {
    if (row == m_nSelectedRow || row < 0 || row >= numberOfRows() || !m_pDelegate->shouldSelectRow(row))
        return;
    setSelectedRow(row);
    emit selectionDidChange();
}

void CCTableView::setSelectedRow(int row) {
    updateRow(m_nSelectedRow);
    m_nSelectedRow = row;
    updateRow(row);
    mirrorSelection();
    scrollTo(model()->index(row, 0));
}

void CCTableView::mirrorSelection() {
    if (!model() || !selectionModel())
        return;
    m_bMirroring = true;
    if (m_nSelectedRow < 0) {
        selectionModel()->clear();
    } else {
        const QModelIndex index = model()->index(m_nSelectedRow, 0);
        selectionModel()->setCurrentIndex(index,
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    m_bMirroring = false;
}

void CCTableView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    if (m_bMirroring || !m_pDelegate)
        return;
    // Somebody else selects: a search by typing, or an assistive program.
    const QModelIndexList rows = selectionModel()->selectedRows();
    if (!rows.isEmpty() && rows.first().row() != m_nSelectedRow)
        selectRowIndex(rows.first().row());
    else
        mirrorSelection();
}

QRect CCTableView::rowRect(int row) const {
    if (row < 0 || row >= numberOfRows())
        return {};
    return {0, rowViewportPosition(row), kRowWidth, rowHeight(row)};
}

QRect CCTableView::cellFrame(std::optional<int> column, int row) const {
    const QRect rectangle = rowRect(row);
    if (rectangle.isEmpty())
        return {};
    const QRect frame = rectangle.adjusted(0, kCellInset, 0, kCellInset - kRowSpacing);
    if (!column)
        return frame;
    return {columnViewportPosition(*column), frame.y(), columnWidth(*column), frame.height()};
}

int CCTableView::rowAtPoint(const QPoint& point) const {
    return viewport()->rect().contains(point) ? rowAt(point.y()) : -1;
}

int CCTableView::columnAtPoint(const QPoint& point) const {
    return viewport()->rect().contains(point) ? columnAt(point.x()) : -1;
}

QRectF CCTableView::plateRect(int row) const {
    const QRectF rectangle = rowRect(row);
    if (rectangle.isEmpty())
        return {};
    const int foot = rectangle.height() == kBigRow ? kBigPlateFoot : kPlateFoot;
    return {rectangle.x() + kPlateLeft, rectangle.y() + kCellInset, kPlateWidth,
            rectangle.height() - kCellInset - foot};
}

double CCTableView::plateFoot(int row) const {
    return QRectF(cellFrame(std::nullopt, row)).bottom() - plateRect(row).bottom();
}

bool CCTableView::canDrawFrameForRow(int row) const {
    return row >= 0 && row < numberOfRows() && row == m_nSelectedRow && !m_pDelegate->isGroupRow(row);
}

bool CCTableView::isButtonPointed(int column, int row) const {
    return m_pointed == CellPlace{row, column};
}

bool CCTableView::isButtonPressed(int column, int row) const {
    return isButtonPointed(column, row) && m_tracked == m_pointed;
}

void CCTableView::drawFrameInTable(QPainter& painter) const {
    painter.save();
    painter.setPen(QPen(QColor::fromRgbF(kFrameGrey, kFrameGrey, kFrameGrey), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(viewport()->rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    painter.restore();
}

void CCTableView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const int rows = numberOfRows();
    if (rows == 0) {
        drawEmptyText(painter);
        return;
    }
    const int last = rowAt(event->rect().bottom());
    for (int row = std::max(rowAt(event->rect().top()), 0); row <= (last < 0 ? rows - 1 : last); ++row)
        drawRow(painter, row);
}

void CCTableView::drawRow(QPainter& painter, int row) {
    const bool isSelected = canDrawFrameForRow(row);
    if (isSelected) {
        highlightSelection(painter, row);
        implDrawRowFrame(painter, true, true);
    } else {
        implDrawRow(painter, row, false);
    }
    Colours::sharedColours().setSelectedCellDrawing(isSelected);
    drawCells(painter, row);
    Colours::sharedColours().setSelectedCellDrawing(false);
}

void CCTableView::implDrawRow(QPainter& painter, int row, bool selected) const {
    if (!selected) {
        if (row == m_pointed.row && m_pDelegate->shouldSelectRow(row))
            drawPlate(painter, plateRect(row), tokens::kHoverPlate, kPlateRadius);
        return;
    }
    if (!isActiveWindow()) {
        drawPlate(painter, plateRect(row), kInactivePlate, kPlateRadius);
        return;
    }
    const QRect rectangle = rowRect(row);
    const char* const name = rectangle.height() == kBigRow ? "pvtSelectionBig" : "pvtSelectionSmall";
    const QPixmap plate = sharedImage(name, painter.device()->devicePixelRatioF());
    painter.drawPixmap(QRectF(rectangle), plate, QRectF(plate.rect()));
}

void CCTableView::highlightSelection(QPainter& painter, int row) const {
    implDrawRow(painter, row, true);
}

void CCTableView::drawCells(QPainter& painter, int row) {
    const auto draw = [&](std::optional<int> column) {
        if (TableCell* const cell = m_pDelegate->dataCellForTableColumn(column, row))
            cell->drawWithFrame(painter, cellFrame(column, row));
    };
    if (m_pDelegate->isGroupRow(row)) {
        draw(std::nullopt);
        return;
    }
    for (int column = 0; column < model()->columnCount(); ++column)
        draw(column);
}

void CCTableView::drawEmptyText(QPainter& painter) const {
    painter.setFont(interfaceFont(kEmptyTextSize));
    painter.setPen(tokens::kInk2);
    const QRect room = viewport()->rect().adjusted(kEmptyTextInset, 0, -kEmptyTextInset, 0);
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, m_emptyText);
}

void CCTableView::updateRow(int row) {
    viewport()->update(rowRect(row));
}

void CCTableView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    pointAt(m_pointer);
}

void CCTableView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange)
        viewport()->update();
    QTableView::changeEvent(event);
}

} // namespace veltrano
