#pragma once

#include "platform/FileCatalogue.h"
#include "platform/posix/FolderHandles.h"

namespace veltrano {

/// The file catalogue of any system of POSIX.1-2008: readdir and fstatat relative to the folder. The other
/// mounts that such a system can tell are those of another device.
class PosixCatalogue final : public FileCatalogue {
public:
    /// `descriptorLimit`: see FolderHandles.
    explicit PosixCatalogue(std::size_t descriptorLimit = FolderHandles::defaultLimit());

    [[nodiscard]] CatalogueStatus referenceFromPath(std::string_view path, CatalogueRef& result) override;
    [[nodiscard]] std::unique_ptr<CatalogueIterator> makeIterator() override;

    /// Descriptors held at this moment.
    std::size_t openCount() const { return m_handles.openCount(); }

private:
    FolderHandles m_handles;
};

} // namespace veltrano
