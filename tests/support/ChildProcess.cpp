#include "support/ChildProcess.h"

#include <array>
#include <exception>
#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace veltrano {

namespace {

#if defined(__SANITIZE_THREAD__)
constexpr bool kThreadSanitizer = true;
#elif defined(__has_feature)
constexpr bool kThreadSanitizer = __has_feature(thread_sanitizer);
#else
constexpr bool kThreadSanitizer = false;
#endif

[[noreturn]] void answerAndExit(const std::function<std::string()>& work, int pipe) {
    std::string answer;
    try {
        answer = work();
    } catch (const std::exception& error) {
        answer = error.what();
    }
    const bool isSent = ::write(pipe, answer.data(), answer.size()) == static_cast<ssize_t>(answer.size());
    ::_exit(isSent ? 0 : 1);
}

} // namespace

std::string runInChild(const std::function<std::string()>& work) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        return "no pipe";
    const pid_t child = ::fork();
    if (child == 0)
        answerAndExit(work, ends[1]);
    ::close(ends[1]);
    std::string answer;
    std::array<char, 4096> piece{};
    for (ssize_t got = 1; got > 0;) {
        got = ::read(ends[0], piece.data(), piece.size());
        answer.append(piece.data(), got > 0 ? static_cast<std::size_t>(got) : 0);
    }
    ::close(ends[0]);
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child)
        return "no child";
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return "the child died with status " + std::to_string(status) + " after: " + answer;
    return answer;
}

bool becomeNobody() {
    constexpr uid_t kNobody = 65534;
    if (::geteuid() != 0)
        return false;
    return ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0;
}

bool forbidThreads() {
    // The thread sanitizer ends a child that makes a thread if its parent has any, and so it could not be
    // asked.
    if (kThreadSanitizer)
        return false;
    // The limit does not hold for the administrator.
    if (::geteuid() == 0 && !becomeNobody())
        return false;
    const rlimit none{0, 0};
    if (::setrlimit(RLIMIT_NPROC, &none) != 0)
        return false;
    try {
        std::thread([] {}).join();
    } catch (const std::system_error&) {
        return true;
    }
    return false;
}

} // namespace veltrano
