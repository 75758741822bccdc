#pragma once

#include "platform/MainLoop.h"
#include "scan/HandOver.h"

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace veltrano {

class DispatchGroup;

/// The one road from a scan's threads to the main thread: messages in the order in which they were pushed,
/// and one wake-up of the main loop for all that wait. Most messages only matter to the next merge and wake
/// nobody. While messages wait or are dealt with, the queue counts as under way in the scan's group. Shared,
/// since a worker may outlive all else; once closed it swallows what is pushed and never touches the main
/// loop again.
///
/// The lock is held to place one small value or to swap, never for an allocation: a worker that is preempted
/// inside it would stall the window.
class HandOverQueue : public std::enable_shared_from_this<HandOverQueue> {
public:
    /// `consumer` is called on the main thread when there are messages: it takes them by `next` until that
    /// answers false, or asks for another turn by `goOnLater`.
    HandOverQueue(MainLoop& mainLoop, std::shared_ptr<DispatchGroup> group, std::function<void()> consumer);
    HandOverQueue(const HandOverQueue&) = delete;
    HandOverQueue& operator=(const HandOverQueue&) = delete;

    /// Wakes the main thread if the message calls for it, or if very many wait. Any thread.
    void push(HandOver&& message);

    /// Wakes the main thread if anything waits. Any thread.
    void flush();

    /// The next message, to be asked for when the last one has been dealt with. False if there is none; the
    /// next push then wakes the main thread again. Main thread.
    [[nodiscard]] bool next(HandOver& message);

    /// Asks for another turn after the other work of the main loop. Main thread.
    void goOnLater() { wake(); }

    /// Swallows from now on what this worker's own thread pushes; what waits already stays. For a worker that
    /// is given up: it may come back at any moment, when nobody counts on its messages any more. Any thread.
    void refuse(std::uint32_t worker);

    /// Drops what waits. Main thread; harmless when closed.
    void close();
    /// Main thread.
    bool isClosed() const { return m_bClosed; }

private:
    /// A piece of the row of messages; a full one is followed by another.
    struct Block {
        static constexpr std::size_t kCapacity = 256;
        std::array<HandOver, kCapacity> messages;
        std::size_t count = 0;
    };
    using Row = std::vector<std::unique_ptr<Block>>;

    bool isRefused(const HandOver& message) const;
    bool place(HandOver& message, std::unique_ptr<Block>& spare, bool& wakes);
    bool refill();
    void wake();
    void turn();

    const std::shared_ptr<DispatchGroup> m_pGroup;
    const std::function<void()> m_consumer;

    std::mutex m_mutex;
    // Guarded by m_mutex.
    Row m_row;
    bool m_bUnderWay = false;            // messages wait or are dealt with
    bool m_bWoken = false;               // a turn of the main loop is owed or running
    bool m_bRefusing = false;            // everything
    std::uint32_t m_nRefusedWorkers = 0; // a bit by index

    std::mutex m_wakeMutex;
    MainLoop* m_pMainLoop; // guarded by m_wakeMutex; null when closed

    // Main thread.
    Row m_taken;
    std::size_t m_nBlock = 0;
    std::size_t m_nMessage = 0;
    bool m_bClosed = false;
};

} // namespace veltrano
