#pragma once

#include "support/TreeBuilder.h"

namespace veltrano {

/// Where the folders of the tree lie.
enum class ChartTreeTop {
    Plain,   ///< In its root.
    Wrapped, ///< In a folder that takes nearly all of its root, the second of two children.
};

/// A tree whose chart has 1530 sectors on six rings: folders that each hold one large item and so many files
/// too small to be seen.
test::TreeBuilder makeChartTree(int smallFilesInFolder, ChartTreeTop top = ChartTreeTop::Plain);

} // namespace veltrano
