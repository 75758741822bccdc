#pragma once

#include "platform/FolderQuestions.h"

#include <map>
#include <set>
#include <utility>

namespace veltrano {

/// Folders as a test tells them; every other path is none.
class FakeFolderQuestions final : public FolderQuestions {
public:
    std::vector<FolderFacts> ask(const std::vector<std::string>& paths) override {
        asked.push_back(paths);
        std::vector<FolderFacts> result;
        for (const std::string& path : paths) {
            if (silent.contains(path))
                result.push_back({});
            else if (const auto found = folders.find(path); found != folders.end())
                result.push_back({FolderAnswer::Folder, found->second});
            else
                result.push_back({FolderAnswer::NoFolder, {}});
        }
        return result;
    }
    Token addObserver(LateAnswer observer) override {
        observers.emplace(++m_nLastToken, std::move(observer));
        return m_nLastToken;
    }
    void removeObserver(Token token) override { observers.erase(token); }

    void addFolder(const std::string& path, const PathFacts& facts = {}) { folders[path] = facts; }
    /// Lets a silent path answer.
    void answerLate(const std::string& path, const FolderFacts& facts) {
        silent.erase(path);
        for (const auto& [token, observer] : observers)
            observer(path, facts);
    }

    std::map<std::string, PathFacts> folders;
    std::set<std::string> silent;
    std::vector<std::vector<std::string>> asked; ///< Each question.
    std::map<Token, LateAnswer> observers;

private:
    Token m_nLastToken = 0;
};

} // namespace veltrano
