#include "support/MemoryDisk.h"

#include "platform/CatalogueReading.h"

#include <atomic>
#include <gmock/gmock.h>
#include <thread>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Folders of 1000 files and one folder each, a given number inside each other.
class Ladder final : public GeneratedTree {
public:
    explicit Ladder(std::uint64_t depth) : m_nDepth(depth) {}

    std::uint64_t entryCount(std::uint64_t folder) const override { return folder < m_nDepth ? 1001 : 1000; }
    void entry(std::uint64_t folder, std::uint64_t index, GeneratedEntry& entry) const override {
        entry.isDirectory = index == 1000;
        entry.folder = folder + 1;
        entry.name = "entry" + std::to_string(index);
        entry.facts.size = entry.isDirectory ? 0 : 512;
    }

private:
    std::uint64_t m_nDepth;
};

class MemoryDiskTest : public testing::Test {
protected:
    Listing list(const std::string& path) { return listPath(m_disk, path); }

    MemoryDisk m_disk;
};

TEST_F(MemoryDiskTest, factsOfAnEntryAreDelivered) {
    m_disk.addFile("/alias", {.size = 512, .isAlias = true});
    m_disk.addFolder("/bundle", {.hasBundleBit = true});
    m_disk.addFile("/ghost", {.hasInvisibleBit = true});
    const Listing listing = list("/");
    EXPECT_TRUE(listing["alias"].entry.isAlias);
    EXPECT_EQ(listing["alias"].entry.dataPhysicalSize, 512);
    EXPECT_TRUE(listing["bundle"].entry.hasBundleBit);
    EXPECT_TRUE(listing["ghost"].entry.hasInvisibleBit);
    EXPECT_FALSE(listing["ghost"].entry.isAlias || listing["ghost"].entry.hasBundleBit);
}

TEST_F(MemoryDiskTest, knownValenceCountsTheEntries) {
    m_disk.setValence(MemoryDisk::Valence::Known);
    m_disk.addFolder("/empty");
    m_disk.addFile("/two/one", 1);
    m_disk.addFolder("/two/other");
    EXPECT_EQ(list("/")["empty"].entry.valence, 0U);
    EXPECT_EQ(list("/")["two"].entry.valence, 2U);
}

TEST_F(MemoryDiskTest, coveredFolderHasValence0) {
    m_disk.addFile("/mount/hidden", 1);
    m_disk.coverByMount("/mount");
    EXPECT_EQ(list("/")["mount"].entry.valence, 0U);
}

TEST_F(MemoryDiskTest, nameMayHoldASlash) {
    m_disk.addFileNamed("/", "either/or", {});
    m_disk.addFolderNamed("/", "this/that");
    EXPECT_THAT(list("/").names(), ElementsAre("either/or", "this/that"));
}

TEST_F(MemoryDiskTest, deniedFolderOpensAndFailsAtItsFirstRead) {
    m_disk.addFile("/a/file", 1);
    m_disk.deny("/a");
    const Listing listing = list("/a");
    EXPECT_EQ(listing.end, CatalogueStatus::Denied);
    EXPECT_THAT(listing.entries, IsEmpty());
}

TEST_F(MemoryDiskTest, failingFolderDeliversWhatComesBefore) {
    for (int i = 0; i < 300; ++i)
        m_disk.addFile("/a/file" + std::to_string(i), 1);
    m_disk.failAfter("/a", 200);
    const Listing listing = list("/a");
    EXPECT_EQ(listing.end, CatalogueStatus::Denied);
    EXPECT_THAT(listing.reads, ElementsAre(110U, 90U, 0U));
}

TEST_F(MemoryDiskTest, vanishingFolderIsListedAndGone) {
    m_disk.addFolder("/a");
    m_disk.vanishAtOpen("/a");
    EXPECT_EQ(listFolder(m_disk, list("/")["a"].reference).end, CatalogueStatus::Gone);
}

TEST_F(MemoryDiskTest, lastReadFollowsTheSwitch) {
    for (int i = 0; i < 110; ++i)
        m_disk.addFile("/a/file" + std::to_string(i), 1);
    EXPECT_THAT(list("/a").reads, ElementsAre(110U));
    m_disk.setLastRead(MemoryDisk::LastRead::LeavesEmptyRead);
    EXPECT_THAT(list("/a").reads, ElementsAre(110U, 0U));
}

TEST_F(MemoryDiskTest, hooksHearEachOpenAndRead) {
    std::vector<std::string> heard;
    m_disk.addFolder("/a/b");
    m_disk.setBeforeOpen([&](const std::string& path) { heard.push_back("open " + path); });
    m_disk.setBeforeRead([&](const std::string& path) { heard.push_back("read " + path); });
    walkTree(m_disk, startFolder(m_disk, "/a"));
    EXPECT_THAT(heard, ElementsAre("open /a", "read /a", "open /a/b", "read /a/b"));
}

TEST_F(MemoryDiskTest, hookMayChangeTheDisk) {
    m_disk.addFolder("/a/b");
    m_disk.setBeforeRead([this](const std::string& path) {
        if (path == "/a")
            m_disk.remove("/a/b");
    });
    EXPECT_THAT(list("/a").entries, IsEmpty());
}

TEST_F(MemoryDiskTest, gateHoldsTheReaderUntilItIsLetPass) {
    for (int i = 0; i < 200; ++i)
        m_disk.addFile("/a/file" + std::to_string(i), 1);
    const auto gate = std::make_shared<ReadGate>();
    m_disk.gateReads("/a", gate);
    std::atomic<std::size_t> delivered = 0;
    std::thread reader([&] {
        const auto iterator = m_disk.makeIterator();
        if (iterator->open(startFolder(m_disk, "/a")) != CatalogueStatus::Ok)
            return;
        while (iterator->readBulk() == CatalogueStatus::Ok)
            delivered += iterator->entries().size();
        delivered += iterator->entries().size();
    });
    EXPECT_TRUE(gate->waitForArrivals(1));
    EXPECT_EQ(delivered, 0U);
    gate->letPass(1);
    EXPECT_TRUE(gate->waitForArrivals(2));
    EXPECT_EQ(delivered, 110U);
    gate->release();
    reader.join();
    EXPECT_EQ(delivered, 200U);
}

TEST_F(MemoryDiskTest, generatedTreeIsReadToItsLastFolder) {
    m_disk.addGenerated("/big", std::make_shared<Ladder>(20), 0);
    const TreeTotals totals = walkTree(m_disk, startFolder(m_disk, "/big"));
    EXPECT_EQ(totals.files, 21'000U);
    EXPECT_EQ(totals.folders, 20U);
    EXPECT_EQ(totals.fileBytes, 21'000 * 512);
}

TEST_F(MemoryDiskTest, generatedFolderKnowsItsValence) {
    m_disk.setValence(MemoryDisk::Valence::Known);
    m_disk.addGenerated("/big", std::make_shared<Ladder>(1), 0);
    EXPECT_EQ(list("/")["big"].entry.valence, 1001U);
    EXPECT_EQ(list("/big")["entry1000"].entry.valence, 1000U);
}

TEST_F(MemoryDiskTest, deepChainNeedsNoStack) {
    std::string path = "/";
    for (int i = 0; i < 5000; ++i)
        path += "d/";
    m_disk.addFolder(path + "last");
    EXPECT_EQ(walkTree(m_disk, startFolder(m_disk, "/")).folders, 5001U);
}

TEST_F(MemoryDiskTest, readersAndAChangingDiskGetAlong) {
    for (int i = 0; i < 50; ++i)
        m_disk.addFile("/a/folder" + std::to_string(i) + "/file", 1);
    m_disk.addFile("/a/stays/file", 1);
    std::thread changer([this] {
        for (int i = 0; i < 50; ++i)
            m_disk.remove("/a/folder" + std::to_string(i));
    });
    const TreeTotals totals = walkTree(m_disk, startFolder(m_disk, "/a"));
    changer.join();
    EXPECT_GE(totals.files, 1U);
    EXPECT_EQ(totals.denied, 0U);
    EXPECT_THAT(list("/a").names(), ElementsAre("stays"));
}

} // namespace
} // namespace veltrano
