#pragma once

// A sidebar with its table in a shown window, beside a host that keeps what it is asked.

#include "app/DisplayText.h"
#include "app/FolderItemsController.h"
#include "app/SidebarHost.h"
#include "app/VolumesTableController.h"
#include "app/WindowPanels.h"
#include "appearance/CCTableView.h"
#include "support/FakeFolderQuestions.h"
#include "support/MapSettings.h"
#include "support/TreeBuilder.h"

#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrano::test {

/// Keeps what the sidebar asks of the window.
class RecordingHost final : public SidebarHost {
public:
    bool isProcessing() const override { return underScan.has_value(); }
    std::optional<std::string> getProcessingVol() const override { return underScan; }
    void startAction() override { calls.emplace_back("startAction"); }
    void stopAction() override { calls.emplace_back("stopAction"); }
    void simpleUpdateVolumesInfo() override {
        calls.emplace_back("simpleUpdateVolumesInfo");
        if (onUpdate)
            onUpdate();
    }
    void actionRemoveFolder() override { calls.emplace_back("actionRemoveFolder"); }
    void didSelectionChange(const std::shared_ptr<TopLevelItem>& item) override {
        calls.push_back("didSelectionChange " + item->getPath());
    }
    void setRootForRadial(VolumeFolderProtocol* root,
                          const std::shared_ptr<TopLevelItem>& withVolume) override {
        calls.push_back("setRootForRadial " + withVolume->getPath());
        shownRoot = root;
    }
    void treeIsDropped(FolderSystemItem& oldRoot) override {
        calls.push_back("treeIsDropped " + oldRoot.getFullPath());
    }
    QString getDisplayText(std::string_view bytes) const override { return displayText(bytes); }

    /// What was asked since the last look.
    std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

    std::optional<std::string> underScan;
    std::function<void()> onUpdate;
    std::vector<std::string> calls;
    VolumeFolderProtocol* shownRoot = nullptr;
};

/// A folder list that is filled by hand.
class HandMadeFolders final : public FolderItemsController {
public:
    using FolderItemsController::FolderItemsController;
    bool initFromPreferences() override { return false; }
    bool saveToPreferences() const override { return true; }
};

inline constexpr std::int64_t kGB = 1'000'000'000;

/// What a device with this protocol tells; no protocol is a network volume.
inline DeviceFacts device(std::optional<std::string> protocol, MediaClass mediaClass = {}) {
    DeviceFacts facts;
    facts.isDescribed = protocol.has_value();
    facts.protocol = std::move(protocol);
    facts.mediaClass = mediaClass;
    return facts;
}

/// A volume with this path and name; 500 GB, 200 GB of them free.
inline std::shared_ptr<VolumeItem> volume(const std::string& path, const DeviceFacts& facts,
                                          std::int64_t size = 500 * kGB, std::int64_t free = 200 * kGB) {
    auto item = std::make_shared<VolumeItem>(path, path.substr(path.rfind('/') + 1), size, free, 0);
    item->getDeepInfo(facts);
    return item;
}

inline std::shared_ptr<FolderItem> folder(const std::string& path) {
    return std::make_shared<FolderItem>(path, path.substr(path.rfind('/') + 1), 0, 0, 0);
}

/// A scanned tree at a path with one file of so many bytes.
inline std::shared_ptr<FolderSystemItem> scannedTree(const std::string& path, std::int64_t bytes) {
    const TreeBuilder tree(path);
    tree.file(tree.root(), "file", bytes);
    tree.recount();
    return TreeStorage::hold(tree.root());
}

class SidebarTest : public testing::Test {
protected:
    SidebarTest() {
        panel.resize(270, 636);
        panel.show();
        panel.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&panel));
        table.setFocus();
    }

    /// "Disks: a b" for each group with its entries, in the order of display.
    std::vector<std::string> rows() const {
        std::vector<std::string> result;
        for (int row = 0; row < sidebar.numberOfRows(); ++row) {
            if (const VolumeItemGrop* const group = sidebar.getGroupByRow(row))
                result.push_back(group->groupName + ":");
            else if (!result.empty())
                result.back() += " " + sidebar.getItemByRow(row)->getName();
        }
        return result;
    }

    /// Hard disk "/a", USB disk "/usb", favourites "/home/me" and "/srv"; rows 1, 3, 5 and 6.
    void fillUsually() {
        favourites.addFolderItemToList(folder("/home/me"));
        favourites.addFolderItemToList(folder("/srv"));
        sidebar.setVolumesArray({volume("/a", device("SATA")), volume("/usb", device("USB"))}, true);
        sidebar.addFFolders(favourites.getFoldersArray(), recents.getFoldersArray());
        sidebar.reloadData();
    }

    QPoint middleOf(int column, int row) const { return table.cellFrame(column, row).center(); }
    void press(const QPoint& point) { QTest::mousePress(table.viewport(), Qt::LeftButton, {}, point); }
    void release(const QPoint& point) { QTest::mouseRelease(table.viewport(), Qt::LeftButton, {}, point); }
    void click(int column, int row) {
        press(middleOf(column, row));
        release(middleOf(column, row));
    }
    void key(int which, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&table, static_cast<Qt::Key>(which), modifiers);
    }

    MapSettings settings;
    FakeFolderQuestions questions;
    HandMadeFolders favourites{settings, questions};
    HandMadeFolders recents{settings, questions};
    RecordingHost host;
    SidebarPanel panel;
    CCTableView& table = panel.table();
    VolumesTableController sidebar{
        table, host, favourites, recents, {"/home/me", "/home/me/Downloads", "/home/me/Pictures", "/usr"}};
};

} // namespace veltrano::test
