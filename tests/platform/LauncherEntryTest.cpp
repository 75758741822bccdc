// The signals of the dock's entry, heard on a real bus by a peer that listens as a dock does.

#include "platform/linux/LauncherEntry.h"
#include "support/BusConnection.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QTest>

#include <gtest/gtest.h>

#include <vector>

namespace veltrano {
namespace {

const QString kAddress = QStringLiteral("application://veltrano.desktop");

/// Hears every update of a dock's entries, whoever sends it.
class ListeningDock final : public QObject {
    Q_OBJECT

public:
    explicit ListeningDock(const PrivateBus& bus) : m_bus(bus) {
        m_bus->connect(QString(), QString(), QStringLiteral("com.canonical.Unity.LauncherEntry"),
                       QStringLiteral("Update"), this, SLOT(hear(QDBusMessage)));
    }

    bool hasHeard(std::size_t count) {
        return QTest::qWaitFor([&] { return updates.size() >= count; });
    }
    QVariantMap properties(std::size_t index) const {
        return qdbus_cast<QVariantMap>(updates.at(index).arguments().at(1));
    }
    double progress(std::size_t index) const {
        return properties(index)[QStringLiteral("progress")].toDouble();
    }
    bool isVisible(std::size_t index) const {
        return properties(index)[QStringLiteral("progress-visible")].toBool();
    }

    std::vector<QDBusMessage> updates;

private Q_SLOTS:
    void hear(const QDBusMessage& message) { updates.push_back(message); }

private:
    BusConnection m_bus;
};

class LauncherEntryTest : public testing::Test {
protected:
    PrivateBus bus;
    ListeningDock dock{bus};
    BusConnection connection{bus};
};

TEST_F(LauncherEntryTest, anUpdateNamesTheDesktopFileAndShowsTheProgress) {
    LauncherEntry entry(*connection, kAddress);
    entry.setProgress(0.25);
    ASSERT_TRUE(dock.hasHeard(1));
    EXPECT_EQ(dock.updates[0].signature(), QStringLiteral("sa{sv}"));
    EXPECT_EQ(dock.updates[0].arguments().at(0).toString(), kAddress);
    EXPECT_DOUBLE_EQ(dock.progress(0), 0.25);
    EXPECT_TRUE(dock.isVisible(0));
}

TEST_F(LauncherEntryTest, noProgressTakesTheBarAway) {
    LauncherEntry entry(*connection, kAddress);
    entry.setProgress(0.25);
    entry.setProgress(std::nullopt);
    ASSERT_TRUE(dock.hasHeard(2));
    EXPECT_FALSE(dock.isVisible(1));
}

TEST_F(LauncherEntryTest, theSameProgressIsToldOnce) {
    LauncherEntry entry(*connection, kAddress);
    entry.setProgress(std::nullopt);
    entry.setProgress(0.25);
    entry.setProgress(0.25);
    entry.setProgress(0.5);
    ASSERT_TRUE(dock.hasHeard(2));
    EXPECT_DOUBLE_EQ(dock.progress(0), 0.25);
    EXPECT_DOUBLE_EQ(dock.progress(1), 0.5);
}

TEST_F(LauncherEntryTest, progressStaysBetweenNothingAndAll) {
    LauncherEntry entry(*connection, kAddress);
    entry.setProgress(1.5);
    entry.setProgress(-1);
    ASSERT_TRUE(dock.hasHeard(2));
    EXPECT_DOUBLE_EQ(dock.progress(0), 1.0);
    EXPECT_DOUBLE_EQ(dock.progress(1), 0.0);
}

TEST_F(LauncherEntryTest, theBarGoesWithTheEntry) {
    { LauncherEntry(*connection, kAddress).setProgress(0.5); }
    ASSERT_TRUE(dock.hasHeard(2));
    EXPECT_FALSE(dock.isVisible(1));
}

TEST_F(LauncherEntryTest, withoutABusNothingIsHeard) {
    LauncherEntry entry(QDBusConnection(QStringLiteral("there is no such connection")), kAddress);
    entry.setProgress(0.5);
    LauncherEntry heard(*connection, kAddress);
    heard.setProgress(0.75);
    ASSERT_TRUE(dock.hasHeard(1));
    EXPECT_DOUBLE_EQ(dock.progress(0), 0.75);
}

} // namespace
} // namespace veltrano

#include "LauncherEntryTest.moc"
