#include "scan/SizeText.h"

#include <array>
#include <charconv>
#include <cstddef>

namespace veltrano {

namespace {

constexpr double kDivider = 1000.0;
constexpr std::array<const char*, 5> kUnits = {"bytes", "KB", "MB", "GB", "TB"};

struct ScaledSize {
    double value;
    std::size_t unit; // index into kUnits
};

/// Divides while the value is at least 1000 and there is a next unit.
ScaledSize scaled(std::int64_t size, std::size_t lastUnit) {
    ScaledSize result{static_cast<double>(size), 0};
    while (result.value >= kDivider && result.unit < lastUnit) {
        result.value /= kDivider;
        ++result.unit;
    }
    return result;
}

/// printf would take the decimal sign from the locale, which is for sentences, not for these strings.
std::string withDecimals(double value, int decimals) {
    std::array<char, 64> text;
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    return {text.data(), end.ptr};
}

std::string inUnit(const ScaledSize& size, int decimals) {
    return withDecimals(size.value, decimals) + " " + kUnits[size.unit];
}

constexpr std::size_t kGigabytes = 3;
constexpr std::size_t kTerabytes = 4;

} // namespace

std::string dividedStringFromNumber(std::int64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t at = digits.size(); at > 3;) {
        at -= 3;
        digits.insert(at, 1, ' ');
    }
    return digits;
}

std::string dividedSizeFromNumber(std::int64_t number) {
    return dividedStringFromNumber(number) + " bytes";
}

std::string stringFromFileSize(std::int64_t size) {
    const ScaledSize three = scaled(size, kGigabytes);
    if (three.unit == 0)
        return std::to_string(size) + " Bytes";
    if (three.value >= kDivider)
        return inUnit({three.value, kTerabytes}, 2);
    return inUnit(three, 2);
}

std::string stringFromFileSizeShort(std::int64_t size) {
    const ScaledSize four = scaled(size, kTerabytes);
    return four.unit == 0 ? std::to_string(size) + " bytes" : inUnit(four, 0);
}

std::string stringFromFileSizeShort1(std::int64_t size) {
    const ScaledSize four = scaled(size, kTerabytes);
    if (four.unit == 0)
        return std::to_string(size) + " bytes";
    return inUnit(four, four.value < 10 ? 2 : four.value < 100 ? 1 : 0);
}

std::string getBoolString(bool value) {
    return value ? "YES" : "NO";
}

} // namespace veltrano
