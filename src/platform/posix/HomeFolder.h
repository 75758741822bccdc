#pragma once

#include <optional>
#include <string>

namespace veltrano {

/// The user's home folder, an absolute path in bytes: as the session tells it in HOME, else as the system's
/// list of users has it, else "/". To be asked before any thread changes the environment.
[[nodiscard]] std::string homeFolder();

/// The home folder of a user by name, as the system's list of users has it; nothing for a user it does not
/// know. May take long where the list is kept on a server.
[[nodiscard]] std::optional<std::string> homeFolderOfUser(const std::string& user);

} // namespace veltrano
