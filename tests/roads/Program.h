#pragma once

#include "app/CSTreeController.h"
#include "app/MainWindow.h"
#include "app/ProgressBlock.h"
#include "app/QtMainLoop.h"
#include "app/p1AppDelegate.h"
#include "appearance/PushButton.h"
#include "chart/ChartArea.h"
#include "chart/RadialController.h"
#include "platform/linux/LinuxFileDates.h"
#include "support/FakeFolderQuestions.h"
#include "support/FakeVolumes.h"
#include "support/MapSettings.h"
#include "support/Recorders.h"

#include <QApplication>
#include <QTest>

#include <gmock/gmock.h>

#include <functional>
#include <memory>

namespace veltrano::test {

constexpr int kLimit = 20'000; // milliseconds that a wait may take before the test fails

/// What a program finds around it; all of it outlives the program.
struct Surroundings {
    std::shared_ptr<FileCatalogue> catalogue;
    const FileActions& files;
    Settings& settings;
    std::function<std::unique_ptr<Volumes>(MainLoop&)> makeVolumes = [](MainLoop&) {
        return std::make_unique<FakeVolumes>();
    };
    std::function<std::unique_ptr<FolderQuestions>(MainLoop&)> makeFolderQuestions;
    FFoldersController::DefaultPlaces favouritePlaces{};
};

/// The program as its main function puts it together, started and with its window open, in surroundings of
/// the test's choice.
struct Program {
    explicit Program(const Surroundings& around)
        : volumes(around.makeVolumes(mainLoop)),
          folderQuestions(around.makeFolderQuestions(mainLoop)),
          window(mainLoop, around.catalogue, "/"),
          controller({.mainLoop = mainLoop,
                      .notifications = notifications,
                      .alerts = alerts,
                      .sounds = sounds,
                      .files = around.files,
                      .settings = around.settings,
                      .desktop = desktop,
                      .volumes = *volumes,
                      .folderQuestions = *folderQuestions,
                      .fileDates = fileDates,
                      .favouritePlaces = around.favouritePlaces},
                     std::make_unique<CModel>(mainLoop, notifications, around.catalogue,
                                              TimeCode(currentCatalogueDate), ScanFacts{}, *volumes),
                     window) {
        notifications.postNotification(InitTreeControllerParameters);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        for (auto* button : window.findChildren<PushButton*>())
            if (button->text() == QStringLiteral("Scan Selected"))
                scanButton = button;
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Until the scan is over, finish run and all.
    bool waitForEnd() {
        return waitFor([&] { return !sounds.played.empty(); });
    }
    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, kLimit); }
    /// Scans the selected entry to its end by the key.
    bool scanSelected() {
        sounds.played.clear();
        QTest::keyClick(&window, Qt::Key_F5);
        return controller.isProcessing() && waitForEnd();
    }
    bool select(const std::string& path) { return controller.selectVolumeByName(path) != nullptr; }

    PMProgressIndicator& bar() { return window.progress().bar(); }
    RadialController& chart() { return window.chartArea().controller(); }
    VolumesTableController& sidebar() { return controller.getVolsController(); }
    /// The tree on show; null for none.
    FolderSystemItem* root() {
        VolumeFolderProtocol* const shown = chart().getRootObject();
        return shown ? dynamic_cast<FolderSystemItem*>(shown) : nullptr;
    }
    std::vector<std::string> rows() {
        std::vector<std::string> paths;
        for (int row = 0; row < sidebar().numberOfRows(); ++row)
            if (const auto entry = sidebar().getItemByRow(row))
                paths.push_back(entry->getPath());
        return paths;
    }

    QtMainLoop mainLoop;
    NotificationCentre notifications;
    RecordingAlerts alerts;
    RecordingSounds sounds;
    RecordingDesktop desktop;
    std::unique_ptr<Volumes> volumes;
    std::unique_ptr<FolderQuestions> folderQuestions;
    LinuxFileDates fileDates{mainLoop};
    MainWindow window;
    CSTreeController controller;
    PushButton* scanButton = nullptr;
};

} // namespace veltrano::test
