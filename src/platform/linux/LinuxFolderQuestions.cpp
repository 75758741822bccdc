#include "platform/linux/LinuxFolderQuestions.h"

#include <utility>

namespace veltrano {

namespace {

/// Folders have no number of a mount to tell them apart; their path is enough.
VolumeQuestions::Key keyOf(const std::string& path) {
    return {0, path};
}

FolderFacts factsFrom(const VolumeAnswer& answer) {
    if (!answer.isReadable)
        return {FolderAnswer::NoFolder, {}};
    return {FolderAnswer::Folder, answer.pathFacts};
}

/// Calls take a relative path from wherever the program was started, and a NUL for the end.
bool isAbsolutePath(const std::string& path) {
    return path.starts_with('/') && path.find('\0') == std::string::npos;
}

} // namespace

LinuxFolderQuestions::LinuxFolderQuestions(MainLoop& mainLoop, VolumeQuestions::Ask ask,
                                           std::chrono::milliseconds patience)
    : m_mainLoop(mainLoop),
      m_patience(patience),
      m_pSelf(std::make_shared<LinuxFolderQuestions*>(this)),
      m_questions(std::move(ask), [&mainLoop, self = std::weak_ptr(m_pSelf)] {
          mainLoop.post([self] {
              if (const auto alive = self.lock())
                  (*alive)->tellLateAnswers();
          });
      }) {}

std::vector<FolderFacts> LinuxFolderQuestions::ask(const std::vector<std::string>& paths) {
    std::vector<VolumeQuestions::Key> keys;
    for (const std::string& path : paths) {
        if (isAbsolutePath(path))
            keys.push_back(keyOf(path));
    }
    const VolumeQuestions::Answers answers = m_questions.ask(keys, m_patience);

    std::vector<FolderFacts> result;
    result.reserve(paths.size());
    for (const std::string& path : paths) {
        if (!isAbsolutePath(path))
            result.push_back({FolderAnswer::NoFolder, {}});
        else if (const auto found = answers.find(keyOf(path)); found != answers.end())
            result.push_back(factsFrom(found->second));
        else
            result.push_back({});
    }
    // Answers to earlier questions come along; whoever asked those hears of them as late ones.
    const std::set<VolumeQuestions::Key> asked(keys.begin(), keys.end());
    for (const auto& [key, answer] : answers) {
        if (!asked.contains(key))
            m_mainLoop.post([self = std::weak_ptr(m_pSelf), path = key.second, answer = answer] {
                if (const auto alive = self.lock())
                    (*alive)->tell(path, answer);
            });
    }
    return result;
}

FolderQuestions::Token LinuxFolderQuestions::addObserver(LateAnswer observer) {
    m_observers.emplace(m_nNextToken, std::move(observer));
    return m_nNextToken++;
}

void LinuxFolderQuestions::removeObserver(Token token) {
    m_observers.erase(token);
}

void LinuxFolderQuestions::tellLateAnswers() {
    for (const auto& [key, answer] : m_questions.ask({}, std::chrono::milliseconds(0)))
        tell(key.second, answer);
}

void LinuxFolderQuestions::tell(const std::string& path, const VolumeAnswer& answer) {
    const FolderFacts facts = factsFrom(answer);
    const auto observers = m_observers; // One may go while it is told.
    for (const auto& [token, observer] : observers) {
        if (m_observers.contains(token))
            observer(path, facts);
    }
}

} // namespace veltrano
