#include "reports/Period.h"

#include "audit/Moments.h"
#include "common/Format.h"
#include "common/RunError.h"
#include "store/Readable.h"
#include "store/Workspace.h"

#include <algorithm>

namespace tallyroom {

namespace {

std::optional<QDate> dayIn(const Recordset& rows, const QString& field) {
    const Variant date = Readable::date(rows.field(field));
    return date.isNull() ? std::nullopt : std::optional(Dates::toQDateTime(date.toDate()).date());
}

} // namespace

QDate lastRecordedDay(Database& database) {
    // The index of the table begins with the employee: this reads the last entry of each.
    const auto rows = database.openRecordset(
        QStringLiteral("Select Max((Select Max([shift_date]) from [TimeHistory] where [thist_emp] "
                       "= [emp_code])) as [last] from [Employee];"),
        RecordsetType::Snapshot);
    return dayIn(*rows, QStringLiteral("last")).value_or(QDate::currentDate());
}

// The table is the add-in's. One that is missing, in use or unreadable hinders no screen, which
// then goes by what was recorded.
std::optional<Period> canvassPeriod(const QString& dataFolder) {
    try {
        const auto rows = Workspace::openAddIn(dataFolder, WhenInUse::Fail)
                              ->openRecordset(QStringLiteral("Select * from [tlyr_period];"),
                                              RecordsetType::Snapshot);
        if (rows->eof())
            return std::nullopt;
        const auto from = dayIn(*rows, QStringLiteral("from_date"));
        const auto to = dayIn(*rows, QStringLiteral("to_date"));
        return from && to ? std::optional(Period{*from, *to}) : std::nullopt;
    } catch (const RunError&) {
        return std::nullopt;
    }
}

Period periodOf(const std::optional<Period>& asked, Database& database, const QString& dataFolder) {
    if (asked)
        return *asked;
    if (const auto canvass = canvassPeriod(dataFolder))
        return *canvass;
    const QDate last = lastRecordedDay(database);
    return {last.addDays(-13), last};
}

QDate nearestDay(const Period& period, QDate day) {
    const auto [first, last] = std::minmax(period.from, period.to);
    return std::clamp(day, first, last);
}

QString periodCondition(const QString& column, const Period& period) {
    return QStringLiteral("([%1] between #%2# and #%3#)")
        .arg(column, Dates::toText(Dates::fromQDate(period.from)),
             Dates::toText(Dates::fromQDate(period.to)));
}

QString dayCondition(const QString& column, QDate day) {
    return Moments::within(column, day, day);
}

QString shownDay(const Variant& date) {
    return formatValue(date, QStringLiteral("mm/dd/yyyy"));
}

QString shownDay(QDate day) {
    return shownDay(Variant(Dates::fromQDate(day)));
}

QString shownPeriod(const Period& period) {
    return period.from == period.to
               ? shownDay(period.from)
               : QStringLiteral("%1 to %2").arg(shownDay(period.from), shownDay(period.to));
}

} // namespace tallyroom
