#include "host/screens/OvertimeTable.h"

#include "store/Recordset.h"

#include <QMap>
#include <algorithm>
#include <array>

namespace tallyroom::host {

namespace {

// Worked, accepted and declined minutes, each at 1.5 and at 2.0.
struct Minutes {
    std::array<int, 6> at{};

    Minutes& operator+=(const Minutes& other) {
        std::ranges::transform(at, other.at, at.begin(), std::plus<>());
        return *this;
    }
    bool isNothing() const {
        return std::ranges::all_of(at, [](int n) { return n == 0; });
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

QHash<QString, Minutes> readTotals(Database& database, const Period& period) {
    QHash<QString, Minutes> totals;
    const auto rows = database.openRecordset(totalsQuery(period), RecordsetType::Snapshot);
    for (; !rows->eof(); rows->moveNext()) {
        Minutes minutes;
        for (int field = 0; field < 6; ++field)
            minutes.at[static_cast<std::size_t>(field)] = rows->field(field + 1).toLong();
        totals.insert(rows->field(0).toText(), minutes);
    }
    return totals;
}

QStringList line(const QString& name, const QString& second, const Minutes& minutes) {
    QStringList cells{name, second};
    int total = 0;
    for (const int part : minutes.at) {
        cells << minutesText(part);
        total += part;
    }
    return cells << minutesText(total);
}

TextTable emptyTable(const QString& first, const QString& second) {
    return {{{first},
             {second},
             {QStringLiteral("1.5 Worked"), CellAlignment::Right},
             {QStringLiteral("2.0 Worked"), CellAlignment::Right},
             {QStringLiteral("1.5 Accepted"), CellAlignment::Right},
             {QStringLiteral("2.0 Accepted"), CellAlignment::Right},
             {QStringLiteral("1.5 Declined"), CellAlignment::Right},
             {QStringLiteral("2.0 Declined"), CellAlignment::Right},
             {QStringLiteral("Total"), CellAlignment::Right}},
            {}};
}

TextTable byEmployee(const HostData& data, const QHash<QString, Minutes>& totals) {
    TextTable table = emptyTable(QStringLiteral("Code"), QStringLiteral("Name"));
    for (const Employee& employee : data.employees) {
        const Minutes minutes = totals.value(employee.code);
        if (!minutes.isNothing())
            table.rows.push_back(line(employee.code, employee.name, minutes));
    }
    return table;
}

TextTable byDepartment(const HostData& data, const QHash<QString, Minutes>& totals) {
    QMap<QString, Minutes> sums;
    for (const Employee& employee : data.employees)
        sums[employee.department] += totals.value(employee.code);
    TextTable table = emptyTable(QStringLiteral("Dept"), QStringLiteral("Department"));
    for (auto sum = sums.cbegin(); sum != sums.cend(); ++sum) {
        if (!sum->isNothing())
            table.rows.push_back(line(sum.key(), data.departmentName(sum.key()), *sum));
    }
    return table;
}

} // namespace

TextTable overtimeTable(Database& database, const HostData& data, const Period& period,
                        OvertimeGrouping grouping) {
    const QHash<QString, Minutes> totals = readTotals(database, period);
    TextTable table = grouping == OvertimeGrouping::Department ? byDepartment(data, totals)
                                                               : byEmployee(data, totals);
    Minutes all;
    for (const Minutes& minutes : totals)
        all += minutes;
    table.rows.push_back(line(QString(), QStringLiteral("Total"), all));
    return table;
}

} // namespace tallyroom::host
