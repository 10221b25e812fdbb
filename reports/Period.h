// Days as reports and the host's screens use them.
#pragma once

#include "reports/HostData.h"

#include <QDate>
#include <optional>

namespace tallyroom {

struct Period {
    QDate from;
    QDate to;
};

// The last day on which anything was recorded of an employee; today without one.
QDate lastRecordedDay(Database& database);

// The period over which the board of this data folder totals, where one is defined that can be
// read; else nothing.
std::optional<Period> canvassPeriod(const QString& dataFolder);

// The period asked for; without one the canvass period, else the last two weeks in which anything
// was recorded.
Period periodOf(const std::optional<Period>& asked, Database& database, const QString& dataFolder);

// Whichever day of the period is closest to a day.
QDate nearestDay(const Period& period, QDate day);

// The condition that a date column lies in the period, which is written the right way round.
QString periodCondition(const QString& column, const Period& period);

// The same for one day, whatever its time of day.
QString dayCondition(const QString& column, QDate day);

// "03/31/2024"
QString shownDay(const Variant& date);
QString shownDay(QDate day);
// "03/01/2024 to 03/31/2024", a single day as such
QString shownPeriod(const Period& period);

} // namespace tallyroom
