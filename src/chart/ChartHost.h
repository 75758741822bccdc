#pragma once

#include <QString>

#include <optional>
#include <string>
#include <string_view>

namespace veltrano {

class VolumeFolderProtocol;

/// What the chart asks of the window it lives in. Implemented by the main controller; main thread. A host
/// that lacks a panel need not answer for it.
class ChartHost {
public:
    virtual ~ChartHost() = default;

    /// The path under scan, bytes; nothing when no scan runs.
    virtual std::optional<std::string> getProcessingVol() const = 0;

    /// A name or path, bytes, as it is to be shown.
    virtual QString getDisplayText(std::string_view bytes) const = 0;

    /// Whether nothing is collected.
    virtual bool isCollectionEmpty() const { return true; }
    virtual void hideCollectionView(bool /*hide*/) {}

    // The chart shows another root. The panels beside it follow.
    virtual void tryHideTable25() {}
    virtual void ReinitSortedList() {}
    virtual void ReinitBiggestFilesArray() {}
    virtual void showRightBiggestView() {}

    /// The path control is to show where this root lies; null empties it.
    virtual void setPathControlTextForItem(VolumeFolderProtocol* /*item*/) {}
};

} // namespace veltrano
