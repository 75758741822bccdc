// Draws the main window with a path, labels and the hover panel into files, for looking at:
//     hint_pictures FOLDER

#include "app/MainWindow.h"
#include "app/PathControl.h"
#include "app/ProgressBlock.h"
#include "app/QtMainLoop.h"
#include "appearance/Look.h"
#include "chart/ChartArea.h"
#include "chart/ChartHost.h"
#include "chart/PanelController.h"
#include "chart/RadialView.h"
#include "platform/NotificationCentre.h"
#include "platform/linux/LinuxCatalogue.h"
#include "support/TreeBuilder.h"

#include <QApplication>
#include <QCursor>

namespace {

using namespace veltrano;

class PictureHost final : public ChartHost {
public:
    explicit PictureHost(MainWindow& window) : m_window(window) {}
    std::optional<std::string> getProcessingVol() const override { return processing; }
    QString getDisplayText(std::string_view bytes) const override {
        return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
    bool getForceShowHint() const override { return true; }
    void setPathControlTextForItem(VolumeFolderProtocol* item) override {
        m_window.setPathControlTextForItem(item, QStringLiteral("System"));
    }
    std::optional<std::string> processing;

private:
    MainWindow& m_window;
};

} // namespace

int main(int argumentCount, char** arguments) {
    QApplication application(argumentCount, arguments);
    applyLook(application);
    const QString folder = QString::fromLocal8Bit(argumentCount > 1 ? arguments[1] : ".");

    QtMainLoop loop;
    NotificationCentre notifications;
    MainWindow window(loop, std::make_shared<LinuxCatalogue>(), "/home/mara");
    PictureHost host(window);
    PanelController panel(notifications, &window, [](std::string_view) { return QStringLiteral("9/12/23"); });
    RadialController& chart = window.chartArea().controller();
    RadialView& view = window.chartArea().getRadialView();
    chart.setHost(&host);
    chart.setPanelController(&panel);
    window.setStartHintShown(false);
    window.setCanScan(true);
    window.move(100, 100);
    window.show();
    const auto save = [&](const char* name) {
        QApplication::processEvents();
        window.grab().save(folder + QLatin1Char('/') + QLatin1String(name));
    };
    const auto pointAt = [&](const QPointF& point) {
        QCursor::setPos(view.mapToGlobal(view.getChartTransform().map(point)).toPoint());
        QApplication::processEvents();
        chart.operateMouseMoveFromRadialView(point);
    };

    const test::TreeBuilder tree("/home/mara/Videos");
    for (const char* name : {"Alps", "Trips", "Storm"}) {
        FolderSystemItem* const below = tree.folder(tree.root(), name);
        tree.file(below, "Glacier.mov", 5'280'000'000, 6);
        tree.file(below, "A film with a name that is longer than most names are.mov", 9'000'000'000, 4);
    }
    tree.recount();
    chart.setRoot(tree.root());
    const QPointF centre = chart.getLayout().m_Center;
    const double ring = chart.getLayout().getRadius(1);
    pointAt(centre + QPointF(ring * 0.75, ring * 0.2));
    save("folder.png");
    pointAt(centre + QPointF(chart.getLayout().getRadius(2) * 0.9, 0));
    save("longname.png");
    pointAt(QPointF(20, 20));
    save("nothing.png");
    host.processing = "/home/mara/Videos";
    window.progress().setText(QStringLiteral("Scanning “Videos”"));
    window.setScanning(true);
    window.setProgressShown(true);
    chart.setRoot(tree.root(), true, true);
    chart.StartAnimation();
    save("scanning.png");
    chart.StopAnimation();
    window.setScanning(false);
    window.setProgressShown(false);
    host.processing.reset();

    const test::TreeBuilder deep("/home/mara/Projects/a quite long folder name/more/src/very/deep/inside/of/"
                                 "the tree/where long folder names that do not fit into a disc are seen");
    FolderSystemItem* level = deep.root();
    for (int ringIndex = 0; ringIndex < 13; ++ringIndex)
        level = deep.folder(level, "below");
    deep.file(level, "f", 72'900'000'000);
    deep.recount();
    chart.setRoot(deep.root());
    save("deep.png");
    window.resize(960, 600);
    save("minimum.png");
    chart.setPanelController(nullptr);
    chart.setHost(nullptr);
    return 0;
}
