#pragma once

#include "chart/geometry/SectorHit.h"

#include <QString>

#include <functional>
#include <string_view>

namespace veltrano {

/// A sector in words, for who cannot see it.
struct SectorText {
    QString name;
    QString description; ///< Size, share of the turn, age, and what its colour would say.
};

/// The words for an item, an entry or a sentinel under `root`. `share` is a fraction of the turn;
/// `displayText` turns names, bytes, into text to show. Main thread, under the tree's lock.
[[nodiscard]] SectorText describeSector(TreeObject& object, const VolumeFolderProtocol& root,
                                        const SectorSentinels& sentinels, double share,
                                        const std::function<QString(std::string_view)>& displayText);

} // namespace veltrano
