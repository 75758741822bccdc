#pragma once

#include <string_view>

namespace veltrano {

/// Short sounds by name: "Pop", "Tink", "Submarine". Main thread; plays aside and returns at once. A sound
/// that cannot be played is silence, never an error.
class Sounds {
public:
    virtual ~Sounds() = default;
    virtual void play(std::string_view name) = 0;
};

} // namespace veltrano
