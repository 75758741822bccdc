#pragma once

#include "chart/AnimView.h"
#include "chart/ChartArea.h"
#include "chart/ChartBackdrop.h"
#include "chart/ChartHost.h"
#include "chart/PathsMimeData.h"
#include "chart/RadialView.h"
#include "chart/geometry/GeometryFixture.h"
#include "support/FakeMainLoop.h"
#include "support/TreeBuilder.h"

#include <QApplication>
#include <QCursor>
#include <QDrag>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QTest>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace veltrano::test {

/// A window around the chart that notes what it is told.
class RecordingHost final : public ChartHost {
public:
    std::optional<std::string> getProcessingVol() const override { return processing; }
    QString getDisplayText(std::string_view bytes) const override {
        // The chart asks for its label once with every paint.
        ++chartPaints;
        return showsLabel ? QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())) : QString();
    }
    bool isCollectionEmpty() const override { return collectionEmpty; }
    void hideCollectionView(bool hide) override {
        told.push_back(hide ? "hideCollection" : "showCollection");
    }
    void tryHideTable25() override { told.push_back("tryHideTable25"); }
    void ReinitSortedList() override { told.push_back("ReinitSortedList"); }
    void ReinitBiggestFilesArray() override { told.push_back("ReinitBiggestFilesArray"); }
    void showRightBiggestView() override { told.push_back("showRightBiggestView"); }
    void setPathControlTextForItem(VolumeFolderProtocol* item) override {
        told.push_back("setPathControlText");
        pathItem = item;
    }

    bool getPlaySound() const override { return playsSounds; }
    void playSound(std::string_view name) override { sounds.emplace_back(name); }
    void stopAction() override { told.push_back("stopAction"); }
    void startAction() override { told.push_back("startAction"); }
    std::shared_ptr<TopLevelItem> selectVolumeByName(const std::optional<std::string>& path) override {
        told.push_back("select " + path.value_or("nothing"));
        return nullptr;
    }
    void showItems(const std::vector<std::string>& paths) override { shown.push_back(paths); }
    void showItemProperties(const std::vector<std::string>& paths) override { informed.push_back(paths); }
    bool isFolderFavorite(const FileSystemItem& item) const override {
        return item.getFullPath() == favorite;
    }
    void addFolderToFavorite(const FileSystemItem& item) override { favorite = item.getFullPath(); }
    std::optional<InfoSegment> getInfoSegment() const override { return segment; }
    void switchInfoSegment(InfoSegment wanted) override { segment = wanted; }

    std::optional<std::string> processing;
    bool playsSounds = true;
    std::vector<std::string> sounds;
    std::vector<std::vector<std::string>> shown;    // in the file manager, call by call
    std::vector<std::vector<std::string>> informed; // whose properties were shown
    std::string favorite;
    std::optional<InfoSegment> segment;
    bool collectionEmpty = true;
    bool showsLabel = false; // Off, so that letters do not disturb colours.
    VolumeFolderProtocol* pathItem = nullptr;
    std::vector<std::string> told;
    mutable int chartPaints = 0;
};

/// A chart on the screen, 400 by 300 points, with the pointer far away.
class ChartTest : public testing::Test {
protected:
    ChartTest() {
        chart.setHost(&host);
        area.move(100, 100);
        area.resize(400, 300);
        QCursor::setPos(0, 0);
        area.show();
        settle();
    }
    ~ChartTest() override { chart.setHost(nullptr); }

    static void settle() { QApplication::processEvents(); }

    /// Shows a root and lets it be painted.
    void show(VolumeFolderProtocol* root) {
        chart.setRoot(root, true, true);
        settle();
    }

    /// The colour of the chart alone at a point with y upwards, over nothing.
    QColor chartColour(const QPointF& point) { return colourIn(chartImage(), point); }

    QImage chartImage() {
        QImage picture(area.size() * area.devicePixelRatioF(), QImage::Format_ARGB32);
        picture.setDevicePixelRatio(area.devicePixelRatioF());
        picture.fill(Qt::transparent);
        view.render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
        return picture;
    }

    QColor colourIn(const QImage& picture, const QPointF& point) const {
        const QPointF pixel = view.getChartTransform().map(point) * picture.devicePixelRatio();
        return picture.pixelColor(static_cast<int>(pixel.x()), static_cast<int>(pixel.y()));
    }

    QPointF middleOf(int ring, double start, double delta) const {
        return test::middleOf(chart.getLayout(), ring, start, delta);
    }

    /// A point of the chart in the view, for events.
    QPoint inView(const QPointF& point) const { return view.getChartTransform().map(point).toPoint(); }

    void click(const QPointF& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(&view, Qt::LeftButton, modifiers, inView(point));
    }

    /// Sends what a moved mouse with the left button down sends; the simulated mouse of the test library
    /// knows no buttons while it moves.
    void dragTo(const QPointF& point) {
        const QPointF at = view.getChartTransform().map(point);
        QMouseEvent move(QEvent::MouseMove, at, view.mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&view, &move);
    }

    void press(const QPointF& point) { QTest::mousePress(&view, Qt::LeftButton, {}, inView(point)); }
    void release(const QPointF& point) { QTest::mouseRelease(&view, Qt::LeftButton, {}, inView(point)); }

    /// The path in the drag that has just begun, empty without one. On a screen without a server a drag ends
    /// as it begins, and is there until the next turn of the main loop.
    std::string draggedPath() const {
        const auto* const drag = view.findChild<QDrag*>();
        const auto paths = drag ? readFilePaths(*drag->mimeData()) : std::nullopt;
        return paths ? paths->front() : std::string();
    }

    /// Moves the pointer to a point of the chart, as the user would.
    void pointAt(const QPointF& point) { chart.operateMouseMoveFromRadialView(point); }

    FakeMainLoop loop;
    RecordingHost host;
    ChartArea area{loop};
    RadialController& chart = area.controller();
    RadialView& view = area.getRadialView();
    AnimView& overlay = area.getAnimView();
    ChartBackdrop& backdrop = area.getBackdrop();
};

/// Two colours that differ by no more than rounding.
inline testing::AssertionResult isColour(const QColor& is, const QColor& wanted, int tolerance = 2) {
    const bool same = std::abs(is.red() - wanted.red()) <= tolerance &&
                      std::abs(is.green() - wanted.green()) <= tolerance &&
                      std::abs(is.blue() - wanted.blue()) <= tolerance &&
                      std::abs(is.alpha() - wanted.alpha()) <= tolerance;
    if (same)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << is.name(QColor::HexArgb).toStdString() << " is not "
                                       << wanted.name(QColor::HexArgb).toStdString();
}

} // namespace veltrano::test
