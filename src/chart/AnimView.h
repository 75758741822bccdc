#pragma once

#include "platform/MainLoop.h"

#include <QRectF>
#include <QWidget>

namespace veltrano {

class RadialController;
class RadialView;

/// The overlay above the chart: the pulse of a scan and the outlines of the pointed and selected sectors,
/// each with its own hidden state. Lets every mouse event through. Repaints only what changed of the two.
class AnimView final : public QWidget {
    Q_OBJECT

public:
    /// All are borrowed and outlive the view.
    AnimView(RadialController& controller, const RadialView& chartView, MainLoop& mainLoop,
             QWidget* parent = nullptr);
    ~AnimView() override;

    // The pulse. It is made at its first start and kept.

    void StartAnimation();
    void StopAnimation();
    /// Starts the pulse if there never was one.
    void ResumeAnimation();
    /// Stops a pulse that was made, and starts it again in the next turn of the main loop.
    void RecalcAnimationParameters();
    /// Shows or hides a pulse that was made.
    void showScanningAnimation(bool show);
    bool isPulseShown() const { return m_circle.bMade && !m_circle.bHidden; }
    bool isPulseRunning() const { return m_circle.bRunning; }
    /// The pulse's square at full scale: the largest one in the middle of the view.
    QRectF getCircleRect() const;

    // The outlines.

    /// Shows the outlines as they are now.
    void reinitSelectionLayer();
    void updateSelection() { reinitSelectionLayer(); }
    void ShowSel() { reinitSelectionLayer(); }
    void HideSel();
    void cleanSelLayer();
    bool isSelectionShown() const { return m_selection.bMade && !m_selection.bHidden; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct CircleLayer {
        bool bMade = false;
        bool bHidden = false;
        bool bRunning = false;
        double dStart = 0; // when the running pulse began, seconds of the main loop
    };
    struct SelectionLayer {
        bool bMade = false;
        bool bHidden = false;
        QRect painted; // where the outlines were last seen
    };

    void initAnimationLayer();
    void transPulse41();
    void showFrame();
    void updateCircle();
    void updateOutlines();
    void drawCircle(QPainter& painter) const;

    RadialController& mController;
    const RadialView& radialView;
    MainLoop& m_mainLoop;

    CircleLayer m_circle;
    SelectionLayer m_selection;
    MainLoop::Token m_nFrame = 0;   // the next frame of the pulse
    MainLoop::Token m_nRestart = 0; // of RecalcAnimationParameters
};

} // namespace veltrano
