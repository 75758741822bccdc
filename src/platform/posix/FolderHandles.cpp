#include "platform/posix/FolderHandles.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace veltrano {

namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
/// A folder may be swapped for a fifo or a link between two calls; neither is waited for nor followed.
constexpr int kReadFlags = kFolderFlags | O_NONBLOCK;

/// A length that every system takes in one call and that holds every name.
constexpr std::size_t kPathPiece = 1000;

constexpr int kNone = -1;

void closeDescriptor(int descriptor) {
    if (descriptor >= 0)
        ::close(descriptor);
}

FolderIdentity identityOf(int descriptor) {
    struct stat facts {};
    if (::fstat(descriptor, &facts) != 0)
        return {};
    return {facts.st_dev, facts.st_ino};
}

/// A path too long for one call, resolved up to a folder from which the rest is short enough.
struct LongPath {
    int folder = kNone; ///< Open, to be closed by the caller; kNone when `error` says why.
    std::string rest;
    int error = 0;
};

LongPath shortened(std::string_view path, int passFlags) {
    LongPath result;
    result.folder = AT_FDCWD;
    while (path.size() > kPathPiece) {
        const std::size_t slash = path.rfind('/', kPathPiece);
        if (slash == std::string_view::npos) {
            closeDescriptor(std::exchange(result.folder, kNone));
            result.error = ENAMETOOLONG;
            return result;
        }
        const std::string piece(path.substr(0, slash + 1));
        const int next = ::openat(result.folder, piece.c_str(), kFolderFlags | passFlags);
        result.error = next < 0 ? errno : 0;
        closeDescriptor(std::exchange(result.folder, next));
        if (next < 0)
            return result;
        path.remove_prefix(std::min(path.find_first_not_of('/', slash), path.size()));
    }
    result.rest = path.empty() ? "." : path;
    return result;
}

} // namespace

FolderHandle::FolderHandle(FolderHandles& handles, CatalogueRef place, FolderIdentity identity,
                           int descriptor)
    : m_handles(handles), m_place(std::move(place)), m_identity(identity), m_nDescriptor(descriptor) {}

FolderHandle::~FolderHandle() {
    int descriptor = kNone;
    FolderHandle* closedAbove = nullptr;
    {
        const std::lock_guard lock(m_handles.m_mutex);
        if (m_nDescriptor >= 0) {
            if (m_nUsers == 0)
                m_handles.removeFromIdle(*this);
            descriptor = std::exchange(m_nDescriptor, kNone);
            --m_handles.m_nOpen;
            FolderHandle* above = parent();
            if (above != nullptr && above->m_nDescriptor < 0 && m_place.parent.use_count() > 1)
                closedAbove = above;
        }
    }
    if (closedAbove != nullptr)
        m_handles.reopenAbove(descriptor, *closedAbove);
    closeDescriptor(descriptor);

    // Each handle holds the one above it. Letting the destructors call each other would need a stack as deep
    // as the tree, so the first one lets go of the whole chain, one after the other.
    thread_local std::shared_ptr<CatalogueFolder>* pNext = nullptr;
    if (pNext != nullptr) {
        *pNext = std::move(m_place.parent);
        return;
    }
    std::shared_ptr<CatalogueFolder> next;
    pNext = &next;
    std::shared_ptr<CatalogueFolder> current = std::move(m_place.parent);
    while (current != nullptr) {
        current.reset();
        current = std::move(next);
    }
    pNext = nullptr;
}

FolderHandle* FolderHandle::parent() const {
    return static_cast<FolderHandle*>(m_place.parent.get());
}

FolderHandles::FolderHandles(std::size_t limit, int passFlags) : m_nLimit(limit), m_nPassFlags(passFlags) {}

FolderHandles::~FolderHandles() {
    assert(m_nOpen == 0 && "an iterator or a reference outlives its catalogue");
}

std::size_t FolderHandles::defaultLimit() {
    constexpr rlim_t kMost = 512;
    constexpr rlim_t kLeast = 8;
    rlimit allowed{};
    if (::getrlimit(RLIMIT_NOFILE, &allowed) != 0 || allowed.rlim_cur == RLIM_INFINITY)
        return kMost;
    return static_cast<std::size_t>(std::clamp(allowed.rlim_cur / 4, kLeast, kMost));
}

int FolderHandles::probe(std::string_view path) const {
    if (path.empty() || path.find('\0') != std::string_view::npos)
        return ENOENT;
    struct stat facts {};
    int error = ::stat(std::string(path).c_str(), &facts) == 0 ? 0 : errno;
    if (error == ENAMETOOLONG) {
        const LongPath place = shortened(path, m_nPassFlags);
        error = place.error;
        if (error == 0 && ::fstatat(place.folder, place.rest.c_str(), &facts, 0) != 0)
            error = errno;
        closeDescriptor(place.folder);
    }
    if (error != 0)
        return error;
    return S_ISDIR(facts.st_mode) ? 0 : ENOTDIR;
}

int FolderHandles::openForReading(const CatalogueRef& folder, int& error) {
    if (folder.parent == nullptr) {
        makeRoom();
        const int descriptor = openStart(folder.name, kReadFlags, error);
        if (descriptor < 0)
            forget();
        return descriptor;
    }
    auto& parent = static_cast<FolderHandle&>(*folder.parent);
    const int above = use(parent, error);
    if (above < 0)
        return kNone;
    const int descriptor = openBelow(above, folder.name.c_str(), kReadFlags | O_NOFOLLOW, error);
    int surplus = kNone;
    {
        const std::lock_guard lock(m_mutex);
        surplus = stopUsing(parent);
        if (descriptor < 0)
            --m_nOpen;
    }
    closeDescriptor(surplus);
    return descriptor;
}

void FolderHandles::giveBack(int descriptor) {
    closeDescriptor(descriptor);
    forget();
}

void FolderHandles::forget() {
    const std::lock_guard lock(m_mutex);
    --m_nOpen;
}

int FolderHandles::duplicate(int descriptor) {
    makeRoom();
    int copy = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    if (copy < 0 && errno == EMFILE && closeIdle())
        copy = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    if (copy < 0)
        forget();
    return copy;
}

std::shared_ptr<FolderHandle> FolderHandles::keep(CatalogueRef place, int descriptor) {
    return std::make_shared<FolderHandle>(*this, std::move(place), identityOf(descriptor), descriptor);
}

void FolderHandles::release(FolderHandle& handle) {
    int surplus = kNone;
    {
        const std::lock_guard lock(m_mutex);
        surplus = stopUsing(handle);
    }
    closeDescriptor(surplus);
}

std::size_t FolderHandles::openCount() const {
    const std::lock_guard lock(m_mutex);
    return m_nOpen;
}

/// openat that makes descriptors free when the process has none left.
int FolderHandles::openBelow(int folder, const char* name, int flags, int& error) {
    int descriptor = ::openat(folder, name, flags);
    if (descriptor < 0 && (errno == EMFILE || errno == ENFILE) && closeIdle())
        descriptor = ::openat(folder, name, flags);
    if (descriptor < 0)
        error = errno;
    return descriptor;
}

int FolderHandles::openStart(const std::string& path, int flags, int& error) {
    const int descriptor = openBelow(AT_FDCWD, path.c_str(), flags, error);
    if (descriptor >= 0 || error != ENAMETOOLONG)
        return descriptor;
    const LongPath place = shortened(path, m_nPassFlags);
    error = place.error;
    if (error != 0)
        return kNone;
    const int deep = openBelow(place.folder, place.rest.c_str(), flags, error);
    closeDescriptor(place.folder);
    return deep;
}

/// The handle's descriptor, opened again if need be, in use until stopUsing; one more descriptor is counted
/// for the folder that is to be opened below it. kNone and the reason if that fails, with nothing counted.
int FolderHandles::use(FolderHandle& handle, int& error) {
    int descriptor = kNone;
    int surplus = kNone;
    {
        const std::lock_guard lock(m_mutex);
        descriptor = handle.m_nDescriptor;
        if (descriptor >= 0) {
            startUsing(handle);
            surplus = takeOldestIfFull();
            ++m_nOpen;
        }
    }
    closeDescriptor(surplus);
    if (descriptor >= 0)
        return descriptor;
    descriptor = reopen(handle, error);
    if (descriptor >= 0)
        makeRoom();
    return descriptor;
}

/// Opens a closed handle, in use afterwards: from the nearest folder above it that is open, or from the start
/// path, down step by step. The folders on the way stay open as long as there is room, since their other
/// subfolders are likely to be next.
int FolderHandles::reopen(FolderHandle& handle, int& error) {
    std::vector<FolderHandle*> closed;
    FolderHandle* above = &handle;
    int descriptor = kNone;
    {
        const std::lock_guard lock(m_mutex);
        while (above != nullptr && above->m_nDescriptor < 0) {
            closed.push_back(above);
            above = above->parent();
        }
        if (above != nullptr) {
            startUsing(*above);
            descriptor = above->m_nDescriptor;
        }
    }
    for (auto step = closed.rbegin(); step != closed.rend(); ++step) {
        FolderHandle& next = **step;
        makeRoom();
        int opened = kNone;
        if (above == nullptr)
            opened = openStart(next.m_place.name, kFolderFlags | m_nPassFlags, error);
        else
            opened = openBelow(descriptor, next.m_place.name.c_str(),
                               kFolderFlags | O_NOFOLLOW | m_nPassFlags, error);
        if (opened >= 0 && identityOf(opened) != next.m_identity) {
            closeDescriptor(std::exchange(opened, kNone));
            error = ESTALE;
        }
        if (opened < 0) {
            forget();
            if (above != nullptr)
                release(*above);
            return kNone;
        }
        descriptor = install(next, opened, above);
        above = &next;
    }
    return descriptor;
}

/// Gives the handle its new descriptor and takes it into use instead of `pUsed`. Another thread may have been
/// faster; then that one's descriptor stands.
int FolderHandles::install(FolderHandle& handle, int descriptor, FolderHandle* pUsed) {
    int surplus = kNone;
    int late = kNone;
    {
        const std::lock_guard lock(m_mutex);
        if (handle.m_nDescriptor < 0) {
            handle.m_nDescriptor = descriptor;
            handle.m_nUsers = 1;
        } else {
            late = descriptor;
            --m_nOpen;
            startUsing(handle);
            descriptor = handle.m_nDescriptor;
        }
        if (pUsed != nullptr)
            surplus = stopUsing(*pUsed);
    }
    closeDescriptor(late);
    closeDescriptor(surplus);
    return descriptor;
}

/// The last subfolder of a folder is done and the folder above is closed but wanted: one step up from here is
/// cheaper than all the steps down from the start. This keeps the way back up a deep chain linear.
void FolderHandles::reopenAbove(int descriptor, FolderHandle& above) {
    makeRoom();
    const int opened = ::openat(descriptor, "..", kFolderFlags | m_nPassFlags);
    if (opened < 0 || identityOf(opened) != above.m_identity) {
        giveBack(opened);
        return;
    }
    install(above, opened, nullptr);
    release(above);
}

/// Counts one more descriptor, closing an idle one for it if there are too many.
void FolderHandles::makeRoom() {
    int surplus = kNone;
    {
        const std::lock_guard lock(m_mutex);
        surplus = takeOldestIfFull();
        ++m_nOpen;
    }
    closeDescriptor(surplus);
}

/// Closes every idle descriptor. False if there was none.
bool FolderHandles::closeIdle() {
    std::vector<int> idle;
    {
        const std::lock_guard lock(m_mutex);
        while (m_pOldest != nullptr) {
            FolderHandle& handle = *m_pOldest;
            removeFromIdle(handle);
            idle.push_back(std::exchange(handle.m_nDescriptor, kNone));
            --m_nOpen;
        }
    }
    std::for_each(idle.begin(), idle.end(), closeDescriptor);
    return !idle.empty();
}

int FolderHandles::takeOldestIfFull() {
    if (m_nOpen < m_nLimit || m_pOldest == nullptr)
        return kNone;
    FolderHandle& handle = *m_pOldest;
    removeFromIdle(handle);
    --m_nOpen;
    return std::exchange(handle.m_nDescriptor, kNone);
}

/// Answers a descriptor to close, if there are too many.
int FolderHandles::stopUsing(FolderHandle& handle) {
    if (--handle.m_nUsers > 0)
        return kNone;
    handle.m_pOlder = m_pYoungest;
    (m_pYoungest != nullptr ? m_pYoungest->m_pYounger : m_pOldest) = &handle;
    m_pYoungest = &handle;
    return m_nOpen > m_nLimit ? takeOldestIfFull() : kNone;
}

void FolderHandles::startUsing(FolderHandle& handle) {
    if (handle.m_nUsers++ == 0)
        removeFromIdle(handle);
}

void FolderHandles::removeFromIdle(FolderHandle& handle) {
    (handle.m_pOlder != nullptr ? handle.m_pOlder->m_pYounger : m_pOldest) = handle.m_pYounger;
    (handle.m_pYounger != nullptr ? handle.m_pYounger->m_pOlder : m_pYoungest) = handle.m_pOlder;
    handle.m_pOlder = nullptr;
    handle.m_pYounger = nullptr;
}

} // namespace veltrano
