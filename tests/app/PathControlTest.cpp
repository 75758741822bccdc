#include "app/PathControl.h"

#include "appearance/PathElementCell.h"
#include "support/TreeBuilder.h"
#include "tree/TopLevelItem.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace veltrano {
namespace {

class PathControlTest : public testing::Test {
protected:
    PathControlTest() {
        window.resize(900, 60);
        window.show();
        control.setRoom(QRect(0, 0, 900, 28));
    }

    void showPath(const std::string& path, const QString& rootTitle = QString()) {
        const test::TreeBuilder tree(path);
        control.setPathControlTextForItem(tree.root(), rootTitle);
    }

    QStringList titles() const {
        QStringList result;
        for (const auto* cell : control.pathComponentCells())
            result.append(cell->text());
        return result;
    }
    QStringList pressable() const {
        QStringList result;
        for (const auto* cell : control.pathComponentCells())
            if (cell->isEnabled())
                result.append(cell->text());
        return result;
    }
    QString iconOf(std::size_t index) const { return control.pathComponentCells()[index]->getIconName(); }

    QWidget window;
    PathControl control{"/home/mara", &window};
};

TEST_F(PathControlTest, showsACellForEachComponent) {
    showPath("/home/mara/Videos");
    EXPECT_TRUE(control.isVisible());
    EXPECT_EQ(titles(), QStringList({"/", "home", "mara", "Videos"}));
    EXPECT_EQ(control.getPath(), "/home/mara/Videos");
}

TEST_F(PathControlTest, theTopBearsTheNameOfItsVolume) {
    showPath("/home", "System");
    EXPECT_EQ(titles(), QStringList({"System", "home"}));
    showPath("/home");
    EXPECT_EQ(titles(), QStringList({"/", "home"}));
}

TEST_F(PathControlTest, knownFoldersHaveTheirIcons) {
    showPath("/home/mara/Downloads/x");
    EXPECT_EQ(iconOf(0), QStringLiteral("extra/volume-internal"));
    EXPECT_EQ(iconOf(1), QStringLiteral("extra/folder"));
    EXPECT_EQ(iconOf(2), QStringLiteral("extra/folder-home"));
    EXPECT_EQ(iconOf(3), QStringLiteral("extra/folder-downloads"));
    EXPECT_EQ(iconOf(4), QStringLiteral("extra/folder"));
    showPath("/home/mara/Pictures");
    EXPECT_EQ(iconOf(3), QStringLiteral("extra/folder-pictures"));
}

TEST_F(PathControlTest, isHiddenForAVolumeAndWithoutARoot) {
    showPath("/home");
    const auto volume = test::TreeBuilder::volume("/", 1000, 400);
    control.setPathControlTextForItem(volume.root(), QString());
    EXPECT_FALSE(control.isVisible());
    showPath("/home");
    EXPECT_TRUE(control.isVisible());
    const VolumeItem entry("/mnt/disk", "disk", 1000, 400, 0);
    control.setPathControlTextForItem(&entry, QString());
    EXPECT_FALSE(control.isVisible());
    control.setPathControlTextForItem(nullptr, QString());
    EXPECT_FALSE(control.isVisible());
    EXPECT_TRUE(control.getPath().empty());
}

TEST_F(PathControlTest, showsAFolderEntryThatWasNotScanned) {
    const FolderItem entry("/home/mara", "mara", 0, 0, 0);
    control.setPathControlTextForItem(&entry, QString());
    EXPECT_TRUE(control.isVisible());
    EXPECT_EQ(titles(), QStringList({"/", "home", "mara"}));
}

TEST_F(PathControlTest, aClickGivesTheBytesOfThePath) {
    const test::TreeBuilder tree("/home");
    control.setPathControlTextForItem(tree.folder(tree.folder(tree.root(), "\xFF\xFE"), "x"), QString());
    QSignalSpy clicked(&control, &PathControl::pathComponentClicked);
    QTest::mouseClick(control.pathComponentCells()[2], Qt::LeftButton);
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked.at(0).at(0).toByteArray(), QByteArray("/home/\xFF\xFE"));
}

TEST_F(PathControlTest, onlyScannedFoldersAboveTheRootCanBePressed) {
    const test::TreeBuilder tree("/home/mara");
    FolderSystemItem* const videos = tree.folder(tree.root(), "Videos");
    control.setPathControlTextForItem(tree.folder(videos, "Alps"), QString());
    EXPECT_EQ(pressable(), QStringList({"mara", "Videos"}));
    control.setPathControlTextForItem(tree.root(), QString());
    EXPECT_EQ(pressable(), QStringList());
}

TEST_F(PathControlTest, aPathThatWasScannedFromFurtherUpLeadsFurtherUp) {
    const test::TreeBuilder folder("/home/mara");
    control.setPathControlTextForItem(folder.root(), QString());
    const auto volume = test::TreeBuilder::volume("/", 1000, 400);
    FolderSystemItem* const home = volume.folder(volume.root(), "home");
    control.setPathControlTextForItem(volume.folder(home, "mara"), QString());
    EXPECT_EQ(pressable(), QStringList({"/", "home"}));
}

TEST_F(PathControlTest, oddNamesAreShownReadably) {
    showPath("/a\nb/\xFF");
    EXPECT_EQ(titles()[1], QStringLiteral("a␊b"));
    EXPECT_EQ(titles()[2], QString(QChar(QChar::ReplacementCharacter)));
}

TEST_F(PathControlTest, speaksThePath) {
    showPath("/home/mara");
    EXPECT_EQ(control.accessibleName(), QStringLiteral("Path"));
    EXPECT_EQ(control.accessibleDescription(), QStringLiteral("/home/mara"));
}

} // namespace
} // namespace veltrano
