#pragma once

#include "platform/FileActions.h"

namespace veltrano {

/// File actions by the calls of POSIX. No state.
class PosixFileActions final : public FileActions {
public:
    [[nodiscard]] bool fileExistsAtPath(std::string_view path) const override;
};

} // namespace veltrano
