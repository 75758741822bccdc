#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>

namespace veltrano {

// The images of the program, by name: "pulse", "extra/gear". They are drawings with a natural size in points.
// Main thread, after the application object is made. A name that does not exist gives a null pixmap, which
// paints nothing.

/// The image at its natural size, sharp at this device pixel ratio. Kept as long as the program runs.
[[nodiscard]] QPixmap image(const QString& name, qreal devicePixelRatio);

/// The image drawn anew to fill a size, points. Not kept here: for an image that its user keeps.
[[nodiscard]] QPixmap renderImage(const QString& name, const QSizeF& size, qreal devicePixelRatio);

/// The main text colour: the one pixel of "1pixcolor".
[[nodiscard]] QColor mainTextColor();

} // namespace veltrano
