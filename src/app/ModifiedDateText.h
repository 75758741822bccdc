#pragma once

#include "platform/FileDates.h"

#include <QString>

#include <string>

namespace veltrano {

/// How much of a date is told.
enum class DateStyle : int { Short = 1, Long = 3 };

/// A date of a file in the user's time zone and language, without the time; empty for none.
[[nodiscard]] QString stringModifiedDate(FileDates::Date date, DateStyle withDataStyle);

/// The date of the last change of what lies at a path, bytes, as such a text; empty for an empty path, where
/// there is no such file or date, and while the answer is waited for.
[[nodiscard]] QString stringModifiedDateOfFilePath(FileDates& dates, const std::string& path,
                                                   DateStyle withDataStyle);

} // namespace veltrano
