#pragma once

#include "app/CSTreeController.h"
#include "app/MainWindow.h"
#include "app/ProgressBlock.h"
#include "app/p1AppDelegate.h"
#include "appearance/PushButton.h"
#include "chart/AnimView.h"
#include "chart/ChartArea.h"
#include "chart/RadialController.h"
#include "support/FakeFileDates.h"
#include "support/FakeFolderQuestions.h"
#include "support/FakeMainLoop.h"
#include "support/FakeVolumes.h"
#include "support/MapSettings.h"
#include "support/MemoryDisk.h"
#include "support/Recorders.h"
#include "tree/SpecialItems.h"

#include <QAction>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

#include <algorithm>
#include <any>

namespace veltrano::test {

/// The main controller in its window, over a disk in memory, with a clock and volumes that the test turns. A
/// test that wants volumes or settings at the start tells them before `start`.
//  /disk ─┬─ a/file (1000)
//         └─ b/file (3000)
class ControllerFixture : public testing::Test {
protected:
    ControllerFixture() {
        disk->addFile("/disk/a/file", 1000);
        disk->addFile("/disk/b/file", 3000);
        for (const char* path : {"/disk", "/disk/a", "/disk/b"})
            folderQuestions.addFolder(path);
    }
    ~ControllerFixture() override { gate->release(); }

    /// Makes the window and the controller, as the program's main function does up to the launch event.
    void start() {
        controller.reset();
        window = std::make_unique<MainWindow>(loop, disk, "/");
        auto newModel = std::make_unique<CModel>(loop, notifications, disk, TimeCode(currentCatalogueDate),
                                                 ScanFacts{}, volumes);
        model = newModel.get();
        controller = std::make_unique<CSTreeController>(
            CSTreeController::Services{.mainLoop = loop,
                                       .notifications = notifications,
                                       .alerts = alerts,
                                       .sounds = sounds,
                                       .files = files,
                                       .settings = settings,
                                       .desktop = desktop,
                                       .volumes = volumes,
                                       .folderQuestions = folderQuestions,
                                       .fileDates = fileDates,
                                       .favouritePlaces = {.applications = "/usr", .home = "/home/ann"}},
            std::move(newModel), *window);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        scanButton = buttonNamed("Scan Selected");
        folderButton = buttonNamed("Folder…");
    }
    /// The same, with the launch event.
    void launch() {
        start();
        notifications.postNotification(InitTreeControllerParameters);
    }

    static VolumeFacts volumeAt(const std::string& path, std::int64_t occupied,
                                const std::string& protocol = "SATA") {
        return {.path = path,
                .name = path,
                .fileSystemType = "ext4",
                .hasAnswered = true,
                .size = occupied + 500,
                .freeSize = 500,
                .nodes = 7,
                .device = {.protocol = protocol}};
    }
    /// The volume is there from now on, and the program hears of it if it runs.
    void mount(const std::string& path, std::int64_t occupied = 8000, const std::string& protocol = "SATA") {
        volumes.volumes.push_back(volumeAt(path, occupied, protocol));
        if (controller)
            volumes.events.didMount(path);
    }
    void unmount(const std::string& path) {
        std::erase_if(volumes.volumes, [&](const VolumeFacts& facts) { return facts.path == path; });
        volumes.events.didUnmount(path);
    }
    /// "/disk" is a volume that holds so many bytes, and scanned.
    void scanVolume(std::int64_t occupied) {
        mount("/disk", occupied);
        controller->selectVolumeByName("/disk");
        controller->startAction();
    }
    /// Scans "/disk" up to the folder "/disk/b", which is held up.
    void scanHeldUp() {
        disk->gateReads("/disk/b", gate);
        controller->doScanFolder("/disk");
        ASSERT_TRUE(gate->waitForArrivals(1));
    }
    /// Until a walk is over, with the clock standing still.
    void walkToItsEnd() {
        const int before = finishedWalks;
        ASSERT_TRUE(loop.runUntil([&] { return finishedWalks > before; }));
    }
    /// Until the scan is over, finish run and all.
    void scanToItsEnd() {
        const std::size_t before = sounds.played.size();
        ASSERT_TRUE(loop.runUntil([&] { return sounds.played.size() > before; },
                                  FakeMainLoop::WhenIdle::AdvanceClock));
        // The moment at which the end comes lies inside the last step of the finish run.
        ASSERT_FALSE(controller->isProcessing());
    }
    void scanFolderToItsEnd(const std::string& path) {
        controller->doScanFolder(path);
        ASSERT_TRUE(controller->isProcessing());
        scanToItsEnd();
    }

    PushButton* buttonNamed(const char* text) {
        for (auto* button : window->findChildren<PushButton*>())
            if (button->text() == QString::fromUtf8(text))
                return button;
        ADD_FAILURE() << "no button " << text;
        return nullptr;
    }
    PMProgressIndicator& bar() { return window->progress().bar(); }
    QString progressText() { return window->progress().findChildren<QLabel*>().at(0)->text(); }
    QString counter() { return window->progress().findChildren<QLabel*>().at(1)->text(); }
    RadialController& chart() { return window->chartArea().controller(); }
    FolderSystemItem* root() { return model->getRootItem().get(); }
    VolumesTableController& sidebar() { return controller->getVolsController(); }
    const MenuActions& menus() { return window->menuActions(); }
    std::optional<std::string> selected() { return sidebar().getSelectedVolume(); }
    /// The paths of the sidebar's entries, from the top.
    std::vector<std::string> rows() {
        std::vector<std::string> paths;
        for (int row = 0; row < sidebar().numberOfRows(); ++row)
            if (const auto entry = sidebar().getItemByRow(row))
                paths.push_back(entry->getPath());
        return paths;
    }
    /// What the chart shows, as a path; nothing without a root.
    std::optional<std::string> shown() {
        VolumeFolderProtocol* const root = chart().getRootObject();
        return root ? std::optional(root->getFullPath()) : std::nullopt;
    }
    /// Whether the chart shows a tree and not a bare entry.
    bool isTreeShown() {
        return chart().getRootObject() && chart().getRootObject()->getObject()->asFileSystemItem();
    }

    FakeMainLoop loop;
    NotificationCentre notifications;
    RecordingAlerts alerts;
    RecordingSounds sounds;
    RecordingDesktop desktop;
    SwitchedFiles files;
    MapSettings settings;
    FakeVolumes volumes;
    FakeFolderQuestions folderQuestions;
    FakeFileDates fileDates;
    std::shared_ptr<MemoryDisk> disk = std::make_shared<MemoryDisk>();
    std::shared_ptr<ReadGate> gate = std::make_shared<ReadGate>();
    std::unique_ptr<MainWindow> window;
    CModel* model = nullptr; // the controller's
    std::unique_ptr<CSTreeController> controller;
    PushButton* scanButton = nullptr;
    PushButton* folderButton = nullptr;

private:
    int finishedWalks = 0;
    NotificationCentre::Token m_finished = notifications.addObserver(
        std::string(FinishWalkingVolume), [this](const NotificationCentre::Object&) { ++finishedWalks; });
};

} // namespace veltrano::test
