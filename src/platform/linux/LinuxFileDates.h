#pragma once

#include "platform/FileDates.h"
#include "platform/MainLoop.h"
#include "platform/linux/LinuxFolderQuestions.h"

#include <chrono>
#include <functional>
#include <map>
#include <string>

namespace veltrano {

/// What lies at a path and when it was changed, links not followed; blocks for as long as its file system
/// does. Its answer is readable if something is there.
[[nodiscard]] VolumeAnswer askModification(const std::string& path);

/// The mount point that a path lies under, by its letters alone; empty for a path under none. Looks into the
/// mount table and at no mount.
[[nodiscard]] std::string mountPointAbove(const std::string& path);

/// Asks for dates on threads that nobody waits for. A mount that keeps silent has one question open, however
/// many are asked: the newest of the others is put when that one is answered. So a dead server costs one
/// thread and one moment of waiting, and other mounts answer as before. Main thread; the main loop outlives
/// it.
class LinuxFileDates final : public FileDates {
public:
    /// Files on a disk that is awake answer in a small part of this.
    static constexpr std::chrono::milliseconds kPatience{8};
    using MountPointOf = std::function<std::string(const std::string& path)>;

    explicit LinuxFileDates(MainLoop& mainLoop, MountPointOf mountPointOf = mountPointAbove,
                            VolumeQuestions::Ask ask = askModification,
                            std::chrono::milliseconds patience = kPatience);

    [[nodiscard]] Date modificationDate(const std::string& path) override;
    void observe(LateAnswer observer) override;

private:
    /// A mount that has not answered yet.
    struct Silent {
        std::string asked;  ///< The path whose answer is waited for.
        std::string wanted; ///< The one to ask next; empty for none.
    };

    std::optional<Date> ask(const std::string& path, const std::string& mountPoint);
    void takeLateAnswer(const std::string& path, const FolderFacts& facts);
    void tell(const std::string& path, Date date);

    const MountPointOf m_mountPointOf;

    LateAnswer m_observer{};
    std::map<std::string, Silent> m_silent{}; ///< By mount point.
    LinuxFolderQuestions m_questions;         ///< About files too: what is there counts as a folder.
};

} // namespace veltrano
