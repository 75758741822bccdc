// What the sidebar's rows say and look like.

#include "app/SidebarFixture.h"
#include "appearance/SharedImages.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QImage>
#include <QToolTip>

#include <gmock/gmock.h>

#include <limits>

namespace veltrano::test {
namespace {

constexpr auto kIcon = VolumesTableController::pColIcon;
constexpr auto kInfo = VolumesTableController::pColInfo;
constexpr auto kButton = VolumesTableController::pColBtn;

class VolumesTableCells : public SidebarTest {
protected:
    VolumesTableCells() { fillUsually(); }

    CellData dataOf(TopLevelItem& entry) { return static_cast<TreeObject*>(&entry); }
    std::string primary(TopLevelItem& entry) {
        return sidebar.primaryTextForCell(cell, dataOf(entry)).value_or("none").toStdString();
    }
    std::string secondary(TopLevelItem& entry) {
        return sidebar.secondaryTextForCell(cell, dataOf(entry)).value_or("none").toStdString();
    }
    std::string main(TopLevelItem& entry) {
        return sidebar.mainTextForCell(cell, dataOf(entry)).value_or("none").toStdString();
    }
    std::string desc(TopLevelItem& entry) {
        return sidebar.descTextForCell(cell, dataOf(entry)).value_or("none").toStdString();
    }
    std::int32_t percentage(std::int64_t size, std::int64_t free) {
        const auto item = volume("/v", device("SATA"), size, free);
        return sidebar.ocuppPercentageForCell(cell, dataOf(*item));
    }
    QImage iconOf(int row) {
        return std::get<QPixmap>(sidebar.objectValueForTableColumn(kIcon, row)).toImage();
    }
    TopLevelItem& entry(int row) { return *sidebar.getItemByRow(row); }
    void scan(const std::string& path, bool completed, std::int64_t bytes = 1000) {
        sidebar.setScannedRootInfo(scannedTree(path, bytes), completed);
    }

    EmptyCell cell;
};

// Texts

TEST_F(VolumesTableCells, entryIsCalledByItsNameAsItCanBeShown) {
    EXPECT_EQ(primary(entry(1)), "a");
    EXPECT_EQ(main(entry(5)), "me");
    const auto odd = volume("/m/tab\there", device("USB"));
    EXPECT_EQ(primary(*odd), displayText("tab\there").toStdString());
    // A label with a slash is no path.
    VolumeItem slashed("/m/x", "Music / Films", 1, 1, 0);
    EXPECT_EQ(primary(slashed), "Music / Films");
    VolumeItem nameless("/m/y", "", 1, 1, 0);
    EXPECT_EQ(primary(nameless), "");
}

TEST_F(VolumesTableCells, volumeTellsItsFreeSpace) {
    EXPECT_EQ(secondary(entry(1)), "200 GB Free of 500 GB");
    EXPECT_EQ(secondary(*volume("/v", device("USB"), 250 * kGB, 88'400'000'000)), "88.4 GB Free of 250 GB");
    scan("/a", true);
    EXPECT_EQ(secondary(entry(1)), "200 GB Free of 500 GB");
}

TEST_F(VolumesTableCells, folderHasNoSecondText) {
    EXPECT_EQ(secondary(entry(5)), "none");
}

TEST_F(VolumesTableCells, networkVolumeTellsWhatItsScanFound) {
    sidebar.setVolumesArray({volume("/net", device(std::nullopt))}, true);
    EXPECT_EQ(secondary(entry(1)), "Capacity: 500 GB");
    scan("/net", false, 40'100'000'000);
    EXPECT_EQ(secondary(entry(1)), "Capacity: 500 GB"); // a cancelled scan has no size
    scan("/net", true, 40'100'000'000);
    EXPECT_EQ(secondary(entry(1)), "Size: 40.1 GB");
}

TEST_F(VolumesTableCells, volumeThatHasToldNoSizesShowsNone) {
    EXPECT_EQ(secondary(*volume("/v", device("USB"), 0, 0)), "none");
    EXPECT_EQ(secondary(*volume("/net", device(std::nullopt), 0, 0)), "none");
    sidebar.setVolumesArray({volume("/net", device(std::nullopt), 0, 0)}, true);
    scan("/net", true, 40'100'000'000);
    EXPECT_EQ(secondary(entry(1)), "Size: 40.1 GB");
}

TEST_F(VolumesTableCells, scannedFolderTellsItsSize) {
    EXPECT_EQ(desc(entry(5)), "");
    scan("/home/me", true, 229 * kGB);
    EXPECT_EQ(desc(entry(5)), "Size: 229 GB");
    scan("/a", true);
    EXPECT_EQ(desc(entry(1)), ""); // a volume
}

TEST_F(VolumesTableCells, folderUnderScanTellsNoSizeUntilTheEnd) {
    scan("/home/me", false, 229 * kGB);
    host.underScan = "/home/me";
    EXPECT_EQ(desc(entry(5)), "");
    host.underScan = "/srv";
    EXPECT_EQ(desc(entry(5)), "Size: 229 GB");
    host.underScan.reset();
    EXPECT_EQ(desc(entry(5)), "Size: 229 GB");
}

TEST_F(VolumesTableCells, occupiedShareIsInHundredthsOfAPercentCutOff) {
    EXPECT_EQ(percentage(500, 200), 6000);
    EXPECT_EQ(percentage(3, 1), 6666);
    EXPECT_EQ(percentage(1, 0), 10000);
    EXPECT_EQ(percentage(1000, 1000), 0);
}

TEST_F(VolumesTableCells, occupiedShareOfNoSizeIsMinusOne) {
    EXPECT_EQ(percentage(0, 0), -1);
    EXPECT_EQ(percentage(-5, 0), -1);
}

TEST_F(VolumesTableCells, occupiedShareOfHugeSizesStaysRight) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(percentage(most, 0), 10000);
    EXPECT_EQ(percentage(most, most / 3), 6666);
    EXPECT_EQ(percentage(4'000'000'000'000'000, 1'000'000'000'000'000), 7500);
    EXPECT_LE(percentage(1000, most), 0); // nonsense, calmly
}

TEST_F(VolumesTableCells, occupiedShareOfAFolderIsNothing) {
    EXPECT_EQ(sidebar.ocuppPercentageForCell(cell, dataOf(entry(5))), 0);
    EXPECT_EQ(sidebar.ocuppPercentageForCell(cell, {}), 0);
}

TEST_F(VolumesTableCells, progressIsWhatWasReported) {
    EXPECT_EQ(sidebar.progressForCell(cell, dataOf(entry(1))), 0);
    sidebar.updateProgress(7);
    EXPECT_EQ(sidebar.progressForCell(cell, dataOf(entry(1))), 7);
}

TEST_F(VolumesTableCells, operationIsAScanOfThePath) {
    EXPECT_FALSE(sidebar.isOperatingProcess());
    host.underScan = "/a";
    EXPECT_TRUE(sidebar.isOperatingProcess());
    EXPECT_TRUE(sidebar.isOperatingItem(cell, dataOf(entry(1))));
    EXPECT_FALSE(sidebar.isOperatingItem(cell, dataOf(entry(3))));
    EXPECT_FALSE(sidebar.isOperatingItem(cell, {}));
}

TEST_F(VolumesTableCells, cellsHaveNoIconOfTheirOwn) {
    EXPECT_TRUE(sidebar.iconForCell(cell, dataOf(entry(1))).isNull());
}

// Rows

TEST_F(VolumesTableCells, rowsHaveTheirHeights) {
    EXPECT_EQ(sidebar.heightOfRow(0), 26);
    EXPECT_EQ(sidebar.heightOfRow(1), 60);
    EXPECT_EQ(sidebar.heightOfRow(2), 42);
    EXPECT_EQ(sidebar.heightOfRow(5), 39);
    EXPECT_EQ(table.rowRect(0).height(), 28);
    EXPECT_EQ(table.rowRect(1).height(), 62);
    EXPECT_EQ(table.rowRect(2).height(), 44);
    EXPECT_EQ(table.rowRect(5).height(), 41);
}

TEST_F(VolumesTableCells, columnsHaveTheirWidthsAndIdentifiers) {
    EXPECT_EQ(table.columnWidth(kIcon), 56);
    EXPECT_EQ(table.columnWidth(kInfo), 174);
    EXPECT_EQ(table.columnWidth(kButton), 32);
    EXPECT_STREQ(VolumesTableController::identifierOf(kIcon), "VolIcon");
    EXPECT_STREQ(VolumesTableController::identifierOf(kInfo), "VolInfo");
    EXPECT_STREQ(VolumesTableController::identifierOf(kButton), "btn");
}

TEST_F(VolumesTableCells, groupRowHasOneCellOverTheFullWidth) {
    auto* const title = dynamic_cast<GroupDescCell*>(sidebar.dataCellForTableColumn(std::nullopt, 0));
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(std::get<const VolumeItemGrop*>(title->objectValue()), sidebar.getGroupByRow(0));
    for (const auto column : {kIcon, kInfo, kButton}) {
        EXPECT_EQ(sidebar.dataCellForTableColumn(column, 0), nullptr);
        EXPECT_EQ(sidebar.objectValueForTableColumn(column, 0).index(), 0U);
    }
}

TEST_F(VolumesTableCells, entryRowHasACellInEachColumn) {
    EXPECT_NE(dynamic_cast<IconCell*>(sidebar.dataCellForTableColumn(kIcon, 1)), nullptr);
    EXPECT_NE(dynamic_cast<ImageTextCell*>(sidebar.dataCellForTableColumn(kInfo, 1)), nullptr);
    EXPECT_NE(dynamic_cast<TextDescCell*>(sidebar.dataCellForTableColumn(kInfo, 5)), nullptr);
    EXPECT_EQ(sidebar.dataCellForTableColumn(std::nullopt, 1), nullptr);
    EXPECT_EQ(itemOf(sidebar.dataCellForTableColumn(kInfo, 5)->objectValue()), &entry(5));
    EXPECT_EQ(sidebar.objectValueForTableColumn(kButton, 1).index(), 0U);
}

TEST_F(VolumesTableCells, buttonColumnIsEmptyButInOneRow) {
    const auto hasButton = [&](int row) {
        return dynamic_cast<RowButtonCell*>(sidebar.dataCellForTableColumn(kButton, row)) != nullptr;
    };
    sidebar.selectVolumeByName("/usb");
    EXPECT_TRUE(hasButton(3));
    TableCell* const start = sidebar.dataCellForTableColumn(kButton, 3);
    for (const int row : {1, 5, 6})
        EXPECT_FALSE(hasButton(row)) << row;
    host.underScan = "/a";
    EXPECT_TRUE(hasButton(1));
    EXPECT_NE(sidebar.dataCellForTableColumn(kButton, 1), start);
    for (const int row : {3, 5, 6})
        EXPECT_FALSE(hasButton(row)) << row;
}

TEST_F(VolumesTableCells, startAndStopAreEnabledInTurn) {
    sidebar.selectVolumeByName("/a");
    const auto button = [&] {
        return dynamic_cast<RowButtonCell*>(sidebar.dataCellForTableColumn(kButton, 1))->isEnabled();
    };
    EXPECT_TRUE(button());
    sidebar.setCanStart(false);
    EXPECT_FALSE(button());
    host.underScan = "/a";
    EXPECT_TRUE(button());
    sidebar.setCanStart(true);
    EXPECT_FALSE(button());
}

TEST_F(VolumesTableCells, cellsAreNotShownExpanded) {
    EXPECT_FALSE(sidebar.shouldShowCellExpansion(kInfo, 1));
}

// Icons and marks

TEST_F(VolumesTableCells, iconsAreFortyFourForVolumesAndThirtyTwoForFolders) {
    EXPECT_EQ(iconOf(1).size(), QSize(44, 44) * table.devicePixelRatioF());
    EXPECT_EQ(iconOf(5).size(), QSize(32, 32) * table.devicePixelRatioF());
}

/// Whether the lower right corner of an icon shows the mark as it is drawn.
testing::AssertionResult wearsMark(const QImage& icon, const char* accessor) {
    const QImage mark = sharedImage(accessor, icon.devicePixelRatio()).toImage();
    const QPoint corner(icon.width() - mark.width(), icon.height() - mark.height());
    for (int row = 0; row < mark.height(); ++row)
        for (int column = 0; column < mark.width(); ++column)
            if (mark.pixelColor(column, row).alpha() == 255 &&
                icon.pixelColor(corner + QPoint(column, row)).rgb() != mark.pixelColor(column, row).rgb())
                return testing::AssertionFailure() << "differs at " << column << ", " << row;
    return testing::AssertionSuccess();
}

TEST_F(VolumesTableCells, scannedEntryWearsTheMark) {
    const QImage plain = iconOf(1);
    EXPECT_FALSE(wearsMark(plain, "mimgScannedItemMark"));
    scan("/a", true);
    EXPECT_TRUE(wearsMark(iconOf(1), "mimgScannedItemMark"));
    // Only the corner changes.
    EXPECT_EQ(iconOf(1).copy(0, 0, 44, 20), plain.copy(0, 0, 44, 20));
}

TEST_F(VolumesTableCells, cancelledScanWearsAMarkOfItsOwn) {
    scan("/home/me", false);
    EXPECT_TRUE(wearsMark(iconOf(5), "mimgUnScannedItemMark"));
    EXPECT_FALSE(wearsMark(iconOf(5), "mimgScannedItemMark"));
}

TEST_F(VolumesTableCells, entryUnderScanWearsNoMark) {
    const QImage plain = iconOf(1);
    scan("/a", false);
    host.underScan = "/a";
    EXPECT_EQ(iconOf(1), plain);
}

TEST_F(VolumesTableCells, markDoesNotStainTheKeptIcon) {
    scan("/a", true);
    iconOf(1);
    host.underScan = "/a";
    const QImage plain = iconOf(1);
    EXPECT_FALSE(wearsMark(plain, "mimgScannedItemMark"));
}

// Tool tips and names for those who do not see

TEST_F(VolumesTableCells, toolTipIsThePathOfAFolderAndTheNameOfAVolume) {
    for (const auto column : {kIcon, kInfo}) {
        EXPECT_EQ(sidebar.toolTipForCell(column, 5), QStringLiteral("/home/me"));
        EXPECT_EQ(sidebar.toolTipForCell(column, 3), QStringLiteral("usb"));
        EXPECT_EQ(sidebar.toolTipForCell(column, 0), QString());
    }
    EXPECT_EQ(sidebar.toolTipForCell(kButton, 5), QString());
}

TEST_F(VolumesTableCells, toolTipThatLooksLikeMarkupStaysText) {
    sidebar.setVolumesArray({std::make_shared<VolumeItem>("/v", "<b>x</b>", 1, 1, 0)}, true);
    EXPECT_EQ(sidebar.toolTipForCell(kInfo, 1), QStringLiteral("&lt;b&gt;x&lt;/b&gt;"));
}

TEST_F(VolumesTableCells, toolTipIsShownOverTheRow) {
    const QPoint place = middleOf(kInfo, 5);
    QHelpEvent event(QEvent::ToolTip, place, table.viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(table.viewport(), &event);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("/home/me"));
    QToolTip::hideText();
}

TEST_F(VolumesTableCells, rowsAreToldToThoseWhoDoNotSeeThem) {
    EXPECT_EQ(table.accessibleName(), QStringLiteral("Disks and folders"));
    EXPECT_EQ(sidebar.accessibleTextForCell(kIcon, 0), QStringLiteral("Hard Disks"));
    EXPECT_EQ(sidebar.accessibleTextForCell(kInfo, 1), QStringLiteral("a, 200 GB Free of 500 GB"));
    EXPECT_EQ(sidebar.accessibleTextForCell(kInfo, 5), QStringLiteral("me"));
    EXPECT_EQ(sidebar.accessibleTextForCell(kIcon, 1), QStringLiteral("Not scanned"));
    scan("/a", true);
    EXPECT_EQ(sidebar.accessibleTextForCell(kIcon, 1), QStringLiteral("Scanned"));
    scan("/home/me", false, 229 * kGB);
    EXPECT_EQ(sidebar.accessibleTextForCell(kIcon, 5), QStringLiteral("Scan stopped"));
    EXPECT_EQ(sidebar.accessibleTextForCell(kInfo, 5), QStringLiteral("me, Size: 229 GB"));
    sidebar.selectVolumeByName("/a");
    EXPECT_EQ(sidebar.accessibleTextForCell(kButton, 1), QStringLiteral("Scan"));
    EXPECT_EQ(sidebar.accessibleTextForCell(kButton, 3), QString());
    host.underScan = "/usb";
    EXPECT_EQ(sidebar.accessibleTextForCell(kButton, 3), QStringLiteral("Stop scanning"));
    EXPECT_EQ(sidebar.accessibleTextForCell(kIcon, 3), QStringLiteral("Being scanned"));
}

TEST_F(VolumesTableCells, assistiveProgramsReadTheTable) {
    QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(&table);
    ASSERT_NE(face, nullptr);
    ASSERT_NE(face->tableInterface(), nullptr);
    EXPECT_EQ(face->tableInterface()->rowCount(), 7);
    QAccessibleInterface* const info = face->tableInterface()->cellAt(1, kInfo);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->text(QAccessible::Name), QStringLiteral("a, 200 GB Free of 500 GB"));
    EXPECT_TRUE(face->tableInterface()->selectRow(3));
    EXPECT_EQ(sidebar.getSelectedVolume(), "/usb");
}

} // namespace
} // namespace veltrano::test
