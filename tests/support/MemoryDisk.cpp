#include "support/MemoryDisk.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <limits>
#include <unordered_map>
#include <utility>
#include <vector>

namespace veltrano {

namespace {

struct StoredEntry {
    std::string name;
    MemoryFacts facts;
    std::shared_ptr<MemoryFolder> folder; ///< Null for a file.
    bool isRemoved = false;               ///< Kept in its place, so that readers' positions stay good.
};

std::pair<std::string_view, std::string_view> splitPath(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return {path.substr(0, slash), path.substr(slash + 1)};
}

} // namespace

void ReadGate::pass() {
    std::unique_lock lock(m_mutex);
    ++m_nArrived;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_bReleased || m_nAllowed > 0; });
    if (!m_bReleased)
        --m_nAllowed;
}

bool ReadGate::waitForArrivals(int count, double limit) {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::duration<double>(limit),
                              [this, count] { return m_nArrived >= count; });
}

void ReadGate::letPass(int count) {
    const std::lock_guard lock(m_mutex);
    m_nAllowed += count;
    m_changed.notify_all();
}

void ReadGate::release() {
    const std::lock_guard lock(m_mutex);
    m_bReleased = true;
    m_changed.notify_all();
}

/// A folder of a MemoryDisk, owned by its entry and by the references to it. Guarded by the disk's mutex.
class MemoryFolder final : public CatalogueFolder {
public:
    MemoryFolder(const MemoryFolder* pAbove, std::string_view name)
        : path(pAbove == nullptr ? "/"
                                 : pAbove->path + (pAbove->path == "/" ? "" : "/") + std::string(name)) {}
    MemoryFolder(const MemoryFolder&) = delete;
    MemoryFolder& operator=(const MemoryFolder&) = delete;

    /// A chain of folders is taken apart from the top, so that its depth needs no stack.
    ~MemoryFolder() override {
        std::vector<std::shared_ptr<MemoryFolder>> below;
        takeFolders(below);
        while (!below.empty()) {
            const std::shared_ptr<MemoryFolder> folder = std::move(below.back());
            below.pop_back();
            if (folder.use_count() == 1)
                folder->takeFolders(below);
        }
    }

    std::uint64_t count() const {
        if (tree != nullptr)
            return tree->entryCount(number);
        return static_cast<std::uint64_t>(std::count_if(entries.begin(), entries.end(),
                                                        [](const auto& entry) { return !entry.isRemoved; }));
    }

    const std::string path;
    std::vector<StoredEntry> entries;
    std::unordered_map<std::string, std::size_t> places;
    std::shared_ptr<const GeneratedTree> tree; ///< Takes the place of the entries.
    std::uint64_t number = 0;                  ///< In the tree.
    std::uint64_t failsAfter = std::numeric_limits<std::uint64_t>::max();
    std::shared_ptr<ReadGate> gate;
    bool isRemoved = false;
    bool vanishesAtOpen = false;
    bool isCovered = false;

private:
    void takeFolders(std::vector<std::shared_ptr<MemoryFolder>>& into) {
        for (StoredEntry& entry : entries)
            if (entry.folder != nullptr)
                into.push_back(std::move(entry.folder));
    }
};

/// Reads a MemoryDisk. A reference's parent is the folder itself, which is the quickest way to find it again.
class MemoryIterator final : public CatalogueIterator {
public:
    explicit MemoryIterator(MemoryDisk& disk) : m_disk(disk) {}

    CatalogueStatus open(const CatalogueRef& folder) override;
    CatalogueStatus readBulk() override;
    std::span<const CatalogueEntry> entries() const override { return {m_entries.data(), m_nEntries}; }
    CatalogueRef reference(std::size_t index) override;
    void close() override;

private:
    void appendStored(std::uint64_t limit);
    void appendGenerated(std::uint64_t limit);
    void append(std::string_view name, const MemoryFacts& facts, bool isDirectory);
    bool isAtEnd() const;

    MemoryDisk& m_disk;
    std::shared_ptr<MemoryFolder> m_pFolder;
    std::uint64_t m_nNext = 0; ///< The place of the entry to come.
    std::uint64_t m_nDelivered = 0;
    GeneratedEntry m_generated;

    std::size_t m_nEntries = 0;
    std::array<CatalogueEntry, kEntriesPerRead> m_entries;
    std::array<std::string, kEntriesPerRead> m_names;
    std::array<std::shared_ptr<MemoryFolder>, kEntriesPerRead> m_folders;
    std::array<std::uint64_t, kEntriesPerRead> m_numbers{};
};

CatalogueStatus MemoryIterator::open(const CatalogueRef& folder) {
    close();
    if (!folder.isFilledIn())
        return CatalogueStatus::InvalidReference;
    std::shared_ptr<MemoryFolder> found;
    if (folder.parent != nullptr) {
        found = std::static_pointer_cast<MemoryFolder>(folder.parent);
    } else {
        const std::shared_lock lock(m_disk.m_mutex);
        found = m_disk.find(folder.name);
    }
    if (found == nullptr)
        return CatalogueStatus::Gone;
    if (m_disk.m_beforeOpen)
        m_disk.m_beforeOpen(found->path);
    const std::shared_lock lock(m_disk.m_mutex);
    if (found->isRemoved || found->vanishesAtOpen)
        return CatalogueStatus::Gone;
    m_pFolder = std::move(found);
    return CatalogueStatus::Ok;
}

CatalogueStatus MemoryIterator::readBulk() {
    m_nEntries = 0;
    if (m_pFolder == nullptr)
        return CatalogueStatus::EndOfFolder;
    if (m_disk.m_beforeRead)
        m_disk.m_beforeRead(m_pFolder->path);
    std::shared_ptr<ReadGate> gate;
    {
        const std::shared_lock lock(m_disk.m_mutex);
        gate = m_pFolder->gate;
    }
    if (gate != nullptr)
        gate->pass();

    const std::shared_lock lock(m_disk.m_mutex);
    if (m_nDelivered >= m_pFolder->failsAfter)
        return CatalogueStatus::Denied;
    if (m_pFolder->isRemoved)
        return CatalogueStatus::EndOfFolder;
    const std::uint64_t limit =
        std::min<std::uint64_t>(kEntriesPerRead, m_pFolder->failsAfter - m_nDelivered);
    if (m_pFolder->tree != nullptr)
        appendGenerated(limit);
    else
        appendStored(limit);
    m_nDelivered += m_nEntries;
    const bool isLast = m_disk.m_lastRead == MemoryDisk::LastRead::EndsFolder || m_nEntries == 0;
    return isLast && isAtEnd() && m_nDelivered < m_pFolder->failsAfter ? CatalogueStatus::EndOfFolder
                                                                       : CatalogueStatus::Ok;
}

void MemoryIterator::appendStored(std::uint64_t limit) {
    for (; m_nNext < m_pFolder->entries.size() && m_nEntries < limit; ++m_nNext) {
        const StoredEntry& stored = m_pFolder->entries[m_nNext];
        if (stored.isRemoved)
            continue;
        m_names[m_nEntries] = stored.name;
        m_folders[m_nEntries] = stored.folder;
        append(m_names[m_nEntries], stored.facts, stored.folder != nullptr);
    }
}

void MemoryIterator::appendGenerated(std::uint64_t limit) {
    const std::uint64_t count = m_pFolder->tree->entryCount(m_pFolder->number);
    for (; m_nNext < count && m_nEntries < limit; ++m_nNext) {
        m_pFolder->tree->entry(m_pFolder->number, m_nNext, m_generated);
        m_names[m_nEntries] = m_generated.name;
        m_folders[m_nEntries].reset();
        m_numbers[m_nEntries] = m_generated.folder;
        append(m_names[m_nEntries], m_generated.facts, m_generated.isDirectory);
    }
}

void MemoryIterator::append(std::string_view name, const MemoryFacts& facts, bool isDirectory) {
    CatalogueEntry& entry = m_entries[m_nEntries];
    entry.name = name;
    entry.dataPhysicalSize = facts.size;
    entry.contentModDate = facts.date;
    entry.isDirectory = isDirectory;
    entry.isAlias = facts.isAlias;
    entry.hasBundleBit = facts.hasBundleBit;
    entry.hasInvisibleBit = facts.hasInvisibleBit;
    entry.valence = kUnknownValence;
    if (isDirectory) {
        const MemoryFolder* folder = m_folders[m_nEntries].get();
        if (folder != nullptr && folder->isCovered)
            entry.valence = 0;
        else if (m_disk.m_valence == MemoryDisk::Valence::Known)
            entry.valence = static_cast<std::uint32_t>(
                folder != nullptr ? folder->count() : m_pFolder->tree->entryCount(m_numbers[m_nEntries]));
    }
    ++m_nEntries;
}

bool MemoryIterator::isAtEnd() const {
    if (m_pFolder->tree != nullptr)
        return m_nNext >= m_pFolder->tree->entryCount(m_pFolder->number);
    return m_nNext >= m_pFolder->entries.size();
}

CatalogueRef MemoryIterator::reference(std::size_t index) {
    std::shared_ptr<MemoryFolder> folder = m_folders[index];
    if (folder == nullptr) {
        folder = std::make_shared<MemoryFolder>(m_pFolder.get(), m_names[index]);
        folder->tree = m_pFolder->tree;
        folder->number = m_numbers[index];
    }
    return {std::move(folder), m_names[index]};
}

void MemoryIterator::close() {
    m_pFolder.reset();
    m_nNext = 0;
    m_nDelivered = 0;
    m_nEntries = 0;
}

MemoryDisk::MemoryDisk() : m_pRoot(std::make_shared<MemoryFolder>(nullptr, "")) {}

MemoryDisk::~MemoryDisk() = default;

void MemoryDisk::addFolder(std::string_view path, const MemoryFacts& facts) {
    const auto [parent, name] = splitPath(path);
    addFolderNamed(parent, name, facts);
}

void MemoryDisk::addFile(std::string_view path, const MemoryFacts& facts) {
    const auto [parent, name] = splitPath(path);
    addFileNamed(parent, name, facts);
}

void MemoryDisk::addFolderNamed(std::string_view parent, std::string_view name, const MemoryFacts& facts) {
    const std::unique_lock lock(m_mutex);
    child(ensure(parent), name, facts);
}

void MemoryDisk::addFileNamed(std::string_view parent, std::string_view name, const MemoryFacts& facts) {
    const std::unique_lock lock(m_mutex);
    const std::shared_ptr<MemoryFolder> folder = ensure(parent);
    folder->places[std::string(name)] = folder->entries.size();
    folder->entries.push_back({std::string(name), facts, nullptr});
}

void MemoryDisk::addGenerated(std::string_view path, std::shared_ptr<const GeneratedTree> tree,
                              std::uint64_t folder) {
    const std::unique_lock lock(m_mutex);
    const std::shared_ptr<MemoryFolder> generated = ensure(path);
    generated->tree = std::move(tree);
    generated->number = folder;
}

void MemoryDisk::remove(std::string_view path) {
    const std::unique_lock lock(m_mutex);
    const auto [above, name] = splitPath(path);
    const std::shared_ptr<MemoryFolder> folder = find(above);
    if (folder == nullptr)
        return;
    const auto place = folder->places.find(std::string(name));
    if (place == folder->places.end())
        return;
    StoredEntry& entry = folder->entries[place->second];
    entry.isRemoved = true;
    folder->places.erase(place);
    std::vector<std::shared_ptr<MemoryFolder>> removed;
    if (entry.folder != nullptr)
        removed.push_back(entry.folder);
    while (!removed.empty()) {
        const std::shared_ptr<MemoryFolder> next = std::move(removed.back());
        removed.pop_back();
        next->isRemoved = true;
        for (const StoredEntry& below : next->entries)
            if (below.folder != nullptr)
                removed.push_back(below.folder);
    }
}

void MemoryDisk::failAfter(std::string_view path, std::size_t entries) {
    const std::unique_lock lock(m_mutex);
    ensure(path)->failsAfter = entries;
}

void MemoryDisk::vanishAtOpen(std::string_view path) {
    const std::unique_lock lock(m_mutex);
    ensure(path)->vanishesAtOpen = true;
}

void MemoryDisk::coverByMount(std::string_view path) {
    const std::unique_lock lock(m_mutex);
    ensure(path)->isCovered = true;
}

void MemoryDisk::gateReads(std::string_view path, std::shared_ptr<ReadGate> gate) {
    const std::unique_lock lock(m_mutex);
    ensure(path)->gate = std::move(gate);
}

CatalogueStatus MemoryDisk::referenceFromPath(std::string_view path, CatalogueRef& result) {
    const std::shared_lock lock(m_mutex);
    if (path.empty() || path.front() != '/' || find(path) == nullptr)
        return CatalogueStatus::Gone;
    result = {nullptr, std::string(path)};
    return CatalogueStatus::Ok;
}

std::unique_ptr<CatalogueIterator> MemoryDisk::makeIterator() {
    return std::make_unique<MemoryIterator>(*this);
}

/// The folder at the path, or null. With the mutex held.
std::shared_ptr<MemoryFolder> MemoryDisk::find(std::string_view path) const {
    std::shared_ptr<MemoryFolder> folder = m_pRoot;
    while (folder != nullptr && !path.empty()) {
        const std::size_t slash = std::min(path.find('/'), path.size());
        const std::string name(path.substr(0, slash));
        path.remove_prefix(std::min(slash + 1, path.size()));
        if (name.empty())
            continue;
        const auto place = folder->places.find(name);
        if (place == folder->places.end())
            return nullptr;
        folder = folder->entries[place->second].folder;
    }
    return folder;
}

/// The folder at the path, made with those above it where it is missing. With the mutex held.
std::shared_ptr<MemoryFolder> MemoryDisk::ensure(std::string_view path) {
    std::shared_ptr<MemoryFolder> folder = m_pRoot;
    while (!path.empty()) {
        const std::size_t slash = std::min(path.find('/'), path.size());
        const std::string_view name = path.substr(0, slash);
        path.remove_prefix(std::min(slash + 1, path.size()));
        if (name.empty())
            continue;
        const auto place = folder->places.find(std::string(name));
        if (place == folder->places.end())
            folder = child(folder, name, {});
        else
            folder = folder->entries[place->second].folder;
    }
    return folder;
}

/// A new folder in the parent; one that is there gets the facts. With the mutex held.
std::shared_ptr<MemoryFolder> MemoryDisk::child(const std::shared_ptr<MemoryFolder>& parent,
                                                std::string_view name, const MemoryFacts& facts) {
    const auto place = parent->places.find(std::string(name));
    if (place != parent->places.end()) {
        StoredEntry& entry = parent->entries[place->second];
        entry.facts = facts;
        return entry.folder;
    }
    auto folder = std::make_shared<MemoryFolder>(parent.get(), name);
    parent->places[std::string(name)] = parent->entries.size();
    parent->entries.push_back({std::string(name), facts, folder});
    return folder;
}

} // namespace veltrano
