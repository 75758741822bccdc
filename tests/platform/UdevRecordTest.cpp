#include "platform/linux/UdevRecord.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

constexpr const char* kStick = "S:disk/by-label/My\\x20Stick\n"
                               "W:3\n"
                               "I:51234567\n"
                               "E:ID_BUS=usb\n"
                               "E:ID_MODEL_ENC=Ultra\\x20Fit\\x20\\x20\n"
                               "E:ID_FS_LABEL_ENC=caf\\xc3\\xa9\\x5cx\n"
                               "E:ID_FS_TYPE=vfat\n"
                               "E:EMPTY=\n"
                               "E:WITHSIGN=a=b\n"
                               "E:ID_CDROM_MEDIA_CD_R=1\n"
                               "E:ID_CDROM_MEDIA_DVD=0\n"
                               "G:systemd\n";

TEST(UdevRecord, propertyIsReadAsItStands) {
    const UdevRecord record(kStick);
    EXPECT_EQ(record.value("ID_FS_TYPE"), "vfat");
    EXPECT_EQ(record.value("WITHSIGN"), "a=b");
}

TEST(UdevRecord, missingAndEmptyPropertiesAreNone) {
    const UdevRecord record(kStick);
    EXPECT_EQ(record.value("NONE"), std::nullopt);
    EXPECT_EQ(record.value("EMPTY"), std::nullopt);
    EXPECT_EQ(record.decoded("EMPTY"), std::nullopt);
}

TEST(UdevRecord, encodedBytesAreDecoded) {
    EXPECT_EQ(UdevRecord(kStick).decoded("ID_FS_LABEL_ENC"), "caf\xC3\xA9\\x");
}

TEST(UdevRecord, blanksAroundAValueGo) {
    EXPECT_EQ(UdevRecord(kStick).decoded("ID_MODEL_ENC"), "Ultra Fit");
    EXPECT_EQ(UdevRecord("E:BLANK=\\x20\\x20").decoded("BLANK"), std::nullopt);
}

TEST(UdevRecord, brokenCodesStayAsTheyAre) {
    EXPECT_EQ(UdevRecord("E:A=a\\x2").decoded("A"), "a\\x2");
    EXPECT_EQ(UdevRecord("E:A=\\xzz\\x-1").decoded("A"), "\\xzz\\x-1");
}

TEST(UdevRecord, zeroByteEndsAValue) {
    EXPECT_EQ(UdevRecord("E:A=one\\x00two").decoded("A"), "one");
}

TEST(UdevRecord, flagIsFoundByTheBeginningOfItsKey) {
    const UdevRecord record(kStick);
    EXPECT_TRUE(record.hasFlag("ID_CDROM_MEDIA_CD"));
    EXPECT_FALSE(record.hasFlag("ID_CDROM_MEDIA_DVD"));
    EXPECT_FALSE(record.hasFlag("ID_CDROM_MEDIA_X"));
}

TEST(UdevRecord, nonsenseHasNoProperties) {
    EXPECT_EQ(UdevRecord("\n\nE:\nE\n=x\nE:nothing").value("nothing"), std::nullopt);
}

} // namespace
} // namespace veltrano
