#pragma once

#include "app/FolderItemsController.h"

#include <cstdint>

namespace veltrano {

/// The folders that were scanned recently, the latest first. Owned by the main controller; main thread.
class RecentsController final : public FolderItemsController {
public:
    static constexpr std::int32_t kUsualLimit = 10;

    using FolderItemsController::FolderItemsController;

    std::int32_t getRecentsLimit() const { return m_nRecentsLimit; }
    /// Drops entries from the end down to the limit. A limit below 1 is none, and changes nothing.
    void setRecentsLimit(std::int32_t limit);

    /// With the check on, the way of a folder that is about to be scanned: an entry of that path goes, with
    /// its scanned tree, and a new one comes first, for which the last ones go as far as the limit asks. With
    /// the check off, the way of a list that is loaded: appended, whatever the limit.
    Entry addFolderToList(const std::string& path, WithCheck withCheck) override;

    /// Takes the limit too, after the list. A saved limit that is none, or is missing, leaves the usual one.
    [[nodiscard]] bool initFromPreferences() override;
    bool saveToPreferences() const override;

private:
    std::int32_t m_nRecentsLimit = kUsualLimit; // entries, at least 1
};

} // namespace veltrano
