#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veltrano {

/// The components of a path, views into it: "/" first for an absolute one, then each name; empty names
/// between separators do not count. Nothing for an empty path.
[[nodiscard]] std::vector<std::string_view> pathComponents(std::string_view path);

/// The last name of a path; "/" for the root, the path itself where it has no separator.
[[nodiscard]] std::string_view lastPathComponent(std::string_view path);

/// A path and a name below it, with exactly one separator between them; the path itself for an empty name.
void appendPathComponent(std::string& path, std::string_view name);

/// Whether the file lies below the folder, told by components: a folder named b does not contain what lies in
/// its sibling bc. A path is not its own parent. Components that are at hand may be passed, else null.
[[nodiscard]] bool isFolderParent(std::string_view folder,
                                  const std::vector<std::string_view>* withFolderComps,
                                  std::string_view toFile,
                                  const std::vector<std::string_view>* withFileComps);

} // namespace veltrano
