#include "app/DataStorage.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace veltrano {

namespace {

// Its paths hold any bytes.
namespace fs = std::filesystem;

/// Nothing for what can't be read, and for what is no file: reading a pipe would wait for ever.
std::optional<std::string> contentOf(const fs::path& path) {
    std::error_code trouble;
    if (!fs::is_regular_file(path, trouble))
        return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    return file.is_open() && !file.bad() ? std::optional(std::move(content)) : std::nullopt;
}

bool writeContent(const fs::path& path, const std::string& content) {
    fs::path unfinished = path;
    unfinished += ".new";
    std::ofstream file(unfinished, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    std::error_code trouble;
    if (file.good())
        fs::rename(unfinished, path, trouble);
    if (file.good() && !trouble)
        return true;
    fs::remove(unfinished, trouble);
    return false;
}

bool makeFolder(const fs::path& path) {
    std::error_code trouble;
    fs::create_directories(path, trouble);
    return fs::is_directory(path, trouble);
}

} // namespace

DataStorage::DataStorage(HomeFolderOf homeFolderOf) : m_homeFolderOf(std::move(homeFolderOf)) {}

DataStorage::Dictionary DataStorage::CreateDict() {
    return std::make_shared<PropertyDictionary>();
}

DataStorage::Dictionary DataStorage::OpenDict(const std::string& path) const {
    const fs::path file = expandTilde(path);
    const auto content = contentOf(file);
    if (!content)
        return nullptr;
    Dictionary dictionary = readPropertyList(*content);
    if (dictionary && !dictionary->values.empty())
        return dictionary;
    std::error_code trouble;
    fs::remove(file, trouble);
    return nullptr;
}

DataStorage::Dictionary DataStorage::OpenDict(const std::string& path, std::string_view withKey) {
    m_RootDictionary = OpenDict(path);
    if (!m_RootDictionary)
        return nullptr;
    const auto found = m_RootDictionary->values.find(withKey);
    if (found == m_RootDictionary->values.end())
        return nullptr;
    const auto* const dictionary = std::get_if<Dictionary>(&found->second);
    return dictionary != nullptr ? *dictionary : nullptr;
}

DataStorage::Dictionary DataStorage::CreateDictWithKey(const std::string& key) {
    if (!m_RootDictionary)
        m_RootDictionary = CreateDict();
    Dictionary dictionary = CreateDict();
    m_RootDictionary->values[key] = dictionary;
    return dictionary;
}

bool DataStorage::CreateImmediateDir(const std::string& path) const {
    return makeFolder(expandTilde(path));
}

bool DataStorage::SaveDict(const PropertyDictionary& dictionary, const std::string& toFile) const {
    const auto content = writePropertyList(dictionary);
    if (!content)
        return true;
    const fs::path file = expandTilde(toFile);
    return makeFolder(file.parent_path()) && writeContent(file, *content);
}

/// The path itself where it has no tilde, or that of a user who is not known.
std::string DataStorage::expandTilde(const std::string& path) const {
    if (!path.starts_with('~'))
        return path;
    const std::size_t end = std::min(path.find('/'), path.size());
    auto home = m_homeFolderOf(path.substr(1, end - 1));
    if (!home)
        return path;
    if (home->ends_with('/'))
        home->pop_back();
    std::string expanded = *home + path.substr(end);
    return expanded.empty() ? "/" : expanded;
}

} // namespace veltrano
