#include "audit/AuditDeletion.h"

#include "common/RunError.h"
#include "common/Units.h"
#include "store/Database.h"
#include "store/SqlText.h"
#include "store/Workspace.h"

namespace tallyroom {

namespace {

QString historyColumn(const QString& action) {
    if (action == QLatin1String("Accepted"))
        return QStringLiteral("TLYRAccepted");
    if (action == QLatin1String("Declined"))
        return QStringLiteral("TLYRDeclined");
    return {};
}

} // namespace

void deleteAuditLine(const QString& dataPath, const AuditEntries::Line& line) {
    Variant(line.value(0)).toDate(); // must read as a date, and is not used further
    const QString code = SqlText::literal(line.value(1));
    const QString user = SqlText::literal(line.value(3));
    const QString day = SqlText::literal(Variant(line.value(4)).toDate());
    const QString field = historyColumn(line.value(5));
    if (line.value(6).isEmpty()) // which would read as no minutes, and be found as such
        throw RunError::make(ErrorNumber::typeMismatch);
    const QString minutes = QString::number(TimeConversion::toMinutes(line.value(6)));
    const bool accepted = field == QLatin1String("TLYRAccepted");
    const QString removal = QStringLiteral("Delete * from [TimeHistory] where ([thist_emp] = ") +
                            code + QStringLiteral(") and ([shift_date] = ") + day +
                            QStringLiteral(") and (") + SqlText::name(field) +
                            QStringLiteral(" = ") + minutes + QStringLiteral(");");
    const QString mark =
        QStringLiteral("Update [TLYR_Audit] Set [Action] = 2 Where ([Emp_Code] = ") + code +
        QStringLiteral(") and ([date] = ") + day + QStringLiteral(") and ([action] = ") +
        (accepted ? QStringLiteral("0") : QStringLiteral("1")) + QStringLiteral(") and ([OT] = ") +
        minutes + QStringLiteral(") and ([User] = ") + user + QStringLiteral(");");
    const auto host = Workspace::openHostOptions(dataPath);
    const auto addIn = Workspace::openAddIn(dataPath);
    Transaction history(host, TransactionKind::Reserve);
    Transaction audit(addIn, TransactionKind::Reserve);
    host->execute(removal);
    history.commit();
    addIn->execute(mark);
    audit.commit();
}

} // namespace tallyroom
