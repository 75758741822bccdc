#pragma once

#include <functional>
#include <string>
#include <vector>

namespace veltrano {

/// Asks the user. Main thread. One question is on screen at a time; the window behind lives on.
class Alerts {
public:
    struct Question {
        std::string message;              ///< UTF-8.
        std::string informativeText;      ///< UTF-8.
        std::vector<std::string> buttons; ///< UTF-8, the default first.
    };
    /// Gets the index of the button; the last one when the alert was closed.
    using Answer = std::function<void(int button)>;

    virtual ~Alerts() = default;
    virtual void ask(const Question& question, Answer answer) = 0;
};

} // namespace veltrano
