#include "platform/posix/PosixFileActions.h"

#include <string>
#include <sys/stat.h>

namespace veltrano {

bool PosixFileActions::fileExistsAtPath(std::string_view path) const {
    // The system would take a NUL for the end and answer for another path.
    if (path.empty() || path.find('\0') != std::string_view::npos)
        return false;
    struct stat facts {};
    return ::stat(std::string(path).c_str(), &facts) == 0;
}

} // namespace veltrano
