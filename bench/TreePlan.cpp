#include "bench/TreePlan.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace veltrano {

namespace {

constexpr std::array<std::string_view, 48> kWords = {
    "report", "invoice", "meeting", "notes",  "draft",  "summary", "budget",  "photo",   "holiday", "recipe",
    "module", "handler", "parser",  "widget", "buffer", "socket",  "session", "account", "config",  "default",
    "index",  "main",    "test",    "util",   "common", "core",    "shared",  "public",  "private", "static",
    "theme",  "icon",    "font",    "locale", "plugin", "service", "client",  "server",  "backup",  "archive",
    "music",  "album",   "track",   "video",  "scene",  "lecture", "thesis",  "letter"};

constexpr std::array<std::string_view, 20> kEndings = {
    ".txt",  ".pdf", ".cpp", ".h",   ".o",  ".js",  ".json", ".py",  ".png", ".jpg",
    ".html", ".css", ".md",  ".xml", ".so", ".zip", ".mp3",  ".mkv", ".log", ".db"};

constexpr std::array<std::string_view, 8> kHiddenFolders = {".git",    ".cache", ".config", ".local",
                                                            ".vscode", ".npm",   ".svn",    ".m2"};

/// How the files of one folder are called.
enum class Naming { Words, Camera, Hashes };

class RealisticTree {
public:
    RealisticTree(TreePlanSink& sink, std::uint64_t seed) : m_sink(sink), m_random(seed) {}

    void fillFolder(std::uint64_t files, int depth);

private:
    void addFiles(std::uint64_t count);
    std::vector<std::uint64_t> shares(std::uint64_t files);
    std::string fileName(Naming naming, std::uint64_t number);
    std::string folderName(std::uint64_t number, std::uint64_t files);
    std::int64_t fileSize();
    std::string_view word() { return kWords[m_random.below(kWords.size())]; }

    TreePlanSink& m_sink;
    PlanRandom m_random;
};

constexpr std::uint64_t kLargestPackage = 1000; // files

/// Deeper than this all that is left goes into one folder.
constexpr int kLargestDepth = 40;

void RealisticTree::fillFolder(std::uint64_t files, int depth) {
    const std::uint64_t leafLimit = 4 + m_random.below(10) * m_random.below(10);
    if (files <= leafLimit || depth >= kLargestDepth) {
        addFiles(files);
        return;
    }
    const std::uint64_t wished = m_random.oneIn(60) ? 200 + m_random.below(2000) : m_random.below(14);
    const std::uint64_t own = std::min(wished, files / 2);
    addFiles(own);
    std::uint64_t number = 0;
    for (const std::uint64_t share : shares(files - own)) {
        m_sink.enterFolder(folderName(number++, share));
        fillFolder(share, depth + 1);
        m_sink.leaveFolder();
    }
}

/// Splits the files into one to eight very unequal shares, and now and then one of nothing.
std::vector<std::uint64_t> RealisticTree::shares(std::uint64_t files) {
    const std::uint64_t wished = m_random.oneIn(5) ? 1 : 2 + m_random.below(7);
    const auto count = static_cast<std::size_t>(std::min(wished, 1 + files / 12));
    std::vector<std::uint64_t> weights(count);
    std::uint64_t sum = 0;
    for (std::uint64_t& weight : weights) {
        const std::uint64_t root = 1 + m_random.below(30);
        weight = root * root;
        sum += weight;
    }
    std::vector<std::uint64_t> result;
    std::uint64_t left = files;
    for (std::size_t index = 0; index + 1 < count; ++index) {
        const std::uint64_t share = std::min(left, files * weights[index] / sum);
        result.push_back(share);
        left -= share;
    }
    result.push_back(left);
    if (m_random.oneIn(20))
        result.push_back(0);
    return result;
}

void RealisticTree::addFiles(std::uint64_t count) {
    const std::uint64_t kind = m_random.below(10);
    const Naming naming = kind == 0 ? Naming::Hashes : kind == 1 ? Naming::Camera : Naming::Words;
    for (std::uint64_t number = 0; number < count; ++number) {
        const std::string name = fileName(naming, number);
        if (m_random.oneIn(100)) {
            m_sink.symbolicLink(name, "../" + std::string(word()));
            continue;
        }
        const std::int64_t size = fileSize();
        // Few have content, so that a million files fit into memory.
        m_sink.file(name, size, m_random.oneIn(16) ? std::min<std::int64_t>(size, 4096) : 0);
    }
}

/// From some hundred bytes to some hundred megabytes, each power of two less likely than the one before.
std::int64_t RealisticTree::fileSize() {
    int power = 7;
    while (power < 28 && m_random.below(100) < 72)
        ++power;
    const std::int64_t base = std::int64_t{1} << power;
    return base + static_cast<std::int64_t>(m_random.below(static_cast<std::uint64_t>(base)));
}

/// The number keeps the names of a folder apart.
std::string RealisticTree::fileName(Naming naming, std::uint64_t number) {
    if (naming == Naming::Camera)
        return "IMG_" + std::to_string(1000 + number) + ".JPG";
    if (naming == Naming::Hashes) {
        constexpr std::string_view digits = "0123456789abcdef";
        std::string name;
        for (int index = 0; index < 24; ++index)
            name += digits[m_random.below(16)];
        return name + std::to_string(number);
    }
    std::string name(word());
    for (std::uint64_t more = m_random.below(3); more > 0; --more)
        name.append("_").append(word());
    if (number > 0)
        name.append("-").append(std::to_string(number));
    return name.append(kEndings[m_random.below(kEndings.size())]);
}

/// `files` in it and below it: a package is never a large part of the tree.
std::string RealisticTree::folderName(std::uint64_t number, std::uint64_t files) {
    if (m_random.oneIn(40))
        return std::string(kHiddenFolders[m_random.below(kHiddenFolders.size())]) + std::to_string(number);
    std::string name(word());
    name += std::to_string(number);
    if (m_random.oneIn(200) && files < kLargestPackage)
        name += ".app";
    return name;
}

} // namespace

std::uint64_t PlanRandom::next() {
    // Steele, Lea and Flood's SplitMix: a counter and a mixing of its bits.
    m_nState += 0x9E3779B97F4A7C15;
    std::uint64_t value = m_nState;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
}

void planRealisticTree(TreePlanSink& sink, std::uint64_t files, std::uint64_t seed) {
    RealisticTree(sink, seed).fillFolder(files, 0);
}

void planWideFolder(TreePlanSink& sink, std::uint64_t files) {
    PlanRandom random(files);
    for (std::uint64_t number = 0; number < files; ++number)
        sink.file("entry-" + std::to_string(number), static_cast<std::int64_t>(random.below(100'000)), 0);
}

void planChain(TreePlanSink& sink, std::uint64_t folders) {
    for (std::uint64_t number = 0; number < folders; ++number) {
        sink.enterFolder("deeper-" + std::to_string(number));
        sink.file("file", 1, 1);
    }
    for (std::uint64_t number = 0; number < folders; ++number)
        sink.leaveFolder();
}

} // namespace veltrano
