#include "platform/linux/SmallFile.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace veltrano {

SmallFile readSmallFile(const std::string& path, std::size_t mostBytes) {
    // Whatever is found there, opening it must not wait.
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0)
        return {errno == ENOENT || errno == ENOTDIR ? SmallFile::State::Missing
                                                    : SmallFile::State::Unreadable};
    SmallFile result{SmallFile::State::Read};
    std::array<char, 4096> piece;
    while (result.text.size() < mostBytes) {
        const ssize_t got = ::read(file, piece.data(), piece.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            result = {SmallFile::State::Unreadable};
        if (got <= 0)
            break;
        result.text.append(piece.data(), static_cast<std::size_t>(got));
    }
    ::close(file);
    return result;
}

SmallFile readValue(const std::string& path) {
    constexpr const char* kBlanks = " \t\r\n";
    SmallFile file = readSmallFile(path);
    file.text.erase(file.text.find_last_not_of(kBlanks) + 1);
    file.text.erase(0, file.text.find_first_not_of(kBlanks));
    return file;
}

} // namespace veltrano
