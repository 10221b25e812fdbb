#include "host/screens/TransactionTable.h"

#include "store/SqlText.h"

namespace tallyroom::host {

namespace {

QString historyQuery(const QString& employeeCode, const Period& period) {
    const QString employees = employeeCode.isEmpty()
                                  ? QStringLiteral("in (Select [emp_code] from [Employee])")
                                  : QStringLiteral("= '%1'").arg(SqlText::escaped(employeeCode));
    return QStringLiteral("Select * from [TimeHistory] where ([thist_emp] %1) and %2 "
                          "order by [shift_date], [thist_emp];")
        .arg(employees, periodCondition(QStringLiteral("shift_date"), period));
}

QString dayFraction(const Variant& fraction) {
    return fraction.isNull() ? QString() : minutesText(roundToLong(fraction.toDouble() * 1440));
}

QString minutes(const Variant& value) {
    return value.isNull() ? QString() : minutesText(value.toLong());
}

QStringList cells(const Recordset& rows, const HostData& data) {
    const QString code = fieldText(rows, QStringLiteral("thist_emp"));
    return {shownDay(rows.field(QStringLiteral("shift_date"))),
            code,
            data.employeeName(code),
            fieldText(rows, QStringLiteral("thist_record_type")),
            fieldText(rows, QStringLiteral("thist_shift")),
            fieldText(rows, QStringLiteral("thist_dept")),
            shownTime(rows.field(QStringLiteral("thist_start_time"))),
            shownTime(rows.field(QStringLiteral("thist_stop_time"))),
            fieldText(rows, QStringLiteral("thist_attend_code")),
            dayFraction(rows.field(QStringLiteral("t15"))),
            dayFraction(rows.field(QStringLiteral("t20"))),
            minutes(rows.field(QStringLiteral("tlyrAccepted"))),
            minutes(rows.field(QStringLiteral("tlyrAccepted2"))),
            minutes(rows.field(QStringLiteral("tlyrDeclined"))),
            minutes(rows.field(QStringLiteral("tlyrDeclined2"))),
            fieldText(rows, QStringLiteral("Notes"))};
}

} // namespace

TextTable transactionTable(Database& database, const HostData& data, const QString& employeeCode,
                           const Period& period) {
    TextTable table;
    for (const char16_t* header :
         {u"Date", u"Code", u"Name", u"Type", u"Shift", u"Dept", u"In", u"Out", u"Absence"})
        table.columns.push_back({QString::fromUtf16(header)});
    for (const char16_t* header :
         {u"1.5", u"2.0", u"1.5 Accepted", u"2.0 Accepted", u"1.5 Declined", u"2.0 Declined"})
        table.columns.push_back({QString::fromUtf16(header), CellAlignment::Right});
    table.columns.push_back({QStringLiteral("Notes")});
    const auto rows =
        database.openRecordset(historyQuery(employeeCode, period), RecordsetType::Snapshot);
    for (; !rows->eof(); rows->moveNext())
        table.rows.push_back(cells(*rows, data));
    return table;
}

} // namespace tallyroom::host
