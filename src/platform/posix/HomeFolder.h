#pragma once

#include <string>

namespace veltrano {

/// The user's home folder, an absolute path in bytes: as the session tells it in HOME, else as the system's
/// list of users has it, else "/". To be asked before any thread changes the environment.
[[nodiscard]] std::string homeFolder();

} // namespace veltrano
