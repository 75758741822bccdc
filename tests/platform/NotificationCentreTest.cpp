#include "platform/NotificationCentre.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NotificationCentreTest : public testing::Test {
protected:
    NotificationCentre::Handler say(std::string word) {
        return [this, word = std::move(word)](const NotificationCentre::Object&) {
            m_heard.push_back(word);
        };
    }

    NotificationCentre m_centre;
    std::vector<std::string> m_heard;
};

TEST_F(NotificationCentreTest, observersHearInTheOrderOfRegistration) {
    m_centre.addObserver("event", say("first"));
    m_centre.addObserver("event", say("second"));
    m_centre.postNotification("event");
    EXPECT_THAT(m_heard, ElementsAre("first", "second"));
}

TEST_F(NotificationCentreTest, observerHearsNoEventOfAnotherName) {
    m_centre.addObserver("event", say("heard"));
    m_centre.postNotification("events");
    m_centre.postNotification("even");
    EXPECT_THAT(m_heard, IsEmpty());
}

TEST_F(NotificationCentreTest, objectReachesTheObserver) {
    int number = 0;
    m_centre.addObserver(
        "event", [&](const NotificationCentre::Object& object) { number = std::any_cast<int>(object); });
    m_centre.postNotification("event", 7);
    EXPECT_EQ(number, 7);
}

TEST_F(NotificationCentreTest, eventWithoutAnObjectBringsAnEmptyOne) {
    bool isEmpty = false;
    m_centre.addObserver("event",
                         [&](const NotificationCentre::Object& object) { isEmpty = !object.has_value(); });
    m_centre.postNotification("event");
    EXPECT_TRUE(isEmpty);
}

TEST_F(NotificationCentreTest, removedObserverHearsNothing) {
    const auto token = m_centre.addObserver("event", say("removed"));
    m_centre.addObserver("event", say("stays"));
    m_centre.removeObserver(token);
    m_centre.removeObserver(token);
    m_centre.postNotification("event");
    EXPECT_THAT(m_heard, ElementsAre("stays"));
}

TEST_F(NotificationCentreTest, observerMayRemoveItselfInItsHandler) {
    NotificationCentre::Token token = 0;
    token = m_centre.addObserver("event", [&](const NotificationCentre::Object&) {
        m_centre.removeObserver(token);
        m_heard.emplace_back("once");
    });
    m_centre.postNotification("event");
    m_centre.postNotification("event");
    EXPECT_THAT(m_heard, ElementsAre("once"));
}

TEST_F(NotificationCentreTest, observerRemovedByAnEarlierOneHearsNothingMore) {
    NotificationCentre::Token second = 0;
    m_centre.addObserver("event",
                         [&](const NotificationCentre::Object&) { m_centre.removeObserver(second); });
    second = m_centre.addObserver("event", say("second"));
    m_centre.postNotification("event");
    EXPECT_THAT(m_heard, IsEmpty());
}

TEST_F(NotificationCentreTest, observerAddedInAHandlerHearsTheNextEventOnly) {
    bool isAdded = false;
    m_centre.addObserver("event", [&](const NotificationCentre::Object&) {
        if (!isAdded)
            m_centre.addObserver("event", say("late"));
        isAdded = true;
    });
    m_centre.postNotification("event");
    EXPECT_THAT(m_heard, IsEmpty());
    m_centre.postNotification("event");
    EXPECT_THAT(m_heard, ElementsAre("late"));
}

TEST_F(NotificationCentreTest, handlerMayPostAnotherEvent) {
    m_centre.addObserver("outer", [&](const NotificationCentre::Object&) {
        m_centre.postNotification("inner");
        m_heard.emplace_back("outer");
    });
    m_centre.addObserver("inner", say("inner"));
    m_centre.postNotification("outer");
    EXPECT_THAT(m_heard, ElementsAre("inner", "outer"));
}

} // namespace
} // namespace veltrano
