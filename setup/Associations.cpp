#include "setup/Associations.h"

#include "common/CoreFunctions.h"
#include "store/Recordset.h"
#include "store/Workspace.h"

namespace tallyroom::Associations {

QStringList absentCodeEntries(const QString& dataPath) {
    const auto database = Workspace::openHostOptions(dataPath);
    const auto rows = database->openRecordset(
        QStringLiteral(
            "Select [absent_code], [absent_descr] from [Absentee] order by [Absent_code];"),
        RecordsetType::Snapshot);
    QStringList entries;
    for (; !rows->eof(); rows->moveNext())
        entries.append(
            CoreFunctions::listEntry(rows->field(0).textOrEmpty(), rows->field(1).textOrEmpty()));
    return entries;
}

std::optional<Codes> read(const QString& dataPath) {
    const auto rows = Workspace::openAddIn(dataPath)->openRecordset(
        QStringLiteral("Select * from [tlyr_assoc];"), RecordsetType::Snapshot);
    if (rows->eof())
        return std::nullopt;
    return Codes{rows->field(QStringLiteral("accepted")), rows->field(QStringLiteral("declined")),
                 rows->field(QStringLiteral("accepted2")),
                 rows->field(QStringLiteral("declined2"))};
}

void removeAll(const QString& dataPath) {
    Workspace::openAddIn(dataPath)->execute(QStringLiteral("Delete * from [tlyr_assoc];"));
}

void save(const QString& dataPath, const QStringList& codes) {
    removeAll(dataPath);
    const QString columns = codes.size() == kindCount
                                ? QStringLiteral("[Accepted], [Declined], [Accepted2], [Declined2]")
                                : QStringLiteral("[Accepted], [Declined]");
    Workspace::openAddIn(dataPath)->execute(
        QStringLiteral("Insert Into [TlYR_Assoc] (") + columns + QStringLiteral(") Values ('") +
        codes.join(QStringLiteral("', '")) + QStringLiteral("');"));
}

} // namespace tallyroom::Associations
