#pragma once

#include "platform/Volumes.h"
#include "platform/linux/SysfsDevices.h"
#include "platform/linux/VolumeQuestions.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace veltrano {

/// The volumes at one moment.
struct VolumeListing {
    std::vector<VolumeFacts> volumes{};
    std::vector<int>
        mounts{}; ///< The number of each volume's mount, which tells one from another at its path.
    std::int64_t startupDiskFreeSize = -1;
    std::uint64_t ticket = 0; ///< The last request that it answers.
};

/// Gathers the volumes on a thread of its own: the mount table, the kernel's device tree, udev's database,
/// and what each file system says when it is asked. It reads once at the start, then for each request, and
/// when a volume answers that was silent before. A volume keeps the last it said when it falls silent. Any
/// thread.
class VolumeReader {
public:
    struct Options {
        std::string mountTable = "/proc/self/mountinfo";
        SysfsDevices::Places places{};
        VolumeQuestions::Ask ask = askVolume;
        /// The text of the shell script that tells the free bytes of the startup disk, as
        /// kFreeSpaceScript does; empty for none.
        std::string startupDiskScript{};
        /// How long a listing waits for volumes that are silent.
        std::chrono::milliseconds patience{60};
        std::chrono::milliseconds scriptLimit{2000};
    };

    /// `listed` is called on the reader's thread when there is a new listing to take.
    VolumeReader(Options options, std::function<void()> listed);
    VolumeReader(const VolumeReader&) = delete;
    VolumeReader& operator=(const VolumeReader&) = delete;
    /// Waits for no volume.
    ~VolumeReader();

    /// Asks for a listing that begins after this call; answers its ticket.
    std::uint64_t request();

    /// The newest listing, if it was not taken yet.
    [[nodiscard]] std::optional<VolumeListing> take();

    /// The same, but waits for one.
    [[nodiscard]] std::optional<VolumeListing> takeWithin(std::chrono::milliseconds limit);

private:
    void run();
    VolumeListing read();
    void keepAnswers(const VolumeQuestions::Answers& heard, const std::vector<VolumeQuestions::Key>& keys);

    // Constant after construction.
    const Options m_options;
    const std::function<void()> m_listed;
    const SysfsDevices m_devices;

    // The reader's thread only.
    std::vector<MountEntry> m_table; ///< The last that could be read.
    VolumeQuestions::Answers m_answers;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    // Guarded by m_mutex.
    std::uint64_t m_nTicket = 1; ///< Of the last request; the first reading has the first.
    std::uint64_t m_nRead = 0;   ///< The last one read for.
    bool m_bLate = false;        ///< Something was heard from a volume that was silent.
    bool m_bStopped = false;
    std::optional<VolumeListing> m_listing;

    VolumeQuestions m_questions;
    std::thread m_thread;
};

} // namespace veltrano
