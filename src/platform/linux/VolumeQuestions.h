#pragma once

#include "platform/DeviceFacts.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veltrano {

/// What a volume says of itself when it is asked.
struct VolumeAnswer {
    bool isReadable = false;   ///< Whether it is a folder that tells its sizes.
    std::int64_t size = 0;     ///< Bytes; blocks kept for the administrator included.
    std::int64_t freeSize = 0; ///< Bytes, from 0 to `size`.
    std::int64_t nodes = 0;    ///< Files that there is room for; 0 where the file system has no limit.
    PathFacts pathFacts{};

    bool operator==(const VolumeAnswer&) const = default;
};

/// Asks the volume at a mount point; blocks for as long as its file system does.
[[nodiscard]] VolumeAnswer askVolume(const std::string& path);

/// Puts questions that may never be answered to threads of its own, few at a time. A thread that hangs costs
/// no more than itself: the question stays open, is not put again, and the answer is taken when it comes.
/// Nothing waits for such a thread, not even the end of the program. One thread calls `ask`; `stop` and the
/// destructor may come from another.
class VolumeQuestions {
public:
    /// Whose question it is: the number of the mount and its path. A new mount on an old path is another one.
    using Key = std::pair<int, std::string>;
    using Ask = std::function<VolumeAnswer(const std::string& path)>;
    using Answers = std::map<Key, VolumeAnswer>;

    /// `answeredLate` is called on one of the threads when an answer comes that `ask` did not wait for.
    VolumeQuestions(Ask ask, std::function<void()> answeredLate);
    VolumeQuestions(const VolumeQuestions&) = delete;
    VolumeQuestions& operator=(const VolumeQuestions&) = delete;
    ~VolumeQuestions();

    /// Puts the questions that are not open already and waits for their answers, until `patience` is over and
    /// none is left that some thread could still put. Answers everything that was heard since the last call.
    [[nodiscard]] Answers ask(const std::vector<Key>& keys, std::chrono::milliseconds patience);

    /// Ends a waiting `ask`. No answer is taken and `answeredLate` is not called from here on.
    void stop();

private:
    struct State;

    static void work(const std::shared_ptr<State>& state);
    bool startThreads(std::size_t count);

    const std::shared_ptr<State> m_pState; ///< Shared with the threads, which may outlive this.
};

} // namespace veltrano
