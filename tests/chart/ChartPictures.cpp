// Draws the chart in its states into files, for looking at, and times layout and painting:
//     chart_pictures FOLDER

#include "chart/AnimView.h"
#include "chart/ChartArea.h"
#include "chart/ChartHost.h"
#include "chart/RadialView.h"
#include "chart/geometry/SectorWalk.h"
#include "support/FakeMainLoop.h"
#include "support/TreeBuilder.h"
#include "tree/TopLevelItem.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

using namespace veltrano;

class PictureHost final : public ChartHost {
public:
    std::optional<std::string> getProcessingVol() const override { return processing; }
    QString getDisplayText(std::string_view) const override { return QStringLiteral("System"); }
    std::optional<std::string> processing;
};

/// The window's ground, so that the picture looks as in the program.
class Ground final : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        QLinearGradient ground(0, 0, 0, height());
        ground.setColorAt(0, QColor(0xF1F5FA));
        ground.setColorAt(0.5, QColor(0xE8EEF5));
        ground.setColorAt(1, QColor(0xE3EAF2));
        painter.fillRect(rect(), ground);
    }
};

/// Folders whose sizes fall off steeply, with the ages and flags of a real disk.
void grow(const test::TreeBuilder& tree, FolderSystemItem* folder, std::mt19937_64& numbers, double bytes,
          int depth, double leastBytes) {
    const std::size_t children = 2 + numbers() % 6;
    double left = bytes * 0.97;
    for (std::size_t index = 0; index < children; ++index) {
        const double share = left * (0.25 + static_cast<double>(numbers() % 40) / 100.0);
        left -= share;
        const std::string name = "n" + std::to_string(index);
        const auto age = static_cast<std::uint8_t>(1 + numbers() % 7);
        if (share > leastBytes && depth < 12 && numbers() % 10 < 8) {
            FolderSystemItem* const below = FolderSystemItem::initWithPathSize(
                tree.arena(), name, folder, 0, false, age, numbers() % 40 == 0);
            if (numbers() % 45 == 0)
                below->setCollected(true);
            else if (numbers() % 60 == 0)
                below->setTrashFlag(true);
            grow(tree, below, numbers, share, depth + 1, leastBytes);
        } else {
            tree.file(folder, name, static_cast<std::int64_t>(share), age, numbers() % 40 == 0);
        }
    }
}

double medianMilliseconds(const std::function<void()>& work) {
    std::vector<double> times;
    for (int run = 0; run < 21; ++run) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    std::ranges::sort(times);
    return times[times.size() / 2];
}

int countSectors(RadialController& chart) {
    int sectors = 0;
    forEachSector(*chart.getRootObject(), chart.getLayout(), [&](const Sector&) {
        ++sectors;
        return SectorVisit::Descend;
    });
    return sectors;
}

} // namespace

int main(int argumentCount, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argumentCount, arguments);
    application.setFont(QFont(QStringLiteral("Inter")));
    const QString folder = QString::fromLocal8Bit(argumentCount > 1 ? arguments[1] : ".");

    FakeMainLoop loop;
    PictureHost host;
    Ground window;
    window.resize(610, 635);
    ChartArea area(loop, &window);
    area.setGeometry(window.rect());
    RadialController& chart = area.controller();
    chart.setHost(&host);
    window.show();
    const auto save = [&](const char* name) {
        QApplication::processEvents();
        window.grab().save(folder + QLatin1Char('/') + QLatin1String(name));
    };

    const auto tree = test::TreeBuilder::volume("/", 512'000'000'000, 147'000'000'000);
    std::mt19937_64 numbers(4);
    grow(tree, tree.root(), numbers, 3.6e11, 1, 4e8);
    tree.recount();
    chart.setRoot(tree.root());
    std::vector<FileSystemItem*> all;
    forEachSector(*tree.root(), chart.getLayout(), [&](const Sector& sector) {
        all.push_back(&sector.item);
        return SectorVisit::Descend;
    });
    chart.setHiliteOnRadial(all[all.size() / 3]);
    chart.selectItem(all[all.size() / 2]);
    save("finished.png");
    chart.selectItem(nullptr);

    FileSystemItem* drilled = tree.root()->childAtIndex(0);
    if (drilled->isDir())
        chart.setRoot(drilled->asFolderSystemItem());
    save("drilled.png");

    host.processing = "/";
    const auto part = test::TreeBuilder::volume("/", 512'000'000'000, 47'000'000'000);
    grow(part, part.root(), numbers, 2.5e11, 1, 4e8);
    part.recount();
    chart.setRoot(part.root(), true, true);
    chart.StartAnimation();
    for (int second = 0; second < 13; ++second) {
        loop.advance(1.0);
        chart.UpdateRadialStructureDuringProcessByRoot(part.root());
    }
    loop.advance(0.4);
    save("scanning.png");
    chart.StopAnimation();
    host.processing.reset();
    loop.advance(1.0);

    VolumeItem volume("/", "System", 512'000'000'000, 147'000'000'000, 0);
    chart.setRoot(&volume);
    save("unscanned.png");

    // 100 folders, in each 2, in each 2, and from there on one below the other: 1500 sectors on 5 rings.
    window.resize(900, 700);
    area.setGeometry(window.rect());
    const auto large = test::TreeBuilder::volume("/", 512'000'000'000, 147'000'000'000);
    const auto folderOfAge = [&](FolderSystemItem* parent) {
        return FolderSystemItem::initWithPathSize(large.arena(), "d", parent, 0, false,
                                                  static_cast<std::uint8_t>(numbers() % 8), false);
    };
    for (int top = 0; top < 100; ++top) {
        FolderSystemItem* const first = folderOfAge(large.root());
        for (int half = 0; half < 2; ++half) {
            FolderSystemItem* const second = folderOfAge(first);
            for (int quarter = 0; quarter < 2; ++quarter)
                large.file(folderOfAge(folderOfAge(second)), "f", 900'000'000,
                           static_cast<std::uint8_t>(numbers() % 8));
        }
    }
    large.recount();
    chart.setRoot(large.root());
    const int sectors = countSectors(chart);
    QPixmap canvas(900, 700);
    canvas.fill(Qt::transparent);
    const double layout = medianMilliseconds([&] {
        chart.initCountOfSublevels(true);
        std::vector<SectorPath> outlines;
        forEachSector(*chart.getRootObject(), chart.getLayout(), [&](const Sector& sector) {
            FillSectorPath(chart.getLayout(), outlines.emplace_back(), sector.nSubLevel, sector.dSkAngle,
                           sector.dDeltaAngle, 0.2);
            return SectorVisit::Descend;
        });
    });
    const double paint = medianMilliseconds([&] {
        QPainter painter(&canvas);
        painter.setTransform(area.getRadialView().getChartTransform());
        chart.DrawRadialSructure(painter, area.getRadialView().getChartBounds());
    });
    save("large.png");

    // The tree of a drilled folder has no level table: one folder of a million files below it.
    const test::TreeBuilder wide("/wide");
    FolderSystemItem* const crowd = wide.folder(wide.root(), "crowd");
    for (int index = 0; index < 1'000'000; ++index)
        wide.file(crowd, "f", 1000);
    wide.file(wide.chain(wide.root(), "deep", 12), "f", 1'000'000'000);
    wide.recount();
    chart.setRoot(wide.root());
    const double wideLayout = medianMilliseconds([&] { chart.initCountOfSublevels(true); });
    int seen = 0;
    const double wideWalk = medianMilliseconds([&] { seen = countSectors(chart); });
    loop.advance(0.3);
    chart.StartAnimation();
    loop.advance(0.4);
    QPixmap frame(900, 700);
    const double pulse = medianMilliseconds([&] { window.render(&frame); });
    std::printf(
        "%d sectors: layout %.3f ms, layout and paint %.2f ms; a million children: ring count %.2f ms, "
        "walk %.2f ms (%d sectors); a frame of the pulse over all layers %.2f ms\n",
        sectors, layout, paint, wideLayout, wideWalk, seen, pulse);
    chart.setHost(nullptr);
    return 0;
}
