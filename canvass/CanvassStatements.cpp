#include "canvass/CanvassStatements.h"

#include <array>

namespace tallyroom::CanvassStatements {

namespace {

// Statements that once gave missing figures a zero. A comparison with NULL is never true, so they
// change no row; the grid shows the missing figures as it always did.
constexpr std::array zeroedColumns = {
    u"T15Hours",    u"T20Hours",     u"T15Accepted",  u"T20Accepted",  u"T15Declined",
    u"T20Declined", u"xT15Accepted", u"xT20Accepted", u"xT15Declined", u"xT20Declined",
    u"WorkedOT",    u"AcceptedOT",   u"DeclinedOT",   u"TotalOT1",     u"TotalOT2"};

QString zeroStatement(const char16_t* column) {
    return QStringLiteral("Update [tlyrTemp] Set [%1] = 0 Where [%1] = NULL;")
        .arg(QString::fromUtf16(column));
}

QString dateClause(const std::optional<TotallingPeriod>& period) {
    if (!period)
        return {};
    return QStringLiteral(" and ([shift_date] between #") + Dates::toText(period->from) +
           QStringLiteral("# and #") + Dates::toText(period->to) + QStringLiteral("#)");
}

} // namespace

QString insertEmployees(const QString& dataPath, const QString& filter) {
    return QStringLiteral("Insert Into [tlyrTemp] in '") + dataPath +
           QStringLiteral(
               "\\vrlxdb01.mdb' "
               "Select Employee.emp_code, Employee.emp_name, Employee.sendate, "
               "IIf(IsNull([Employee].[Seniority]),0,[Employee].[Seniority]) AS Seniority, "
               "Employee.emp_dept, Employee.phone, Employee.emp_shift, Employee.defaulttimecalc,"
               "(Select [Qual_Code] From [Emp_Qualifications] Where "
               "([Emp_Qualifications].[Emp_Code] = [Employee].[Emp_Code]) and "
               "([Emp_Qualifications].[Default] = TRUE)) AS Qual_Code "
               "FROM Employee Where ([Emp_Code] ") +
           filter + QStringLiteral(");");
}

QString totals(const QString& filter, const std::optional<TotallingPeriod>& period) {
    return QStringLiteral("select [thist_emp], "
                          "((sum(iif(Isnull([t15]),0,[t15])) * 1440)) as [T15Hours], "
                          "((sum(iif(Isnull([t20]),0,[t20])) * 1440)) as [T20Hours], "
                          "Sum(iif(isnull([tlyrAccepted]),0,[tlyrAccepted])) as [xT15Accepted], "
                          "Sum(iif(isnull([tlyrAccepted2]),0,[tlyrAccepted2])) as [xT20Accepted], "
                          "Sum(iif(isnull([tlyrDeclined]),0,[tlyrDeclined])) as [xT15Declined], "
                          "Sum(iif(isnull([tlyrDeclined2]),0,[tlyrDeclined2])) as [xT20Declined], "
                          "([T15Hours] + [T20Hours]) As [WorkedOT], "
                          "([xT15Accepted] + [xT20Accepted]) As [AcceptedOT], "
                          "([xT15Declined] + [xT20Declined]) As [DeclinedOT], "
                          "([WorkedOT] + [AcceptedOT] + [DeclinedOT]) As [TotalOT1], "
                          "([WorkedOT] + [DeclinedOT]) AS [TotalOT2] "
                          "From [Timehistory] where ([thist_emp] ") +
           filter + QStringLiteral(") and ([thist_record_type] in ('TR','AR','HR'))") +
           dateClause(period) + QStringLiteral(" group by [thist_emp] order by [thist_emp];");
}

QStringList finish() {
    QStringList updates;
    for (const char16_t* column : zeroedColumns)
        updates.append(zeroStatement(column));
    updates.append(QStringLiteral("Update [tlyrTemp] Set [T15Hours_Mult] = ([T15Hours] * 1.5);"));
    updates.append(QStringLiteral("Update [tlyrTemp] Set [T20Hours_Mult] = ([T20Hours] * 2.0);"));
    return updates;
}

QStringList deriveColumns(bool multiply) {
    const QString f15 = multiply ? QStringLiteral("1.5") : QStringLiteral("1");
    const QString f20 = multiply ? QStringLiteral("2") : QStringLiteral("1");
    const QString s = multiply ? QStringLiteral("_Mult") : QString();
    return {
        QStringLiteral("Update [tlyrTemp] Set [T15Accepted] = ([xT15Accepted] * ") + f15 +
            QStringLiteral(");"),
        QStringLiteral("Update [tlyrTemp] Set [T20Accepted] = ([xT20Accepted] * ") + f20 +
            QStringLiteral(");"),
        QStringLiteral("Update [tlyrTemp] Set [T15Declined] = ([xT15Declined] * ") + f15 +
            QStringLiteral(");"),
        QStringLiteral("Update [tlyrTemp] Set [T20Declined] = ([xT20Declined] * ") + f20 +
            QStringLiteral(");"),
        // No guard against nulls: who has no hours has no worked overtime either.
        QStringLiteral("Update [tlyrTemp] Set [WorkedOT] = ([T15Hours") + s +
            QStringLiteral("] + [T20Hours") + s + QStringLiteral("])"),
        QStringLiteral("Update [tlyrTemp] Set [AcceptedOT] = "
                       "Iif(Isnull([t15Accepted]),0,[t15Accepted]) + "
                       "Iif(Isnull([t20Accepted]),0,[t20accepted]);"),
        QStringLiteral("Update [tlyrTemp] Set [DeclinedOT] = "
                       "iif(isnull([t15Declined]),0,[t15Declined]) + "
                       "iif(isnull([t20Declined]),0,[t20Declined]);"),
        QStringLiteral("Update [tlyrTemp] Set [TotalOT1] = iif(isnull([WorkedOT]),0,[WorkedOT]) + "
                       "iif(isnull([AcceptedOT]),0,[AcceptedOT]) + "
                       "iif(isnull([DeclinedOT]),0,[DeclinedOT]);"),
        QStringLiteral("Update [tlyrTemp] Set [TotalOT2] = iif(isnull([WorkedOT]),0,[WorkedOT])  + "
                       "iif(isnull([DeclinedOT]),0,[DeclinedOT]);")};
}

} // namespace tallyroom::CanvassStatements
