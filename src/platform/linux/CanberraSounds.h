#pragma once

#include "platform/Sounds.h"

#include <functional>
#include <string>
#include <string_view>

struct ca_context;

namespace veltrano {

/// Plays WAV files through the desktop's sound library, which is loaded if it is installed; silent otherwise.
/// Main thread.
class CanberraSounds final : public Sounds {
public:
    /// Answers the path of the WAV file of a sound, or an empty one where there is none.
    using FileOfSound = std::function<std::string(std::string_view name)>;

    explicit CanberraSounds(FileOfSound fileOfSound);
    CanberraSounds(const CanberraSounds&) = delete;
    CanberraSounds& operator=(const CanberraSounds&) = delete;
    ~CanberraSounds() override;

    void play(std::string_view name) override;

private:
    using Create = int (*)(ca_context**);
    using Destroy = int (*)(ca_context*);
    using Play = int (*)(ca_context*, unsigned, ...);

    void load();

    const FileOfSound m_fileOfSound;
    bool m_bLoaded = false; // tried, whatever came of it
    void* m_pLibrary = nullptr;
    ca_context* m_pContext = nullptr;
    Destroy m_destroy = nullptr;
    Play m_play = nullptr;
};

} // namespace veltrano
