#include "host/screens/ScheduleTable.h"

namespace tallyroom::host {

namespace {

using DayTexts = QHash<QDate, QString>;
using TextsByEmployee = QHash<QString, DayTexts>; // by employee code

TextsByEmployee readSchedule(Database& database, const Period& period) {
    TextsByEmployee shifts;
    const auto rows = database.openRecordset(
        QStringLiteral("Select [sched_emp], [sched_date], [sched_shift] from [Schedule] where "
                       "([sched_emp] in (Select [emp_code] from [Employee])) and %1;")
            .arg(periodCondition(QStringLiteral("sched_date"), period)),
        RecordsetType::Snapshot);
    for (; !rows->eof(); rows->moveNext()) {
        const QDate day = Dates::toQDateTime(rows->field(1).toDate()).date();
        shifts[rows->field(0).toText()][day] = rows->field(2).textOrEmpty();
    }
    return shifts;
}

// What was recorded of each employee's day: the hours worked, else the reason for the absence.
QHash<QString, QString> readAttendance(Database& database, const Period& period) {
    QHash<QString, QString> attendance;
    const auto rows = database.openRecordset(
        QStringLiteral("Select [thist_emp], [thist_record_type], [thist_start_time], "
                       "[thist_stop_time], [thist_attend_code] from [TimeHistory] where "
                       "([thist_emp] in (Select [emp_code] from [Employee])) and %1 and "
                       "([thist_record_type] in ('TR','AR','HR')) order by [thist_record_type];")
            .arg(periodCondition(QStringLiteral("shift_date"), period)),
        RecordsetType::Snapshot);
    for (; !rows->eof(); rows->moveNext()) {
        const bool isWork = rows->field(1).textOrEmpty() == QStringLiteral("TR");
        attendance[rows->field(0).toText()] =
            isWork ? shownTime(rows->field(2)) + QStringLiteral(" - ") + shownTime(rows->field(3))
                   : rows->field(4).textOrEmpty();
    }
    return attendance;
}

ValueTable dayTable(Database& database, const HostData& data, const Period& day) {
    const TextsByEmployee shifts = readSchedule(database, day);
    const QHash<QString, QString> attendance = readAttendance(database, day);
    ValueTable table{{},
                     {{QStringLiteral("Code")},
                      {QStringLiteral("Name")},
                      {QStringLiteral("Department")},
                      {QStringLiteral("Shift")},
                      {QStringLiteral("Hours")},
                      {QStringLiteral("Recorded")}},
                     {}};
    for (const Employee& employee : data.employees) {
        const QString shift = shifts.value(employee.code).value(day.from);
        table.rows.push_back({employee.code, employee.name,
                              data.departmentName(employee.department), shift,
                              data.shiftHours(shift), attendance.value(employee.code)});
    }
    return table;
}

ValueTable spanTable(Database& database, const HostData& data, const Period& period) {
    const TextsByEmployee shifts = readSchedule(database, period);
    ValueTable table{{}, {{QStringLiteral("Code")}, {QStringLiteral("Name")}}, {}};
    for (QDate day = period.from; day <= period.to; day = day.addDays(1))
        table.columns.push_back({day.toString(QStringLiteral("ddd\nM/d"))});
    for (const Employee& employee : data.employees) {
        const DayTexts days = shifts.value(employee.code);
        Row cells{employee.code, employee.name};
        for (QDate day = period.from; day <= period.to; day = day.addDays(1))
            cells.push_back(days.value(day));
        table.rows.push_back(std::move(cells));
    }
    return table;
}

} // namespace

Period spanAround(QDate day, ScheduleSpan span) {
    switch (span) {
    case ScheduleSpan::Day:
        return {day, day};
    case ScheduleSpan::Week:
        return {day.addDays(1 - day.dayOfWeek()), day.addDays(7 - day.dayOfWeek())};
    default:
        return {QDate(day.year(), day.month(), 1),
                QDate(day.year(), day.month(), day.daysInMonth())};
    }
}

QDate moved(QDate day, ScheduleSpan span, int direction) {
    switch (span) {
    case ScheduleSpan::Day:
        return day.addDays(direction);
    case ScheduleSpan::Week:
        return day.addDays(qint64{7} * direction);
    default:
        return day.addMonths(direction);
    }
}

ValueTable scheduleTable(Database& database, const HostData& data, const Period& period) {
    return period.from == period.to ? dayTable(database, data, period)
                                    : spanTable(database, data, period);
}

} // namespace tallyroom::host
