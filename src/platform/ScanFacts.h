#pragma once

#include <string>
#include <vector>

namespace veltrano {

/// What a scan has to know about the system it runs on. Paths are bytes, without a separator at the end.
struct ScanFacts {
    std::string usersFolderName = "home";  ///< Where homes lie, below a volume's root; "Users" elsewhere.
    std::string homeDirectory;             ///< Of the user who runs the program.
    std::vector<std::string> trashFolders; ///< Full paths that count as trash, whatever their names.
};

} // namespace veltrano
