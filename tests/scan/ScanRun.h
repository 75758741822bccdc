#pragma once

#include "platform/NotificationCentre.h"
#include "scan/CModel.h"
#include "support/FakeMainLoop.h"
#include "support/FakeVolumes.h"
#include "tree/VolumeSystemItem.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrano::test {

/// The start of 2026 on the catalogue's clock; a test's present.
inline constexpr std::int64_t kPresent = kCatalogueEpochOffset + 1'767'225'600;

inline CatalogueDate dateAt(std::int64_t seconds) {
    return {static_cast<std::uint16_t>(seconds >> 32), static_cast<std::uint32_t>(seconds & 0xFFFFFFFF), 0};
}

/// The sum of the leaves below an item by the child links alone: no total that the tree keeps is asked.
/// Notes every folder whose own total differs from what lies below it in `wrong`.
inline std::int64_t recountByLinks(FileSystemItem& top, std::vector<std::string>* wrong = nullptr) {
    struct Step {
        FolderSystemItem* folder;
        std::size_t next;
        std::int64_t sum;
    };
    auto leafSize = [](FileSystemItem& item) {
        FolderSystemItem* const folder = item.asFolderSystemItem();
        return folder ? folder->getAddSize() : item.gettotalsize();
    };
    std::vector<Step> steps{{top.asFolderSystemItem(), 0, 0}};
    for (;;) {
        Step& step = steps.back();
        if (step.next < step.folder->numberOfChildren()) {
            FileSystemItem* const child = step.folder->childAtIndex(step.next++);
            FolderSystemItem* const folder = child->asFolderSystemItem();
            if (folder && !folder->isPack()) {
                steps.push_back({folder, 0, 0});
                continue;
            }
            step.sum += leafSize(*child);
            if (wrong && child->gettotalsize() != leafSize(*child))
                wrong->push_back(child->getFullPath());
            continue;
        }
        const std::int64_t sum = step.sum;
        if (wrong && step.folder->gettotalsize() != sum)
            wrong->push_back(step.folder->getFullPath());
        steps.pop_back();
        if (steps.empty())
            return sum;
        steps.back().sum += sum;
    }
}

/// A model with all that it needs, on a main loop whose clock jumps whenever nothing is to be done, so that
/// merges come as often as the gate can let them pass.
struct ScanRun {
    explicit ScanRun(std::shared_ptr<FileCatalogue> catalogue, ScanFacts facts = {})
        : timeCode([] { return dateAt(kPresent); }) {
        model.emplace(loop, notifications, std::move(catalogue), timeCode, std::move(facts), volumes);
        notifications.addObserver(std::string(DIUpdateProgressNotification),
                                  [this](const NotificationCentre::Object& object) {
                                      progress.push_back(std::any_cast<std::int64_t>(object));
                                      if (onProgress)
                                          onProgress();
                                  });
        notifications.addObserver(std::string(FinishWalkingVolume), [this](const auto& object) {
            ++finished;
            lastSender = std::any_cast<CModel*>(object);
        });
        notifications.addObserver(std::string(WalkingVolumeCanceled), [this](const auto& object) {
            ++cancelled;
            lastSender = std::any_cast<CModel*>(object);
        });
    }

    std::shared_ptr<FolderSystemItem> start(const std::string& path, std::uint64_t occupied = 0,
                                            BiggestFilesSink* sink = nullptr) {
        root = model->StartWalkWithPath(path, occupied, sink);
        return root;
    }

    bool waitFor(const std::function<bool()>& condition,
                 FakeMainLoop::WhenIdle whenIdle = FakeMainLoop::WhenIdle::AdvanceClock) {
        return loop.runUntil(condition, whenIdle);
    }

    /// Scans to the end and answers the tree.
    std::shared_ptr<FolderSystemItem> scan(const std::string& path, std::uint64_t occupied = 0,
                                           BiggestFilesSink* sink = nullptr) {
        const int before = finished;
        start(path, occupied, sink);
        EXPECT_TRUE(waitFor([&] { return finished > before; }));
        model->setStartPath(std::nullopt);
        return root;
    }

    void addVolume(const std::string& path, std::int64_t size, std::int64_t free) {
        model->getVolumesInfo().push_back(std::make_shared<VolumeItem>(path, "volume", size, free, 0));
    }

    FakeMainLoop loop;
    NotificationCentre notifications;
    TimeCode timeCode;
    FakeVolumes volumes;
    std::optional<CModel> model;
    std::shared_ptr<FolderSystemItem> root;
    std::vector<std::int64_t> progress; ///< The objects of the progress notifications.
    std::function<void()> onProgress;
    int finished = 0;
    int cancelled = 0;
    CModel* lastSender = nullptr;
};

/// The child of that name; null if there is none.
inline FileSystemItem* childNamed(const FolderSystemItem& folder, std::string_view name) {
    for (std::size_t index = 0; index < folder.numberOfChildren(); ++index)
        if (folder.childAtIndex(index)->relativePath() == name)
            return folder.childAtIndex(index);
    return nullptr;
}

/// The item at a path of names below the root, "a/b"; null if it is not there.
inline FileSystemItem* itemAt(FolderSystemItem& root, std::string_view relative) {
    FileSystemItem* item = &root;
    while (item && !relative.empty()) {
        const std::size_t slash = std::min(relative.find('/'), relative.size());
        const FolderSystemItem* const folder = item->asFolderSystemItem();
        item = folder ? childNamed(*folder, relative.substr(0, slash)) : nullptr;
        relative.remove_prefix(std::min(slash + 1, relative.size()));
    }
    return item;
}

/// The first item that stands for space, anywhere below the folder; null if there is none.
inline FileSystemItem* unscannedItem(const FolderSystemItem& folder) {
    for (std::size_t index = 0; index < folder.numberOfChildren(); ++index) {
        FileSystemItem* const child = folder.childAtIndex(index);
        if (child->isUnscanned())
            return child;
        if (const FolderSystemItem* const below = child->asFolderSystemItem())
            if (FileSystemItem* const found = unscannedItem(*below))
                return found;
    }
    return nullptr;
}

inline std::size_t countUnscanned(const FolderSystemItem& folder) {
    std::size_t count = 0;
    for (std::size_t index = 0; index < folder.numberOfChildren(); ++index)
        count += folder.childAtIndex(index)->isUnscanned() ? 1u : 0u;
    return count;
}

/// Remembers what the scan offers; its threshold is the test's.
class RecordingSink final : public BiggestFilesSink {
public:
    struct Offer {
        std::string name;
        std::int64_t size;
        std::int64_t porog;
        bool checkForExist;
    };

    std::int64_t getPorogforScan() const override { return porog; }
    bool tryAddtoScanArray(FileSystemItem* item, std::int64_t threshold, bool bCheckforExist) override {
        offers.push_back(
            {std::string(item->relativePath()), item->gettotalsize(), threshold, bCheckforExist});
        return changes;
    }
    void tryUpdateTableByScanning() override { ++updates; }

    std::int64_t porog = 0;
    bool changes = true;
    std::vector<Offer> offers;
    int updates = 0;
};

} // namespace veltrano::test
