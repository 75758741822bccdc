#include "chart/ChartArea.h"

#include "chart/AnimView.h"
#include "chart/ChartBackdrop.h"
#include "chart/RadialView.h"

namespace veltrano {

ChartArea::ChartArea(MainLoop& mainLoop, QWidget* parent)
    : QWidget(parent),
      m_controller(mainLoop),
      m_pBackdrop(new ChartBackdrop(mainLoop, this)),
      m_pRadialView(new RadialView(m_controller, this)),
      m_pAnimView(new AnimView(m_controller, *m_pRadialView, mainLoop, this)) {
    m_controller.setBackdrop(m_pBackdrop);
    m_controller.setView(m_pRadialView);
    m_controller.setAnimView(m_pAnimView);
}

ChartArea::~ChartArea() {
    // The views use the controller, and the overlay the chart view, to their end.
    delete m_pAnimView;
    delete m_pRadialView;
    delete m_pBackdrop;
}

void ChartArea::resizeEvent(QResizeEvent* /*event*/) {
    for (QWidget* view : {static_cast<QWidget*>(m_pBackdrop), static_cast<QWidget*>(m_pRadialView),
                          static_cast<QWidget*>(m_pAnimView)})
        view->setGeometry(rect());
}

} // namespace veltrano
