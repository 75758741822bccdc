#pragma once

#include <QWidget>

namespace veltrano {

class CCTableView;
class PushButton;

// The quiet surfaces around the chart. Each lives in the main window; main thread.

/// The band above: filled with the header's tile, a hairline below.
class HeaderBand : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// The left column with the table of disks and folders, and the hairline that parts it from the chart.
class SidebarPanel : public QWidget {
    Q_OBJECT

public:
    static constexpr int kTopInset = 4; // points above the first row

    explicit SidebarPanel(QWidget* parent = nullptr);

    CCTableView& table() { return *m_pTable; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    CCTableView* m_pTable; // a child
};

/// The right column: an upper and a lower card, whose drawn edges lie 7 points inside.
class RightColumn : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    static constexpr int kWidth = 300;      // points
    static constexpr int kLowerHeight = 54; // points, of the lower card while it is empty

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// The band below, with the button that removes a folder from the sidebar and the legend of the chart's
/// colours. Its last point lies below the window.
class FooterBand : public QWidget {
    Q_OBJECT

public:
    explicit FooterBand(QWidget* parent = nullptr);

    /// Where the legend begins, and where it must have ended, in this widget's x.
    void setLegendRange(int from, int to);

    /// Disabled until a folder's entry is selected.
    PushButton& removeEntryButton() { return *m_pRemoveEntry; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    PushButton* m_pRemoveEntry; // a child
    int m_nLegendFrom = 0;
    int m_nLegendTo = 0;
};

/// A nine-part card drawn into the whole of a rectangle.
void drawCard(QPainter& painter, const QRect& panel);

} // namespace veltrano
