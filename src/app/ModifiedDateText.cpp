#include "app/ModifiedDateText.h"

#include <QDateTime>
#include <QLocale>

namespace veltrano {

QString stringModifiedDate(FileDates::Date date, DateStyle withDataStyle) {
    if (!date)
        return {};
    const QDate day = QDateTime::fromSecsSinceEpoch(date->time_since_epoch().count()).date();
    return QLocale().toString(day,
                              withDataStyle == DateStyle::Short ? QLocale::ShortFormat : QLocale::LongFormat);
}

QString stringModifiedDateOfFilePath(FileDates& dates, const std::string& path, DateStyle withDataStyle) {
    return path.empty() ? QString() : stringModifiedDate(dates.modificationDate(path), withDataStyle);
}

} // namespace veltrano
