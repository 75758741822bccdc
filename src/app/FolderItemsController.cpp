#include "app/FolderItemsController.h"

#include "tree/PathComponents.h"

#include <algorithm>
#include <utility>

namespace veltrano {

namespace {

/// Null for what is known to be no folder.
FolderItemsController::Entry makeEntry(const std::string& path, const FolderFacts& facts) {
    if (facts.answer == FolderAnswer::NoFolder)
        return nullptr;
    auto entry = std::make_shared<FolderItem>(path, std::string(lastPathComponent(path)), 0, 0, 0);
    entry->initDates(facts.pathFacts);
    return entry;
}

} // namespace

FolderItemsController::FolderItemsController(Settings& settings, FolderQuestions& questions)
    : m_settings(settings), m_questions(questions) {
    m_nObserver = m_questions.addObserver(
        [this](const std::string& path, const FolderFacts& facts) { takeLateAnswer(path, facts); });
}

FolderItemsController::~FolderItemsController() {
    m_questions.removeObserver(m_nObserver);
}

FolderItemsController::Entry FolderItemsController::getFolderItemByIndex(std::size_t index) const {
    return index < mFoldersList.size() ? mFoldersList[index] : nullptr;
}

FolderItemsController::Entry FolderItemsController::getFolderItemByPath(std::string_view path) const {
    const auto found = std::find_if(mFoldersList.begin(), mFoldersList.end(),
                                    [&](const Entry& entry) { return entry->getPath() == path; });
    return found != mFoldersList.end() ? *found : nullptr;
}

std::optional<std::size_t> FolderItemsController::getIndexOfItem(const TopLevelItem* item) const {
    const auto found = std::find_if(mFoldersList.begin(), mFoldersList.end(),
                                    [&](const Entry& entry) { return entry.get() == item; });
    if (found == mFoldersList.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - mFoldersList.begin());
}

FolderItemsController::Entry FolderItemsController::createFolderItemByPath(const std::string& path) const {
    return makeEntry(path, m_questions.ask({path}).front());
}

FolderItemsController::Entry FolderItemsController::addFolderToList(const std::string& path,
                                                                    WithCheck withCheck) {
    if (withCheck == WithCheck::Yes && getFolderItemByPath(path))
        return nullptr;
    return addFolderItemToList(createFolderItemByPath(path));
}

FolderItemsController::Entry FolderItemsController::addFolderItemToList(Entry item) {
    if (item)
        mFoldersList.push_back(item);
    return item;
}

void FolderItemsController::removeFolderFromList(std::string_view path) {
    const std::string removed(path); // The caller's may lie in an entry that goes.
    std::erase_if(mFoldersList, [&](const Entry& entry) { return entry->getPath() == removed; });
}

void FolderItemsController::removeFolderItemFromList(const TopLevelItem* item) {
    std::erase_if(mFoldersList, [&](const Entry& entry) { return entry.get() == item; });
}

bool FolderItemsController::initListFromPreferences(std::string_view, std::string_view withFoldersKey,
                                                    std::string_view) {
    const auto paths = m_settings.arrayForKey(withFoldersKey);
    if (!paths)
        return false;
    appendFolders(*paths);
    return true;
}

bool FolderItemsController::saveListToPreferences(std::string_view, std::string_view withFoldersKey,
                                                  std::string_view) const {
    std::vector<std::string> paths;
    paths.reserve(mFoldersList.size());
    for (const Entry& entry : mFoldersList)
        paths.push_back(entry->getFullPath());
    m_settings.setArray(withFoldersKey, paths);
    return true;
}

void FolderItemsController::appendFolders(const std::vector<std::string>& paths) {
    // One question for all of them, so that several dead servers cost no more time than one.
    const std::vector<FolderFacts> facts = m_questions.ask(paths);
    for (std::size_t index = 0; index < paths.size(); ++index)
        addFolderItemToList(makeEntry(paths[index], facts[index]));
}

void FolderItemsController::insertFirst(Entry item) {
    mFoldersList.insert(mFoldersList.begin(), std::move(item));
}

void FolderItemsController::removeLast() {
    if (!mFoldersList.empty())
        mFoldersList.pop_back();
}

void FolderItemsController::takeLateAnswer(const std::string& path, const FolderFacts& facts) {
    if (facts.answer != FolderAnswer::Folder)
        return;
    for (const Entry& entry : mFoldersList) {
        if (entry->getPath() == path)
            entry->initDates(facts.pathFacts);
    }
}

} // namespace veltrano
