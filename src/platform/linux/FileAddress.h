#pragma once

#include <string>
#include <string_view>

namespace veltrano {

/// The file: address of an absolute path. Every byte that an address gives a meaning of its own, and every
/// one beyond ASCII, is written as a percent sign and two upper-case digits, so that no name is lost on the
/// way.
[[nodiscard]] std::string fileAddress(std::string_view path);

/// The folder that holds the item at an absolute path; "/" for "/" itself.
[[nodiscard]] std::string folderOfPath(std::string_view path);

} // namespace veltrano
