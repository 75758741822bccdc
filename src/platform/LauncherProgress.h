#pragma once

#include <optional>

namespace veltrano {

/// The bar that a dock or task list shows on the program's own entry. Where the desktop has none, nothing
/// happens. Returns at once. Lives as long as the program; main thread.
class LauncherProgress {
public:
    virtual ~LauncherProgress() = default;

    /// A fraction from 0 to 1; nothing takes the bar away.
    virtual void setProgress(std::optional<double> fraction) = 0;
};

} // namespace veltrano
