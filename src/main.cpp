#include "app/AddressOpener.h"
#include "app/CSTreeController.h"
#include "app/MainWindow.h"
#include "app/QtAlerts.h"
#include "app/QtMainLoop.h"
#include "app/QtSettings.h"
#include "app/SoundFiles.h"
#include "app/WindowIcon.h"
#include "app/p1AppDelegate.h"
#include "appearance/Look.h"
#include "appearance/Motion.h"
#include "appearance/PMProgressIndicatorController.h"
#include "platform/linux/CanberraSounds.h"
#include "platform/linux/FileManagerDesktop.h"
#include "platform/linux/LauncherEntry.h"
#include "platform/linux/LinuxCatalogue.h"
#include "platform/linux/LinuxFileDates.h"
#include "platform/linux/LinuxFolderQuestions.h"
#include "platform/linux/LinuxScanFacts.h"
#include "platform/linux/LinuxVolumes.h"
#include "platform/linux/PortalMotion.h"
#include "platform/linux/StartupDiskScript.h"
#include "platform/posix/HomeFolder.h"
#include "platform/posix/PosixFileActions.h"
#include "platform/posix/UserFolders.h"
#include "scan/CModel.h"
#include "scan/TimeCode.h"

#include <QApplication>

#include <cstdlib>

namespace {

using namespace veltrano;

/// Makes everything, runs the program, and answers its exit code.
int runProgram(QApplication& application) {
    QtMainLoop mainLoop;
    // Before the window, so that the volumes are being asked while it is made.
    VolumeReader::Options volumeOptions;
    volumeOptions.startupDiskScript = kFreeSpaceScript;
    LinuxVolumes volumes(mainLoop, volumeOptions);

    NotificationCentre notifications;
    const std::string home = homeFolder();
    const std::string config = configFolder(home);
    QtSettings settings(config + "/Quorvex/Veltrano.conf");
    LinuxFolderQuestions folderQuestions(mainLoop);
    LinuxFileDates fileDates(mainLoop);
    FileManagerDesktop desktop(QDBusConnection::sessionBus(), openWithDesktop);
    SoundFiles soundFiles;
    CanberraSounds sounds([&soundFiles](std::string_view name) { return soundFiles.fileOfSound(name); });
    PortalMotion motion(QDBusConnection::sessionBus());
    motion.observe(setMotionReduced);
    const PosixFileActions files;
    const auto catalogue = std::make_shared<LinuxCatalogue>();
    const TimeCode timeCode(currentCatalogueDate);

    WindowIcon icon;
    LauncherEntry launcher(QDBusConnection::sessionBus(), QStringLiteral("application://veltrano.desktop"));
    PMProgressIndicatorController progressOnIcon(mainLoop, icon, launcher);
    p1AppDelegate delegate(notifications, application);
    MainWindow window(mainLoop, catalogue, home);
    QtAlerts alerts(&window);
    CSTreeController controller(
        {.mainLoop = mainLoop,
         .notifications = notifications,
         .alerts = alerts,
         .sounds = sounds,
         .files = files,
         .settings = settings,
         .desktop = desktop,
         .volumes = volumes,
         .folderQuestions = folderQuestions,
         .fileDates = fileDates,
         .favouritePlaces = {.home = home, .downloads = downloadsFolder(home, config)}},
        std::make_unique<CModel>(mainLoop, notifications, catalogue, timeCode, linuxScanFacts(), volumes),
        window);
    // Before the window is seen, so that it opens with its sidebar filled.
    delegate.applicationDidFinishLaunching();
    window.show();
    window.activateWindow();
    return QApplication::exec();
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvex"));
    QCoreApplication::setApplicationName(QStringLiteral("Veltrano"));
    QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("veltrano"));
    applyLook(application);
    const int result = runProgram(application);
    // A worker that hangs in a dead mount can't be waited for, and must find nothing torn down under it: the
    // program ends without running what is left of the clean-up of the process.
    std::_Exit(result);
}
