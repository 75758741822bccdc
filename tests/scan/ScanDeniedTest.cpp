#include "scan/ScanDenied.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veltrano {
namespace {

using Names = std::vector<std::string>;
using testing::ElementsAre;
using testing::IsEmpty;

Names namesOf(const Names& paths, IncludeCurUser include = IncludeCurUser::No) {
    Names names;
    const bool added = getUserNamesFromFolders(paths, "/home", names, include, "/home/me");
    EXPECT_EQ(added, !names.empty());
    return names;
}

TEST(ScanDenied, noPathsNameNobody) {
    EXPECT_THAT(namesOf({}), IsEmpty());
}

TEST(ScanDenied, folderInAHomeNamesItsUser) {
    EXPECT_THAT(namesOf({"/home/anna/private"}), ElementsAre("anna"));
    EXPECT_THAT(namesOf({"/home/anna/a/b/c"}), ElementsAre("anna"));
}

TEST(ScanDenied, homeItselfNamesNobody) {
    EXPECT_THAT(namesOf({"/home/anna"}), IsEmpty());
}

TEST(ScanDenied, usersFolderItselfNamesNobody) {
    EXPECT_THAT(namesOf({"/home"}), IsEmpty());
}

TEST(ScanDenied, folderElsewhereNamesNobody) {
    EXPECT_THAT(namesOf({"/root/x/y", "/homes/anna/private", "/home2/anna/private"}), IsEmpty());
}

TEST(ScanDenied, currentUserIsDropped) {
    EXPECT_THAT(namesOf({"/home/me/private"}), IsEmpty());
}

TEST(ScanDenied, currentUserComesInWhenAskedFor) {
    EXPECT_THAT(namesOf({"/home/me/private"}, IncludeCurUser::Yes), ElementsAre("me"));
}

TEST(ScanDenied, eachNameComesOnceInOrderOfAppearance) {
    EXPECT_THAT(namesOf({"/home/zoe/a", "/home/anna/b", "/home/zoe/c", "/home/me/d", "/home/anna/b"}),
                ElementsAre("zoe", "anna"));
}

TEST(ScanDenied, answersFalseWhenThisCallAddedNothing) {
    Names names{"anna"};
    const Names paths{"/home/anna/private"};
    EXPECT_FALSE(getUserNamesFromFolders(paths, "/home", names, IncludeCurUser::No, "/home/me"));
    EXPECT_THAT(names, ElementsAre("anna"));
}

TEST(ScanDenied, namesAreBytes) {
    EXPECT_THAT(namesOf({"/home/\xff\xfe/private"}), ElementsAre("\xff\xfe"));
}

TEST(ScanDenied, textNamesOneUser) {
    EXPECT_EQ("Files of user: anna", filesOfUsersText(Names{"anna"}));
}

TEST(ScanDenied, textJoinsSeveralUsers) {
    EXPECT_EQ("Files of users: anna, bert", filesOfUsersText(Names{"anna", "bert"}));
    EXPECT_EQ("Files of users: c, a, b", filesOfUsersText(Names{"c", "a", "b"}));
}

TEST(ScanDenied, otherTextsStandAsTheyAre) {
    EXPECT_EQ("Inaccessible Disk Space", kInaccessibleText);
    EXPECT_EQ("Unscanned Disk Space", kUnscannedText);
}

} // namespace
} // namespace veltrano
