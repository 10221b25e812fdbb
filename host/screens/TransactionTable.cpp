#include "host/screens/TransactionTable.h"

#include "host/screens/ShownTable.h"
#include "store/Readable.h"
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

Variant minutesOfFraction(const Variant& fraction) {
    return fraction.isNull() ? Variant::null()
                             : minutesOrNothing(roundToLong(fraction.toDouble() * 1440));
}

Variant minutes(const Variant& value) {
    return value.isNull() ? Variant::null() : minutesOrNothing(value.toLong());
}

Row cells(const Recordset& rows, const HostData& data) {
    const QString code = fieldText(rows, QStringLiteral("thist_emp"));
    return {Readable::date(rows.field(QStringLiteral("shift_date"))),
            code,
            data.employeeName(code),
            fieldText(rows, QStringLiteral("thist_record_type")),
            fieldText(rows, QStringLiteral("thist_shift")),
            fieldText(rows, QStringLiteral("thist_dept")),
            Readable::date(rows.field(QStringLiteral("thist_start_time"))),
            Readable::date(rows.field(QStringLiteral("thist_stop_time"))),
            fieldText(rows, QStringLiteral("thist_attend_code")),
            minutesOfFraction(rows.field(QStringLiteral("t15"))),
            minutesOfFraction(rows.field(QStringLiteral("t20"))),
            minutes(rows.field(QStringLiteral("tlyrAccepted"))),
            minutes(rows.field(QStringLiteral("tlyrAccepted2"))),
            minutes(rows.field(QStringLiteral("tlyrDeclined"))),
            minutes(rows.field(QStringLiteral("tlyrDeclined2"))),
            fieldText(rows, QStringLiteral("Notes"))};
}

ValueTable emptyTable() {
    using enum ValueKind;
    const std::pair<const char16_t*, ValueKind> columns[] = {{u"Date", Day},
                                                             {u"Code", Text},
                                                             {u"Name", Text},
                                                             {u"Type", Text},
                                                             {u"Shift", Text},
                                                             {u"Dept", Text},
                                                             {u"In", TimeOfDay},
                                                             {u"Out", TimeOfDay},
                                                             {u"Absence", Text},
                                                             {u"1.5", Minutes},
                                                             {u"2.0", Minutes},
                                                             {u"1.5 Accepted", Minutes},
                                                             {u"2.0 Accepted", Minutes},
                                                             {u"1.5 Declined", Minutes},
                                                             {u"2.0 Declined", Minutes},
                                                             {u"Notes", Text}};
    ValueTable table;
    for (const auto& [heading, kind] : columns)
        table.columns.push_back({QString::fromUtf16(heading), kind, false});
    table.columns.back().elastic = true;
    return table;
}

} // namespace

ValueTable transactionTable(Database& database, const HostData& data, const QString& employeeCode,
                            const Period& period) {
    ValueTable table = emptyTable();
    const auto rows =
        database.openRecordset(historyQuery(employeeCode, period), RecordsetType::Snapshot);
    for (; !rows->eof(); rows->moveNext())
        table.rows.push_back(cells(*rows, data));
    return table;
}

} // namespace tallyroom::host
