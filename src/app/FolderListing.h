#pragma once

#include "platform/FileCatalogue.h"

#include <QString>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrano {

/// A folder inside the one that is listed, or a link to a folder.
struct Subfolder {
    std::string name; ///< Bytes.
    QString text;     ///< The name to show.
};

/// The folders in a folder, sorted as people expect: without regard to case, numbers by their value.
struct FolderListing {
    CatalogueStatus status = CatalogueStatus::EndOfFolder; ///< Denied and Gone tell what is missing, and why.
    std::vector<Subfolder> folders;
    bool isComplete = true; ///< False while it is open which of the links lead to folders.
};

/// Lists a folder by its absolute path. `found` hears the folders, and once more with the links among them if
/// there are links. A link that hangs holds up only the second listing. Blocks; stops when `isAbandoned`
/// answers true, and is silent then. Any thread.
void listSubfolders(FileCatalogue& catalogue, const std::string& path,
                    const std::function<bool()>& isAbandoned,
                    const std::function<void(FolderListing listing)>& found);

/// Whether a folder is at the path, after its links. Blocks; any thread.
[[nodiscard]] bool isFolderAtPath(FileCatalogue& catalogue, std::string_view path);

} // namespace veltrano
