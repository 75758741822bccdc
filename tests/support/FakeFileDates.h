#pragma once

#include "platform/FileDates.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace veltrano {

/// Dates as a test tells them; every other path has none, or keeps silent until the test lets it answer.
class FakeFileDates final : public FileDates {
public:
    Date modificationDate(const std::string& path) override {
        asked.push_back(path);
        const auto found = dates.find(path);
        return found == dates.end() ? Date() : found->second;
    }
    void observe(LateAnswer newObserver) override { observer = std::move(newObserver); }

    std::map<std::string, Date> dates;
    std::vector<std::string> asked;
    LateAnswer observer;
};

} // namespace veltrano
