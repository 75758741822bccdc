#pragma once

#include "chart/geometry/RingLayout.h"
#include "tree/VolumeFolderProtocol.h"

#include <array>

namespace veltrano {

// How many rings a root shows. The radii of the rings, and so what is large enough to be seen, depend on the
// count itself, which is why it is lowered ring by ring until its outermost ring shows something.

/// The deepest ring that shows something, told by the largest item of each level, for the layout's ring count
/// (0 to kMaxSubLevels) and total.
int getMaxVisibleSublevelByMaxSizes(const RingLayout& layout,
                                    const std::array<std::int64_t, kLevelCount>& sizes);

/// The ring count for a root whose level table is known. The layout's own count is not read.
int countRingsByMaxSizes(RingLayout layout, const std::array<std::int64_t, kLevelCount>& sizes);

/// The ring count for a root without a level table: the largest whose outermost ring shows something, or 0.
/// One walk over what is visible under any count answers for all of them, in place of asking for the deepest
/// visible ring (getMaxVisibleSublevelOfItem) under each. It needs no depth of the tree, since a ring beyond
/// that shows nothing. The layout's own count is not read. Under the tree's lock.
int countRingsByWalk(const RingLayout& layout, const VolumeFolderProtocol& root);

} // namespace veltrano
