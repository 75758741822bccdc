#include "platform/ThreadPriority.h"

namespace veltrano {

// Where niceness belongs to the whole process, lowering it would take the window along.
void lowerThreadPriority() {}

} // namespace veltrano
