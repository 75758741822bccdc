#include "platform/linux/LinuxCatalogue.h"

#include "platform/posix/OpenFolder.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <string>

namespace veltrano {

namespace {

constexpr std::int64_t kBytesPerBlock = 512; ///< The unit of stx_blocks.

/// Big enough that 110 entries take one call on most file systems, small enough for the second-level cache.
constexpr std::size_t kBufferBytes = 64 * 1024;
/// Room for some records of the longest names; with less than this left a read ends early.
constexpr std::size_t kLeastRoom = 2 * 1024;

constexpr unsigned kEntryMask = STATX_TYPE | STATX_BLOCKS | STATX_MTIME | STATX_MNT_ID;
/// Sizes are asked for as any other program gets them, so that totals agree with theirs on network mounts
/// too.
constexpr int kEntryFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;

bool isSelfOrParent(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

class LinuxIterator final : public CatalogueIterator {
public:
    explicit LinuxIterator(FolderHandles& handles) : m_folder(handles) {}

    CatalogueStatus open(const CatalogueRef& folder) override;
    CatalogueStatus readBulk() override;
    std::span<const CatalogueEntry> entries() const override { return {m_entries.data(), m_nEntries}; }
    CatalogueRef reference(std::size_t index) override { return m_folder.reference(m_entries[index].name); }
    void close() override;

private:
    bool refill();
    void append(const char* name);
    bool isCovered(const struct statx& facts);

    OpenFolder m_folder;
    bool m_bAtEnd = true;
    bool m_bDenied = false;     ///< The folder, or the facts of an entry.
    bool m_bFactsKnown = false; ///< Whether m_facts are this folder's.
    struct statx m_facts {};

    // The part [m_nNext, m_nFilled) of the buffer is still to be delivered. The names of the last read lie
    // before it.
    std::size_t m_nNext = 0;
    std::size_t m_nFilled = 0;
    std::size_t m_nEntries = 0;
    std::array<CatalogueEntry, kEntriesPerRead> m_entries;
    alignas(dirent64) std::array<char, kBufferBytes> m_buffer;
};

CatalogueStatus LinuxIterator::open(const CatalogueRef& folder) {
    close();
    const CatalogueStatus status = m_folder.open(folder);
    if (status != CatalogueStatus::Ok)
        return status;
    m_bDenied = m_folder.descriptor() < 0;
    m_bAtEnd = m_bDenied;
    return CatalogueStatus::Ok;
}

CatalogueStatus LinuxIterator::readBulk() {
    m_nEntries = 0;
    if (m_nNext == m_nFilled)
        m_nNext = m_nFilled = 0;
    while (m_nEntries < m_entries.size()) {
        if (m_nNext == m_nFilled && !refill())
            break;
        const char* record = m_buffer.data() + m_nNext;
        decltype(dirent64::d_reclen) length = 0;
        std::memcpy(&length, record + offsetof(dirent64, d_reclen), sizeof length);
        m_nNext += length;
        const char* name = record + offsetof(dirent64, d_name);
        if (!isSelfOrParent(name))
            append(name);
    }
    if (!m_bAtEnd || (m_bDenied && m_nEntries > 0))
        return CatalogueStatus::Ok;
    return m_bDenied ? CatalogueStatus::Denied : CatalogueStatus::EndOfFolder;
}

/// More records behind those that this read has delivered. False if there are none or no room is left.
bool LinuxIterator::refill() {
    if (m_bAtEnd)
        return false;
    if (m_nEntries == 0)
        m_nNext = m_nFilled = 0;
    if (m_buffer.size() - m_nFilled < kLeastRoom)
        return false;
    const ssize_t got =
        ::getdents64(m_folder.descriptor(), m_buffer.data() + m_nFilled, m_buffer.size() - m_nFilled);
    if (got > 0) {
        m_nFilled += static_cast<std::size_t>(got);
        return true;
    }
    m_bAtEnd = true;
    m_bDenied = m_bDenied || (got < 0 && statusOfReadError(errno) == CatalogueStatus::Denied);
    return false;
}

/// An entry that has just been deleted is left out. So is one whose facts are refused, but then the folder
/// ends as denied, after everything else in it has been delivered.
void LinuxIterator::append(const char* name) {
    struct statx facts;
    if (::statx(m_folder.descriptor(), name, kEntryFlags, kEntryMask, &facts) != 0) {
        m_bDenied = m_bDenied || statusOfReadError(errno) == CatalogueStatus::Denied;
        return;
    }
    CatalogueEntry& entry = m_entries[m_nEntries];
    entry.name = name;
    entry.dataPhysicalSize = static_cast<std::int64_t>(facts.stx_blocks) * kBytesPerBlock;
    entry.contentModDate = catalogueDateFromUnixTime(facts.stx_mtime.tv_sec, facts.stx_mtime.tv_nsec);
    entry.isDirectory = S_ISDIR(facts.stx_mode);
    entry.isSymbolicLink = S_ISLNK(facts.stx_mode);
    entry.valence = entry.isDirectory && isCovered(facts) ? 0 : kUnknownValence;
    ++m_nEntries;
}

bool LinuxIterator::isCovered(const struct statx& facts) {
    const bool isMarked = (facts.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0;
    if (!isMarked && !m_bFactsKnown)
        m_bFactsKnown = ::statx(m_folder.descriptor(), "", AT_EMPTY_PATH, kEntryMask, &m_facts) == 0;
    return isOtherMount(facts, m_facts);
}

void LinuxIterator::close() {
    m_folder.close();
    m_nNext = m_nFilled = 0;
    m_nEntries = 0;
    m_bAtEnd = true;
    m_bDenied = false;
    m_bFactsKnown = false;
}

} // namespace

bool isOtherMount(const struct statx& entry, const struct statx& folder) {
    if ((entry.stx_attributes & STATX_ATTR_AUTOMOUNT) != 0)
        return true;
    if ((entry.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0)
        return (entry.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    if ((entry.stx_mask & folder.stx_mask & STATX_MNT_ID) != 0)
        return entry.stx_mnt_id != folder.stx_mnt_id;
    return entry.stx_dev_major != folder.stx_dev_major || entry.stx_dev_minor != folder.stx_dev_minor;
}

LinuxCatalogue::LinuxCatalogue(std::size_t descriptorLimit) : m_handles(descriptorLimit, O_PATH) {}

CatalogueStatus LinuxCatalogue::referenceFromPath(std::string_view path, CatalogueRef& result) {
    if (m_handles.probe(path) != 0)
        return CatalogueStatus::Gone;
    result = {nullptr, std::string(path)};
    return CatalogueStatus::Ok;
}

std::unique_ptr<CatalogueIterator> LinuxCatalogue::makeIterator() {
    return std::make_unique<LinuxIterator>(m_handles);
}

} // namespace veltrano
