#include "platform/linux/FileAddress.h"

namespace veltrano {

namespace {

constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
constexpr std::string_view kDigits = "0123456789ABCDEF";

} // namespace

std::string fileAddress(std::string_view path) {
    std::string address = "file://";
    address.reserve(address.size() + path.size());
    for (const char letter : path) {
        if (kPlain.find(letter) != std::string_view::npos) {
            address += letter;
            continue;
        }
        const auto byte = static_cast<unsigned char>(letter);
        address += '%';
        address += kDigits[byte >> 4];
        address += kDigits[byte & 0xF];
    }
    return address;
}

std::string folderOfPath(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.remove_suffix(1);
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos || slash == 0 ? "/" : std::string(path.substr(0, slash));
}

} // namespace veltrano
