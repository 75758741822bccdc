#pragma once

#include <QString>

namespace veltrano {

/// Where a progress indicator writes how long is left. Whoever implements it owns the place and outlives the
/// indicator, or takes itself out first. Main thread.
class ProgressTextField {
public:
    /// An empty text means that there is nothing to tell.
    virtual void setStringValue(const QString& text) = 0;
    /// Paints at once what has changed.
    virtual void display() = 0;

protected:
    ~ProgressTextField() = default;
};

} // namespace veltrano
