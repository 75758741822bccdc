#pragma once

#include "platform/FileCatalogue.h"

#include <cstdint>
#include <functional>

namespace veltrano {

/// Turns a date or an age into the 3-bit age class that every tree item carries: 0 unknown, 1 below one day
/// (or in the future), 2 below one week, 3 below two weeks, 4 below 30 days, 5 below 60 days, 6 below 365
/// days, 7 older. The reference time is taken once, at the start of the program, so that all scans of a
/// session use the same classes. A value; asking is safe from any thread.
class TimeCode {
public:
    /// Answers the date of this moment; both parts 0 if it can't be read.
    using Clock = std::function<CatalogueDate()>;

    explicit TimeCode(Clock clock);

    /// Takes the reference time anew from the clock; only the constructor calls it in the program.
    void reinitCurTimeStamp();

    /// The class of a date. 0 if there is no date or no reference time. An age exactly at a bound belongs to
    /// the next class; the fraction is ignored.
    [[nodiscard]] std::uint8_t getTimeCodeU(const CatalogueDate& date) const;

    /// The class of an age in seconds, which is cut to whole seconds first. 0 for an age of 0, for one that
    /// is no number, and without a reference time.
    [[nodiscard]] std::uint8_t getTimeCodeD(double age) const;

private:
    Clock m_clock;
    std::int64_t mnncurTime = 0; // seconds since the start of 1904; 0: the clock could not be read
};

/// The system's clock in the catalogue's terms.
[[nodiscard]] CatalogueDate currentCatalogueDate();

} // namespace veltrano
