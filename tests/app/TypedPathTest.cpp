#include "app/TypedPath.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

std::string typed(std::string_view line) {
    return pathFromTyped(line, "/shown/folder", "/home/anna");
}

TEST(TypedPath, anAbsolutePathIsTakenAsItIs) {
    EXPECT_EQ(typed("/usr/share"), "/usr/share");
    EXPECT_EQ(typed("/"), "/");
}

TEST(TypedPath, separatorsTooManyDoNotCount) {
    EXPECT_EQ(typed("//usr///share/"), "/usr/share");
}

TEST(TypedPath, aTildeMeansTheHomeFolder) {
    EXPECT_EQ(typed("~"), "/home/anna");
    EXPECT_EQ(typed("~/"), "/home/anna");
    EXPECT_EQ(typed("~/Music/new"), "/home/anna/Music/new");
}

TEST(TypedPath, aTildeInANameIsPartOfTheName) {
    EXPECT_EQ(typed("~backup"), "/shown/folder/~backup");
    EXPECT_EQ(typed("old/~"), "/shown/folder/old/~");
}

TEST(TypedPath, aRelativePathBeginsInTheFolderShown) {
    EXPECT_EQ(typed("inside"), "/shown/folder/inside");
    EXPECT_EQ(typed("./inside"), "/shown/folder/inside");
    EXPECT_EQ(pathFromTyped("usr", "/", "/home/anna"), "/usr");
}

TEST(TypedPath, twoDotsGoUpAndStopAtTheRoot) {
    EXPECT_EQ(typed(".."), "/shown");
    EXPECT_EQ(typed("../beside"), "/shown/beside");
    EXPECT_EQ(typed("/a/../../../b"), "/b");
}

TEST(TypedPath, blanksAndForeignBytesStay) {
    EXPECT_EQ(typed("/ a \xFF"), "/ a \xFF");
}

TEST(TypedPath, anEmptyLineIsNoPath) {
    EXPECT_EQ(typed(""), "");
}

TEST(TypedPath, parentIsToldByTheText) {
    EXPECT_EQ(pathOfParent("/a/b\xFF"), "/a");
    EXPECT_EQ(pathOfParent("/a"), "/");
    EXPECT_EQ(pathOfParent("/"), "/");
}

TEST(TypedPath, childHasOneSeparator) {
    EXPECT_EQ(pathOfChild("/a", "b"), "/a/b");
    EXPECT_EQ(pathOfChild("/", "b"), "/b");
    EXPECT_EQ(pathOfChild("/a", ""), "/a");
}

} // namespace
} // namespace veltrano
