#pragma once

#include "platform/FolderQuestions.h"
#include "platform/MainLoop.h"
#include "platform/linux/VolumeQuestions.h"

#include <chrono>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace veltrano {

/// Asks folders on threads that nobody waits for. Main thread; the main loop outlives it.
class LinuxFolderQuestions final : public FolderQuestions {
public:
    /// How long a few folders that keep silent are waited for; many of them in a row take longer, up to
    /// sixteen times this.
    static constexpr std::chrono::milliseconds kPatience{60};

    explicit LinuxFolderQuestions(MainLoop& mainLoop, VolumeQuestions::Ask ask = askVolume,
                                  std::chrono::milliseconds patience = kPatience);
    LinuxFolderQuestions(const LinuxFolderQuestions&) = delete;
    LinuxFolderQuestions& operator=(const LinuxFolderQuestions&) = delete;
    ~LinuxFolderQuestions() override = default;

    [[nodiscard]] std::vector<FolderFacts> ask(const std::vector<std::string>& paths) override;
    Token addObserver(LateAnswer observer) override;
    void removeObserver(Token token) override;

private:
    void tellLateAnswers();
    void tell(const std::string& path, const VolumeAnswer& answer);

    // Constant after construction.
    MainLoop& m_mainLoop;
    const std::chrono::milliseconds m_patience;

    std::map<Token, LateAnswer> m_observers{};
    Token m_nNextToken = 1;
    /// Gone with this object, so that a task that is still posted finds nobody.
    const std::shared_ptr<LinuxFolderQuestions*> m_pSelf;
    VolumeQuestions m_questions; // last, so that it falls silent first
};

} // namespace veltrano
