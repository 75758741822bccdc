#include "platform/linux/MountWatch.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace veltrano {

namespace {

/// Which of the two descriptors something happened to; `isOver` also when waiting fails for good.
struct Happened {
    bool isOver = false;
    bool isChanged = false;
};

/// The kernel tells of each change once, by an error and an urgency on the descriptor.
Happened waitFor(int table, int stop, int milliseconds) {
    std::array<pollfd, 2> descriptors{pollfd{table, POLLERR | POLLPRI, 0}, pollfd{stop, POLLIN, 0}};
    int count = 0;
    do {
        count = ::poll(descriptors.data(), descriptors.size(), milliseconds);
    } while (count < 0 && errno == EINTR);
    const bool isUnusable = (descriptors[0].revents & POLLNVAL) != 0;
    return {count < 0 || isUnusable || descriptors[1].revents != 0, descriptors[0].revents != 0};
}

} // namespace

MountWatch::MountWatch(std::function<void()> changed, std::chrono::milliseconds quiet,
                       const std::string& table)
    : m_changed(std::move(changed)),
      m_quiet(quiet),
      m_nTable(::open(table.c_str(), O_RDONLY | O_CLOEXEC)),
      m_nStop(::eventfd(0, EFD_CLOEXEC)) {
    if (m_nTable >= 0 && m_nStop >= 0)
        m_thread = std::thread([this] { watch(); });
}

MountWatch::~MountWatch() {
    if (m_thread.joinable()) {
        // A counter that is 0 takes a one at once.
        while (::eventfd_write(m_nStop, 1) != 0 && errno == EINTR) {
        }
        m_thread.join();
    }
    if (m_nTable >= 0)
        ::close(m_nTable);
    if (m_nStop >= 0)
        ::close(m_nStop);
}

void MountWatch::watch() const {
    constexpr int kForEver = -1;
    for (;;) {
        const Happened happened = waitFor(m_nTable, m_nStop, kForEver);
        if (happened.isOver)
            return;
        gatherMore();
        m_changed();
    }
}

/// A disk that is plugged in mounts several file systems in a row.
void MountWatch::gatherMore() const {
    const auto last = std::chrono::steady_clock::now() + 10 * m_quiet;
    while (std::chrono::steady_clock::now() < last) {
        const Happened happened = waitFor(m_nTable, m_nStop, static_cast<int>(m_quiet.count()));
        if (happened.isOver || !happened.isChanged)
            return;
    }
}

} // namespace veltrano
