#pragma once

#include <cstddef>
#include <string>

namespace veltrano {

/// A file that the kernel or udev keeps, of a few words as a rule.
struct SmallFile {
    enum class State { Missing, Unreadable, Read };
    State state = State::Missing;
    std::string text{};

    bool isRead() const { return state == State::Read; }
};

/// Reads a file whole, or its first bytes where it is larger than anybody expects.
[[nodiscard]] SmallFile readSmallFile(const std::string& path, std::size_t mostBytes = 64 * 1024);

/// Reads a file of one value, without the blanks and newlines around it.
[[nodiscard]] SmallFile readValue(const std::string& path);

} // namespace veltrano
