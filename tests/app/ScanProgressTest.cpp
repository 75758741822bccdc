#include "app/ScanProgress.h"

#include <gtest/gtest.h>

#include <vector>

namespace veltrano {
namespace {

TEST(ScanProgress, countsInWholeThousandthsOfTheOccupiedSize) {
    ScanProgress progress;
    EXPECT_TRUE(progress.count(1238.0, 10000));
    EXPECT_EQ(progress.value, 123);
}

TEST(ScanProgress, staysWhereItIsWithoutAnOccupiedSize) {
    ScanProgress progress;
    EXPECT_FALSE(progress.count(500.0, 0));
    EXPECT_EQ(progress.value, 0);
    EXPECT_FALSE(progress.count(500.0, -10));
    EXPECT_EQ(progress.value, 0);
}

TEST(ScanProgress, moreThanOccupiedIsTheMaximum) {
    ScanProgress progress;
    EXPECT_TRUE(progress.count(20000.0, 10000));
    EXPECT_EQ(progress.value, 1000);
    EXPECT_TRUE(progress.count(1e18, 1));
    EXPECT_EQ(progress.value, 1000);
}

TEST(ScanProgress, finishRunBeginsAtLeastAtTheMiddle) {
    EXPECT_EQ(ScanProgress{.value = 0}.nextFinishValue(), 500);
    EXPECT_EQ(ScanProgress{.value = 425}.nextFinishValue(), 500);
    EXPECT_EQ(ScanProgress{.value = 426}.nextFinishValue(), 501);
}

TEST(ScanProgress, finishRunRisesInStepsUntilItPassesTheEnd) {
    ScanProgress progress;
    std::vector<int> values;
    while (progress.value <= ScanProgress::kMaximum) {
        progress.value = progress.nextFinishValue();
        values.push_back(progress.value);
    }
    EXPECT_EQ(values, (std::vector{500, 575, 650, 725, 800, 875, 950, 1025}));
}

} // namespace
} // namespace veltrano
