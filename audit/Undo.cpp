#include "audit/Undo.h"

#include "audit/AuditEntries.h"
#include "audit/UndoLine.h"
#include "common/HostContext.h"
#include "store/Recordset.h"
#include "store/Workspace.h"

namespace tallyroom::Undo {

namespace {

std::shared_ptr<Recordset> openAudit(const HostContext& context, const QString& condition) {
    return Workspace::openAddIn(context.DataPath)
        ->openRecordset(QStringLiteral("Select * from [tlyr_Audit]") + condition + QLatin1Char(';'),
                        RecordsetType::Dynaset);
}

QString byUser(const HostContext& context) {
    return QStringLiteral("[user] = '") + context.CurrentUser + QLatin1Char('\'');
}

std::shared_ptr<Recordset> openList(const HostContext& context) {
    const QString recorded = QStringLiteral("([tHistField] <> NULL) order by [date], [emp_code]");
    if (context.isMaster())
        return openAudit(context, QStringLiteral(" where ") + recorded);
    return openAudit(context, QStringLiteral(" where (") + byUser(context) +
                                  QStringLiteral(") and ") + recorded);
}

UndoLine lineOf(const Recordset& entry, bool breakOut) {
    UndoLine line;
    line.code = entry.field(QStringLiteral("emp_code")).textOrEmpty();
    if (const Variant date = entry.field(QStringLiteral("date")); !date.isNull())
        line.date = date.toDate();
    const Variant action = entry.field(QStringLiteral("action"));
    line.declined = !action.isNull() && action.toLong() == static_cast<int>(AuditAction::Declined);
    line.breakOut = breakOut;
    line.isDouble = entry.field(QStringLiteral("thistfield")).toText().endsWith(QLatin1Char('2'));
    if (const Variant minutes = entry.field(QStringLiteral("ot")); !minutes.isNull())
        line.minutes = minutes.toLong();
    return line;
}

// One transaction only, even if several are alike.
void removeTransaction(const HostContext& context, const Recordset& entry) {
    const auto rows =
        Workspace::openHostOptions(context.DataPath)
            ->openRecordset(QStringLiteral("select * from [TimeHistory] where ([thist_emp] = '") +
                                entry.field(QStringLiteral("emp_code")).toText() +
                                QStringLiteral("') and ([shift_date] = #") +
                                Dates::toText(entry.field(QStringLiteral("date")).toDate()) +
                                QStringLiteral("#) and ([") +
                                entry.field(QStringLiteral("thistfield")).toText() +
                                QStringLiteral("] = ") +
                                entry.field(QStringLiteral("ot")).toText() + QLatin1Char(')'),
                            RecordsetType::Dynaset);
    if (!rows->eof())
        rows->remove();
}

} // namespace

QStringList lines(const HostContext& context, bool breakOut) {
    const auto rows = openList(context);
    QStringList result;
    for (; !rows->eof(); rows->moveNext())
        result.append(lineOf(*rows, breakOut).text());
    return result;
}

void take(const HostContext& context, const QString& line, bool breakOut) {
    const auto rows = openAudit(context, QStringLiteral(" where ") + byUser(context));
    rows->findFirst(UndoLine::fromText(line, breakOut).criterion());
    if (rows->noMatch())
        return;
    removeTransaction(context, *rows);
    rows->remove();
}

} // namespace tallyroom::Undo
