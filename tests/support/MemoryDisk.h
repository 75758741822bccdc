#pragma once

#include "platform/FileCatalogue.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <string_view>

namespace veltrano {

/// Facts of an entry on a MemoryDisk.
struct MemoryFacts {
    std::int64_t size = 0; ///< Allocated bytes.
    CatalogueDate date{};
    bool isAlias = false;
    bool hasBundleBit = false;
    bool hasInvisibleBit = false;
};

/// An entry that a GeneratedTree works out.
struct GeneratedEntry {
    std::string name;
    MemoryFacts facts;
    bool isDirectory = false;
    std::uint64_t folder = 0; ///< The number of the folder, if it is one.
};

/// A tree of any size that is worked out while it is read, not stored. Asked from several threads at once.
class GeneratedTree {
public:
    virtual ~GeneratedTree() = default;
    virtual std::uint64_t entryCount(std::uint64_t folder) const = 0;
    /// Fills in the entry; `entry` holds the one worked out before, whose memory may be used again.
    virtual void entry(std::uint64_t folder, std::uint64_t index, GeneratedEntry& entry) const = 0;
};

/// Holds readers up until the test lets them go.
class ReadGate {
public:
    /// The reader's side: reports the arrival, then waits for `release` or for a permission of `letPass`.
    void pass();

    /// Waits until so many readers have arrived since the gate was made. False after `limit` real seconds.
    [[nodiscard]] bool waitForArrivals(int count, double limit = 60);
    void letPass(int count);
    /// Opens the gate for good.
    void release();

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_nArrived = 0;
    int m_nAllowed = 0;
    bool m_bReleased = false;
};

class MemoryFolder;

/// A file catalogue in memory. Folders and files are told by paths such as "/a/b"; the folder "/" is always
/// there, and missing folders of a path are made. May be changed at any time from any thread, also while it
/// is read: an iterator delivers what is there when it comes to it.
class MemoryDisk final : public FileCatalogue {
public:
    /// How the last entries of a folder come.
    enum class LastRead { EndsFolder, LeavesEmptyRead };
    /// Whether a folder's entry tells how many entries are inside.
    enum class Valence { Unknown, Known };
    using Hook = std::function<void(const std::string& path)>;

    MemoryDisk();
    ~MemoryDisk() override;

    void addFolder(std::string_view path, const MemoryFacts& facts = {});
    void addFile(std::string_view path, const MemoryFacts& facts = {});
    void addFile(std::string_view path, std::int64_t size) { addFile(path, MemoryFacts{.size = size}); }
    /// For names that a path can't tell, with "/" inside.
    void addFolderNamed(std::string_view parent, std::string_view name, const MemoryFacts& facts = {});
    void addFileNamed(std::string_view parent, std::string_view name, const MemoryFacts& facts = {});
    /// The folder's entries are those of the tree's folder of that number.
    void addGenerated(std::string_view path, std::shared_ptr<const GeneratedTree> tree, std::uint64_t folder);
    /// Takes the entry, with all that is in it, off the disk.
    void remove(std::string_view path);

    /// The folder's first read answers Denied.
    void deny(std::string_view path) { failAfter(path, 0); }
    /// A read answers Denied once so many entries have been delivered.
    void failAfter(std::string_view path, std::size_t entries);
    /// The folder is listed, but is Gone when it is opened.
    void vanishAtOpen(std::string_view path);
    /// A mount covers the folder: its valence is 0.
    void coverByMount(std::string_view path);
    /// Each read of the folder passes the gate first, as on a mount that has died.
    void gateReads(std::string_view path, std::shared_ptr<ReadGate> gate);

    // To be set before the disk is read.
    void setLastRead(LastRead lastRead) { m_lastRead = lastRead; }
    void setValence(Valence valence) { m_valence = valence; }
    /// Called before each open or read with the folder's path, on the reading thread, no lock held.
    void setBeforeOpen(Hook hook) { m_beforeOpen = std::move(hook); }
    void setBeforeRead(Hook hook) { m_beforeRead = std::move(hook); }

    [[nodiscard]] CatalogueStatus referenceFromPath(std::string_view path, CatalogueRef& result) override;
    [[nodiscard]] std::unique_ptr<CatalogueIterator> makeIterator() override;

private:
    friend class MemoryIterator;

    std::shared_ptr<MemoryFolder> find(std::string_view path) const;
    std::shared_ptr<MemoryFolder> ensure(std::string_view path);
    std::shared_ptr<MemoryFolder> child(const std::shared_ptr<MemoryFolder>& parent, std::string_view name,
                                        const MemoryFacts& facts);

    LastRead m_lastRead = LastRead::EndsFolder;
    Valence m_valence = Valence::Unknown;
    Hook m_beforeOpen;
    Hook m_beforeRead;

    mutable std::shared_mutex m_mutex;
    std::shared_ptr<MemoryFolder> m_pRoot; ///< With all that is below it guarded by m_mutex.
};

} // namespace veltrano
