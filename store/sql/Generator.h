// Bound statements to an engine's own text. Knows no engine: the dialect says how to write.
#pragma once

#include "store/sql/Bound.h"
#include "store/sql/RowGenerator.h"

namespace tallyroom::sql {

// Each raises 3360 when the text would grow out of all proportion.
class Generator : public RowGenerator {
public:
    using RowGenerator::RowGenerator;

    // All columns of all rows.
    QString rows(const BoundSelect& select);
    // For updatable queries: the keys of all rows, in order ...
    QString keys(const BoundSelect& select);
    // ... the same with the columns ...
    QString keysAndRows(const BoundSelect& select);
    // ... key and columns of the rows whose keys are the one parameter ...
    QString rowsByKey(const BoundSelect& select);
    // ... the same of the rows of the table for which criteria hold, and their keys alone.
    QString rowsWhere(const BoundSelect& select, const BoundPtr& criteria);
    QString keysWhere(const BoundSelect& select, const BoundPtr& criteria);

    QString deleteRows(const BoundDelete& statement);
    QString insertRows(const BoundInsert& statement);
    QString updateRows(const BoundUpdate& statement);
    QString dropTable(const BoundDrop& statement);

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
    QString source(const BoundSource& source);
    QString namedRows(const BoundSelect& query);

    QString m_out;
};

} // namespace tallyroom::sql
