#include "bench/BareWalk.h"

#include <array>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <mutex>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace veltrano {

namespace {

/// A descriptor that the folders found in it share until the last of them has been opened.
class SharedFolder {
public:
    explicit SharedFolder(int descriptor) : m_nDescriptor(descriptor) {}
    SharedFolder(const SharedFolder&) = delete;
    SharedFolder& operator=(const SharedFolder&) = delete;
    ~SharedFolder() { ::close(m_nDescriptor); }
    int descriptor() const { return m_nDescriptor; }

private:
    int m_nDescriptor;
};

struct Job {
    std::shared_ptr<SharedFolder> parent; ///< Null for the start folder.
    std::string name;
};

/// Folders on their way from a busy thread to an idle one.
class Exchange {
public:
    explicit Exchange(int threads) : m_nThreads(threads) {}

    bool isAnybodyIdle() const { return m_nWaiting.load(std::memory_order_relaxed) > 0; }

    void give(Job job) {
        {
            const std::lock_guard guard(m_mutex);
            m_jobs.push_back(std::move(job));
        }
        m_changed.notify_one();
    }

    /// False when every thread waits and nothing is left: the walk is over.
    bool take(Job& job) {
        std::unique_lock guard(m_mutex);
        ++m_nIdle;
        m_nWaiting.store(m_nIdle, std::memory_order_relaxed);
        if (m_nIdle == m_nThreads && m_jobs.empty()) {
            m_changed.notify_all();
            return false;
        }
        m_changed.wait(guard, [this] { return !m_jobs.empty() || m_nIdle == m_nThreads; });
        if (m_jobs.empty())
            return false;
        job = std::move(m_jobs.back());
        m_jobs.pop_back();
        --m_nIdle;
        m_nWaiting.store(m_nIdle, std::memory_order_relaxed);
        return true;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Job> m_jobs; // guarded by m_mutex
    int m_nIdle = 0;         // guarded by m_mutex
    const int m_nThreads;
    std::atomic<int> m_nWaiting = 0; // m_nIdle, to be looked at without the lock
};

class Walker {
public:
    explicit Walker(Exchange& exchange) : m_exchange(exchange) {}

    void run() {
        Job job;
        while (m_exchange.take(job)) {
            readFolder(job);
            while (!m_stack.empty()) {
                Job next = std::move(m_stack.back());
                m_stack.pop_back();
                if (!m_stack.empty() && m_exchange.isAnybodyIdle())
                    m_exchange.give(std::move(next));
                else
                    readFolder(next);
            }
        }
    }

    const BareWalkResult& result() const { return m_result; }

private:
    void readFolder(Job& job) {
        constexpr int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW;
        const int descriptor = job.parent ? ::openat(job.parent->descriptor(), job.name.c_str(), flags)
                                          : ::open(job.name.c_str(), flags & ~O_NOFOLLOW);
        job.parent.reset();
        if (descriptor < 0)
            return;
        const auto folder = std::make_shared<SharedFolder>(descriptor);
        while (true) {
            const ssize_t got = ::getdents64(descriptor, m_buffer.data(), m_buffer.size());
            if (got <= 0)
                return;
            for (std::size_t offset = 0; offset < static_cast<std::size_t>(got);) {
                const char* record = m_buffer.data() + offset;
                decltype(dirent64::d_reclen) length = 0;
                std::memcpy(&length, record + offsetof(dirent64, d_reclen), sizeof length);
                offset += length;
                readEntry(folder, record + offsetof(dirent64, d_name));
            }
        }
    }

    void readEntry(const std::shared_ptr<SharedFolder>& folder, const char* name) {
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0')))
            return;
        struct statx facts;
        if (::statx(folder->descriptor(), name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT,
                    STATX_TYPE | STATX_BLOCKS | STATX_MTIME | STATX_MNT_ID, &facts) != 0)
            return;
        ++m_result.entries;
        if (!S_ISDIR(facts.stx_mode)) {
            m_result.bytes += static_cast<std::int64_t>(facts.stx_blocks) * 512;
            return;
        }
        ++m_result.folders;
        if ((facts.stx_attributes & STATX_ATTR_MOUNT_ROOT) == 0)
            m_stack.push_back({folder, name});
    }

    Exchange& m_exchange;
    BareWalkResult m_result;
    std::vector<Job> m_stack;
    alignas(dirent64) std::array<char, 64 * 1024> m_buffer;
};

} // namespace

BareWalkResult bareWalk(const std::string& path, int threads) {
    Exchange exchange(threads);
    exchange.give({nullptr, path});
    std::vector<std::unique_ptr<Walker>> walkers;
    std::vector<std::thread> running;
    for (int index = 0; index < threads; ++index) {
        walkers.push_back(std::make_unique<Walker>(exchange));
        running.emplace_back(&Walker::run, walkers.back().get());
    }
    BareWalkResult result;
    for (std::size_t index = 0; index < running.size(); ++index) {
        running[index].join();
        const BareWalkResult& part = walkers[index]->result();
        result.entries += part.entries;
        result.folders += part.folders;
        result.bytes += part.bytes;
    }
    return result;
}

} // namespace veltrano
