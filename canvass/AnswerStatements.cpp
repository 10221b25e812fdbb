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

Standing::EntryKey entryOf(const Answer& answer, const AnswerRequest& request) {
    return {Dates::now(),
            request.user,
            answer.emp.trimmed(),
            answer.date,
            answer.kind.action,
            answer.minutes,
            QString::fromUtf16(answer.kind.history)};
}

QString auditInsert(const Standing::EntryKey& entry) {
    return QStringLiteral("Insert Into [TLYR_Audit] ([") +
           Standing::keyColumns().join(QStringLiteral("], [")) + QStringLiteral("]) Values (") +
           Standing::keyValues(entry) + QStringLiteral(");");
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
    : entry(entryOf(answer, request)), history(historyInsert(answer, request)),
      audit(auditInsert(entry)), board(boardUpdate(answer, request)),
      employee(SqlText::literal(answer.emp)) {}

} // namespace tallyroom
