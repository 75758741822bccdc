#pragma once

#include "platform/FileCatalogue.h"
#include "platform/posix/FolderHandles.h"

#include <sys/stat.h>

namespace veltrano {

/// Whether an entry of a folder is the root of another mount, or would become one when it is touched. Both
/// records come from statx with STATX_MNT_ID among what was asked. `folder` counts only where the kernel does
/// not mark the roots of mounts: then the mounts' numbers are compared, and the devices where those are
/// missing too. Devices alone would take a subvolume for a mount and miss a bind mount.
[[nodiscard]] bool isOtherMount(const struct statx& entry, const struct statx& folder);

/// The file catalogue of Linux: getdents64 into the iterator's own buffer, statx relative to the folder.
class LinuxCatalogue final : public FileCatalogue {
public:
    /// `descriptorLimit`: see FolderHandles.
    explicit LinuxCatalogue(std::size_t descriptorLimit = FolderHandles::defaultLimit());

    [[nodiscard]] CatalogueStatus referenceFromPath(std::string_view path, CatalogueRef& result) override;
    [[nodiscard]] std::unique_ptr<CatalogueIterator> makeIterator() override;

    /// Descriptors held at this moment.
    std::size_t openCount() const { return m_handles.openCount(); }

private:
    FolderHandles m_handles;
};

} // namespace veltrano
