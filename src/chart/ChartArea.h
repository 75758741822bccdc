#pragma once

#include "chart/RadialController.h"

#include <QWidget>

namespace veltrano {

/// The chart with all its layers, back to front: backdrop, chart, overlay. Owns the controller and the views,
/// and keeps them at its own size. What lies behind it in the window shows through.
class ChartArea final : public QWidget {
    Q_OBJECT

public:
    /// The main loop is borrowed and outlives this.
    explicit ChartArea(MainLoop& mainLoop, QWidget* parent = nullptr);
    ~ChartArea() override;

    RadialController& controller() { return m_controller; }
    RadialView& getRadialView() { return *m_pRadialView; }
    AnimView& getAnimView() { return *m_pAnimView; }
    ChartBackdrop& getBackdrop() { return *m_pBackdrop; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    RadialController m_controller;
    // Children of this widget.
    ChartBackdrop* m_pBackdrop;
    RadialView* m_pRadialView;
    AnimView* m_pAnimView;
};

} // namespace veltrano
