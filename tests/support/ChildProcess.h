#pragma once

#include <functional>
#include <string>

namespace veltrano {

/// Runs `work` in a forked child, for what must not touch the test program itself (another user, a limit, a
/// private set of mounts), and answers the text that it answers, or how the child died. Only while the test
/// program has no other threads.
[[nodiscard]] std::string runInChild(const std::function<std::string()>& work);

/// Makes the calling process that of a user who owns nothing. False if this one may not change its user.
[[nodiscard]] bool becomeNobody();

/// From now on the calling process gets no thread. For a child: it becomes another user where it must. False
/// if that can't be done here.
[[nodiscard]] bool forbidThreads();

} // namespace veltrano
