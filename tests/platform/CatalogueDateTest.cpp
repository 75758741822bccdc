#include "platform/FileCatalogue.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

namespace veltrano {
namespace {

std::int64_t secondsOf(const CatalogueDate& date) {
    return (std::int64_t{date.highSeconds} << 32) + date.lowSeconds;
}

TEST(CatalogueDateTest, startOf1970Is66YearsAfterTheClocksStart) {
    constexpr std::int64_t kDays = 66 * 365 + 17;
    EXPECT_EQ(secondsOf(catalogueDateFromUnixTime(0)), kDays * 86'400);
}

TEST(CatalogueDateTest, secondsBeyond32BitsGoIntoTheHighPart) {
    const CatalogueDate last = catalogueDateFromUnixTime(0xFFFF'FFFF - kCatalogueEpochOffset);
    EXPECT_EQ(last.highSeconds, 0);
    EXPECT_EQ(last.lowSeconds, 0xFFFF'FFFFU);
    const CatalogueDate next = catalogueDateFromUnixTime(0x1'0000'0000 - kCatalogueEpochOffset);
    EXPECT_EQ(next.highSeconds, 1);
    EXPECT_EQ(next.lowSeconds, 0U);
}

TEST(CatalogueDateTest, halfASecondIsHalfOf65536) {
    EXPECT_EQ(catalogueDateFromUnixTime(0, 500'000'000).fraction, 32'768);
}

TEST(CatalogueDateTest, lastNanosecondStaysWithinItsSecond) {
    const CatalogueDate date = catalogueDateFromUnixTime(10, 999'999'999);
    EXPECT_EQ(date.fraction, 65'535);
    EXPECT_EQ(secondsOf(date), kCatalogueEpochOffset + 10);
}

TEST(CatalogueDateTest, timeBefore1904IsTheClocksFirstSecondAndNotUnknown) {
    EXPECT_EQ(secondsOf(catalogueDateFromUnixTime(-kCatalogueEpochOffset - 1)), 1);
    EXPECT_EQ(secondsOf(catalogueDateFromUnixTime(-kCatalogueEpochOffset)), 1);
    EXPECT_EQ(secondsOf(catalogueDateFromUnixTime(std::numeric_limits<std::int64_t>::min())), 1);
}

TEST(CatalogueDateTest, timeBeyondTheClockIsItsLastSecond) {
    EXPECT_EQ(secondsOf(catalogueDateFromUnixTime(std::numeric_limits<std::int64_t>::max())),
              (std::int64_t{1} << 48) - 1);
}

} // namespace
} // namespace veltrano
