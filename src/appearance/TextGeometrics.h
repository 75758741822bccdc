#pragma once

#include <QFont>
#include <QSizeF>
#include <QString>

namespace veltrano {

// The room that text needs, points. A limit of 0 leaves that direction free; text wraps at a width that is
// given, and a height that is given cuts off the lines below it. Empty text needs no room. Main thread.

[[nodiscard]] QSizeF sizeForWidth(const QString& text, const QFont& font, double width, double height);
[[nodiscard]] double heightForWidth(const QString& text, const QFont& font, double width);
[[nodiscard]] double widthForHeight(const QString& text, const QFont& font, double height);

} // namespace veltrano
