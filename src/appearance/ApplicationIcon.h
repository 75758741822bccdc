#pragma once

#include <QImage>

namespace veltrano {

/// The picture by which the desktop shows the program. Lives as long as the program; main thread.
class ApplicationIcon {
public:
    virtual ~ApplicationIcon() = default;

    /// The icon as it stands, 128 points square, at whatever density suits the screen; never null.
    virtual QImage getApplicationIconImage() const = 0;

    /// From here on the icon is this; nothing happens where the desktop shows none.
    virtual void setApplicationIconImage(const QImage& picture) = 0;
};

} // namespace veltrano
