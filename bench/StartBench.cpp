// Measures how long the program takes to its first painted window. See the usage text.

#include "app/AddressOpener.h"
#include "app/CSTreeController.h"
#include "app/MainWindow.h"
#include "app/QtMainLoop.h"
#include "app/QtSettings.h"
#include "app/WindowIcon.h"
#include "app/p1AppDelegate.h"
#include "appearance/Look.h"
#include "appearance/PMProgressIndicatorController.h"
#include "bench/Figures.h"
#include "platform/linux/FileManagerDesktop.h"
#include "platform/linux/LauncherEntry.h"
#include "platform/linux/LinuxCatalogue.h"
#include "platform/linux/LinuxFileDates.h"
#include "platform/linux/LinuxFolderQuestions.h"
#include "platform/linux/LinuxScanFacts.h"
#include "platform/linux/LinuxVolumes.h"
#include "platform/linux/StartupDiskScript.h"
#include "platform/posix/HomeFolder.h"
#include "platform/posix/PosixFileActions.h"
#include "scan/CModel.h"
#include "support/TestDir.h"

#include <QApplication>
#include <QDBusConnection>
#include <QEvent>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

namespace veltrano {

namespace {

constexpr double kMillis = 1000;
constexpr int kVolumes = 10;
constexpr char kListed = 'v';  ///< What the child tells for each volume in its list,
constexpr char kPainted = 'p'; ///< and when the window is painted.

[[noreturn]] void fail(const std::string& what) {
    std::fprintf(stderr, "veltrano_start_bench: %s\n", what.c_str());
    std::exit(1);
}

/// The table of a machine with ten volumes, and for the rest what containers mount: layers, memory and bind
/// mounts.
void writeTable(const std::string& path, int mounts) {
    std::ofstream table(path, std::ios::binary);
    table << "20 1 8:1 / / rw,relatime - ext4 /dev/sda1 rw\n";
    for (int number = 1; number < kVolumes; ++number)
        table << 20 + number << " 20 8:" << 1 + number << " / /srv/disk" << number
              << " rw,relatime - ext4 /dev/sdb" << number << " rw\n";
    for (int number = kVolumes; number < mounts; ++number) {
        table << 100 + number << " 20 ";
        switch (number % 3) {
        case 0:
            table << "0:" << 100 + number << " / /var/lib/c/" << number
                  << "/merged rw - overlay overlay rw\n";
            break;
        case 1:
            table << "0:" << 100 + number << " / /var/lib/c/" << number << "/shm rw - tmpfs shm rw\n";
            break;
        default:
            table << "8:1 /volumes/" << number << " /var/lib/c/" << number
                  << "/data rw - ext4 /dev/sda1 rw\n";
        }
    }
}

class NoAlerts final : public Alerts {
public:
    void ask(const Question& question, Answer) override { fail("the program asks: " + question.message); }
};

class NoSounds final : public Sounds {
public:
    void play(std::string_view) override {}
};

/// Calls once when a widget has been painted for the first time.
class FirstPaint final : public QObject {
public:
    FirstPaint(QWidget& window, std::function<void()> painted) : m_painted(std::move(painted)) {
        window.installEventFilter(this);
    }
    bool eventFilter(QObject* window, QEvent* event) override {
        // The window itself is painted first, and what stands in it right after, in the same turn.
        if (event->type() == QEvent::Paint) {
            window->removeEventFilter(this);
            QMetaObject::invokeMethod(qApp, m_painted, Qt::QueuedConnection);
        }
        return false;
    }

private:
    const std::function<void()> m_painted;
};

/// The program as its main function puts it together, up to the first painted window.
int startOnce(int argc, char* argv[], const std::string& table, int told) {
    QApplication application(argc, argv);
    applyLook(application);
    QtMainLoop mainLoop;
    VolumeReader::Options options;
    options.mountTable = table;
    options.startupDiskScript = kFreeSpaceScript;
    // The disks of the table are not there; asking costs a system call as for those that are.
    options.ask = [](const std::string&) {
        VolumeAnswer answer = askVolume("/");
        answer.isReadable = true;
        return answer;
    };
    LinuxVolumes volumes(mainLoop, options);
    NotificationCentre notifications;
    const auto catalogue = std::make_shared<LinuxCatalogue>();
    WindowIcon icon;
    LauncherEntry launcher(QDBusConnection::sessionBus(), QStringLiteral("application://veltrano.desktop"));
    PMProgressIndicatorController progressOnIcon(mainLoop, icon, launcher);
    MainWindow window(mainLoop, catalogue, homeFolder());
    NoAlerts alerts;
    NoSounds sounds;
    const PosixFileActions files;
    auto model = std::make_unique<CModel>(mainLoop, notifications, catalogue, TimeCode(currentCatalogueDate),
                                          linuxScanFacts(), volumes);
    CModel& volumesOf = *model;
    QtSettings settings(table + ".conf");
    LinuxFolderQuestions folderQuestions(mainLoop);
    LinuxFileDates fileDates(mainLoop);
    FileManagerDesktop desktop(QDBusConnection::sessionBus(), openWithDesktop);
    const std::string home = homeFolder();
    CSTreeController controller({.mainLoop = mainLoop,
                                 .notifications = notifications,
                                 .alerts = alerts,
                                 .sounds = sounds,
                                 .files = files,
                                 .settings = settings,
                                 .desktop = desktop,
                                 .volumes = volumes,
                                 .folderQuestions = folderQuestions,
                                 .fileDates = fileDates,
                                 .favouritePlaces = {.home = home}},
                                std::move(model), window);
    p1AppDelegate(notifications, application).applicationDidFinishLaunching();
    const FirstPaint painted(window, [&] {
        std::string answer(volumesOf.getVolumesInfo().size(), kListed);
        answer += kPainted;
        std::_Exit(::write(told, answer.data(), answer.size()) < 0 ? 1 : 0);
    });
    window.show();
    return QApplication::exec();
}

/// Starts the program in a process of its own and answers the seconds up to its painted window.
double timeOfStart(const char* program, const std::string& table) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        fail("no pipe");
    const std::string told = std::to_string(ends[1]);
    const CostMeter meter;
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        ::execl(program, program, "once", table.c_str(), told.c_str(), static_cast<char*>(nullptr));
        ::_exit(127);
    }
    ::close(ends[1]);
    std::string answer;
    for (char letter = 0; answer.find(kPainted) == std::string::npos && ::read(ends[0], &letter, 1) == 1;)
        answer += letter;
    const double seconds = meter.cost().wall;
    ::close(ends[0]);
    ::waitpid(child, nullptr, 0);
    if (answer != std::string(kVolumes, kListed) + kPainted)
        fail("the program did not list " + std::to_string(kVolumes) + " volumes and paint: " + answer);
    return seconds;
}

void benchStart(const char* program, int rounds) {
    for (const int mounts : {10, 5000}) {
        TestDir folder;
        writeTable(folder.path("mounts"), mounts);
        timeOfStart(program, folder.path("mounts")); // warms the caches
        std::vector<double> start;
        for (int round = 0; round < rounds; ++round)
            start.push_back(timeOfStart(program, folder.path("mounts")));
        printFigure("start to the first painted window, " + std::to_string(mounts) + " mounts", 250,
                    median(start) * kMillis, "ms",
                    "longest " + text(quantile(start, 1) * kMillis, 0) + " ms");
    }
}

int usage() {
    std::fputs("Usage: veltrano_start_bench ROUNDS\n"
               "Prints rows of what, at most, measured. Needs a display, or the offscreen platform.\n",
               stderr);
    return 2;
}

int number(const char* text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text, text + std::strlen(text), value);
    return error == std::errc() && *end == '\0' ? value : 0;
}

} // namespace

} // namespace veltrano

int main(int argc, char* argv[]) {
    using namespace veltrano;
    // How the program starts itself.
    if (argc == 4 && std::strcmp(argv[1], "once") == 0)
        return startOnce(argc, argv, argv[2], number(argv[3]));
    const int rounds = argc == 2 ? number(argv[1]) : 0;
    if (rounds <= 0)
        return usage();
    benchStart(argv[0], rounds);
    return 0;
}
