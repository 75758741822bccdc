#pragma once

#include <QPixmap>

#include <span>
#include <string_view>

namespace veltrano {

/// An image that cells share: the name it goes by in the program, and that of its drawing.
struct SharedImage {
    std::string_view accessor;
    std::string_view resource;
};

/// All of them. The accessors' spellings are fixed.
[[nodiscard]] std::span<const SharedImage> sharedImages();

/// The shared image of this accessor, sharp at this ratio; null for an unknown one. Main thread.
[[nodiscard]] QPixmap sharedImage(std::string_view accessor, qreal devicePixelRatio);

} // namespace veltrano
