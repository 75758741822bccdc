#include "appearance/SharedImages.h"

#include "appearance/Images.h"

#include <gtest/gtest.h>

#include <set>

namespace veltrano {
namespace {

TEST(SharedImages, everyAccessorHasItsDrawing) {
    std::set<std::string_view> accessors;
    for (const SharedImage& shared : sharedImages()) {
        EXPECT_FALSE(sharedImage(shared.accessor, 1).isNull()) << shared.accessor;
        accessors.insert(shared.accessor);
    }
    EXPECT_EQ(accessors.size(), 51U);
    EXPECT_EQ(sharedImages().size(), 51U);
}

TEST(SharedImages, accessorsOfTheSidebarNameTheirDrawings) {
    const std::pair<const char*, const char*> pairs[] = {{"pvttitleDisks", "harddisks"},
                                                         {"pvttitleDisksExt", "externaldisks"},
                                                         {"pvttitleDisksImg", "diskimages"},
                                                         {"pvttitleDisksNet", "networkdisks"},
                                                         {"pvttitleDisksOpt", "opticaldisks"},
                                                         {"pvttitleFavoriteFolders", "favoritefolderstit"},
                                                         {"pvttitleRecentFolders", "recentfolderstit"},
                                                         {"mimgScannedItemMark", "scanedMark"},
                                                         {"mimgUnScannedItemMark", "unscanedMark"},
                                                         {"pvtSelectionBig", "selection_left_big"},
                                                         {"pvtSelectionSmall", "selection_left_small"},
                                                         {"pvtSepCent", "lf-sep-cent"}};
    for (const auto& [accessor, resource] : pairs)
        EXPECT_EQ(sharedImage(accessor, 1).cacheKey(), image(QLatin1String(resource), 1).cacheKey())
            << accessor;
}

TEST(SharedImages, unknownAccessorGivesNothing) {
    EXPECT_TRUE(sharedImage("harddisks", 1).isNull());
    EXPECT_TRUE(sharedImage("", 1).isNull());
}

} // namespace
} // namespace veltrano
