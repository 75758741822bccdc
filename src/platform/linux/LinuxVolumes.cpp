#include "platform/linux/LinuxVolumes.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace veltrano {

namespace {

using Identity = std::pair<int, std::string>;

Identity identityOf(const VolumeListing& listing, std::size_t index) {
    return {listing.mounts[index], listing.volumes[index].path};
}

std::map<Identity, std::size_t> indexOf(const VolumeListing& listing) {
    std::map<Identity, std::size_t> index;
    for (std::size_t at = 0; at < listing.volumes.size(); ++at)
        index.emplace(identityOf(listing, at), at);
    return index;
}

/// The listing in the order of the one before, with what is new at the end, so that the lists made from
/// either can be compared place by place.
VolumeListing inOrderOf(const VolumeListing& before, VolumeListing listing) {
    const auto index = indexOf(listing);
    std::vector<std::size_t> order;
    std::set<std::size_t> known;
    for (std::size_t at = 0; at < before.volumes.size(); ++at)
        if (const auto found = index.find(identityOf(before, at)); found != index.end()) {
            order.push_back(found->second);
            known.insert(found->second);
        }
    for (std::size_t at = 0; at < listing.volumes.size(); ++at)
        if (!known.contains(at))
            order.push_back(at);
    VolumeListing ordered{.startupDiskFreeSize = listing.startupDiskFreeSize, .ticket = listing.ticket};
    for (const std::size_t at : order) {
        ordered.volumes.push_back(std::move(listing.volumes[at]));
        ordered.mounts.push_back(listing.mounts[at]);
    }
    return ordered;
}

void call(const std::function<void(const std::string&)>& event, const std::string& path) {
    if (event)
        event(path);
}

} // namespace

LinuxVolumes::LinuxVolumes(MainLoop& mainLoop, const VolumeReader::Options& options,
                           std::chrono::milliseconds firstWait)
    : m_firstWait(firstWait),
      m_pSelf(std::make_shared<LinuxVolumes*>(this)),
      m_reader(options,
               [&mainLoop, self = m_pSelf] {
                   mainLoop.post([self] {
                       if (*self)
                           (*self)->takeOver();
                   });
               }),
      m_watch([this] { m_reader.request(); }, MountWatch::kQuiet, options.mountTable) {}

LinuxVolumes::~LinuxVolumes() {
    *m_pSelf = nullptr;
}

const std::vector<VolumeFacts>& LinuxVolumes::mountedLocalVolumes() {
    if (!std::exchange(m_bAsked, true) && m_listing.ticket == 0)
        if (auto first = m_reader.takeWithin(m_firstWait))
            m_listing = std::move(*first);
    return m_listing.volumes;
}

void LinuxVolumes::refresh(std::function<void()> done) {
    m_refreshes.emplace_back(m_reader.request(), std::move(done));
}

void LinuxVolumes::observe(Events events) {
    m_events = std::move(events);
}

void LinuxVolumes::takeOver() {
    if (auto listing = m_reader.take())
        apply(std::move(*listing));
    finishRefreshes();
}

void LinuxVolumes::apply(VolumeListing listing) {
    const VolumeListing before =
        std::exchange(m_listing, VolumeListing{}); // what the events are measured from
    m_listing = inOrderOf(before, std::move(listing));
    if (m_bAsked)
        tell(before);
}

/// Tells what has changed. An observer may ask for anything meanwhile, but the list stays: only tasks change
/// it.
void LinuxVolumes::tell(const VolumeListing& before) {
    const Events events = m_events;
    const auto now = indexOf(m_listing);
    const auto then = indexOf(before);
    bool hasChanged = m_listing.startupDiskFreeSize != before.startupDiskFreeSize;
    for (std::size_t at = 0; at < before.volumes.size(); ++at) {
        const auto found = now.find(identityOf(before, at));
        if (found == now.end())
            call(events.didUnmount, before.volumes[at].path);
        else if (m_listing.volumes[found->second] != before.volumes[at])
            hasChanged = true;
    }
    for (std::size_t at = 0; at < m_listing.volumes.size(); ++at)
        if (!then.contains(identityOf(m_listing, at)))
            call(events.didMount, m_listing.volumes[at].path);
    if (hasChanged && events.didChange)
        events.didChange();
}

void LinuxVolumes::finishRefreshes() {
    std::vector<std::function<void()>> finished;
    std::erase_if(m_refreshes, [&](auto& refresh) {
        if (refresh.first > m_listing.ticket)
            return false;
        finished.push_back(std::move(refresh.second));
        return true;
    });
    for (const auto& done : finished)
        if (done)
            done();
}

} // namespace veltrano
