#pragma once

#include <cstdint>
#include <string>

namespace veltrano {

// Sizes as text. Sizes are bytes and 1 KB is 1000 bytes; the decimal sign is a point in every language, and
// the units are not translated. The unit is chosen before rounding, so 999999 bytes read "1000 KB". Pure
// functions.

/// The decimal digits in groups of three from the right, parted by one blank. A minus counts as a digit.
[[nodiscard]] std::string dividedStringFromNumber(std::int64_t number);

/// The same with " bytes" appended.
[[nodiscard]] std::string dividedSizeFromNumber(std::int64_t number);

/// "999 Bytes", "1.00 KB", "1.50 GB". From 1000 GB on the value in GB stands before "TB": the size strings of
/// the collection and of the clean-up notification have always read so.
[[nodiscard]] std::string stringFromFileSize(std::int64_t size);

/// "999 bytes", "1 KB": whole units.
[[nodiscard]] std::string stringFromFileSizeShort(std::int64_t size);

/// "999 bytes", "1.00 KB", "10.0 KB", "100 KB": about three significant figures, for labels, tables,
/// tooltips.
[[nodiscard]] std::string stringFromFileSizeShort1(std::int64_t size);

/// "YES" or "NO".
[[nodiscard]] std::string getBoolString(bool value);

} // namespace veltrano
