#include "platform/posix/PosixFileActions.h"

#include <string>
#include <sys/stat.h>

namespace veltrano {

bool PosixFileActions::fileExistsAtPath(std::string_view path) const {
    struct stat facts {};
    // The system would take a NUL for the end and answer for another path.
    return path.find('\0') == std::string_view::npos && ::stat(std::string(path).c_str(), &facts) == 0;
}

} // namespace veltrano
