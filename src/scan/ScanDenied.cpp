#include "scan/ScanDenied.h"

#include "tree/PathComponents.h"

#include <algorithm>

namespace veltrano {

bool getUserNamesFromFolders(std::span<const std::string> paths, std::string_view inUsersFolder,
                             std::vector<std::string>& toNamesArray, IncludeCurUser includeCurUser,
                             std::string_view homeDirectory) {
    const std::vector<std::string_view> users = pathComponents(inUsersFolder);
    const std::string_view currentUser = lastPathComponent(homeDirectory);
    bool added = false;
    for (const std::string& path : paths) {
        const std::vector<std::string_view> components = pathComponents(path);
        if (components.size() <= users.size() + 1 ||
            !isFolderParent(inUsersFolder, &users, path, &components))
            continue;
        const std::string_view name = components[users.size()];
        if (includeCurUser == IncludeCurUser::No && name == currentUser)
            continue;
        if (std::find(toNamesArray.begin(), toNamesArray.end(), name) != toNamesArray.end())
            continue;
        toNamesArray.emplace_back(name);
        added = true;
    }
    return added;
}

std::string filesOfUsersText(std::span<const std::string> names) {
    std::string text = names.size() == 1 ? "Files of user: " : "Files of users: ";
    text += names.front();
    for (const std::string& name : names.subspan(1))
        text += ", " + name;
    return text;
}

} // namespace veltrano
