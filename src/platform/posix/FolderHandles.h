#pragma once

#include "platform/FileCatalogue.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace veltrano {

class FolderHandles;

/// What stays the same for a folder however it is reached.
struct FolderIdentity {
    dev_t device = 0;
    ino_t inode = 0;

    bool operator==(const FolderIdentity&) const = default;
};

/// A folder whose subfolders are still to be read. Its descriptor may be open or closed at any moment; its
/// FolderHandles decides. Owned by the references to its subfolders, so a chain of pending folders keeps
/// every folder above it. May be released on any thread.
class FolderHandle final : public CatalogueFolder {
public:
    /// `place` is the reference by which the folder was opened, `descriptor` is taken over, in use.
    FolderHandle(FolderHandles& handles, CatalogueRef place, FolderIdentity identity, int descriptor);
    FolderHandle(const FolderHandle&) = delete;
    FolderHandle& operator=(const FolderHandle&) = delete;
    ~FolderHandle() override;

private:
    friend class FolderHandles;

    FolderHandle* parent() const;

    FolderHandles& m_handles;
    CatalogueRef m_place;
    const FolderIdentity m_identity;

    // Guarded by the mutex of m_handles.
    int m_nDescriptor;                ///< -1 while closed.
    int m_nUsers = 1;                 ///< While above 0 the descriptor stays open.
    FolderHandle* m_pOlder = nullptr; ///< Neighbours in the row of idle descriptors.
    FolderHandle* m_pYounger = nullptr;
};

/// Opens folders relative to the folders above them and bounds how many descriptors that takes: when there
/// are too many, the one idle for the longest time is closed, and opened again when it is needed. So depth
/// costs no descriptors, and no path is ever put together. Belongs to a catalogue; any thread. The mutex is
/// never held across a system call, since one on a dead mount may not return.
class FolderHandles {
public:
    /// `limit` is how many descriptors may be open before idle ones are closed; those in use may exceed it.
    /// `passFlags` are the flags of open(2) for folders that are only passed through, beside O_DIRECTORY and
    /// O_CLOEXEC.
    FolderHandles(std::size_t limit, int passFlags);
    FolderHandles(const FolderHandles&) = delete;
    FolderHandles& operator=(const FolderHandles&) = delete;
    ~FolderHandles();

    /// A quarter of the descriptors that the process may open, 512 at most, 8 at least.
    static std::size_t defaultLimit();

    /// Whether a folder is at the path, after its symbolic links: 0, or the error.
    int probe(std::string_view path) const;

    /// Opens the folder for reading. The descriptor goes back through `giveBack` or, inside a handle, through
    /// `release`. -1 and the reason in `error` if that fails; ESTALE if a folder on the way is not the one
    /// that it was.
    int openForReading(const CatalogueRef& folder, int& error);
    void giveBack(int descriptor);

    /// Another descriptor of the same open folder, counted until `forget`; -1 if there is none.
    int duplicate(int descriptor);

    /// Counts one less: a descriptor has been closed elsewhere, or was not to be had.
    void forget();

    /// Turns an opened descriptor into a handle, which is in use until `release`.
    std::shared_ptr<FolderHandle> keep(CatalogueRef place, int descriptor);
    void release(FolderHandle& handle);

    /// Descriptors that are open, in use or idle.
    std::size_t openCount() const;

private:
    friend class FolderHandle;

    int openBelow(int folder, const char* name, int flags, int& error);
    int openStart(const std::string& path, int flags, int& error);
    int use(FolderHandle& handle, int& error);
    int reopen(FolderHandle& handle, int& error);
    int install(FolderHandle& handle, int descriptor, FolderHandle* pUsed);
    void reopenAbove(int descriptor, FolderHandle& above);
    void makeRoom();
    bool closeIdle();

    // With the mutex held.
    int takeOldestIfFull();
    int stopUsing(FolderHandle& handle);
    void startUsing(FolderHandle& handle);
    void removeFromIdle(FolderHandle& handle);

    const std::size_t m_nLimit;
    const int m_nPassFlags;

    mutable std::mutex m_mutex;
    // Guarded by m_mutex.
    std::size_t m_nOpen = 0;
    FolderHandle* m_pOldest = nullptr;
    FolderHandle* m_pYoungest = nullptr;
};

} // namespace veltrano
