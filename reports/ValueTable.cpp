#include "reports/ValueTable.h"

#include "common/Format.h"
#include "common/TextOrder.h"
#include "common/Units.h"

#include <algorithm>

namespace tallyroom {

CellAlignment ValueTable::Column::alignment() const {
    const bool counts = kind == ValueKind::Number || kind == ValueKind::Minutes;
    return counts ? CellAlignment::Right : CellAlignment::Left;
}

TextTable ValueTable::texts() const {
    TextTable table;
    for (const Column& column : columns) {
        if (column.hasValues())
            table.columns.push_back({column.heading, column.alignment()});
    }
    for (const Row& row : rows) {
        QStringList cells;
        for (std::size_t at = 0; at < columns.size(); ++at) {
            if (columns[at].hasValues())
                cells << shownValue(columns[at].kind, row[at]);
        }
        table.rows.push_back(std::move(cells));
    }
    return table;
}

QString shownValue(ValueKind kind, const Variant& value) {
    if (value.isNull() || value.isEmpty())
        return {};
    switch (kind) {
    case ValueKind::Minutes:
        return minutesAsTime(value);
    case ValueKind::TimeOfDay:
        return formatValue(value, QStringLiteral("hh:nn"));
    case ValueKind::Day:
        return formatValue(value, QStringLiteral("mm/dd/yyyy"));
    case ValueKind::Moment:
        return formatValue(value, QStringLiteral("mm/dd/yyyy hh:nn"));
    default:
        return value.textOrEmpty();
    }
}

bool comesBefore(const Variant& left, const Variant& right) {
    const bool hasLeft = !left.isNull() && !left.isEmpty();
    const bool hasRight = !right.isNull() && !right.isEmpty();
    if (!hasLeft || !hasRight)
        return !hasLeft && hasRight;
    if (left.type() == Variant::Type::Text || right.type() == Variant::Type::Text)
        return TextOrder::compare(left.textOrEmpty(), right.textOrEmpty()) < 0;
    return left.toDouble() < right.toDouble();
}

void sortByColumn(ValueTable& table, std::size_t column, Qt::SortOrder order) {
    const auto last = table.rows.end() - table.sumRows;
    std::stable_sort(table.rows.begin(), last, [&](const Row& a, const Row& b) {
        return order == Qt::AscendingOrder ? comesBefore(a[column], b[column])
                                           : comesBefore(b[column], a[column]);
    });
}

} // namespace tallyroom
