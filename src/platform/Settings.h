#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrano {

/// What the program remembers from one run to the next, each value under a plain key of letters. Strings are
/// bytes, since paths are among them, and come back byte for byte. A value that is missing or is not of the
/// type that is asked for answers nothing; which value stands for nothing is the reader's to say. Lives as
/// long as the program; main thread.
class Settings {
public:
    virtual ~Settings() = default;

    virtual std::optional<bool> boolForKey(std::string_view key) const = 0;
    virtual std::optional<std::int64_t> integerForKey(std::string_view key) const = 0;
    /// A whole number answers too.
    virtual std::optional<double> doubleForKey(std::string_view key) const = 0;
    virtual std::optional<std::string> stringForKey(std::string_view key) const = 0;
    /// An empty array is an array.
    virtual std::optional<std::vector<std::string>> arrayForKey(std::string_view key) const = 0;

    virtual void setBool(std::string_view key, bool value) = 0;
    virtual void setInteger(std::string_view key, std::int64_t value) = 0;
    virtual void setDouble(std::string_view key, double value) = 0;
    virtual void setString(std::string_view key, std::string_view value) = 0;
    virtual void setArray(std::string_view key, const std::vector<std::string>& value) = 0;
    virtual void remove(std::string_view key) = 0;

    /// Brings what was set to where it outlives the program. False if that can't be done; the values hold for
    /// this run all the same, and a later call tries again.
    [[nodiscard]] virtual bool synchronize() = 0;
};

} // namespace veltrano
