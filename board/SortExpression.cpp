#include "board/SortExpression.h"

#include "board/BoardTable.h"
#include "common/TextOrder.h"
#include "common/Variant.h"
#include "ordering/SettingsText.h"

#include <algorithm>

namespace tallyroom {

namespace {

// A checked element of an ordering.
struct Term {
    const BoardColumn* column; // nullptr when no column has the element
    bool isDescending;
};

bool takesPart(const SettingsText& details, const QString& element) {
    return Variant(details.value(element + QStringLiteral("_State"), QStringLiteral("false")))
        .toBoolean();
}

bool isDescending(const SettingsText& details, const QString& element) {
    const Variant code(details.value(element + QStringLiteral("_direction"), QStringLiteral("0")));
    return code.toDouble() != 0;
}

void forEachTerm(const QString& stored, const std::function<void(const Term&)>& take) {
    const SettingsText details(stored);
    for (const QString& element : indexedElements(details)) {
        if (takesPart(details, element))
            take({BoardColumns::ofElement(element), isDescending(details, element)});
    }
}

// As the database orders values of one column: nothing before everything.
int compare(const Variant& left, const Variant& right) {
    if (left.isNull() || right.isNull())
        return static_cast<int>(right.isNull()) - static_cast<int>(left.isNull());
    if (left.type() == Variant::Type::Text)
        return TextOrder::compare(left.toText(), right.toText());
    const double difference = left.toDouble() - right.toDouble();
    return difference < 0 ? -1 : difference > 0 ? 1 : 0;
}

// A term and where its value stands in a row.
struct Key {
    std::size_t position;
    bool isDescending;
};

Key keyOf(const Term& term, const QStringList& names, const BoardOptions& options) {
    const QString field = term.column->fieldFor(options);
    const auto found = std::ranges::find_if(
        names, [&](const QString& name) { return name.compare(field, Qt::CaseInsensitive) == 0; });
    return {static_cast<std::size_t>(found - names.begin()), term.isDescending};
}

bool comesBefore(const Row& left, const Row& right, const std::vector<Key>& keys) {
    for (const Key& key : keys) {
        const int order = compare(left[key.position], right[key.position]);
        if (order != 0)
            return (order < 0) != key.isDescending;
    }
    return false;
}

} // namespace

QString sortExpression(const QString& stored, const BoardOptions& options,
                       const std::function<void()>& unknownElement) {
    QString expression;
    forEachTerm(stored, [&](const Term& term) {
        if (!expression.isEmpty())
            expression += QStringLiteral(", ");
        if (term.column)
            expression += QLatin1Char('[') + term.column->fieldFor(options) + QLatin1Char(']');
        else
            unknownElement();
        expression += term.isDescending ? QStringLiteral(" desc") : QStringLiteral(" asc");
    });
    return expression;
}

bool sortRows(std::vector<BoardRow>& rows, const QString& stored, const BoardOptions& options) {
    const QStringList names = BoardTable::names();
    std::vector<Key> keys;
    bool isKnown = true;
    forEachTerm(stored, [&](const Term& term) {
        if (term.column)
            keys.push_back(keyOf(term, names, options));
        else
            isKnown = false;
    });
    if (!isKnown)
        return false;
    std::vector<std::pair<Row, BoardRow*>> values;
    for (BoardRow& row : rows)
        values.emplace_back(BoardTable::values(row), &row);
    std::ranges::stable_sort(values, [&](const auto& left, const auto& right) {
        return comesBefore(left.first, right.first, keys);
    });
    std::vector<BoardRow> sorted;
    for (const auto& [value, row] : values)
        sorted.push_back(std::move(*row));
    rows = std::move(sorted);
    return true;
}

} // namespace tallyroom
