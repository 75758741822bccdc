#pragma once

#include <QTemporaryDir>

#include <memory>
#include <string>
#include <string_view>

namespace veltrano {

/// The sounds among the program's resources as files, for players that take files only. Each is written when
/// it is first asked for, into a folder that goes with this object. Main thread.
class SoundFiles {
public:
    /// The path of the WAV file, or an empty one for an unknown sound and where nothing can be written.
    [[nodiscard]] std::string fileOfSound(std::string_view name);

private:
    std::unique_ptr<QTemporaryDir> m_pFolder; // made at the first use
};

} // namespace veltrano
