#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veltrano {

// What is said about the space of a volume that could not be read. Pure functions; paths and names are bytes.

inline constexpr std::string_view kInaccessibleText = "Inaccessible Disk Space";
inline constexpr std::string_view kUnscannedText = "Unscanned Disk Space";

/// Whether homes come in that belong to the user who runs the program.
enum class IncludeCurUser { No, Yes };

/// Appends the names of the users in whose homes the paths lie, each once, in order of first appearance; a
/// path that is a home itself names nobody. Answers whether a name was added. `homeDirectory` is that of the
/// current user, whose name is its last component.
bool getUserNamesFromFolders(std::span<const std::string> paths, std::string_view inUsersFolder,
                             std::vector<std::string>& toNamesArray, IncludeCurUser includeCurUser,
                             std::string_view homeDirectory);

/// "Files of user: anna", "Files of users: anna, bert". At least one name.
[[nodiscard]] std::string filesOfUsersText(std::span<const std::string> names);

} // namespace veltrano
