// Statements about one row of a table, and how tables are named. Knows no engine.
#pragma once

#include "store/sql/Catalog.h"
#include "store/sql/Dialect.h"

#include <QStringList>

namespace tallyroom::sql {

class RowGenerator {
public:
    explicit RowGenerator(const Dialect& dialect) : m_dialect(dialect) {}

    // With a parameter for each of the columns, then one for the row's key.
    QString insertRow(const CatalogTable& table, const QStringList& columns) const;
    QString insertRowOrSkip(const CatalogTable& table, const QStringList& columns) const;
    QString updateRow(const CatalogTable& table, const QStringList& columns) const;
    QString deleteRow(const CatalogTable& table) const;

    // A table as statements name it, alone and with some of its columns, and any name in quotes.
    QString tableName(const CatalogTable& table) const;
    QString tableWithColumns(const CatalogTable& table, const QStringList& columns) const;
    QString quotedName(const QString& name) const;

protected:
    const Dialect& dialect() const { return m_dialect; }
    QString quotedNames(const QStringList& names) const;
    QString parameter(qsizetype number) const;

private:
    QString parameters(const QStringList& names) const;

    const Dialect& m_dialect;
};

} // namespace tallyroom::sql
