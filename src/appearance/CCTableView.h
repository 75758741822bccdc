#pragma once

#include <QTableView>

#include <optional>

namespace veltrano {

class TableCell;

/// What the table asks of its controller. The rows themselves lie in the model; this adds what a model does
/// not tell. A row out of range is no group and has no cell.
class CCTableDelegate {
public:
    virtual bool isGroupRow(int row) const = 0;
    /// Points, without the spacing between rows.
    virtual int heightOfRow(int row) const = 0;
    virtual bool shouldSelectRow(int row) const = 0;
    /// Asked at a press on a cell, before it is followed to its release; what the press means besides that
    /// happens here.
    virtual bool shouldTrackCell(int column, int row) = 0;
    /// Whether a press on the cell is that on a button which can be pressed.
    virtual bool isButtonCell(int column, int row) const = 0;
    /// The cell of a column, or with no column the one that takes the whole width, with its value set; null
    /// for none. Borrowed until the next call.
    virtual TableCell* dataCellForTableColumn(std::optional<int> column, int row) = 0;

protected:
    ~CCTableDelegate() = default;
};

/// The sidebar's table: rows of several heights, group rows over the full width that can't be selected, and a
/// selection plate of its own. Exactly one row is selected, or none; the selection is a row index, which
/// reloadData keeps while the table has such a row. Lives in the widget tree and borrows delegate and model;
/// main thread.
class CCTableView final : public QTableView {
    Q_OBJECT

public:
    static constexpr int kRowSpacing = 2; // points; a cell begins half of it below its row's rectangle
    static constexpr int kRowWidth = 270; // points, of every row, whatever the viewport has
    static constexpr int kBigRow = 62;    // points, of the row rectangle that takes the big selection plate
    static constexpr int kScrollerWidth = 7; // points

    explicit CCTableView(QWidget* parent = nullptr);
    ~CCTableView() override;

    /// Null while there is none; then no row is drawn.
    void setTableDelegate(CCTableDelegate* delegate);
    /// Said in the middle while there are no rows.
    void setEmptyText(const QString& text);

    /// Takes the rows of the model anew, after the model was reset. The selected row index stays if there is
    /// still such a row, otherwise nothing is selected; neither is announced.
    void reloadData();

    /// The selected row, -1 for none. After reloadData it may be a group row.
    int selectedRow() const { return m_nSelectedRow; }
    int numberOfRows() const;
    /// Selects an entry's row and scrolls to it; nothing for a row that is selected already, refused or out
    /// of range. Announces a change.
    void selectRowIndex(int row);

    // Geometry, in the viewport's points: painted and hit by the same functions.

    /// The rectangle of a row with its spacing; empty out of range.
    QRect rowRect(int row) const;
    /// The frame of a cell, or of the whole row without a column.
    QRect cellFrame(std::optional<int> column, int row) const;
    /// -1 where there is none.
    int rowAtPoint(const QPoint& point) const;
    int columnAtPoint(const QPoint& point) const;
    /// The visible plate of a row that is selected or pointed.
    QRectF plateRect(int row) const;
    /// How far the plate ends above the foot of the row's cells, points.
    double plateFoot(int row) const;
    /// Whether the selection is drawn at this row: the selected one, if it is no group.
    bool canDrawFrameForRow(int row) const;

    int pointedRow() const { return m_pointed.row; }
    /// Whether the button of this cell is under the pointer, or held down with the pointer over it.
    bool isButtonPointed(int column, int row) const;
    bool isButtonPressed(int column, int row) const;

    /// A line of calibrated grey around the table.
    void drawFrameInTable(QPainter& painter) const;

signals:
    /// The mouse is down on another row than before; its release announces the change.
    void selectionIsChanging();
    void selectionDidChange();
    /// A button's cell was pressed and released.
    void buttonClicked(int column, int row);
    /// Return was pressed on the selected row.
    void rowActivated(int row);
    /// Delete was pressed on the selected row.
    void removeRequested(int row);
    /// A menu for the selected row is wanted.
    void contextMenuRequested(const QPoint& globalPos);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    /// A cell that the pointer is over or holds.
    struct CellPlace {
        int row = -1;
        int column = -1;
        bool operator==(const CellPlace&) const = default;
    };

    void drawRow(QPainter& painter, int row);
    void implDrawRow(QPainter& painter, int row, bool selected) const;
    /// A frame around the selected row has no drawing; its place in the order is kept.
    void implDrawRowFrame(QPainter&, bool /*btop*/, bool /*bbottom*/) const {}
    void highlightSelection(QPainter& painter, int row) const;
    void drawCells(QPainter& painter, int row);
    void drawEmptyText(QPainter& painter) const;
    void setSelectedRow(int row);
    void mirrorSelection();
    void pointAt(std::optional<QPoint> point);
    void updateRow(int row);
    /// The nearest row from `row` in steps of `step` that may be selected; -1 for none.
    int nextEntry(int row, int step) const;
    std::optional<int> rowForKey(int key) const;
    CellPlace placeAt(const QPoint& point) const;

    void requestMenuAtSelection();
    /// Announces the selection that a held button has made.
    void finishHolding();

    CCTableDelegate* m_pDelegate = nullptr; // borrowed
    QString m_emptyText;
    int m_nSelectedRow = -1;
    std::optional<QPoint> m_pointer; // where it is over the viewport
    CellPlace m_pointed;
    CellPlace m_tracked;       // the button that is held, if any
    bool m_bHolding = false;   // the left button went down on another row
    bool m_bMirroring = false; // the selection model is being brought to the selected row
};

} // namespace veltrano
