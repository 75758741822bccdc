#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace veltrano {

/// Asks when files were last changed, without ever waiting long for a disk that sleeps or a server that is
/// away. Main thread; outlives whoever observes it. Paths are bytes.
class FileDates {
public:
    using Date = std::optional<std::chrono::sys_seconds>; ///< Nothing where there is no file or no date.
    using LateAnswer = std::function<void(const std::string& path, Date date)>;

    virtual ~FileDates() = default;

    /// When the content of what lies at the path was last changed; a link stands for itself. Waits a moment;
    /// nothing, too, where no answer has come by then.
    [[nodiscard]] virtual Date modificationDate(const std::string& path) = 0;

    /// Tells the observer, in a later turn, what a path answers after all. Of several that are waited for it
    /// may be only the one that was asked for last. One observer, replaced by the next.
    virtual void observe(LateAnswer observer) = 0;
};

} // namespace veltrano
