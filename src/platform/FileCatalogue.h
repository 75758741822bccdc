#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace veltrano {

/// The most entries that one bulk read delivers.
inline constexpr int kEntriesPerRead = 110;

/// What an operation of the catalogue came to. Trouble is data here: nothing throws.
enum class CatalogueStatus {
    Ok,
    EndOfFolder,      ///< The folder is exhausted; entries may come with it.
    Denied,           ///< The folder is there but may not be read (or a read of it failed).
    Gone,             ///< The folder has vanished, or was never there, or is no folder.
    InvalidReference, ///< The reference was never filled in.
};

/// A moment of the catalogue's clock: whole seconds since the start of 1904, in two parts, and a fraction of
/// 1/65536 seconds. High and low part both 0 mean that no date is known.
struct CatalogueDate {
    std::uint16_t highSeconds = 0;
    std::uint32_t lowSeconds = 0;
    std::uint16_t fraction = 0;

    bool operator==(const CatalogueDate&) const = default;
};

/// Seconds from the start of 1904 to the start of 1970 (66 years with 17 leap days).
inline constexpr std::int64_t kCatalogueEpochOffset = 2'082'844'800;

/// The catalogue date of a Unix time. Times before 1904 become the clock's first second, never "unknown".
[[nodiscard]] CatalogueDate catalogueDateFromUnixTime(std::int64_t seconds, std::uint32_t nanoseconds = 0);

/// A folder that the catalogue keeps open or can open again. Each form of the catalogue has its own;
/// references to the folder's children hold it.
class CatalogueFolder {
public:
    virtual ~CatalogueFolder() = default;
};

/// Names one folder without its path: the folder above it and its name there. Copies are cheap and may
/// cross threads. A default-made one is "not filled in".
struct CatalogueRef {
    std::shared_ptr<CatalogueFolder> parent; ///< Null in a start folder's reference and in an empty one.
    std::string name;                        ///< Bytes. The whole path in a start folder's reference.

    bool isFilledIn() const { return parent != nullptr || !name.empty(); }
};

/// The valence of a folder whose number of entries is known only by reading it.
inline constexpr std::uint32_t kUnknownValence = 0xFFFFFFFF;

/// One record of a bulk read.
struct CatalogueEntry {
    std::string_view name;                   ///< Bytes, valid until the next read, open or close.
    std::int64_t dataPhysicalSize = 0;       ///< Allocated bytes.
    CatalogueDate contentModDate;            ///< Last change of the content.
    std::uint32_t valence = kUnknownValence; ///< Folders: entries inside; 0 where another mount covers it.
    bool isDirectory = false;
    bool isSymbolicLink = false;  ///< Wherever it leads; never together with isDirectory.
    bool isAlias = false;         ///< A file that stands for another; no file system of Linux has this bit.
    bool hasBundleBit = false;    ///< A folder marked as a package; likewise.
    bool hasInvisibleBit = false; ///< Marked as invisible, whatever the name; likewise.
};

/// Reads one folder at a time, this level only. A worker owns one and reuses it for every folder, so that
/// reading allocates nothing; one thread at a time.
class CatalogueIterator {
public:
    CatalogueIterator() = default;
    CatalogueIterator(const CatalogueIterator&) = delete;
    CatalogueIterator& operator=(const CatalogueIterator&) = delete;
    virtual ~CatalogueIterator() = default;

    /// Opens the folder. Ok, Gone or InvalidReference: lack of permission comes out at the first read.
    /// A folder already open is closed first.
    [[nodiscard]] virtual CatalogueStatus open(const CatalogueRef& folder) = 0;

    /// The next entries, kEntriesPerRead at most, in `entries()`. Ok when more may follow, EndOfFolder with
    /// the last ones (or with none), Denied, always with none, when the folder can't be read (on), or when
    /// all of it has come but for entries whose facts are refused. A folder that is deleted meanwhile just
    /// ends.
    [[nodiscard]] virtual CatalogueStatus readBulk() = 0;

    /// The entries of the last read.
    virtual std::span<const CatalogueEntry> entries() const = 0;

    /// A reference to the folder that entry `index` of the last read stands for.
    [[nodiscard]] virtual CatalogueRef reference(std::size_t index) = 0;

    /// Closes the folder. References made from it stay good. Harmless when none is open.
    virtual void close() = 0;
};

/// The file catalogue of a system: folders by reference, read in bulk. Its operations may be called from any
/// thread; each iterator belongs to one. A folder on which another volume is mounted looks as it does under
/// the mount: valence 0. Nothing follows a symbolic link, but for the links in a start path.
/// The catalogue outlives its iterators and references.
class FileCatalogue {
public:
    virtual ~FileCatalogue() = default;

    /// A reference to the folder at an absolute path. Gone if nothing that can be opened is there. The path
    /// is bytes and is resolved as the system resolves it.
    [[nodiscard]] virtual CatalogueStatus referenceFromPath(std::string_view path, CatalogueRef& result) = 0;

    [[nodiscard]] virtual std::unique_ptr<CatalogueIterator> makeIterator() = 0;
};

} // namespace veltrano
