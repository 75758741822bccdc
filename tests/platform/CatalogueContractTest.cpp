#include "platform/CatalogueReading.h"

#include "platform/linux/LinuxCatalogue.h"
#include "platform/posix/PosixCatalogue.h"
#include "support/MemoryDisk.h"
#include "support/TestDir.h"

#include <gmock/gmock.h>
#include <map>
#include <ostream>
#include <sys/stat.h>
#include <thread>

namespace veltrano {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Le;
using testing::SizeIs;

/// A place with folders and files that a form of the catalogue reads. Paths are relative to the start folder.
class World {
public:
    virtual ~World() = default;
    virtual FileCatalogue& catalogue() = 0;
    virtual std::string start() const = 0;
    virtual void addFolder(const std::string& path) = 0;
    virtual void addFile(const std::string& path, std::size_t bytes) = 0;
    virtual void setModified(const std::string& path, std::int64_t seconds, std::uint32_t nanoseconds) = 0;
    virtual void remove(const std::string& path) = 0;
    /// Bytes that a file takes on this disk.
    virtual std::int64_t allocated(const std::string& path) const = 0;

    std::string pathOf(const std::string& path) const { return start() + "/" + path; }
};

template <typename Catalogue>
class RealWorld final : public World {
public:
    FileCatalogue& catalogue() override { return m_catalogue; }
    std::string start() const override { return m_dir.path(); }
    void addFolder(const std::string& path) override { m_dir.createFolder(path); }
    void addFile(const std::string& path, std::size_t bytes) override { m_dir.createFile(path, bytes); }
    void setModified(const std::string& path, std::int64_t seconds, std::uint32_t nanoseconds) override {
        m_dir.setModified(path, seconds, nanoseconds);
    }
    void remove(const std::string& path) override { m_dir.remove(path); }
    std::int64_t allocated(const std::string& path) const override {
        struct stat facts {};
        return ::lstat(m_dir.path(path).c_str(), &facts) == 0 ? std::int64_t{facts.st_blocks} * 512 : -1;
    }

private:
    TestDir m_dir;
    Catalogue m_catalogue;
};

class MemoryWorld final : public World {
public:
    explicit MemoryWorld(MemoryDisk::LastRead lastRead) {
        m_disk.setLastRead(lastRead);
        m_disk.addFolder("/start");
    }

    FileCatalogue& catalogue() override { return m_disk; }
    std::string start() const override { return "/start"; }
    void addFolder(const std::string& path) override { m_disk.addFolder("/start/" + path); }
    void addFile(const std::string& path, std::size_t bytes) override {
        const auto allocated = static_cast<std::int64_t>((bytes + 4095) / 4096 * 4096);
        m_disk.addFile("/start/" + path, allocated);
        m_allocated[path] = allocated;
    }
    void setModified(const std::string& path, std::int64_t seconds, std::uint32_t nanoseconds) override {
        m_disk.remove("/start/" + path);
        m_disk.addFile("/start/" + path, {.date = catalogueDateFromUnixTime(seconds, nanoseconds)});
    }
    void remove(const std::string& path) override { m_disk.remove("/start/" + path); }
    std::int64_t allocated(const std::string& path) const override { return m_allocated.at(path); }

private:
    MemoryDisk m_disk;
    std::map<std::string, std::int64_t> m_allocated;
};

struct Form {
    const char* name;
    std::unique_ptr<World> (*make)();
};

/// Keeps addresses, which change from run to run, out of the tests' names.
void PrintTo(const Form& form, std::ostream* out) {
    *out << form.name;
}

const Form kForms[] = {
    {"linux",
     []() -> std::unique_ptr<World> {
         return std::make_unique<RealWorld<LinuxCatalogue>>();
     }},
    {"posix",
     []() -> std::unique_ptr<World> {
         return std::make_unique<RealWorld<PosixCatalogue>>();
     }},
    {"memory",
     []() -> std::unique_ptr<World> {
         return std::make_unique<MemoryWorld>(MemoryDisk::LastRead::EndsFolder);
     }},
    {"memoryWithEmptyLastRead",
     []() -> std::unique_ptr<World> {
         return std::make_unique<MemoryWorld>(MemoryDisk::LastRead::LeavesEmptyRead);
     }},
};

class CatalogueContractTest : public testing::TestWithParam<Form> {
protected:
    CatalogueRef start() { return startFolder(catalogue(), m_world->start()); }
    Listing list(const CatalogueRef& folder) { return listFolder(catalogue(), folder); }
    FileCatalogue& catalogue() { return m_world->catalogue(); }

    CatalogueStatus statusOfPath(const std::string& path) {
        CatalogueRef reference;
        return catalogue().referenceFromPath(path, reference);
    }

    std::unique_ptr<World> m_world = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(Forms, CatalogueContractTest, testing::ValuesIn(kForms),
                         [](const auto& form) { return std::string(form.param.name); });

TEST_P(CatalogueContractTest, startFolderIsFoundByItsPath) {
    CatalogueRef reference;
    EXPECT_EQ(catalogue().referenceFromPath(m_world->start(), reference), CatalogueStatus::Ok);
    EXPECT_TRUE(reference.isFilledIn());
    EXPECT_EQ(reference.parent, nullptr);
    EXPECT_EQ(reference.name, m_world->start());
}

TEST_P(CatalogueContractTest, startPathOfNoFolderIsGone) {
    m_world->addFile("file", 1);
    EXPECT_EQ(statusOfPath(m_world->pathOf("missing")), CatalogueStatus::Gone);
    EXPECT_EQ(statusOfPath(m_world->pathOf("missing/below")), CatalogueStatus::Gone);
    EXPECT_EQ(statusOfPath(m_world->pathOf("file")), CatalogueStatus::Gone);
    EXPECT_EQ(statusOfPath(""), CatalogueStatus::Gone);
    EXPECT_EQ(statusOfPath(m_world->start() + std::string("\0x", 2)), CatalogueStatus::Gone);
}

TEST_P(CatalogueContractTest, failedStartPathLeavesTheReferenceAlone) {
    CatalogueRef reference;
    ASSERT_EQ(catalogue().referenceFromPath(m_world->pathOf("missing"), reference), CatalogueStatus::Gone);
    EXPECT_FALSE(reference.isFilledIn());
}

TEST_P(CatalogueContractTest, referenceThatWasNeverFilledInIsInvalid) {
    EXPECT_EQ(catalogue().makeIterator()->open(CatalogueRef{}), CatalogueStatus::InvalidReference);
}

TEST_P(CatalogueContractTest, eachEntryComesOnceWithItsKind) {
    m_world->addFile("file", 1);
    m_world->addFolder("empty");
    m_world->addFile("full/inner", 1);
    const Listing listing = list(start());
    EXPECT_EQ(listing.end, CatalogueStatus::EndOfFolder);
    EXPECT_THAT(listing.names(), ElementsAre("empty", "file", "full"));
    EXPECT_FALSE(listing["file"].entry.isDirectory);
    EXPECT_TRUE(listing["empty"].entry.isDirectory);
    EXPECT_TRUE(listing["full"].entry.isDirectory);
}

TEST_P(CatalogueContractTest, valenceOfAFolderIsUnknownUntilItIsRead) {
    m_world->addFolder("empty");
    EXPECT_EQ(list(start())["empty"].entry.valence, kUnknownValence);
}

TEST_P(CatalogueContractTest, emptyFolderEndsWithoutEntries) {
    m_world->addFolder("empty");
    const Listing listing = list(list(start())["empty"].reference);
    EXPECT_EQ(listing.end, CatalogueStatus::EndOfFolder);
    EXPECT_THAT(listing.entries, IsEmpty());
}

TEST_P(CatalogueContractTest, sizeIsTheAllocatedOne) {
    m_world->addFile("some", 10'000);
    m_world->addFile("none", 0);
    const Listing listing = list(start());
    EXPECT_GT(listing["some"].entry.dataPhysicalSize, 0);
    EXPECT_EQ(listing["some"].entry.dataPhysicalSize, m_world->allocated("some"));
    EXPECT_EQ(listing["none"].entry.dataPhysicalSize, m_world->allocated("none"));
}

TEST_P(CatalogueContractTest, dateIsThatOfTheLastChange) {
    m_world->addFile("file", 0);
    m_world->setModified("file", 1'700'000'000, 500'000'000);
    const CatalogueDate expected = catalogueDateFromUnixTime(1'700'000'000, 500'000'000);
    const CatalogueDate date = list(start())["file"].entry.contentModDate;
    EXPECT_EQ(date.highSeconds, expected.highSeconds);
    EXPECT_EQ(date.lowSeconds, expected.lowSeconds);
    EXPECT_EQ(date.fraction, expected.fraction);
}

TEST_P(CatalogueContractTest, foldersOfAnySizeComeWholeInReadsOf110AtMost) {
    for (const std::size_t count : {0U, 1U, 109U, 110U, 111U, 220U, 221U, 1000U}) {
        const std::string folder = "folder" + std::to_string(count);
        m_world->addFolder(folder);
        std::vector<std::string> names;
        for (std::size_t i = 0; i < count; ++i) {
            names.push_back("file" + std::to_string(i));
            m_world->addFile(folder + "/" + names.back(), 0);
        }
        std::sort(names.begin(), names.end());
        const Listing listing = listPath(catalogue(), m_world->pathOf(folder));
        EXPECT_EQ(listing.end, CatalogueStatus::EndOfFolder) << count;
        EXPECT_EQ(listing.names(), names) << count;
        EXPECT_THAT(listing.reads, Each(Le(std::size_t{kEntriesPerRead}))) << count;
        const std::size_t fullReads = count / kEntriesPerRead;
        EXPECT_THAT(listing.reads.size(),
                    testing::AnyOf(std::max<std::size_t>(fullReads, 1), fullReads + 1, fullReads + 2))
            << count;
    }
}

TEST_P(CatalogueContractTest, readingOnAfterTheEndGivesNothing) {
    m_world->addFile("file", 0);
    const auto iterator = catalogue().makeIterator();
    ASSERT_EQ(iterator->open(start()), CatalogueStatus::Ok);
    readToEnd(*iterator);
    EXPECT_EQ(iterator->readBulk(), CatalogueStatus::EndOfFolder);
    EXPECT_THAT(iterator->entries(), IsEmpty());
}

TEST_P(CatalogueContractTest, readingWithNoFolderOpenGivesNothing) {
    const auto iterator = catalogue().makeIterator();
    EXPECT_EQ(iterator->readBulk(), CatalogueStatus::EndOfFolder);
    EXPECT_THAT(iterator->entries(), IsEmpty());
}

TEST_P(CatalogueContractTest, closingTwiceOrWithNoFolderOpenIsHarmless) {
    m_world->addFile("file", 0);
    const auto iterator = catalogue().makeIterator();
    iterator->close();
    ASSERT_EQ(iterator->open(start()), CatalogueStatus::Ok);
    ASSERT_NE(iterator->readBulk(), CatalogueStatus::Denied);
    iterator->close();
    iterator->close();
    EXPECT_THAT(iterator->entries(), IsEmpty());
    EXPECT_EQ(iterator->readBulk(), CatalogueStatus::EndOfFolder);
}

TEST_P(CatalogueContractTest, openingAnotherFolderLeavesTheFirst) {
    for (int i = 0; i < 300; ++i)
        m_world->addFile("many/file" + std::to_string(i), 0);
    m_world->addFile("few/only", 0);
    const Listing top = list(start());
    const auto iterator = catalogue().makeIterator();
    ASSERT_EQ(iterator->open(top["many"].reference), CatalogueStatus::Ok);
    ASSERT_EQ(iterator->readBulk(), CatalogueStatus::Ok);
    ASSERT_EQ(iterator->open(top["few"].reference), CatalogueStatus::Ok);
    EXPECT_THAT(readToEnd(*iterator).names(), ElementsAre("only"));
}

TEST_P(CatalogueContractTest, failedOpenLeavesNoEntriesOfTheFolderBefore) {
    m_world->addFile("file", 0);
    const auto iterator = catalogue().makeIterator();
    ASSERT_EQ(iterator->open(start()), CatalogueStatus::Ok);
    ASSERT_NE(iterator->readBulk(), CatalogueStatus::Denied);
    ASSERT_EQ(iterator->open(CatalogueRef{}), CatalogueStatus::InvalidReference);
    EXPECT_THAT(iterator->entries(), IsEmpty());
    EXPECT_EQ(iterator->readBulk(), CatalogueStatus::EndOfFolder);
}

TEST_P(CatalogueContractTest, referencesStayGoodAfterTheirIterator) {
    m_world->addFile("a/b/c/file", 0);
    CatalogueRef folder = start();
    for (const char* name : {"a", "b", "c"})
        folder = list(folder)[name].reference;
    EXPECT_THAT(list(folder).names(), ElementsAre("file"));
}

TEST_P(CatalogueContractTest, referenceCanBeOpenedMoreThanOnce) {
    m_world->addFile("a/file", 0);
    const CatalogueRef folder = list(start())["a"].reference;
    EXPECT_THAT(list(folder).names(), ElementsAre("file"));
    EXPECT_THAT(list(folder).names(), ElementsAre("file"));
}

TEST_P(CatalogueContractTest, referencesCrossThreads) {
    m_world->addFile("a/one", 0);
    m_world->addFile("b/two", 0);
    Listing top = list(start());
    std::vector<std::string> first;
    std::vector<std::string> second;
    std::thread a([&, folder = top["a"].reference] { first = list(folder).names(); });
    std::thread b([&, folder = top["b"].reference] { second = list(folder).names(); });
    top = {};
    a.join();
    b.join();
    EXPECT_THAT(first, ElementsAre("one"));
    EXPECT_THAT(second, ElementsAre("two"));
}

TEST_P(CatalogueContractTest, namesAreTheBytesOfTheDisk) {
    const std::vector<std::string> names = {" ",       "...", "a:b", "line\nbreak", std::string(255, 'n'),
                                            "\xFF\xFE"};
    for (const std::string& name : names)
        m_world->addFile(name, 0);
    EXPECT_EQ(list(start()).names(), names);
}

TEST_P(CatalogueContractTest, foldersOfHostileNamesOpen) {
    for (const std::string& name :
         {std::string("\xFF\xFE"), std::string("line\nbreak"), std::string(255, 'n')}) {
        m_world->addFile(name + "/inner", 0);
        EXPECT_THAT(list(list(start())[name].reference).names(), ElementsAre("inner"));
    }
}

TEST_P(CatalogueContractTest, folderThatWasDeletedIsGone) {
    m_world->addFile("a/b/file", 0);
    const CatalogueRef a = list(start())["a"].reference;
    const CatalogueRef b = list(a)["b"].reference;
    m_world->remove("a");
    EXPECT_EQ(list(a).end, CatalogueStatus::Gone);
    EXPECT_EQ(list(b).end, CatalogueStatus::Gone);
}

TEST_P(CatalogueContractTest, startFolderThatWasDeletedIsGone) {
    m_world->addFolder("a");
    const CatalogueRef a = startFolder(catalogue(), m_world->pathOf("a"));
    m_world->remove("a");
    EXPECT_EQ(list(a).end, CatalogueStatus::Gone);
}

TEST_P(CatalogueContractTest, folderReplacedByAFileIsGone) {
    m_world->addFolder("a");
    const CatalogueRef a = list(start())["a"].reference;
    m_world->remove("a");
    m_world->addFile("a", 0);
    EXPECT_EQ(list(a).end, CatalogueStatus::Gone);
}

TEST_P(CatalogueContractTest, folderDeletedWhileItIsReadEndsCalmly) {
    for (int i = 0; i < 1000; ++i)
        m_world->addFile("a/file" + std::to_string(i), 0);
    const auto iterator = catalogue().makeIterator();
    ASSERT_EQ(iterator->open(list(start())["a"].reference), CatalogueStatus::Ok);
    ASSERT_EQ(iterator->readBulk(), CatalogueStatus::Ok);
    EXPECT_THAT(iterator->entries(), SizeIs(kEntriesPerRead));
    m_world->remove("a");
    EXPECT_EQ(readToEnd(*iterator).end, CatalogueStatus::EndOfFolder);
}

TEST_P(CatalogueContractTest, filesDeletedWhileTheirFolderIsReadTakeNoOthersAlong) {
    for (int i = 0; i < 500; ++i)
        m_world->addFile("a/file" + std::to_string(i), 0);
    const auto iterator = catalogue().makeIterator();
    ASSERT_EQ(iterator->open(list(start())["a"].reference), CatalogueStatus::Ok);
    ASSERT_EQ(iterator->readBulk(), CatalogueStatus::Ok);
    std::vector<std::string> seen;
    for (const CatalogueEntry& entry : iterator->entries())
        seen.emplace_back(entry.name);
    for (int i = 0; i < 500; i += 2)
        m_world->remove("a/file" + std::to_string(i));
    for (const std::string& name : readToEnd(*iterator).names())
        seen.push_back(name);
    for (int i = 1; i < 500; i += 2)
        EXPECT_THAT(seen, Contains("file" + std::to_string(i)).Times(1));
}

TEST_P(CatalogueContractTest, wholeTreeIsReached) {
    // start
    // |-- file
    // |-- a
    // |   |-- file
    // |   `-- b
    // |       `-- file
    // `-- empty
    m_world->addFile("file", 1);
    m_world->addFile("a/file", 4096);
    m_world->addFile("a/b/file", 4097);
    m_world->addFolder("empty");
    const TreeTotals totals = walkTree(catalogue(), start());
    EXPECT_EQ(totals.files, 3U);
    EXPECT_EQ(totals.folders, 3U);
    EXPECT_EQ(totals.fileBytes,
              m_world->allocated("file") + m_world->allocated("a/file") + m_world->allocated("a/b/file"));
    EXPECT_EQ(totals.denied + totals.gone, 0U);
}

} // namespace
} // namespace veltrano
