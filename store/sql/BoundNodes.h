// Walks through the expressions of a bound query.
#pragma once

#include "store/sql/Bound.h"

#include <functional>

namespace tallyroom::sql {

// Whether a node of the query, its rows or its subqueries is of that kind.
bool anyNode(const BoundSelect& query, const std::function<bool(const BoundPtr&)>& isWanted);

// The query, and that whose rows it is over, with other values in place of its own.
BoundSelect changed(BoundSelect query, const std::function<BoundPtr(const BoundPtr&)>& change);

} // namespace tallyroom::sql
