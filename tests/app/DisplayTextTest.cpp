#include "app/DisplayText.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

TEST(DisplayText, plainNamesStayAsTheyAre) {
    EXPECT_EQ(displayText("Größe 日本.txt"), QStringLiteral("Größe 日本.txt"));
}

TEST(DisplayText, bytesThatAreNoUtf8BecomeReplacementCharacters) {
    EXPECT_EQ(displayText("caf\xE9.txt"), QStringLiteral("caf\uFFFD.txt"));
}

TEST(DisplayText, lineBreaksBecomeVisible) {
    EXPECT_EQ(displayText("two\nlines\t"), QStringLiteral("two\u240Alines\u2409"));
    EXPECT_EQ(displayText("\x7F"), QStringLiteral("\u2421"));
    EXPECT_EQ(displayText("a\u2028b\u2029c\u0085d"), QStringLiteral("a\uFFFDb\uFFFDc\uFFFDd"));
}

TEST(DisplayText, marksThatTurnTheDirectionOfTextDoNotHide) {
    EXPECT_EQ(displayText("a\u202Egpj.exe"), QStringLiteral("a\uFFFDgpj.exe"));
}

TEST(DisplayText, anEmptyNameIsEmpty) {
    EXPECT_TRUE(displayText("").isEmpty());
}

} // namespace
} // namespace veltrano
