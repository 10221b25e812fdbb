#include "setup/Associations.h"

#include "common/CoreFunctions.h"
#include "store/Readable.h"
#include "store/Recordset.h"
#include "store/SqlText.h"
#include "store/Workspace.h"

namespace tallyroom::Associations {

QStringList absentCodeEntries(const QString& dataPath) {
    const auto database = Workspace::openHostOptions(dataPath);
    const auto rows = database->openRecordset(
        QStringLiteral(
            "Select [absent_code], [absent_descr] from [Absentee] order by [Absent_code];"),
        RecordsetType::Snapshot);
    QStringList entries;
    for (; !rows->eof(); rows->moveNext()) {
        if (const auto code = Readable::key(rows->field(0)))
            entries.append(CoreFunctions::listEntry(*code, Readable::text(rows->field(1))));
    }
    return entries;
}

std::optional<Codes> read(const QString& dataPath) {
    const auto rows = Workspace::openAddIn(dataPath)->openRecordset(
        QStringLiteral("Select * from [tlyr_assoc];"), RecordsetType::Snapshot);
    if (rows->eof())
        return std::nullopt;
    const auto code = [&](const QString& column) {
        Variant stored = rows->field(column);
        return Readable::key(stored) ? stored : Variant::null();
    };
    return Codes{code(QStringLiteral("accepted")), code(QStringLiteral("declined")),
                 code(QStringLiteral("accepted2")), code(QStringLiteral("declined2"))};
}

void removeAll(const QString& dataPath) {
    Workspace::openAddIn(dataPath)->execute(QStringLiteral("Delete * from [tlyr_assoc];"));
}

void save(const QString& dataPath, const QStringList& codes) {
    removeAll(dataPath);
    const QString columns = codes.size() == kindCount
                                ? QStringLiteral("[Accepted], [Declined], [Accepted2], [Declined2]")
                                : QStringLiteral("[Accepted], [Declined]");
    QStringList values;
    for (const QString& code : codes)
        values.append(SqlText::literal(code));
    Workspace::openAddIn(dataPath)->execute(
        QStringLiteral("Insert Into [TlYR_Assoc] (") + columns + QStringLiteral(") Values (") +
        values.join(QStringLiteral(", ")) + QStringLiteral(");"));
}

} // namespace tallyroom::Associations
