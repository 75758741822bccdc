#include "platform/linux/VolumeReader.h"

#include "platform/linux/ListedMounts.h"
#include "platform/linux/StartupDiskScript.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

namespace veltrano {

namespace {

/// The script is asked like a volume, since it may hang as well. No mount has this key.
const VolumeQuestions::Key kScriptKey{0, ""};

VolumeQuestions::Key keyOf(const MountEntry& mount) {
    return {mount.id, mount.mountPoint};
}

/// The file system that a mount shows a part or all of.
auto deviceOf(const MountEntry& mount) {
    return std::tuple(mount.major, mount.minor, mount.source);
}

VolumeQuestions::Ask withScript(VolumeQuestions::Ask ask, std::string script,
                                std::chrono::milliseconds limit) {
    return [ask = std::move(ask), script = std::move(script), limit](const std::string& path) {
        if (path != kScriptKey.second)
            return ask(path);
        VolumeAnswer answer;
        answer.freeSize = runStartupDiskScript(script, limit);
        answer.isReadable = true;
        return answer;
    };
}

/// What a volume without a label is called.
std::string nameByPath(const std::string& path) {
    return path == "/" ? "File System" : path.substr(path.rfind('/') + 1);
}

VolumeFacts factsOf(const MountEntry& mount, SysfsDevices::Description description) {
    VolumeFacts facts;
    facts.path = mount.mountPoint;
    facts.name = description.label.value_or(nameByPath(mount.mountPoint));
    facts.fileSystemType = mount.fileSystemType;
    facts.isRemovable = description.isRemovable;
    facts.isWritable = !hasOption(mount.options, "ro") && !hasOption(mount.superOptions, "ro");
    facts.isUnmountable = mount.mountPoint != "/";
    facts.device = std::move(description.facts);
    return facts;
}

} // namespace

VolumeReader::VolumeReader(Options options, std::function<void()> listed)
    : m_options(std::move(options)),
      m_listed(std::move(listed)),
      m_devices(m_options.places),
      m_questions(withScript(m_options.ask, m_options.startupDiskScript, m_options.scriptLimit), [this] {
          const std::lock_guard guard(m_mutex);
          m_bLate = true;
          m_changed.notify_all();
      }) {
    m_thread = std::thread([this] { run(); });
}

VolumeReader::~VolumeReader() {
    {
        const std::lock_guard guard(m_mutex);
        m_bStopped = true;
        m_changed.notify_all();
    }
    m_questions.stop();
    m_thread.join();
}

std::uint64_t VolumeReader::request() {
    const std::lock_guard guard(m_mutex);
    m_changed.notify_all();
    return ++m_nTicket;
}

std::optional<VolumeListing> VolumeReader::take() {
    const std::lock_guard guard(m_mutex);
    return std::exchange(m_listing, std::nullopt);
}

std::optional<VolumeListing> VolumeReader::takeWithin(std::chrono::milliseconds limit) {
    std::unique_lock lock(m_mutex);
    m_changed.wait_until(lock, std::chrono::steady_clock::now() + limit,
                         [this] { return m_listing.has_value(); });
    return std::exchange(m_listing, std::nullopt);
}

void VolumeReader::run() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_bStopped || m_bLate || m_nRead < m_nTicket; });
        if (m_bStopped)
            return;
        m_bLate = false;
        const std::uint64_t ticket = m_nTicket;
        lock.unlock();
        VolumeListing listing = read();
        listing.ticket = ticket;
        lock.lock();
        m_nRead = ticket;
        m_listing = std::move(listing);
        m_changed.notify_all();
        lock.unlock();
        m_listed();
        lock.lock();
    }
}

VolumeListing VolumeReader::read() {
    auto table = parseMountTable(readMountTable(m_options.mountTable));
    // There is always a mount. A table that can't be read, for want of a descriptor perhaps, tells nothing,
    // and volumes must not seem to be gone.
    if (!table.empty())
        m_table = std::move(table);
    const auto mounts = listedMounts(m_table);
    std::vector<VolumeQuestions::Key> keys;
    for (const MountEntry& mount : mounts)
        keys.push_back(keyOf(mount));
    if (!m_options.startupDiskScript.empty())
        keys.push_back(kScriptKey);
    keepAnswers(m_questions.ask(keys, m_options.patience), keys);

    // Where there are several, the last one lies on top.
    const auto root = std::find_if(m_table.rbegin(), m_table.rend(),
                                   [](const MountEntry& mount) { return mount.mountPoint == "/"; });
    std::set<std::tuple<unsigned, unsigned, std::string>> labelled;
    VolumeListing listing;
    for (const MountEntry& mount : mounts) {
        const auto answer = m_answers.find(keyOf(mount));
        const bool hasAnswered = answer != m_answers.end();
        if (hasAnswered && (!answer->second.isReadable || answer->second.size == 0))
            continue;
        auto description = m_devices.describe(mount);
        // The label is that of the whole file system; further subvolumes go by their folders.
        if (description.label && !labelled.insert(deviceOf(mount)).second)
            description.label.reset();
        VolumeFacts facts = factsOf(mount, std::move(description));
        facts.device.isBootVolume = root != m_table.rend() && deviceOf(*root) == deviceOf(mount);
        if (hasAnswered) {
            facts.hasAnswered = true;
            facts.size = answer->second.size;
            facts.freeSize = answer->second.freeSize;
            facts.nodes = answer->second.nodes;
            facts.pathFacts = answer->second.pathFacts;
        }
        listing.volumes.push_back(std::move(facts));
        listing.mounts.push_back(mount.id);
    }
    if (const auto script = m_answers.find(kScriptKey); script != m_answers.end())
        listing.startupDiskFreeSize = script->second.freeSize;
    return listing;
}

/// A volume that told its sizes once and now fails, as one of a server that restarts, keeps them.
void VolumeReader::keepAnswers(const VolumeQuestions::Answers& heard,
                               const std::vector<VolumeQuestions::Key>& keys) {
    for (const auto& [key, answer] : heard) {
        const auto known = m_answers.find(key);
        if (known == m_answers.end() || answer.isReadable || !known->second.isReadable)
            m_answers[key] = answer;
    }
    const std::set<VolumeQuestions::Key> wanted(keys.begin(), keys.end());
    std::erase_if(m_answers, [&](const auto& known) { return !wanted.contains(known.first); });
}

} // namespace veltrano
