#include "setup/TotallingPeriod.h"

#include "store/Recordset.h"
#include "store/Workspace.h"

namespace tallyroom {

namespace {

std::shared_ptr<Recordset> openPeriod(const QString& dataPath, RecordsetType type) {
    return Workspace::openAddIn(dataPath)->openRecordset(
        QStringLiteral("Select * from [tlyr_period];"), type);
}

const QString fromField = QStringLiteral("from_date");
const QString toField = QStringLiteral("to_date");

} // namespace

std::optional<TotallingPeriod> TotallingPeriod::read(const QString& dataPath) {
    const auto rows = openPeriod(dataPath, RecordsetType::Snapshot);
    if (rows->eof() || rows->field(fromField).isNull() || rows->field(toField).isNull())
        return std::nullopt;
    return TotallingPeriod{rows->field(fromField).toDate(), rows->field(toField).toDate()};
}

void TotallingPeriod::write(const QString& dataPath, const std::optional<TotallingPeriod>& period) {
    const auto rows = openPeriod(dataPath, RecordsetType::Dynaset);
    if (rows->eof())
        rows->addNew();
    else
        rows->edit();
    rows->setField(fromField, period ? Variant(period->from) : Variant::null());
    rows->setField(toField, period ? Variant(period->to) : Variant::null());
    rows->update();
}

} // namespace tallyroom
