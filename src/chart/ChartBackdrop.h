#pragma once

#include "platform/MainLoop.h"

#include <QPixmap>
#include <QWidget>

namespace veltrano {

/// What stands behind the chart: the dial, in the largest centred square, and the plate above it, which
/// covers the dial except while a scan runs.
class ChartBackdrop final : public QWidget {
    Q_OBJECT

public:
    /// The main loop is borrowed and outlives this.
    explicit ChartBackdrop(MainLoop& mainLoop, QWidget* parent = nullptr);
    ~ChartBackdrop() override;

    /// Fades the plate to this opacity within a quarter of a second; at once where the desktop wants no
    /// motion. Nothing if it is on its way there already.
    void fadePlateTo(double alpha);
    double getPlateAlpha() const { return m_dAlpha; }

    static constexpr double kPlateShown = 0.9999;
    static constexpr double kPlateHidden = 0.0;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showFrame();
    void drawDial(QPainter& painter);
    void drawPlate(QPainter& painter);

    MainLoop& m_mainLoop;
    QPixmap m_dial;         // the dial at the size of the view, rounded up to whole pixels
    double m_dDialSide = 0; // the size that it was drawn for, points
    QPixmap m_plate;        // the plate at the size of the view
    double m_dAlpha = kPlateShown;
    double m_dFrom = kPlateShown;   // where the running fade began
    double m_dTarget = kPlateShown; // where it ends
    double m_dStart = 0;            // when it began, seconds of the main loop
    MainLoop::Token m_nFrame = 0;
};

} // namespace veltrano
