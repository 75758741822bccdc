#include "chart/PathsMimeData.h"

#include <QMimeData>

#include <gmock/gmock.h>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

using Paths = std::vector<std::string>;
const std::string kNoText = "/a/\xFF\xFE\nb";

TEST(PathsMimeData, archiveIsTheKeyAndTheStringsEachWithANul) {
    EXPECT_EQ(archivePaths(Paths{"/a", "/b c"}), QByteArray("paths\0/a\0/b c\0", 14));
}

TEST(PathsMimeData, archiveGivesBackAnyBytes) {
    EXPECT_THAT(unarchivePaths(archivePaths(Paths{"/a", kNoText, ""})),
                Optional(ElementsAre("/a", kNoText, "")));
}

TEST(PathsMimeData, archiveOfNothingHoldsNothing) {
    EXPECT_THAT(unarchivePaths(archivePaths({})), Optional(IsEmpty()));
}

TEST(PathsMimeData, foreignBytesAreNoArchive) {
    EXPECT_EQ(unarchivePaths({}), std::nullopt);
    EXPECT_EQ(unarchivePaths("paths"), std::nullopt);
    EXPECT_EQ(unarchivePaths("/a"), std::nullopt);
    EXPECT_EQ(unarchivePaths(QByteArray("path\0/a\0", 8)), std::nullopt);
    EXPECT_EQ(unarchivePaths(QByteArray("paths\0/a", 8)), std::nullopt);
}

TEST(PathsMimeData, privateTypeIsDeclaredBeforeText) {
    EXPECT_EQ(writablePasteboardTypes(), (QStringList{"com.quorvex.veltrano.data", "text/plain"}));
    QMimeData data;
    ASSERT_TRUE(writeFilePaths(Paths{"/a"}, data));
    EXPECT_EQ(data.formats(), writablePasteboardTypes());
}

TEST(PathsMimeData, textIsALineForEachPath) {
    QMimeData data;
    ASSERT_TRUE(writeFilePaths(Paths{"/a", "/b"}, data));
    EXPECT_EQ(data.text(), "/a\n/b");
    EXPECT_EQ(data.data("text/plain"), "/a\n/b");
}

TEST(PathsMimeData, emptyListWritesNothing) {
    QMimeData data;
    EXPECT_FALSE(writeFilePaths({}, data));
    EXPECT_TRUE(data.formats().isEmpty());
}

TEST(PathsMimeData, pathsAreReadBackByteByByte) {
    QMimeData data;
    ASSERT_TRUE(writeFilePaths(Paths{kNoText}, data));
    EXPECT_THAT(readFilePaths(data), Optional(ElementsAre(kNoText)));
    EXPECT_EQ(readFilePaths(QMimeData()), std::nullopt);
}

TEST(PathsMimeData, addressesAreEncodedByteByByte) {
    QMimeData data;
    writeFileUris(Paths{"/a b/%", kNoText}, data);
    EXPECT_EQ(data.data("text/uri-list"), "file:///a%20b/%25\r\nfile:///a/%FF%FE%0Ab\r\n");
}

} // namespace
} // namespace veltrano
