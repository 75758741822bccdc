#include "platform/posix/HomeFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace veltrano {
namespace {

class HomeFolderTest : public testing::Test {
protected:
    HomeFolderTest() {
        if (const char* const told = std::getenv("HOME"))
            m_before = told;
    }
    ~HomeFolderTest() override {
        if (m_before)
            ::setenv("HOME", m_before->c_str(), 1);
        else
            ::unsetenv("HOME");
    }

    static std::string listedHome() {
        const passwd* const user = ::getpwuid(::getuid());
        return user != nullptr ? user->pw_dir : "/";
    }

private:
    std::optional<std::string> m_before;
};

TEST_F(HomeFolderTest, isWhatTheSessionTellsByteForByte) {
    ::setenv("HOME", "/home/m\xFCller", 1);
    EXPECT_EQ(homeFolder(), "/home/m\xFCller");
}

TEST_F(HomeFolderTest, isThatOfTheListOfUsersWhenTheSessionTellsNone) {
    ::unsetenv("HOME");
    EXPECT_EQ(homeFolder(), listedHome());
}

TEST_F(HomeFolderTest, aRelativePathIsNotBelieved) {
    ::setenv("HOME", "somewhere", 1);
    EXPECT_EQ(homeFolder(), listedHome());
}

TEST(HomeFolderOfUser, isThatOfTheListOfUsers) {
    const passwd* const user = ::getpwuid(::getuid());
    ASSERT_NE(user, nullptr);
    const std::string name = user->pw_name;
    const std::string folder = user->pw_dir;
    EXPECT_EQ(homeFolderOfUser(name), folder);
}

TEST(HomeFolderOfUser, isNothingForSomebodyUnknown) {
    EXPECT_EQ(homeFolderOfUser("nobody of this name"), std::nullopt);
    EXPECT_EQ(homeFolderOfUser(""), std::nullopt);
    EXPECT_EQ(homeFolderOfUser(std::string("root\0x", 6)), std::nullopt);
}

} // namespace
} // namespace veltrano
