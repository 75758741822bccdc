// Draws the sidebar as in the design's main window into files, to be looked at beside the design's picture.
//     sidebar_pictures FOLDER

#include "app/SidebarFixture.h"
#include "appearance/Look.h"

#include <QApplication>

namespace veltrano::test {
namespace {

class Pictures : public SidebarTest {
public:
    void TestBody() override {}

    std::shared_ptr<VolumeItem> disk(const char* path, const char* name, const DeviceFacts& facts,
                                     double size, double free) {
        auto item = std::make_shared<VolumeItem>(path, name, static_cast<std::int64_t>(size * 1e9),
                                                 static_cast<std::int64_t>(free * 1e9), 0);
        item->getDeepInfo(facts);
        return item;
    }
    void scan(const std::string& path, double gigabytes, bool completed = true) {
        sidebar.setScannedRootInfo(scannedTree(path, static_cast<std::int64_t>(gigabytes * 1e9)), completed);
    }

    void fill() {
        for (const auto& [path, name] :
             {std::pair{"/usr", "Applications"}, {"/home/me", "mara"}, {"/home/me/Downloads", "Downloads"}})
            favourites.addFolderItemToList(std::make_shared<FolderItem>(path, name, 0, 0, 0));
        for (const char* const path : {"/home/me/Projects", "/home/me/Pictures"})
            recents.addFolderItemToList(folder(path));
        sidebar.setVolumesArray({disk("/", "System", device("SATA"), 512, 147),
                                 disk("/archive", "Archive", device("SATA"), 2000, 611),
                                 disk("/field", "Field Drive", device("USB"), 250, 88.4)},
                                true);
        sidebar.addFFolders(favourites.getFoldersArray(), recents.getFoldersArray());
        scan("/", 365);
        scan("/field", 100, false);
        scan("/home/me", 229);
        scan("/home/me/Projects", 40.1);
        sidebar.reloadData();
        sidebar.selectVolumeByName("/");
    }
    void save(const QString& folder, const char* name) {
        panel.grab().save(folder + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png"));
    }

    void draw(const QString& into) {
        fill();
        save(into, "main");
        QTest::mouseMove(table.viewport(), middleOf(VolumesTableController::pColBtn, 2));
        QTest::mouseMove(table.viewport(), middleOf(VolumesTableController::pColInfo, 7));
        save(into, "pointed");
        sidebar.selectVolumeByName("/home/me");
        QTest::mouseMove(table.viewport(), middleOf(VolumesTableController::pColBtn, 7));
        save(into, "folder");
        press(middleOf(VolumesTableController::pColBtn, 7));
        save(into, "pressed");
        release({5, 5});
        host.underScan = "/";
        sidebar.setCanStart(false);
        sidebar.selectVolumeByName("/");
        save(into, "scanning");
        host.underScan.reset();
        save(into, "cancelling");
        panel.resize(270, 395);
        QCoreApplication::processEvents();
        save(into, "minimum");
        QWidget other;
        other.show();
        other.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
        save(into, "inactive");
        sidebar.resetVolumesArray();
        sidebar.reloadData();
        save(into, "empty");
    }
};

} // namespace
} // namespace veltrano::test

int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    veltrano::applyLook(application);
    veltrano::test::Pictures pictures;
    pictures.draw(QString::fromLocal8Bit(argc > 1 ? argv[1] : "."));
    return 0;
}
