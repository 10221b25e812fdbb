#include "host/screens/OvertimeTable.h"

#include "common/TextOrder.h"
#include "host/screens/ShownTable.h"
#include "store/Recordset.h"

#include <QMap>
#include <algorithm>
#include <array>

namespace tallyroom::host {

namespace {

// Worked, accepted and declined minutes, each at 1.5 and at 2.0.
struct Minutes {
    std::array<std::int32_t, 6> at{};

    Minutes& operator+=(const Minutes& other) {
        std::ranges::transform(at, other.at, at.begin(), std::plus<>());
        return *this;
    }
};

QString totalsQuery(const Period& period) {
    return QStringLiteral("Select [thist_emp], "
                          "Sum(IIf(IsNull([t15]),0,[t15])) * 1440 as [Worked15], "
                          "Sum(IIf(IsNull([t20]),0,[t20])) * 1440 as [Worked20], "
                          "Sum(IIf(IsNull([tlyrAccepted]),0,[tlyrAccepted])) as [Accepted15], "
                          "Sum(IIf(IsNull([tlyrAccepted2]),0,[tlyrAccepted2])) as [Accepted20], "
                          "Sum(IIf(IsNull([tlyrDeclined]),0,[tlyrDeclined])) as [Declined15], "
                          "Sum(IIf(IsNull([tlyrDeclined2]),0,[tlyrDeclined2])) as [Declined20] "
                          "from [TimeHistory] where ([thist_emp] in (Select [emp_code] from "
                          "[Employee])) and ([thist_record_type] in ('TR','AR','HR')) and ") +
           periodCondition(QStringLiteral("shift_date"), period) +
           QStringLiteral(" group by [thist_emp];");
}

// By employee code, folded: the history may spell it otherwise than the list of employees.
QHash<QString, Minutes> readTotals(Database& database, const Period& period) {
    QHash<QString, Minutes> totals;
    const auto rows = database.openRecordset(totalsQuery(period), RecordsetType::Snapshot);
    for (; !rows->eof(); rows->moveNext()) {
        Minutes minutes;
        for (int field = 0; field < 6; ++field)
            minutes.at[static_cast<std::size_t>(field)] = rows->field(field + 1).toLong();
        totals.insert(TextOrder::folded(rows->field(0).toText()), minutes);
    }
    return totals;
}

Row line(const QString& name, const QString& second, const Minutes& minutes) {
    Row row{name, second};
    std::int32_t total = 0;
    for (const std::int32_t part : minutes.at) {
        row.push_back(minutesOrNothing(part));
        total += part;
    }
    row.push_back(total);
    return row;
}

ValueTable emptyTable(const QString& first, const QString& second) {
    ValueTable table{{}, {{first}, {second}}, {}};
    for (const char16_t* heading : {u"1.5 Worked", u"2.0 Worked", u"1.5 Accepted", u"2.0 Accepted",
                                    u"1.5 Declined", u"2.0 Declined", u"Total"})
        table.columns.push_back({QString::fromUtf16(heading), ValueKind::Minutes});
    return table;
}

ValueTable byEmployee(const HostData& data, const QHash<QString, Minutes>& totals) {
    ValueTable table = emptyTable(QStringLiteral("Code"), QStringLiteral("Name"));
    for (const Employee& employee : data.employees)
        table.rows.push_back(
            line(employee.code, employee.name, totals.value(TextOrder::folded(employee.code))));
    return table;
}

ValueTable byDepartment(const HostData& data, const QHash<QString, Minutes>& totals) {
    QMap<QString, Minutes> sums;
    for (const Employee& employee : data.employees)
        sums[employee.department] += totals.value(TextOrder::folded(employee.code));
    ValueTable table = emptyTable(QStringLiteral("Dept"), QStringLiteral("Department"));
    for (auto sum = sums.cbegin(); sum != sums.cend(); ++sum)
        table.rows.push_back(line(sum.key(), data.departmentName(sum.key()), *sum));
    return table;
}

} // namespace

ValueTable overtimeTable(Database& database, const HostData& data, const Period& period,
                         OvertimeGrouping grouping) {
    const QHash<QString, Minutes> totals = readTotals(database, period);
    ValueTable table = grouping == OvertimeGrouping::Department ? byDepartment(data, totals)
                                                                : byEmployee(data, totals);
    Minutes all;
    for (const Minutes& minutes : totals)
        all += minutes;
    table.rows.push_back(line(QString(), QStringLiteral("Total"), all));
    table.sumRows = 1;
    return table;
}

Report overtimeReport(Database& database, const HostData& data, const Period& period,
                      OvertimeGrouping grouping) {
    Report report;
    report.title = QStringLiteral("Overtime Analysis");
    report.details = {shownPeriod(period)};
    report.tables = {overtimeTable(database, data, period, grouping)};
    return report;
}

} // namespace tallyroom::host
