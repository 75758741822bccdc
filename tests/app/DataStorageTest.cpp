#include "app/DataStorage.h"

#include "support/TestDir.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/stat.h>

namespace veltrano {
namespace {

std::string contentOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

bool exists(const std::string& path) {
    struct stat facts {};
    return ::lstat(path.c_str(), &facts) == 0;
}

class DataStorageTest : public testing::Test {
protected:
    DataStorageTest() { folder.createFolder("home"); }

    PropertyDictionary someDictionary() {
        PropertyDictionary dictionary;
        auto news = DataStorage::CreateDict();
        news->values["seen"] = std::int64_t{3};
        dictionary.values = {{"news", news}, {"text", std::string("plain")}};
        return dictionary;
    }

    TestDir folder;
    const std::string file = folder.path("store.dat");
    DataStorage storage{[this](const std::string& user) -> std::optional<std::string> {
        if (user.empty())
            return folder.path("home");
        return user == "m\xFCller" ? std::optional(folder.path("other/")) : std::nullopt;
    }};
};

TEST_F(DataStorageTest, whatWasSavedIsOpened) {
    EXPECT_TRUE(storage.SaveDict(someDictionary(), file));
    const auto opened = storage.OpenDict(file);
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(std::get<std::string>(opened->values.at("text")), "plain");
    EXPECT_TRUE(contentOf(file).starts_with("<?xml"));
}

TEST_F(DataStorageTest, whatIsOpenedCanBeChangedInPlace) {
    ASSERT_TRUE(storage.SaveDict(someDictionary(), file));
    storage.OpenDict(file, "news")->values["seen"] = std::int64_t{4};
    ASSERT_TRUE(storage.SaveDict(*storage.getRootDictionary(), file));
    EXPECT_EQ(storage.OpenDict(file, "news")->values.at("seen"), PropertyValue(std::int64_t{4}));
}

TEST_F(DataStorageTest, aMissingFileIsNothing) {
    EXPECT_EQ(storage.OpenDict(file), nullptr);
    EXPECT_FALSE(exists(file));
}

TEST_F(DataStorageTest, aDamagedFileIsDeleted) {
    for (const char* const content : {"", "damaged", "<plist version=\"1.0\"><dict><key>a</key>",
                                      "<plist version=\"1.0\"><array><true/></array></plist>",
                                      "<plist version=\"1.0\"><dict/></plist>"}) {
        write(file, content);
        EXPECT_EQ(storage.OpenDict(file), nullptr) << content;
        EXPECT_FALSE(exists(file)) << content;
        write(file, content);
        EXPECT_EQ(storage.OpenDict(file, "news"), nullptr) << content;
        EXPECT_FALSE(exists(file)) << content;
    }
}

TEST_F(DataStorageTest, whatIsNoFileIsLeftAlone) {
    folder.createFolder("folder");
    folder.createFifo("fifo"); // Nobody writes into it: reading must not wait.
    folder.createSymlink("to nowhere", "nowhere");
    for (const char* const name : {"folder", "fifo", "to nowhere"}) {
        EXPECT_EQ(storage.OpenDict(folder.path(name)), nullptr) << name;
        EXPECT_TRUE(exists(folder.path(name))) << name;
    }
}

TEST_F(DataStorageTest, aKeyThatIsMissingOrHoldsNoDictionaryDeletesNothing) {
    ASSERT_TRUE(storage.SaveDict(someDictionary(), file));
    EXPECT_EQ(storage.OpenDict(file, "rating"), nullptr);
    EXPECT_EQ(storage.OpenDict(file, "text"), nullptr);
    EXPECT_TRUE(exists(file));
    EXPECT_NE(storage.getRootDictionary(), nullptr);
}

TEST_F(DataStorageTest, openingReplacesTheRootEvenByNothing) {
    ASSERT_TRUE(storage.SaveDict(someDictionary(), file));
    EXPECT_EQ(storage.getRootDictionary(), nullptr);
    storage.OpenDict(file, "news");
    EXPECT_EQ(storage.getRootDictionary()->values.size(), 2U);
    storage.OpenDict(folder.path("missing"), "news");
    EXPECT_EQ(storage.getRootDictionary(), nullptr);
}

TEST_F(DataStorageTest, openingWithoutAKeyLeavesTheRoot) {
    const auto created = storage.CreateDictWithKey("news");
    ASSERT_TRUE(storage.SaveDict(someDictionary(), file));
    EXPECT_NE(storage.OpenDict(file), nullptr);
    EXPECT_EQ(std::get<DataStorage::Dictionary>(storage.getRootDictionary()->values.at("news")), created);
}

TEST_F(DataStorageTest, aDictionaryIsCreatedUnderAKeyOfTheRoot) {
    const auto news = storage.CreateDictWithKey("news");
    const auto root = storage.getRootDictionary();
    ASSERT_NE(root, nullptr);
    news->values["seen"] = std::int64_t{1};
    EXPECT_EQ(std::get<DataStorage::Dictionary>(root->values.at("news"))->values.size(), 1U);
    storage.CreateDictWithKey("rating");
    EXPECT_EQ(storage.getRootDictionary(), root);
    EXPECT_EQ(root->values.size(), 2U);
    EXPECT_NE(storage.CreateDictWithKey("news"), news) << "a new one takes the place";
}

TEST_F(DataStorageTest, savingMakesTheFoldersOnTheWay) {
    EXPECT_TRUE(storage.SaveDict(someDictionary(), folder.path("a/m\xFCller/store.dat")));
    EXPECT_NE(storage.OpenDict(folder.path("a/m\xFCller/store.dat")), nullptr);
}

TEST_F(DataStorageTest, savingAnswersWhetherItWasWritten) {
    folder.createFile("a file", 1);
    EXPECT_FALSE(storage.SaveDict(someDictionary(), folder.path("a file/store.dat")));
    folder.createFolder("in the way/full");
    EXPECT_FALSE(storage.SaveDict(someDictionary(), folder.path("in the way")));
    EXPECT_TRUE(exists(folder.path("in the way/full")));
    EXPECT_FALSE(exists(folder.path("in the way.new"))) << "nothing unfinished stays";
}

TEST_F(DataStorageTest, aDictionaryThatCannotBeWrittenCountsAsSavedAndLeavesTheFile) {
    write(file, "before");
    PropertyDictionary unwritable;
    unwritable.values["k"] = std::string("\x01");
    EXPECT_TRUE(storage.SaveDict(unwritable, file));
    EXPECT_EQ(contentOf(file), "before");
}

TEST_F(DataStorageTest, aFolderIsMadeWithThoseAboveIt) {
    EXPECT_TRUE(storage.CreateImmediateDir(folder.path("a/b/m\xFCller")));
    EXPECT_TRUE(storage.CreateImmediateDir(folder.path("a/b/m\xFCller")));
    EXPECT_TRUE(storage.CreateImmediateDir(folder.path("a/c/")));
    EXPECT_TRUE(exists(folder.path("a/b/m\xFCller")));
    EXPECT_TRUE(exists(folder.path("a/c")));
    folder.createFile("file", 1);
    EXPECT_FALSE(storage.CreateImmediateDir(folder.path("file")));
    EXPECT_FALSE(storage.CreateImmediateDir(folder.path("file/below")));
}

TEST_F(DataStorageTest, aTildeStandsForAHomeFolder) {
    EXPECT_TRUE(storage.SaveDict(someDictionary(), "~/m\xFCller/store.dat"));
    EXPECT_TRUE(exists(folder.path("home/m\xFCller/store.dat")));
    EXPECT_NE(storage.OpenDict("~/m\xFCller/store.dat"), nullptr);
    EXPECT_NE(storage.OpenDict("~/m\xFCller/store.dat", "news"), nullptr);
    EXPECT_TRUE(storage.CreateImmediateDir("~m\xFCller/made"));
    EXPECT_TRUE(exists(folder.path("other/made")));
    EXPECT_TRUE(storage.CreateImmediateDir("~"));
    EXPECT_TRUE(storage.CreateImmediateDir(folder.path("~")));
    EXPECT_TRUE(exists(folder.path("~"))) << "a tilde inside a path is a name";
}

TEST_F(DataStorageTest, theTildeOfSomebodyUnknownIsAName) {
    EXPECT_EQ(storage.OpenDict("~stranger/store.dat"), nullptr);
    EXPECT_FALSE(exists(folder.path("home/store.dat")));
}

} // namespace
} // namespace veltrano
