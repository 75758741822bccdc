#pragma once

#include "platform/CatalogueReading.h"
#include "platform/linux/LinuxCatalogue.h"
#include "platform/posix/PosixCatalogue.h"

#include <cstddef>
#include <memory>
#include <ostream>
#include <string>

namespace veltrano {

/// A form of the catalogue that reads real folders.
struct SystemForm {
    const char* name;
    std::unique_ptr<FileCatalogue> (*make)(std::size_t descriptorLimit);
    std::size_t (*openCount)(const FileCatalogue& catalogue);
};

/// Keeps addresses, which change from run to run, out of the tests' names.
inline void PrintTo(const SystemForm& form, std::ostream* out) {
    *out << form.name;
}

template <typename Catalogue>
constexpr SystemForm systemForm(const char* name) {
    return {name,
            [](std::size_t limit) -> std::unique_ptr<FileCatalogue> {
                return std::make_unique<Catalogue>(limit);
            },
            [](const FileCatalogue& catalogue) {
                return static_cast<const Catalogue&>(catalogue).openCount();
            }};
}

inline constexpr SystemForm kSystemForms[] = {systemForm<LinuxCatalogue>("linux"),
                                              systemForm<PosixCatalogue>("posix")};

/// Runs each of its tests with each form.
class SystemFormTest : public testing::TestWithParam<SystemForm> {
protected:
    std::size_t openCount() const { return GetParam().openCount(*m_catalogue); }
    void limitDescriptors(std::size_t limit) { m_catalogue = GetParam().make(limit); }

    std::unique_ptr<FileCatalogue> m_catalogue = GetParam().make(FolderHandles::defaultLimit());
};

inline std::string nameOfForm(const testing::TestParamInfo<SystemForm>& form) {
    return form.param.name;
}

} // namespace veltrano
