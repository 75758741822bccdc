#include "support/TreeBuilder.h"
#include "tree/FolderSystemItem.h"
#include "tree/PathComponents.h"

#include <gtest/gtest.h>

namespace veltrano {
namespace {

using test::TreeBuilder;
using Components = std::vector<std::string_view>;

class FolderSearchTest : public testing::Test {
protected:
    // /r/s
    // |-- a
    // |   |-- b
    // |   |   `-- f
    // |   `-- g
    // |-- p        a package
    // `-- ab
    TreeBuilder tree{"/r/s"};
    FolderSystemItem* const root = tree.root();
    FolderSystemItem* const a = tree.folder(root, "a");
    FolderSystemItem* const b = tree.folder(a, "b");
    FileSystemItem* const f = tree.file(b, "f", 1);
    FileSystemItem* const g = tree.file(a, "g", 1);
    FolderSystemItem* const p = tree.package(root, "p", 1);
    FolderSystemItem* const ab = tree.folder(root, "ab");
};

// --- Items by path ---

TEST_F(FolderSearchTest, everyItemIsFoundByItsPath) {
    const TreeBuilder random = TreeBuilder::random(1, 500);
    std::vector<FileSystemItem*> waiting{random.root()};
    std::size_t found = 0;
    while (!waiting.empty()) {
        FileSystemItem* const item = waiting.back();
        waiting.pop_back();
        ASSERT_EQ(random.root()->getItemByFilePath(item->getFullPath()), item);
        ++found;
        for (std::size_t index = 0; index < item->numberOfChildren(); ++index)
            waiting.push_back(item->childAtIndex(index));
    }
    EXPECT_EQ(found, 501u);
}

TEST_F(FolderSearchTest, searchBelowAFolderStartsThere) {
    EXPECT_EQ(a->getItemByFilePath("/r/s/a/b/f"), f);
    EXPECT_EQ(a->getItemByFilePath("/r/s/a"), a);
    EXPECT_EQ(a->getItemByFilePath("/r/s/p"), nullptr);
    EXPECT_EQ(a->getItemByFilePath("/r/s"), nullptr);
}

TEST_F(FolderSearchTest, rootOfTheFileSystemFindsItsItems) {
    const TreeBuilder slash("/");
    auto* const item = slash.file(slash.folder(slash.root(), "x"), "y", 1);
    EXPECT_EQ(slash.root()->getItemByFilePath("/x/y"), item);
    EXPECT_EQ(slash.root()->getItemByFilePath("/"), slash.root());
}

TEST_F(FolderSearchTest, pathOutsideTheTreeIsNotFound) {
    EXPECT_EQ(root->getItemByFilePath("/r"), nullptr);
    EXPECT_EQ(root->getItemByFilePath("/r/sx/a"), nullptr);
    EXPECT_EQ(root->getItemByFilePath("/x/s/a"), nullptr);
    EXPECT_EQ(root->getItemByFilePath("a"), nullptr);
    EXPECT_EQ(root->getItemByFilePath(""), nullptr);
}

TEST_F(FolderSearchTest, pathThatWasNotScannedIsNotFound) {
    EXPECT_EQ(root->getItemByFilePath("/r/s/missing"), nullptr);
    EXPECT_EQ(root->getItemByFilePath("/r/s/ab/f"), nullptr);
    EXPECT_EQ(root->getItemByFilePath("/r/s/a/b/f2"), nullptr);
}

TEST_F(FolderSearchTest, nameOfAnotherCaseIsNotFound) {
    EXPECT_EQ(root->getItemByFilePath("/r/s/A/b/f"), nullptr);
    EXPECT_EQ(root->getItemByFilePath("/r/s/a/b/F"), nullptr);
}

TEST_F(FolderSearchTest, packageIsFoundButNothingInsideIt) {
    EXPECT_EQ(root->getItemByFilePath("/r/s/p"), p);
    EXPECT_EQ(root->getItemByFilePath("/r/s/p/inside"), nullptr);
}

TEST_F(FolderSearchTest, packageEndsTheSearchEvenBeforeAFolderOfItsName) {
    auto* const twin = tree.folder(root, "p");
    tree.file(twin, "inside", 1);
    EXPECT_EQ(root->getItemByFilePath("/r/s/p/inside"), nullptr);
}

TEST_F(FolderSearchTest, nothingIsFoundBelowAFile) {
    EXPECT_EQ(root->getItemByFilePath("/r/s/a/g/x"), nullptr);
}

TEST_F(FolderSearchTest, folderThatLeadsNowhereGivesWayToTheNextOfItsName) {
    auto* const twin = tree.folder(root, "a");
    auto* const inTwin = tree.file(tree.folder(twin, "b"), "only here", 1);
    EXPECT_EQ(root->getItemByFilePath("/r/s/a/b/only here"), inTwin);
}

TEST_F(FolderSearchTest, placeWithoutAChildIsPassedOver) {
    root->replaceChild(a, nullptr);
    EXPECT_EQ(root->getItemByFilePath("/r/s/ab"), ab);
    EXPECT_EQ(root->getFolderItemByFolderPath("/r/s/ab"), ab);
}

TEST_F(FolderSearchTest, fileMatchesItsOwnComponentAlone) {
    const Components components{"/", "r", "s", "a", "g"};
    FileSystemItem* found = nullptr;
    EXPECT_FALSE(g->findItemByPathComponents(components, 3, &found));
    EXPECT_EQ(found, nullptr);
    EXPECT_TRUE(g->findItemByPathComponents(components, 4, &found));
    EXPECT_EQ(found, g);
}

TEST_F(FolderSearchTest, fileAmidThePathEndsTheSearchWithNothing) {
    FileSystemItem* found = nullptr;
    EXPECT_TRUE(g->findItemByPathComponents(Components{"g", "x"}, 0, &found));
    EXPECT_EQ(found, nullptr);
}

TEST_F(FolderSearchTest, slotIsOptional) {
    EXPECT_TRUE(g->findItemByPathComponents(Components{"g"}, 0, nullptr));
    EXPECT_TRUE(a->findItemByPathComponents(Components{"a", "g"}, 0, nullptr));
    EXPECT_TRUE(p->findItemByPathComponents(Components{"p", "x"}, 0, nullptr));
}

TEST_F(FolderSearchTest, offsetPastTheEndMatchesNothing) {
    FileSystemItem* found = nullptr;
    FolderSystemItem* folder = nullptr;
    EXPECT_FALSE(g->findItemByPathComponents(Components{"g"}, 1, &found));
    EXPECT_FALSE(a->findItemByPathComponents(Components{}, 0, &found));
    EXPECT_FALSE(a->findFolderItemByPathComponents(Components{"a"}, 1, &folder));
}

TEST_F(FolderSearchTest, folderAnswersFalseWhereNoChildMatches) {
    FileSystemItem* found = nullptr;
    EXPECT_FALSE(a->findItemByPathComponents(Components{"a", "missing"}, 0, &found));
    EXPECT_FALSE(a->findItemByPathComponents(Components{"x", "g"}, 0, &found));
    EXPECT_EQ(found, nullptr);
}

TEST_F(FolderSearchTest, packageWipesTheSlot) {
    FileSystemItem* found = f;
    EXPECT_TRUE(p->findItemByPathComponents(Components{"p", "x"}, 0, &found));
    EXPECT_EQ(found, nullptr);
}

TEST_F(FolderSearchTest, itemBelow100000FoldersIsFound) {
    auto* const deepest = tree.chain(ab, "x", 100'000);
    auto* const item = tree.file(deepest, "end", 1);
    const std::string path = item->getFullPath();
    EXPECT_EQ(root->getItemByFilePath(path), item);
    EXPECT_EQ(root->getItemByFilePath(path + "less"), nullptr);
    EXPECT_EQ(root->getFolderItemByFolderPath(deepest->getFullPath()), deepest);
}

// --- Folders by path ---

TEST_F(FolderSearchTest, folderThatIsThereIsFoundAndNothingIsMade) {
    EXPECT_EQ(root->getFolderItemByFolderPath("/r/s/a/b"), b);
    EXPECT_EQ(root->getFolderItemByFolderPath("/r/s"), root);
    EXPECT_EQ(root->getFolderItemByFolderPath("/r/s/ab"), ab);
    EXPECT_EQ(root->numberOfChildren(), 3u);
    EXPECT_EQ(a->numberOfChildren(), 2u);
}

TEST_F(FolderSearchTest, missingFoldersAreMadeBelowTheDeepestThatIsThere) {
    FolderSystemItem* const made = root->getFolderItemByFolderPath("/r/s/a/new/.deep");
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getFullPath(), "/r/s/a/new/.deep");
    FolderSystemItem* const above = made->getParent();
    EXPECT_EQ(above->getParent(), a);
    EXPECT_TRUE(a->containsObject(above));
    EXPECT_TRUE(above->containsObject(made));
    EXPECT_EQ(root->getItemByFilePath("/r/s/a/new/.deep"), made);
}

TEST_F(FolderSearchTest, missingFoldersAreMadeBelowTheRoot) {
    FolderSystemItem* const made = root->getFolderItemByFolderPath("/r/s/x/y");
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getParent()->getParent(), root);
}

TEST_F(FolderSearchTest, madeFolderIsNewPlainAndEmpty) {
    FolderSystemItem* const made = root->getFolderItemByFolderPath("/r/s/x/y");
    ASSERT_NE(made, nullptr);
    for (const FolderSystemItem* folder : {made, made->getParent()}) {
        EXPECT_EQ(folder->getTimeCode(), 1);
        EXPECT_EQ(folder->gettotalsize(), 0);
        EXPECT_FALSE(folder->isPack());
        EXPECT_FALSE(folder->isHiddenFlag());
    }
}

TEST_F(FolderSearchTest, madeFolderIsHiddenByADotAtTheStartOfItsName) {
    FolderSystemItem* const made = root->getFolderItemByFolderPath("/r/s/.x/y.");
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->getParent()->isHiddenFlag());
    EXPECT_FALSE(made->isHiddenFlag());
}

TEST_F(FolderSearchTest, packageInTheWayGivesNothingAndMakesNothing) {
    EXPECT_EQ(root->getFolderItemByFolderPath("/r/s/p/x/y"), nullptr);
    EXPECT_EQ(root->getFolderItemByFolderPath("/r/s/p"), nullptr);
    EXPECT_EQ(root->numberOfChildren(), 3u);
    EXPECT_TRUE(p->isPack());
    FolderSystemItem* const below = tree.package(b, "q", 1);
    EXPECT_EQ(root->getFolderItemByFolderPath("/r/s/a/b/q/x"), nullptr);
    EXPECT_TRUE(below->isPack());
    EXPECT_EQ(b->numberOfChildren(), 2u);
}

TEST_F(FolderSearchTest, fileInTheWayGivesNothingAndMakesNothing) {
    EXPECT_EQ(root->getFolderItemByFolderPath("/r/s/a/g"), nullptr);
    EXPECT_EQ(root->getFolderItemByFolderPath("/r/s/a/g/x"), nullptr);
    auto* const direct = tree.file(root, "direct", 1);
    EXPECT_EQ(root->getFolderItemByFolderPath("/r/s/direct/x"), nullptr);
    EXPECT_EQ(direct->numberOfChildren(), 0u);
    EXPECT_EQ(root->numberOfChildren(), 4u);
    EXPECT_EQ(a->numberOfChildren(), 2u);
}

TEST_F(FolderSearchTest, folderOutsideTheTreeIsNotMade) {
    EXPECT_EQ(root->getFolderItemByFolderPath("/r"), nullptr);
    EXPECT_EQ(root->getFolderItemByFolderPath("/r/sx"), nullptr);
    EXPECT_EQ(root->getFolderItemByFolderPath("/elsewhere"), nullptr);
    EXPECT_EQ(root->numberOfChildren(), 3u);
}

TEST_F(FolderSearchTest, fileEndsASearchForAFolderWithoutAWrittenSlot) {
    FolderSystemItem* found = a;
    EXPECT_TRUE(g->findFolderItemByPathComponents(Components{"g"}, 0, &found));
    EXPECT_EQ(found, a);
    EXPECT_FALSE(g->findFolderItemByPathComponents(Components{"G"}, 0, &found));
}

TEST_F(FolderSearchTest, folderSlotIsOptional) {
    EXPECT_TRUE(a->findFolderItemByPathComponents(Components{"a", "b"}, 0, nullptr));
    EXPECT_TRUE(p->findFolderItemByPathComponents(Components{"p", "b"}, 0, nullptr));
}

TEST_F(FolderSearchTest, foldersAreMadeOneBelowTheOther) {
    FolderSystemItem* const made = root->createFolderItemByComponents(Components{"skipped", "x", "y"}, 1);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getFullPath(), "/r/s/x/y");
}

TEST_F(FolderSearchTest, offsetPastTheEndMakesNoFolder) {
    EXPECT_EQ(root->createFolderItemByComponents(Components{"x"}, 1), nullptr);
    EXPECT_EQ(root->createFolderItemByComponents(Components{"x"}, 2), nullptr);
    EXPECT_EQ(root->numberOfChildren(), 3u);
}

TEST_F(FolderSearchTest, noFolderIsMadeInAPackage) {
    EXPECT_EQ(p->getFolderItemByFolderPath("/r/s/p/x"), nullptr);
    EXPECT_EQ(p->createFolderItemByComponents(Components{"x"}, 0), nullptr);
    EXPECT_TRUE(p->isPack());
}

TEST_F(FolderSearchTest, pathOf100000MissingFoldersIsMade) {
    std::string path = "/r/s";
    for (int level = 0; level < 100'000; ++level)
        path += "/m";
    FolderSystemItem* const made = root->getFolderItemByFolderPath(path);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getFullPath(), path);
}

} // namespace
} // namespace veltrano
