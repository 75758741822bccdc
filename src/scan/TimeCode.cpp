#include "scan/TimeCode.h"

#include <array>
#include <chrono>
#include <cmath>
#include <utility>

namespace veltrano {

namespace {

/// Entry n is the age in seconds at which class n + 1 ends; what is older is of class 7.
constexpr std::array<std::int64_t, 6> kClassEnds = {
    86'400,     // one day
    604'800,    // one week
    1'209'600,  // two weeks
    2'592'000,  // 30 days
    5'184'000,  // 60 days
    31'536'000, // 365 days
};
constexpr std::uint8_t kOldest = kClassEnds.size() + 1;

std::int64_t wholeSeconds(const CatalogueDate& date) {
    return (std::int64_t{date.highSeconds} << 32) + date.lowSeconds;
}

std::uint8_t classOfAge(std::int64_t age) {
    std::uint8_t code = 1;
    for (const std::int64_t end : kClassEnds) {
        if (age < end)
            return code;
        ++code;
    }
    return kOldest;
}

} // namespace

TimeCode::TimeCode(Clock clock) : m_clock(std::move(clock)) {
    reinitCurTimeStamp();
}

void TimeCode::reinitCurTimeStamp() {
    mnncurTime = wholeSeconds(m_clock());
}

std::uint8_t TimeCode::getTimeCodeU(const CatalogueDate& date) const {
    const std::int64_t moment = wholeSeconds(date);
    if (moment == 0 || mnncurTime == 0)
        return 0;
    return classOfAge(mnncurTime - moment);
}

std::uint8_t TimeCode::getTimeCodeD(double age) const {
    const double whole = std::trunc(age);
    if (mnncurTime == 0 || whole == 0.0 || std::isnan(whole))
        return 0;
    // Far beyond the last bound on either side nothing changes, and the integer has an end.
    constexpr double kFar = 1e15;
    return classOfAge(static_cast<std::int64_t>(std::fmin(std::fmax(whole, -kFar), kFar)));
}

CatalogueDate currentCatalogueDate() {
    using namespace std::chrono;
    return catalogueDateFromUnixTime(duration_cast<seconds>(system_clock::now().time_since_epoch()).count());
}

} // namespace veltrano
