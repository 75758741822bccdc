// The indicator's bar and the words for the time that is left, with a clock that the test turns.

#include "appearance/PMProgressIndicator.h"
#include "appearance/ProgressTextField.h"
#include "support/FakeMainLoop.h"

#include <QTest>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace veltrano {
namespace {

struct RecordedText final : ProgressTextField {
    void setStringValue(const QString& value) override {
        text = value;
        ++changes;
    }
    void display() override { ++displays; }

    QString text = QStringLiteral("untouched");
    int changes = 0;
    int displays = 0;
};

class PMProgressIndicatorTest : public testing::Test {
protected:
    PMProgressIndicatorTest() { indicator.setProgressText(&field); }

    /// The words after one second of which the speed leaves so many seconds: from 0 to a fraction f in a
    /// second, (1 - f) / f are left. The step filter would drop values this close, hence the large scale.
    QString wordsFor(double secondsLeft) {
        FakeMainLoop clock;
        RecordedText words;
        PMProgressIndicator bar(clock);
        constexpr double kScale = 1e9;
        bar.setMaxValue(kScale);
        bar.setProgressText(&words);
        bar.setDoubleValue(1);
        clock.advance(1);
        const double speed = (1 - 1 / kScale) / (secondsLeft + 1);
        bar.setDoubleValue(kScale * (1 / kScale + speed));
        return words.text;
    }

    FakeMainLoop loop;
    RecordedText field;
    PMProgressIndicator indicator{loop};
};

TEST_F(PMProgressIndicatorTest, showsItsStateOnTheIconAndTheTimeButNoPercentageAtFirst) {
    EXPECT_TRUE(indicator.getDrawDockProgress());
    EXPECT_TRUE(indicator.getDisplayTimeRemaining());
    EXPECT_FALSE(indicator.getDisplayPercentage());
}

TEST_F(PMProgressIndicatorTest, aSecondValueWithTheSameWholePartChangesNothing) {
    indicator.setDoubleValue(12.2);
    const int changes = field.changes;
    indicator.setDoubleValue(12.9);
    EXPECT_EQ(indicator.value(), 12.2);
    EXPECT_EQ(field.changes, changes);
}

TEST_F(PMProgressIndicatorTest, theFirstValueBelowOneIsDroppedSinceTheLastWholePartStartsAsZero) {
    indicator.setDoubleValue(0.9);
    EXPECT_EQ(indicator.value(), 0);
    EXPECT_EQ(field.changes, 0);
}

TEST_F(PMProgressIndicatorTest, aValueWithAnotherWholePartIsTakenWhole) {
    indicator.setDoubleValue(12.2);
    indicator.setDoubleValue(13.7);
    EXPECT_EQ(indicator.value(), 13.7);
    indicator.setDoubleValue(12.9);
    EXPECT_EQ(indicator.value(), 12.9);
}

TEST_F(PMProgressIndicatorTest, valuesThatAreNoNumberOrBeyondAllNumbersDoNoHarm) {
    indicator.setDoubleValue(12);
    indicator.setDoubleValue(std::nan(""));
    EXPECT_EQ(indicator.value(), 12);
    indicator.setDoubleValue(std::numeric_limits<double>::infinity());
    EXPECT_EQ(indicator.value(), 1000);
    indicator.setDoubleValue(-1e300);
    EXPECT_EQ(indicator.value(), 0);
}

TEST_F(PMProgressIndicatorTest, worksWithoutATextField) {
    indicator.setProgressText(nullptr);
    indicator.setDoubleValue(12);
    indicator.display();
    EXPECT_EQ(indicator.value(), 12);
}

TEST_F(PMProgressIndicatorTest, theTextIsEmptiedByTheFirstValueAboveTheLeast) {
    indicator.setDoubleValue(1);
    EXPECT_EQ(field.text, QString());
}

TEST_F(PMProgressIndicatorTest, nothingIsSaidInTheFirstHalfSecond) {
    indicator.setDoubleValue(1);
    loop.advance(0.5);
    indicator.setDoubleValue(100);
    EXPECT_EQ(field.text, QString());
    loop.advance(0.01);
    indicator.setDoubleValue(101);
    EXPECT_EQ(field.text, QStringLiteral("About five seconds remaining"));
}

TEST_F(PMProgressIndicatorTest, inTheFirstHalfSecondThePercentageStandsAlone) {
    indicator.setDisplayPercentage(true);
    indicator.setDoubleValue(1);
    loop.advance(0.4);
    indicator.setDoubleValue(426);
    EXPECT_EQ(field.text, QStringLiteral("43 % completed"));
}

TEST_F(PMProgressIndicatorTest, halfAPercentGoesToTheEvenNumber) {
    indicator.setDisplayPercentage(true);
    indicator.setDoubleValue(125);
    EXPECT_EQ(field.text, QStringLiteral("12 % completed"));
    indicator.setDoubleValue(375);
    EXPECT_EQ(field.text, QStringLiteral("38 % completed"));
}

TEST_F(PMProgressIndicatorTest, thePercentageStandsBeforeTheTime) {
    indicator.setDisplayPercentage(true);
    indicator.setDoubleValue(1);
    loop.advance(1);
    indicator.setDoubleValue(200);
    EXPECT_EQ(field.text, QStringLiteral("20 % completed - About five seconds remaining"));
}

TEST_F(PMProgressIndicatorTest, withoutTimeAndPercentageTheTextStays) {
    indicator.setDisplayTimeRemaining(false);
    indicator.setDoubleValue(1);
    const int changes = field.changes;
    loop.advance(1);
    indicator.setDoubleValue(200);
    EXPECT_EQ(field.changes, changes);
}

TEST_F(PMProgressIndicatorTest, withoutTheTimeThePercentageStandsAlone) {
    indicator.setDisplayTimeRemaining(false);
    indicator.setDisplayPercentage(true);
    indicator.setDoubleValue(1);
    loop.advance(1);
    indicator.setDoubleValue(200);
    EXPECT_EQ(field.text, QStringLiteral("20 % completed"));
}

TEST_F(PMProgressIndicatorTest, anIndeterminateBarHasNoText) {
    indicator.setDisplayPercentage(true);
    indicator.setDoubleValue(1);
    loop.advance(1);
    indicator.setDoubleValue(200);
    indicator.setIndeterminate(true);
    indicator.setDoubleValue(300);
    EXPECT_EQ(field.text, QString());
}

TEST_F(PMProgressIndicatorTest, everyTimeHasItsWords) {
    const std::vector<std::pair<double, QString>> words = {
        {556, QStringLiteral("About ten minutes remaining")},
        {554, QStringLiteral("About nine minutes remaining")},
        {496, QStringLiteral("About nine minutes remaining")},
        {494, QStringLiteral("About eight minutes remaining")},
        {436, QStringLiteral("About eight minutes remaining")},
        {434, QStringLiteral("About seven minutes remaining")},
        {376, QStringLiteral("About seven minutes remaining")},
        {374, QStringLiteral("About six minutes remaining")},
        {316, QStringLiteral("About six minutes remaining")},
        {314, QStringLiteral("About five minutes remaining")},
        {256, QStringLiteral("About five minutes remaining")},
        {254, QStringLiteral("About four minutes remaining")},
        {196, QStringLiteral("About four minutes remaining")},
        {194, QStringLiteral("About three minutes remaining")},
        {136, QStringLiteral("About three minutes remaining")},
        {134, QStringLiteral("About two minutes remaining")},
        {76, QStringLiteral("About two minutes remaining")},
        {74, QStringLiteral("About one minute remaining")},
        {51, QStringLiteral("About one minute remaining")},
        {49, QStringLiteral("Less than a minute remaining")},
        {11, QStringLiteral("Less than a minute remaining")},
        {9, QStringLiteral("About ten seconds remaining")},
        {6, QStringLiteral("About ten seconds remaining")},
        {4, QStringLiteral("About five seconds remaining")},
        {0.5, QStringLiteral("About five seconds remaining")}};
    for (const auto& [seconds, text] : words)
        EXPECT_EQ(wordsFor(seconds), text) << seconds;
}

TEST_F(PMProgressIndicatorTest, moreThanTenMinutesAreCountedInDigits) {
    EXPECT_EQ(wordsFor(614), QStringLiteral("About ten minutes remaining"));
    EXPECT_EQ(wordsFor(616), QStringLiteral("About 11 minutes remaining"));
    EXPECT_EQ(wordsFor(660), QStringLiteral("About 11 minutes remaining"));
    EXPECT_EQ(wordsFor(700), QStringLiteral("About 12 minutes remaining"));
    EXPECT_EQ(wordsFor(6000), QStringLiteral("About 100 minutes remaining"));
}

TEST_F(PMProgressIndicatorTest, anEdgeBelongsToTheWordsBelowIt) {
    const auto wordsAt = [](double left) {
        FakeMainLoop clock;
        RecordedText words;
        PMProgressIndicator bar(clock);
        // A quarter of the way in half the time that the other half takes: every number is exact in binary.
        bar.setMaxValue(1024);
        bar.setProgressText(&words);
        bar.setDoubleValue(256);
        clock.advance(left / 2);
        bar.setDoubleValue(512);
        return words.text;
    };
    EXPECT_EQ(wordsAt(50.0), QStringLiteral("Less than a minute remaining"));
    EXPECT_EQ(wordsAt(615.0), QStringLiteral("About ten minutes remaining"));
    EXPECT_EQ(wordsAt(10.0), QStringLiteral("About ten seconds remaining"));
    EXPECT_EQ(wordsAt(5.0), QStringLiteral("About five seconds remaining"));
    EXPECT_EQ(wordsAt(75.0), QStringLiteral("About one minute remaining"));
    EXPECT_EQ(wordsAt(555.0), QStringLiteral("About nine minutes remaining"));
}

TEST_F(PMProgressIndicatorTest, theEstimateForgetsWhatIsOlderThanSevenSeconds) {
    indicator.setDoubleValue(1);
    // Slow at first: ten in 3.6 seconds, 356 are left.
    loop.advance(3.6);
    indicator.setDoubleValue(11); // the next reference point
    EXPECT_EQ(field.text, QStringLiteral("About six minutes remaining"));
    loop.advance(3.6);
    indicator.setDoubleValue(371); // becomes the reference point: 360 in 3.6 seconds, 6.29 seconds are left
    EXPECT_EQ(field.text, QStringLiteral("About ten seconds remaining"));
}

TEST_F(PMProgressIndicatorTest, aReferencePointHoldsForThreeAndAHalfSeconds) {
    indicator.setDoubleValue(1);
    loop.advance(3.5); // not more than that, so no next point is prepared
    indicator.setDoubleValue(11);
    loop.advance(3.5);
    indicator.setDoubleValue(371); // the next point is prepared only now; 370 in 7 seconds, 11.9 are left
    EXPECT_EQ(field.text, QStringLiteral("Less than a minute remaining"));
}

TEST_F(PMProgressIndicatorTest, aReturnToTheLeastStartsANewEstimate) {
    indicator.setDoubleValue(1);
    loop.advance(2);
    indicator.setDoubleValue(200);
    indicator.setDoubleValue(0);
    EXPECT_EQ(field.text, QString());
    loop.advance(3600); // between two scans
    indicator.setDoubleValue(1);
    EXPECT_EQ(field.text, QString());
    loop.advance(1);
    indicator.setDoubleValue(101);
    EXPECT_EQ(field.text, QStringLiteral("About ten seconds remaining"));
}

TEST_F(PMProgressIndicatorTest, withoutProgressSinceTheReferencePointTheTextStays) {
    indicator.setDoubleValue(100);
    loop.advance(1);
    indicator.setDoubleValue(200);
    const QString text = field.text;
    indicator.setDoubleValue(100);
    EXPECT_EQ(field.text, text);
}

TEST_F(PMProgressIndicatorTest, aBarThatGoesBackOrIsAtItsEndStillHasWords) {
    indicator.setDoubleValue(500);
    loop.advance(1);
    indicator.setDoubleValue(200);
    EXPECT_EQ(field.text, QStringLiteral("About five seconds remaining"));
    indicator.setDoubleValue(1000);
    EXPECT_EQ(field.text, QStringLiteral("About five seconds remaining"));
}

TEST_F(PMProgressIndicatorTest, aRangeWithoutWidthDoesNoHarm) {
    indicator.setDisplayPercentage(true);
    indicator.setMinValue(5);
    indicator.setMaxValue(5);
    indicator.setDoubleValue(7);
    loop.advance(1);
    indicator.setDoubleValue(8);
    EXPECT_EQ(field.text, QStringLiteral("0 % completed"));
}

TEST_F(PMProgressIndicatorTest, displayDrawsTheTextFieldToo) {
    indicator.display();
    EXPECT_EQ(field.displays, 1);
}

} // namespace
} // namespace veltrano
