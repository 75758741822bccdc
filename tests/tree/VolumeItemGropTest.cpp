#include "tree/VolumeItemGrop.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

TEST(VolumeItemGrop, newHeadingHasNoFlagsAndNoTexts) {
    const VolumeItemGrop group;
    EXPECT_FALSE(group.writeble || group.unmountable || group.removable || group.bFirstItem);
    EXPECT_EQ(group.groupName + group.groupImage, "");
}

TEST(VolumeItemGrop, characteristicsAreTheThreeFlags) {
    const VolumeItemGrop group{.writeble = true, .unmountable = false, .removable = true};
    VolumeItemGrop other{.writeble = true, .removable = true, .bFirstItem = true, .groupName = "Other"};
    EXPECT_TRUE(group.ifHavetheSameChars(other));
    for (bool VolumeItemGrop::*flag :
         {&VolumeItemGrop::writeble, &VolumeItemGrop::unmountable, &VolumeItemGrop::removable}) {
        VolumeItemGrop changed = other;
        changed.*flag = !(changed.*flag);
        EXPECT_FALSE(group.ifHavetheSameChars(changed));
    }
}

TEST(VolumeItemGrop, copyIsAHeadingOfItsOwn) {
    const VolumeItemGrop group{true, true, true, true, "Hard Disks", "pvttitleDisks"};
    VolumeItemGrop copy = group;
    EXPECT_TRUE(copy.writeble && copy.unmountable && copy.removable && copy.bFirstItem);
    EXPECT_EQ(copy.groupImage, "pvttitleDisks");
    copy.groupName = "Other";
    EXPECT_EQ(group.groupName, "Hard Disks");
}

} // namespace
} // namespace veltrano
