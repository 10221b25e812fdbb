#include "host/screens/Period.h"

#include "common/Format.h"
#include "store/SqlText.h"

#include <algorithm>

namespace tallyroom::host {

QDate lastRecordedDay(Database& database, const HostData& data) {
    constexpr std::size_t sampleSize = 20;
    QDate last;
    for (std::size_t at = 0; at < std::min(sampleSize, data.employees.size()); ++at) {
        const auto rows = database.openRecordset(
            QStringLiteral("Select Max([shift_date]) from [TimeHistory] where [thist_emp] = '%1';")
                .arg(SqlText::escaped(data.employees[at].code)),
            RecordsetType::Snapshot);
        const Variant day = rows->field(0);
        if (day.type() == Variant::Type::Date) // no date comes back as what it is
            last = std::max(last, Dates::toQDateTime(day.toDate()).date());
    }
    return last.isValid() ? last : QDate::currentDate();
}

QString periodCondition(const QString& column, const Period& period) {
    return QStringLiteral("([%1] between #%2# and #%3#)")
        .arg(column, Dates::toText(Dates::fromQDate(period.from)),
             Dates::toText(Dates::fromQDate(period.to)));
}

QString shownDay(const Variant& date) {
    return formatValue(date, QStringLiteral("mm/dd/yyyy"));
}

QString shownDay(QDate day) {
    return shownDay(Variant(Dates::fromQDate(day)));
}

} // namespace tallyroom::host
