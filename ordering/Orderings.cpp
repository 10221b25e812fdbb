#include "ordering/Orderings.h"

#include "store/Recordset.h"
#include "store/Workspace.h"

namespace tallyroom {

std::vector<Ordering> readOrderings(const QString& dataPath) {
    const auto database = Workspace::openDatabase(dataPath + QStringLiteral("\\aidb01.mdb"));
    const auto rows = database->openRecordset(
        QStringLiteral("Select * from [tlyr_order] order by [descr];"), RecordsetType::Dynaset);
    std::vector<Ordering> orderings;
    for (; !rows->eof(); rows->moveNext())
        orderings.push_back({rows->field(QStringLiteral("descr")).textOrEmpty(),
                             rows->field(QStringLiteral("details")).textOrEmpty()});
    return orderings;
}

} // namespace tallyroom
