#include "scan/TrashFolders.h"

#include "tree/FileSystemItem.h"
#include "tree/PathComponents.h"

namespace veltrano {

TrashFolders::TrashFolders(const std::vector<std::string>& paths) : m_paths(paths.begin(), paths.end()) {
    for (const std::string& path : m_paths)
        m_names.emplace(lastPathComponent(path));
}

bool TrashFolders::contains(const FileSystemItem& parent, std::string_view name) const {
    if (m_names.find(name) == m_names.end())
        return false;
    std::string path = parent.fullPath();
    appendPathComponent(path, name);
    return contains(path);
}

} // namespace veltrano
