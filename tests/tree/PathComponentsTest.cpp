#include "tree/PathComponents.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using Components = std::vector<std::string_view>;

TEST(PathComponents, absolutePathBeginsWithTheSeparator) {
    EXPECT_EQ(pathComponents("/a/bc"), (Components{"/", "a", "bc"}));
}

TEST(PathComponents, relativePathHasItsNamesAlone) {
    EXPECT_EQ(pathComponents("a/bc"), (Components{"a", "bc"}));
}

TEST(PathComponents, rootIsOneComponent) {
    EXPECT_EQ(pathComponents("/"), (Components{"/"}));
    EXPECT_EQ(pathComponents("//"), (Components{"/"}));
}

TEST(PathComponents, emptyPathHasNone) {
    EXPECT_TRUE(pathComponents("").empty());
}

TEST(PathComponents, emptyNamesDoNotCount) {
    EXPECT_EQ(pathComponents("//a///b/"), (Components{"/", "a", "b"}));
}

TEST(PathComponents, everyOtherByteBelongsToAName) {
    EXPECT_EQ(pathComponents("/a\nb/\xff:/ ."), (Components{"/", "a\nb", "\xff:", " ."}));
}

TEST(PathComponents, lastComponentIsTheLastName) {
    EXPECT_EQ(lastPathComponent("/a/bc"), "bc");
    EXPECT_EQ(lastPathComponent("/a/bc/"), "bc");
    EXPECT_EQ(lastPathComponent("/a/bc//"), "bc");
    EXPECT_EQ(lastPathComponent("/a"), "a");
}

TEST(PathComponents, lastComponentOfTheRootIsTheSeparator) {
    EXPECT_EQ(lastPathComponent("/"), "/");
    EXPECT_EQ(lastPathComponent("//"), "/");
}

TEST(PathComponents, lastComponentOfANameIsTheName) {
    EXPECT_EQ(lastPathComponent("abc"), "abc");
    EXPECT_EQ(lastPathComponent(""), "");
}

std::string appended(std::string path, std::string_view name) {
    appendPathComponent(path, name);
    return path;
}

TEST(PathComponents, appendedNameFollowsExactlyOneSeparator) {
    EXPECT_EQ(appended("/a", "b"), "/a/b");
    EXPECT_EQ(appended("/", "b"), "/b");
    EXPECT_EQ(appended("/a/", "b"), "/a/b");
}

TEST(PathComponents, nameAppendedToNothingStaysRelative) {
    EXPECT_EQ(appended("", "b"), "b");
}

TEST(PathComponents, emptyNameAppendsNothing) {
    EXPECT_EQ(appended("/a", ""), "/a");
    EXPECT_EQ(appended("/", ""), "/");
}

bool contains(std::string_view folder, std::string_view file) {
    return isFolderParent(folder, nullptr, file, nullptr);
}

TEST(PathComponents, folderContainsWhatLiesBelowIt) {
    EXPECT_TRUE(contains("/a/b", "/a/b/c"));
    EXPECT_TRUE(contains("/a/b", "/a/b/c/d/e"));
    EXPECT_TRUE(contains("/", "/a"));
    EXPECT_TRUE(contains("/a/", "/a/b"));
}

TEST(PathComponents, folderDoesNotContainWhatLiesInASiblingOfALongerName) {
    EXPECT_FALSE(contains("/a/b", "/a/bc/d"));
    EXPECT_FALSE(contains("/a/b", "/a/bc"));
}

TEST(PathComponents, folderDoesNotContainItself) {
    EXPECT_FALSE(contains("/a/b", "/a/b"));
    EXPECT_FALSE(contains("/a/b", "/a/b/"));
    EXPECT_FALSE(contains("/", "/"));
}

TEST(PathComponents, folderDoesNotContainWhatIsAboveOrElsewhere) {
    EXPECT_FALSE(contains("/a/b", "/a"));
    EXPECT_FALSE(contains("/a/b", "/x/b/c"));
    EXPECT_FALSE(contains("/a/B", "/a/b/c"));
}

TEST(PathComponents, nothingContainsNothing) {
    EXPECT_FALSE(contains("", "/a/b"));
    EXPECT_FALSE(contains("", ""));
    EXPECT_FALSE(contains("/a", ""));
}

TEST(PathComponents, containsTestUsesTheComponentsAtHand) {
    const Components folder{"/", "a", "b"};
    const Components inside{"/", "a", "b", "c"};
    const Components beside{"/", "a", "bc", "d"};
    EXPECT_TRUE(isFolderParent("/a/b", &folder, "/a/b/c", &inside));
    EXPECT_TRUE(isFolderParent("/a/b", nullptr, "/a/b/c", &inside));
    EXPECT_TRUE(isFolderParent("/a/b", &folder, "/a/b/c", nullptr));
    // Told apart by the components alone, which prove that these and not the paths were split.
    EXPECT_FALSE(isFolderParent("/a/b", &folder, "/a/b/c", &beside));
    EXPECT_FALSE(isFolderParent("/a/b", &inside, "/a/b/c", nullptr));
}

TEST(PathComponents, containsTestWantsAStringPrefixBeforeAllElse) {
    const Components folder{"/", "a"};
    const Components file{"/", "a", "b"};
    EXPECT_FALSE(isFolderParent("/x", &folder, "/a/b", &file));
}

} // namespace
} // namespace veltrano
