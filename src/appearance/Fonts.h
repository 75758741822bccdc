#pragma once

#include <QFont>

class QPainter;

namespace veltrano {

/// The interface's font in a size of logical pixels, from the first installed family of our list. Main
/// thread.
[[nodiscard]] QFont interfaceFont(int pixelSize, QFont::Weight weight = QFont::Normal);

/// The same with figures of one width, for counters and columns of sizes.
[[nodiscard]] QFont tabularFont(int pixelSize, QFont::Weight weight = QFont::Normal);

// The fonts of the drawn cells. Sizes are logical pixels.
[[nodiscard]] QFont VTFontWithSize(int size, QFont::Weight weight = QFont::Normal);
[[nodiscard]] QFont VTBoldFontWithSize(int size);

/// Turns the coloured smoothing of letters off in the painter's font: on the plates of rows its fringes would
/// show. A cell calls it after it has set its font.
void prepareCurrentContextForTextDraw(QPainter& painter);

} // namespace veltrano
