// Dates as the old run time keeps and writes them. DateParser reads them.
#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <optional>

namespace tallyroom {

// A point in time: whole days since 30 December 1899 plus the time of day as a fraction. Before
// that day the fraction still counts forward from midnight, as the old run time has it.
struct Date {
    double serial = 0;
    friend bool operator==(Date, Date) = default;
    friend auto operator<=>(Date, Date) = default;
};

namespace Dates {

// Whether a date lies in the years 100 to 9999, as all dates do that can be shown or computed with.
bool isInRange(Date date);

Date fromQDate(QDate day);
Date fromQDateTime(const QDateTime& moment); // to the second
// The clock reading, rounded to the second. This, and all that writes dates, raises 6 for a date
// that is out of range.
QDateTime toQDateTime(Date date);
QDate dayOf(Date date);
Date now();
Date today();

// The default conversion: "1/2/2008", "1/2/2008 8:09:36 AM", and for day 0 the time alone.
QString toText(Date date);

// Formats with a picture of d, dd, ddd, dddd, m, mm, mmm, mmmm, yy, yyyy, h, hh, n, nn, s, ss and
// am/pm; "m" after an hour is minutes, other letters stand for themselves.
QString format(Date date, const QString& picture);

// The store's text form, "YYYY-MM-DD HH:MM:SS", and back; nothing when the text is of another form
// or out of range.
QString toIso(Date date);
std::optional<Date> fromIso(const QString& text);

} // namespace Dates
} // namespace tallyroom
