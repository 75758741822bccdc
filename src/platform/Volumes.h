#pragma once

#include "platform/DeviceFacts.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace veltrano {

/// What is known of one mounted volume. A value. Sizes are bytes.
struct VolumeFacts {
    std::string path{};           ///< The mount point, bytes.
    std::string name{};           ///< To show, bytes.
    std::string fileSystemType{}; ///< As the system calls it.
    bool isRemovable = false;
    bool isWritable = false;
    bool isUnmountable = false;
    /// Whether the volume has ever told its sizes. One that has not (a server that is away) is listed with
    /// what is known, all sizes 0.
    bool hasAnswered = false;
    std::int64_t size = 0;
    std::int64_t freeSize = 0;
    std::int64_t nodes = 0;
    PathFacts pathFacts{};
    DeviceFacts device{};

    bool operator==(const VolumeFacts&) const = default;
};

/// The mounted volumes of a system. Whatever may block (a dead server, a sleeping disk) is asked on other
/// threads; every operation here answers at once from what was heard last, and what is heard later is told
/// as an event. Main thread. Outlives whoever observes it.
class Volumes {
public:
    /// Told on the main thread, when `mountedLocalVolumes` answers anew already. Any may be empty.
    struct Events {
        std::function<void(const std::string& path)> didMount{};
        std::function<void(const std::string& path)> didUnmount{};
        /// A volume that stays has told something new.
        std::function<void()> didChange{};
    };

    virtual ~Volumes() = default;

    /// What was heard last, in the system's order, in which a volume that comes goes to the end. The very
    /// first call may wait a moment for the first answers.
    virtual const std::vector<VolumeFacts>& mountedLocalVolumes() = 0;

    /// What the script for the free bytes of the startup disk answered last; -1 if there is no script or it
    /// failed.
    virtual std::int64_t startupDiskFreeSize() const = 0;

    /// Asks everything again. `done` is called on the main thread once the answers are in, those of volumes
    /// that stay silent aside; never if this goes before.
    virtual void refresh(std::function<void()> done) = 0;

    /// One observer at a time; empty events end it.
    virtual void observe(Events events) = 0;
};

} // namespace veltrano
