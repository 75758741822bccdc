#include "platform/MountFixtures.h"

#include <gtest/gtest.h>

namespace veltrano {

std::vector<MountEntry> recordedTable(const std::string& name) {
    const std::string text = readMountTable(std::string(VELTRANO_PLATFORM_FIXTURES) + "/mounts/" + name);
    EXPECT_NE(text, "") << name;
    return parseMountTable(text);
}

std::vector<std::string> pathsOf(const std::vector<MountEntry>& mounts) {
    std::vector<std::string> paths;
    for (const MountEntry& mount : mounts)
        paths.push_back(mount.mountPoint);
    return paths;
}

} // namespace veltrano
