// The settings' file, real files in folders of the tests.

#include "app/QtSettings.h"

#include "support/TestDir.h"

#include <QCoreApplication>

#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <limits>
#include <random>
#include <sys/stat.h>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;

using Strings = std::vector<std::string>;

std::string contentOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write(const std::string& path, std::string_view content) {
    std::ofstream(path, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
}

bool exists(const std::string& path) {
    struct stat facts {};
    return ::lstat(path.c_str(), &facts) == 0;
}

/// Any bytes but NUL, as a name may hold them, with what an ini file means something by among them.
std::string randomBytes(std::mt19937& random) {
    constexpr std::string_view kSpecial = "@\\\"',;=[]%() \t\r\n0aF/\x80\xEF\xBB\xBF\xC3\xA4";
    std::string bytes;
    for (auto left = random() % 12; left > 0; --left)
        bytes.push_back(random() % 2 == 0 ? kSpecial[random() % kSpecial.size()]
                                          : static_cast<char>(1 + random() % 255));
    return bytes;
}

class QtSettingsTest : public testing::Test {
protected:
    /// What a next run would read.
    template <typename Question>
    auto afterRestart(Question question) {
        return question(static_cast<const Settings&>(QtSettings(file)));
    }

    TestDir folder;
    const std::string file = folder.path("Quorvex/Veltrano.conf");
};

TEST_F(QtSettingsTest, nothingIsKnownBeforeTheFirstSave) {
    const QtSettings settings(file);
    EXPECT_EQ(settings.boolForKey("Saved"), std::nullopt);
    EXPECT_EQ(settings.integerForKey("Saved"), std::nullopt);
    EXPECT_EQ(settings.doubleForKey("Saved"), std::nullopt);
    EXPECT_EQ(settings.stringForKey("Saved"), std::nullopt);
    EXPECT_EQ(settings.arrayForKey("Saved"), std::nullopt);
}

TEST_F(QtSettingsTest, lookingWritesNoFile) {
    { const QtSettings settings(file); }
    EXPECT_FALSE(exists(file));
}

TEST_F(QtSettingsTest, everyTypeComesBackAfterARestart) {
    {
        QtSettings settings(file);
        settings.setBool("Yes", true);
        settings.setBool("No", false);
        settings.setInteger("Least", std::numeric_limits<std::int64_t>::min());
        settings.setInteger("Most", std::numeric_limits<std::int64_t>::max());
        settings.setDouble("Third", 1.0 / 3);
        settings.setString("Text", "Grüße");
        settings.setArray("List", {"/usr", "/home/me"});
        EXPECT_TRUE(settings.synchronize());
    }
    const QtSettings settings(file);
    EXPECT_EQ(settings.boolForKey("Yes"), true);
    EXPECT_EQ(settings.boolForKey("No"), false);
    EXPECT_EQ(settings.integerForKey("Least"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(settings.integerForKey("Most"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(settings.doubleForKey("Third"), 1.0 / 3);
    EXPECT_EQ(settings.stringForKey("Text"), "Grüße");
    EXPECT_THAT(settings.arrayForKey("List"), Optional(ElementsAre("/usr", "/home/me")));
}

TEST_F(QtSettingsTest, keysStandInTheFileLetterForLetter) {
    QtSettings settings(file);
    settings.setBool("PlayFinishSound", true);
    settings.setArray("FFolders", {"/usr", "/home/me"});
    ASSERT_TRUE(settings.synchronize());
    EXPECT_THAT(contentOf(file), HasSubstr("\nPlayFinishSound=true\n"));
    EXPECT_THAT(contentOf(file), HasSubstr("FFolders=/usr, /home/me\n"));
}

TEST_F(QtSettingsTest, anythingButNulComesBackByteForByte) {
    std::mt19937 random(7);
    Strings singles;
    for (int round = 0; round < 300; ++round)
        singles.push_back(randomBytes(random));
    singles.insert(singles.end(), {"", " ", "@", "@ByteArray(x)", "@Invalid()", "\xEF\xBB\xBF/marked",
                                   "/home/m\xFCller", "\xED\xA0\x80", "true", "a\n\xEF\xBB\xBF",
                                   "a, \xEF\xBB\xBF\"b", "\x01\xEF\xBB\xBF", "line\nbreak"});
    {
        QtSettings settings(file);
        for (std::size_t index = 0; index < singles.size(); ++index)
            settings.setString("Key" + std::to_string(index), singles[index]);
        settings.setArray("All", singles);
        ASSERT_TRUE(settings.synchronize());
    }
    // In another cache than that of the first run: the file is read anew under another name.
    const std::string moved = folder.path("moved.conf");
    write(moved, contentOf(file));
    const QtSettings settings(moved);
    for (std::size_t index = 0; index < singles.size(); ++index)
        EXPECT_EQ(settings.stringForKey("Key" + std::to_string(index)), singles[index]) << index;
    EXPECT_EQ(settings.arrayForKey("All"), singles);
}

TEST_F(QtSettingsTest, listsOfNoneAndOfOneComeBack) {
    {
        QtSettings settings(file);
        settings.setArray("None", {});
        settings.setArray("One", {"/home/m\xFCller"});
        settings.setArray("Empty", {""});
    }
    const std::string moved = folder.path("moved.conf");
    write(moved, contentOf(file));
    const QtSettings settings(moved);
    EXPECT_THAT(settings.arrayForKey("None"), Optional(IsEmpty()));
    EXPECT_THAT(settings.arrayForKey("One"), Optional(ElementsAre("/home/m\xFCller")));
    EXPECT_THAT(settings.arrayForKey("Empty"), Optional(ElementsAre("")));
}

TEST_F(QtSettingsTest, aListOfTenThousandPathsComesBack) {
    Strings paths;
    for (int number = 0; number < 10'000; ++number)
        paths.push_back("/home/me/folder " + std::to_string(number));
    {
        QtSettings settings(file);
        settings.setArray("Recents", paths);
    }
    EXPECT_EQ(afterRestart([](const Settings& settings) { return settings.arrayForKey("Recents"); }), paths);
}

TEST_F(QtSettingsTest, whatWasRemovedIsGoneAfterARestart) {
    {
        QtSettings settings(file);
        settings.setBool("Saved", true);
        ASSERT_TRUE(settings.synchronize());
        settings.remove("Saved");
        EXPECT_EQ(settings.boolForKey("Saved"), std::nullopt);
    }
    EXPECT_EQ(afterRestart([](const Settings& settings) { return settings.boolForKey("Saved"); }),
              std::nullopt);
}

TEST_F(QtSettingsTest, aValueOfAnotherTypeAnswersNothing) {
    folder.createFolder("Quorvex");
    write(file, "[General]\nPlaySound=loud\nScanned=12 times\nScale=wide\nSelectedVolume=a, b\n"
                "Recents=@Variant(\\0\\0\\0\\x2\\0\\0\\0\\x5)\nShowHint=1\n");
    const QtSettings settings(file);
    EXPECT_EQ(settings.boolForKey("PlaySound"), std::nullopt);
    EXPECT_EQ(settings.boolForKey("ShowHint"), std::nullopt);
    EXPECT_EQ(settings.integerForKey("Scanned"), std::nullopt);
    EXPECT_EQ(settings.doubleForKey("Scale"), std::nullopt);
    EXPECT_EQ(settings.stringForKey("SelectedVolume"), std::nullopt);
    EXPECT_EQ(settings.arrayForKey("Recents"), std::nullopt);
}

TEST_F(QtSettingsTest, aNumberTooLargeIsNoInteger) {
    folder.createFolder("Quorvex");
    write(file, "[General]\nScanned=99999999999999999999\n");
    EXPECT_EQ(QtSettings(file).integerForKey("Scanned"), std::nullopt);
}

TEST_F(QtSettingsTest, keysThatNobodyKnowsStay) {
    folder.createFolder("Quorvex");
    write(file, "[General]\nFromAnotherVersion=7\n\n[Group]\nkey=value\n");
    QtSettings settings(file);
    settings.setBool("Saved", true);
    ASSERT_TRUE(settings.synchronize());
    EXPECT_THAT(contentOf(file), HasSubstr("FromAnotherVersion=7"));
    EXPECT_THAT(contentOf(file), HasSubstr("[Group]\nkey=value"));
}

class DamagedSettingsTest : public QtSettingsTest, public testing::WithParamInterface<std::string> {};

TEST_P(DamagedSettingsTest, areKeptBesideTheNewFile) {
    folder.createFolder("Quorvex");
    write(file, GetParam());
    QtSettings settings(file);
    EXPECT_FALSE(exists(file + ".damaged")) << "nothing is put aside before something is written";
    settings.setBool("Saved", true);
    EXPECT_TRUE(settings.synchronize());
    EXPECT_EQ(contentOf(file + ".damaged"), GetParam());
    EXPECT_THAT(contentOf(file), HasSubstr("Saved=true"));
}

TEST_P(DamagedSettingsTest, areKeptOnceOnly) {
    folder.createFolder("Quorvex");
    write(file, GetParam());
    QtSettings settings(file);
    settings.setBool("Saved", true);
    EXPECT_TRUE(settings.synchronize());
    settings.setBool("Saved", false);
    EXPECT_TRUE(settings.synchronize());
    EXPECT_FALSE(exists(file + ".damaged-2"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, DamagedSettingsTest,
                         testing::Values("[General]\nSaved=true\nPlaySo", "[General\nSaved=true\n",
                                         std::string("[General]\nKey=a\0b\n", 18),
                                         "[General]\nKey=m\xFCller\n", "no settings at all",
                                         std::string("\0\0\0\0", 4)));

TEST_F(QtSettingsTest, whatCanBeReadOfADamagedFileCounts) {
    folder.createFolder("Quorvex");
    write(file, "[General]\nSaved=true\nPlaySo");
    EXPECT_EQ(QtSettings(file).boolForKey("Saved"), true);
}

TEST_F(QtSettingsTest, anEarlierDamagedFileIsNotWrittenOver) {
    folder.createFolder("Quorvex");
    write(file, "broken");
    write(file + ".damaged", "earlier");
    QtSettings settings(file);
    settings.setBool("Saved", true);
    EXPECT_TRUE(settings.synchronize());
    EXPECT_EQ(contentOf(file + ".damaged"), "earlier");
    EXPECT_EQ(contentOf(file + ".damaged-2"), "broken");
}

TEST_F(QtSettingsTest, withoutRoomForACopyTheDamagedFileStaysAndTheValuesHoldForTheRun) {
    folder.createFolder("Quorvex");
    write(file, "broken");
    write(file + ".damaged", "");
    for (int number = 2; number <= 100; ++number)
        write(file + ".damaged-" + std::to_string(number), "");
    {
        QtSettings settings(file);
        settings.setBool("Saved", true);
        settings.setArray("Recents", {});
        settings.setString("SelectedVolume", "/");
        settings.remove("SelectedVolume");
        EXPECT_FALSE(settings.synchronize());
        EXPECT_EQ(settings.boolForKey("Saved"), true);
        EXPECT_THAT(settings.arrayForKey("Recents"), Optional(IsEmpty()));
        EXPECT_EQ(settings.stringForKey("SelectedVolume"), std::nullopt);
    }
    EXPECT_EQ(contentOf(file), "broken");
}

TEST_F(QtSettingsTest, onceTheCopySucceedsWhatWasHeldBackIsWritten) {
    folder.createFolder("Quorvex");
    write(file, "broken");
    write(file + ".damaged", "");
    for (int number = 2; number <= 100; ++number)
        write(file + ".damaged-" + std::to_string(number), "");
    QtSettings settings(file);
    settings.setBool("Saved", true);
    ASSERT_FALSE(settings.synchronize());
    folder.remove("Quorvex/Veltrano.conf.damaged-50");
    EXPECT_TRUE(settings.synchronize());
    EXPECT_EQ(contentOf(file + ".damaged-50"), "broken");
    EXPECT_THAT(contentOf(file), HasSubstr("Saved=true"));
}

TEST_F(QtSettingsTest, whereNothingCanBeWrittenTheValuesHoldForTheRun) {
    folder.createFile("Quorvex", 1); // a file where the folder should be
    QtSettings settings(file);
    settings.setBool("Saved", true);
    EXPECT_FALSE(settings.synchronize());
    EXPECT_EQ(settings.boolForKey("Saved"), true);
}

TEST_F(QtSettingsTest, aFolderInPlaceOfTheFileStays) {
    folder.createFolder("Quorvex/Veltrano.conf/inside");
    QtSettings settings(file);
    settings.setBool("Saved", true);
    EXPECT_FALSE(settings.synchronize());
    EXPECT_TRUE(exists(folder.path("Quorvex/Veltrano.conf/inside")));
}

TEST_F(QtSettingsTest, aFileWhosePathIsNoUtf8IsNeitherReadNorMadeUnderAnotherName) {
    const std::string odd = folder.path("m\xFCller/Veltrano.conf");
    QtSettings settings(odd);
    settings.setBool("Saved", true);
    EXPECT_FALSE(settings.synchronize());
    EXPECT_EQ(settings.boolForKey("Saved"), true);
    EXPECT_EQ(sumOfTree(folder.path()), TreeSum());
}

TEST_F(QtSettingsTest, onceTheFileCanBeWrittenALaterSynchronizationSucceeds) {
    folder.createFile("Quorvex", 1);
    QtSettings settings(file);
    settings.setBool("Saved", true);
    ASSERT_FALSE(settings.synchronize());
    folder.remove("Quorvex");
    EXPECT_TRUE(settings.synchronize());
    EXPECT_THAT(contentOf(file), HasSubstr("Saved=true"));
}

TEST_F(QtSettingsTest, writesByItselfWhenTheMainLoopTurns) {
    QtSettings settings(file);
    settings.setBool("Saved", true);
    QCoreApplication::processEvents();
    EXPECT_THAT(contentOf(file), HasSubstr("Saved=true"));
}

} // namespace
} // namespace veltrano
