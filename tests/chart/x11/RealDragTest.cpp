// Files dragged out of the chart into another program, with a real pointer on a real display.

#include "chart/ChartFixture.h"
#include "chart/PathsMimeData.h"

#include <QProcess>

#include <functional>

namespace veltrano {
namespace {

using test::ChartTest;
using test::TreeBuilder;
using testing::ElementsAre;
using testing::Optional;

constexpr int kLimit = 20'000; // milliseconds that a wait may take before the test fails

//  /v ─┬─ a (50) ── x (25), y (25)
//      └─ "f \xFF" (50)
class RealDrag : public ChartTest {
protected:
    RealDrag() {
        a = tree.folder(tree.root(), "a");
        tree.file(a, "x", 25);
        tree.file(a, "y", 25);
        tree.file(tree.root(), "f \xFF", 50);
        tree.recount();
        show(tree.root());
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&area));
        // A drag turns a main loop of its own, so all that happens in it is an answer to what the peer says.
        QObject::connect(&peer, &QProcess::readyRead, &peer, [this] {
            while (peer.canReadLine())
                hear(peer.readLine().trimmed());
        });
        peer.start(QStringLiteral(VELTRANO_DROP_PEER), {});
        EXPECT_TRUE(QTest::qWaitFor([this] { return !target.isNull(); }, kLimit));
    }
    ~RealDrag() override {
        pointer.waitForFinished();
        peer.kill();
        peer.waitForFinished();
    }

    void hear(const QByteArray& line) {
        lines.push_back(line);
        if (line.startsWith("ready")) {
            const QList<QByteArray> words = line.split(' ');
            target = QPoint(words.value(1).toInt(), words.value(2).toInt());
        } else if (line == "over" && !isOver) {
            isOver = true;
            if (whileOver)
                whileOver();
            pointer.waitForFinished();
            point({"mouseup", "1"});
        } else if (line == "dropped") {
            isDropped = true;
        }
    }

    /// The pointer begins to do what the words say.
    void point(const QStringList& words) { pointer.start(QStringLiteral("xdotool"), words); }
    /// At the pace of a hand: the two programs answer each other for every place on the way.
    static QStringList to(const QPoint& place) {
        return {"mousemove", QString::number(place.x()), QString::number(place.y()), "sleep", "0.02"};
    }

    QByteArray bytesOf(const QByteArray& format) const {
        for (const QByteArray& line : lines) {
            if (line.startsWith(format + ' '))
                return QByteArray::fromHex(line.mid(format.size() + 1));
        }
        return {};
    }

    /// From a point of the chart onto the other program.
    void dragOut(const QPointF& from) {
        const QPoint start = view.mapToGlobal(inView(from));
        point(to(start) + QStringList{"mousedown", "1"} + to(start + QPoint(20, 0)) +
              to(start + QPoint(40, 0)) + to(target) + to(target + QPoint(5, 5)));
        EXPECT_TRUE(QTest::qWaitFor([this] { return isDropped; }, kLimit));
    }

    TreeBuilder tree = TreeBuilder::volume("/v", 100, 0);
    FolderSystemItem* a;
    QProcess peer;
    QProcess pointer;
    QPoint target;           // on the screen
    QList<QByteArray> lines; // what the peer said
    bool isOver = false;
    bool isDropped = false;
    std::function<void()> whileOver; // before the button goes up
};

TEST_F(RealDrag, fileReachesAnotherProgramByteByByte) {
    dragOut(middleOf(1, 0.5, 0.5));
    EXPECT_EQ(bytesOf("text/uri-list").trimmed(), "file:///v/f%20%FF");
    EXPECT_THAT(unarchivePaths(bytesOf(kPathsMimeType)), Optional(ElementsAre("/v/f \xFF")));
    EXPECT_TRUE(lines.contains("move 1"));
}

TEST_F(RealDrag, releaseAfterAFileDragIsNoClickAndTheChartStaysAsItIs) {
    const double angle = chart.getLayout().g_dOriginAngleRad;
    dragOut(middleOf(1, 0.0, 0.5));
    EXPECT_EQ(bytesOf("text/plain"), "/v/a");
    EXPECT_EQ(chart.getRootObject()->getObject(), tree.root());
    EXPECT_EQ(chart.getLayout().g_dOriginAngleRad, angle);
    EXPECT_FALSE(chart.isRDAnimating());
}

TEST_F(RealDrag, rootIsOfferedForCopyingOnly) {
    dragOut(chart.getLayout().m_Center);
    EXPECT_EQ(bytesOf("text/uri-list").trimmed(), "file:///v");
    EXPECT_TRUE(lines.contains("move 0"));
}

TEST_F(RealDrag, treeMayGrowWhileTheDragIsUnderWay) {
    whileOver = [this] {
        tree.file(a, "new", 1000);
        tree.recount();
        chart.UpdateRadialStructureDuringProcessByRoot(tree.root());
        chart.setRoot(a, true, true);
    };
    dragOut(middleOf(1, 0.5, 0.5));
    EXPECT_EQ(bytesOf("text/uri-list").trimmed(), "file:///v/f%20%FF");
}

TEST_F(RealDrag, sentenceOfAHiddenItemIsNoAddress) {
    a->setHiddenFlag(true);
    dragOut(middleOf(1, 0.0, 0.5));
    EXPECT_EQ(bytesOf("text/plain"), "Hidden item /v/a");
    EXPECT_TRUE(bytesOf("text/uri-list").isEmpty());
    EXPECT_TRUE(lines.contains("move 0"));
}

} // namespace
} // namespace veltrano
