// The settings portal is asked over a real bus, by a peer of the test's that answers to its name.

#include "platform/linux/PortalMotion.h"
#include "support/BusConnection.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QTest>

#include <gmock/gmock.h>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Settings = QMap<QString, QVariantMap>;

const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kReducedMotion = QStringLiteral("reduced-motion");
const QString kInterface = QStringLiteral("org.gnome.desktop.interface");
const QString kEnableAnimations = QStringLiteral("enable-animations");

/// Answers to the portal's name with the settings that the test gives, and keeps what it is asked.
class RecordingPortal final : public QDBusVirtualObject {
    Q_OBJECT

public:
    enum class Answer { All, Nonsense, Refused, Late };

    explicit RecordingPortal(const PrivateBus& bus) : m_bus(bus) {
        qDBusRegisterMetaType<Settings>();
        m_bus->registerVirtualObject(kPortalPath, this);
    }
    void appear() { m_bus->registerService(kPortal); }
    void leave() { m_bus->unregisterService(kPortal); }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        asked.push_back(message);
        if (answer == Answer::All)
            connection.send(message.createReply(QVariant::fromValue(settings)));
        else if (answer == Answer::Nonsense)
            connection.send(message.createReply(QVariant(7)));
        else if (answer == Answer::Refused)
            connection.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
        return true;
    }

    void set(const QString& space, const QString& key, const QVariant& value) {
        settings[space][key] = value;
    }
    /// Sets, and says so as a portal does.
    void change(const QString& space, const QString& key, const QVariant& value) {
        set(space, key, value);
        auto signal = QDBusMessage::createSignal(kPortalPath, kSettings, QStringLiteral("SettingChanged"));
        signal << space << key << QVariant::fromValue(QDBusVariant(value));
        m_bus->send(signal);
    }

    Answer answer = Answer::All;
    Settings settings;
    std::vector<QDBusMessage> asked;

private:
    BusConnection m_bus;
};

class PortalMotionTest : public testing::Test {
protected:
    void start() {
        motion.observe([this](bool reduced) { told.push_back(reduced); });
    }
    bool isTold(std::size_t count) {
        return QTest::qWaitFor([&] { return told.size() >= count; });
    }
    bool isAsked(std::size_t count) {
        return QTest::qWaitFor([&] { return portal.asked.size() >= count; });
    }
    /// Everything that the portal sent before has arrived once a question of this connection to it is
    /// answered; a silent portal is not asked, but the bus.
    void settle() {
        const bool isSilent = portal.answer == RecordingPortal::Answer::Late;
        const auto question = QDBusMessage::createMethodCall(
            isSilent ? QStringLiteral("org.freedesktop.DBus") : kPortal,
            QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus.Peer"),
            QStringLiteral("Ping"));
        const QDBusPendingCall answer = connection->asyncCall(question);
        ASSERT_TRUE(QTest::qWaitFor([&] { return answer.isFinished(); }));
        QCoreApplication::processEvents();
    }

    PrivateBus bus;
    RecordingPortal portal{bus};
    BusConnection connection{bus};
    std::vector<bool> told;
    PortalMotion motion{*connection};
};

TEST_F(PortalMotionTest, thePortalIsAskedForBothNameSpacesAtOnce) {
    portal.appear();
    start();
    ASSERT_TRUE(isAsked(1));
    EXPECT_EQ(portal.asked[0].interface(), kSettings);
    EXPECT_EQ(portal.asked[0].member(), QStringLiteral("ReadAll"));
    EXPECT_EQ(portal.asked[0].signature(), QStringLiteral("as"));
    EXPECT_EQ(portal.asked[0].arguments().at(0).toStringList(), (QStringList{kAppearance, kInterface}));
}

TEST_F(PortalMotionTest, aWishForLessMotionIsToldInALaterTurn) {
    portal.set(kAppearance, kReducedMotion, 1U);
    portal.appear();
    start();
    EXPECT_THAT(told, IsEmpty());
    ASSERT_TRUE(isTold(1));
    EXPECT_THAT(told, ElementsAre(true));
}

TEST_F(PortalMotionTest, noWishLeavesTheMotion) {
    portal.set(kAppearance, kReducedMotion, 0U);
    portal.appear();
    start();
    ASSERT_TRUE(isTold(1));
    EXPECT_THAT(told, ElementsAre(false));
}

TEST_F(PortalMotionTest, aNumberOfTheFutureIsNoWish) {
    portal.set(kAppearance, kReducedMotion, 2U);
    portal.appear();
    start();
    ASSERT_TRUE(isTold(1));
    EXPECT_THAT(told, ElementsAre(false));
}

TEST_F(PortalMotionTest, theOlderSettingTellsWhereTheNewOneIsNotThere) {
    portal.set(kInterface, kEnableAnimations, false);
    portal.appear();
    start();
    ASSERT_TRUE(isTold(1));
    portal.change(kInterface, kEnableAnimations, true);
    ASSERT_TRUE(isTold(2));
    EXPECT_THAT(told, ElementsAre(true, false));
}

TEST_F(PortalMotionTest, theNewSettingOutweighsTheOlderOne) {
    portal.set(kAppearance, kReducedMotion, 0U);
    portal.set(kInterface, kEnableAnimations, false);
    portal.appear();
    start();
    ASSERT_TRUE(isTold(1));
    EXPECT_THAT(told, ElementsAre(false));
}

TEST_F(PortalMotionTest, aValueThatIsWrappedTwiceCounts) {
    portal.set(kAppearance, kReducedMotion, QVariant::fromValue(QDBusVariant(1U)));
    portal.appear();
    start();
    ASSERT_TRUE(isTold(1));
    EXPECT_THAT(told, ElementsAre(true));
}

TEST_F(PortalMotionTest, changesAreToldOnceEach) {
    portal.set(kAppearance, kReducedMotion, 0U);
    portal.appear();
    start();
    ASSERT_TRUE(isTold(1));
    settle();
    const std::size_t before = portal.asked.size();
    portal.change(kAppearance, kReducedMotion, 1U);
    ASSERT_TRUE(isTold(2));
    portal.change(kAppearance, kReducedMotion, 1U);
    ASSERT_TRUE(isAsked(before + 2));
    settle();
    EXPECT_THAT(told, ElementsAre(false, true));
}

TEST_F(PortalMotionTest, otherSettingsAreNoReasonToAsk) {
    portal.set(kAppearance, kReducedMotion, 0U);
    portal.appear();
    start();
    ASSERT_TRUE(isTold(1));
    settle();
    const std::size_t before = portal.asked.size();
    portal.change(kAppearance, QStringLiteral("color-scheme"), 1U);
    portal.change(kInterface, kReducedMotion, 1U);
    settle();
    settle(); // a question that the first one let through
    EXPECT_EQ(portal.asked.size(), before);
}

TEST_F(PortalMotionTest, valuesOfAnotherTypeSayNothing) {
    portal.set(kAppearance, kReducedMotion, QStringLiteral("1"));
    portal.set(kInterface, kEnableAnimations, 0U);
    portal.appear();
    start();
    ASSERT_TRUE(isAsked(1));
    settle();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(PortalMotionTest, aPortalThatKnowsNeitherSaysNothing) {
    portal.appear();
    start();
    ASSERT_TRUE(isAsked(1));
    settle();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(PortalMotionTest, nonsenseAndRefusalsSayNothing) {
    portal.set(kAppearance, kReducedMotion, 1U);
    portal.appear();
    for (const auto answer : {RecordingPortal::Answer::Nonsense, RecordingPortal::Answer::Refused}) {
        portal.answer = answer;
        const std::size_t before = portal.asked.size();
        start();
        ASSERT_TRUE(isAsked(before + 1));
        settle();
        EXPECT_THAT(told, IsEmpty());
    }
}

TEST_F(PortalMotionTest, nobodyWaitsForAPortalThatHangs) {
    portal.answer = RecordingPortal::Answer::Late;
    portal.appear();
    start(); // returns, though nothing ever answers
    ASSERT_TRUE(isAsked(1));
    settle();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(PortalMotionTest, aHangingQuestionDoesNotKeepTheNextOneBack) {
    portal.answer = RecordingPortal::Answer::Late;
    portal.appear();
    start();
    ASSERT_TRUE(isAsked(1));
    portal.answer = RecordingPortal::Answer::All;
    portal.change(kAppearance, kReducedMotion, 1U);
    ASSERT_TRUE(isTold(1));
    EXPECT_THAT(told, ElementsAre(true));
}

TEST_F(PortalMotionTest, aPortalThatComesLaterIsAsked) {
    portal.set(kAppearance, kReducedMotion, 1U);
    start();
    settle();
    EXPECT_THAT(portal.asked, IsEmpty());
    EXPECT_THAT(told, IsEmpty());
    portal.appear();
    ASSERT_TRUE(isTold(1));
    EXPECT_THAT(told, ElementsAre(true));
}

TEST_F(PortalMotionTest, aPortalThatLeavesLeavesWhatItSaid) {
    portal.set(kAppearance, kReducedMotion, 1U);
    portal.appear();
    start();
    ASSERT_TRUE(isTold(1));
    portal.leave();
    settle();
    EXPECT_THAT(told, ElementsAre(true));
}

TEST_F(PortalMotionTest, aNewObserverIsToldWhatTheOldOneKnew) {
    portal.set(kAppearance, kReducedMotion, 1U);
    portal.appear();
    start();
    ASSERT_TRUE(isTold(1));
    std::vector<bool> toldToSecond;
    motion.observe([&](bool reduced) { toldToSecond.push_back(reduced); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return !toldToSecond.empty(); }));
    EXPECT_THAT(toldToSecond, ElementsAre(true));
    EXPECT_THAT(told, ElementsAre(true));
}

TEST_F(PortalMotionTest, withoutAnObserverNobodyIsAsked) {
    portal.appear();
    motion.observe({});
    portal.change(kAppearance, kReducedMotion, 1U);
    settle();
    settle();
    EXPECT_THAT(portal.asked, IsEmpty());
}

TEST_F(PortalMotionTest, aBrokenBusSaysNothing) {
    bus.stop();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !connection->isConnected(); }));
    start();
    QCoreApplication::processEvents();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(PortalMotionTest, anAnswerAfterItsEndIsForgotten) {
    portal.set(kAppearance, kReducedMotion, 1U);
    portal.appear();
    {
        PortalMotion brief(*connection);
        brief.observe([this](bool reduced) { told.push_back(reduced); });
    }
    ASSERT_TRUE(isAsked(1));
    settle();
    EXPECT_THAT(told, IsEmpty());
}

} // namespace
} // namespace veltrano

#include "PortalMotionTest.moc"
