// Measures the whole program, window and all, and the painting of its chart. See the usage text.

#include "app/CSTreeController.h"
#include "app/MainWindow.h"
#include "app/QtMainLoop.h"
#include "appearance/Look.h"
#include "bench/BareWalk.h"
#include "bench/ChartTree.h"
#include "bench/Figures.h"
#include "bench/LoopMeter.h"
#include "chart/AnimView.h"
#include "chart/ChartArea.h"
#include "chart/RadialView.h"
#include "chart/geometry/SectorHit.h"
#include "chart/geometry/SectorWalk.h"
#include "platform/linux/LinuxCatalogue.h"
#include "platform/linux/LinuxFileDates.h"
#include "platform/linux/LinuxFolderQuestions.h"
#include "platform/posix/PosixFileActions.h"
#include "support/FakeVolumes.h"
#include "support/MapSettings.h"
#include "support/Recorders.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <numbers>

namespace veltrano {

namespace {

constexpr int kThreads = 4;
constexpr double kMicros = 1e6;
constexpr double kMillis = 1000;

[[noreturn]] void fail(const std::string& what) {
    std::fprintf(stderr, "veltrano_window_bench: %s\n", what.c_str());
    std::exit(1);
}

class NoAlerts final : public Alerts {
public:
    void ask(const Question& question, Answer) override { fail("the program asks: " + question.message); }
};

class NoSounds final : public Sounds {
public:
    void play(std::string_view) override {}
};

/// The program as its main function puts it together.
struct Program {
    Program()
        : controller({.mainLoop = mainLoop,
                      .notifications = notifications,
                      .alerts = alerts,
                      .sounds = sounds,
                      .files = files,
                      .settings = settings,
                      .desktop = desktop,
                      .volumes = volumes,
                      .folderQuestions = folderQuestions,
                      .fileDates = fileDates},
                     std::make_unique<CModel>(mainLoop, notifications, catalogue,
                                              TimeCode(currentCatalogueDate), ScanFacts{}, volumes),
                     window) {
        window.show();
        meter.run([this] { return window.windowHandle() && window.windowHandle()->isExposed(); });
        notifications.addObserver(std::string(FinishWalkingVolume), [this](const auto&) { finished = true; });
    }

    QtMainLoop mainLoop;
    FakeVolumes volumes;
    NotificationCentre notifications;
    NoAlerts alerts;
    NoSounds sounds;
    PosixFileActions files;
    MapSettings settings;
    RecordingDesktop desktop;
    LinuxFolderQuestions folderQuestions{mainLoop};
    LinuxFileDates fileDates{mainLoop};
    std::shared_ptr<FileCatalogue> catalogue = std::make_shared<LinuxCatalogue>();
    MainWindow window{mainLoop, catalogue, "/"};
    CSTreeController controller;
    LoopMeter meter;
    bool finished = false;
};

void benchScan(const std::string& name, const std::string& path, int rounds) {
    Program program;
    std::vector<double> bareWall, wall, longest, usual;
    std::size_t turnCount = 0;
    if (bareWalk(path, kThreads).entries == 0)
        fail("there is nothing in " + path);
    for (int round = 0; round < rounds; ++round) {
        const CostMeter bare;
        const BareWalkResult sum = bareWalk(path, kThreads);
        bareWall.push_back(bare.cost().wall);

        program.finished = false;
        program.meter.takeTurns();
        const double click = program.meter.now();
        program.controller.doScanFolder(path);
        program.meter.run([&] { return program.finished; });
        wall.push_back(program.meter.now() - click);
        // The finish run belongs to the turns, though not to the time.
        program.meter.run([&] { return !program.controller.isProcessing(); });
        const std::vector<double> turns = program.meter.takeTurns();
        turnCount = turns.size();
        longest.push_back(quantile(turns, 1));
        usual.push_back(quantile(turns, 0.99));
        auto* const root =
            program.window.chartArea().controller().getRootObject()->getObject()->asFileSystemItem();
        if (root->gettotalsize() != sum.bytes)
            fail("the chart's total of " + path + " is not the sum of the bare walk");
    }
    printFigure(name + ": click to totals, window shown, wall", 1.40, median(wall) / median(bareWall), "x",
                text(median(wall), 3) + " s against " + text(median(bareWall), 3) + " s");
    printFigure(name + ": longest turn, window shown", 16, median(longest) * kMillis, "ms",
                std::to_string(turnCount) + " turns");
    printFigure(name + ": 99 of 100 turns within, window shown", 8, median(usual) * kMillis, "ms");
}

/// The chart of a tree in a window of the size that the figures are told for.
struct ShownChart {
    explicit ShownChart(int smallFilesInFolder) : tree(makeChartTree(smallFilesInFolder)) {
        area.resize(kSize);
        area.show();
        // Nothing is painted before the display server has answered.
        while (!area.windowHandle() || !area.windowHandle()->isExposed())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        chart.setRoot(tree.root(), true, true);
        forEachSector(*tree.root(), chart.getLayout(), [&](const Sector&) {
            ++sectors;
            return SectorVisit::Descend;
        });
    }

    std::string remark() const {
        return std::to_string(sectors) + " sectors, " + std::to_string(chart.getLayout().m_nSubLevels) +
               " rings";
    }

    static constexpr QSize kSize{900, 700};

    QtMainLoop mainLoop;
    test::TreeBuilder tree;
    ChartArea area{mainLoop};
    RadialController& chart = area.controller();
    int sectors = 0;
};

/// Ring count and outlines, as at each tick of a scan.
void benchLayout(int rounds) {
    constexpr int kSmallFiles = 2770; // a million in all
    ShownChart shown(kSmallFiles);
    std::vector<double> layout, processor;
    for (int round = 0; round < rounds; ++round) {
        const CostMeter meter;
        shown.chart.initCountOfSublevels(true);
        double sum = 0;
        forEachSector(*shown.tree.root(), shown.chart.getLayout(), [&](const Sector& sector) {
            SectorPath path;
            FillSectorPath(shown.chart.getLayout(), path, sector.nSubLevel, sector.dSkAngle,
                           sector.dDeltaAngle, 0.2);
            sum += path.dLineWidth;
            return SectorVisit::Descend;
        });
        layout.push_back(meter.cost().wall);
        processor.push_back(meter.cost().thread);
        if (sum <= 0)
            fail("the chart shows nothing");
    }
    printFigure("chart: layout for one tick, a million nodes", 8, median(layout) * kMillis, "ms",
                shown.remark());
    printMeasure("chart: layout, processor time of the main thread", median(processor) * kMillis, "ms");
}

void benchPaint(int rounds) {
    ShownChart shown(10);
    const RadialView& view = shown.area.getRadialView();
    QImage picture(ShownChart::kSize, QImage::Format_ARGB32_Premultiplied);
    std::vector<double> paint, processor;
    for (int round = 0; round < rounds; ++round) {
        picture.fill(Qt::transparent);
        const CostMeter meter;
        QPainter painter(&picture);
        painter.setTransform(view.getChartTransform());
        shown.chart.DrawRadialSructure(painter, view.getChartBounds());
        painter.end();
        paint.push_back(meter.cost().wall);
        processor.push_back(meter.cost().thread);
    }
    printFigure("chart: full paint at 900 x 700, 1x", 12, median(paint) * kMillis, "ms", shown.remark());
    printMeasure("chart: full paint, processor time of the main thread", median(processor) * kMillis, "ms");
}

/// Sees when a widget has been painted.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override {
        isPainted = isPainted || event->type() == QEvent::Paint;
        return false;
    }

    bool isPainted = false;
};

/// The pointer goes round the third ring, from sector to sector.
void benchHover() {
    constexpr int kRing = 3;
    constexpr int kSteps = 360;
    ShownChart shown(10);
    PaintWatch watch(shown.area.getAnimView());
    const double radius = shown.chart.getLayout().getRadius(kRing) * 0.95;
    const QPointF middle(ShownChart::kSize.width() / 2.0, ShownChart::kSize.height() / 2.0);
    std::vector<double> hover;
    for (int step = 0; step < kSteps; ++step) {
        const double angle = step * 2 * std::numbers::pi / kSteps;
        const QPointF at = middle + QPointF(radius * std::cos(angle), radius * std::sin(angle));
        QMouseEvent move(QEvent::MouseMove, at, shown.area.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::processEvents();
        const TreeObject* const before = shown.chart.getCurPointedSector().m_pItem();
        watch.isPainted = false;
        const CostMeter meter;
        QCoreApplication::sendEvent(&shown.area.getRadialView(), &move);
        if (shown.chart.getCurPointedSector().m_pItem() == before)
            continue;
        while (!watch.isPainted)
            QCoreApplication::processEvents();
        hover.push_back(meter.cost().wall);
    }
    if (hover.empty())
        fail("the pointer met one sector only");
    printFigure("chart: pointing at another sector, until its outline is painted", 4, median(hover) * kMillis,
                "ms",
                std::to_string(hover.size()) + " sectors, longest " + text(quantile(hover, 1) * kMillis, 2));
}

/// Hit tests all over a chart of 10 thousand sectors and more, on a screen large enough for them.
void benchHit() {
    constexpr std::array kFoldersIn = {60, 14};
    constexpr int kChain = 11; // folders one inside the other below each of those
    constexpr double kSide = 3000;
    constexpr int kHits = 20'000;
    test::TreeBuilder tree("/many");
    int number = 0;
    for (int outer = 0; outer < kFoldersIn[0]; ++outer) {
        FolderSystemItem* const folder = tree.folder(tree.root(), std::to_string(number++));
        for (int inner = 0; inner < kFoldersIn[1]; ++inner)
            tree.file(tree.chain(tree.folder(folder, std::to_string(number++)), "n", kChain - 1), "f", 1000);
    }
    tree.recount();
    RingLayout layout;
    layout.setBounds(QRectF(0, 0, kSide, kSide));
    layout.m_nSubLevels = kMaxSubLevels;
    layout.m_lTotalSize = tree.root()->gettotalsize();
    int sectors = 0;
    forEachSector(*tree.root(), layout, [&](const Sector&) {
        ++sectors;
        return SectorVisit::Descend;
    });
    const SectorSentinels none{nullptr, nullptr};
    int found = 0;
    const CostMeter meter;
    for (int hit = 0; hit < kHits; ++hit) {
        // Round and outwards in steps that do not repeat.
        constexpr double kGoldenAngle = 2.399963;
        const double angle = hit * kGoldenAngle;
        const double radius = static_cast<double>(layout.m_fullRadius) * std::sqrt((hit + 0.5) / kHits);
        const QPointF at = layout.m_Center + radius * QPointF(std::cos(angle), std::sin(angle));
        found += getItemByPoint(layout, tree.root(), none, at, nullptr, nullptr) != nullptr;
    }
    const double each = meter.cost().wall / kHits;
    if (found != kHits || sectors < 10'000)
        fail("the hit test met a gap, or there are too few sectors");
    printFigure("chart: hit test", 20, each * kMicros, "us", std::to_string(sectors) + " sectors");
}

void benchChart(int rounds) {
    constexpr int kRunsInRound = 10;
    benchLayout(rounds * kRunsInRound);
    benchPaint(rounds * kRunsInRound);
    benchHover();
    benchHit();
}

/// Counts how often a widget is painted.
class PaintCounter final : public QObject {
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }

    int paints = 0;
};

/// From one scanned tree to another and back, each time until its chart is painted.
void benchSwitch(int rounds) {
    constexpr int kSmallFiles = 2770; // a million in all
    test::TreeBuilder other = makeChartTree(kSmallFiles);
    ShownChart shown(kSmallFiles);
    const std::array roots{other.root(), shown.tree.root()};
    PaintCounter counter(shown.area.getRadialView());
    LoopMeter meter;
    meter.run([&] { return counter.paints > 0; });
    std::vector<double> switching;
    for (int round = 0; round < 2 * rounds; ++round) {
        const int before = counter.paints;
        const double click = meter.now();
        shown.chart.setRoot(roots[static_cast<std::size_t>(round % 2)], true, true);
        meter.run([&] { return counter.paints > before; });
        switching.push_back(meter.now() - click);
    }
    shown.chart.setRoot(nullptr, true, false); // one of the trees goes before the chart
    printFigure("chart: from one tree of a million files to another", 50, quantile(switching, 1) * kMillis,
                "ms",
                "longest of " + std::to_string(switching.size()) + ", usual " +
                    text(median(switching) * kMillis, 1) + " ms, " + shown.remark());
}

int usage() {
    std::fputs("Usage: veltrano_window_bench scan NAME PATH ROUNDS\n"
               "       veltrano_window_bench switch ROUNDS\n"
               "       veltrano_window_bench chart ROUNDS\n"
               "Prints rows of what, at most, measured. Needs a display, or the offscreen platform.\n",
               stderr);
    return 2;
}

int parseRounds(const char* text) {
    int rounds = 0;
    const auto [end, error] = std::from_chars(text, text + std::strlen(text), rounds);
    return error == std::errc() && *end == '\0' && rounds > 0 ? rounds : 0;
}

int run(int argc, char* argv[]) {
    if (argc == 3 && std::strcmp(argv[1], "chart") == 0 && parseRounds(argv[2]) > 0)
        benchChart(parseRounds(argv[2]));
    else if (argc == 3 && std::strcmp(argv[1], "switch") == 0 && parseRounds(argv[2]) > 0)
        benchSwitch(parseRounds(argv[2]));
    else if (argc == 5 && std::strcmp(argv[1], "scan") == 0 && parseRounds(argv[4]) > 0)
        benchScan(argv[2], argv[3], parseRounds(argv[4]));
    else
        return usage();
    return 0;
}

} // namespace

} // namespace veltrano

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    veltrano::applyLook(application);
    return veltrano::run(argc, argv);
}
