#include "tree/TopLevelItem.h"

#include <gtest/gtest.h>

#include <limits>

namespace veltrano {
namespace {

constexpr std::int64_t kSize = 1'000'000;
constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();

bool isEqualWithSizes(std::int64_t size, std::int64_t other) {
    const VolumeItem entry("/v", "v", size, 0, 0);
    const VolumeItem fresh("/v", "v", other, 0, 0);
    return entry.isEqual(&fresh);
}

bool isEqualWithFreeSizes(std::int64_t free, std::int64_t other) {
    const VolumeItem entry("/v", "v", kSize, free, 0);
    const VolumeItem fresh("/v", "v", kSize, other, 0);
    return entry.isEqual(&fresh);
}

TEST(TopLevelItemEquality, entryEqualsItself) {
    const FolderItem entry("/f", "f", 0, 0, 0);
    EXPECT_TRUE(entry.isEqual(&entry));
}

TEST(TopLevelItemEquality, nothingAndAnotherKindAreNeverEqual) {
    const FolderItem folder("/f", "f", 0, 0, 0);
    const VolumeItem volume("/f", "f", 0, 0, 0);
    EXPECT_FALSE(folder.isEqual(nullptr));
    EXPECT_FALSE(folder.isEqual(&volume));
    EXPECT_FALSE(volume.isEqual(&folder));
}

TEST(TopLevelItemEquality, sizeMayDriftByOnePartInTenThousand) {
    EXPECT_TRUE(isEqualWithSizes(kSize - 100, kSize));
    EXPECT_TRUE(isEqualWithSizes(kSize + 100, kSize));
    EXPECT_FALSE(isEqualWithSizes(kSize - 101, kSize));
    EXPECT_FALSE(isEqualWithSizes(kSize + 101, kSize));
}

TEST(TopLevelItemEquality, freeSizeMayDriftByOnePartInTenThousand) {
    EXPECT_TRUE(isEqualWithFreeSizes(500'000 - 50, 500'000));
    EXPECT_TRUE(isEqualWithFreeSizes(500'000 + 50, 500'000));
    EXPECT_FALSE(isEqualWithFreeSizes(500'000 - 51, 500'000));
    EXPECT_FALSE(isEqualWithFreeSizes(500'000 + 51, 500'000));
}

// 0.9999 x 9 999 is 9 998.0001 and 1.0001 x 9 999 is 9 999.9999.
TEST(TopLevelItemEquality, boundsAreCutOffToWholeNumbers) {
    EXPECT_TRUE(isEqualWithSizes(9'998, 9'999));
    EXPECT_FALSE(isEqualWithSizes(9'997, 9'999));
    EXPECT_FALSE(isEqualWithSizes(10'000, 9'999));
}

TEST(TopLevelItemEquality, toleranceIsMeasuredFromTheOther) {
    EXPECT_TRUE(isEqualWithSizes(9'998, 9'999));
    EXPECT_FALSE(isEqualWithSizes(9'999, 9'998));
}

TEST(TopLevelItemEquality, nothingFreeEqualsOnlyNothingFree) {
    EXPECT_TRUE(isEqualWithFreeSizes(0, 0));
    EXPECT_FALSE(isEqualWithFreeSizes(1, 0));
    EXPECT_TRUE(isEqualWithFreeSizes(0, 1));
}

TEST(TopLevelItemEquality, largestSizeIsComparedWithoutOverflow) {
    EXPECT_TRUE(isEqualWithSizes(kLargest, kLargest));
    EXPECT_FALSE(isEqualWithSizes(1, kLargest));
    EXPECT_FALSE(isEqualWithSizes(1, std::numeric_limits<std::int64_t>::min()));
}

TEST(TopLevelItemEquality, nodesNameAndPathAreComparedExactly) {
    const VolumeItem entry("/v", "v", kSize, 0, 10'000);
    const VolumeItem nodes("/v", "v", kSize, 0, 10'001);
    const VolumeItem name("/v", "V", kSize, 0, 10'000);
    const VolumeItem path("/v/", "v", kSize, 0, 10'000);
    EXPECT_FALSE(entry.isEqual(&nodes));
    EXPECT_FALSE(entry.isEqual(&name));
    EXPECT_FALSE(entry.isEqual(&path));
}

TEST(TopLevelItemEquality, eachDateIsComparedExactly) {
    const CatalogueDate date{.lowSeconds = 5};
    const CatalogueDate later{.lowSeconds = 6};
    const PathFacts facts{.created = date, .modified = date, .accessed = date};
    const auto isEqualWith = [&](const PathFacts& changed) {
        FolderItem entry("/f", "f", 0, 0, 0);
        FolderItem other("/f", "f", 0, 0, 0);
        entry.initDates(facts);
        other.initDates(changed);
        return entry.isEqual(&other);
    };
    EXPECT_TRUE(isEqualWith(facts));
    EXPECT_FALSE(isEqualWith({.created = later, .modified = date, .accessed = date}));
    EXPECT_FALSE(isEqualWith({.created = date, .modified = later, .accessed = date}));
    EXPECT_FALSE(isEqualWith({.created = date, .modified = date, .accessed = later}));
    EXPECT_FALSE(isEqualWith({.created = date, .modified = date}));
}

TEST(TopLevelItemEquality, valenceIsNotCompared) {
    FolderItem entry("/f", "f", 0, 0, 0);
    const FolderItem other("/f", "f", 0, 0, 0);
    entry.initDates({.valence = 8});
    EXPECT_TRUE(entry.isEqual(&other));
}

} // namespace
} // namespace veltrano
