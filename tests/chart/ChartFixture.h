#pragma once

#include "chart/AnimView.h"
#include "chart/ChartArea.h"
#include "chart/ChartBackdrop.h"
#include "chart/ChartHost.h"
#include "chart/RadialView.h"
#include "chart/geometry/GeometryFixture.h"
#include "support/FakeMainLoop.h"
#include "support/TreeBuilder.h"

#include <QApplication>
#include <QCursor>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

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

    std::optional<std::string> processing;
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
