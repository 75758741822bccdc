#include "app/CSTreeController.h"
#include "app/MainWindow.h"
#include "app/QtAlerts.h"
#include "app/QtMainLoop.h"
#include "app/SoundFiles.h"
#include "appearance/Look.h"
#include "platform/linux/CanberraSounds.h"
#include "platform/linux/LinuxCatalogue.h"
#include "platform/linux/LinuxScanFacts.h"
#include "platform/posix/HomeFolder.h"
#include "platform/posix/PosixFileActions.h"
#include "scan/CModel.h"
#include "scan/TimeCode.h"

#include <QApplication>

#include <cstdlib>

int main(int argc, char* argv[]) {
    using namespace veltrano;

    QCoreApplication::setOrganizationName(QStringLiteral("Quorvex"));
    QCoreApplication::setApplicationName(QStringLiteral("Veltrano"));
    QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("veltrano"));
    applyLook(application);

    int result = 0;
    {
        QtMainLoop mainLoop;
        NotificationCentre notifications;
        const auto catalogue = std::make_shared<LinuxCatalogue>();
        MainWindow window(mainLoop, catalogue, homeFolder());
        QtAlerts alerts(&window);
        SoundFiles soundFiles;
        CanberraSounds sounds([&soundFiles](std::string_view name) { return soundFiles.fileOfSound(name); });
        const PosixFileActions files;
        const TimeCode timeCode(currentCatalogueDate);
        auto model = std::make_unique<CModel>(mainLoop, notifications, catalogue, timeCode, linuxScanFacts());
        CSTreeController controller({mainLoop, notifications, alerts, sounds, files}, std::move(model),
                                    window);
        window.show();
        result = QApplication::exec();
    }
    // A worker that hangs in a dead mount can't be waited for, and must find nothing torn down under it: the
    // program ends without running what is left of the clean-up of the process.
    std::_Exit(result);
}
