#pragma once

#include <QString>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace veltrano {

class FolderSystemItem;
class TopLevelItem;
class VolumeFolderProtocol;

/// What the sidebar asks of the window it lives in. Implemented by the main controller; main thread. Paths
/// are bytes.
class SidebarHost {
public:
    /// Whether a scan runs, and the path under scan.
    virtual bool isProcessing() const = 0;
    virtual std::optional<std::string> getProcessingVol() const = 0;

    /// A scan of the selected entry, and the end of the running one.
    virtual void startAction() = 0;
    virtual void stopAction() = 0;
    /// Looks whether what is known of the volumes is still true; may rebuild the rows.
    virtual void simpleUpdateVolumesInfo() = 0;
    /// The user wants the selected folder entry to go.
    virtual void actionRemoveFolder() = 0;

    /// Another entry is selected.
    virtual void didSelectionChange(const std::shared_ptr<TopLevelItem>& item) = 0;
    /// The chart is to show this root, which belongs to the entry: its tree, or the entry itself.
    virtual void setRootForRadial(VolumeFolderProtocol* root,
                                  const std::shared_ptr<TopLevelItem>& withVolume) = 0;
    /// The entry is about to drop this tree for another; whoever keeps items of it lets them go.
    virtual void treeIsDropped(FolderSystemItem& oldRoot) = 0;

    /// A name or path as it is to be shown.
    virtual QString getDisplayText(std::string_view bytes) const = 0;

protected:
    ~SidebarHost() = default;
};

} // namespace veltrano
