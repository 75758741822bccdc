// The hands on the chart while a real scan runs under it.

#include "chart/ChartFixture.h"
#include "chart/ChartMenu.h"
#include "scan/ScanRun.h"
#include "support/MemoryDisk.h"

namespace veltrano {
namespace {

using test::ChartTest;
using test::ScanRun;
using testing::ElementsAre;

//  /d ─┬─ a ── x, y
//      └─ 100 folders of a file each
class LiveScan : public ChartTest {
protected:
    LiveScan() {
        disk->addFile("/d/a/x", 400'000);
        disk->addFile("/d/a/y", 400'000);
        for (int folder = 0; folder < 100; ++folder)
            disk->addFile("/d/n" + std::to_string(folder) + "/f", 20'000);
        run.onProgress = [this] {
            chart.UpdateRadialStructureDuringProcessByRoot(run.root.get());
            if (onTick)
                onTick();
        };
    }
    ~LiveScan() override { chart.setRoot(nullptr); }

    /// Scans the disk with the chart on the growing tree, as the window does.
    void scan() {
        const int before = run.finished;
        run.start("/d");
        host.processing = "/d";
        chart.setRoot(run.root.get(), true, true);
        EXPECT_TRUE(run.waitFor([&] { return run.finished > before; }));
        host.processing.reset();
        run.model->setStartPath(std::nullopt);
        chart.setRoot(run.root.get(), true, true);
        settle();
    }
    FileSystemItem* at(const std::string& path) const { return run.root->getItemByFilePath(path); }

    std::shared_ptr<MemoryDisk> disk = std::make_shared<MemoryDisk>();
    ScanRun run{disk};
    std::function<void()> onTick;
};

TEST_F(LiveScan, menuActsOnItsItemWhenAnotherScanHasReplacedTheTree) {
    scan();
    chart.setHiliteOnRadial(at("/d/a/x"));
    ChartMenu* const menu = chart.getContextMenuForPointedSector();
    ASSERT_TRUE(menu);
    menu->popup(view.mapToGlobal(QPoint(10, 10)));
    disk->remove("/d/a");
    run.root.reset();
    run.model->ClearResultsTree();
    scan();
    ASSERT_EQ(at("/d/a/x"), nullptr);
    menu->setActiveAction(menu->getEntry(ChartAction::RevealInFinder));
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_THAT(host.shown, ElementsAre(std::vector<std::string>{"/d/a/x"}));
}

TEST_F(LiveScan, menuKeepsTheFolderOfATreeThatNobodyElseHolds) {
    scan();
    chart.setHiliteOnRadial(at("/d/a"));
    ChartMenu* const menu = chart.getContextMenuForPointedSector();
    ASSERT_TRUE(menu);
    menu->popup(view.mapToGlobal(QPoint(10, 10)));
    run.root.reset();
    run.model->ClearResultsTree();
    scan();
    menu->setActiveAction(menu->getEntry(ChartAction::AddToFavorite));
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_EQ(host.favorite, "/d/a");
}

TEST_F(LiveScan, dragTakesWhatWasPressedWhenAnotherScanHasReplacedTheTree) {
    scan();
    chart.setHiliteOnRadial(at("/d/a/x"));
    const QPointF onX = chart.getMiddleOfPointedSector();
    press(onX);
    disk->remove("/d/a");
    run.root.reset();
    run.model->ClearResultsTree();
    scan();
    ASSERT_EQ(at("/d/a/x"), nullptr);
    dragTo(onX + QPointF(30, 0));
    EXPECT_EQ(draggedPath(), "/d/a/x");
    release(onX);
}

TEST_F(LiveScan, whatIsPointedAtIsAlwaysWhatLiesUnderTheStillPointer) {
    const QPoint place(view.width() / 2 + 60, view.height() / 2 - 60);
    QCursor::setPos(view.mapToGlobal(place));
    int ticks = 0;
    onTick = [&] {
        ++ticks;
        const QPointF point = view.getChartTransform().map(QPointF(place));
        EXPECT_EQ(chart.getCurPointedSector().m_pItem(), chart.getItemByPoint(point, nullptr, nullptr));
    };
    scan();
    EXPECT_GT(ticks, 0);
    EXPECT_TRUE(chart.getCurPointedSector().m_pItem());
}

TEST_F(LiveScan, treeUnderScanHasNoMenuAndNoDragAndTakesNoClick) {
    int ticks = 0;
    onTick = [&] {
        ++ticks;
        const QPointF middle = chart.getLayout().m_Center;
        EXPECT_EQ(chart.getContextMenuByPoint(middle), nullptr);
        EXPECT_FALSE(chart.getDragFileInfoByPoint(middle, nullptr, nullptr, nullptr));
        click(middle, Qt::ControlModifier);
    };
    scan();
    EXPECT_GT(ticks, 0);
    EXPECT_TRUE(host.shown.empty());
    click(chart.getLayout().m_Center, Qt::ControlModifier);
    EXPECT_THAT(host.shown, ElementsAre(std::vector<std::string>{"/d"}));
}

TEST_F(LiveScan, sectorOfTheKeysMovesWithTheGrowingTree) {
    bool isPointing = false;
    onTick = [&] {
        if (!isPointing && run.root->numberOfChildren() > 1) {
            chart.movePointedSector(SectorMove::Next);
            chart.movePointedSector(SectorMove::Outwards);
            chart.movePointedSector(SectorMove::Previous);
            isPointing = chart.getCurPointedSector().m_nSubLevel() == 1;
        } else if (isPointing) {
            SectorItem fresh;
            FileSystemItem* const item = chart.getCurPointedSector().m_pItem()->asFileSystemItem();
            chart.fillSectorItem(fresh, item);
            EXPECT_EQ(chart.getCurPointedSector().m_dSkAngle(), fresh.m_dSkAngle());
        }
    };
    scan();
    EXPECT_TRUE(isPointing);
}

} // namespace
} // namespace veltrano
