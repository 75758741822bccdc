#include "platform/ThreadPriority.h"

#include <sys/resource.h>
#include <unistd.h>

namespace veltrano {

void lowerThreadPriority() {
    // On Linux each thread has its own niceness, and a thread id is taken where a process id is asked for.
    constexpr int kNiceness = 10;
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), kNiceness);
}

} // namespace veltrano
