#pragma once

#include <QByteArray>
#include <QWidget>

#include <span>
#include <string>
#include <vector>

namespace veltrano {

class PathElementCell;

/// How wide each cell of a path becomes so that the whole fits, points.
struct PathCellWidths {
    std::vector<int> widths;   ///< One for each cell; 0 for a cell that is not shown.
    bool showsGapMark = false; ///< Cells from the second on are left out, and a mark stands for them.
};

/// Fits cells into a width. From the second one on, up to the last but one, titles shrink away one after the
/// other; then the cells themselves go, from the second one on, and the gap mark takes a place of its own.
/// First and last stay; if even they are too wide the last one shrinks, then the first. A title of which
/// next to nothing would be left goes altogether. `full` and
/// `least` are the widths of each cell with its title and without.
[[nodiscard]] PathCellWidths fitPathCells(std::span<const int> full, std::span<const int> least,
                                          int gapMarkWidth, int room);

/// The drawn row of a path control's cells, each a PathElementCell. As wide as its cells or as the room it is
/// given; the window that it lives in owns it. Main thread. The odd spelling of its name is the system's.
class PathColntrolCell : public QWidget {
    Q_OBJECT

public:
    /// What a cell shows, the path it stands for, bytes, and whether a press on it leads there.
    struct Component {
        QString title;
        QString iconName;
        std::string path;
        bool isWay = true;

        bool operator==(const Component&) const = default;
    };

    using QWidget::QWidget;

    /// Shows these, from the root down; none for an empty control. Who had a cell in focus keeps the focus
    /// here as long as a cell leads anywhere.
    void setPathComponents(std::vector<Component> components);
    const std::vector<PathElementCell*>& pathComponentCells() const { return m_cells; }

    /// Where the control may lie, in its parent: it takes what it needs of it from the left.
    void setRoom(const QRect& room);

signals:
    /// A cell was clicked; `path` is what it stands for, bytes.
    void pathComponentClicked(const QByteArray& path);

private:
    void layOutCells();

    std::vector<Component> m_components;
    std::vector<PathElementCell*> m_cells; // children, one for each component
    PathElementCell* m_pGapMark = nullptr; // child
    QRect m_room;
};

} // namespace veltrano
