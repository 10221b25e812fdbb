#include "audit/AuditDeletion.h"

#include "audit/DeskNews.h"
#include "audit/Standing.h"
#include "common/AnswerKind.h"
#include "common/RunError.h"
#include "common/Units.h"
#include "store/Database.h"
#include "store/SqlText.h"
#include "store/Workspace.h"

namespace tallyroom {

namespace {

// "TLYRAccepted" or "TLYRDeclined"; no name for any other action.
QString historyColumn(const QString& action) {
    const bool isAnswer =
        action == actionName(AuditAction::Accepted) || action == actionName(AuditAction::Declined);
    return isAnswer ? QStringLiteral("TLYR") + action : QString();
}

} // namespace

void deleteAuditLine(const QString& dataPath, const AuditEntries::Line& line) {
    using enum AuditEntries::Column;
    Variant(line.value(SystemDate)).toDate(); // must read as a date, and is not used further
    const QString code = SqlText::literal(line.value(Code));
    const QString user = SqlText::literal(line.value(User));
    const QString day = SqlText::literal(Variant(line.value(CanvassDate)).toDate());
    const QString action = line.value(Action);
    if (line.value(Time).isEmpty()) // which would read as no minutes, and be found as such
        throw RunError::make(ErrorNumber::typeMismatch);
    const QString minutes = QString::number(TimeConversion::toMinutes(line.value(Time)));
    const bool accepted = action == actionName(AuditAction::Accepted);
    const QString removal = QStringLiteral("Delete * from [TimeHistory] where ([thist_emp] = ") +
                            code + QStringLiteral(") and ([shift_date] = ") + day +
                            QStringLiteral(") and (") + SqlText::name(historyColumn(action)) +
                            QStringLiteral(" = ") + minutes + QStringLiteral(");");
    const QString entries =
        QStringLiteral("([Emp_Code] = ") + code + QStringLiteral(") and ([date] = ") + day +
        QStringLiteral(") and ([action] = ") +
        QString::number(
            static_cast<int>(accepted ? AuditAction::Accepted : AuditAction::Declined)) +
        QStringLiteral(") and ([OT] = ") + minutes + QStringLiteral(") and ([User] = ") + user +
        QLatin1Char(')');
    const QString mark =
        QStringLiteral("Update [TLYR_Audit] Set [Action] = 2 Where ") + entries + QLatin1Char(';');
    const auto host = Workspace::openHostOptions(dataPath);
    const auto addIn = Workspace::openAddIn(dataPath);
    Transaction history(host, TransactionKind::Reserve);
    Transaction audit(addIn, TransactionKind::Reserve);
    host->execute(removal);
    host->announce(DeskNews::answerTakenBack);
    history.commit();
    Standing::write(*addIn, {Standing::markDeleted(entries)});
    addIn->execute(mark);
    if (addIn->inTransaction()) // which a disk that fails has undone meanwhile
        audit.commit();
}

} // namespace tallyroom
