#include "board/BoardStatements.h"

#include "board/BoardTable.h"
#include "common/AnswerKind.h"
#include "store/SqlText.h"

namespace tallyroom::BoardStatements {

namespace {

QString dateClause(const std::optional<TotallingPeriod>& period) {
    if (!period)
        return {};
    return QStringLiteral(" and ([shift_date] between ") + SqlText::literal(period->from) +
           QStringLiteral(" and ") + SqlText::literal(period->to) + QLatin1Char(')');
}

// A number that is missing counts as zero.
QString employeeItem(const Schema::Column& column) {
    const bool isNumber = column.type == Schema::ColumnType::Double;
    return (isNumber ? QStringLiteral("IIf(IsNull([Employee].[%1]),0,[Employee].[%1]) AS %1")
                     : QStringLiteral("Employee.%1"))
        .arg(QString::fromUtf16(column.name));
}

} // namespace

QString employees(const QString& filter) {
    const std::span columns(BoardTable::employeeColumns());
    QStringList items; // the qualification, which is the last one, lies in a table of its own
    for (const Schema::Column& column : columns.first(columns.size() - 1))
        items.append(employeeItem(column));
    return QStringLiteral("Select ") + items.join(QStringLiteral(", ")) +
           QStringLiteral(",(Select [Qual_Code] From [Emp_Qualifications] Where "
                          "([Emp_Qualifications].[Emp_Code] = [Employee].[Emp_Code]) and "
                          "([Emp_Qualifications].[Default] = TRUE)) AS Qual_Code "
                          "FROM Employee Where ([Emp_Code] ") +
           filter + QLatin1Char(')');
}

QString totals(const QString& filter, const std::optional<TotallingPeriod>& period) {
    QString answers;
    for (const AnswerKind& kind : answerKinds)
        answers += QStringLiteral("Sum(iif(isnull([%1]),0,[%1])) as [%2], ")
                       .arg(QString::fromUtf16(kind.history), QString::fromUtf16(kind.board));
    return QStringLiteral("select [thist_emp], "
                          "((sum(iif(Isnull([t15]),0,[t15])) * 1440)) as [T15Hours], "
                          "((sum(iif(Isnull([t20]),0,[t20])) * 1440)) as [T20Hours], ") +
           answers +
           QStringLiteral("([T15Hours] + [T20Hours]) As [WorkedOT], "
                          "([xT15Accepted] + [xT20Accepted]) As [AcceptedOT], "
                          "([xT15Declined] + [xT20Declined]) As [DeclinedOT], "
                          "([WorkedOT] + [AcceptedOT] + [DeclinedOT]) As [TotalOT1], "
                          "([WorkedOT] + [DeclinedOT]) AS [TotalOT2] "
                          "From [Timehistory] where ([thist_emp] ") +
           filter + QStringLiteral(") and ([thist_record_type] in ('TR','AR','HR'))") +
           dateClause(period) + QStringLiteral(" group by [thist_emp] order by [thist_emp];");
}

} // namespace tallyroom::BoardStatements
