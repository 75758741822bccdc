#include "tree/RunningTotals.h"

#include "support/TreeBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

namespace veltrano {
namespace {

using test::TreeBuilder;
using Table = std::array<std::int64_t, kLevelCount>;

Table tableOf(const FolderSystemItem& root) {
    Table table{};
    if (const std::int64_t* sizes = root.getMaxSizesByLevels())
        std::copy_n(sizes, kLevelCount, table.begin());
    return table;
}

// --- By hand ---

class RunningTotalsTest : public testing::Test {
protected:
    TreeBuilder tree = TreeBuilder::volume("/v", 1000, 100);
    FolderSystemItem& root = *tree.root();

    FolderSystemItem* loose(FolderSystemItem* parent, std::string_view name, bool package = false) {
        return FolderSystemItem::initWithPathSizeNoParent(tree.arena(), name, parent, 0, package, 0, false);
    }
    void link(RunningTotals& totals, FolderSystemItem* folder) {
        folder->getParent()->addChild(folder);
        totals.folderLinked(*folder);
    }
    void linkFile(RunningTotals& totals, FolderSystemItem* folder, std::int64_t size) {
        tree.file(folder, "f", size);
        totals.leavesLinked(*folder, size, size);
    }
};

TEST_F(RunningTotalsTest, treeStartsAtNothing) {
    root.addFileSize(4096);
    root.raiseSizeOnLevel(0, 4096);
    const RunningTotals totals(root);
    EXPECT_EQ(root.gettotalsize(), 0);
    EXPECT_FALSE(root.isMaxSizesValid());
    EXPECT_EQ(root.getChildDepth(), 0);
}

TEST_F(RunningTotalsTest, leavesRaiseEveryFolderAbove) {
    RunningTotals totals(root);
    FolderSystemItem* const a = loose(&root, "a");
    link(totals, a);
    linkFile(totals, a, 10);
    EXPECT_EQ(a->gettotalsize(), 10);
    EXPECT_EQ(root.gettotalsize(), 10);
    EXPECT_EQ(tableOf(root), (Table{10, 10, 10}));
    EXPECT_EQ(root.getChildDepth(), 2);
}

TEST_F(RunningTotalsTest, largestLeafOfABatchStandsInTheTable) {
    RunningTotals totals(root);
    tree.file(&root, "f", 3);
    tree.file(&root, "g", 9);
    totals.leavesLinked(root, 12, 9);
    EXPECT_EQ(tableOf(root), (Table{12, 9}));
}

TEST_F(RunningTotalsTest, tableThatWasEmptiedCanBePutBack) {
    RunningTotals totals(root);
    tree.file(&root, "f", 9);
    totals.leavesLinked(root, 9, 9);
    root.initSizesByLevels();
    totals.restoreLevels();
    EXPECT_EQ(tableOf(root), (Table{9, 9}));
}

TEST_F(RunningTotalsTest, nothingCountsAboveAFolderThatDoesNotHangYet) {
    RunningTotals totals(root);
    FolderSystemItem* const a = loose(&root, "a");
    linkFile(totals, a, 10);
    EXPECT_EQ(a->gettotalsize(), 10);
    EXPECT_EQ(root.gettotalsize(), 0);
    EXPECT_FALSE(root.isMaxSizesValid());
    EXPECT_EQ(root.getChildDepth(), 0);
}

TEST_F(RunningTotalsTest, lateFolderHandsOnWhatItGathered) {
    RunningTotals totals(root);
    FolderSystemItem* const a = loose(&root, "a");
    FolderSystemItem* const b = loose(a, "b");
    linkFile(totals, b, 10);
    link(totals, b);
    linkFile(totals, b, 5);
    EXPECT_EQ(a->gettotalsize(), 15);
    EXPECT_EQ(root.gettotalsize(), 0);
    link(totals, a);
    EXPECT_EQ(root.gettotalsize(), 15);
    EXPECT_EQ(tableOf(root), (Table{15, 15, 15, 10}));
    EXPECT_EQ(root.getChildDepth(), 3);
}

TEST_F(RunningTotalsTest, packageCountsWithItsRunningSum) {
    RunningTotals totals(root);
    FolderSystemItem* const p = loose(&root, "p", true);
    p->addFileSizeForAll(7);
    link(totals, p);
    EXPECT_EQ(root.gettotalsize(), 7);
    p->addFileSizeForAll(5);
    totals.packageGrew(*p);
    EXPECT_EQ(p->gettotalsize(), 12);
    EXPECT_EQ(root.gettotalsize(), 12);
    EXPECT_EQ(tableOf(root), (Table{12, 12}));
    EXPECT_EQ(root.getChildDepth(), 1);
}

TEST_F(RunningTotalsTest, packageThatGrowsBeforeItHangsCountsOnce) {
    RunningTotals totals(root);
    FolderSystemItem* const p = loose(&root, "p", true);
    p->addFileSizeForAll(7);
    totals.packageGrew(*p);
    EXPECT_EQ(root.gettotalsize(), 0);
    link(totals, p);
    EXPECT_EQ(root.gettotalsize(), 7);
}

TEST_F(RunningTotalsTest, emptyFoldersCountForTheDepth) {
    RunningTotals totals(root);
    FolderSystemItem* const a = loose(&root, "a");
    link(totals, a);
    EXPECT_EQ(root.getChildDepth(), 1);
    link(totals, loose(a, "b"));
    EXPECT_EQ(root.getChildDepth(), 2);
}

TEST_F(RunningTotalsTest, depthIsCountedByAWalkOnceTheTreeGrowsNoMore) {
    {
        RunningTotals totals(root);
        linkFile(totals, &root, 1);
        EXPECT_EQ(tree.storage()->m_nGrowingDepth, 1);
    }
    EXPECT_FALSE(tree.storage()->m_nGrowingDepth.has_value());
    tree.chain(&root, "x", 4);
    EXPECT_EQ(root.getChildDepth(), 4);
}

TEST_F(RunningTotalsTest, onlyTheRootAnswersTheKeptDepth) {
    RunningTotals totals(root);
    FolderSystemItem* const a = loose(&root, "a");
    link(totals, a);
    tree.chain(a, "x", 4); // not told to the totals
    EXPECT_EQ(root.getChildDepth(), 1);
    EXPECT_EQ(a->getChildDepth(), 4);
}

TEST_F(RunningTotalsTest, totalsBeyondWhatADoubleHoldsAreExact) {
    constexpr std::int64_t kBig = std::int64_t{1} << 60;
    RunningTotals totals(root);
    FolderSystemItem* const a = loose(&root, "a");
    link(totals, a);
    linkFile(totals, a, kBig);
    linkFile(totals, a, 1);
    linkFile(totals, &root, kBig + 1);
    EXPECT_EQ(a->gettotalsize(), kBig + 1);
    EXPECT_EQ(root.gettotalsize(), 2 * kBig + 2);
}

TEST_F(RunningTotalsTest, chainOf100000FoldersLinkedFromBelowIsCounted) {
    constexpr std::int64_t kDeep = 100'000;
    RunningTotals totals(root);
    std::vector<FolderSystemItem*> chain{&root};
    for (std::int64_t level = 0; level < kDeep; ++level)
        chain.push_back(loose(chain.back(), "x"));
    linkFile(totals, chain.back(), 6);
    for (std::size_t folder = chain.size() - 1; folder > 0; --folder)
        link(totals, chain[folder]);
    EXPECT_EQ(root.gettotalsize(), 6);
    EXPECT_EQ(root.getChildDepth(), kDeep + 1);
    EXPECT_EQ(tableOf(root), (Table{6, 6, 6, 6, 6, 6, 6, 6, 6, 6, 6, 6, 6, 6}));
}

// --- Against a model ---

/// The tree as the merges have told it so far, kept apart from the real nodes and counted from the leaves.
class Model {
public:
    static constexpr std::size_t kRoot = 0;

    struct Node {
        std::size_t parent;
        bool linked;
        bool package;
        std::int64_t packageSize;
        std::vector<std::int64_t> leaves;
        std::vector<std::size_t> folders; // linked ones
    };

    struct Count {
        std::vector<std::int64_t> totals; // by node; -1 where the root does not reach it
        Table table{};
        std::int64_t depth = 0;
    };

    Model() : m_nodes{{kRoot, true, false, 0, {}, {}}} {}

    std::size_t add(std::size_t parent, bool package) {
        m_nodes.push_back({parent, false, package, 0, {}, {}});
        return m_nodes.size() - 1;
    }
    void link(std::size_t node) {
        m_nodes[node].linked = true;
        m_nodes[m_nodes[node].parent].folders.push_back(node);
    }
    Node& at(std::size_t node) { return m_nodes[node]; }
    std::size_t size() const { return m_nodes.size(); }

    Count recount() const {
        Count count;
        count.totals.assign(m_nodes.size(), -1);
        visit(kRoot, 0, count);
        return count;
    }

private:
    static void note(Count& count, std::int64_t level, std::int64_t size) {
        count.depth = std::max(count.depth, level);
        if (level < kLevelCount) {
            std::int64_t& entry = count.table[static_cast<std::size_t>(level)];
            entry = std::max(entry, size);
        }
    }

    std::int64_t visit(std::size_t index, std::int64_t level, Count& count) const {
        const Node& node = m_nodes[index];
        std::int64_t total = node.packageSize;
        for (const std::int64_t leaf : node.leaves) {
            note(count, level + 1, leaf);
            total += leaf;
        }
        for (const std::size_t folder : node.folders)
            total += visit(folder, level + 1, count);
        note(count, level, total);
        count.totals[index] = total;
        return total;
    }

    std::vector<Node> m_nodes;
};

/// One random scan: folders and packages are made below folders that may not hang yet, are linked in any
/// order, get batches of files at any time, and packages grow.
class RandomScan {
public:
    RandomScan(std::uint64_t seed, bool volume)
        : m_numbers(seed),
          m_tree(volume ? TreeBuilder::volume("/v", 1'000'000, 1000) : TreeBuilder("/f")),
          m_nodes{m_tree.root()},
          m_volume(volume),
          m_deep(seed % 3 == 0) {}

    void run(std::size_t steps) {
        {
            RunningTotals totals(*m_tree.root());
            for (std::size_t taken = 0; taken < steps; ++taken) {
                step(totals);
                ASSERT_NO_FATAL_FAILURE(expectEqualCounts()) << "at step " << taken;
            }
            while (!m_unlinked.empty()) {
                linkOne(totals);
                ASSERT_NO_FATAL_FAILURE(expectEqualCounts()) << "while the rest is linked";
            }
        }
        const std::int64_t total = m_tree.root()->gettotalsize();
        const Table table = tableOf(*m_tree.root());
        EXPECT_EQ(m_tree.root()->calctotalsizeex(), total);
        EXPECT_EQ(tableOf(*m_tree.root()), table);
        EXPECT_EQ(m_tree.root()->getChildDepth(), m_model.recount().depth);
    }

    std::int64_t depth() const { return m_tree.root()->calcChildDepth(); }

private:
    std::size_t below(std::size_t bound) { return m_numbers() % bound; }
    std::int64_t size() { return static_cast<std::int64_t>(below(8) == 0 ? 0 : below(10'000)); }

    /// A node that can hold others; in a deep tree one of the last made.
    std::size_t anyFolder() {
        for (;;) {
            const std::size_t newest = m_model.size() - 1;
            const std::size_t node =
                m_deep ? newest - below(std::min<std::size_t>(newest + 1, 4)) : below(m_model.size());
            if (!m_model.at(node).package)
                return node;
            if (m_deep && below(4) == 0)
                return Model::kRoot;
        }
    }

    void step(RunningTotals& totals) {
        switch (below(8)) {
        case 0:
        case 1:
        case 2:
            makeOne();
            break;
        case 3:
        case 4:
            if (!m_unlinked.empty())
                linkOne(totals);
            break;
        case 5:
            growPackage(totals);
            break;
        default:
            linkLeaves(totals);
        }
    }

    void makeOne() {
        const std::size_t parent = anyFolder();
        const bool package = below(5) == 0;
        const std::size_t node = m_model.add(parent, package);
        TreeArena& arena = m_tree.storage()->workerArena(static_cast<int>(below(4)));
        m_nodes.push_back(FolderSystemItem::initWithPathSizeNoParent(arena, std::to_string(node),
                                                                     m_nodes[parent], 0, package, 0, false));
        m_unlinked.push_back(node);
    }

    void linkOne(RunningTotals& totals) {
        const std::size_t place = below(m_unlinked.size());
        const std::size_t node = m_unlinked[place];
        m_unlinked.erase(m_unlinked.begin() + static_cast<std::ptrdiff_t>(place));
        m_model.link(node);
        m_nodes[node]->getParent()->addChild(m_nodes[node]);
        totals.folderLinked(*m_nodes[node]);
    }

    void linkLeaves(RunningTotals& totals) {
        const std::size_t node = anyFolder();
        TreeArena& arena = m_tree.storage()->workerArena(static_cast<int>(below(4)));
        const auto count = static_cast<std::uint32_t>(1 + below(4));
        ChildArray* const batch = arena.makeChildArray(count);
        std::int64_t sum = 0;
        std::int64_t largest = 0;
        for (; batch->count < count; ++batch->count) {
            const std::int64_t leaf = size();
            batch->items()[batch->count] =
                FileSystemItem::initWithPathSizeNoParent(arena, "f", m_nodes[node], leaf, 0, false);
            m_model.at(node).leaves.push_back(leaf);
            sum += leaf;
            largest = std::max(largest, leaf);
        }
        m_nodes[node]->addChildren(batch);
        totals.leavesLinked(*m_nodes[node], sum, largest);
    }

    void growPackage(RunningTotals& totals) {
        const std::size_t node = below(m_model.size());
        if (!m_model.at(node).package)
            return;
        const std::int64_t more = size();
        m_model.at(node).packageSize += more;
        m_nodes[node]->addFileSizeForAll(more);
        totals.packageGrew(*m_nodes[node]);
    }

    void expectEqualCounts() const {
        const Model::Count count = m_model.recount();
        for (std::size_t node = 0; node < m_nodes.size(); ++node) {
            if (count.totals[node] >= 0) {
                ASSERT_EQ(m_nodes[node]->gettotalsize(), count.totals[node]) << "node " << node;
            }
        }
        ASSERT_EQ(m_tree.root()->getChildDepth(), count.depth);
        if (m_volume) {
            ASSERT_EQ(tableOf(*m_tree.root()), count.table);
        }
    }

    std::mt19937_64 m_numbers;
    TreeBuilder m_tree;
    Model m_model;
    std::vector<FolderSystemItem*> m_nodes; // beside the model's
    std::vector<std::size_t> m_unlinked;
    bool m_volume;
    bool m_deep;
};

class RandomScanTest : public testing::TestWithParam<bool> {};

TEST_P(RandomScanTest, countsEqualAFullRecountAfterEveryStep) {
    std::int64_t deepest = 0;
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        RandomScan scan(seed, GetParam());
        ASSERT_NO_FATAL_FAILURE(scan.run(300));
        ASSERT_FALSE(HasFailure());
        deepest = std::max(deepest, scan.depth());
    }
    EXPECT_GT(deepest, 2 * kLevelCount) << "no scan went well below the level table";
}

INSTANTIATE_TEST_SUITE_P(BothRoots, RandomScanTest, testing::Bool(),
                         [](const auto& row) { return row.param ? "Volume" : "Folder"; });

} // namespace
} // namespace veltrano
