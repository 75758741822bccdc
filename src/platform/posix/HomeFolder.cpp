#include "platform/posix/HomeFolder.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace veltrano {

std::string homeFolder() {
    const char* const told = std::getenv("HOME");
    if (told != nullptr && told[0] == '/')
        return told;
    const passwd* const user = ::getpwuid(::getuid());
    return user != nullptr && user->pw_dir != nullptr && user->pw_dir[0] == '/' ? user->pw_dir : "/";
}

std::optional<std::string> homeFolderOfUser(const std::string& user) {
    // The system would take a NUL for the end and answer for another user.
    if (user.empty() || user.find('\0') != std::string::npos)
        return std::nullopt;
    const passwd* const found = ::getpwnam(user.c_str());
    if (found == nullptr || found->pw_dir == nullptr || found->pw_dir[0] != '/')
        return std::nullopt;
    return found->pw_dir;
}

} // namespace veltrano
