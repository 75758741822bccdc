#include "app/ModifiedDateText.h"

#include "support/FakeFileDates.h"

#include <QDateTime>
#include <QLocale>

#include <gtest/gtest.h>

namespace veltrano {
namespace {

QString shortDate(int year, int month, int day) {
    return QLocale().toString(QDate(year, month, day), QLocale::ShortFormat);
}

FileDates::Date dateAt(const QDateTime& time) {
    return std::chrono::sys_seconds(std::chrono::seconds(time.toSecsSinceEpoch()));
}

TEST(ModifiedDateText, tellsTheDayOfTheUsersTimeZoneWithoutTheTime) {
    FakeFileDates dates;
    for (const QTime time : {QTime(0, 0, 1), QTime(15, 30), QTime(23, 59, 59)}) {
        dates.dates["/a"] = dateAt(QDateTime(QDate(2023, 9, 12), time));
        EXPECT_EQ(stringModifiedDateOfFilePath(dates, "/a", DateStyle::Short), shortDate(2023, 9, 12));
    }
}

TEST(ModifiedDateText, bytesThatAreNoTextArePathsToo) {
    FakeFileDates dates;
    dates.dates["/\xFF"] = dateAt(QDateTime(QDate(2020, 1, 2), QTime(12, 0)));
    EXPECT_EQ(stringModifiedDateOfFilePath(dates, "/\xFF", DateStyle::Short), shortDate(2020, 1, 2));
}

TEST(ModifiedDateText, isEmptyWithoutADate) {
    FakeFileDates dates;
    EXPECT_TRUE(stringModifiedDateOfFilePath(dates, "/a", DateStyle::Short).isEmpty());
    EXPECT_TRUE(stringModifiedDate(std::nullopt, DateStyle::Long).isEmpty());
}

TEST(ModifiedDateText, anEmptyPathIsNotAsked) {
    FakeFileDates dates;
    dates.dates[""] = dateAt(QDateTime(QDate(2020, 1, 2), QTime(12, 0)));
    EXPECT_TRUE(stringModifiedDateOfFilePath(dates, "", DateStyle::Short).isEmpty());
    EXPECT_TRUE(dates.asked.empty());
}

TEST(ModifiedDateText, longStyleSpellsTheDate) {
    FakeFileDates dates;
    dates.dates["/a"] = std::chrono::sys_days(std::chrono::year(2023) / 9 / 12) + std::chrono::hours(12);
    EXPECT_EQ(stringModifiedDateOfFilePath(dates, "/a", DateStyle::Long),
              QLocale().toString(QDate(2023, 9, 12), QLocale::LongFormat));
}

} // namespace
} // namespace veltrano
