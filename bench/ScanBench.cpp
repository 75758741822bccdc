// Measures scans without a window, beside the bare walk. See the usage text.

#include "bench/BareWalk.h"
#include "bench/Figures.h"
#include "bench/LargeTree.h"
#include "platform/linux/LinuxCatalogue.h"
#include "scan/CModel.h"
#include "support/FakeVolumes.h"
#include "support/MemoryDisk.h"
#include "support/ThreadMainLoop.h"
#include "tree/TreeStorage.h"

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veltrano {

namespace {

constexpr int kThreads = 4;
constexpr double kLimit = 1800; // seconds, longer than any scan here
constexpr double kMillis = 1000;

[[noreturn]] void fail(const std::string& what) {
    std::fprintf(stderr, "veltrano_scan_bench: %s\n", what.c_str());
    std::exit(1);
}

/// What one scan came to.
struct ScanRun {
    Cost cost;
    std::vector<double> turns; ///< Seconds that each turn of the main loop took.
    double freeing = 0;        ///< Seconds of the main thread.
    std::uint64_t entries = 0; ///< Nodes below the root.
    std::int64_t bytes = 0;    ///< The root's total.
    double bytesPerEntry = 0;  ///< Memory, of all nodes.
};

std::uint64_t countEntries(const FolderSystemItem& root) {
    std::uint64_t count = 0;
    std::vector<const FolderSystemItem*> folders{&root};
    while (!folders.empty()) {
        const FolderSystemItem* folder = folders.back();
        folders.pop_back();
        for (std::size_t index = 0; index < folder->numberOfChildren(); ++index) {
            ++count;
            if (FolderSystemItem* child = folder->childAtIndex(index)->asFolderSystemItem())
                folders.push_back(child);
        }
    }
    return count;
}

std::ptrdiff_t threadCount() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                         std::filesystem::directory_iterator());
}

/// A model with the main loop that drives it.
class Scanner {
public:
    explicit Scanner(std::shared_ptr<FileCatalogue> catalogue)
        : m_model(m_loop, m_notifications, std::move(catalogue), TimeCode(currentCatalogueDate), ScanFacts{},
                  m_volumes) {
        m_notifications.addObserver(std::string(FinishWalkingVolume),
                                    [this](const auto&) { m_bEnded = true; });
        m_notifications.addObserver(std::string(WalkingVolumeCanceled),
                                    [this](const auto&) { m_bEnded = true; });
    }

    /// Scans the path to the end and lets go of the tree.
    ScanRun scan(const std::string& path) {
        ScanRun run;
        m_loop.setTurnObserver([&run](double seconds) { run.turns.push_back(seconds); });
        m_bEnded = false;
        const CostMeter meter;
        std::shared_ptr<FolderSystemItem> root = m_model.StartWalkWithPath(path, 0, nullptr);
        if (!m_loop.runUntil([this] { return m_bEnded; }, kLimit))
            fail("the scan of " + path + " does not end");
        run.cost = meter.cost();
        m_loop.setTurnObserver(nullptr);
        m_model.setStartPath(std::nullopt);
        run.entries = countEntries(*root);
        run.bytes = root->gettotalsize();
        run.bytesPerEntry = static_cast<double>(TreeStorage::of(root.get()).bytesReserved()) /
                            static_cast<double>(run.entries);
        waitForThreads();
        const CostMeter freeing;
        root.reset();
        m_model.ClearResultsTree();
        run.freeing = freeing.cost().wall;
        waitForThreads();
        return run;
    }

    /// Starts a scan, stops it after so many seconds, and answers how many more pass until all its threads
    /// have ended; nothing below 0 means that the scan was over before.
    double cancelAfter(const std::string& path, double seconds) {
        m_bEnded = false;
        const std::ptrdiff_t before = threadCount();
        m_model.StartWalkWithPath(path, 0, nullptr);
        bool due = false;
        m_loop.callLater(seconds, [&due] { due = true; });
        if (!m_loop.runUntil([&] { return due || m_bEnded; }, kLimit))
            fail("the main loop stands still");
        if (m_bEnded)
            return -1;
        const double start = m_loop.now();
        m_model.StopWalking();
        runUntilPolled([&] { return threadCount() <= before; });
        const double took = m_loop.now() - start;
        if (!m_loop.runUntil([this] { return m_bEnded; }, kLimit))
            fail("the stopped scan does not end");
        m_model.ClearResultsTree();
        waitForThreads();
        return took;
    }

private:
    void runUntilPolled(const std::function<bool()>& condition) {
        bool holds = false;
        const std::function<void()> poll = [&] {
            holds = condition();
            if (!holds)
                m_loop.callLater(0.0005, poll);
        };
        poll();
        if (!m_loop.runUntil([&holds] { return holds; }, kLimit))
            fail("threads of a scan do not end");
    }

    /// Nothing of one run may weigh on the next.
    void waitForThreads() {
        runUntilPolled([] { return threadCount() == 1; });
    }

    ThreadMainLoop m_loop;
    NotificationCentre m_notifications;
    FakeVolumes m_volumes;
    CModel m_model;
    bool m_bEnded = false;
};

/// Medians over the rounds of a scan and the bare walk in turn.
struct Comparison {
    Cost bare;
    Cost scan;
    ScanRun last;
    double longestTurn = 0; ///< Seconds: the median of each round's longest.
    double usualTurn = 0;   ///< Seconds: the median of each round's 99th percentile.
    double freeing = 0;     ///< Seconds.
};

Comparison compare(const std::string& path, int rounds) {
    Scanner scanner(std::make_shared<LinuxCatalogue>());
    // Warms the system's caches, too.
    if (bareWalk(path, kThreads).entries == 0)
        fail("there is nothing in " + path);
    std::vector<double> bareWall, bareCpu, scanWall, scanCpu, longest, usual, freeing;
    Comparison result;
    for (int round = 0; round < rounds; ++round) {
        const CostMeter meter;
        const BareWalkResult bare = bareWalk(path, kThreads);
        const Cost cost = meter.cost();
        bareWall.push_back(cost.wall);
        bareCpu.push_back(cost.cpu);
        result.last = scanner.scan(path);
        if (result.last.bytes != bare.bytes)
            fail("the scan's total of " + path + " is not the sum of the bare walk");
        scanWall.push_back(result.last.cost.wall);
        scanCpu.push_back(result.last.cost.cpu);
        longest.push_back(quantile(result.last.turns, 1));
        usual.push_back(quantile(result.last.turns, 0.99));
        freeing.push_back(result.last.freeing);
    }
    result.bare = {median(bareWall), median(bareCpu)};
    result.scan = {median(scanWall), median(scanCpu)};
    result.longestTurn = median(longest);
    result.usualTurn = median(usual);
    result.freeing = median(freeing);
    return result;
}

std::string remarkOn(double scan, double bare) {
    return text(scan, 3) + " s against " + text(bare, 3) + " s";
}

void printRatio(const std::string& what, double target, double bare, double scan) {
    printFigure(what, target, scan / bare, "x", remarkOn(scan, bare));
}

/// The targets are meant for a tree of a million files; smaller ones are told for comparison.
void benchTree(const std::string& name, const std::string& path, int rounds) {
    const Comparison result = compare(path, rounds);
    const std::string entries = std::to_string(result.last.entries) + " entries in the tree";
    if (result.last.entries < 1'000'000) {
        printMeasure(name + ": scan, wall against bare walk", result.scan.wall / result.bare.wall, "x",
                     remarkOn(result.scan.wall, result.bare.wall));
        printMeasure(name + ": memory an entry", result.last.bytesPerEntry, "bytes", entries);
        printMeasure(name + ": longest turn of the main loop", result.longestTurn * kMillis, "ms");
        return;
    }
    printRatio(name + ": scan, wall against bare walk", 1.20, result.bare.wall, result.scan.wall);
    printRatio(name + ": scan, CPU against bare walk", 1.20, result.bare.cpu, result.scan.cpu);
    printFigure(name + ": memory an entry", 74, result.last.bytesPerEntry, "bytes", entries);
    printFigure(name + ": longest turn of the main loop", 16, result.longestTurn * kMillis, "ms",
                std::to_string(result.last.turns.size()) + " turns");
    printFigure(name + ": 99 of 100 turns within", 8, result.usualTurn * kMillis, "ms");
    printFigure(name + ": freeing the tree, main thread", 4, result.freeing * kMillis, "ms");
}

void benchWide(const std::string& name, const std::string& path, int rounds) {
    const Comparison result = compare(path, rounds);
    printRatio(name + ": scan, wall against bare walk", 1.40, result.bare.wall, result.scan.wall);
    printFigure(name + ": longest turn of the main loop", 16, result.longestTurn * kMillis, "ms");
}

void benchChain(const std::string& name, const std::string& path, int rounds) {
    const Comparison result = compare(path, rounds);
    printFigure(name + ": scan", 0.3, result.scan.wall, "s", "bare walk " + text(result.bare.wall, 3) + " s");
}

void benchCancel(const std::string& name, const std::string& path, int rounds) {
    Scanner scanner(std::make_shared<LinuxCatalogue>());
    const ScanRun first = scanner.scan(path);
    if (first.entries == 0)
        fail("there is nothing in " + path);
    const double whole = first.cost.wall;
    std::vector<double> took;
    for (int round = 0; round < rounds; ++round) {
        // At another moment of the scan each time.
        const double seconds = scanner.cancelAfter(path, whole * 0.8 * (round + 1) / (rounds + 1));
        if (seconds >= 0)
            took.push_back(seconds);
    }
    if (took.empty())
        fail("no scan of " + path + " could be stopped in time");
    printFigure(name + ": cancel to the last thread's end, worst", 100, quantile(took, 1) * kMillis, "ms",
                std::to_string(took.size()) + " cancels");
}

ScanRun scanLargeTree(std::uint64_t entries) {
    const auto disk = std::make_shared<MemoryDisk>();
    disk->addGenerated("/large", std::make_shared<LargeTree>(entries), 0);
    return Scanner(disk).scan("/large");
}

void benchMemory(int rounds) {
    constexpr std::uint64_t million = 1'000'000;
    std::vector<double> one, five;
    ScanRun lastOne, lastFive;
    for (int round = 0; round < rounds; ++round) {
        lastOne = scanLargeTree(million);
        one.push_back(lastOne.cost.wall / static_cast<double>(lastOne.entries));
        lastFive = scanLargeTree(5 * million);
        five.push_back(lastFive.cost.wall / static_cast<double>(lastFive.entries));
    }
    constexpr double nanos = 1e9;
    printFigure("time an entry, 5 million against 1 million", 1.10, median(five) / median(one), "x",
                text(median(five) * nanos, 0) + " ns against " + text(median(one) * nanos, 0) + " ns");
    printFigure("memory an entry, 5 million against 1 million", 1.10,
                lastFive.bytesPerEntry / lastOne.bytesPerEntry, "x",
                text(lastFive.bytesPerEntry, 1) + " bytes against " + text(lastOne.bytesPerEntry, 1));
    std::vector<double> longest;
    ScanRun ten;
    for (int round = 0; round < rounds; ++round) {
        ten = scanLargeTree(10 * million);
        longest.push_back(quantile(ten.turns, 1));
    }
    printFigure("10 million entries: longest turn of the main loop", 33, median(longest) * kMillis, "ms",
                text(ten.cost.wall, 2) + " s for " + std::to_string(ten.entries) + " entries");
}

int usage() {
    std::fputs("Usage: veltrano_scan_bench tree|wide|chain|cancel NAME PATH ROUNDS\n"
               "       veltrano_scan_bench memory ROUNDS\n"
               "Prints rows of what, at most, measured. The trees come from veltrano_test_tree.\n",
               stderr);
    return 2;
}

int readRounds(const char* argument) {
    int rounds = 0;
    std::from_chars(argument, argument + std::strlen(argument), rounds);
    if (rounds < 1)
        fail("ROUNDS must be a number above 0");
    return rounds;
}

int runBench(int count, char** arguments) {
    const std::string workload = count > 1 ? arguments[1] : "";
    if (workload == "memory" && count == 3) {
        benchMemory(readRounds(arguments[2]));
        return 0;
    }
    const std::vector<std::pair<std::string, void (*)(const std::string&, const std::string&, int)>> benches =
        {{"tree", benchTree}, {"wide", benchWide}, {"chain", benchChain}, {"cancel", benchCancel}};
    for (const auto& [name, bench] : benches) {
        if (workload == name && count == 5) {
            bench(arguments[2], arguments[3], readRounds(arguments[4]));
            return 0;
        }
    }
    return usage();
}

} // namespace

} // namespace veltrano

int main(int count, char** arguments) {
    return veltrano::runBench(count, arguments);
}
