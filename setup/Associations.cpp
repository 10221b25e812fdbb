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
    Codes codes;
    for (std::size_t at = 0; at < kinds.size(); ++at) {
        const Variant stored = rows->field(QString::fromUtf16(kinds[at]->association));
        codes[at] = Readable::key(stored) ? stored : Variant::null();
    }
    return codes;
}

void removeAll(const QString& dataPath) {
    Workspace::openAddIn(dataPath)->execute(QStringLiteral("Delete * from [tlyr_assoc];"));
}

void save(const QString& dataPath, const QStringList& codes) {
    Q_ASSERT(codes.size() == 2 || codes.size() == std::ssize(kinds));
    removeAll(dataPath);
    QStringList columns;
    QStringList values;
    for (const QString& code : codes) {
        const AnswerKind& kind = *kinds[static_cast<std::size_t>(values.size())];
        columns.append(QLatin1Char('[') + QString::fromUtf16(kind.association) + QLatin1Char(']'));
        values.append(SqlText::literal(code));
    }
    const QString comma = QStringLiteral(", ");
    Workspace::openAddIn(dataPath)->execute(QStringLiteral("Insert Into [TlYR_Assoc] (") +
                                            columns.join(comma) + QStringLiteral(") Values (") +
                                            values.join(comma) + QStringLiteral(");"));
}

} // namespace tallyroom::Associations
