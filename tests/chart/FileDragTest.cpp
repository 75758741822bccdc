#include "chart/ChartFixture.h"
#include "chart/PathsMimeData.h"
#include "tree/SpecialItems.h"
#include "tree/TopLevelItem.h"

#include <QClipboard>
#include <QMimeData>

namespace veltrano {
namespace {

using test::ChartTest;
using test::TreeBuilder;
using testing::ElementsAre;
using testing::Optional;

/// A folder of the volume /v with one item of every kind, each a tenth of the turn.
class FileDrag : public ChartTest {
protected:
    FileDrag() {
        folder = tree.folder(tree.root(), "d");
        file = tree.file(folder, "f", 10);
        FileSystemHiddenItem::initWithPathSize(tree.arena(), "few", folder, 10, 3, 10);
        hidden = tree.file(folder, ".h", 10, 1, true);
        trashed = tree.file(folder, "gone", 10);
        trashed->setTrashFlag(true);
        unscanned = FSUnscannedItem::initWithParent(tree.arena(), folder, "Nobody may read this", 10);
        FileVaultDirItem::initWithPathSize(tree.arena(), "vault", folder, 10, "/Volumes/home");
        hiddenFolder = tree.hiddenFolder(folder, ".cache");
        tree.file(hiddenFolder, "inside", 10);
        tree.file(folder, "rest", 30);
        tree.recount();
        show(folder);
    }
    enum Tenth { File, Few, Hidden, Trashed, Unscanned, Vault, HiddenFolder };
    QPointF on(Tenth tenth, int ring = 1) const {
        return middleOf(ring, static_cast<int>(tenth) / 10.0, 0.1);
    }
    QPointF centre() const { return chart.getLayout().m_Center; }

    struct Info {
        bool drags = false;
        std::string text = "-";
        bool removable = false;
        QRectF from;
    };
    Info infoAt(const QPointF& point) {
        Info info;
        info.drags = chart.getDragFileInfoByPoint(point, &info.text, &info.removable, &info.from);
        return info;
    }

    TreeBuilder tree = TreeBuilder::volume("/v", 200, 100);
    FolderSystemItem* folder;
    FileSystemItem* file;
    FileSystemItem* hidden;
    FileSystemItem* trashed;
    FileSystemItem* unscanned;
    FolderSystemItem* hiddenFolder;
};

TEST_F(FileDrag, fileIsItsPathAndRemovable) {
    const Info info = infoAt(on(File));
    EXPECT_TRUE(info.drags);
    EXPECT_EQ(info.text, "/v/d/f");
    EXPECT_TRUE(info.removable);
}

TEST_F(FileDrag, hiddenAggregateIsASentenceAndNotRemovable) {
    const Info info = infoAt(on(Few));
    EXPECT_TRUE(info.drags);
    EXPECT_EQ(info.text, "Hidden items at /v/d/few");
    EXPECT_FALSE(info.removable);
}

TEST_F(FileDrag, hiddenItemAndWhatLiesInOneAreSentences) {
    EXPECT_EQ(infoAt(on(Hidden)).text, "Hidden item /v/d/.h");
    EXPECT_FALSE(infoAt(on(Hidden)).removable);
    EXPECT_EQ(infoAt(on(HiddenFolder, 2)).text, "Hidden item /v/d/.cache/inside");
}

TEST_F(FileDrag, trashedItemIsASentence) {
    EXPECT_EQ(infoAt(on(Trashed)).text, "Trash item /v/d/gone");
    EXPECT_FALSE(infoAt(on(Trashed)).removable);
}

TEST_F(FileDrag, hiddenComesBeforeTrash) {
    trashed->setHiddenFlag(true);
    EXPECT_EQ(infoAt(on(Trashed)).text, "Hidden item /v/d/gone");
}

TEST_F(FileDrag, unscannedItemIsItsDescription) {
    EXPECT_EQ(infoAt(on(Unscanned)).text, "Nobody may read this");
    EXPECT_FALSE(infoAt(on(Unscanned)).removable);
}

TEST_F(FileDrag, rootIsDraggedButNotRemovable) {
    const Info info = infoAt(centre());
    EXPECT_EQ(info.text, "/v/d");
    EXPECT_FALSE(info.removable);
}

TEST_F(FileDrag, rectangleLiesAroundThePoint) {
    EXPECT_EQ(infoAt(QPointF(200, 150)).from, QRectF(184, 149, 32, 2));
}

TEST_F(FileDrag, nothingIsDraggedOutsideDuringTheScanOrWithoutRoot) {
    EXPECT_FALSE(infoAt(QPointF(2, 2)).drags);
    host.processing = "/v/d";
    EXPECT_FALSE(infoAt(on(File)).drags);
    host.processing.reset();
    show(nullptr);
    EXPECT_FALSE(infoAt(on(File)).drags);
    EXPECT_EQ(infoAt(on(File)).text, "-");
}

TEST_F(FileDrag, partsOfAnUnscannedVolumeAreNotDragged) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    EXPECT_FALSE(infoAt(centre()).drags);
    EXPECT_FALSE(infoAt(middleOf(1, 0.0, 0.5)).drags);
    EXPECT_FALSE(infoAt(middleOf(1, 0.5, 0.5)).drags);
    chart.setRoot(nullptr);
}

TEST_F(FileDrag, onlyAFileOfItsOwnMayBeMovedAway) {
    view.setDragRemovable(true);
    EXPECT_TRUE(view.getDragActions().testFlag(Qt::MoveAction));
    view.setDragRemovable(false);
    EXPECT_FALSE(view.getDragActions().testFlag(Qt::MoveAction));
    EXPECT_TRUE(view.getDragActions().testFlag(Qt::CopyAction));
}

// The drag itself.

TEST_F(FileDrag, takesTheFileThatThePressTookHoldOf) {
    press(on(File));
    dragTo(on(Vault));
    EXPECT_EQ(draggedPath(), "/v/d/f");
    release(on(Vault));
    EXPECT_EQ(chart.getRootObject()->getObject(), folder);
}

TEST_F(FileDrag, takesThePressedFileThoughAMergeHasMovedIt) {
    press(on(File));
    tree.file(folder, "grown", 100'000);
    tree.recount();
    show(folder);
    EXPECT_NE(chart.getItemByPoint(on(File), nullptr, nullptr), file);
    dragTo(on(Vault));
    EXPECT_EQ(draggedPath(), "/v/d/f");
    release(on(Vault));
}

TEST_F(FileDrag, takesThePressedFileThoughItsTreeIsGone) {
    press(on(File));
    TreeBuilder other("/other");
    other.file(other.root(), "new", 10);
    other.recount();
    show(other.root());
    tree = TreeBuilder("/nothing");
    dragTo(on(Vault));
    EXPECT_EQ(draggedPath(), "/v/d/f");
    release(on(Vault));
    chart.setRoot(nullptr);
}

TEST_F(FileDrag, turnsTheChartWhenAScanOfItsRootHasBegunSinceThePress) {
    const double angle = chart.getLayout().g_dOriginAngleRad;
    press(on(File));
    host.processing = "/v/d";
    dragTo(on(Vault));
    EXPECT_EQ(draggedPath(), "");
    EXPECT_NE(chart.getLayout().g_dOriginAngleRad, angle);
    release(on(Vault));
}

TEST_F(FileDrag, isTriedOnceForAPress) {
    press(on(File));
    dragTo(on(Vault));
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    dragTo(on(Few));
    EXPECT_EQ(draggedPath(), "");
    release(on(Few));
}

// Paths of all that a sector can stand for.

TEST_F(FileDrag, pathOfAnItemIsItsOwn) {
    EXPECT_THAT(chart.getFullPathForObject(file), Optional(std::string("/v/d/f")));
    EXPECT_THAT(chart.getFullPathForObject(hidden), Optional(std::string("/v/d/.h")));
}

TEST_F(FileDrag, pathOfAnItemThatIsNoFileIsItsFolders) {
    EXPECT_THAT(chart.getFullPathForObject(folder->childAtIndex(Few)), Optional(std::string("/v/d")));
    EXPECT_THAT(chart.getFullPathForObject(unscanned), Optional(std::string("/v/d")));
}

TEST_F(FileDrag, pathOfALinkedHomeIsItsVolume) {
    EXPECT_THAT(chart.getFullPathForObject(folder->childAtIndex(Vault)),
                Optional(std::string("/Volumes/home")));
}

TEST_F(FileDrag, pathOfAnEntryIsItsOwn) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    FolderItem entry("/w", "w", 0, 0, 0);
    EXPECT_THAT(chart.getFullPathForObject(&volume), Optional(std::string("/u")));
    EXPECT_THAT(chart.getFullPathForObject(&entry), Optional(std::string("/w")));
}

TEST_F(FileDrag, pathOfAPartIsTheRoots) {
    EXPECT_THAT(chart.getFullPathForObject(chart.getSentinels().m_pOccupSector),
                Optional(std::string("/v/d")));
    EXPECT_THAT(chart.getFullPathForObject(chart.getSentinels().m_pFreeSector),
                Optional(std::string("/v/d")));
    show(nullptr);
    EXPECT_EQ(chart.getFullPathForObject(chart.getSentinels().m_pFreeSector), std::nullopt);
    EXPECT_EQ(chart.getFullPathForObject(nullptr), std::nullopt);
}

TEST_F(FileDrag, fileManagerIsShownTheGivenElseThePointedElseTheSelected) {
    chart.openFileItemInFinder(nullptr);
    chart.openItemInfoInFinder(nullptr);
    EXPECT_TRUE(host.shown.empty());
    EXPECT_TRUE(host.informed.empty());
    chart.selectItem(hidden);
    chart.openFileItemInFinder(nullptr);
    pointAt(on(File));
    chart.openFileItemInFinder(nullptr);
    chart.openFileItemInFinder(unscanned);
    using Paths = std::vector<std::string>;
    EXPECT_THAT(host.shown, ElementsAre(Paths{"/v/d/.h"}, Paths{"/v/d/f"}, Paths{"/v/d"}));
    chart.openItemInfoInFinder(nullptr);
    EXPECT_THAT(host.informed, ElementsAre(Paths{"/v/d/f"}));
}

// Copying.

class CopiedPath : public FileDrag {
protected:
    CopiedPath() { QApplication::clipboard()->clear(); }
    static std::string copied() { return QApplication::clipboard()->text().toStdString(); }
};

TEST_F(CopiedPath, isThePointedItems) {
    chart.selectItem(hidden);
    pointAt(on(File));
    chart.copy();
    EXPECT_EQ(copied(), "/v/d/f");
    EXPECT_THAT(readFilePaths(*QApplication::clipboard()->mimeData()), Optional(ElementsAre("/v/d/f")));
}

TEST_F(CopiedPath, isTheFirstSelectedWhenNothingIsPointedAt) {
    FileSystemItem* const items[] = {hidden, file};
    chart.selectItems(items);
    chart.copy();
    EXPECT_EQ(copied(), "/v/d/.h");
}

TEST_F(CopiedPath, isTheRootsWithoutEither) {
    chart.copy();
    EXPECT_EQ(copied(), "/v/d");
}

TEST_F(CopiedPath, ofAnAggregateIsASentenceAndOfAnUnscannedItemItsDescription) {
    pointAt(on(Few));
    chart.copy();
    EXPECT_EQ(copied(), "Hidden items at /v/d/few");
    pointAt(on(Unscanned));
    chart.copy();
    EXPECT_EQ(copied(), "Nobody may read this");
}

TEST_F(CopiedPath, ofAHiddenOrTrashedItemIsItsPath) {
    pointAt(on(Hidden));
    chart.copy();
    EXPECT_EQ(copied(), "/v/d/.h");
    pointAt(on(Trashed));
    chart.copy();
    EXPECT_EQ(copied(), "/v/d/gone");
}

TEST_F(CopiedPath, ofAPartOfAVolumeIsTheVolumes) {
    VolumeItem volume("/u", "u", 1000, 500, 0);
    show(&volume);
    pointAt(middleOf(1, 0.6, 0.0));
    chart.copy();
    EXPECT_EQ(copied(), "/u");
    chart.setRoot(nullptr);
}

TEST_F(CopiedPath, staysWhenThereIsNoRoot) {
    QApplication::clipboard()->setText("before");
    show(nullptr);
    chart.copy();
    EXPECT_EQ(copied(), "before");
}

TEST_F(CopiedPath, isCopiedWithTheKeysToo) {
    view.setFocus();
    pointAt(on(File));
    QTest::keySequence(&view, QKeySequence::Copy);
    EXPECT_EQ(copied(), "/v/d/f");
}

TEST_F(CopiedPath, keepsBytesThatAreNoText) {
    const std::string name = "\xFF\n";
    TreeBuilder odd("/odd");
    odd.file(odd.root(), name, 10);
    odd.recount();
    show(odd.root());
    pointAt(middleOf(1, 0.0, 1.0));
    chart.copy();
    EXPECT_THAT(readFilePaths(*QApplication::clipboard()->mimeData()), Optional(ElementsAre("/odd/" + name)));
    show(folder);
}

} // namespace
} // namespace veltrano
