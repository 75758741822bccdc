#pragma once

#include "platform/FileCatalogue.h"
#include "platform/posix/FolderHandles.h"

#include <memory>
#include <string_view>

namespace veltrano {

/// What a failed open of a folder means: Gone for one that is no more, was never a folder, or can't be had
/// from a broken device; Ok for everything else, since such a folder is there and its first read says Denied.
[[nodiscard]] CatalogueStatus statusOfOpenError(int error);

/// What a failed read of a folder, or of the facts of one entry, means: EndOfFolder if it has been deleted,
/// Denied otherwise.
[[nodiscard]] CatalogueStatus statusOfReadError(int error);

/// The one folder that an iterator has open. The iterator owns it; its thread only. The handle that
/// references share is made when the first one is asked for, so a folder without subfolders costs none.
class OpenFolder {
public:
    explicit OpenFolder(FolderHandles& handles);
    OpenFolder(const OpenFolder&) = delete;
    OpenFolder& operator=(const OpenFolder&) = delete;
    ~OpenFolder();

    /// Answers as CatalogueIterator::open does. After Ok `descriptor` is -1 if the folder may not be read.
    [[nodiscard]] CatalogueStatus open(const CatalogueRef& folder);
    void close();

    int descriptor() const { return m_nDescriptor; }

    /// A reference to a folder in this one. Only while the descriptor is open.
    [[nodiscard]] CatalogueRef reference(std::string_view name);

private:
    FolderHandles& m_handles;
    CatalogueRef m_place;
    std::shared_ptr<FolderHandle> m_pHandle;
    int m_nDescriptor = -1;
};

} // namespace veltrano
