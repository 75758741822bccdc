#include "platform/posix/UserFolders.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace veltrano {

namespace {

constexpr std::size_t kMostBytes = 65536; // of a list; it has eight lines
constexpr std::string_view kHome = "$HOME";

std::string readList(const std::string& path) {
    std::string text;
    // Whatever is found there, opening it must not wait.
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0)
        return text;
    std::array<char, 4096> piece;
    ssize_t got = 0;
    while (text.size() < kMostBytes && (got = ::read(file, piece.data(), piece.size())) > 0)
        text.append(piece.data(), static_cast<std::size_t>(got));
    ::close(file);
    return text;
}

std::string_view withoutLeadingBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

/// What stands between double quotes; a backslash keeps the byte after it. Nothing without a closing quote.
std::optional<std::string> quotedText(std::string_view text) {
    if (!text.starts_with('"'))
        return std::nullopt;
    std::string result;
    for (std::size_t index = 1; index < text.size(); ++index) {
        if (text[index] == '"')
            return result;
        if (text[index] == '\\' && index + 1 < text.size())
            ++index;
        result.push_back(text[index]);
    }
    return std::nullopt;
}

void removeTrailingSeparators(std::string& path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
}

/// The folder that a line gives the name, if it is such a line.
std::optional<std::string> folderOfLine(std::string_view line, std::string_view name,
                                        const std::string& homeFolder) {
    line = withoutLeadingBlanks(line);
    if (!line.starts_with(name))
        return std::nullopt;
    line = withoutLeadingBlanks(line.substr(name.size()));
    if (!line.starts_with('='))
        return std::nullopt;
    auto path = quotedText(withoutLeadingBlanks(line.substr(1)));
    if (!path)
        return std::nullopt;
    if (*path == kHome || path->starts_with(std::string(kHome) + '/'))
        path->replace(0, kHome.size(), homeFolder == "/" ? "" : homeFolder);
    if (path->empty() && homeFolder == "/")
        path = "/";
    if (!path->starts_with('/') || path->find('\0') != std::string::npos)
        return std::nullopt;
    removeTrailingSeparators(*path);
    return path;
}

} // namespace

std::string configFolder(const std::string& homeFolder) {
    const char* const told = std::getenv("XDG_CONFIG_HOME");
    if (told != nullptr && told[0] == '/')
        return told;
    return homeFolder + (homeFolder.ends_with('/') ? ".config" : "/.config");
}

std::optional<std::string> userFolderFromList(std::string_view list, std::string_view name,
                                              const std::string& homeFolder) {
    std::optional<std::string> result;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find('\n'), list.size());
        if (auto folder = folderOfLine(list.substr(0, end), name, homeFolder))
            result = std::move(folder);
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return result;
}

std::optional<std::string> downloadsFolder(const std::string& homeFolder, const std::string& configFolder) {
    std::string home = homeFolder;
    removeTrailingSeparators(home);
    const std::string list = readList(configFolder + "/user-dirs.dirs");
    auto folder = userFolderFromList(list, "XDG_DOWNLOAD_DIR", home);
    if (folder == home)
        return std::nullopt;
    return folder ? folder : home + (home == "/" ? "Downloads" : "/Downloads");
}

} // namespace veltrano
