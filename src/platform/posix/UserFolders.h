#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veltrano {

/// The folder of the user's settings files, absolute, in bytes: XDG_CONFIG_HOME where that is an absolute
/// path, else ".config" in the home folder. To be asked before any thread changes the environment.
[[nodiscard]] std::string configFolder(const std::string& homeFolder);

/// The user's folder for downloads, absolute, in bytes, by the list of user folders ("user-dirs.dirs") that
/// the desktop keeps in the folder of settings files: "Downloads" in the home folder where the list is
/// missing or does not name it. Nothing where the list says the home folder itself, which is how a user has
/// none. Reads one small local file; whether the folder is there is not asked.
[[nodiscard]] std::optional<std::string> downloadsFolder(const std::string& homeFolder,
                                                         const std::string& configFolder);

/// What such a list says about one name, as "XDG_DOWNLOAD_DIR"; nothing where it says nothing that counts.
/// The last of several lines counts, as in a shell. The value is in double quotes, absolute or below "$HOME".
[[nodiscard]] std::optional<std::string> userFolderFromList(std::string_view list, std::string_view name,
                                                            const std::string& homeFolder);

} // namespace veltrano
