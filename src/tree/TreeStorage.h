#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace veltrano {

class FileSystemItem;
struct ChildArray;
class TreeStorage;

/// Memory that only grows and goes in one step, for the nodes and names of one tree. Belongs to a
/// TreeStorage. One thread at a time uses an arena; two arenas of one storage may be used at the same time.
class TreeArena {
public:
    explicit TreeArena(TreeStorage& storage) : m_storage(storage) {}
    TreeArena(const TreeArena&) = delete;
    TreeArena& operator=(const TreeArena&) = delete;

    /// Uninitialised bytes. `size` must be well below a chunk (kLargestPiece); `alignment` a power of two.
    void* allocate(std::size_t size, std::size_t alignment);

    /// A copy of the bytes, of any length, that lives as long as the tree. No terminating NUL. Never null.
    std::string_view copyBytes(std::string_view bytes);

    /// An array with room for `capacity` children and none in it. See ChildArray for the bound.
    ChildArray* makeChildArray(std::uint32_t capacity);

    template <class Item, class... Arguments>
    Item* make(Arguments&&... arguments) {
        return new (allocate(sizeof(Item), alignof(Item))) Item(std::forward<Arguments>(arguments)...);
    }

    std::size_t bytesReserved() const { return m_chunks.size() * kChunkSize + m_nLongBytes; }

    static constexpr std::size_t kChunkSize = std::size_t{256} * 1024; ///< Bytes, a power of two.
    static constexpr std::size_t kLargestPiece = kChunkSize / 4;       ///< Bytes.

private:
    friend class TreeStorage;
    void addChunk();
    void* allocateLong(std::size_t size);

    TreeStorage& m_storage;
    std::vector<void*> m_chunks;
    std::vector<void*>
        m_longTexts; // too long for a chunk: the path of a deep root, a list of a thousand names
    std::size_t m_nLongBytes = 0;
    std::byte* m_pNext = nullptr;
    std::byte* m_pEnd = nullptr;
};

/// A folder's children, in the order of arrival. Lies in an arena while small; a large one lies in a block of
/// its own, which the storage owns.
struct ChildArray {
    std::uint32_t count = 0;
    std::uint32_t capacity = 0;

    FileSystemItem** items();
    FileSystemItem* const* items() const;
    FileSystemItem* const* begin() const { return items(); }
    FileSystemItem* const* end() const { return items() + count; }
};

/// The one home of a tree: its nodes, names and child arrays, and its lock. Nothing in it is freed one by
/// one. Held by shared_ptr, also through any item of the tree (`hold`), so that an item that someone still
/// holds can walk up its parents whatever became of the rest. The last holder may let go on any thread; a big
/// tree's memory is then given back on a thread of its own.
class TreeStorage : public std::enable_shared_from_this<TreeStorage> {
public:
    static std::shared_ptr<TreeStorage> create();
    TreeStorage(const TreeStorage&) = delete;
    TreeStorage& operator=(const TreeStorage&) = delete;
    ~TreeStorage();

    /// The storage in whose arenas the object lies. Undefined for anything else.
    static TreeStorage& of(const void* object);

    /// A pointer to an item that keeps its whole tree.
    template <class Item>
    static std::shared_ptr<Item> hold(Item* item) {
        return item ? std::shared_ptr<Item>(of(item).shared_from_this(), item) : nullptr;
    }

    TreeArena& mainArena() { return m_mainArena; }

    /// The arena of worker `index`, 0 to kWorkerCount - 1.
    TreeArena& workerArena(int index) { return *m_workerArenas[static_cast<std::size_t>(index)]; }

    /// Guards the tree's shape and its level table: whoever recounts or walks the tree holds it.
    std::recursive_mutex& lock() { return m_lock; }

    /// An array with the same children and room for at least `needed`; the old one is dead afterwards. Null
    /// makes a new one. Main thread.
    ChildArray* growChildren(ChildArray* array, std::uint32_t needed);

    /// Bytes taken from the system for this tree: chunks and large child arrays.
    std::size_t bytesReserved() const;

    /// The depth of the tree that is growing here, kept by RunningTotals; nothing when no scan runs. Main
    /// thread.
    std::optional<std::int64_t> m_nGrowingDepth;

    static constexpr int kWorkerCount = 4;

private:
    TreeStorage();

    TreeArena m_mainArena;
    std::array<std::unique_ptr<TreeArena>, kWorkerCount> m_workerArenas;
    std::unordered_set<ChildArray*> m_largeArrays; // owned, malloc'ed
    std::size_t m_nLargeBytes = 0;
    std::recursive_mutex m_lock;
};

inline FileSystemItem** ChildArray::items() {
    return reinterpret_cast<FileSystemItem**>(this + 1);
}

inline FileSystemItem* const* ChildArray::items() const {
    return reinterpret_cast<FileSystemItem* const*>(this + 1);
}

} // namespace veltrano
