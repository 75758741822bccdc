#include "platform/linux/UdevRecord.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace veltrano {

namespace {

std::string decode(std::string_view text) {
    constexpr std::size_t kEscapeLength = 4; // a backslash, an x and two digits
    std::string bytes;
    while (!text.empty()) {
        if (text.starts_with("\\x") && text.size() >= kEscapeLength) {
            unsigned char byte = 0;
            const char* const end = text.data() + kEscapeLength;
            const auto [stop, error] = std::from_chars(text.data() + 2, end, byte, 16);
            if (error == std::errc() && stop == end) {
                bytes += static_cast<char>(byte);
                text.remove_prefix(kEscapeLength);
                continue;
            }
        }
        bytes += text.front();
        text.remove_prefix(1);
    }
    return bytes;
}

} // namespace

UdevRecord::UdevRecord(std::string_view text) {
    while (!text.empty()) {
        const auto end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        const auto sign = line.find('=');
        if (line.starts_with("E:") && sign != std::string_view::npos)
            m_values[std::string(line.substr(2, sign - 2))] = line.substr(sign + 1);
    }
}

std::optional<std::string> UdevRecord::value(const std::string& key) const {
    const auto found = m_values.find(key);
    return found == m_values.end() || found->second.empty() ? std::nullopt : std::optional(found->second);
}

std::optional<std::string> UdevRecord::decoded(const std::string& key) const {
    const auto text = value(key);
    if (!text)
        return std::nullopt;
    std::string bytes = decode(*text);
    bytes.erase(bytes.find_last_not_of(' ') + 1);
    bytes.erase(0, bytes.find_first_not_of(' '));
    // A NUL ends a name for everybody who reads it.
    bytes.erase(std::min(bytes.find('\0'), bytes.size()));
    return bytes.empty() ? std::nullopt : std::optional(std::move(bytes));
}

bool UdevRecord::hasFlag(std::string_view keyBeginning) const {
    for (auto at = m_values.lower_bound(keyBeginning);
         at != m_values.end() && at->first.starts_with(keyBeginning); ++at)
        if (at->second == "1")
            return true;
    return false;
}

} // namespace veltrano
