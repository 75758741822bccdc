#include "support/PrivateBus.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace veltrano {

namespace {

/// Everybody may do everything, since everybody is the test. Without a folder of services nothing is started.
void writeConfiguration(const std::string& file, const std::string& folder) {
    std::ofstream(file) << "<busconfig><type>session</type><listen>unix:dir=" << folder
                        << "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
                           "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/>"
                           "<allow own=\"*\"/></policy></busconfig>\n";
}

std::string readLine(int descriptor) {
    std::string line;
    for (char letter = 0; ::read(descriptor, &letter, 1) == 1 && letter != '\n';)
        line += letter;
    return line;
}

} // namespace

PrivateBus::PrivateBus() {
    const std::string file = m_folder.path("bus.conf");
    writeConfiguration(file, m_folder.path());
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe for the bus");
    const std::string errors = m_folder.path("bus.log");
    const std::string option = "--config-file=" + file;
    const pid_t parent = ::getpid();
    m_nDaemon = ::fork();
    if (m_nDaemon == 0) {
        // A test that crashes leaves no daemon behind.
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent)
            ::_exit(1);
        ::dup2(ends[1], STDOUT_FILENO);
        // It complains about limits that it may not raise.
        if (const int log = ::open(errors.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600); log >= 0)
            ::dup2(log, STDERR_FILENO);
        ::close(ends[0]);
        ::close(ends[1]);
        ::execlp("dbus-daemon", "dbus-daemon", option.c_str(), "--nofork", "--print-address=1",
                 static_cast<char*>(nullptr));
        ::_exit(127);
    }
    ::close(ends[1]);
    m_address = readLine(ends[0]);
    ::close(ends[0]);
    if (m_address.empty()) {
        stop();
        std::string reason;
        std::getline(std::ifstream(errors), reason);
        throw std::runtime_error("dbus-daemon did not start; scripts/setup test installs it: " + reason);
    }
}

PrivateBus::~PrivateBus() {
    stop();
}

void PrivateBus::stop() {
    const pid_t daemon = std::exchange(m_nDaemon, 0);
    if (daemon <= 0)
        return;
    ::kill(daemon, SIGKILL);
    ::waitpid(daemon, nullptr, 0);
}

} // namespace veltrano
