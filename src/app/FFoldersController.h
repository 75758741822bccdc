#pragma once

#include "app/FolderItemsController.h"

#include <optional>
#include <string>

namespace veltrano {

/// The favourite folders. Owned by the main controller; main thread.
class FFoldersController final : public FolderItemsController {
public:
    /// Where the favourites of a first start come from; absolute paths, bytes.
    struct DefaultPlaces {
        std::string applications{"/usr"};
        std::string home{};
        std::optional<std::string> downloads{}; ///< Nothing if the user has none.
    };

    FFoldersController(Settings& settings, FolderQuestions& questions, DefaultPlaces places);

    [[nodiscard]] bool initFromPreferences() override;
    /// Applications, home, downloads, and the home folder's "Dropbox", each that is a folder.
    void initFolderListByDefault() override;
    bool saveToPreferences() const override;

private:
    const DefaultPlaces m_places;
};

} // namespace veltrano
