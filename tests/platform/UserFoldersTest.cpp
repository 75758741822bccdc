#include "platform/posix/UserFolders.h"

#include "support/TestDir.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

namespace veltrano {
namespace {

constexpr const char* kName = "XDG_DOWNLOAD_DIR";

std::optional<std::string> listed(std::string_view list) {
    return userFolderFromList(list, kName, "/home/me");
}

TEST(UserFolders, theConfigFolderIsWhatTheSessionTells) {
    const char* const before = std::getenv("XDG_CONFIG_HOME");
    const std::optional<std::string> kept = before ? std::optional<std::string>(before) : std::nullopt;
    ::setenv("XDG_CONFIG_HOME", "/else/m\xFCller", 1);
    EXPECT_EQ(configFolder("/home/me"), "/else/m\xFCller");
    for (const char* const unusable : {"", "relative"}) {
        ::setenv("XDG_CONFIG_HOME", unusable, 1);
        EXPECT_EQ(configFolder("/home/me"), "/home/me/.config") << unusable;
    }
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(configFolder("/home/me"), "/home/me/.config");
    EXPECT_EQ(configFolder("/"), "/.config");
    if (kept)
        ::setenv("XDG_CONFIG_HOME", kept->c_str(), 1);
}

TEST(UserFolders, aListedFolderIsBelowTheHomeFolderOrAbsolute) {
    EXPECT_EQ(listed("XDG_DOWNLOAD_DIR=\"$HOME/Loads\"\n"), "/home/me/Loads");
    EXPECT_EQ(listed("XDG_DOWNLOAD_DIR=\"/data/loads\""), "/data/loads");
    EXPECT_EQ(listed("XDG_DOWNLOAD_DIR=\"$HOME\""), "/home/me");
    EXPECT_EQ(listed("XDG_DOWNLOAD_DIR=\"$HOME/\""), "/home/me");
    EXPECT_EQ(userFolderFromList("XDG_DOWNLOAD_DIR=\"$HOME/Loads\"", kName, "/"), "/Loads");
    EXPECT_EQ(userFolderFromList("XDG_DOWNLOAD_DIR=\"$HOME\"", kName, "/"), "/");
}

TEST(UserFolders, aListedFolderIsKeptByteForByte) {
    EXPECT_EQ(listed("XDG_DOWNLOAD_DIR=\"$HOME/m\xFCller\""), "/home/me/m\xFCller");
    EXPECT_EQ(listed(R"(XDG_DOWNLOAD_DIR="$HOME/a \"b\" \\ \$c")"), R"(/home/me/a "b" \ $c)");
}

TEST(UserFolders, blanksAndOtherLinesDoNotDisturb) {
    EXPECT_EQ(listed("# XDG_DOWNLOAD_DIR=\"/comment\"\n\nXDG_DESKTOP_DIR=\"$HOME/Desktop\"\n"
                     "  XDG_DOWNLOAD_DIR = \"$HOME/Loads\"  \nXDG_DOWNLOAD_DIRS=\"/other\"\n"),
              "/home/me/Loads");
}

TEST(UserFolders, theLastOfSeveralLinesCounts) {
    EXPECT_EQ(listed("XDG_DOWNLOAD_DIR=\"/one\"\nXDG_DOWNLOAD_DIR=\"/two\"\n"), "/two");
}

TEST(UserFolders, aLineThatMakesNoPathDoesNotCount) {
    for (const char* const line : {"XDG_DOWNLOAD_DIR=\"Loads\"", "XDG_DOWNLOAD_DIR=/unquoted",
                                   "XDG_DOWNLOAD_DIR=\"/open", "XDG_DOWNLOAD_DIR=", "XDG_DOWNLOAD_DIR",
                                   "XDG_DOWNLOAD_DIR=\"\"", "XDG_DOWNLOAD_DIR=\"$HOMEless\"", ""})
        EXPECT_EQ(listed(line), std::nullopt) << line;
    EXPECT_EQ(listed(std::string_view("XDG_DOWNLOAD_DIR=\"/a\0b\"", 23)), std::nullopt);
}

TEST(UserFolders, downloadsAreInTheHomeFolderWhereNoListNamesThem) {
    TestDir config;
    EXPECT_EQ(downloadsFolder("/home/me", config.path()), "/home/me/Downloads");
    EXPECT_EQ(downloadsFolder("/home/me/", config.path()), "/home/me/Downloads");
    EXPECT_EQ(downloadsFolder("/", config.path()), "/Downloads");
}

TEST(UserFolders, downloadsAreWhereTheListSays) {
    TestDir config;
    std::ofstream(config.path("user-dirs.dirs")) << "XDG_DOWNLOAD_DIR=\"$HOME/Geladenes\"\n";
    EXPECT_EQ(downloadsFolder("/home/me", config.path()), "/home/me/Geladenes");
}

TEST(UserFolders, aUserWhoseDownloadsAreTheHomeFolderHasNone) {
    TestDir config;
    std::ofstream(config.path("user-dirs.dirs")) << "XDG_DOWNLOAD_DIR=\"$HOME/\"\n";
    EXPECT_EQ(downloadsFolder("/home/me/", config.path()), std::nullopt);
}

TEST(UserFolders, whatIsNoListIsReadAsNone) {
    TestDir config;
    config.createFifo("user-dirs.dirs"); // Nobody writes into it: reading must not wait.
    EXPECT_EQ(downloadsFolder("/home/me", config.path()), "/home/me/Downloads");
    config.remove("user-dirs.dirs");
    config.createFolder("user-dirs.dirs");
    EXPECT_EQ(downloadsFolder("/home/me", config.path()), "/home/me/Downloads");
}

} // namespace
} // namespace veltrano
