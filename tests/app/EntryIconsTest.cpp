#include "app/EntryIcons.h"

#include "appearance/Images.h"
#include "support/TestDir.h"
#include "tree/TopLevelItem.h"

#include <QFile>
#include <QIcon>
#include <QImage>

#include <gtest/gtest.h>

namespace veltrano {
namespace {

VolumeItem& as(VolumeItem&& item, std::optional<std::string> protocol, MediaClass mediaClass = {},
               std::optional<std::int32_t> internal = 1) {
    DeviceFacts facts;
    facts.protocol = std::move(protocol);
    facts.mediaClass = mediaClass;
    facts.internal = internal;
    item.getDeepInfo(facts);
    return item;
}

class EntryIconsTest : public testing::Test {
protected:
    std::string of(const std::string& path) {
        return icons.imageNameFor(FolderItem(path, "name", 0, 0, 0)).toStdString();
    }
    std::string of(std::optional<std::string> protocol, MediaClass mediaClass,
                   std::optional<std::int32_t> internal = 1) {
        VolumeItem item("/v", "v", 0, 0, 0);
        return icons.imageNameFor(as(std::move(item), std::move(protocol), mediaClass, internal))
            .toStdString();
    }

    EntryIcons icons{{"/home/me", "/home/me/Downloads", "/home/me/Pictures", "/usr"}};
};

TEST_F(EntryIconsTest, foldersOfTheUserHaveIconsOfTheirOwn) {
    EXPECT_EQ(of("/home/me"), "extra/folder-home");
    EXPECT_EQ(of("/home/me/Downloads"), "extra/folder-downloads");
    EXPECT_EQ(of("/home/me/Pictures"), "extra/folder-pictures");
    EXPECT_EQ(of("/usr"), "extra/folder-applications");
    EXPECT_EQ(of("/home/me/Projects"), "extra/folder");
    EXPECT_EQ(of("/home/you"), "extra/folder");
}

TEST_F(EntryIconsTest, volumesAreToldByTheirDevice) {
    EXPECT_EQ(of(std::nullopt, MediaClass::FixedOrUnknown), "extra/volume-network");
    EXPECT_EQ(of("Virtual Interface", MediaClass::FixedOrUnknown), "extra/volume-image");
    EXPECT_EQ(of("USB", MediaClass::FixedOrUnknown), "extra/volume-external");
    EXPECT_EQ(of("Secure Digital", MediaClass::FixedOrUnknown, 0), "extra/volume-external");
    EXPECT_EQ(of("SATA", MediaClass::DVD), "extra/volume-optical");
    EXPECT_EQ(of("SATA", MediaClass::FixedOrUnknown), "extra/volume-internal");
    EXPECT_EQ(of("PCI-Express", MediaClass::FixedOrUnknown, std::nullopt), "extra/volume-internal");
}

TEST_F(EntryIconsTest, iconHasTheSizeAskedForTimesTheRatio) {
    const FolderItem folder("/f", "f", 0, 0, 0);
    for (const qreal ratio : {1.0, 1.5, 2.0}) {
        const QPixmap icon = icons.iconForFile(folder, 32, ratio);
        EXPECT_EQ(icon.size(), QSize(32, 32) * ratio);
        EXPECT_EQ(icon.devicePixelRatio(), ratio);
    }
    EXPECT_EQ(icons.iconForFile(folder, 44, 1).size(), QSize(44, 44));
}

TEST_F(EntryIconsTest, withoutAThemeTheImageIsOurs) {
    const FolderItem folder("/f", "f", 0, 0, 0);
    ASSERT_FALSE(QIcon::hasThemeIcon(QStringLiteral("folder")));
    EXPECT_EQ(icons.iconForFile(folder, 32, 1).toImage(),
              renderImage(QStringLiteral("extra/folder"), QSizeF(32, 32), 1).toImage());
}

TEST_F(EntryIconsTest, iconOfTheDesktopsThemeIsPreferred) {
    // theme/index.theme, theme/16/folder.png: smaller than asked for, so it stands in the middle.
    TestDir dir;
    dir.createFolder("icons/theme/16");
    QFile index(QString::fromStdString(dir.path("icons/theme/index.theme")));
    ASSERT_TRUE(index.open(QIODevice::WriteOnly));
    index.write("[Icon Theme]\nName=theme\nDirectories=16\n\n[16]\nSize=16\nType=Fixed\n");
    index.close();
    QImage red(16, 16, QImage::Format_RGB32);
    red.fill(Qt::red);
    ASSERT_TRUE(red.save(QString::fromStdString(dir.path("icons/theme/16/folder.png"))));
    const QStringList paths = QIcon::themeSearchPaths();
    const QString name = QIcon::themeName();
    QIcon::setThemeSearchPaths({QString::fromStdString(dir.path("icons"))});
    QIcon::setThemeName(QStringLiteral("theme"));

    const QImage icon = icons.iconForFile(FolderItem("/f", "f", 0, 0, 0), 32, 1).toImage();
    QIcon::setThemeSearchPaths(paths);
    QIcon::setThemeName(name);
    EXPECT_EQ(icon.size(), QSize(32, 32));
    EXPECT_EQ(icon.pixelColor(16, 16), QColor(Qt::red));
    EXPECT_EQ(icon.pixelColor(4, 4).alpha(), 0);
}

TEST(FolderPlaces, thoseOfTheUserAreAbsolutePaths) {
    const FolderPlaces places = FolderPlaces::ofThisUser();
    EXPECT_EQ(places.home.front(), '/');
    EXPECT_EQ(places.applications, "/usr");
}

} // namespace
} // namespace veltrano
