#include "reports/AuditReading.h"

#include "audit/Moments.h"
#include "common/Units.h"
#include "store/Readable.h"
#include "store/Recordset.h"
#include "store/SqlText.h"

namespace tallyroom {

namespace {

enum Column { Now, User, EmpCode, Day, Action, OT, HistField }; // as Standing::keyColumns()

std::optional<Standing::EntryKey> entryOf(const Recordset& row) {
    const Variant now = Readable::date(row.field(Now));
    const auto code = Readable::key(row.field(EmpCode));
    const Variant day = Readable::date(row.field(Day));
    const Variant action = Readable::number(row.field(Action));
    const Variant minutes = Readable::number(row.field(OT));
    if (now.isNull() || !code || day.isNull() || action.isNull() || minutes.isNull())
        return std::nullopt;
    return Standing::EntryKey{now.toDate(),
                              Readable::text(row.field(User)),
                              *code,
                              day.toDate(),
                              static_cast<AuditAction>(action.toLong()),
                              minutes.toLong(),
                              Readable::text(row.field(HistField))};
}

std::vector<Standing::EntryKey> read(Database& addIn, const QString& condition) {
    const auto rows = addIn.openRecordset(
        QStringLiteral("Select [%1] from [TLYR_Audit] where %2 order by [Now];")
            .arg(Standing::keyColumns().join(QStringLiteral("], [")), condition),
        RecordsetType::Snapshot);
    std::vector<Standing::EntryKey> entries;
    for (; !rows->eof(); rows->moveNext()) {
        if (auto entry = entryOf(*rows))
            entries.push_back(std::move(*entry));
    }
    return entries;
}

} // namespace

std::vector<Standing::EntryKey> entriesOf(Database& addIn, QDate day) {
    return entriesWithin(addIn, QStringLiteral("Date"), day, day);
}

std::vector<Standing::EntryKey> entriesWithin(Database& addIn, const QString& column, QDate from,
                                              QDate to) {
    return read(addIn, Moments::within(column, from, to));
}

std::vector<Standing::EntryKey> entriesSince(Database& addIn, Date moment,
                                             const std::optional<TotallingPeriod>& period) {
    QString condition = QStringLiteral("([Now] >= %1)").arg(SqlText::literal(moment));
    if (period)
        condition += QStringLiteral(" and ([Date] between %1 and %2)")
                         .arg(SqlText::literal(period->from), SqlText::literal(period->to));
    return read(addIn, condition);
}

QString entryText(const Standing::EntryKey& entry) {
    const Rate rate = rateOf(entry.historyColumn);
    const QString atRate =
        rate == Rate::Double ? QStringLiteral(" at ") + rateName(rate) : QString();
    return actionName(entry.action) + u' ' + TimeConversion::toShortText(entry.minutes) + atRate +
           QStringLiteral(", ") + Moments::text(entry.now) + QStringLiteral(" by ") + entry.user;
}

} // namespace tallyroom
