#pragma once

#include "chart/ChartFixture.h"

#include <QProxyStyle>

namespace veltrano::test {

/// A style that animates nothing.
class StillStyle final : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        return hint == SH_Widget_Animation_Duration ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

/// A chart of
///     /v (capacity 2000, 1000 free) ─┬─ before (250)
///                                    ├─ a (250) ── b (250) ─┬─ x (100)
///                                    │                      └─ y (150)
///                                    └─ after (500)
class DrillChartTest : public ChartTest {
protected:
    DrillChartTest() {
        before = tree.file(tree.root(), "before", 250, 1);
        a = tree.folder(tree.root(), "a");
        b = tree.folder(a, "b");
        x = tree.file(b, "x", 100, 3);
        y = tree.file(b, "y", 150, 5);
        after = tree.file(tree.root(), "after", 500, 7);
        tree.recount();
        show(tree.root());
    }
    ~DrillChartTest() override { chart.setRoot(nullptr); }

    /// To the moment at which the eased progress is a half.
    void toTheMiddle() { loop.advance(0.5); }
    void toTheEnd() {
        loop.advance(1.1);
        settle();
    }

    TreeBuilder tree = TreeBuilder::volume("/v", 2000, 1000);
    FileSystemItem* before;
    FolderSystemItem* a;
    FolderSystemItem* b;
    FileSystemItem* x;
    FileSystemItem* y;
    FileSystemItem* after;
};

} // namespace veltrano::test
