#pragma once

#include <algorithm>
#include <cstdint>

namespace veltrano {

/// How far a scan is, in thousandths, as a value with its rules. The main controller owns one and shows it.
struct ScanProgress {
    static constexpr int kMinimum = 0;
    static constexpr int kMaximum = 1000;
    static constexpr int kFinishFrom = 500;        ///< The finish run begins at least here.
    static constexpr int kFinishStep = 75;         ///< And rises by this at each of its steps,
    static constexpr double kFinishInterval = 0.1; ///< which are this far apart, seconds.

    int value = kMinimum;
    bool indeterminate = false;

    /// Bytes counted against the bytes occupied, truncated to whole thousandths. Without occupied bytes
    /// nothing is known: the value stays, and the answer is false.
    bool count(double counted, std::int64_t occupied) {
        if (occupied <= 0)
            return false;
        const double share = counted / static_cast<double>(occupied);
        value = static_cast<int>(std::clamp<double>(share * kMaximum, kMinimum, kMaximum));
        return true;
    }

    /// The next step of the finish run; above kMaximum the run is over.
    int nextFinishValue() const { return std::max(kFinishFrom, value + kFinishStep); }
};

} // namespace veltrano
