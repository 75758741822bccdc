#include "platform/linux/StartupDiskScript.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <utility>

namespace veltrano {

namespace {

constexpr std::size_t kMostOutput = 256; // No number is as long.
constexpr int kLifelineInShell = 3;

/// The script with a guard beside it. The guard waits for the end of the lifeline, of which this program
/// alone holds the other end, and then ends the whole group: however this program ends, nothing that the
/// script has started goes on. The guard is taken away when the script is done.
std::string guarded(const std::string& script) {
    const std::string lifeline = std::to_string(kLifelineInShell);
    return "(read -r line <&" + lifeline + "; kill -s KILL 0) >/dev/null & guard=$!\n" + //
           "(" + script + "\n) " + lifeline + "<&-; status=$?\n" +                       //
           "kill -s KILL $guard; wait $guard; exit $status";
}

/// Both ends of a pipe, closed at the end of the scope unless that was done before.
class Pipe {
public:
    Pipe() {
        if (::pipe2(m_ends.data(), O_CLOEXEC) != 0)
            m_ends = {-1, -1};
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        close(m_ends[0]);
        close(m_ends[1]);
    }

    bool isOpen() const { return m_ends[0] >= 0; }
    int readEnd() const { return m_ends[0]; }
    int writeEnd() const { return m_ends[1]; }
    void closeReadEnd() { close(m_ends[0]); }
    void closeWriteEnd() { close(m_ends[1]); }

private:
    static void close(int& end) {
        if (end >= 0)
            ::close(std::exchange(end, -1));
    }

    std::array<int, 2> m_ends{};
};

/// Starts the shell, its output going to the descriptor, in a process group of its own. -1 if it can't.
pid_t startShell(const std::string& script, int output, int lifeline) {
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawnattr_init(&attributes);
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, lifeline, kLifelineInShell);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    std::string shell = "sh";
    std::string option = "-c";
    std::string text = guarded(script);
    std::array<char*, 4> arguments{shell.data(), option.data(), text.data(), nullptr};
    std::string search = "PATH=/usr/bin:/bin:/usr/sbin:/sbin";
    std::string language = "LC_ALL=C";
    std::array<char*, 3> environment{search.data(), language.data(), nullptr};
    pid_t child = -1;
    const int error =
        ::posix_spawn(&child, "/bin/sh", &actions, &attributes, arguments.data(), environment.data());
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? child : -1;
}

/// All that the script writes until it ends; false if it does not in time or writes too much.
bool readOutput(int pipe, std::chrono::milliseconds limit, std::string& output) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (output.size() < kMostOutput) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        pollfd descriptor{pipe, POLLIN, 0};
        if (left.count() <= 0 || ::poll(&descriptor, 1, static_cast<int>(left.count())) <= 0)
            return false;
        std::array<char, 64> piece;
        const ssize_t got = ::read(pipe, piece.data(), piece.size());
        if (got <= 0)
            return got == 0;
        output.append(piece.data(), static_cast<std::size_t>(got));
    }
    return false;
}

bool hasEndedWell(pid_t child) {
    int status = 0;
    pid_t ended = -1;
    do {
        ended = ::waitpid(child, &status, 0);
    } while (ended < 0 && errno == EINTR);
    return ended == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

std::int64_t numberInOutput(std::string_view output) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const auto begin = output.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos)
        return -1;
    output = output.substr(begin, output.find_last_not_of(kBlanks) + 1 - begin);
    std::int64_t bytes = -1;
    const auto [end, error] = std::from_chars(output.data(), output.data() + output.size(), bytes);
    return error == std::errc() && end == output.data() + output.size() && bytes >= 0 ? bytes : -1;
}

std::int64_t runStartupDiskScript(const std::string& script, std::chrono::milliseconds limit) {
    Pipe result;
    Pipe lifeline;
    if (script.empty() || !result.isOpen() || !lifeline.isOpen())
        return -1;
    const pid_t child = startShell(script, result.writeEnd(), lifeline.readEnd());
    result.closeWriteEnd();
    lifeline.closeReadEnd();
    if (child <= 0)
        return -1;
    std::string output;
    const bool isComplete = readOutput(result.readEnd(), limit, output);
    result.closeReadEnd();
    if (!isComplete)
        ::kill(-child, SIGKILL); // with whatever it started
    return hasEndedWell(child) && isComplete ? numberInOutput(output) : -1;
}

} // namespace veltrano
