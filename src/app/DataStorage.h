#pragma once

#include "app/PropertyList.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace veltrano {

/// Small stores of the program's own: a dictionary in a file, as a property list in XML. A file that is
/// damaged or empty is deleted when it is opened, so that the store begins anew. Paths are bytes; "~" and
/// "~name" at their beginning stand for home folders. Main thread; blocks for as long as the disk does.
class DataStorage {
public:
    using Dictionary = std::shared_ptr<PropertyDictionary>;
    /// The home folder of a user, of ours for an empty name; nothing for a user that is not known.
    using HomeFolderOf = std::function<std::optional<std::string>(const std::string& user)>;

    explicit DataStorage(HomeFolderOf homeFolderOf);

    /// A new dictionary that belongs to no file.
    static Dictionary CreateDict();

    /// The dictionary of a file. Null where no file can be read, which deletes nothing, and for a file that
    /// holds no dictionary or an empty one, which is deleted.
    Dictionary OpenDict(const std::string& path) const;

    /// Opens the file as the root dictionary, in place of the one that was, and answers the dictionary under
    /// the key; null where there is none.
    Dictionary OpenDict(const std::string& path, std::string_view withKey);

    /// Puts a new dictionary under the key of the root dictionary, which is made if there is none.
    Dictionary CreateDictWithKey(const std::string& key);

    /// Null before one was opened or created, and when the last one could not be opened.
    const Dictionary& getRootDictionary() const { return m_RootDictionary; }

    /// Makes a folder with those above it. True when it is there.
    [[nodiscard]] bool CreateImmediateDir(const std::string& path) const;

    /// Writes a dictionary to a file, all of it or nothing, and makes the folder for it. False when that
    /// fails. True, and nothing is written, for a dictionary that holds what a property list can't.
    [[nodiscard]] bool SaveDict(const PropertyDictionary& dictionary, const std::string& toFile) const;

private:
    std::string expandTilde(const std::string& path) const;

    const HomeFolderOf m_homeFolderOf;
    Dictionary m_RootDictionary{};
};

} // namespace veltrano
