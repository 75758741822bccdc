#pragma once

#include <QString>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrano {

class FileSystemItem;
class TopLevelItem;
class VolumeFolderProtocol;

/// The two panels beside the chart that exclude each other.
enum class InfoSegment { Information = 0, BiggestFiles = 1 };

/// What the chart asks of the window it lives in. Implemented by the main controller; main thread. A host
/// that lacks a panel need not answer for it.
class ChartHost {
public:
    virtual ~ChartHost() = default;

    /// The path under scan, bytes; nothing when no scan runs.
    virtual std::optional<std::string> getProcessingVol() const = 0;

    /// A name or path, bytes, as it is to be shown.
    virtual QString getDisplayText(std::string_view bytes) const = 0;

    // The pointer on the chart.

    /// Whether sounds tell what is pointed at, and one of them: "Pop" or "Tink".
    virtual bool getPlaySound() const { return false; }
    virtual void playSound(std::string_view /*name*/) {}
    /// Cancels the running scan; starts one of the selected entry.
    virtual void stopAction() {}
    virtual void startAction() {}
    /// Selects the entry of a path, bytes, and answers it; null if there is none.
    virtual std::shared_ptr<TopLevelItem> selectVolumeByName(const std::optional<std::string>& /*path*/) {
        return nullptr;
    }

    // What the menus of the chart do outside of it. Paths are bytes.

    /// Shows the files in the file manager, or what it knows of them.
    virtual void showItems(const std::vector<std::string>& /*paths*/) {}
    virtual void showItemProperties(const std::vector<std::string>& /*paths*/) {}
    virtual bool isFolderFavorite(const FileSystemItem& /*item*/) const { return false; }
    virtual void addFolderToFavorite(const FileSystemItem& /*item*/) {}
    /// Which of the two panels is on show; nothing where there are none to choose from.
    virtual std::optional<InfoSegment> getInfoSegment() const { return std::nullopt; }
    virtual void switchInfoSegment(InfoSegment /*segment*/) {}

    /// Whether nothing is collected.
    virtual bool isCollectionEmpty() const { return true; }
    virtual void hideCollectionView(bool /*hide*/) {}

    // The chart shows another root. The panels beside it follow.
    virtual void tryHideTable25() {}
    virtual void ReinitSortedList() {}
    virtual void ReinitBiggestFilesArray() {}
    virtual void showRightBiggestView() {}

    /// Whether the hover panel is wanted, and whether it also says that nothing is pointed.
    virtual bool getShowHint() const { return true; }
    virtual bool getForceShowHint() const { return false; }

    /// The path control is to show where this root lies; null empties it.
    virtual void setPathControlTextForItem(VolumeFolderProtocol* /*item*/) {}
};

} // namespace veltrano
