#include "platform/linux/LinuxFileDates.h"

#include "platform/linux/MountTable.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace veltrano {

namespace {

FileDates::Date dateFrom(const FolderFacts& facts) {
    const CatalogueDate& date = facts.pathFacts.modified;
    if (facts.answer != FolderAnswer::Folder || date == CatalogueDate{})
        return std::nullopt;
    const std::int64_t clock = (std::int64_t{date.highSeconds} << 32) + date.lowSeconds;
    return std::chrono::sys_seconds(std::chrono::seconds(clock - kCatalogueEpochOffset));
}

bool isAtOrBelow(const std::string& path, const std::string& mountPoint) {
    return path.starts_with(mountPoint) &&
           (mountPoint == "/" || path.size() == mountPoint.size() || path[mountPoint.size()] == '/');
}

} // namespace

VolumeAnswer askModification(const std::string& path) {
    VolumeAnswer answer;
    struct statx facts {};
    if (::statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, STATX_MTIME, &facts) != 0)
        return answer;
    answer.isReadable = true;
    if ((facts.stx_mask & STATX_MTIME) != 0)
        answer.pathFacts.modified =
            catalogueDateFromUnixTime(facts.stx_mtime.tv_sec, facts.stx_mtime.tv_nsec);
    return answer;
}

std::string mountPointAbove(const std::string& path) {
    std::string longest;
    for (const MountEntry& mount : parseMountTable(readMountTable("/proc/self/mountinfo"))) {
        if (mount.mountPoint.size() > longest.size() && isAtOrBelow(path, mount.mountPoint))
            longest = mount.mountPoint;
    }
    return longest;
}

LinuxFileDates::LinuxFileDates(MainLoop& mainLoop, MountPointOf mountPointOf, VolumeQuestions::Ask ask,
                               std::chrono::milliseconds patience)
    : m_mountPointOf(std::move(mountPointOf)), m_questions(mainLoop, std::move(ask), patience) {
    m_questions.addObserver(
        [this](const std::string& path, const FolderFacts& facts) { takeLateAnswer(path, facts); });
}

FileDates::Date LinuxFileDates::modificationDate(const std::string& path) {
    return ask(path, m_mountPointOf(path)).value_or(std::nullopt);
}

void LinuxFileDates::observe(LateAnswer observer) {
    m_observer = std::move(observer);
}

/// Nothing at all while the mount is silent.
std::optional<FileDates::Date> LinuxFileDates::ask(const std::string& path, const std::string& mountPoint) {
    if (const auto silent = m_silent.find(mountPoint); silent != m_silent.end()) {
        silent->second.wanted = path;
        return std::nullopt;
    }
    const FolderFacts facts = m_questions.ask({path}).front();
    if (facts.answer == FolderAnswer::Silent) {
        m_silent[mountPoint] = {.asked = path, .wanted = {}};
        return std::nullopt;
    }
    return dateFrom(facts);
}

void LinuxFileDates::takeLateAnswer(const std::string& path, const FolderFacts& facts) {
    // Two mount points have the same path open where one was mounted over the other meanwhile.
    std::vector<std::pair<std::string, std::string>> next; // mount point and path
    std::erase_if(m_silent, [&](const auto& entry) {
        const auto& [mountPoint, silent] = entry;
        if (silent.asked != path)
            return false;
        if (!silent.wanted.empty() && silent.wanted != path)
            next.emplace_back(mountPoint, silent.wanted);
        return true;
    });
    tell(path, dateFrom(facts));
    for (const auto& [mountPoint, wanted] : next) {
        if (const auto date = ask(wanted, mountPoint))
            tell(wanted, *date);
    }
}

void LinuxFileDates::tell(const std::string& path, Date date) {
    const LateAnswer observer = m_observer; // It may be replaced while it is told.
    if (observer)
        observer(path, date);
}

} // namespace veltrano
