#pragma once

#include <functional>

class QPainter;

namespace veltrano {

/// Paints an image as two strips at the same time, the upper one on a thread of its own: for shapes by the
/// thousand, of which nearly all lie in one strip only. `row`, pixels of the device, is where the lower one
/// begins. `paint` is called once for each strip, 0 for the upper, with a painter that has the transformation
/// of `painter` and sees nothing beyond the strip; it shares nothing that changes with the other call, also
/// not a QPainterPath, and draws no text. Returns when both are done. False, and nothing is painted, where
/// the device is no image that can be split, or only part of it may be painted. Main thread.
[[nodiscard]] bool paintInStrips(QPainter& painter, int row,
                                 const std::function<void(QPainter& painter, int strip)>& paint);

} // namespace veltrano
