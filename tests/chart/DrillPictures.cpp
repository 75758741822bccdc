// Draws drills frame by frame into files, for looking at:
//     drill_pictures FOLDER
// Each file shows five moments side by side: at the start, after each quarter, and at the end.

#include "appearance/Look.h"
#include "chart/ChartArea.h"
#include "chart/ChartHost.h"
#include "chart/RadialView.h"
#include "chart/geometry/SectorWalk.h"
#include "support/FakeMainLoop.h"
#include "support/TreeBuilder.h"

#include <QApplication>
#include <QPainter>

#include <functional>
#include <random>

namespace {

using namespace veltrano;

class PictureHost final : public ChartHost {
public:
    std::optional<std::string> getProcessingVol() const override { return std::nullopt; }
    QString getDisplayText(std::string_view bytes) const override {
        return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
};

void grow(const test::TreeBuilder& tree, FolderSystemItem* folder, std::mt19937_64& numbers, double bytes,
          int depth) {
    double left = bytes * 0.97;
    const std::size_t children = 2 + numbers() % 5;
    for (std::size_t index = 0; index < children; ++index) {
        const double share = left * (0.3 + static_cast<double>(numbers() % 40) / 100.0);
        left -= share;
        const std::string name = "Folder " + std::to_string(index);
        const auto age = static_cast<std::uint8_t>(1 + numbers() % 7);
        if (share > 1e9 && depth < 8 && numbers() % 10 < 8)
            grow(tree,
                 FolderSystemItem::initWithPathSize(tree.arena(), name, folder, 0, false, age,
                                                    numbers() % 40 == 0),
                 numbers, share, depth + 1);
        else
            tree.file(folder, name, static_cast<std::int64_t>(share), age);
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argumentCount, arguments);
    applyLook(application);
    const QString folder = QString::fromLocal8Bit(argumentCount > 1 ? arguments[1] : ".");

    FakeMainLoop loop;
    PictureHost host;
    ChartArea area(loop);
    RadialController& chart = area.controller();
    chart.setHost(&host);
    area.resize(400, 400);
    area.show();

    const auto tree = test::TreeBuilder::volume("/", 512'000'000'000, 147'000'000'000);
    std::mt19937_64 numbers(4);
    grow(tree, tree.root(), numbers, 3.6e11, 1);
    tree.recount();

    const auto strip = [&](const char* name, const std::function<void()>& start) {
        QImage picture(area.width() * 5, area.height(), QImage::Format_RGB32);
        QPainter painter(&picture);
        start();
        for (int moment = 0; moment < 5; ++moment) {
            QApplication::processEvents();
            painter.drawPixmap(area.width() * moment, 0, area.grab());
            // The last frame of the motion, not the chart that follows it.
            loop.advance(moment == 3 ? 0.24 : 0.25);
        }
        painter.end();
        loop.advance(1);
        picture.save(folder + QLatin1Char('/') + QLatin1String(name));
    };

    struct Place {
        FolderSystemItem* folder = nullptr;
        int ring = 0;
        double start = 0;
    };
    const auto findFolder = [&](int ring) {
        Place place;
        forEachSector(*tree.root(), chart.getLayout(), [&](const Sector& sector) {
            if (!place.folder && sector.nSubLevel == ring && sector.item.isDir() && !sector.item.isPack() &&
                sector.item.asFolderSystemItem()->numberOfChildren() > 2)
                place = {sector.item.asFolderSystemItem(), ring, sector.dSkAngle};
            return SectorVisit::Descend;
        });
        return place;
    };
    chart.setRoot(tree.root());
    for (const int ring : {1, 2}) {
        const Place place = findFolder(ring);
        const QByteArray number = QByteArray::number(ring);
        strip("drill-in-" + number + ".png",
              [&] { chart.startDrillInAnimation(place.folder, place.ring, place.start); });
        strip("drill-out-" + number + ".png", [&] { chart.startDrillOutAnimation(tree.root()); });
    }
    const Place edge = findFolder(chart.getLayout().m_nSubLevels);
    if (edge.folder)
        strip("drill-in-edge.png", [&] { chart.startDrillInAnimation(edge.folder, edge.ring, edge.start); });
    chart.setRoot(tree.root());
    strip("free-on.png", [&] { chart.setDrawFreeSector(); });
    strip("free-off.png", [&] { chart.setDrawFreeSector(); });
    chart.setRoot(nullptr);
    chart.setHost(nullptr);
    return 0;
}
