#pragma once

#include "support/TestDir.h"

#include <string>
#include <sys/types.h>

namespace veltrano {

/// A message bus of the test's own: a real daemon that knows no service but those that the test brings, and
/// so starts nothing. It ends with this object, or with the test program. Connect with
/// QDBusConnection::connectToBus(address, name), or by support/BusConnection.h.
class PrivateBus {
public:
    /// Starts the daemon and waits until it listens. std::runtime_error if there is none to start.
    PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    const std::string& address() const { return m_address; }

    /// Ends the daemon, as when a desktop's session breaks.
    void stop();

private:
    TestDir m_folder; // configuration and socket
    std::string m_address;
    pid_t m_nDaemon = 0;
};

} // namespace veltrano
