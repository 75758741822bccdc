#include "tree/PathComponents.h"

#include <algorithm>

namespace veltrano {

std::vector<std::string_view> pathComponents(std::string_view path) {
    std::vector<std::string_view> components;
    if (path.starts_with('/'))
        components.push_back(path.substr(0, 1));
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        if (end > start)
            components.push_back(path.substr(start, end - start));
        start = end + 1;
    }
    return components;
}

std::string_view lastPathComponent(std::string_view path) {
    const std::size_t last = path.find_last_not_of('/');
    if (last == std::string_view::npos)
        return path.substr(0, 1);
    path = path.substr(0, last + 1);
    return path.substr(path.rfind('/') + 1); // npos + 1 is 0: the whole path.
}

void appendPathComponent(std::string& path, std::string_view name) {
    if (name.empty())
        return;
    if (!path.empty() && !path.ends_with('/'))
        path += '/';
    path += name;
}

bool isFolderParent(std::string_view folder, const std::vector<std::string_view>* withFolderComps,
                    std::string_view toFile, const std::vector<std::string_view>* withFileComps) {
    if (!toFile.starts_with(folder))
        return false;
    std::vector<std::string_view> ownFolderComps;
    std::vector<std::string_view> ownFileComps;
    if (!withFolderComps)
        ownFolderComps = pathComponents(folder);
    if (!withFileComps)
        ownFileComps = pathComponents(toFile);
    const auto& folderComps = withFolderComps ? *withFolderComps : ownFolderComps;
    const auto& fileComps = withFileComps ? *withFileComps : ownFileComps;
    if (folderComps.empty() || fileComps.size() <= folderComps.size())
        return false;
    return folderComps.back() == fileComps[folderComps.size() - 1];
}

} // namespace veltrano
