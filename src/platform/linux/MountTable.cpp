#include "platform/linux/MountTable.h"

#include "platform/linux/SmallFile.h"

#include <charconv>
#include <limits>
#include <utility>

namespace veltrano {

namespace {

constexpr std::size_t kEscapeLength = 4; // a backslash and three octal digits

/// The byte of the escape that a text begins with; 0 if it begins with none. A number that no byte of a path
/// has makes no escape.
char escapedByte(std::string_view text) {
    constexpr unsigned kOctal = 8;
    if (text.size() < kEscapeLength || text.front() != '\\')
        return 0;
    unsigned value = 0;
    for (const char digit : text.substr(1, kEscapeLength - 1)) {
        if (digit < '0' || digit > '7')
            return 0;
        value = value * kOctal + static_cast<unsigned>(digit - '0');
    }
    return value <= std::numeric_limits<unsigned char>::max() ? static_cast<char>(value) : '\0';
}

/// Blanks, tabs, newlines and backslashes stand in the table as escapes.
std::string unescape(std::string_view field) {
    std::string bytes;
    while (!field.empty()) {
        const char escaped = escapedByte(field);
        bytes += escaped != 0 ? escaped : field.front();
        field.remove_prefix(escaped != 0 ? kEscapeLength : 1);
    }
    return bytes;
}

/// Takes the first field, up to a separator, off the text.
std::string_view takeField(std::string_view& text, char separator) {
    const auto end = text.find(separator);
    const std::string_view field = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    return field;
}

template <class Number>
Number number(std::string_view text) {
    Number value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? value : Number{0};
}

MountEntry parseLine(std::string_view line) {
    MountEntry entry;
    entry.id = number<int>(takeField(line, ' '));
    entry.parent = number<int>(takeField(line, ' '));
    std::string_view device = takeField(line, ' ');
    entry.major = number<unsigned>(takeField(device, ':'));
    entry.minor = number<unsigned>(device);
    entry.root = unescape(takeField(line, ' '));
    entry.mountPoint = unescape(takeField(line, ' '));
    entry.options = unescape(takeField(line, ' '));
    // Any number of optional fields, ended by a single dash.
    while (!line.empty() && takeField(line, ' ') != "-") {
    }
    entry.fileSystemType = unescape(takeField(line, ' '));
    entry.source = unescape(takeField(line, ' '));
    entry.superOptions = unescape(takeField(line, ' '));
    return entry;
}

} // namespace

std::vector<MountEntry> parseMountTable(std::string_view table) {
    std::vector<MountEntry> entries;
    while (!table.empty()) {
        MountEntry entry = parseLine(takeField(table, '\n'));
        if (entry.mountPoint.starts_with('/'))
            entries.push_back(std::move(entry));
    }
    return entries;
}

bool hasOption(std::string_view options, std::string_view option) {
    while (!options.empty())
        if (takeField(options, ',') == option)
            return true;
    return false;
}

std::string readMountTable(const std::string& path) {
    constexpr std::size_t kMostBytes = 64 * 1024 * 1024; // some hundred thousand mounts
    return readSmallFile(path, kMostBytes).text;
}

} // namespace veltrano
