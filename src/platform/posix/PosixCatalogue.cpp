#include "platform/posix/PosixCatalogue.h"

#include "platform/posix/OpenFolder.h"

#include <array>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>

namespace veltrano {

namespace {

constexpr std::int64_t kBytesPerBlock = 512; ///< The unit of st_blocks.

bool isSelfOrParent(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

class PosixIterator final : public CatalogueIterator {
public:
    explicit PosixIterator(FolderHandles& handles) : m_handles(handles), m_folder(handles) {}
    ~PosixIterator() override { closeStream(); }

    CatalogueStatus open(const CatalogueRef& folder) override;
    CatalogueStatus readBulk() override;
    std::span<const CatalogueEntry> entries() const override { return {m_entries.data(), m_nEntries}; }
    CatalogueRef reference(std::size_t index) override { return m_folder.reference(m_entries[index].name); }
    void close() override;

private:
    void openStream();
    void closeStream();
    void append(const char* name);

    FolderHandles& m_handles;
    OpenFolder m_folder;
    DIR* m_pStream = nullptr;
    dev_t m_device = 0; ///< Of the folder.
    bool m_bAtEnd = true;
    bool m_bDenied = false; ///< The folder, or the facts of an entry.

    std::size_t m_nEntries = 0;
    std::array<CatalogueEntry, kEntriesPerRead> m_entries;
    std::array<std::string, kEntriesPerRead> m_names; ///< The stream's own buffer lasts one entry only.
};

CatalogueStatus PosixIterator::open(const CatalogueRef& folder) {
    close();
    const CatalogueStatus status = m_folder.open(folder);
    if (status != CatalogueStatus::Ok)
        return status;
    openStream();
    m_bDenied = m_pStream == nullptr;
    m_bAtEnd = m_bDenied;
    return CatalogueStatus::Ok;
}

/// A stream owns its descriptor, and the folder's may have to outlive it for the references: hence a copy.
void PosixIterator::openStream() {
    struct stat facts {};
    if (m_folder.descriptor() < 0 || ::fstat(m_folder.descriptor(), &facts) != 0)
        return;
    m_device = facts.st_dev;
    const int copy = m_handles.duplicate(m_folder.descriptor());
    if (copy < 0)
        return;
    m_pStream = ::fdopendir(copy);
    if (m_pStream == nullptr)
        m_handles.giveBack(copy);
}

void PosixIterator::closeStream() {
    if (m_pStream == nullptr)
        return;
    ::closedir(m_pStream);
    m_handles.forget();
    m_pStream = nullptr;
}

CatalogueStatus PosixIterator::readBulk() {
    m_nEntries = 0;
    while (!m_bAtEnd && m_nEntries < m_entries.size()) {
        errno = 0;
        const dirent* record = ::readdir(m_pStream);
        if (record == nullptr) {
            m_bAtEnd = true;
            m_bDenied = m_bDenied || (errno != 0 && statusOfReadError(errno) == CatalogueStatus::Denied);
        } else if (!isSelfOrParent(record->d_name)) {
            append(record->d_name);
        }
    }
    if (!m_bAtEnd || (m_bDenied && m_nEntries > 0))
        return CatalogueStatus::Ok;
    return m_bDenied ? CatalogueStatus::Denied : CatalogueStatus::EndOfFolder;
}

/// An entry that has just been deleted is left out. So is one whose facts are refused, but then the folder
/// ends as denied, after everything else in it has been delivered.
void PosixIterator::append(const char* name) {
    struct stat facts {};
    if (::fstatat(::dirfd(m_pStream), name, &facts, AT_SYMLINK_NOFOLLOW) != 0) {
        m_bDenied = m_bDenied || statusOfReadError(errno) == CatalogueStatus::Denied;
        return;
    }
    CatalogueEntry& entry = m_entries[m_nEntries];
    entry.name = m_names[m_nEntries].assign(name);
    entry.dataPhysicalSize = std::int64_t{facts.st_blocks} * kBytesPerBlock;
    entry.contentModDate =
        catalogueDateFromUnixTime(facts.st_mtim.tv_sec, static_cast<std::uint32_t>(facts.st_mtim.tv_nsec));
    entry.isDirectory = S_ISDIR(facts.st_mode);
    entry.isSymbolicLink = S_ISLNK(facts.st_mode);
    entry.valence = entry.isDirectory && facts.st_dev != m_device ? 0 : kUnknownValence;
    ++m_nEntries;
}

void PosixIterator::close() {
    closeStream();
    m_folder.close();
    m_nEntries = 0;
    m_bAtEnd = true;
    m_bDenied = false;
}

} // namespace

PosixCatalogue::PosixCatalogue(std::size_t descriptorLimit) : m_handles(descriptorLimit, O_RDONLY) {}

CatalogueStatus PosixCatalogue::referenceFromPath(std::string_view path, CatalogueRef& result) {
    if (m_handles.probe(path) != 0)
        return CatalogueStatus::Gone;
    result = {nullptr, std::string(path)};
    return CatalogueStatus::Ok;
}

std::unique_ptr<CatalogueIterator> PosixCatalogue::makeIterator() {
    return std::make_unique<PosixIterator>(m_handles);
}

} // namespace veltrano
