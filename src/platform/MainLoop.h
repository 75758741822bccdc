#pragma once

#include <cstdint>
#include <functional>

namespace veltrano {

/// The main thread's queue of work. One lives as long as the program; whoever is given a reference may post
/// from any thread, everything else is the main thread's alone.
class MainLoop {
public:
    using Task = std::function<void()>;
    using Token = std::uint64_t; ///< 0 is no task.

    virtual ~MainLoop() = default;

    /// Runs the task on the main thread in a later turn, in the order of posting. Any thread.
    virtual void post(Task task) = 0;

    /// Runs the task once, `seconds` from now (0: in the next turn). Main thread.
    virtual Token callLater(double seconds, Task task) = 0;

    /// Forgets a task of callLater that has not run. Harmless for one that has, and for 0. Main thread.
    virtual void cancel(Token token) = 0;

    /// Seconds on a steady clock; only differences mean anything. Any thread.
    virtual double now() const = 0;
};

} // namespace veltrano
