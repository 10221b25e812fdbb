#include "ordering/Orderings.h"

#include "store/Readable.h"
#include "store/Recordset.h"
#include "store/SqlText.h"
#include "store/Workspace.h"

namespace tallyroom::Orderings {

namespace {

const QString descrField = QStringLiteral("descr");
const QString detailsField = QStringLiteral("details");

QString details(const Recordset& rows) {
    return Readable::text(rows.field(detailsField));
}

// All orderings, with the one of this description as the current row, if there is one.
std::shared_ptr<Recordset> find(const QString& dataPath, const QString& descr) {
    auto rows = Workspace::openAddIn(dataPath)->openRecordset(
        QStringLiteral("Select * from [tlyr_order];"), RecordsetType::Dynaset);
    rows->findFirst(QStringLiteral("[descr] = ") + SqlText::criterion(descr.trimmed()));
    return rows;
}

} // namespace

Stored readAll(const QString& dataPath) {
    const auto rows = Workspace::openAddIn(dataPath)->openRecordset(
        QStringLiteral("Select * from [tlyr_order] order by [descr];"), RecordsetType::Dynaset);
    Stored stored;
    for (; !rows->eof(); rows->moveNext()) {
        if (auto descr = Readable::key(rows->field(descrField)))
            stored.orderings.push_back({std::move(*descr), details(*rows)});
        else
            ++stored.unreadable;
    }
    return stored;
}

std::optional<Ordering> read(const QString& dataPath, const QString& descr) {
    const auto rows = Workspace::openAddIn(dataPath)->openRecordset(
        QStringLiteral("Select * from [tlyr_order] where ([descr] = ") + SqlText::literal(descr) +
            QStringLiteral(");"),
        RecordsetType::Dynaset);
    if (rows->eof())
        return std::nullopt;
    return Ordering{rows->field(descrField).toText(), details(*rows)};
}

SaveResult add(const QString& dataPath, const Ordering& ordering) {
    const auto rows = find(dataPath, ordering.descr);
    if (!rows->noMatch())
        return SaveResult::Duplicate;
    rows->addNew();
    rows->setField(descrField, ordering.descr);
    rows->setField(detailsField, ordering.details);
    rows->update();
    return SaveResult::Saved;
}

SaveResult change(const QString& dataPath, const Ordering& ordering) {
    const auto rows = find(dataPath, ordering.descr);
    if (rows->noMatch())
        return SaveResult::NotFound;
    rows->edit();
    rows->setField(detailsField, ordering.details);
    rows->update();
    return SaveResult::Saved;
}

void remove(const QString& dataPath, const QString& descr) {
    Workspace::openAddIn(dataPath)->execute(
        QStringLiteral("delete * from [tlyr_order] where [descr] = ") + SqlText::literal(descr) +
        QLatin1Char(';'));
}

} // namespace tallyroom::Orderings
