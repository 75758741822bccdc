// The sheet of preferences, with real events.

#include "app/PreferencesSheet.h"

#include "appearance/CheckBox.h"
#include "appearance/PushButton.h"
#include "appearance/Tokens.h"

#include <QLabel>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

namespace veltrano {
namespace {

using testing::ElementsAre;

/// A shown sheet over a window.
struct PreferencesSheetTest : testing::Test {
    PreferencesSheetTest() {
        window.resize(800, 600);
        window.show();
        show({});
    }

    void show(const SettingValues& values) {
        delete sheet;
        sheet = new PreferencesSheet(values, &window);
        sheet->open();
        sheet->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(sheet));
    }
    CheckBox& box(const char* name) const { return *sheet->findChild<CheckBox*>(QLatin1String(name)); }
    PushButton& done() const { return *sheet->findChild<PushButton*>(); }

    QWidget window;
    QPointer<PreferencesSheet> sheet;
};

TEST_F(PreferencesSheetTest, hasItsSizeAndHoldsTheWindow) {
    EXPECT_EQ(sheet->size(), QSize(400, 286));
    EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
    EXPECT_EQ(sheet->windowTitle(), QStringLiteral("Preferences"));
}

TEST_F(PreferencesSheetTest, hasItsTexts) {
    std::vector<std::string> texts;
    for (const auto* const label : sheet->findChildren<QLabel*>())
        texts.push_back(label->text().toStdString());
    EXPECT_THAT(texts, ElementsAre("Preferences", "Sounds", "Hints"));
    EXPECT_EQ(box("playSound").text(), QStringLiteral("Play sounds while pointing at the chart"));
    EXPECT_EQ(box("playFinishSound").text(), QStringLiteral("Play a sound when a scan ends"));
    EXPECT_EQ(box("showHint").text(), QStringLiteral("Show the hint beside the pointer"));
    EXPECT_EQ(box("forceShowHint").text(), QStringLiteral("Also when nothing is under the pointer"));
    EXPECT_EQ(done().text(), QStringLiteral("Done"));
}

TEST_F(PreferencesSheetTest, boxesOfAGroupStandTwentySixApart) {
    EXPECT_EQ(box("playFinishSound").y() - box("playSound").y(), 26);
    EXPECT_EQ(box("forceShowHint").y() - box("showHint").y(), 26);
    EXPECT_EQ(box("showHint").x(), box("playSound").x());
}

TEST_F(PreferencesSheetTest, everythingFitsInside) {
    for (const auto* const child : sheet->findChildren<QWidget*>())
        EXPECT_TRUE(sheet->rect().contains(child->geometry())) << child->geometry().bottom();
}

TEST_F(PreferencesSheetTest, eachBoxShowsItsValue) {
    const std::pair<const char*, bool SettingValues::*> kTable[] = {
        {"playSound", &SettingValues::m_bPlaySound},
        {"playFinishSound", &SettingValues::m_bPlayFinishSound},
        {"showHint", &SettingValues::m_bShowHint},
        {"forceShowHint", &SettingValues::m_bForceShowHint}};
    for (const auto& [name, field] : kTable) {
        SettingValues values;
        for (const auto& [other, otherField] : kTable)
            values.*otherField = otherField == field;
        show(values);
        for (const auto& [other, otherField] : kTable)
            EXPECT_EQ(box(other).isChecked(), otherField == field) << name << ' ' << other;
    }
}

TEST_F(PreferencesSheetTest, eachBoxTellsItsOwnSwitchAtOnce) {
    std::vector<std::string> told;
    auto listen = [&](const char* name) {
        return [&told, name](bool isOn) {
            told.push_back(std::string(name) + (isOn ? " on" : " off"));
        };
    };
    QObject::connect(sheet, &PreferencesSheet::actPlaySound, listen("playSound"));
    QObject::connect(sheet, &PreferencesSheet::actPlayFinishSound, listen("playFinishSound"));
    QObject::connect(sheet, &PreferencesSheet::actShowHint, listen("showHint"));
    QObject::connect(sheet, &PreferencesSheet::actForceShowHint, listen("forceShowHint"));
    for (const char* const name : {"playSound", "playFinishSound", "showHint", "forceShowHint", "playSound"})
        QTest::mouseClick(&box(name), Qt::LeftButton, {}, QPoint(12, 12));
    EXPECT_THAT(told, ElementsAre("playSound off", "playFinishSound off", "showHint off", "forceShowHint on",
                                  "playSound on"));
}

TEST_F(PreferencesSheetTest, doneClosesIt) {
    QSignalSpy closed(sheet, &PreferencesSheet::closePreferences);
    QTest::mouseClick(&done(), Qt::LeftButton);
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(sheet->isVisible());
}

TEST_F(PreferencesSheetTest, escapeClosesItAndKeepsWhatWasSwitched) {
    QSignalSpy closed(sheet, &PreferencesSheet::closePreferences);
    QSignalSpy switched(sheet, &PreferencesSheet::actPlaySound);
    QTest::mouseClick(&box("playSound"), Qt::LeftButton, {}, QPoint(12, 12));
    QTest::keyClick(sheet, Qt::Key_Escape);
    EXPECT_EQ(closed.count(), 1);
    EXPECT_EQ(switched.count(), 1);
}

TEST_F(PreferencesSheetTest, closingItsWindowTellsOnce) {
    QSignalSpy closed(sheet, &PreferencesSheet::closePreferences);
    sheet->close();
    EXPECT_EQ(closed.count(), 1);
}

TEST_F(PreferencesSheetTest, deletesItselfWhenItIsClosed) {
    QTest::keyClick(sheet, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(sheet.isNull());
}

TEST_F(PreferencesSheetTest, theKeyboardBeginsAtDoneAndReturnClosesFromAnywhere) {
    EXPECT_TRUE(done().hasFocus());
    QSignalSpy closed(sheet, &PreferencesSheet::closePreferences);
    box("showHint").setFocus();
    QTest::keyClick(&box("showHint"), Qt::Key_Return);
    EXPECT_EQ(closed.count(), 1);
    EXPECT_TRUE(box("showHint").isChecked()) << "and switches nothing";
}

TEST_F(PreferencesSheetTest, theRingShowsWhatReturnDoesFromTheStart) {
    const QPoint ring(done().x() + 1, done().geometry().center().y()); // outside the plate
    EXPECT_EQ(sheet->grab().toImage().pixelColor(ring), tokens::kFocus);
    box("showHint").setFocus();
    EXPECT_NE(sheet->grab().toImage().pixelColor(ring), tokens::kFocus);
}

TEST_F(PreferencesSheetTest, tabWalksTheBoxesFromTheTop) {
    std::vector<std::string> names;
    for (int step = 0; step < 5; ++step) {
        QTest::keyClick(sheet->focusWidget(), Qt::Key_Tab);
        names.push_back(sheet->focusWidget()->objectName().toStdString());
    }
    EXPECT_THAT(names, ElementsAre("playSound", "playFinishSound", "showHint", "forceShowHint", ""));
    EXPECT_TRUE(done().hasFocus());
}

TEST_F(PreferencesSheetTest, spaceSwitchesTheBoxThatHasTheFocus) {
    QSignalSpy switched(sheet, &PreferencesSheet::actForceShowHint);
    box("forceShowHint").setFocus();
    QTest::keyClick(&box("forceShowHint"), Qt::Key_Space);
    ASSERT_EQ(switched.count(), 1);
    EXPECT_TRUE(switched.front().front().toBool());
}

} // namespace
} // namespace veltrano
