#include "tree/TreeStorage.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <thread>

namespace veltrano {

namespace {

/// Stands at the start of every chunk. Chunks are aligned to their size, so that the header of the chunk in
/// which an object lies is found by clearing the low bits of its address.
struct ChunkHeader {
    TreeStorage* storage;
    std::uint64_t unused;
};

/// Child arrays above this many bytes get a block of their own, which can grow in place.
constexpr std::size_t kLargeArrayBytes = 4096;

/// From this many chunks on, giving the memory back takes long enough to be felt in the window.
constexpr std::size_t kChunksFreedAside = 16;

std::size_t arrayBytes(std::uint32_t capacity) {
    return sizeof(ChildArray) + capacity * sizeof(FileSystemItem*);
}

} // namespace

void TreeArena::addChunk() {
    void* const chunk = std::aligned_alloc(kChunkSize, kChunkSize);
    if (!chunk)
        throw std::bad_alloc();
    new (chunk) ChunkHeader{&m_storage, 0};
    m_chunks.push_back(chunk);
    m_pNext = static_cast<std::byte*>(chunk) + sizeof(ChunkHeader);
    m_pEnd = static_cast<std::byte*>(chunk) + kChunkSize;
}

void* TreeArena::allocate(std::size_t size, std::size_t alignment) {
    assert(size <= kLargestPiece);
    auto aligned = [&] {
        return reinterpret_cast<std::byte*>((reinterpret_cast<std::uintptr_t>(m_pNext) + alignment - 1) &
                                            ~(alignment - 1));
    };
    if (!m_pNext || aligned() + size > m_pEnd)
        addChunk();
    std::byte* const piece = aligned();
    m_pNext = piece + size;
    return piece;
}

std::string_view TreeArena::copyBytes(std::string_view bytes) {
    auto* const copy = static_cast<char*>(bytes.size() > kLargestPiece ? allocateLong(bytes.size())
                                                                       : allocate(bytes.size(), 1));
    if (!bytes.empty())
        std::memcpy(copy, bytes.data(), bytes.size());
    return {copy, bytes.size()};
}

void* TreeArena::allocateLong(std::size_t size) {
    m_longTexts.push_back(nullptr);
    void* const block = std::malloc(size);
    if (!block)
        throw std::bad_alloc();
    m_longTexts.back() = block;
    m_nLongBytes += size;
    return block;
}

ChildArray* TreeArena::makeChildArray(std::uint32_t capacity) {
    auto* const array = new (allocate(arrayBytes(capacity), alignof(ChildArray*))) ChildArray;
    array->capacity = capacity;
    return array;
}

std::shared_ptr<TreeStorage> TreeStorage::create() {
    return std::shared_ptr<TreeStorage>(new TreeStorage);
}

TreeStorage::TreeStorage() : m_mainArena(*this) {
    for (auto& arena : m_workerArenas)
        arena = std::make_unique<TreeArena>(*this);
}

TreeStorage::~TreeStorage() {
    const auto blocks = std::make_shared<std::vector<void*>>(m_largeArrays.begin(), m_largeArrays.end());
    auto take = [&](const TreeArena& arena) {
        blocks->insert(blocks->end(), arena.m_chunks.begin(), arena.m_chunks.end());
        blocks->insert(blocks->end(), arena.m_longTexts.begin(), arena.m_longTexts.end());
    };
    take(m_mainArena);
    for (const auto& arena : m_workerArenas)
        take(*arena);

    auto giveBack = [blocks] {
        for (void* block : *blocks)
            std::free(block);
    };
    if (blocks->size() >= kChunksFreedAside) {
        try {
            std::thread(giveBack).detach();
            return;
        } catch (const std::system_error&) {
            // No thread is to be had: a pause in the window is better than the end of the program.
        }
    }
    giveBack();
}

TreeStorage& TreeStorage::of(const void* object) {
    const auto address = reinterpret_cast<std::uintptr_t>(object) & ~(TreeArena::kChunkSize - 1);
    return *reinterpret_cast<const ChunkHeader*>(address)->storage;
}

ChildArray* TreeStorage::growChildren(ChildArray* array, std::uint32_t needed) {
    const std::uint32_t count = array ? array->count : 0;
    // The first child gets room for one, for most folders with one child stay so; then half as much again.
    const std::uint32_t capacity = std::max(needed, array ? array->capacity + array->capacity / 2 : 1);
    const std::size_t bytes = arrayBytes(capacity);

    if (array && m_largeArrays.contains(array)) {
        m_largeArrays.erase(array);
        m_nLargeBytes -= arrayBytes(array->capacity);
        array = static_cast<ChildArray*>(std::realloc(static_cast<void*>(array), bytes));
        if (!array)
            throw std::bad_alloc();
    } else {
        ChildArray* const old = array;
        if (bytes > kLargeArrayBytes) {
            void* const block = std::malloc(bytes);
            if (!block)
                throw std::bad_alloc();
            array = new (block) ChildArray;
        } else {
            array = m_mainArena.makeChildArray(capacity);
        }
        if (old)
            std::copy_n(old->items(), count, array->items());
        array->count = count;
    }
    array->capacity = capacity;
    if (bytes > kLargeArrayBytes) {
        m_largeArrays.insert(array);
        m_nLargeBytes += bytes;
    }
    return array;
}

std::size_t TreeStorage::bytesReserved() const {
    std::size_t bytes = m_mainArena.bytesReserved() + m_nLargeBytes;
    for (const auto& arena : m_workerArenas)
        bytes += arena->bytesReserved();
    return bytes;
}

} // namespace veltrano
