// Measures what the list of volumes costs the main thread. See the usage text.

#include "bench/Figures.h"
#include "platform/linux/LinuxVolumes.h"
#include "scan/CModel.h"
#include "support/MemoryDisk.h"
#include "support/TestDir.h"
#include "support/ThreadMainLoop.h"

#include <atomic>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>

namespace veltrano {

namespace {

constexpr double kMillis = 1000;
constexpr int kVolumes = 50;

[[noreturn]] void fail(const std::string& what) {
    std::fprintf(stderr, "veltrano_volumes_bench: %s\n", what.c_str());
    std::exit(1);
}

/// The table of a machine with so many disks.
void writeTable(const std::string& path) {
    std::ofstream table(path, std::ios::binary);
    table << "20 1 8:1 / / rw,relatime - ext4 /dev/sda1 rw\n";
    for (int number = 1; number < kVolumes; ++number)
        table << 20 + number << " 20 8:" << 1 + number << " / /srv/disk" << number
              << " rw,relatime - ext4 /dev/sdb" << number << " rw\n";
}

/// Every volume has another free size at every question, so that each entry is taken over anew.
VolumeReader::Options optionsOf(const std::string& table) {
    VolumeReader::Options options;
    options.mountTable = table;
    options.ask = [asked = std::make_shared<std::atomic<std::int64_t>>(0)](const std::string&) {
        constexpr std::int64_t kStep = 1'000'000'000; // bytes; far beyond what counts as the same
        return VolumeAnswer{.isReadable = true,
                            .size = 1'000'000 * kStep,
                            .freeSize = (1 + asked->fetch_add(1) % 900'000) * kStep};
    };
    return options;
}

void benchUpdate(int rounds) {
    TestDir folder;
    writeTable(folder.path("mounts"));
    ThreadMainLoop loop;
    std::vector<double> turns;
    LinuxVolumes volumes(loop, optionsOf(folder.path("mounts")), std::chrono::seconds(10));
    NotificationCentre notifications;
    CModel model(loop, notifications, std::make_shared<MemoryDisk>(), TimeCode(currentCatalogueDate),
                 ScanFacts{}, volumes);
    model.enumerateVolumes();
    if (model.getVolumesInfo().size() != kVolumes)
        fail("not every volume is listed");
    std::vector<double> update;
    loop.setTurnObserver([&](double seconds) { turns.push_back(seconds); });
    for (int round = 0; round < rounds; ++round) {
        bool isDone = false;
        volumes.refresh([&] { isDone = true; });
        if (!loop.runUntil([&] { return isDone; }))
            fail("the volumes were never refreshed");
        const CostMeter meter;
        const bool hasChanged = model.updateVolumesInfo();
        update.push_back(meter.cost().wall);
        if (!hasChanged)
            fail("the update saw no change");
    }
    const std::string name = std::to_string(kVolumes) + " volumes that all changed: ";
    printFigure(name + "updateVolumesInfo", 5, quantile(update, 1) * kMillis, "ms",
                "longest of " + std::to_string(rounds) + ", usual " + text(median(update) * kMillis, 3) +
                    " ms");
    printFigure(name + "taking their answers over", 5, quantile(turns, 1) * kMillis, "ms",
                "longest of " + std::to_string(turns.size()) + " turns");
}

int usage() {
    std::fputs("Usage: veltrano_volumes_bench ROUNDS\n"
               "Prints rows of what, at most, measured.\n",
               stderr);
    return 2;
}

} // namespace

} // namespace veltrano

int main(int argc, char* argv[]) {
    int rounds = 0;
    if (argc == 2)
        std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), rounds);
    if (rounds <= 0)
        return veltrano::usage();
    veltrano::benchUpdate(rounds);
    return 0;
}
