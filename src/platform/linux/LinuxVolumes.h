#pragma once

#include "platform/MainLoop.h"
#include "platform/Volumes.h"
#include "platform/linux/MountWatch.h"
#include "platform/linux/VolumeReader.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace veltrano {

/// The volumes of Linux: what a VolumeReader gathers on its own thread, asked to do so by a MountWatch and by
/// refreshes. The main thread takes a finished list over and never waits for one, but for the very first call
/// of `mountedLocalVolumes`: a list made then would be empty and the window would open without its volumes,
/// so that call waits until the reader, which started when this was made, has its first list, for
/// `kFirstWait` at most. Main thread.
class LinuxVolumes final : public Volumes {
public:
    static constexpr std::chrono::milliseconds kFirstWait{100};

    /// Begins to read. The loop outlives this; tasks left in it find this gone.
    explicit LinuxVolumes(MainLoop& mainLoop, const VolumeReader::Options& options = {},
                          std::chrono::milliseconds firstWait = kFirstWait);
    LinuxVolumes(const LinuxVolumes&) = delete;
    LinuxVolumes& operator=(const LinuxVolumes&) = delete;
    ~LinuxVolumes() override;

    const std::vector<VolumeFacts>& mountedLocalVolumes() override;
    std::int64_t startupDiskFreeSize() const override { return m_listing.startupDiskFreeSize; }
    void refresh(std::function<void()> done) override;
    void observe(Events events) override;

private:
    void takeOver();
    void apply(VolumeListing listing);
    void tell(const VolumeListing& before);
    void finishRefreshes();

    const std::chrono::milliseconds m_firstWait;
    bool m_bAsked = false; ///< Whether anybody knows the list, and so hears of its changes.
    Events m_events;
    VolumeListing m_listing;
    std::vector<std::pair<std::uint64_t, std::function<void()>>>
        m_refreshes;                              ///< By the ticket of the request.
    const std::shared_ptr<LinuxVolumes*> m_pSelf; ///< For tasks in the loop; holds null at the end.
    VolumeReader m_reader;
    MountWatch m_watch; ///< Goes first: it asks the reader.
};

} // namespace veltrano
