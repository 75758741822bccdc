#include "platform/linux/FileAddress.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

TEST(FileAddress, keepsLettersDigitsAndSlashesAsTheyAre) {
    EXPECT_EQ(fileAddress("/home/mara/a-b_c.d~9"), "file:///home/mara/a-b_c.d~9");
}

TEST(FileAddress, writesWhatHasAMeaningInAnAddressAsPercentBytes) {
    EXPECT_EQ(fileAddress("/a b?c#d%e&f;g"), "file:///a%20b%3Fc%23d%25e%26f%3Bg");
}

TEST(FileAddress, writesBytesThatAreNoTextAsTheyAre) {
    EXPECT_EQ(fileAddress("/\xFF\x01\n\xC3\xA9"), "file:///%FF%01%0A%C3%A9");
}

TEST(FileAddress, theFolderOfAnItemIsWhatStandsBeforeItsName) {
    EXPECT_EQ(folderOfPath("/home/mara/film"), "/home/mara");
    EXPECT_EQ(folderOfPath("/home/mara/"), "/home");
}

TEST(FileAddress, theFolderOfATopFolderIsTheRoot) {
    EXPECT_EQ(folderOfPath("/home"), "/");
    EXPECT_EQ(folderOfPath("/"), "/");
}

} // namespace
} // namespace veltrano
