#pragma once

#include "platform/Volumes.h"

#include <utility>
#include <vector>

namespace veltrano {

/// Volumes as a test tells them. Nothing is heard until the test says so.
class FakeVolumes final : public Volumes {
public:
    const std::vector<VolumeFacts>& mountedLocalVolumes() override { return volumes; }
    std::int64_t startupDiskFreeSize() const override { return scriptAnswer; }
    void refresh(std::function<void()> done) override { refreshes.push_back(std::move(done)); }
    void observe(Events observed) override { events = std::move(observed); }

    /// Ends all refreshes.
    void answerRefreshes() {
        for (const auto& done : std::exchange(refreshes, {}))
            done();
    }

    std::vector<VolumeFacts> volumes;
    std::int64_t scriptAnswer = -1;
    std::vector<std::function<void()>> refreshes;
    Events events;
};

} // namespace veltrano
