#pragma once

#include "tree/TreeStorage.h"

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace veltrano {

class FolderSystemItem;

struct FreeBytes {
    void operator()(void* bytes) const { std::free(bytes); }
};

/// The files of one folder that were read in one go, or some of them.
struct LeavesBlock {
    FolderSystemItem* folder = nullptr;
    ChildArray* files = nullptr;
    /// The files' array if it is not to become the folder's own; else it lies in the tree's storage.
    std::unique_ptr<ChildArray, FreeBytes> transient;
    std::int64_t sum = 0;     ///< Bytes.
    std::int64_t largest = 0; ///< Bytes.
};

/// What travels from a scan's threads to the main thread. Those of one worker arrive in order.
struct HandOver {
    /// From Update on, someone waits for the main thread to deal with it.
    enum class Kind : std::uint8_t {
        Folder,       ///< `block.folder` is to be linked.
        Package,      ///< Likewise.
        Leaves,       ///< `block` is to be linked.
        PackageBytes, ///< `block.sum` was found inside the package `block.folder`.
        Update,       ///< The worker asks for a merge.
        LastMerge,    ///< A merge that no gate holds back; `bFinished` unless the scan was cancelled.
        Explain,      ///< All is read and merged: explain what is missing and show the result.
        Release,      ///< Nothing refers to the workers any more.
        Ended,        ///< The operation's thread is through.
    };

    Kind kind = Kind::Update;
    bool bFinished = false;
    std::uint8_t nWorker = 0; ///< Index of the worker concerned; nothing to the last three kinds.
    LeavesBlock block;
};

} // namespace veltrano
