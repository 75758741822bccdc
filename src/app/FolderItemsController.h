#pragma once

#include "platform/FolderQuestions.h"
#include "platform/Settings.h"
#include "tree/TopLevelItem.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrano {

/// A list of folders in the sidebar, saved as a plain array of paths. What the favourites and the recents
/// have in common. Entries are shared with whoever shows them and carry their scanned trees for as long as
/// they live. Owned by the main controller; settings and questions outlive it. Main thread.
///
/// A path is asked whether it is a folder before it gets an entry, and never waited for: one that keeps
/// silent (a server that is away) gets its entry all the same, since nothing the user saved may be lost, and
/// the dates of the entry when it answers after all. If it turns out to be no folder its entry stays until
/// the next start; scanning it tells the user.
class FolderItemsController {
public:
    using Entry = std::shared_ptr<FolderItem>;
    /// Whether a path that is in the list already counts.
    enum class WithCheck { No, Yes };

    FolderItemsController(Settings& settings, FolderQuestions& questions);
    FolderItemsController(const FolderItemsController&) = delete;
    FolderItemsController& operator=(const FolderItemsController&) = delete;
    virtual ~FolderItemsController();

    /// The entries in the order of display. Valid until the list changes.
    const std::vector<Entry>& getFoldersArray() const { return mFoldersList; }
    std::size_t foldersCount() const { return mFoldersList.size(); }
    /// Null past the end.
    Entry getFolderItemByIndex(std::size_t index) const;
    /// The first entry whose full path is equal, byte for byte; null if there is none.
    Entry getFolderItemByPath(std::string_view path) const;
    /// Told by the object, not by its path; null is in no list.
    std::optional<std::size_t> getIndexOfItem(const TopLevelItem* item) const;

    /// An entry that is in no list yet; null for a path that is no folder.
    Entry createFolderItemByPath(const std::string& path) const;

    /// Appends a new entry for the path and answers it. Null, and no change, for a path that is no folder,
    /// and with the check on for one that the list has.
    virtual Entry addFolderToList(const std::string& path, WithCheck withCheck);
    /// Appends an entry that exists, with its scanned tree, and answers it. Null adds nothing.
    Entry addFolderItemToList(Entry item);
    /// Removes every entry of the path.
    void removeFolderFromList(std::string_view path);
    /// Told by the object.
    void removeFolderItemFromList(const TopLevelItem* item);

    /// Appends what was saved. False, and no change, if nothing was; true for an empty list too.
    [[nodiscard]] virtual bool initFromPreferences() = 0;
    /// Appends what a list holds before it was ever saved.
    virtual void initFolderListByDefault() {}
    /// Hands the list to the settings, which bring it to the disk in their time. Always true.
    virtual bool saveToPreferences() const = 0;

protected:
    /// The first name and the sub key play no part in what is stored.
    bool initListFromPreferences(std::string_view name, std::string_view withFoldersKey,
                                 std::string_view withSubKey);
    bool saveListToPreferences(std::string_view name, std::string_view withFoldersKey,
                               std::string_view withSubKey) const;

    /// Appends an entry for each path that is a folder or keeps silent, all asked at once; with no check.
    void appendFolders(const std::vector<std::string>& paths);
    /// Puts an entry before all others.
    void insertFirst(Entry item);
    void removeLast();

    Settings& getSettings() const { return m_settings; }
    FolderQuestions& getQuestions() const { return m_questions; }

private:
    void takeLateAnswer(const std::string& path, const FolderFacts& facts);

    // Injected, constant.
    Settings& m_settings;
    FolderQuestions& m_questions;

    std::vector<Entry> mFoldersList{};
    FolderQuestions::Token m_nObserver = 0;
};

} // namespace veltrano
