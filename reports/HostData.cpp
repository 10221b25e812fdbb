#include "reports/HostData.h"

#include "common/Format.h"
#include "common/TextOrder.h"
#include "store/Readable.h"

#include <algorithm>

namespace tallyroom {

namespace {

std::shared_ptr<Recordset> rowsOf(Database& database, const QString& sql) {
    return database.openRecordset(sql, RecordsetType::Snapshot);
}

std::vector<Shift> readShifts(Database& database) {
    std::vector<Shift> shifts;
    const auto rows =
        rowsOf(database, QStringLiteral("Select * from [Shift] order by [Shift_Code];"));
    for (; !rows->eof(); rows->moveNext()) {
        const QString start = shownTime(rows->field(QStringLiteral("shift_start")));
        const QString stop = shownTime(rows->field(QStringLiteral("shift_stop")));
        shifts.push_back({fieldText(*rows, QStringLiteral("Shift_Code")),
                          fieldText(*rows, QStringLiteral("shift_descr")),
                          start.isEmpty() ? QString() : start + QStringLiteral(" - ") + stop});
    }
    return shifts;
}

QHash<QString, QString> readDepartments(Database& database) {
    QHash<QString, QString> departments;
    const auto rows = rowsOf(database, QStringLiteral("Select * from [Department];"));
    for (; !rows->eof(); rows->moveNext())
        departments.insert(fieldText(*rows, QStringLiteral("dept_code")),
                           fieldText(*rows, QStringLiteral("dept_descr")));
    return departments;
}

// The default qualification comes first.
QHash<QString, QStringList> readQualifications(Database& database) {
    QHash<QString, QStringList> held;
    const auto rows = rowsOf(database, QStringLiteral("Select [Emp_Code], [Qual_Code] from "
                                                      "[Emp_Qualifications] order by [Default];"));
    for (; !rows->eof(); rows->moveNext())
        held[fieldText(*rows, QStringLiteral("Emp_Code"))]
            << fieldText(*rows, QStringLiteral("Qual_Code"));
    return held;
}

std::vector<Employee> readEmployees(Database& database) {
    const QHash<QString, QStringList> qualifications = readQualifications(database);
    std::vector<Employee> employees;
    const auto rows =
        rowsOf(database, QStringLiteral("Select [emp_code], [emp_name], [emp_dept], [emp_shift] "
                                        "from [Employee] order by [emp_code];"));
    for (; !rows->eof(); rows->moveNext()) {
        const auto code = Readable::key(rows->field(QStringLiteral("emp_code")));
        if (!code) // nobody could be selected by it
            continue;
        employees.push_back({*code, fieldText(*rows, QStringLiteral("emp_name")),
                             fieldText(*rows, QStringLiteral("emp_dept")),
                             fieldText(*rows, QStringLiteral("emp_shift")),
                             qualifications.value(*code)});
    }
    return employees;
}

} // namespace

QString HostData::employeeName(const QString& code) const {
    const auto inOrder = [](const QString& a, const QString& b) {
        return TextOrder::compare(a, b) < 0; // as they were read
    };
    const auto found = std::ranges::lower_bound(employees, code, inOrder, &Employee::code);
    return found != employees.end() && TextOrder::isSame(found->code, code) ? found->name
                                                                            : QString();
}

QString HostData::departmentName(const QString& code) const {
    return departments.value(code, code);
}

QString HostData::shiftHours(const QString& code) const {
    const auto found = std::ranges::find(shifts, code, &Shift::code);
    return found != shifts.end() ? found->hours : QString();
}

HostData readHostData(Database& database) {
    HostData data{readEmployees(database), readDepartments(database), readShifts(database)};
    std::ranges::sort(data.employees, {},
                      &Employee::code); // letter for letter, as look-ups need it
    return data;
}

QString shownTime(const Variant& time) {
    return formatValue(time, QStringLiteral("hh:nn"));
}

QString fieldText(const Recordset& rows, const QString& name) {
    return Readable::text(rows.field(name));
}

} // namespace tallyroom
