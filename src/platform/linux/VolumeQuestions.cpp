#include "platform/linux/VolumeQuestions.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <limits>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

namespace veltrano {

namespace {

constexpr std::size_t kThreadsAtOnce = 4;
/// With so many hanging, what is not asked yet stays unasked until one comes free.
constexpr std::size_t kMostThreads = 64;

std::int64_t product(std::uint64_t blocks, std::uint64_t blockSize) {
    constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (blockSize != 0 && blocks > kMost / blockSize)
        return std::numeric_limits<std::int64_t>::max();
    return static_cast<std::int64_t>(blocks * blockSize);
}

CatalogueDate dateOf(const struct statx& facts, unsigned bit, const struct statx_timestamp& time) {
    return (facts.stx_mask & bit) != 0 ? catalogueDateFromUnixTime(time.tv_sec, time.tv_nsec)
                                       : CatalogueDate{};
}

} // namespace

VolumeAnswer askVolume(const std::string& path) {
    VolumeAnswer answer;
    struct statx facts {};
    constexpr unsigned kMask = STATX_TYPE | STATX_BTIME | STATX_MTIME | STATX_ATIME;
    // Containers have single files mounted; those are no volumes.
    if (::statx(AT_FDCWD, path.c_str(), AT_NO_AUTOMOUNT, kMask, &facts) != 0 || !S_ISDIR(facts.stx_mode))
        return answer;
    struct statvfs space {};
    if (::statvfs(path.c_str(), &space) != 0)
        return answer;
    answer.isReadable = true;
    answer.size = product(space.f_blocks, space.f_frsize);
    answer.freeSize = std::min(product(space.f_bfree, space.f_frsize), answer.size);
    // Those in use change with every file, and so would the volume.
    answer.nodes = product(space.f_files, 1);
    answer.pathFacts.created = dateOf(facts, STATX_BTIME, facts.stx_btime);
    answer.pathFacts.modified = dateOf(facts, STATX_MTIME, facts.stx_mtime);
    answer.pathFacts.accessed = dateOf(facts, STATX_ATIME, facts.stx_atime);
    return answer;
}

struct VolumeQuestions::State {
    // Constant after construction.
    Ask ask;

    std::mutex mutex;
    std::condition_variable changed;
    // Guarded by the mutex.
    std::function<void()> answeredLate;
    std::deque<Key> waiting; ///< Not put yet.
    std::set<Key> open;      ///< Put, or waiting to be.
    std::set<Key> awaited;   ///< Those that a running `ask` waits for.
    Answers answers;
    std::size_t threads = 0;
    std::size_t busyThreads = 0;
    bool isStopped = false;
};

VolumeQuestions::VolumeQuestions(Ask ask, std::function<void()> answeredLate)
    : m_pState(std::make_shared<State>()) {
    m_pState->ask = std::move(ask);
    m_pState->answeredLate = std::move(answeredLate);
}

VolumeQuestions::~VolumeQuestions() {
    stop();
}

VolumeQuestions::Answers VolumeQuestions::ask(const std::vector<Key>& keys,
                                              std::chrono::milliseconds patience) {
    State& state = *m_pState;
    std::unique_lock lock(state.mutex);
    for (const Key& key : keys) {
        if (!state.open.insert(key).second)
            continue;
        state.waiting.push_back(key);
        state.awaited.insert(key);
    }
    while (!state.awaited.empty() && !state.isStopped) {
        const bool hasNewThreads = startThreads(std::min(kThreadsAtOnce, state.waiting.size()));
        const std::size_t before = state.awaited.size();
        const auto deadline = std::chrono::steady_clock::now() + patience;
        const bool isOver = state.changed.wait_until(
            lock, deadline, [&] { return state.awaited.empty() || state.isStopped; });
        // Once more with new threads where those there are hang, unless there is no room for more or nothing
        // is left to ask.
        const bool isStuck = state.awaited.size() == before && !hasNewThreads;
        if (isOver || state.waiting.empty() || isStuck)
            break;
    }
    state.awaited.clear();
    return std::exchange(state.answers, {});
}

void VolumeQuestions::stop() {
    const std::lock_guard guard(m_pState->mutex);
    m_pState->isStopped = true;
    m_pState->waiting.clear();
    m_pState->answeredLate = nullptr;
    m_pState->changed.notify_all();
}

/// So many threads that don't hang, as far as there is room; answers whether any is new. Called with the
/// mutex held.
bool VolumeQuestions::startThreads(std::size_t count) {
    State& state = *m_pState;
    const std::size_t before = state.threads;
    while (state.threads - state.busyThreads < count && state.threads < kMostThreads) {
        try {
            std::thread([shared = m_pState] { work(shared); }).detach();
        } catch (const std::system_error&) {
            break; // The system has no thread to give; those there are go on.
        }
        ++state.threads;
    }
    return state.threads > before;
}

void VolumeQuestions::work(const std::shared_ptr<State>& shared) {
    State& state = *shared;
    std::unique_lock lock(state.mutex);
    while (!state.waiting.empty()) {
        const Key key = state.waiting.front();
        state.waiting.pop_front();
        ++state.busyThreads;
        lock.unlock();
        VolumeAnswer answer = state.ask(key.second);
        lock.lock();
        --state.busyThreads;
        state.open.erase(key);
        if (state.isStopped)
            break;
        state.answers[key] = answer;
        if (state.awaited.erase(key) == 0 && state.answeredLate)
            state.answeredLate();
        state.changed.notify_all();
    }
    --state.threads;
}

} // namespace veltrano
