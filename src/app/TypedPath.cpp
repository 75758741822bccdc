#include "app/TypedPath.h"

#include "tree/PathComponents.h"

#include <vector>

namespace veltrano {

namespace {

/// The path without ".", ".." and empty names.
std::string cleanPath(std::string_view path) {
    std::vector<std::string_view> names;
    for (const std::string_view name : pathComponents(path)) {
        if (name == "/" || name == ".")
            continue;
        if (name != "..")
            names.push_back(name);
        else if (!names.empty())
            names.pop_back();
    }
    std::string clean = "/";
    for (const std::string_view name : names)
        appendPathComponent(clean, name);
    return clean;
}

} // namespace

std::string pathFromTyped(std::string_view typed, std::string_view shown, std::string_view home) {
    if (typed.empty())
        return {};
    if (typed.front() == '/')
        return cleanPath(typed);
    const bool isBelowHome = typed == "~" || typed.starts_with("~/");
    std::string path(isBelowHome ? home : shown);
    path += '/';
    path += isBelowHome ? typed.substr(1) : typed;
    return cleanPath(path);
}

std::string pathOfParent(std::string_view path) {
    return cleanPath(std::string(path) + "/..");
}

std::string pathOfChild(std::string_view path, std::string_view name) {
    std::string child(path);
    appendPathComponent(child, name);
    return child;
}

} // namespace veltrano
