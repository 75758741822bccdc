#include "app/PropertyList.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace veltrano {
namespace {

/// Equal in depth; the containers themselves are told by their address.
bool isSame(const PropertyValue& left, const PropertyValue& right);

bool isSameDictionary(const PropertyDictionary& left, const PropertyDictionary& right) {
    return std::equal(left.values.begin(), left.values.end(), right.values.begin(), right.values.end(),
                      [](const auto& one, const auto& other) {
                          return one.first == other.first && isSame(one.second, other.second);
                      });
}

bool isSame(const PropertyValue& left, const PropertyValue& right) {
    if (left.index() != right.index())
        return false;
    if (const auto* const array = std::get_if<std::shared_ptr<PropertyArray>>(&left)) {
        const auto& other = std::get<std::shared_ptr<PropertyArray>>(right);
        return std::equal((*array)->values.begin(), (*array)->values.end(), other->values.begin(),
                          other->values.end(), isSame);
    }
    if (const auto* const dictionary = std::get_if<std::shared_ptr<PropertyDictionary>>(&left))
        return isSameDictionary(**dictionary, *std::get<std::shared_ptr<PropertyDictionary>>(right));
    return left == right;
}

std::string list(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\">" + content + "</plist>";
}

std::string dictionaryWith(const std::string& value) {
    return list("<dict><key>k</key>" + value + "</dict>");
}

PropertyValue valueIn(const std::string& xml) {
    const auto dictionary = readPropertyList(xml);
    return dictionary ? dictionary->values.at("k") : PropertyValue();
}

bool isRead(const std::string& xml) {
    return readPropertyList(xml) != nullptr;
}

std::optional<std::string> written(const PropertyValue& value) {
    return writePropertyList({{{"k", value}}});
}

PropertyValue nested(int levels) {
    PropertyValue value = true;
    for (int level = 0; level < levels; ++level) {
        auto array = std::make_shared<PropertyArray>();
        array->values.push_back(value);
        value = array;
    }
    return value;
}

TEST(PropertyList, everyKindComesBack) {
    PropertyDictionary whole;
    whole.values = {{"yes", true},
                    {"no", false},
                    {"least", std::numeric_limits<std::int64_t>::min()},
                    {"most", std::numeric_limits<std::int64_t>::max()},
                    {"third", 1.0 / 3},
                    {"text", std::string("Grüße <&> \"'\t\n ")},
                    {"bytes", PropertyData{std::string("\0\xFF\n", 3)}},
                    {"date", std::chrono::sys_seconds(std::chrono::seconds(1'700'000'000))},
                    {"", std::string()}};
    auto inner = std::make_shared<PropertyDictionary>(whole);
    auto array = std::make_shared<PropertyArray>();
    array->values = {inner, std::int64_t{1}, std::make_shared<PropertyArray>(),
                     std::make_shared<PropertyDictionary>()};
    whole.values["inner"] = inner;
    whole.values["array"] = array;
    const auto xml = writePropertyList(whole);
    ASSERT_TRUE(xml.has_value());
    const auto read = readPropertyList(*xml);
    ASSERT_NE(read, nullptr);
    EXPECT_TRUE(isSameDictionary(whole, *read)) << *xml;
}

TEST(PropertyList, anyTextComesBack) {
    std::mt19937 random(11);
    constexpr std::string_view kLetters = "\r\n\t <>&'\"ab]";
    for (int round = 0; round < 500; ++round) {
        std::string text;
        for (auto left = random() % 8; left > 0; --left)
            text.push_back(kLetters[random() % kLetters.size()]);
        const auto xml = written(text);
        ASSERT_TRUE(xml.has_value());
        EXPECT_EQ(valueIn(*xml), PropertyValue(text)) << *xml;
    }
}

TEST(PropertyList, isXmlThatOtherProgramsWriteToo) {
    EXPECT_EQ(
        valueIn("<?xml version=\"1.0\"?>\n<!DOCTYPE plist>\n<plist version=\"1.0\">\n<dict>\n\t<key>k</key>\n"
                "\t<!-- a remark --><data>\n\taGVs\n\tbG8=\n\t</data>\n</dict>\n</plist>\n"),
        PropertyValue(PropertyData{"hello"}));
    EXPECT_EQ(valueIn(dictionaryWith("<integer> 12 </integer>")), PropertyValue(std::int64_t{12}));
    EXPECT_EQ(valueIn(dictionaryWith("<date>2023-11-14T22:13:20Z</date>")),
              PropertyValue(std::chrono::sys_seconds(std::chrono::seconds(1'700'000'000))));
}

TEST(PropertyList, damageIsNoList) {
    for (const char* const xml : {"", " ", "no list", "<plist/>", "<plist><dict></plist>",
                                  "<list><dict/></list>", "{ key = value; }"})
        EXPECT_FALSE(isRead(xml)) << xml;
    const std::string whole = dictionaryWith("<string>text</string>");
    ASSERT_TRUE(isRead(whole));
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(isRead(whole.substr(0, length))) << length;
    EXPECT_FALSE(isRead(whole + "<more/>"));
    EXPECT_FALSE(isRead(dictionaryWith("<string>m\xFCller</string>")));
}

TEST(PropertyList, aRootThatIsNoDictionaryIsNoList) {
    EXPECT_FALSE(isRead(list("<array><string>text</string></array>")));
    EXPECT_FALSE(isRead(list("<string>text</string>")));
    EXPECT_FALSE(isRead(list("<dict/><dict/>")));
    EXPECT_TRUE(isRead(list("<dict/>")));
}

TEST(PropertyList, aDictionaryOutOfStepIsDamage) {
    EXPECT_FALSE(isRead(list("<dict><key>k</key></dict>")));
    EXPECT_FALSE(isRead(list("<dict><string>k</string><string>v</string></dict>")));
    EXPECT_FALSE(isRead(list("<dict><key>k</key><key>l</key></dict>")));
}

TEST(PropertyList, aValueThatIsNotOfItsKindIsDamage) {
    for (const char* const value :
         {"<integer>many</integer>", "<integer>99999999999999999999</integer>", "<integer/>",
          "<real>wide</real>", "<data>***</data>", "<date>yesterday</date>",
          "<date>2023-11-14T22:13:20</date>", "<string><b>bold</b></string>", "<colour>red</colour>"})
        EXPECT_FALSE(isRead(dictionaryWith(value))) << value;
}

TEST(PropertyList, levelsHaveAnEndInBothDirections) {
    const auto deepest = written(nested(kMostPropertyLevels - 1));
    ASSERT_TRUE(deepest.has_value());
    EXPECT_TRUE(isRead(*deepest));
    EXPECT_EQ(written(nested(kMostPropertyLevels)), std::nullopt);
    std::string deeper;
    for (int level = 0; level < 100'000; ++level)
        deeper += "<array>";
    EXPECT_FALSE(isRead(dictionaryWith(deeper)));
    std::string opened;
    std::string closed;
    for (int level = 0; level < kMostPropertyLevels; ++level) {
        opened += "<array>";
        closed += "</array>";
    }
    EXPECT_FALSE(isRead(dictionaryWith(opened + "<true/>" + closed)));
}

TEST(PropertyList, whatXmlCannotHoldIsNotWritten) {
    EXPECT_EQ(written(std::string("a\0b", 3)), std::nullopt);
    EXPECT_EQ(written(std::string("\x1B[1m")), std::nullopt);
    EXPECT_EQ(written(std::string("m\xFCller")), std::nullopt);
    EXPECT_EQ(written(std::string("\xEF\xBF\xBF")), std::nullopt);
    EXPECT_EQ(writePropertyList({{{"m\xFCller", true}}}), std::nullopt);
    EXPECT_EQ(written(std::shared_ptr<PropertyArray>()), std::nullopt);
    EXPECT_EQ(written(std::shared_ptr<PropertyDictionary>()), std::nullopt);
}

} // namespace
} // namespace veltrano
