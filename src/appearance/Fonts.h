#pragma once

#include <QFont>

namespace veltrano {

/// The interface's font in a size of logical pixels, from the first installed family of our list. Main
/// thread.
[[nodiscard]] QFont interfaceFont(int pixelSize, QFont::Weight weight = QFont::Normal);

/// The same with figures of one width, for counters and columns of sizes.
[[nodiscard]] QFont tabularFont(int pixelSize, QFont::Weight weight = QFont::Normal);

} // namespace veltrano
