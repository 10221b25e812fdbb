#include "setup/TotallingPeriod.h"

#include "store/Readable.h"
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

Date readDate(const Variant& value) {
    const Variant date = Readable::date(value);
    if (date.isNull())
        throw RunError(
            TotallingPeriod::unreadable,
            QStringLiteral(
                "The totalling period cannot be read: it holds something else than dates."),
            QStringLiteral("Tallyroom"));
    return date.toDate();
}

Variant dayOf(Date date) {
    return {Dates::fromQDate(Dates::dayOf(date))};
}

} // namespace

std::optional<TotallingPeriod> TotallingPeriod::read(const QString& dataPath) {
    const auto rows = openPeriod(dataPath, RecordsetType::Snapshot);
    if (rows->eof() || rows->field(fromField).isNull() || rows->field(toField).isNull())
        return std::nullopt;
    return TotallingPeriod{readDate(rows->field(fromField)), readDate(rows->field(toField))};
}

void TotallingPeriod::write(const QString& dataPath, const std::optional<TotallingPeriod>& period) {
    const auto rows = openPeriod(dataPath, RecordsetType::Dynaset);
    if (rows->eof())
        rows->addNew();
    else
        rows->edit();
    rows->setField(fromField, period ? dayOf(period->from) : Variant::null());
    rows->setField(toField, period ? dayOf(period->to) : Variant::null());
    rows->update();
}

} // namespace tallyroom
