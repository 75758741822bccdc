#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace veltrano {

/// The properties that udev keeps of a block device, read from its database without the daemon.
class UdevRecord {
public:
    /// Lines that are no properties are passed over; of two of one key the last counts.
    explicit UdevRecord(std::string_view text);

    /// The value as it stands; nothing if there is none or it is empty.
    std::optional<std::string> value(const std::string& key) const;

    /// A value in udev's encoding, in which bytes may stand as "\x20", decoded and without blanks around it.
    std::optional<std::string> decoded(const std::string& key) const;

    /// Whether a property of which the key begins so is "1".
    bool hasFlag(std::string_view keyBeginning) const;

private:
    std::map<std::string, std::string, std::less<>> m_values;
};

} // namespace veltrano
