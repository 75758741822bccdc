#include "scan/TimeCode.h"

#include "scan/ScanRun.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace veltrano {
namespace {

using test::dateAt;
using test::kPresent;

TimeCode present() {
    return TimeCode([] { return dateAt(kPresent); });
}

int codeOfAge(std::int64_t age) {
    return present().getTimeCodeU(dateAt(kPresent - age));
}

TEST(TimeCode, eachClassEndsAtItsBound) {
    // Bound in seconds, the class below it.
    const std::pair<std::int64_t, int> table[] = {{86'400, 1},    {604'800, 2},   {1'209'600, 3},
                                                  {2'592'000, 4}, {5'184'000, 5}, {31'536'000, 6}};
    for (const auto& [bound, below] : table) {
        EXPECT_EQ(below, codeOfAge(bound - 1)) << bound;
        EXPECT_EQ(below + 1, codeOfAge(bound)) << bound;
    }
}

TEST(TimeCode, olderThanAYearIsSeven) {
    EXPECT_EQ(7, codeOfAge(31'536'001));
    EXPECT_EQ(7, codeOfAge(kPresent - 1));
}

TEST(TimeCode, dateInTheFutureIsOne) {
    EXPECT_EQ(1, codeOfAge(-1));
    EXPECT_EQ(1, codeOfAge(-1'000'000'000));
}

TEST(TimeCode, noDateIsZero) {
    EXPECT_EQ(0, present().getTimeCodeU({0, 0, 0}));
    EXPECT_EQ(0, present().getTimeCodeU({0, 0, 500}));
}

TEST(TimeCode, highPartAloneIsADate) {
    EXPECT_EQ(7, present().getTimeCodeU({0, 1, 0}));
    EXPECT_EQ(1, present().getTimeCodeU({1, 0, 0})); // the year 2040
}

TEST(TimeCode, fractionIsIgnored) {
    CatalogueDate date = dateAt(kPresent - 86'400);
    date.fraction = 0xFFFF;
    EXPECT_EQ(2, present().getTimeCodeU(date));
}

TEST(TimeCode, withoutReferenceTimeAllIsUnknown) {
    const TimeCode blind([] { return CatalogueDate{}; });
    EXPECT_EQ(0, blind.getTimeCodeU(dateAt(kPresent)));
    EXPECT_EQ(0, blind.getTimeCodeD(1000.0));
}

TEST(TimeCode, ageIsCutToWholeSecondsFirst) {
    EXPECT_EQ(0, present().getTimeCodeD(0.9));
    EXPECT_EQ(0, present().getTimeCodeD(-0.9));
    EXPECT_EQ(1, present().getTimeCodeD(1.0));
    EXPECT_EQ(1, present().getTimeCodeD(86'399.9));
    EXPECT_EQ(2, present().getTimeCodeD(86'400.0));
}

TEST(TimeCode, ageHasTheSameClassesAsADate) {
    const std::pair<double, int> table[] = {{604'800.0, 3},   {1'209'600.0, 4},  {2'592'000.0, 5},
                                            {5'184'000.0, 6}, {31'536'000.0, 7}, {-5.0, 1}};
    for (const auto& [age, code] : table)
        EXPECT_EQ(code, present().getTimeCodeD(age)) << age;
}

TEST(TimeCode, ageBeyondAllBoundsIsCalm) {
    EXPECT_EQ(7, present().getTimeCodeD(std::numeric_limits<double>::infinity()));
    EXPECT_EQ(1, present().getTimeCodeD(-std::numeric_limits<double>::infinity()));
    EXPECT_EQ(0, present().getTimeCodeD(std::numeric_limits<double>::quiet_NaN()));
}

TEST(TimeCode, referenceTimeStaysUntilItIsTakenAnew) {
    std::int64_t now = kPresent;
    TimeCode code([&] { return dateAt(now); });
    const CatalogueDate yesterday = dateAt(kPresent - 80'000);
    now += 10'000;
    EXPECT_EQ(1, code.getTimeCodeU(yesterday));
    code.reinitCurTimeStamp();
    EXPECT_EQ(2, code.getTimeCodeU(yesterday));
}

TEST(TimeCode, systemClockIsADate) {
    const CatalogueDate now = currentCatalogueDate();
    EXPECT_EQ(1, TimeCode(currentCatalogueDate).getTimeCodeU(now));
    EXPECT_EQ(7, TimeCode(currentCatalogueDate).getTimeCodeU(catalogueDateFromUnixTime(0)));
}

} // namespace
} // namespace veltrano
