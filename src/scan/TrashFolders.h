#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace veltrano {

class FileSystemItem;

/// Knows the folders that count as trash by their place, beside those that do by their name. Built once for a
/// model; asking is safe from any thread.
class TrashFolders {
public:
    explicit TrashFolders(const std::vector<std::string>& paths);

    /// Whether the path is that of a trash folder.
    bool contains(std::string_view path) const { return m_paths.find(path) != m_paths.end(); }

    /// The same for a folder by its name below `parent`. The path is put together only if the name is one
    /// that a trash folder has, which almost no folder's is.
    bool contains(const FileSystemItem& parent, std::string_view name) const;

private:
    std::set<std::string, std::less<>> m_paths;
    std::set<std::string, std::less<>> m_names;
};

} // namespace veltrano
