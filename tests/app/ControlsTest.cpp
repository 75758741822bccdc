// The push button and the progress bar, with real events.

#include "app/ProgressBlock.h"
#include "appearance/CheckBox.h"
#include "appearance/PushButton.h"
#include "appearance/Tokens.h"

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
    bar.setValue(-5);
    EXPECT_EQ(bar.value(), 0);
    bar.setValue(1200);
    EXPECT_EQ(bar.value(), ProgressBar::kMaximum);
}

TEST(ProgressBar, fillsItsShare) {
    ProgressBar bar;
    bar.resize(200, 8);
    bar.setValue(500);
    const QImage picture = bar.grab().toImage();
    const QColor inFill = picture.pixelColor(90, 4);
    const QColor inTrack = picture.pixelColor(110, 4);
    EXPECT_LT(inFill.red(), 150);
    EXPECT_GT(inTrack.red(), 200);
}

TEST(ProgressBar, theBarberPoleMovesWhileItIsShown) {
    ProgressBar bar;
    bar.resize(200, 8);
    bar.setIndeterminate(true);
    bar.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&bar));
    const QImage before = bar.grab().toImage();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.grab().toImage() != before; }));
}

TEST(ProgressBlock, elidesALongTextBeforeTheCounter) {
    ProgressBlock block;
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
