// Looks up the names of an expression and types its operations.
#pragma once

#include "store/sql/Ast.h"
#include "store/sql/Scope.h"

namespace tallyroom::sql {

// What the binders of one statement share.
struct BindContext {
    const Catalog& catalog;
    QStringList unknownNames; // lower case, each once
    int sources = 0;          // tables met so far, for their aliases

    BoundSource addSource(std::shared_ptr<const CatalogTable> table);
    QString newAlias();
    void addUnknownName(const QString& name);
};

class ExpressionBinder {
public:
    enum class Aggregates { Allowed, Refused };

    ExpressionBinder(BindContext& context, Scope& scope, Aggregates aggregates);

    // An unknown name is noted in the context and stands for Null. Raises 3085 (unknown function),
    // 3096 (an aggregate where none may be), 3464 (types that do not compare).
    BoundPtr bind(const Expression& expression);

private:
    BoundPtr bindNode(const Literal& literal);
    BoundPtr bindNode(const Name& name);
    BoundPtr bindNode(const Apply& apply);
    BoundPtr bindNode(const Call& call);
    BoundPtr bindNode(const InList& in);
    BoundPtr bindNode(const InSelect& in);
    BoundPtr bindNode(const Subquery& subquery);
    std::shared_ptr<const BoundSelect> bindSelect(const SelectStatement& select);
    std::vector<BoundPtr> bindAll(const std::vector<ExpressionPtr>& expressions);

    BindContext& m_context;
    Scope& m_scope;
    Aggregates m_aggregates;
};

} // namespace tallyroom::sql
