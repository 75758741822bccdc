// The sheet that asks for feedback, with real events.

#include "app/FeedbackSheet.h"

#include "appearance/CheckBox.h"
#include "appearance/PushButton.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace veltrano {
namespace {

/// A shown sheet over a window, and what it tells.
struct FeedbackSheetTest : testing::Test {
    FeedbackSheetTest() {
        window.show();
        sheet->open();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(sheet));
    }

    PushButton& button(const char* text) const {
        for (auto* const each : sheet->findChildren<PushButton*>())
            if (each->text() == QLatin1String(text))
                return *each;
        throw std::invalid_argument(text);
    }

    QWidget window;
    QPointer<FeedbackSheet> sheet = new FeedbackSheet(false, &window);
    QSignalSpy agreed{sheet, &FeedbackSheet::actAgreeSendFB};
    QSignalSpy closed{sheet, &FeedbackSheet::actCloseFBPanel};
    QSignalSpy dontAsk{sheet, &FeedbackSheet::actDontAskFB};
};

TEST_F(FeedbackSheetTest, agreeingClosesItAndSaysSo) {
    QTest::mouseClick(&button("Write"), Qt::LeftButton);
    EXPECT_EQ(agreed.count(), 1);
    EXPECT_EQ(closed.count(), 0);
    EXPECT_FALSE(sheet->isVisible());
}

TEST_F(FeedbackSheetTest, closingItIsNoAgreement) {
    QTest::mouseClick(&button("Not Now"), Qt::LeftButton);
    EXPECT_EQ(agreed.count(), 0);
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(sheet->isVisible());
}

TEST_F(FeedbackSheetTest, escapeClosesIt) {
    QTest::keyClick(sheet, Qt::Key_Escape);
    EXPECT_EQ(agreed.count(), 0);
    EXPECT_EQ(closed.count(), 1);
}

TEST_F(FeedbackSheetTest, returnAgrees) {
    auto* const box = sheet->findChild<CheckBox*>();
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(agreed.count(), 1);
}

TEST_F(FeedbackSheetTest, theCheckBoxTellsItsSwitchAtOnceAndClosesNothing) {
    QTest::mouseClick(sheet->findChild<CheckBox*>(), Qt::LeftButton, {}, QPoint(12, 12));
    ASSERT_EQ(dontAsk.count(), 1);
    EXPECT_TRUE(dontAsk.front().front().toBool());
    EXPECT_TRUE(sheet->isVisible());
}

TEST_F(FeedbackSheetTest, theCheckBoxShowsTheSetting) {
    EXPECT_FALSE(sheet->findChild<CheckBox*>()->isChecked());
    const auto other = std::make_unique<FeedbackSheet>(true, &window);
    EXPECT_TRUE(other->findChild<CheckBox*>()->isChecked());
}

TEST_F(FeedbackSheetTest, deletesItselfWhenItIsClosed) {
    QTest::keyClick(sheet, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(sheet.isNull());
}

TEST_F(FeedbackSheetTest, everythingFitsInside) {
    for (const auto* const child : sheet->findChildren<QWidget*>())
        EXPECT_TRUE(sheet->rect().contains(child->geometry())) << child->geometry().bottom();
}

} // namespace
} // namespace veltrano
