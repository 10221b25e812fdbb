#include "store/sql/RowGenerator.h"

#include "store/sql/Filling.h"
#include "store/sql/LiteralTexts.h"

namespace tallyroom::sql {

QString RowGenerator::insertRow(const CatalogTable& table, const QStringList& names) const {
    return filled(m_dialect.insertRow, {tableName(table), quotedNames(names), parameters(names)});
}

QString RowGenerator::insertRowOrSkip(const CatalogTable& table, const QStringList& names) const {
    return filled(m_dialect.insertRows,
                  {tableName(table), quotedNames(names), rowOf(parameters(names))});
}

QString RowGenerator::updateRow(const CatalogTable& table, const QStringList& names) const {
    qsizetype number = 0;
    const QString assignments = list(names, [&](const QString& name) {
        return quotedName(name) + QStringLiteral(" = ") + parameter(++number);
    });
    return filled(m_dialect.updateRow,
                  {tableName(table), assignments, QString::fromUtf16(m_dialect.keyColumn),
                   parameter(names.size() + 1)});
}

QString RowGenerator::deleteRow(const CatalogTable& table) const {
    return filled(m_dialect.deleteRow,
                  {tableName(table), QString::fromUtf16(m_dialect.keyColumn), parameter(1)});
}

QString RowGenerator::tableName(const CatalogTable& table) const {
    return quotedName(table.place) + u'.' + quotedName(table.name);
}

QString RowGenerator::tableWithColumns(const CatalogTable& table,
                                       const QStringList& columns) const {
    return tableName(table) + QStringLiteral(" (") + quotedNames(columns) + u')';
}

QString RowGenerator::quotedName(const QString& name) const {
    return quoted(m_dialect.nameQuote, name);
}

QString RowGenerator::quotedNames(const QStringList& names) const {
    return list(names, [this](const QString& name) { return quotedName(name); });
}

QString RowGenerator::parameters(const QStringList& names) const {
    qsizetype number = 0;
    return list(names, [&](const QString&) { return parameter(++number); });
}

QString RowGenerator::parameter(qsizetype number) const {
    return filled(m_dialect.parameter, {QString::number(number)});
}

} // namespace tallyroom::sql
