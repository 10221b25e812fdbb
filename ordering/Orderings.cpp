#include "ordering/Orderings.h"

#include "store/Recordset.h"
#include "store/Workspace.h"

namespace tallyroom::Orderings {

namespace {

const QString descrField = QStringLiteral("descr");
const QString detailsField = QStringLiteral("details");

Ordering current(const Recordset& rows) {
    return {rows.field(descrField).textOrEmpty(), rows.field(detailsField).textOrEmpty()};
}

// All orderings, with the one of this description as the current row, if there is one.
std::shared_ptr<Recordset> find(const QString& dataPath, const QString& descr) {
    auto rows = Workspace::openAddIn(dataPath)->openRecordset(
        QStringLiteral("Select * from [tlyr_order];"), RecordsetType::Dynaset);
    rows->findFirst(QStringLiteral("[descr] = '") + descr.trimmed() + QLatin1Char('\''));
    return rows;
}

} // namespace

std::vector<Ordering> readAll(const QString& dataPath) {
    const auto rows = Workspace::openAddIn(dataPath)->openRecordset(
        QStringLiteral("Select * from [tlyr_order] order by [descr];"), RecordsetType::Dynaset);
    std::vector<Ordering> orderings;
    for (; !rows->eof(); rows->moveNext())
        orderings.push_back(current(*rows));
    return orderings;
}

std::optional<Ordering> read(const QString& dataPath, const QString& descr) {
    const auto rows = Workspace::openAddIn(dataPath)->openRecordset(
        QStringLiteral("Select * from [tlyr_order] where ([descr] = '") + descr +
            QStringLiteral("');"),
        RecordsetType::Dynaset);
    if (rows->eof())
        return std::nullopt;
    return current(*rows);
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
        QStringLiteral("delete * from [tlyr_order] where [descr] = '") + descr +
        QStringLiteral("';"));
}

} // namespace tallyroom::Orderings
