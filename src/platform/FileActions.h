#pragma once

#include <string_view>

namespace veltrano {

/// What the program asks of files by path, other than reading folders in bulk. Main thread; paths are bytes.
class FileActions {
public:
    virtual ~FileActions() = default;

    /// Whether something is at the path; a link that leads nowhere is nothing.
    [[nodiscard]] virtual bool fileExistsAtPath(std::string_view path) const = 0;
};

} // namespace veltrano
