#include "platform/linux/CanberraSounds.h"

#include <dlfcn.h>

#include <utility>

namespace veltrano {

CanberraSounds::CanberraSounds(FileOfSound fileOfSound) : m_fileOfSound(std::move(fileOfSound)) {}

CanberraSounds::~CanberraSounds() {
    if (m_pContext)
        m_destroy(m_pContext);
    if (m_pLibrary)
        ::dlclose(m_pLibrary);
}

void CanberraSounds::load() {
    if (std::exchange(m_bLoaded, true))
        return;
    m_pLibrary = ::dlopen("libcanberra.so.0", RTLD_NOW | RTLD_LOCAL);
    if (!m_pLibrary)
        return;
    const auto create = reinterpret_cast<Create>(::dlsym(m_pLibrary, "ca_context_create"));
    m_destroy = reinterpret_cast<Destroy>(::dlsym(m_pLibrary, "ca_context_destroy"));
    m_play = reinterpret_cast<Play>(::dlsym(m_pLibrary, "ca_context_play"));
    if (!create || !m_destroy || !m_play || create(&m_pContext) < 0)
        m_pContext = nullptr;
}

void CanberraSounds::play(std::string_view name) {
    load();
    if (!m_pContext)
        return;
    const std::string file = m_fileOfSound(name);
    if (file.empty())
        return;
    // The property list ends with a null; 0 is the number of the sound, which nothing asks for.
    m_play(m_pContext, 0, "media.filename", file.c_str(), "event.description", std::string(name).c_str(),
           static_cast<const char*>(nullptr));
}

} // namespace veltrano
