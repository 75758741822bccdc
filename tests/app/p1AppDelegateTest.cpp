#include "app/p1AppDelegate.h"

#include "platform/NotificationCentre.h"

#include <QApplication>

#include <gmock/gmock.h>

namespace veltrano {
namespace {

using testing::ElementsAre;

class p1AppDelegateTest : public testing::Test {
protected:
    p1AppDelegateTest() {
        for (const char* name : {"InitTreeControllerParameters", "applicationWillTerminate",
                                 "applicationIsDeactivating", "applicationActivated"})
            notifications.addObserver(name, [this, name](const auto&) { posted.emplace_back(name); });
    }
    ~p1AppDelegateTest() override { QGuiApplication::setQuitOnLastWindowClosed(false); }

    NotificationCentre notifications;
    std::vector<std::string> posted;
    p1AppDelegate delegate{notifications, *qApp};
};

TEST_F(p1AppDelegateTest, launchHandsOutTheParameters) {
    delegate.applicationDidFinishLaunching();
    EXPECT_THAT(posted, ElementsAre("InitTreeControllerParameters"));
}

TEST_F(p1AppDelegateTest, endOfTheApplicationIsTold) {
    QMetaObject::invokeMethod(qApp, "aboutToQuit");
    EXPECT_THAT(posted, ElementsAre("applicationWillTerminate"));
}

TEST_F(p1AppDelegateTest, goingToTheBackAndComingToTheFrontAreTold) {
    emit qApp->applicationStateChanged(Qt::ApplicationInactive);
    emit qApp->applicationStateChanged(Qt::ApplicationHidden);
    emit qApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_THAT(posted, ElementsAre("applicationIsDeactivating", "applicationIsDeactivating",
                                    "applicationActivated"));
}

TEST_F(p1AppDelegateTest, programEndsWithItsLastWindow) {
    EXPECT_TRUE(p1AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
    EXPECT_TRUE(QGuiApplication::quitOnLastWindowClosed());
}

} // namespace
} // namespace veltrano
