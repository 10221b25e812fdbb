// Binds whole statements: the one entrance to the binders.
#pragma once

#include "store/sql/Ast.h"
#include "store/sql/Bound.h"

namespace tallyroom::sql {

// Each looks up every name and raises 3061 with the number of distinct names that are unknown,
// besides what SelectBinder and ExpressionBinder raise.
BoundSelect bindSelect(const Catalog& catalog, const SelectStatement& select,
                       const std::vector<OrderItem>* sort = nullptr);
BoundDelete bindDelete(const Catalog& catalog, const DeleteStatement& statement);
// Also raises 3192 (no such table), 3127 (no such field), 3346 (too few or too many values).
BoundInsert bindInsert(const Catalog& catalog, const InsertStatement& statement);
BoundUpdate bindUpdate(const Catalog& catalog, const UpdateStatement& statement);
// Raises 3376 (no such table).
BoundDrop bindDrop(const Catalog& catalog, const DropStatement& statement);

// Criteria over the rows of a query, in terms of its output names; raises 3070 for others.
BoundPtr bindCriteria(const Catalog& catalog, const BoundSelect& select,
                      const Expression& criteria);

} // namespace tallyroom::sql
