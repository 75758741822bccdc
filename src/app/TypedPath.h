#pragma once

#include <string>
#include <string_view>

namespace veltrano {

/// The absolute path that a line typed by the user means: "~" and "~/..." begin in the home folder, what does
/// not begin with "/" in the folder shown. "." and ".." are worked out in the text, so that a path through a
/// link keeps the link's name. Bytes. Empty for an empty line.
[[nodiscard]] std::string pathFromTyped(std::string_view typed, std::string_view shown,
                                        std::string_view home);

/// The folder above, by the text of an absolute path; "/" for "/".
[[nodiscard]] std::string pathOfParent(std::string_view path);

/// A path and a name in it.
[[nodiscard]] std::string pathOfChild(std::string_view path, std::string_view name);

} // namespace veltrano
