#include "reports/Group.h"

#include "store/SqlText.h"

namespace tallyroom {

namespace {

QString condition(const QString& column, const QString& value) {
    return QStringLiteral("([%1] = '%2')").arg(column, SqlText::escaped(value));
}

QString described(const QString& what, const QString& code, const QString& description) {
    const QString name = description == code ? QString() : QLatin1Char(' ') + description;
    return what + QLatin1Char(' ') + code + name;
}

} // namespace

QString groupFilter(const ReportGroup& group) {
    QStringList conditions;
    if (!group.department.isEmpty())
        conditions << condition(QStringLiteral("emp_dept"), group.department);
    if (!group.shift.isEmpty())
        conditions << condition(QStringLiteral("emp_shift"), group.shift);
    if (!group.qualification.isEmpty())
        conditions << QStringLiteral("([emp_code] in (Select [Emp_Code] from "
                                     "[Emp_Qualifications] where ") +
                          condition(QStringLiteral("Qual_Code"), group.qualification) +
                          QStringLiteral("))");
    const QString where =
        conditions.isEmpty() ? QString()
                             : QStringLiteral(" where ") + conditions.join(QStringLiteral(" and "));
    return QStringLiteral("in (Select [emp_code] from [Employee]%1)").arg(where);
}

QStringList groupDetails(const ReportGroup& group, const HostData& data) {
    QStringList lines;
    if (!group.department.isEmpty())
        lines << described(QStringLiteral("Department"), group.department,
                           data.departmentName(group.department));
    if (!group.shift.isEmpty())
        lines << described(QStringLiteral("Shift"), group.shift, data.shiftHours(group.shift));
    if (!group.qualification.isEmpty())
        lines << described(QStringLiteral("Qualification"), group.qualification,
                           group.qualification);
    return lines;
}

} // namespace tallyroom
