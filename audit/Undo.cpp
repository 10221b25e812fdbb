#include "audit/Undo.h"

#include "audit/DeskNews.h"
#include "audit/Standing.h"
#include "audit/UndoLine.h"
#include "common/HostContext.h"
#include "store/Readable.h"
#include "store/Recordset.h"
#include "store/SqlText.h"
#include "store/Workspace.h"

namespace tallyroom::Undo {

namespace {

// The entries that have a column of the time history; the others take no part.
std::shared_ptr<Recordset> openAudit(const HostContext& context, const QString& condition,
                                     const QString& order) {
    return Workspace::openAddIn(context.DataPath)
        ->openRecordset(QStringLiteral("Select * from [tlyr_Audit] where ") + condition +
                            QStringLiteral("([tHistField] <> NULL)") + order + QLatin1Char(';'),
                        RecordsetType::Dynaset);
}

QString byUser(const HostContext& context) {
    return QStringLiteral("([user] = ") + SqlText::literal(context.CurrentUser) +
           QStringLiteral(") and ");
}

std::shared_ptr<Recordset> openList(const HostContext& context) {
    return openAudit(context, context.isMaster() ? QString() : byUser(context),
                     QStringLiteral(" order by [date], [emp_code]"));
}

UndoLine lineOf(const Recordset& entry, const QString& code, bool breakOut) {
    UndoLine line;
    line.code = code;
    if (const Variant date = Readable::date(entry.field(QStringLiteral("date"))); !date.isNull())
        line.date = date.toDate();
    const Variant action = Readable::number(entry.field(QStringLiteral("action")));
    if (!action.isNull() && action.toLong() == static_cast<int>(AuditAction::Declined))
        line.action = AuditAction::Declined;
    if (breakOut)
        line.rate = rateOf(Readable::text(entry.field(QStringLiteral("thistfield"))));
    if (const Variant minutes = Readable::number(entry.field(QStringLiteral("ot")));
        !minutes.isNull())
        line.minutes = minutes.toLong();
    return line;
}

QString transactionOf(const Recordset& entry) {
    const QString minutes = QString::number(entry.field(QStringLiteral("ot")).toLong());
    return QStringLiteral("select * from [TimeHistory] where ([thist_emp] = ") +
           SqlText::literal(entry.field(QStringLiteral("emp_code")).toText()) +
           QStringLiteral(") and ([shift_date] = ") +
           SqlText::literal(entry.field(QStringLiteral("date")).toDate()) +
           QStringLiteral(") and (") +
           SqlText::name(entry.field(QStringLiteral("thistfield")).toText()) +
           QStringLiteral(" = ") + minutes + QLatin1Char(')');
}

// One transaction only, even if several are alike.
void removeTransaction(Database& host, const QString& query) {
    const auto rows = host.openRecordset(query, RecordsetType::Dynaset);
    if (!rows->eof())
        rows->remove();
}

} // namespace

Lines lines(const HostContext& context, bool breakOut) {
    const auto rows = openList(context);
    Lines result;
    Date latest;
    for (; !rows->eof(); rows->moveNext()) {
        const auto code = Readable::key(rows->field(QStringLiteral("emp_code")));
        if (!code) {
            ++result.unreadable;
            continue;
        }
        const Variant recorded = Readable::date(rows->field(QStringLiteral("now")));
        if (!recorded.isNull() && (result.latest < 0 || recorded.toDate() >= latest)) {
            latest = recorded.toDate();
            result.latest = static_cast<int>(result.texts.size());
        }
        result.texts.append(lineOf(*rows, *code, breakOut).text());
    }
    return result;
}

QString employeeName(const HostContext& context, const QString& line) {
    const auto host = Workspace::openHostOptions(context.DataPath);
    const Impatience atOnce(host);
    const auto rows =
        host->openRecordset(QStringLiteral("Select [emp_name] from [Employee] where "
                                           "([emp_code] = ") +
                                SqlText::literal(UndoLine::codeIn(line)) + QStringLiteral(");"),
                            RecordsetType::Snapshot);
    return rows->eof() ? QString() : Readable::text(rows->field(0));
}

void take(const HostContext& context, const QString& line, bool breakOut) {
    const auto rows = openAudit(context, byUser(context), {});
    rows->findFirst(UndoLine::fromText(line, breakOut).criterion());
    if (rows->noMatch())
        return;
    const QString query = transactionOf(*rows);
    const auto host = Workspace::openHostOptions(context.DataPath);
    Transaction history(host, TransactionKind::Reserve);
    Transaction audit(rows->database(), TransactionKind::Reserve);
    rows->edit(); // raises when somebody has taken it back meanwhile
    rows->cancelUpdate();
    removeTransaction(*host, query);
    host->announce(DeskNews::answerTakenBack);
    history.commit();
    Standing::write(*rows->database(), Standing::takeBack(*rows));
    rows->remove();
    if (rows->database()->inTransaction()) // which a disk that fails has undone meanwhile
        audit.commit();
}

} // namespace tallyroom::Undo
