#include "scan/HandOverQueue.h"

#include "scan/DispatchGroup.h"

#include <utility>

namespace veltrano {

namespace {

/// As many full blocks wait at most before the main thread takes them in, merge or not.
constexpr std::size_t kMostBlocksWaiting = 8;

/// Whether the main thread has something to do that others wait for.
bool callsForTurn(HandOver::Kind kind) {
    return kind >= HandOver::Kind::Update;
}

/// Whether a worker's own thread sends such messages; the others only name a worker.
bool comesFromWorker(HandOver::Kind kind) {
    return kind <= HandOver::Kind::Update;
}

} // namespace

HandOverQueue::HandOverQueue(MainLoop& mainLoop, std::shared_ptr<DispatchGroup> group,
                             std::function<void()> consumer)
    : m_pGroup(std::move(group)), m_consumer(std::move(consumer)), m_pMainLoop(&mainLoop) {}

void HandOverQueue::push(HandOver&& message) {
    std::unique_ptr<Block> spare;
    bool wakes = false;
    while (!place(message, spare, wakes))
        spare = std::make_unique<Block>();
    if (wakes)
        wake();
}

/// False if a new block is needed first. `wakes` tells that the main thread is to be woken.
bool HandOverQueue::place(HandOver& message, std::unique_ptr<Block>& spare, bool& wakes) {
    const std::lock_guard guard(m_mutex);
    if (isRefused(message))
        return true;
    if (m_row.empty() || m_row.back()->count == Block::kCapacity) {
        if (!spare)
            return false;
        m_row.push_back(std::move(spare));
    }
    const bool urgent = callsForTurn(message.kind) || m_row.size() > kMostBlocksWaiting;
    Block& block = *m_row.back();
    block.messages[block.count++] = std::move(message);
    if (!m_bUnderWay) {
        m_bUnderWay = true;
        m_pGroup->enter();
    }
    wakes = urgent && !std::exchange(m_bWoken, true);
    return true;
}

bool HandOverQueue::isRefused(const HandOver& message) const {
    return m_bRefusing || (comesFromWorker(message.kind) && (m_nRefusedWorkers >> message.nWorker & 1) != 0);
}

void HandOverQueue::refuse(std::uint32_t worker) {
    const std::lock_guard guard(m_mutex);
    m_nRefusedWorkers |= std::uint32_t{1} << worker;
}

void HandOverQueue::flush() {
    {
        const std::lock_guard guard(m_mutex);
        if (m_row.empty() || std::exchange(m_bWoken, true))
            return;
    }
    wake();
}

bool HandOverQueue::next(HandOver& message) {
    if (m_bClosed || (m_nBlock == m_taken.size() && !refill()))
        return false;
    Block& block = *m_taken[m_nBlock];
    message = std::move(block.messages[m_nMessage]);
    if (++m_nMessage == block.count) {
        m_taken[m_nBlock].reset();
        ++m_nBlock;
        m_nMessage = 0;
    }
    return true;
}

bool HandOverQueue::refill() {
    m_taken.clear();
    m_nBlock = 0;
    const std::lock_guard guard(m_mutex);
    if (m_row.empty()) {
        m_bWoken = false;
        m_bUnderWay = false;
        m_pGroup->leave();
        return false;
    }
    m_taken.swap(m_row);
    return true;
}

void HandOverQueue::wake() {
    const std::lock_guard guard(m_wakeMutex);
    if (m_pMainLoop)
        m_pMainLoop->post([self = shared_from_this()] { self->turn(); });
}

void HandOverQueue::turn() {
    if (!m_bClosed)
        m_consumer();
}

void HandOverQueue::close() {
    if (m_bClosed)
        return;
    m_bClosed = true;
    {
        const std::lock_guard guard(m_wakeMutex);
        m_pMainLoop = nullptr;
    }
    Row dropped;
    {
        const std::lock_guard guard(m_mutex);
        m_bRefusing = true;
        dropped.swap(m_row);
        if (std::exchange(m_bUnderWay, false))
            m_pGroup->leave();
    }
    m_taken.clear();
    m_nBlock = 0;
}

} // namespace veltrano
