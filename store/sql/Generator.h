// Bound statements to an engine's own text. Knows no engine: the dialect says how to write.
#pragma once

#include "store/sql/Bound.h"
#include "store/sql/RowGenerator.h"

namespace tallyroom::sql {

// An engine's text with the values of its parameters.
struct Native {
    QString text;
    std::vector<Variant> values;
};

// Each raises 3360 when the text would grow out of all proportion. What comes again and again with
// other values has them as parameters, so that its text stays the same and an engine reads and
// plans it once. Not patterns, nor the values of lists and of queries, by which plans are chosen
// and rows are grouped.
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
    Native rowsWhere(const BoundSelect& select, const BoundPtr& criteria);
    Native keysWhere(const BoundSelect& select, const BoundPtr& criteria);

    Native deleteRows(const BoundDelete& statement);
    Native insertRows(const BoundInsert& statement);
    Native updateRows(const BoundUpdate& statement);
    QString dropTable(const BoundDrop& statement);

private:
    template<class TextOf>
    Native withParameters(const TextOf& textOf);
    bool isParameter(const Variant& value) const;
    QString valueText(const Variant& value);

    void append(const BoundNode& node);
    void appendOperation(const BoundNode& node);
    void appendLiteral(const BoundNode& literal);
    QString literalText(const Variant& value) const;
    const char16_t* inTemplate(const BoundNode& in) const;
    void appendSet(const BoundNode& in);
    bool isOneByOne(const BoundNode& in) const;
    void appendOneByOne(const BoundNode& in);
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
    bool m_takesParameters = false;
    std::vector<Variant> m_values; // of the parameters so far
};

} // namespace tallyroom::sql
