#pragma once

namespace veltrano {

/// Lets the calling thread step back behind the window's: nice 10 where threads have a niceness of their own,
/// nothing elsewhere. A refusal by the system is no trouble; the thread then runs as it did.
void lowerThreadPriority();

} // namespace veltrano
