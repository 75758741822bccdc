#pragma once

#include "chart/geometry/SectorHit.h"

#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace veltrano {

class TreeObject;
class VolumeFolderProtocol;

/// What the hover panel tells of an item.
struct HintText {
    QString main;
    QString size;
    QString sizeCaption;
    std::optional<std::string> datePath; ///< Whose date of change is shown, bytes; nothing for no date.
};

/// The text for an item under `root`, for one of the sentinels, or for a sidebar entry; nothing for an object
/// of another kind. `displayText` turns names, bytes, into text to show. Main thread, under the tree's lock.
[[nodiscard]] std::optional<HintText>
composeHint(TreeObject& item, const VolumeFolderProtocol& root, const SectorSentinels& sentinels,
            const std::function<QString(std::string_view)>& displayText);

} // namespace veltrano
