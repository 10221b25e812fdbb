#include "reports/Absences.h"

#include "audit/Moments.h"
#include "common/TextOrder.h"
#include "store/Readable.h"
#include "store/Recordset.h"

namespace tallyroom {

QHash<QString, QString> readPairs(Database& database, const QString& statement) {
    const auto rows = database.openRecordset(statement, RecordsetType::Snapshot);
    QHash<QString, QString> texts;
    for (; !rows->eof(); rows->moveNext())
        texts.insert(TextOrder::folded(Readable::text(rows->field(0))),
                     Readable::text(rows->field(1)));
    return texts;
}

// Answers carry minutes.
QHash<QString, QString> absencesOn(Database& host, const QString& filter, QDate day) {
    QHash<QString, QString> absences = readPairs(
        host, QStringLiteral("Select [thist_emp], [thist_attend_code] from [TimeHistory] where "
                             "([thist_emp] %1) and ([thist_record_type] = 'AR') and "
                             "IsNull([tlyrAccepted]) and IsNull([tlyrAccepted2]) and "
                             "IsNull([tlyrDeclined]) and IsNull([tlyrDeclined2]) and %2;")
                  .arg(filter, Moments::within(QStringLiteral("shift_date"), day, day)));
    const QHash<QString, QString> reasons =
        readPairs(host, QStringLiteral("Select [absent_code], [absent_descr] from [Absentee];"));
    for (QString& reason : absences)
        reason = reasons.value(TextOrder::folded(reason), reason);
    return absences;
}

} // namespace tallyroom
