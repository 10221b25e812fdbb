#include "tests/store/StatementMaker.h"

#include "common/DateParser.h"

#include <algorithm>

namespace tallyroom {

std::vector<Row> StatementMaker::rows(const MadeTable& table) {
    const auto orNull = [this](const Variant& value) {
        return upTo(5) == 0 ? Variant::null() : value;
    };
    std::vector<Row> result(static_cast<std::size_t>(upTo(16)));
    for (Row& row : result) {
        for (std::size_t at = 0; at < table.texts.size(); ++at)
            row.push_back(orNull(Variant(anyText())));
        for (std::size_t at = 0; at < table.numbers.size(); ++at)
            row.push_back(orNull(Variant(anyNumber(at >= table.wholes))));
        for (std::size_t at = 0; at < table.dates.size(); ++at)
            row.push_back(orNull(Variant(*Dates::parse(anyDate()))));
    }
    return result;
}

MadeQuery StatementMaker::query() {
    m_tables = {&anyOf(madeTables())};
    switch (upTo(4)) {
    case 0:
        return distinct();
    case 1:
        return grouped();
    default:
        return plain();
    }
}

QString StatementMaker::from() {
    return QStringLiteral(" From [%1]").arg(q(m_tables.back()->name)) + where(3);
}

MadeQuery StatementMaker::plain() {
    QStringList items{upTo(9) == 0 ? QStringLiteral("*") : value(3)};
    for (int count = upTo(3); count > 0; --count)
        items << value(3);
    MadeQuery result{QStringLiteral("Select ") + items.join(QStringLiteral(", ")) + from(), 0,
                     true};
    if (upTo(2) == 0)
        result.sql += QStringLiteral(" Order By ") + value(2) +
                      (upTo(2) == 0 ? QStringLiteral(" Desc") : QString());
    return result;
}

MadeQuery StatementMaker::distinct() {
    const QString first = value(2);
    MadeQuery result{QStringLiteral("Select Distinct %1, %2").arg(first, value(2)) + from()};
    if (upTo(2) == 0) {
        result.sql +=
            upTo(2) == 0 ? QStringLiteral(" Order By 1, 2") : QStringLiteral(" Order By 1 Desc");
        result.keys = 1;
    }
    return result;
}

// Of a group's texts, which spelling comes out is left open: nothing is computed from it.
MadeQuery StatementMaker::grouped() {
    const auto group = [this] { return upTo(2) == 0 ? value(2) : column(&MadeTable::texts); };
    QStringList groups;
    for (int count = upTo(3); count > 0; --count)
        groups << group();
    QStringList items = groups;
    for (int count = upTo(3); count >= 0; --count)
        items << (upTo(4) == 0 ? call(upTo(2) == 0 ? u"Min" : u"Max", {text(1)}) : aggregate(2));
    MadeQuery result{QStringLiteral("Select ") + items.join(QStringLiteral(", ")) + from(),
                     static_cast<int>(groups.size())};
    if (!groups.isEmpty())
        result.sql += QStringLiteral(" Group By ") + groups.join(QStringLiteral(", "));
    if (upTo(3) == 0)
        result.sql += QStringLiteral(" Having ") +
                      joined(aggregate(1), upTo(2) == 0 ? u">" : u"<>", number(0));
    return result;
}

QString StatementMaker::change() {
    const MadeTable& table = anyOf(madeTables());
    const QString name = u'[' + q(table.name) + u']';
    m_tables = {&table};
    QStringList names = table.columns();
    std::shuffle(names.begin(), names.end(), m_random);
    names.resize(1 + upTo(3));
    if (upTo(3) == 0)
        return QStringLiteral("Delete From ") + name + where(9);
    if (upTo(2) == 0) {
        QStringList assignments;
        for (const QString& column : std::as_const(names))
            assignments << u'[' + column + QStringLiteral("] = ") + value(2);
        return QStringLiteral("Update ") + name + QStringLiteral(" Set ") +
               assignments.join(QStringLiteral(", ")) + where(4);
    }
    QStringList values;
    for (qsizetype count = names.size(); count > 0; --count)
        values << value(2);
    return QStringLiteral("Insert Into %1 ([%2]) Select %3")
               .arg(name, names.join(QStringLiteral("], [")), values.join(QStringLiteral(", "))) +
           from();
}

} // namespace tallyroom
