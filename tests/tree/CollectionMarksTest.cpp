#include "support/TreeBuilder.h"
#include "tree/FolderSystemItem.h"
#include "tree/SpecialItems.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veltrano {
namespace {

using test::TreeBuilder;
using Paths = std::vector<std::string>;

class CollectionMarksTest : public testing::Test {
protected:
    // /r
    // |-- b
    // |   |-- c
    // |   |   `-- f
    // |   `-- g
    // |-- bc
    // |   `-- h
    // `-- p       a package
    TreeBuilder tree{"/r"};
    FolderSystemItem* const root = tree.root();
    FolderSystemItem* const b = tree.folder(root, "b");
    FolderSystemItem* const c = tree.folder(b, "c");
    FileSystemItem* const f = tree.file(c, "f", 1);
    FileSystemItem* const g = tree.file(b, "g", 1);
    FolderSystemItem* const bc = tree.folder(root, "bc");
    FileSystemItem* const h = tree.file(bc, "h", 1);
    FolderSystemItem* const p = tree.package(root, "p", 1);

    /// The paths of all marked items, in the order of the walk.
    Paths marked() const {
        Paths paths;
        std::vector<FileSystemItem*> waiting{root};
        while (!waiting.empty()) {
            FileSystemItem* const item = waiting.back();
            waiting.pop_back();
            if (item->isCollected())
                paths.push_back(item->getFullPath());
            for (std::size_t index = item->numberOfChildren(); index > 0; --index)
                waiting.push_back(item->childAtIndex(index - 1));
        }
        return paths;
    }
    void add(const Paths& paths) { root->updateAddedItemsToCollection(paths); }
    void remove(const Paths& paths) { root->updateRemovedItemsInCollection(paths); }
};

TEST_F(CollectionMarksTest, fileAtThePathIsMarked) {
    add({"/r/b/c/f"});
    EXPECT_EQ(marked(), Paths{"/r/b/c/f"});
}

TEST_F(CollectionMarksTest, everyPathIsMarked) {
    add({"/r/p", "/r/bc/h", "/r/b/c/f", "/r/b/g"});
    EXPECT_EQ(marked(), (Paths{"/r/b/c/f", "/r/b/g", "/r/bc/h", "/r/p"}));
}

TEST_F(CollectionMarksTest, packageIsMarkedLikeAFile) {
    add({"/r/p"});
    EXPECT_EQ(marked(), Paths{"/r/p"});
    remove({"/r/p"});
    EXPECT_EQ(marked(), Paths{});
}

TEST_F(CollectionMarksTest, packageMarksItselfWhenAskedDirectly) {
    p->updateAddedItemsToCollection(Paths{"/r/p"});
    EXPECT_TRUE(p->isCollected());
    p->updateRemovedItemsInCollection(Paths{"/r/p"});
    EXPECT_FALSE(p->isCollected());
}

TEST_F(CollectionMarksTest, fileMarksItselfWhenAskedDirectly) {
    f->updateAddedItemsToCollection(Paths{"/r/b", "/r/b/c/f"});
    EXPECT_TRUE(f->isCollected());
    f->updateRemovedItemsInCollection(Paths{"/r/b/c"});
    EXPECT_TRUE(f->isCollected());
    f->updateRemovedItemsInCollection(Paths{"/r/b/c/f"});
    EXPECT_FALSE(f->isCollected());
}

TEST_F(CollectionMarksTest, marksBelowACollectedFolderAreWiped) {
    add({"/r/b/c/f", "/r/b/g"});
    add({"/r/b"});
    EXPECT_EQ(marked(), Paths{"/r/b"});
    EXPECT_TRUE(f->isTopCollected());
}

TEST_F(CollectionMarksTest, pathsBelowACollectedFolderAreNotMarkedInOneCall) {
    add({"/r/b/c/f", "/r/b"});
    EXPECT_EQ(marked(), Paths{"/r/b"});
}

TEST_F(CollectionMarksTest, rootCanBeCollected) {
    add({"/r/b"});
    add({"/r"});
    EXPECT_EQ(marked(), Paths{"/r"});
}

// A folder b whose path is a string prefix of its sibling bc is walked into for the sibling's sake.
TEST_F(CollectionMarksTest, onlyTheExactPathIsMarkedAmongNamesThatStartAlike) {
    add({"/r/bc"});
    EXPECT_EQ(marked(), Paths{"/r/bc"});
    add({"/r/bc/h"});
    EXPECT_EQ(marked(), (Paths{"/r/bc", "/r/bc/h"}));
}

TEST_F(CollectionMarksTest, removalAmongNamesThatStartAlikeClearsTheExactOne) {
    add({"/r/b", "/r/bc"});
    remove({"/r/bc"});
    EXPECT_EQ(marked(), Paths{"/r/b"});
}

TEST_F(CollectionMarksTest, unknownPathMarksNothing) {
    add({"/r/missing", "/elsewhere", "", "/r/b/c/F", "r/b"});
    EXPECT_EQ(marked(), Paths{});
}

TEST_F(CollectionMarksTest, noPathMarksNothing) {
    add({});
    EXPECT_EQ(marked(), Paths{});
}

TEST_F(CollectionMarksTest, removalClearsTheMarkAtThePathAlone) {
    add({"/r/b/c/f", "/r/b/g", "/r/p"});
    remove({"/r/b/g"});
    EXPECT_EQ(marked(), (Paths{"/r/b/c/f", "/r/p"}));
}

TEST_F(CollectionMarksTest, removalOfAFolderClearsAllBelowIt) {
    add({"/r/b/c/f", "/r/b/g", "/r/bc/h"});
    remove({"/r/b"});
    EXPECT_EQ(marked(), Paths{"/r/bc/h"});
}

TEST_F(CollectionMarksTest, cleaningReachesEveryDescendant) {
    for (FileSystemItem* item : std::initializer_list<FileSystemItem*>{root, b, c, f, g, bc, h, p})
        item->setCollected(true);
    b->cleanCollected();
    EXPECT_EQ(marked(), (Paths{"/r", "/r/bc", "/r/bc/h", "/r/p"}));
    root->cleanCollected();
    EXPECT_EQ(marked(), Paths{});
}

TEST_F(CollectionMarksTest, cleaningKeepsEveryOtherFlag) {
    f->setHiddenFlag(true);
    f->setTrashFlag(true);
    f->setCollected(true);
    root->cleanCollected();
    EXPECT_FALSE(f->isCollected());
    EXPECT_TRUE(f->isHiddenFlag());
    EXPECT_TRUE(f->isTrashFlag());
    EXPECT_EQ(f->getTimeCode(), 1);
}

TEST_F(CollectionMarksTest, aggregateIsNeverMarked) {
    auto* const aggregate = FileSystemHiddenItem::initWithPathSize(tree.arena(), "hidden", b, 0);
    aggregate->updateAddedItemsToCollection(Paths{"/r/b/hidden"});
    add({"/r/b/hidden"});
    EXPECT_FALSE(aggregate->isCollected());
    aggregate->setCollected(true);
    remove({"/r/b/hidden"});
    EXPECT_TRUE(aggregate->isCollected());
}

TEST_F(CollectionMarksTest, placeWithoutAChildIsPassedOver) {
    root->replaceChild(bc, nullptr);
    add({"/r/b/g"});
    EXPECT_TRUE(g->isCollected());
    root->cleanCollected();
    EXPECT_FALSE(g->isCollected());
}

TEST_F(CollectionMarksTest, marksIn100000FoldersAreCleared) {
    auto* const deepest = tree.chain(root, "x", 100'000);
    deepest->setCollected(true);
    root->cleanCollected();
    EXPECT_FALSE(deepest->isCollected());
}

TEST_F(CollectionMarksTest, markReachesAnItemDeepBelow) {
    auto* const item = tree.file(tree.chain(root, "x", 500), "end", 1);
    const Paths path{item->getFullPath()};
    add(path);
    EXPECT_EQ(marked(), path);
    remove(path);
    EXPECT_EQ(marked(), Paths{});
}

} // namespace
} // namespace veltrano
