#include "platform/FileCatalogue.h"

#include <algorithm>

namespace veltrano {

CatalogueDate catalogueDateFromUnixTime(std::int64_t seconds, std::uint32_t nanoseconds) {
    constexpr std::int64_t kLastSecond = (std::int64_t{1} << 48) - 1;
    const std::int64_t bounded =
        std::clamp(seconds, -kCatalogueEpochOffset, kLastSecond - kCatalogueEpochOffset);
    const std::int64_t clock = std::max<std::int64_t>(bounded + kCatalogueEpochOffset, 1);
    CatalogueDate date;
    date.highSeconds = static_cast<std::uint16_t>(clock >> 32);
    date.lowSeconds = static_cast<std::uint32_t>(clock & 0xFFFFFFFF);
    date.fraction = static_cast<std::uint16_t>(std::uint64_t{nanoseconds} * 65536 / 1'000'000'000);
    return date;
}

} // namespace veltrano
