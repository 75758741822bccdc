#include "appearance/PMProgressIndicator.h"
#include "support/FakeMainLoop.h"

#include <QAccessible>

#include <gtest/gtest.h>

namespace veltrano {
namespace {

class ProgressBarAccessibleTest : public testing::Test {
protected:
    QAccessibleInterface& described() { return *QAccessible::queryAccessibleInterface(&bar); }
    QAccessibleValueInterface& value() { return *described().valueInterface(); }

    ProgressBar bar;
};

TEST_F(ProgressBarAccessibleTest, isAProgressBarWithAName) {
    EXPECT_EQ(described().role(), QAccessible::ProgressBar);
    EXPECT_EQ(described().text(QAccessible::Name), QStringLiteral("Scan progress"));
}

TEST_F(ProgressBarAccessibleTest, tellsItsValueAndItsRange) {
    bar.setMinValue(10);
    bar.setMaxValue(50);
    bar.setDoubleValue(20);
    ASSERT_NE(described().valueInterface(), nullptr);
    EXPECT_EQ(value().currentValue().toDouble(), 20);
    EXPECT_EQ(value().minimumValue().toDouble(), 10);
    EXPECT_EQ(value().maximumValue().toDouble(), 50);
    EXPECT_EQ(described().text(QAccessible::Value), QStringLiteral("25 %"));
}

TEST_F(ProgressBarAccessibleTest, isBusyAndHasNoValueWhileTheEndIsNotKnown) {
    bar.setIndeterminate(true);
    EXPECT_TRUE(described().state().busy);
    EXPECT_FALSE(value().currentValue().isValid());
    EXPECT_EQ(described().text(QAccessible::Value), QString());
}

TEST_F(ProgressBarAccessibleTest, isNotSetFromOutside) {
    bar.setDoubleValue(20);
    value().setCurrentValue(70.0);
    EXPECT_EQ(bar.value(), 20);
    EXPECT_TRUE(described().state().readOnly);
}

TEST_F(ProgressBarAccessibleTest, theIndicatorIsDescribedAsABarToo) {
    FakeMainLoop loop;
    PMProgressIndicator indicator(loop);
    auto* const interface = QAccessible::queryAccessibleInterface(&indicator);
    ASSERT_NE(interface->valueInterface(), nullptr);
    EXPECT_EQ(interface->role(), QAccessible::ProgressBar);
}

} // namespace
} // namespace veltrano
