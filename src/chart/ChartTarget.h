#pragma once

#include "tree/FolderSystemItem.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrano {

/// What the actions of a menu work on, taken when the menu opens: what the user saw then, whatever a merge,
/// another scan or an unmounted volume has made of the chart since. A value; main thread.
struct ChartTarget {
    std::vector<std::string> paths;             ///< Bytes; the pointed item, then the selected ones.
    std::optional<std::string> textToCopy;      ///< Bytes.
    std::shared_ptr<FolderSystemItem> favorite; ///< The folder that can be made a favourite, or null.
    std::shared_ptr<FolderSystemItem> root;     ///< The root, if it lies below another one, or null.
};

/// The actions of the chart's menus.
enum class ChartAction {
    RevealInFinder,
    GetInformation,
    Copy,
    AddToFavorite,
    ShowDiskStructure,
    Switch2BiggestTable,
    Switch2InfoPanel,
};

} // namespace veltrano
