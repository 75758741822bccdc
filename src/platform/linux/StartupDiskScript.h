#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace veltrano {

/// "FreeSpaceScript(Startup disk)": answers the free bytes of the file system at "/", those that are kept for
/// the administrator included, so that the rest is what is in use.
inline constexpr const char* kFreeSpaceScript =
    "set -- $(stat -f -c '%f %S' /) && [ $# -eq 2 ] && echo $(($1 * $2))";

/// Runs the shell script of that text and reads its output as the free bytes of the startup disk: a decimal
/// number with nothing around it but blanks and newlines. -1 without a script, for any other output, or when
/// it is not done within `limit`; it is killed then, with whatever it started, and so it is when the program
/// ends meanwhile, in whatever way. Blocks; any thread.
[[nodiscard]] std::int64_t runStartupDiskScript(const std::string& script, std::chrono::milliseconds limit);

/// The number in the script's output, or -1.
[[nodiscard]] std::int64_t numberInOutput(std::string_view output);

} // namespace veltrano
