#include "scan/SizeText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

namespace veltrano {
namespace {

constexpr std::int64_t kB = 1000;
constexpr std::int64_t mB = 1000 * kB;
constexpr std::int64_t gB = 1000 * mB;
constexpr std::int64_t tB = 1000 * gB;

struct Row {
    std::int64_t size;
    const char* text;
};

TEST(SizeText, longFormHasTwoDecimals) {
    const Row rows[] = {{0, "0 Bytes"},           {1, "1 Bytes"},          {999, "999 Bytes"},
                        {1000, "1.00 KB"},        {1005, "1.00 KB"},       {1500, "1.50 KB"},
                        {999'990, "999.99 KB"},   {999'999, "1000.00 KB"}, {mB, "1.00 MB"},
                        {12'345'678, "12.35 MB"}, {gB, "1.00 GB"},         {999 * gB, "999.00 GB"}};
    for (const Row& row : rows)
        EXPECT_EQ(row.text, stringFromFileSize(row.size)) << row.size;
}

TEST(SizeText, longFormKeepsGigabytesBeforeTheTerabyteSign) {
    EXPECT_EQ("1000.00 TB", stringFromFileSize(tB));
    EXPECT_EQ("1500.00 TB", stringFromFileSize(1500 * gB));
    EXPECT_EQ("2000000.00 TB", stringFromFileSize(2000 * tB));
}

TEST(SizeText, shortFormHasWholeUnits) {
    const Row rows[] = {{0, "0 bytes"}, {999, "999 bytes"},   {1000, "1 KB"},        {1400, "1 KB"},
                        {1600, "2 KB"}, {999'999, "1000 KB"}, {mB, "1 MB"},          {25 * gB, "25 GB"},
                        {tB, "1 TB"},   {1500 * gB, "2 TB"},  {5000 * tB, "5000 TB"}};
    for (const Row& row : rows)
        EXPECT_EQ(row.text, stringFromFileSizeShort(row.size)) << row.size;
}

TEST(SizeText, labelFormKeepsThreeFigures) {
    const Row rows[] = {{999, "999 bytes"},   {1000, "1.00 KB"},      {9'990, "9.99 KB"},
                        {10'000, "10.0 KB"},  {99'900, "99.9 KB"},    {100'000, "100 KB"},
                        {999'999, "1000 KB"}, {mB, "1.00 MB"},        {15 * mB, "15.0 MB"},
                        {150 * mB, "150 MB"}, {gB, "1.00 GB"},        {15 * gB, "15.0 GB"},
                        {150 * gB, "150 GB"}, {1500 * gB, "1.50 TB"}, {15 * tB, "15.0 TB"},
                        {150 * tB, "150 TB"}, {1500 * tB, "1500 TB"}};
    for (const Row& row : rows)
        EXPECT_EQ(row.text, stringFromFileSizeShort1(row.size)) << row.size;
}

TEST(SizeText, labelFormRoundsWithinItsOwnBand) {
    EXPECT_EQ("10.00 KB", stringFromFileSizeShort1(9'999));
    EXPECT_EQ("100.0 KB", stringFromFileSizeShort1(99'990));
}

TEST(SizeText, negativeSizesStayInBytes) {
    EXPECT_EQ("-5000 Bytes", stringFromFileSize(-5000));
    EXPECT_EQ("-5000 bytes", stringFromFileSizeShort(-5000));
    EXPECT_EQ("-5000 bytes", stringFromFileSizeShort1(-5000));
}

TEST(SizeText, decimalSignIsAPointInEveryLanguage) {
    // Whether or not this language is there, the text must not change.
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    EXPECT_EQ("1.50 KB", stringFromFileSize(1500));
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(SizeText, digitsAreGroupedInThreesFromTheRight) {
    const Row rows[] = {{0, "0"},
                        {999, "999"},
                        {1000, "1 000"},
                        {12'345, "12 345"},
                        {123'456, "123 456"},
                        {1'234'567, "1 234 567"},
                        {std::numeric_limits<std::int64_t>::max(), "9 223 372 036 854 775 807"}};
    for (const Row& row : rows)
        EXPECT_EQ(row.text, dividedStringFromNumber(row.size)) << row.size;
}

TEST(SizeText, signCountsAsADigit) {
    EXPECT_EQ("-99", dividedStringFromNumber(-99));
    EXPECT_EQ("- 123", dividedStringFromNumber(-123));
    EXPECT_EQ("-1 234", dividedStringFromNumber(-1234));
    EXPECT_EQ("-9 223 372 036 854 775 808",
              dividedStringFromNumber(std::numeric_limits<std::int64_t>::min()));
}

TEST(SizeText, dividedSizeAlwaysHasItsWord) {
    EXPECT_EQ("999 bytes", dividedSizeFromNumber(999));
    EXPECT_EQ("1 bytes", dividedSizeFromNumber(1));
    EXPECT_EQ("1 234 567 bytes", dividedSizeFromNumber(1'234'567));
}

TEST(SizeText, boolIsYesOrNo) {
    EXPECT_EQ("YES", getBoolString(true));
    EXPECT_EQ("NO", getBoolString(false));
}

} // namespace
} // namespace veltrano
