#include "scan/HandOverQueue.h"
#include "scan/TWalker.h"

#include <algorithm>
#include <new>

namespace veltrano {

namespace {

/// The files of one folder that are kept back at most, so that a huge folder appears while it is read.
constexpr std::size_t kMostFilesKept = std::size_t{10} * kEntriesPerRead;

/// The largest child array that is made in one piece for a folder; a larger one grows by itself.
constexpr std::size_t kLargestReadyArray = 4096; // children

/// Requests by entries instead of bytes: at least so many entries lie between two.
constexpr std::size_t kEntriesPerUpdate = 301;
constexpr double kSizeFactorPerUpdate = 1.1;

/// Told by bytes: ".app" is ASCII, so a name of at least 5 UTF-16 units that ends in it is the same as one
/// that has any byte before it.
bool isPackageName(std::string_view name) {
    return name.size() > 4 && name.ends_with(".app");
}

bool isHiddenEntry(const CatalogueEntry& entry) {
    return entry.name.starts_with('.') || entry.hasInvisibleBit;
}

std::unique_ptr<ChildArray, FreeBytes> makeTransientArray(std::size_t count) {
    void* const bytes = std::malloc(sizeof(ChildArray) + count * sizeof(FileSystemItem*));
    if (!bytes)
        throw std::bad_alloc();
    auto* const array = new (bytes) ChildArray;
    array->capacity = static_cast<std::uint32_t>(count);
    return std::unique_ptr<ChildArray, FreeBytes>(array);
}

} // namespace

/// Reads the folder of the job and all the folders that stay with this worker. The first open is also the
/// test whether the reference is good; a start folder has none yet and is found by its path.
CatalogueStatus TWalker::IterateFolderStack() {
    m_nRunningSize = 0;
    m_nSizeAtUpdate = 0;
    m_nEntriesSinceUpdate = 0;
    stackitem2 folder = std::move(fsref);
    if (!folder.ref.isFilledIn()) {
        const CatalogueStatus found = m_pTables->catalogue->referenceFromPath(aname, folder.ref);
        if (found != CatalogueStatus::Ok)
            return found;
    }

    CatalogueStatus status = CatalogueStatus::Ok;
    do {
        if (BCancelled) {
            keepUnread(folder);
            break;
        }
        status = readFolder(folder);
    } while (mstack.pop(folder));
    return status == CatalogueStatus::EndOfFolder ? CatalogueStatus::Ok : status;
}

/// Reads one folder to its end. One that has gone meanwhile leaves no trace, nor does one without entries.
CatalogueStatus TWalker::readFolder(stackitem2& folder) {
    CatalogueStatus status = m_pIterator->open(folder.ref);
    if (status != CatalogueStatus::Ok)
        return status;

    m_nSubfolders = 0;
    m_bDelivered = false;
    bool going = true;
    while (going) {
        if (BCancelled) {
            keepUnread(folder);
            break;
        }
        status = m_pIterator->readBulk();
        if (status != CatalogueStatus::Ok && status != CatalogueStatus::EndOfFolder) {
            announce(folder);
            foldersWithDeniedItems.push_back(folder.item->getFullPath());
            break;
        }
        const std::span<const CatalogueEntry> entries = m_pIterator->entries();
        const bool ended = status == CatalogueStatus::EndOfFolder;
        going = readEntries(folder, entries) && !ended;
        const bool asksForMerge = isUpdateDue(entries.size()) && *m_pTables->gate;
        if (!going || asksForMerge || m_files.size() >= kMostFilesKept)
            deliver(folder, ended);
        if (asksForMerge)
            send(HandOver::Kind::Update, nullptr);
    }
    deliver(folder, false);
    m_pIterator->close();
    return status;
}

/// False if a cancel cut it short.
bool TWalker::readEntries(stackitem2& folder, std::span<const CatalogueEntry> entries) {
    if (entries.empty())
        return true;
    announce(folder);
    mnfound.fetch_add(static_cast<std::uint32_t>(entries.size()), std::memory_order_relaxed);
    std::int64_t size = 0;
    std::size_t index = 0;
    for (; index < entries.size() && !BCancelled; ++index) {
        const CatalogueEntry& entry = entries[index];
        const std::uint8_t code = m_pTables->timeCode.getTimeCodeU(entry.contentModDate);
        size += ProcesFileSystemElement(entry, index, folder, code);
    }
    m_nRunningSize += size;
    mnsz.fetch_add(size, std::memory_order_relaxed);
    m_pTables->gScanFileCount.fetch_add(std::exchange(m_nFilesSeen, 0), std::memory_order_relaxed);
    return index == entries.size();
}

/// Deals with one entry and answers its size in bytes.
std::int64_t TWalker::ProcesFileSystemElement(const CatalogueEntry& entry, std::size_t withRef,
                                              const stackitem2& forParent, std::uint8_t withTimeCode) {
    if (entry.isDirectory) {
        // An empty folder does not exist for this system.
        if (entry.valence == 0)
            return 0;
        processFolder(entry, withRef, forParent, withTimeCode);
    } else if (!entry.isAlias) {
        processFile(entry, forParent, withTimeCode);
    }
    return entry.dataPhysicalSize;
}

void TWalker::processFolder(const CatalogueEntry& entry, std::size_t withRef, const stackitem2& forParent,
                            std::uint8_t withTimeCode) {
    stackitem2 folder;
    folder.ref = m_pIterator->reference(withRef);
    folder.item = forParent.item;
    folder.bNew = true;
    folder.bPack = forParent.bPack;
    folder.bInPack = forParent.bPack;
    if (!folder.bInPack) {
        folder.bPack = entry.hasBundleBit || isPackageName(entry.name);
        folder.bHidden = isHiddenEntry(entry);
        folder.timeCode = withTimeCode;
        ++m_nSubfolders;
    }
    // A worker keeps a folder for itself before it gives any away.
    if (!mstack.isEmpty() && tryDispacthWork(folder, nullptr, false))
        return;
    mstack.push(std::move(folder));
}

void TWalker::processFile(const CatalogueEntry& entry, const stackitem2& forParent,
                          std::uint8_t withTimeCode) {
    ++m_nFilesSeen;
    const std::int64_t size = std::max<std::int64_t>(entry.dataPhysicalSize, 0);
    m_nFilesSum += size;
    m_nFilesLargest = std::max(m_nFilesLargest, size);
    if (forParent.bPack)
        return;
    m_files.push_back(FileSystemItem::initWithPathSizeNoParent(m_arena, itemName(entry.name), forParent.item,
                                                               entry.dataPhysicalSize, withTimeCode,
                                                               isHiddenEntry(entry)));
}

/// A "/" in a catalogue name reads ":" in a path, and so it does in the tree. Valid until the next call.
std::string_view TWalker::itemName(std::string_view catalogueName) {
    if (catalogueName.find('/') == std::string_view::npos)
        return catalogueName;
    m_nameBuffer = catalogueName;
    std::replace(m_nameBuffer.begin(), m_nameBuffer.end(), '/', ':');
    return m_nameBuffer;
}

/// Makes the item of a folder that turns out to be there, and hands it over. The worker that reads the folder
/// does it, just before the folder's contents. The item starts at 0 whatever the catalogue says of the folder
/// itself: a folder weighs what its contents weigh, and the totals build on that.
void TWalker::announce(stackitem2& folder) {
    if (!folder.bNew)
        return;
    folder.bNew = false;
    m_pTables->gScanFolderCount.fetch_add(1, std::memory_order_relaxed);
    if (folder.bInPack)
        return;
    FolderSystemItem* const above = folder.item;
    const std::string_view name = itemName(folder.ref.name);
    folder.item = FolderSystemItem::initWithPathSizeNoParent(m_arena, name, above, 0, folder.bPack,
                                                             folder.timeCode, folder.bHidden);
    if (m_pTables->trash->contains(*above, name))
        folder.item->setTrashFlag(true);
    send(folder.bPack ? HandOver::Kind::Package : HandOver::Kind::Folder, folder.item);
}

bool TWalker::isUpdateDue(std::size_t entries) {
    m_nEntriesSinceUpdate += entries;
    bool due = false;
    if (mnSize4Update != 0) {
        const std::int64_t grown = m_nRunningSize - m_nSizeAtUpdate;
        due = grown > 0 && static_cast<std::uint64_t>(grown) > mnSize4Update;
    } else {
        due =
            m_nEntriesSinceUpdate >= kEntriesPerUpdate &&
            static_cast<double>(m_nRunningSize) * kSizeFactorPerUpdate > static_cast<double>(m_nSizeAtUpdate);
    }
    if (due) {
        m_nEntriesSinceUpdate = 0;
        m_nSizeAtUpdate = m_nRunningSize;
    }
    return due;
}

/// Hands over the files read so far. `folderEnded`: there are no more.
void TWalker::deliver(const stackitem2& folder, bool folderEnded) {
    if (!folder.bPack) {
        deliverLeaves(folder, folderEnded);
    } else if (m_nFilesSum != 0) {
        HandOver message;
        message.kind = HandOver::Kind::PackageBytes;
        message.nWorker = static_cast<std::uint8_t>(nID);
        message.block.folder = folder.item;
        message.block.sum = m_nFilesSum;
        m_pTables->queue->push(std::move(message));
    }
    m_nFilesSum = 0;
    m_nFilesLargest = 0;
}

void TWalker::deliverLeaves(const stackitem2& folder, bool folderEnded) {
    if (m_files.empty())
        return;
    HandOver message;
    message.kind = HandOver::Kind::Leaves;
    message.nWorker = static_cast<std::uint8_t>(nID);
    LeavesBlock& block = message.block;
    block.folder = folder.item;
    block.sum = m_nFilesSum;
    block.largest = m_nFilesLargest;
    // A folder that is known whole gets an array with room for all its children, which it keeps as it is.
    const std::size_t children = m_files.size() + m_nSubfolders;
    if (folderEnded && !m_bDelivered && children <= kLargestReadyArray) {
        block.files = m_arena.makeChildArray(static_cast<std::uint32_t>(children));
    } else {
        block.transient = makeTransientArray(m_files.size());
        block.files = block.transient.get();
    }
    std::copy(m_files.begin(), m_files.end(), block.files->items());
    block.files->count = static_cast<std::uint32_t>(m_files.size());
    m_pTables->queue->push(std::move(message));
    m_files.clear();
    m_bDelivered = true;
}

void TWalker::send(HandOver::Kind kind, FolderSystemItem* folder) {
    HandOver message;
    message.kind = kind;
    message.nWorker = static_cast<std::uint8_t>(nID);
    message.block.folder = folder;
    m_pTables->queue->push(std::move(message));
}

} // namespace veltrano
