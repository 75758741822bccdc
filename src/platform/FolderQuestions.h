#pragma once

#include "platform/DeviceFacts.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace veltrano {

/// What a path answers when it is asked whether it is a folder.
enum class FolderAnswer {
    Folder,   ///< A folder, after its links, whose file system tells of itself.
    NoFolder, ///< Gone, something else, out of reach, or no absolute path at all.
    Silent,   ///< Nothing so far: its disk sleeps, its server is away.
};

/// What is known of a folder by its path. A value.
struct FolderFacts {
    FolderAnswer answer = FolderAnswer::Silent;
    PathFacts pathFacts{}; ///< Of a folder that has answered.
};

/// Asks folders by path, without ever waiting long for one that does not answer. Main thread; outlives
/// whoever observes it.
class FolderQuestions {
public:
    using Token = std::uint64_t; ///< 0 is no observer.
    using LateAnswer = std::function<void(const std::string& path, const FolderFacts& facts)>;

    virtual ~FolderQuestions() = default;

    /// One answer for each path, in their order. Waits a moment for all of them together; those that have not
    /// answered by then are silent. Paths are bytes.
    [[nodiscard]] virtual std::vector<FolderFacts> ask(const std::vector<std::string>& paths) = 0;

    /// Told on the main thread when a path that was silent answers after all, whoever asked it.
    virtual Token addObserver(LateAnswer observer) = 0;
    /// Harmless for 0.
    virtual void removeObserver(Token token) = 0;
};

} // namespace veltrano
