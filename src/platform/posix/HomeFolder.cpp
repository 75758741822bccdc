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

} // namespace veltrano
