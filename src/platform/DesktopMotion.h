#pragma once

#include <functional>

namespace veltrano {

/// Whether the user has asked the desktop for less motion. Nobody waits for the desktop: what it says comes
/// later, or never where there is none to ask. Lives as long as the program; main thread.
class DesktopMotion {
public:
    /// `reduced`: whether what moves by itself is to show its end at once.
    using Observer = std::function<void(bool reduced)>;

    virtual ~DesktopMotion() = default;

    /// Tells the observer, never from within this call, once the desktop has said what it wants and each time
    /// that changes. One observer, replaced by the next; an empty one hears nothing.
    virtual void observe(Observer observer) = 0;
};

} // namespace veltrano
