#pragma once

class QWidget;

namespace veltrano {

/// Whether what moves by itself is to show its end at once: the desktop said so (setMotionReduced), or the
/// style of the widget animates nothing. Null asks the style of the program. Main thread.
bool isMotionReduced(const QWidget* widget);

/// What the desktop's settings say; false until somebody tells. Main thread.
void setMotionReduced(bool reduced);

} // namespace veltrano
