#pragma once

class QApplication;

namespace veltrano {

/// Gives the application its style, palette, font and the look of its menus. Once, before the first window.
void applyLook(QApplication& application);

} // namespace veltrano
