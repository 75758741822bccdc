// Measures the drill: how long a frame takes over a full chart, how many are shown in its second, and what a
// hundred drills leave in memory. Needs a display.

#include "app/QtMainLoop.h"
#include "appearance/Look.h"
#include "bench/ChartTree.h"
#include "bench/Figures.h"
#include "bench/LoopMeter.h"
#include "chart/ChartArea.h"
#include "chart/RadialView.h"
#include "chart/geometry/SectorWalk.h"
#include "support/FakeMainLoop.h"

#include <QApplication>
#include <QPainter>
#include <QWindow>

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace veltrano {

namespace {

constexpr int kSmallFiles = 10; // too small to be seen, in each folder
constexpr double kMillis = 1000;
constexpr QSize kSize{900, 700};

/// Counts the frames of a view.
class PaintCounter final : public QObject {
public:
    explicit PaintCounter(QWidget& view) { view.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            ++painted;
        return false;
    }
    int painted = 0;
};

/// The folder that holds nearly all of the tree, and its place in the chart of the root.
struct Target {
    FolderSystemItem* folder = nullptr;
    double start = 0; // fraction of a turn
    int sectors = 0;  // that the root's chart shows
};

Target findTarget(const test::TreeBuilder& tree, const RingLayout& layout) {
    Target target;
    forEachSector(*tree.root(), layout, [&](const Sector& sector) {
        ++target.sectors;
        if (sector.nSubLevel == 1 && sector.item.isDir()) {
            target.folder = sector.item.asFolderSystemItem();
            target.start = sector.dSkAngle;
        }
        return SectorVisit::Descend;
    });
    if (!target.folder) {
        std::fputs("veltrano_drill_bench: the chart shows no folder\n", stderr);
        std::exit(1);
    }
    return target;
}

void benchFrames() {
    constexpr int kRounds = 3;
    QtMainLoop mainLoop;
    const test::TreeBuilder tree = makeChartTree(kSmallFiles, ChartTreeTop::Wrapped);
    ChartArea area(mainLoop);
    RadialController& chart = area.controller();
    area.resize(kSize);
    area.show();
    LoopMeter meter;
    meter.run([&] { return area.windowHandle() && area.windowHandle()->isExposed(); });
    chart.setRoot(tree.root());
    const Target target = findTarget(tree, chart.getLayout());
    const std::string remark = std::to_string(target.sectors) + " sectors";
    PaintCounter counter(area.getRadialView());

    for (const bool in : {true, false}) {
        std::vector<double> frames, processor;
        double shown = 0;
        for (int round = 0; round < kRounds; ++round) {
            chart.setRoot(in ? tree.root() : target.folder);
            const double settled = meter.now() + 0.1;
            meter.run([&] { return meter.now() > settled; });
            meter.takeTurns();
            counter.painted = 0;
            const double begun = meter.now();
            const CostMeter worked;
            if (in)
                chart.startDrillInAnimation(target.folder, 1, target.start);
            else
                chart.startDrillOutAnimation(tree.root());
            frames.push_back(meter.now() - begun);
            meter.run([&] { return !chart.isRDAnimating(); });
            processor.push_back(worked.cost().thread / counter.painted);
            shown += counter.painted / (meter.now() - begun) / kRounds;
            for (const double turn : meter.takeTurns()) {
                if (turn > 0.001)
                    frames.push_back(turn);
            }
        }
        const std::string name = in ? "drill in at 900 x 700, 1x" : "drill out at 900 x 700, 1x";
        printFigure(name + ": a frame", 16.7, median(frames) * kMillis, "ms", remark);
        printFigure(name + ": the longest frame", 33, quantile(frames, 1) * kMillis, "ms");
        printMeasure(name + ": a frame, processor time of the main thread", median(processor) * kMillis,
                     "ms");
        printMeasure(name + ": frames shown", shown, "a second");
    }
    chart.setRoot(nullptr);
}

void benchMemory() {
    constexpr int kDrills = 100;
    FakeMainLoop mainLoop;
    const test::TreeBuilder tree = makeChartTree(kSmallFiles, ChartTreeTop::Wrapped);
    ChartArea area(mainLoop);
    RadialController& chart = area.controller();
    area.resize(kSize);
    area.show();
    QCoreApplication::processEvents();
    chart.setRoot(tree.root());
    const Target target = findTarget(tree, chart.getLayout());
    const auto drill = [&] {
        chart.startDrillInAnimation(target.folder, 1, target.start);
        mainLoop.advance(2 / 60.0);
        chart.releaseRDAnimation();
        QCoreApplication::processEvents();
        chart.startDrillOutAnimation(tree.root());
        mainLoop.advance(2 / 60.0);
        chart.releaseRDAnimation();
        QCoreApplication::processEvents();
    };
    for (int warmUp = 0; warmUp < 25; ++warmUp)
        drill();
    const auto inUse = [] {
        return static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd);
    };
    const double before = inUse();
    for (int count = 0; count < kDrills / 2; ++count)
        drill();
    printFigure("drill: memory that a hundred leave behind", 16, (inUse() - before) / 1024, "KiB");
    chart.setRoot(nullptr);
}

} // namespace

} // namespace veltrano

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    veltrano::applyLook(application);
    const std::string_view what = argc == 2 ? argv[1] : "";
    if (what == "frames")
        veltrano::benchFrames();
    else if (what == "memory")
        veltrano::benchMemory();
    else {
        std::fputs("Usage: veltrano_drill_bench frames|memory\n", stderr);
        return 2;
    }
    return 0;
}
