// The push button and the progress bar, with real events.

#include "app/ProgressBlock.h"
#include "appearance/CheckBox.h"
#include "appearance/PushButton.h"
#include "appearance/Tokens.h"
#include "support/FakeMainLoop.h"

#include <QLabel>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace veltrano {
namespace {

constexpr QRect kPlate(10, 10, 120, 32);

/// A button in a shown window, the plate at kPlate.
struct ShownButton {
    ShownButton() {
        window.resize(200, 80);
        button.setText(QStringLiteral("Scan"));
        button.setPlateGeometry(kPlate);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    QColor edgeOfPicture(QPoint inWindow) { return window.grab().toImage().pixelColor(inWindow); }

    QWidget window;
    PushButton button{&window};
};

TEST(CheckBox, isSwitchedByItsTextAndBySpace) {
    CheckBox box;
    box.setText(QStringLiteral("Show hidden folders"));
    box.resize(box.sizeHint());
    box.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(box.width() - 8, box.height() / 2));
    EXPECT_TRUE(box.isChecked());
    QTest::keyClick(&box, Qt::Key_Space);
    EXPECT_FALSE(box.isChecked());
}

TEST(CheckBox, wearsTheAccentPlateWhenItIsOn) {
    CheckBox box;
    box.resize(box.sizeHint());
    box.setChecked(true);
    const QColor leftOfTheMark = box.grab().toImage().pixelColor(CheckBox::kFocusMargin + 2, 12);
    EXPECT_GE(leftOfTheMark.blue(), tokens::kAccentPlate.foot.blue());
    EXPECT_LE(leftOfTheMark.red(), tokens::kAccentPlate.top.red());
}

TEST(PushButton, plateKeepsAMarginForTheFocusRing) {
    ShownButton shown;
    EXPECT_EQ(shown.button.geometry(), kPlate.adjusted(-4, -4, 4, 4));
}

TEST(PushButton, isPressedByTheMouseAndByReturnAndSpace) {
    ShownButton shown;
    QSignalSpy clicked(&shown.button, &PushButton::clicked);
    QTest::mouseClick(&shown.button, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
    shown.button.setFocus();
    QTest::keyClick(&shown.button, Qt::Key_Return);
    EXPECT_EQ(clicked.count(), 2);
    QTest::keyClick(&shown.button, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 3);
}

TEST(PushButton, doesNothingWhileDisabled) {
    ShownButton shown;
    shown.button.setEnabled(false);
    QSignalSpy clicked(&shown.button, &PushButton::clicked);
    QTest::mouseClick(&shown.button, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 0);
}

TEST(PushButton, glyphWearsTheColourOfDisabledText) {
    ShownButton shown;
    shown.button.setText(QString());
    shown.button.setGlyph(QStringLiteral("extra/scan"));
    shown.button.setKind(PushButton::Kind::Primary);
    shown.button.setEnabled(false);
    const QImage picture = shown.window.grab(kPlate).toImage();
    int inColour = 0;
    for (int row = 0; row < picture.height(); ++row)
        for (int column = 0; column < picture.width(); ++column)
            inColour += picture.pixelColor(column, row) == tokens::kDisabled;
    EXPECT_GT(inColour, 20);
}

TEST(PushButton, primaryWearsTheAccentPlate) {
    ShownButton shown;
    shown.button.setKind(PushButton::Kind::Primary);
    EXPECT_EQ(shown.edgeOfPicture({kPlate.left() + 20, kPlate.top()}), tokens::kAccentPlate.edge);
}

TEST(PushButton, showsTheFocusRingForTheKeyboardOnly) {
    ShownButton shown;
    const QPoint onRing(kPlate.left() + 20, kPlate.top() - 4);
    shown.button.setFocus(Qt::MouseFocusReason);
    EXPECT_NE(shown.edgeOfPicture(onRing), tokens::kFocus);
    shown.button.clearFocus();
    shown.button.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(shown.edgeOfPicture(onRing), tokens::kFocus);
}

TEST(ProgressBar, boundsItsValue) {
    ProgressBar bar;
    bar.setDoubleValue(-5);
    EXPECT_EQ(bar.value(), 0);
    bar.setDoubleValue(1200);
    EXPECT_EQ(bar.value(), 1000);
}

TEST(ProgressBar, boundsItsValueAnewWhenTheRangeChanges) {
    ProgressBar bar;
    bar.setDoubleValue(600);
    bar.setMaxValue(500);
    EXPECT_EQ(bar.value(), 500);
    bar.setMaxValue(1000);
    bar.setMinValue(700);
    EXPECT_EQ(bar.value(), 700);
}

TEST(ProgressBar, fillsItsShare) {
    ProgressBar bar;
    bar.resize(200, 8);
    bar.setMinValue(1000);
    bar.setMaxValue(2000);
    bar.setDoubleValue(1500);
    const QImage picture = bar.grab().toImage();
    const QColor inFill = picture.pixelColor(90, 4);
    const QColor inTrack = picture.pixelColor(110, 4);
    EXPECT_LT(inFill.red(), 150);
    EXPECT_GT(inTrack.red(), 200);
}

TEST(ProgressBar, theBarberPoleMovesBetweenStartAndStop) {
    ProgressBar bar;
    bar.resize(200, 8);
    bar.setIndeterminate(true);
    bar.startAnimation();
    bar.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&bar));
    const QImage before = bar.grab().toImage();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.grab().toImage() != before; }));
    bar.stopAnimation();
    const QImage stopped = bar.grab().toImage();
    ProgressBar other; // moves on meanwhile, so that time has passed
    other.resize(200, 8);
    other.setIndeterminate(true);
    other.startAnimation();
    other.show();
    const QImage otherBefore = other.grab().toImage();
    EXPECT_TRUE(QTest::qWaitFor([&] { return other.grab().toImage() != otherBefore; }));
    EXPECT_EQ(bar.grab().toImage(), stopped);
}

/// The block with a clock, one second after a fifth was done.
struct RunningBlock {
    RunningBlock() {
        block.resize(500, ProgressBlock::kHeight);
        block.setText(QStringLiteral("Scanning “Data”"));
        block.bar().setDoubleValue(1);
    }
    void runOn() {
        loop.advance(1);
        block.bar().setDoubleValue(201);
    }
    QLabel* label() { return block.findChildren<QLabel*>().at(0); }

    FakeMainLoop loop;
    ProgressBlock block{loop};
};

TEST(ProgressBlock, saysWhatIsUnderWayUntilItKnowsHowLongItTakes) {
    RunningBlock running;
    EXPECT_EQ(running.label()->text(), QStringLiteral("Scanning “Data”"));
    running.runOn();
    EXPECT_EQ(running.label()->text(), QStringLiteral("About five seconds remaining"));
}

TEST(ProgressBlock, saysWhatIsUnderWayAgainWhenTheEndIsNotKnown) {
    RunningBlock running;
    running.runOn();
    running.block.bar().setIndeterminate(true);
    running.block.bar().setDoubleValue(300);
    EXPECT_EQ(running.label()->text(), QStringLiteral("Scanning “Data”"));
}

TEST(ProgressBlock, readsBothAloud) {
    RunningBlock running;
    running.runOn();
    EXPECT_EQ(running.label()->accessibleName(),
              QStringLiteral("Scanning “Data”, About five seconds remaining"));
}

TEST(ProgressBlock, elidesALongTextBeforeTheCounter) {
    FakeMainLoop loop;
    ProgressBlock block(loop);
    block.resize(300, ProgressBlock::kHeight);
    block.setCounter(QStringLiteral("12.4 GB"));
    block.setText(QStringLiteral("Scanning “") + QString(200, QLatin1Char('x')) + QStringLiteral("”"));
    block.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&block));
    const auto labels = block.findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), 2);
    EXPECT_LE(labels[0]->geometry().right(), labels[1]->geometry().left());
    EXPECT_TRUE(labels[0]->text().contains(QChar(0x2026)));
}

} // namespace
} // namespace veltrano
