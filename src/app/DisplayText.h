#pragma once

#include <QString>

#include <string_view>

namespace veltrano {

/// A name or path to show: bytes that are no UTF-8 become replacement characters, and characters that would
/// break a line or hide become visible ones. For showing only; never turned back into a path.
[[nodiscard]] QString displayText(std::string_view bytes);

} // namespace veltrano
