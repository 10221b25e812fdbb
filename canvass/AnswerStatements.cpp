#include "canvass/AnswerStatements.h"

#include "canvass/AnswerRecording.h"
#include "common/Units.h"
#include "store/SqlText.h"

namespace tallyroom {

namespace {

// The minutes stand in the transaction as its start, before a stop at midnight.
QString historyInsert(const Answer& answer, const AnswerRequest& request) {
    using SqlText::literal;
    const QString comma = QStringLiteral(", ");
    const Date start = TimeConversion::timeAsDate(TimeConversion::toTimeText(answer.minutes));
    const QString day = literal(answer.date);
    return QStringLiteral("Insert Into [TimeHistory] ([thist_emp], [rule], [thist_date], "
                          "[shift_date], [thist_record_type], [thist_shift], [thist_dept], "
                          "[thist_start_time], [thist_stop_time], [thist_attend_code], [") +
           QString::fromUtf16(answer.kind.history) + QStringLiteral("], [Notes]) Values (") +
           QStringList{literal(answer.emp),
                       literal(answer.rule),
                       day,
                       day,
                       QStringLiteral("'AR'"),
                       literal(answer.shift),
                       literal(request.department),
                       literal(start),
                       QStringLiteral("#0:00#"),
                       literal(answer.absentCode),
                       QString::number(answer.minutes),
                       literal(request.comment)}
               .join(comma) +
           QStringLiteral(");");
}

QString auditInsert(const Answer& answer, const AnswerRequest& request) {
    using SqlText::literal;
    return QStringLiteral("Insert Into [TLYR_Audit] ([Now], [User], [Emp_Code], [Date], "
                          "[Action], [OT], [tHistField]) Values (") +
           QStringList{literal(Dates::now()),
                       literal(request.user),
                       literal(answer.emp.trimmed()),
                       literal(answer.date),
                       QString::number(static_cast<int>(answer.kind.action)),
                       QString::number(answer.minutes),
                       literal(QString::fromUtf16(answer.kind.history))}
               .join(QStringLiteral(", ")) +
           QStringLiteral(");");
}

// Where rates are told apart the column is spelled with a small "t", which is the same to the
// database.
QString boardUpdate(const Answer& answer, const AnswerRequest& request) {
    QString column = QString::fromUtf16(answer.kind.board);
    if (request.breakOut)
        column[1] = QLatin1Char('t');
    return QStringLiteral("Update [tlyrTemp] Set [%1] = Iif(Isnull([%1]),0,[%1]) + ").arg(column) +
           QString::number(answer.minutes) + QStringLiteral(" Where ([Emp_Code] = ") +
           SqlText::literal(answer.emp) + QStringLiteral(");");
}

} // namespace

AnswerStatements::AnswerStatements(const Answer& answer, const AnswerRequest& request)
    : history(historyInsert(answer, request)), audit(auditInsert(answer, request)),
      board(boardUpdate(answer, request)), employee(SqlText::literal(answer.emp)) {}

} // namespace tallyroom
