#include "scan/TrashFolders.h"

#include "support/TreeBuilder.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using test::TreeBuilder;

TEST(TrashFolders, knowsAFolderByItsPlace) {
    const TrashFolders trash({"/home/me/.local/share/Trash"});
    TreeBuilder tree("/home/me");
    auto* const share = tree.folder(tree.folder(tree.root(), ".local"), "share");
    EXPECT_TRUE(trash.contains(*share, "Trash"));
}

TEST(TrashFolders, sameNameElsewhereIsNoTrash) {
    const TrashFolders trash({"/home/me/.local/share/Trash"});
    const TreeBuilder tree("/home/me");
    EXPECT_FALSE(trash.contains(*tree.root(), "Trash"));
}

TEST(TrashFolders, otherNameInItsPlaceIsNoTrash) {
    const TrashFolders trash({"/mnt/.Trash-1000"});
    const TreeBuilder tree("/mnt");
    EXPECT_FALSE(trash.contains(*tree.root(), ".Trash-1001"));
    EXPECT_TRUE(trash.contains(*tree.root(), ".Trash-1000"));
}

TEST(TrashFolders, knowsATrashOfTheRootFolder) {
    const TrashFolders trash({"/.Trash-0"});
    const TreeBuilder tree("/");
    EXPECT_TRUE(trash.contains(*tree.root(), ".Trash-0"));
}

TEST(TrashFolders, emptyListKnowsNone) {
    const TreeBuilder tree("/");
    EXPECT_FALSE(TrashFolders({}).contains(*tree.root(), "Trash"));
    EXPECT_FALSE(TrashFolders({}).contains(""));
}

} // namespace
} // namespace veltrano
