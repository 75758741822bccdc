#include "platform/linux/LinuxScanFacts.h"

#include "platform/linux/MountTable.h"
#include "platform/posix/HomeFolder.h"

#include <unistd.h>

#include <cstdlib>
#include <utility>

namespace veltrano {

namespace {

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

std::string homeDirectory() {
    std::string home = homeFolder();
    while (home.size() > 1 && home.back() == '/')
        home.pop_back();
    return home;
}

} // namespace

std::vector<std::string> mountPointsOf(std::string_view mountTable) {
    std::vector<std::string> points;
    for (MountEntry& entry : parseMountTable(mountTable))
        points.push_back(std::move(entry.mountPoint));
    return points;
}

std::vector<std::string> trashFoldersOf(std::string_view dataFolder,
                                        const std::vector<std::string>& mountPoints, unsigned user) {
    std::vector<std::string> folders;
    if (!dataFolder.empty())
        folders.push_back(std::string(dataFolder) + "/Trash");
    for (const std::string& point : mountPoints)
        folders.push_back((point == "/" ? "" : point) + "/.Trash-" + std::to_string(user));
    return folders;
}

ScanFacts linuxScanFacts() {
    ScanFacts facts;
    facts.usersFolderName = "home";
    facts.homeDirectory = homeDirectory();

    std::string dataFolder = environment("XDG_DATA_HOME");
    if (!dataFolder.starts_with('/')) // a relative one is to be ignored
        dataFolder = (facts.homeDirectory == "/" ? "" : facts.homeDirectory) + "/.local/share";
    const auto mountPoints = mountPointsOf(readMountTable("/proc/self/mountinfo"));
    facts.trashFolders = trashFoldersOf(dataFolder, mountPoints, ::getuid());
    return facts;
}

} // namespace veltrano
