#pragma once

#include "platform/Alerts.h"
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

/// Whatever is asked for exists, or nothing does.
class SwitchedFiles final : public FileActions {
public:
    bool fileExistsAtPath(std::string_view) const override { return exist; }

    bool exist = true;
};

} // namespace veltrano
