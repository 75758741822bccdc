#include "platform/posix/OpenFolder.h"

#include <cerrno>

namespace veltrano {

CatalogueStatus statusOfOpenError(int error) {
    switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
    case ENAMETOOLONG:
    case ESTALE:
    case EIO:
    case ENXIO:
    case ENODEV:
        return CatalogueStatus::Gone;
    default:
        return CatalogueStatus::Ok;
    }
}

CatalogueStatus statusOfReadError(int error) {
    return error == ENOENT || error == ESTALE ? CatalogueStatus::EndOfFolder : CatalogueStatus::Denied;
}

OpenFolder::OpenFolder(FolderHandles& handles) : m_handles(handles) {}

OpenFolder::~OpenFolder() {
    close();
}

CatalogueStatus OpenFolder::open(const CatalogueRef& folder) {
    close();
    if (!folder.isFilledIn())
        return CatalogueStatus::InvalidReference;
    int error = 0;
    m_nDescriptor = m_handles.openForReading(folder, error);
    if (m_nDescriptor < 0)
        return statusOfOpenError(error);
    m_place = folder;
    return CatalogueStatus::Ok;
}

void OpenFolder::close() {
    if (m_pHandle != nullptr)
        m_handles.release(*m_pHandle);
    else if (m_nDescriptor >= 0)
        m_handles.giveBack(m_nDescriptor);
    m_pHandle.reset();
    m_nDescriptor = -1;
    m_place.parent.reset();
}

CatalogueRef OpenFolder::reference(std::string_view name) {
    if (m_pHandle == nullptr)
        m_pHandle = m_handles.keep(m_place, m_nDescriptor);
    return {m_pHandle, std::string(name)};
}

} // namespace veltrano
