#pragma once

#include "platform/Alerts.h"
#include "platform/Desktop.h"
#include "platform/FileActions.h"
#include "platform/Sounds.h"

#include <string>
#include <utility>
#include <vector>

namespace veltrano {

/// Keeps every question; the test gives the answers.
class RecordingAlerts final : public Alerts {
public:
    void ask(const Question& question, Answer answer) override {
        questions.push_back(question);
        answers.push_back(std::move(answer));
    }

    std::vector<Question> questions;
    std::vector<Answer> answers;
};

/// Keeps the names of what was to be heard.
class RecordingSounds final : public Sounds {
public:
    void play(std::string_view name) override { played.emplace_back(name); }

    std::vector<std::string> played;
};

/// Keeps what the desktop was asked for, each call with its paths.
class RecordingDesktop final : public Desktop {
public:
    void showItems(const std::vector<std::string>& paths) override { shown.push_back(paths); }
    void showItemProperties(const std::vector<std::string>& paths) override { explained.push_back(paths); }
    void openAddress(const std::string& url) override { opened.push_back(url); }

    std::vector<std::vector<std::string>> shown;
    std::vector<std::vector<std::string>> explained;
    std::vector<std::string> opened;
};

/// Whatever is asked for exists, or nothing does.
class SwitchedFiles final : public FileActions {
public:
    bool fileExistsAtPath(std::string_view) const override { return exist; }

    bool exist = true;
};

} // namespace veltrano
