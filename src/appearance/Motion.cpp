#include "appearance/Motion.h"

#include <QApplication>
#include <QStyle>
#include <QWidget>

namespace veltrano {

namespace {
bool g_bMotionReduced = false;
}

bool isMotionReduced(const QWidget* widget) {
    const QStyle* const style = widget ? widget->style() : QApplication::style();
    return g_bMotionReduced || style->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, widget) == 0;
}

void setMotionReduced(bool reduced) {
    g_bMotionReduced = reduced;
}

} // namespace veltrano
