// Bound statements to an engine's own text. Knows no engine: the dialect says how to write.
#pragma once

#include "store/sql/Bound.h"
#include "store/sql/Dialect.h"

namespace tallyroom::sql {

// Each raises 3360 when the text would grow out of all proportion.
class Generator {
public:
    explicit Generator(const Dialect& dialect) : m_dialect(dialect) {}

    // All columns of all rows.
    QString rows(const BoundSelect& select);
    // For updatable queries: the keys of all rows, in order ...
    QString keys(const BoundSelect& select);
    // ... key and columns of the rows whose keys are the one parameter ...
    QString rowsByKey(const BoundSelect& select);
    // ... the same of the rows of the table for which criteria hold, and their keys alone.
    QString rowsWhere(const BoundSelect& select, const BoundPtr& criteria);
    QString keysWhere(const BoundSelect& select, const BoundPtr& criteria);

    QString deleteRows(const BoundDelete& statement);
    QString insertRows(const BoundInsert& statement);
    QString updateRows(const BoundUpdate& statement);
    QString dropTable(const BoundDrop& statement);

    // One row of a table: with a parameter for each of the columns, then one for its key.
    QString insertRow(const CatalogTable& table, const QStringList& columns) const;
    QString insertRowOrSkip(const CatalogTable& table, const QStringList& columns) const;
    QString updateRow(const CatalogTable& table, const QStringList& columns) const;
    QString deleteRow(const CatalogTable& table) const;

    // A table as statements name it, alone and with some of its columns, and any name in quotes.
    QString tableName(const CatalogTable& table) const;
    QString tableWithColumns(const CatalogTable& table, const QStringList& columns) const;
    QString quotedName(const QString& name) const;

private:
    void append(const BoundNode& node);
    void appendLiteral(const BoundNode& literal);
    QString literalText(const Variant& value) const;
    const char16_t* inTemplate(const BoundNode& in) const;
    void appendSet(const BoundNode& in);
    void appendSubquery(const BoundSelect& select);

    QString text(const BoundNode& node);
    QString texts(const std::vector<BoundPtr>& nodes);
    QString assignmentTexts(const std::vector<BoundAssignment>& assignments);
    QString select(const BoundSelect& select, const QString& columns);
    QString distinct(const BoundSelect& select);
    QString columnText(const BoundSelect& select, const BoundColumn& column);
    QString subselect(const BoundSelect& select);
    QString clause(const char16_t* keyword, const BoundPtr& condition);
    QString order(const BoundSelect& select);
    QString columns(const BoundSelect& select);
    QString key(const BoundSource& source) const;
    QString parameter(qsizetype number) const;
    QString source(const BoundSource& source);
    QString namedRows(const BoundSelect& query);
    QString quotedNames(const QStringList& names) const;
    QString parameters(const QStringList& names) const;

    const Dialect& m_dialect;
    QString m_out;
};

} // namespace tallyroom::sql
