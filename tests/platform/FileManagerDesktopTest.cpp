// The file manager is asked over a real bus, by a peer of the test's that answers to its name.

#include "platform/linux/FileManagerDesktop.h"
#include "support/BusConnection.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVirtualObject>
#include <QTest>

#include <gmock/gmock.h>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Answers to the file manager's name, keeps what it is asked and answers as the test says.
class RecordingFileManager final : public QDBusVirtualObject {
    Q_OBJECT

public:
    enum class Answer { Done, Refused, Late };

    explicit RecordingFileManager(const PrivateBus& bus) : m_bus(bus) {
        m_bus->registerVirtualObject(QStringLiteral("/org/freedesktop/FileManager1"), this);
        m_bus->registerService(QStringLiteral("org.freedesktop.FileManager1"));
    }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        asked.push_back(message);
        if (answer == Answer::Done)
            connection.send(message.createReply());
        else if (answer == Answer::Refused)
            connection.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
        return true;
    }

    Answer answer = Answer::Done;
    std::vector<QDBusMessage> asked;

private:
    BusConnection m_bus;
};

class FileManagerDesktopTest : public testing::Test {
protected:
    bool isOpened(std::size_t count) {
        return QTest::qWaitFor([&] { return opened.size() >= count; });
    }
    /// Everything that was sent before has been dealt with once a question of this connection is answered.
    void settle() {
        const auto question = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
        const QDBusPendingCall answer = connection->asyncCall(question);
        ASSERT_TRUE(QTest::qWaitFor([&] { return answer.isFinished(); }));
        QCoreApplication::processEvents();
    }

    PrivateBus bus;
    BusConnection connection{bus};
    std::vector<std::string> opened;
    FileManagerDesktop desktop{*connection, [this](const std::string& url) {
                                   opened.push_back(url);
                               }};
};

TEST_F(FileManagerDesktopTest, theFileManagerIsAskedToShowTheItems) {
    RecordingFileManager manager(bus);
    desktop.showItems({"/home/mara/a b", "/srv/\xFF"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !manager.asked.empty(); }));
    EXPECT_EQ(manager.asked[0].interface(), QStringLiteral("org.freedesktop.FileManager1"));
    EXPECT_EQ(manager.asked[0].member(), QStringLiteral("ShowItems"));
    EXPECT_EQ(manager.asked[0].signature(), QStringLiteral("ass"));
    EXPECT_EQ(manager.asked[0].arguments().at(0).toStringList(),
              (QStringList{QStringLiteral("file:///home/mara/a%20b"), QStringLiteral("file:///srv/%FF")}));
    EXPECT_EQ(manager.asked[0].arguments().at(1).toString(), QString());
}

TEST_F(FileManagerDesktopTest, theFileManagerIsAskedForTheItemsProperties) {
    RecordingFileManager manager(bus);
    desktop.showItemProperties({"/home/mara"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !manager.asked.empty(); }));
    EXPECT_EQ(manager.asked[0].member(), QStringLiteral("ShowItemProperties"));
    EXPECT_EQ(manager.asked[0].arguments().at(0).toStringList(),
              QStringList{QStringLiteral("file:///home/mara")});
}

TEST_F(FileManagerDesktopTest, aFileManagerThatShowsTheItemsLeavesNothingToOpen) {
    RecordingFileManager manager(bus);
    desktop.showItems({"/home/mara"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !manager.asked.empty(); }));
    settle();
    EXPECT_THAT(opened, IsEmpty());
}

TEST_F(FileManagerDesktopTest, withoutAFileManagerTheFoldersOfTheItemsAreOpenedOnceEach) {
    desktop.showItems({"/home/mara/a", "/home/mara/b", "/srv/c d/e"});
    ASSERT_TRUE(isOpened(2));
    settle();
    EXPECT_THAT(opened, ElementsAre("file:///home/mara", "file:///srv/c%20d"));
}

TEST_F(FileManagerDesktopTest, aFileManagerThatRefusesIsAsGoodAsNone) {
    RecordingFileManager manager(bus);
    manager.answer = RecordingFileManager::Answer::Refused;
    desktop.showItemProperties({"/home/mara/a"});
    ASSERT_TRUE(isOpened(1));
    EXPECT_THAT(opened, ElementsAre("file:///home/mara"));
}

TEST_F(FileManagerDesktopTest, nobodyWaitsForAFileManagerThatHangs) {
    RecordingFileManager manager(bus);
    manager.answer = RecordingFileManager::Answer::Late;
    desktop.showItems({"/home/mara/a"}); // returns, though nothing ever answers
    ASSERT_TRUE(QTest::qWaitFor([&] { return !manager.asked.empty(); }));
    settle();
    EXPECT_THAT(opened, IsEmpty());
}

TEST_F(FileManagerDesktopTest, aBrokenBusIsADesktopWithoutAFileManager) {
    bus.stop();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !connection->isConnected(); }));
    desktop.showItems({"/home/mara/a"});
    ASSERT_TRUE(isOpened(1));
    EXPECT_THAT(opened, ElementsAre("file:///home/mara"));
}

TEST_F(FileManagerDesktopTest, anAnswerAfterTheEndOfTheDesktopIsForgotten) {
    {
        FileManagerDesktop(*connection, [this](const std::string& url) {
            opened.push_back(url);
        }).showItems({"/a/b"});
    }
    settle();
    EXPECT_THAT(opened, IsEmpty());
}

TEST_F(FileManagerDesktopTest, noItemsAreNoQuestion) {
    RecordingFileManager manager(bus);
    desktop.showItems({});
    settle();
    EXPECT_TRUE(manager.asked.empty());
    EXPECT_THAT(opened, IsEmpty());
}

TEST_F(FileManagerDesktopTest, anAddressGoesToTheOpenerAsItIs) {
    desktop.openAddress("mailto:someone@quorvex.example?subject=a%20b");
    EXPECT_THAT(opened, ElementsAre("mailto:someone@quorvex.example?subject=a%20b"));
}

} // namespace
} // namespace veltrano

#include "FileManagerDesktopTest.moc"
